#include "vx/core/VxVector.h"

#include "vx/platform/VxExceptions.h"

#include <algorithm>

namespace vx {

void RaiseVectorIndexError(int I)
{
    throw ERangeError(QStringLiteral("i=%1 index out of range").arg(I));
}

// ---------------------------------------------------------------- TVxValueIChangedList

void TVxValueIChangedList::Add(QObject* Receiver, const QByteArray& Key, TVxValueIChangedEvent Handler)
{
    Remove(Key);
    TVxValueIChangedEntry entry;
    entry.Receiver = Receiver;
    entry.Watched = Receiver != nullptr;
    entry.Key = Key;
    entry.Handler = std::move(Handler);
    FItems.push_back(std::move(entry));
}

void TVxValueIChangedList::Remove(const QByteArray& Key)
{
    Purge();
    if (Key.isEmpty())
        return;
    auto it = std::find_if(FItems.begin(), FItems.end(),
                           [&Key](const TVxValueIChangedEntry& e) { return !e.Removed && e.Key == Key; });
    if (it == FItems.end())
        return;
    if (FNotifying > 0)
        it->Removed = true;
    else
        FItems.erase(it);
}

void TVxValueIChangedList::Clear()
{
    if (FNotifying > 0) {
        for (TVxValueIChangedEntry& e : FItems)
            e.Removed = true;
    } else {
        FItems.clear();
    }
}

int TVxValueIChangedList::Count() const
{
    Purge();
    return int(std::count_if(FItems.begin(), FItems.end(), [](const TVxValueIChangedEntry& e) { return e.Alive(); }));
}

const TVxValueIChangedList::TVxValueIChangedEntry& TVxValueIChangedList::Items(int I) const
{
    Purge();
    int live = 0;
    for (const TVxValueIChangedEntry& e : FItems) {
        if (!e.Alive())
            continue;
        if (live == I)
            return e;
        ++live;
    }
    throw EListError::IndexOutOfBounds(I);
}

void TVxValueIChangedList::Notify(int Index, bool Deleted)
{
    const size_t n = FItems.size();
    if (n == 0)
        return;
    struct RoundGuard {
        TVxValueIChangedList& List;
        explicit RoundGuard(TVxValueIChangedList& l) : List(l) { ++List.FNotifying; }
        ~RoundGuard()
        {
            --List.FNotifying;
            List.Purge();
        }
    } guard(*this);
    for (size_t i = 0; i < n; ++i) {
        const TVxValueIChangedEntry& e = FItems[i];
        if (e.Alive() && e.Handler)
            e.Handler(Index, Deleted);
    }
}

void TVxValueIChangedList::Purge() const
{
    if (FNotifying > 0)
        return;
    FItems.erase(std::remove_if(FItems.begin(), FItems.end(),
                                [](const TVxValueIChangedEntry& e) { return !e.Alive(); }),
                 FItems.end());
}

// ---------------------------------------------------------------- TVxCustomRealVector

TVxCustomRealVector::TVxCustomRealVector(QObject* owner)
    : QObject(owner)
{
    ResizeStorage(50);
}

TVxCustomRealVector::~TVxCustomRealVector() = default;

double TVxCustomRealVector::Value(int I) const
{
    if (I < 0 || I >= FCount)
        RaiseVectorIndexError(I);
    return FValues[size_t(I)];
}

void TVxCustomRealVector::SetValue(int I, double V)
{
    if (I < 0)
        RaiseVectorIndexError(I);
    CheckCount(I + 1);
    StoreAt(I, V);
}

void TVxCustomRealVector::SetCapacity(int Value)
{
    if (Value > FCount)
        ResizeStorage(Value);
}

void TVxCustomRealVector::SetIncrement(int Value)
{
    if (Value > 50)
        FIncrement = Value;
}

void TVxCustomRealVector::CheckCount(int N)
{
    if (N >= FCapacity)
        ResizeStorage(N + FIncrement);
    if (N >= FCount)
        FCount = N;
}

void TVxCustomRealVector::ResizeStorage(int NewCapacity)
{
    // The logical capacity follows the documented linear rule; the allocation underneath
    // at least doubles, so a run of appends costs amortised O(1) per value.
    // A smaller capacity gives the memory back.
    const size_t wanted = size_t(NewCapacity);
    if (wanted > FValues.capacity())
        FValues.reserve(std::max(wanted, FValues.capacity() * 2));
    const bool shrinking = wanted < FValues.size();
    FValues.resize(wanted);
    if (shrinking)
        FValues.shrink_to_fit();
    FCapacity = NewCapacity;
}

void TVxCustomRealVector::MoveDown(int I)
{
    if (I + 1 < FCount)
        std::copy(FValues.begin() + I + 1, FValues.begin() + FCount, FValues.begin() + I);
}

void TVxCustomRealVector::MoveUp(int I)
{
    if (I + 1 < FCount)
        std::copy_backward(FValues.begin() + I, FValues.begin() + FCount - 1, FValues.begin() + FCount);
}

// ---------------------------------------------------------------- TVxRealVector

TVxRealVector::TVxRealVector(QObject* owner)
    : TVxCustomRealVector(owner)
{
}

int TVxRealVector::Add(double V)
{
    CheckCount(Count() + 1);
    SetValue(Count() - 1, V);
    return Count();
}

void TVxRealVector::Clear()
{
    SetCountRaw(0);
}

void TVxRealVector::Delete(int I)
{
    if (I < 0 || I >= Count())
        return;
    MoveDown(I);
    SetCountRaw(Count() - 1);
}

void TVxRealVector::Insert(int I, double V)
{
    if (I < 0 || I >= Count())
        return;
    CheckCount(Count() + 1);
    MoveUp(I);
    SetValue(I, V);
}

QList<double> TVxRealVector::StoredValues() const
{
    if (!FPersistentValues)
        return {};
    return QList<double>(Data(), Data() + Count());
}

void TVxRealVector::SetValues(const QList<double>& Values)
{
    if (Count() > 0)
        Clear();
    for (int i = 0; i < Values.size(); ++i)
        SetValue(i, Values[i]);
}

// ---------------------------------------------------------------- TVxLiveVector

TVxLiveVector::TVxLiveVector(QObject* owner)
    : TVxRealVector(owner)
{
}

void TVxLiveVector::SetValue(int I, double V)
{
    TVxRealVector::SetValue(I, V);
    IChangedList().Notify(I, false);
}

void TVxLiveVector::Delete(int I)
{
    // One more than the plain vector: I = Count drops the last value. An empty vector has
    // nothing to drop, so Count never goes below zero.
    if (I < 0 || I > Count() || Count() == 0)
        return;
    MoveDown(std::min(I, Count()));
    IChangedList().Notify(I, true);
    SetCountRaw(Count() - 1);
}

void TVxLiveVector::Clear()
{
    IChangedList().Notify(-1, true);
    TVxRealVector::Clear();
}

// ---------------------------------------------------------------- TVxDBVector

TVxDBVector::TVxDBVector(QObject* owner)
    : TVxCustomRealVector(owner)
{
}

void TVxDBVector::SetDataSource(QAbstractItemModel* Value)
{
    if (FDataSource == Value)
        return;
    for (const QMetaObject::Connection& c : FConnections)
        disconnect(c);
    FConnections.clear();
    FDataSource = Value;
    if (Value) {
        FConnections << connect(Value, &QAbstractItemModel::modelReset, this, &TVxDBVector::UpdateVector)
                     << connect(Value, &QAbstractItemModel::layoutChanged, this, &TVxDBVector::UpdateVector)
                     << connect(Value, &QAbstractItemModel::rowsMoved, this, &TVxDBVector::UpdateVector)
                     << connect(Value, &QAbstractItemModel::columnsInserted, this, &TVxDBVector::UpdateVector)
                     << connect(Value, &QAbstractItemModel::columnsRemoved, this, &TVxDBVector::UpdateVector)
                     << connect(Value, &QAbstractItemModel::headerDataChanged, this, &TVxDBVector::UpdateVector)
                     << connect(Value, &QAbstractItemModel::dataChanged, this, &TVxDBVector::OnDataChanged)
                     << connect(Value, &QAbstractItemModel::rowsInserted, this, &TVxDBVector::OnRowsInserted)
                     << connect(Value, &QAbstractItemModel::rowsAboutToBeRemoved, this,
                                &TVxDBVector::OnRowsAboutToBeRemoved)
                     << connect(Value, &QAbstractItemModel::rowsRemoved, this, &TVxDBVector::OnRowsRemoved);
    }
    if (!IsLoading(this))
        UpdateVector();
}

void TVxDBVector::SetDataField(const QString& Value)
{
    if (FDataField == Value)
        return;
    FDataField = Value;
    if (!IsLoading(this))
        UpdateVector();
}

void TVxDBVector::Loaded()
{
    UpdateVector();
}

int TVxDBVector::FieldColumn() const
{
    if (!FDataSource || FDataField.isEmpty())
        return -1;
    const int columns = FDataSource->columnCount();
    for (int c = 0; c < columns; ++c) {
        const QString header = FDataSource->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString();
        if (header.compare(FDataField, Qt::CaseInsensitive) == 0)
            return c;
    }
    return -1;
}

bool TVxDBVector::FieldValue(int Row, int Column, double& V) const
{
    const QModelIndex index = FDataSource->index(Row, Column);
    if (!index.isValid())
        return false;
    const QVariant value = FDataSource->data(index, Qt::EditRole);
    if (value.isNull() || value.toString().isEmpty())
        return false;
    bool ok = false;
    V = value.toDouble(&ok);
    return ok;
}

void TVxDBVector::UpdateVector()
{
    const int column = FieldColumn();
    if (column < 0 || FUpdating)
        return;
    FUpdating = true;
    SetCountRaw(0);
    double v = 0.0;
    for (int row = 0;; ++row) {
        // Lazy models (QSqlTableModel) deliver rows in batches; fetching emits rowsInserted,
        // which FUpdating keeps from re-entering.
        if (row >= FDataSource->rowCount()) {
            if (!FDataSource->canFetchMore(QModelIndex()))
                break;
            FDataSource->fetchMore(QModelIndex());
            if (row >= FDataSource->rowCount())
                break;
        }
        if (!FieldValue(row, column, v))
            break;
        CheckCount(row + 1);
        StoreAt(row, v);
    }
    FUpdating = false;
    IChangedList().Notify(-1, true);
}

void TVxDBVector::SetRecord(int Row)
{
    const int column = FieldColumn();
    if (column < 0)
        return;
    const int index = Row < 0 ? FDataSource->rowCount() : Row;
    double v = 0.0;
    if (!FieldValue(index, column, v))
        v = 0.0;
    CheckCount(index + 1);
    StoreAt(index, v);
    IChangedList().Notify(index, false);
}

void TVxDBVector::AppendFrom(int Row, int Column)
{
    double v = 0.0;
    for (int row = Row; row < FDataSource->rowCount() && FieldValue(row, Column, v); ++row) {
        CheckCount(row + 1);
        StoreAt(row, v);
        IChangedList().Notify(row, false);
    }
}

void TVxDBVector::DropRow(int Row)
{
    if (Row >= Count())
        return;
    MoveDown(Row);
    IChangedList().Notify(Row, true);
    SetCountRaw(Count() - 1);
}

void TVxDBVector::OnDataChanged(const QModelIndex& TopLeft, const QModelIndex& BottomRight)
{
    const int column = FieldColumn();
    if (FUpdating || column < 0 || TopLeft.parent().isValid())
        return;
    if (column < TopLeft.column() || column > BottomRight.column())
        return;
    for (int row = TopLeft.row(); row <= BottomRight.row(); ++row) {
        double v = 0.0;
        const bool valid = FieldValue(row, column, v);
        if (valid && row < Count()) {
            StoreAt(row, v);
            IChangedList().Notify(row, false);
        } else if (valid && row == Count()) {
            AppendFrom(row, column); // the value that ended the vector was filled in
        } else if (!valid && row < Count()) {
            UpdateVector(); // a value inside the vector became empty: the vector ends there now
            return;
        }
    }
}

void TVxDBVector::OnRowsInserted(const QModelIndex& Parent, int First, int /*Last*/)
{
    const int column = FieldColumn();
    if (FUpdating || column < 0 || Parent.isValid())
        return;
    if (First < Count())
        UpdateVector();
    else if (First == Count())
        AppendFrom(First, column);
}

void TVxDBVector::OnRowsAboutToBeRemoved(const QModelIndex& Parent, int First, int Last)
{
    if (FUpdating || FieldColumn() < 0 || Parent.isValid())
        return;
    FEndRowRemoved = First <= Count() && Count() <= Last;
    for (int row = std::min(Last, Count() - 1); row >= First; --row)
        DropRow(row);
}

void TVxDBVector::OnRowsRemoved(const QModelIndex& Parent, int /*First*/, int /*Last*/)
{
    const int column = FieldColumn();
    if (!FEndRowRemoved || FUpdating || column < 0 || Parent.isValid())
        return;
    FEndRowRemoved = false;
    AppendFrom(Count(), column);
}

} // namespace vx
