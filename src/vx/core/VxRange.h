#pragma once
// A Start/Stop interval that grows to include values and reports which end changed,
// and a non-owning list of such intervals (an axis keeps the data ranges of its series).

#include <QList>
#include <functional>
#include <type_traits>

namespace vx {

class TRange;

// Called after every change of a range, with the range itself.
using TRangeChangedEvent = std::function<void(TRange* NewRange)>;

// Which ends IfRangeChanged moved (ordinals 0..3).
enum TRangeChangedResult { rgNotChanged, rgMinChanged, rgMaxChanged, rgBothChanged };

// A value interval. Fresh and reset ranges are empty: Start = 1.7E+308 and
// Stop = -1.7E+308, so the first value fed to IfRangeChanged sets both ends.
// The setters store without ordering check and always fire OnChanged.
class TRange {
public:
    TRange();
    virtual ~TRange() = default;
    TRange(const TRange&) = delete;
    TRange& operator=(const TRange&) = delete;

    double Start() const { return FStart; }
    double Stop() const { return FStop; }
    void SetStart(double Value);
    void SetStop(double Value);
    void SetStartStop(double NewStart, double NewStop);

    // Empties the range without firing OnChanged.
    void Reset();

    // Widens the range to include Value (strict comparisons); fires OnChanged once if
    // either end moved.
    TRangeChangedResult IfRangeChanged(double Value);

    // Copies Start and Stop (not the event) and fires OnChanged. A null source raises
    // EConvertError "Cannot be assigned to TRange".
    void Assign(const TRange* Source);
    void Assign(const TRange& Source) { Assign(&Source); }
    // Any other source: accepted only when it is (dynamically) a TRange; otherwise
    // EConvertError "Cannot be assigned to TRange" and the range is unchanged.
    template <typename T>
    void Assign(const T* Source)
    {
        if constexpr (std::is_base_of_v<TRange, T>)
            Assign(static_cast<const TRange*>(Source));
        else if constexpr (std::is_polymorphic_v<T>)
            Assign(dynamic_cast<const TRange*>(Source));
        else
            Assign(static_cast<const TRange*>(nullptr));
    }

    const TRangeChangedEvent& OnChanged() const { return FOnChanged; }
    void SetOnChanged(TRangeChangedEvent handler) { FOnChanged = std::move(handler); }

protected:
    // Calls OnChanged if assigned.
    virtual void DoOnChanged();

private:
    double FStart;
    double FStop;
    TRangeChangedEvent FOnChanged;
};

// References to ranges owned elsewhere; each range is held at most once.
class TRangeList {
public:
    // Removes every occurrence of Range, then appends it (re-adding moves it to the end).
    void Add(TRange* Range);
    // Removes every occurrence of Range.
    void Remove(TRange* Range);
    void Clear() { FItems.clear(); }
    int Count() const { return int(FItems.size()); }
    // The range at Index; an index outside 0..Count-1 raises EListError.
    TRange* Items(int Index) const;
    TRange* operator[](int Index) const { return Items(Index); }
    int IndexOf(const TRange* Range) const;

    QList<TRange*>::const_iterator begin() const { return FItems.cbegin(); }
    QList<TRange*>::const_iterator end() const { return FItems.cend(); }

private:
    QList<TRange*> FItems;
};

} // namespace vx
