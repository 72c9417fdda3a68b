#pragma once
// Real-valued data vectors that series plot, their change-notification protocol, the
// vector bound to a column of an item model, and two plain utility vectors.

#include "vx/core/VxConsts.h"
#include "vx/platform/VxComponent.h"

#include <QAbstractItemModel>
#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <algorithm>
#include <climits>
#include <cstdlib>
#include <deque>
#include <functional>
#include <memory>
#include <new>
#include <type_traits>
#include <typeinfo>
#include <vector>

namespace vx {

// Handler of a value-change notice: Index of the changed value (-1: all values),
// Deleted = true when a value was removed (or the vector was cleared or reloaded).
using TVxValueIChangedEvent = std::function<void(int Index, bool Deleted)>;

// The subscribers of a vector, called in subscription order.
//
// A subscription is a handler identified by a receiver object and a method key. The key
// plays the role of the handler's code: Remove() looks an entry up by the key alone, not by
// the receiver, so two receivers that subscribe with the same key share one slot and the
// later subscription replaces the earlier one. Subscribe series with the member-function
// overloads; they derive the key from the declaring class and the method, so two series of
// one class share a slot, as do subclasses subscribing the same inherited method (and, for
// a virtual method, its overrides), while different methods do not. The string-key overloads are for handlers that are not member functions; an
// empty key never matches, so such a handler can only be removed by Clear().
//
// The receiver is watched: once it is destroyed its handler is never called again and
// its entry disappears from the list. A null receiver means "not watched".
class TVxValueIChangedList {
public:
    struct TVxValueIChangedEntry {
        QPointer<QObject> Receiver;
        bool Watched = false; // a receiver was given, so a null Receiver means it died
        QByteArray Key;
        TVxValueIChangedEvent Handler;
        bool Removed = false; // unsubscribed during a notice round, erased after it
        bool Alive() const { return !Removed && (!Watched || !Receiver.isNull()); }
    };

    // Removes the entry with the same key, then appends the handler.
    void Add(QObject* Receiver, const QByteArray& Key, TVxValueIChangedEvent Handler);
    template <class C, class T>
    void Add(T* Receiver, void (C::*Method)(int, bool))
    {
        C* target = Receiver;
        Add(Receiver, MethodKey(Method), [target, Method](int i, bool d) { (target->*Method)(i, d); });
    }

    // Deletes the first entry with this key, whatever its receiver.
    void Remove(const QByteArray& Key);
    template <class C, class T>
    void Remove(T* /*Receiver*/, void (C::*Method)(int, bool)) { Remove(MethodKey(Method)); }

    void Clear();
    // Number of live subscriptions.
    int Count() const;
    // Live subscription I (0-based, in subscription order).
    const TVxValueIChangedEntry& Items(int I) const;

    // Calls every live handler in subscription order with (Index, Deleted). Handlers may
    // subscribe and unsubscribe while being called: an entry removed during the round is
    // not called any more, one added is called from the next round on.
    void Notify(int Index, bool Deleted);

    // The slot key of a member function: declaring class plus the method's identity.
    template <class C>
    static QByteArray MethodKey(void (C::*Method)(int, bool))
    {
        QByteArray key(typeid(C).name());
        key += '#';
        key += QByteArray(reinterpret_cast<const char*>(&Method), int(sizeof(Method))).toHex();
        return key;
    }

private:
    // Erases dead entries (not during a round, which holds references into the list).
    void Purge() const;
    // A deque: appending during a round leaves the entries being called in place.
    mutable std::deque<TVxValueIChangedEntry> FItems;
    int FNotifying = 0;
};

// A growable array of doubles with a count: the base of every data vector.
//
// Capacity and Increment keep their documented meaning (Capacity grows to N + Increment
// when a write reaches it), but the storage underneath grows geometrically, so appending
// stays amortised O(1) even with the small default Increment of 50.
class TVxCustomRealVector : public QObject {
    Q_OBJECT
public:
    explicit TVxCustomRealVector(QObject* owner = nullptr);
    ~TVxCustomRealVector() override;

    // Value I; raises ERangeError "i=%d index out of range" at or beyond Count (and, unlike
    // the unchecked original, for negative I as well).
    double Value(int I) const;
    double GetValue(int I) const { return Value(I); }
    // Stores V at I, extending the vector to I + 1 values when needed (the gap keeps what
    // the storage held: zero, or old values after Clear). Negative I raises ERangeError.
    virtual void SetValue(int I, double V);

    int Count() const { return FCount; }
    // Allocated length; a value not greater than Count is ignored.
    int Capacity() const { return FCapacity; }
    void SetCapacity(int Value);
    // Growth step (default 50); only values above 50 are taken.
    int Increment() const { return FIncrement; }
    void SetIncrement(int Value);

    // Makes room for N values: Capacity := N + Increment when N >= Capacity; Count := N
    // when N >= Count.
    void CheckCount(int N);

    TVxValueIChangedList& IChangedList() { return FIChangedList; }
    const TVxValueIChangedList& IChangedList() const { return FIChangedList; }

    // The storage: its first Count entries are the values (it may be longer).
    const TVxRealArray& Values() const { return FValues; }
    // The valid values 0..Count-1, contiguous.
    const double* Data() const { return FValues.data(); }
    TVxRealArray ToArray() const { return TVxRealArray(FValues.begin(), FValues.begin() + FCount); }

protected:
    void StoreAt(int I, double V) { FValues[size_t(I)] = V; }
    double& At(int I) { return FValues[size_t(I)]; }
    void SetCountRaw(int N) { FCount = N; }
    void MoveDown(int I); // values I+1..Count-1 move to I..Count-2 (Count unchanged)
    void MoveUp(int I);   // values I..Count-2 move to I+1..Count-1 (Count unchanged)

private:
    void ResizeStorage(int NewCapacity);

    int FCount = 0;
    int FCapacity = 0;
    int FIncrement = 50;
    TVxRealArray FValues;
    TVxValueIChangedList FIChangedList;
};

// A vector filled by program code; with PersistentValues its values are stored with the
// form through the "Values" property.
class TVxRealVector : public TVxCustomRealVector {
    Q_OBJECT
    Q_PROPERTY(bool PersistentValues READ PersistentValues WRITE SetPersistentValues)
    Q_PROPERTY(int Capacity READ Capacity WRITE SetCapacity)
    Q_PROPERTY(int Increment READ Increment WRITE SetIncrement)
    // The form's copy of the values. Qt 6 takes no condition for STORED, so the condition
    // sits in the getter: the property reads as empty unless PersistentValues is set.
    Q_PROPERTY(QList<double> Values READ StoredValues WRITE SetValues)
public:
    explicit TVxRealVector(QObject* owner = nullptr);

    // Appends V; returns the new Count.
    int Add(double V);
    // Count := 0; storage and capacity are kept.
    virtual void Clear();
    // Removes value I (only when I < Count).
    virtual void Delete(int I);
    // Inserts V before value I (only when 0 <= I < Count; at or after the end nothing happens).
    virtual void Insert(int I, double V);

    bool PersistentValues() const { return FPersistentValues; }
    void SetPersistentValues(bool Value) { FPersistentValues = Value; }

    // The values 0..Count-1 when PersistentValues is set, else an empty list (what a form
    // stores); use ToArray() or Value() for the data themselves.
    QList<double> StoredValues() const;
    // Replaces the values: Clear when not empty, then SetValue(0), SetValue(1), ... in order.
    void SetValues(const QList<double>& Values);

private:
    bool FPersistentValues = false;
};

// A vector that tells its subscribers about every change, in subscription order:
// SetValue/Add/Insert -> (I, false) after storing; Delete(I) -> (I, true) after moving,
// before Count drops; Clear -> (-1, true) before Count drops to 0.
class TVxLiveVector : public TVxRealVector {
    Q_OBJECT
public:
    explicit TVxLiveVector(QObject* owner = nullptr);

    void SetValue(int I, double V) override;
    // Accepted for 0 <= I <= Count (I = Count drops the last value without moving).
    void Delete(int I) override;
    void Clear() override;
};

// Mirrors one numeric column of an item model (a QSqlTableModel on a database table, or
// any QAbstractItemModel). The column is found by its horizontal header text (case-
// insensitive). Rows are read from the top; the first empty or non-numeric value ends the
// vector. The vector follows the model: reset/layout changes and inserted rows inside the
// mirrored part reload it (notice (-1, true)); rows appended right after it extend it
// (notice (I, false) each); an edited row inside it is stored (notice (I, false)), an edit
// that empties it reloads; a row of the vector about to be removed is dropped before it
// goes (notice (I, true)), and removing the empty row that ended the vector lets the rows
// after it join. A model that is destroyed is let go (DataSource becomes null, the values
// stay).
class TVxDBVector : public TVxCustomRealVector, public IVxLoadable {
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* DataSource READ DataSource WRITE SetDataSource)
    Q_PROPERTY(QString DataField READ DataField WRITE SetDataField)
public:
    explicit TVxDBVector(QObject* owner = nullptr);

    QAbstractItemModel* DataSource() const { return FDataSource.data(); }
    void SetDataSource(QAbstractItemModel* Value);
    QString DataField() const { return FDataField; }
    void SetDataField(const QString& Value);

    // Reloads the whole column; does nothing unless a model and an existing column are set.
    void UpdateVector();
    // While the vector is loading (component state csLoading) the setters defer the reload
    // to here.
    void Loaded() override;
    // Stores the value of Row (Row < 0: the row after the last one) and notifies (Row, false).
    void SetRecord(int Row);

private:
    int FieldColumn() const;
    // Reads the value at Row; false when it is empty or not a number.
    bool FieldValue(int Row, int Column, double& V) const;
    void AppendFrom(int Row, int Column);
    void DropRow(int Row);

    void OnDataChanged(const QModelIndex& TopLeft, const QModelIndex& BottomRight);
    void OnRowsInserted(const QModelIndex& Parent, int First, int Last);
    void OnRowsAboutToBeRemoved(const QModelIndex& Parent, int First, int Last);
    void OnRowsRemoved(const QModelIndex& Parent, int First, int Last);

    QPointer<QAbstractItemModel> FDataSource;
    QString FDataField;
    QList<QMetaObject::Connection> FConnections;
    bool FUpdating = false;
    bool FEndRowRemoved = false; // the empty row that ended the vector is being removed
};

// A plain growable array (not a component) for the utility vectors below. Unlike the real
// vectors it grows by one step at a time (Capacity + Increment). Values that SetCount or
// CheckCount add are undefined until set, as with reallocated memory: a series' pixel
// cache of millions of points is written right after it grows, and clearing it first
// would cost a pass over all of it. SetValue beyond Count clears the values it skips.
template <class T>
class TVxSimpleVector {
    static_assert(std::is_trivially_copyable_v<T>, "the storage is moved by realloc");

public:
    // Step < 1 gives 50.
    explicit TVxSimpleVector(int Increment = 50) : FIncrement(Increment < 1 ? 50 : Increment) {}
    TVxSimpleVector(const TVxSimpleVector&) = delete;
    TVxSimpleVector& operator=(const TVxSimpleVector&) = delete;

    int Count() const { return FCount; }
    int Capacity() const { return FCapacity; }
    int Increment() const { return FIncrement; }

    // Raises ERangeError "i=%d index out of range" outside 0..Count-1.
    T Value(int I) const
    {
        CheckIndex(I, FCount);
        return FValues.get()[I];
    }
    // Stores V at I, extending Count to I + 1 when needed.
    void SetValue(int I, const T& V)
    {
        CheckIndex(I, I + 1);
        CheckCount(I + 1);
        T* values = FValues.get();
        if (I > FCount)
            std::fill(values + FCount, values + I, T());
        values[I] = V;
        if (I >= FCount)
            FCount = I + 1;
    }
    // Appends V; returns the new Count.
    int Add(const T& V)
    {
        SetValue(FCount, V);
        return FCount;
    }
    void Clear() { FCount = 0; }
    // Sets Count to N (>= 0), growing the storage when needed.
    void SetCount(int N)
    {
        if (N < 0)
            N = 0;
        CheckCount(N);
        FCount = N;
    }
    // Grows the capacity by whole steps until N values fit.
    void CheckCount(int N)
    {
        if (N <= FCapacity)
            return;
        const int steps = (N - FCapacity + FIncrement - 1) / FIncrement;
        const size_t wanted = size_t(FCapacity) + size_t(steps) * size_t(FIncrement);
        if (wanted > FAllocated)
            Reallocate(std::max(wanted, FAllocated * 2));
        FCapacity = int(std::min<size_t>(wanted, INT_MAX));
    }

protected:
    T* Pointer(int I) { return FValues.get() + I; }

private:
    struct TFree {
        void operator()(T* P) const { std::free(P); }
    };
    static void CheckIndex(int I, int Limit);
    // realloc keeps the values and, for large blocks, remaps pages instead of copying.
    void Reallocate(size_t N)
    {
        void* p = std::realloc(FValues.get(), N * sizeof(T));
        if (!p)
            throw std::bad_alloc();
        FValues.release();
        FValues.reset(static_cast<T*>(p));
        FAllocated = N;
    }

    std::unique_ptr<T, TFree> FValues;
    size_t FAllocated = 0;
    int FCapacity = 0;
    int FCount = 0;
    int FIncrement;
};

// Raises the vectors' ERangeError "i=%d index out of range".
[[noreturn]] void RaiseVectorIndexError(int I);

template <class T>
void TVxSimpleVector<T>::CheckIndex(int I, int Limit)
{
    if (I < 0 || I >= Limit)
        RaiseVectorIndexError(I);
}

// Screen points (pixel positions of a series).
class TVxPointVector : public TVxSimpleVector<QPoint> {
public:
    using TVxSimpleVector<QPoint>::TVxSimpleVector;
    // Address of point I, for passing a run of points to polygon drawing (valid until the
    // vector grows).
    QPoint* GetPointer(int I) { return Pointer(I); }
};

// Integers.
class TVxIntegerVector : public TVxSimpleVector<int> {
public:
    using TVxSimpleVector<int>::TVxSimpleVector;
};

} // namespace vx
