#include "vx/core/VxRange.h"

#include "vx/core/VxConsts.h"
#include "vx/platform/VxExceptions.h"

namespace vx {

TRange::TRange()
{
    Reset();
}

void TRange::Reset()
{
    FStart = CVxMaxReal;
    FStop = CVxMinReal;
}

void TRange::SetStart(double Value)
{
    FStart = Value;
    DoOnChanged();
}

void TRange::SetStop(double Value)
{
    FStop = Value;
    DoOnChanged();
}

void TRange::SetStartStop(double NewStart, double NewStop)
{
    FStart = NewStart;
    FStop = NewStop;
    DoOnChanged();
}

TRangeChangedResult TRange::IfRangeChanged(double Value)
{
    int result = rgNotChanged;
    if (Value < FStart) {
        FStart = Value;
        result = rgMinChanged;
    }
    if (Value > FStop) {
        FStop = Value;
        result |= rgMaxChanged;
    }
    if (result != rgNotChanged)
        DoOnChanged();
    return TRangeChangedResult(result);
}

void TRange::Assign(const TRange* Source)
{
    if (!Source)
        throw EConvertError(QStringLiteral("Cannot be assigned to TRange"));
    FStart = Source->FStart;
    FStop = Source->FStop;
    DoOnChanged();
}

void TRange::DoOnChanged()
{
    if (FOnChanged)
        FOnChanged(this);
}

void TRangeList::Add(TRange* Range)
{
    Remove(Range);
    FItems.append(Range);
}

void TRangeList::Remove(TRange* Range)
{
    FItems.removeAll(Range);
}

TRange* TRangeList::Items(int Index) const
{
    if (Index < 0 || Index >= FItems.size())
        throw EListError::IndexOutOfBounds(Index);
    return FItems.at(Index);
}

int TRangeList::IndexOf(const TRange* Range) const
{
    return int(FItems.indexOf(const_cast<TRange*>(Range)));
}

} // namespace vx
