#include "vx/core/VxVector.h"
#include "vx/platform/VxExceptions.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QUuid>
#include <gtest/gtest.h>
#include "support/ExpectThrowMessage.h"

#include <memory>
#include <tuple>

using namespace vx;

namespace {

// One received notice: Index, Deleted and the vector's Count at the moment of the call.
using Notice = std::tuple<int, bool, int>;

// A subscriber as a series would be: a QObject with handler methods. Each call is kept per
// handler, and the listener's tag goes to a log shared by several listeners.
class Listener : public QObject {
public:
    explicit Listener(const TVxCustomRealVector* Vector, std::vector<int>* Log = nullptr, int Tag = 0)
        : FVector(Vector), FLog(Log), FTag(Tag) {}
    void VectorChanged(int Index, bool Deleted) { Note(Received, Index, Deleted); }
    void OtherHandler(int Index, bool Deleted) { Note(Other, Index, Deleted); }

    std::vector<Notice> Received, Other;

private:
    void Note(std::vector<Notice>& To, int Index, bool Deleted)
    {
        To.push_back({Index, Deleted, FVector->Count()});
        if (FLog)
            FLog->push_back(FTag);
    }
    const TVxCustomRealVector* FVector;
    std::vector<int>* FLog;
    int FTag;
};

class OtherListener : public Listener {
public:
    using Listener::Listener;
    void OwnHandler(int Index, bool Deleted) { VectorChanged(Index, Deleted); }
};

} // namespace

// ---------------------------------------------------------------- storage rules

TEST(VxRealVector, CapacityIncrementAndIndexRules)
{
    TVxRealVector v;
    EXPECT_EQ(std::make_tuple(v.Count(), v.Capacity(), v.Increment()), std::make_tuple(0, 50, 50));
    v.SetIncrement(10); // below 50: ignored
    EXPECT_EQ(v.Increment(), 50);
    v.SetIncrement(51);
    for (int i = 0; i < 5; ++i)
        v.Add(i);
    v.SetCapacity(5); // = Count: ignored
    EXPECT_EQ(v.Capacity(), 50);
    v.SetCapacity(6); // shrinks down to Count + 1
    EXPECT_EQ(v.Capacity(), 6);
    v.Insert(1, -1); // N = 6 reaches the capacity: it grows to N + Increment
    EXPECT_EQ(v.Capacity(), 6 + 51);
    EXPECT_EQ(v.ToArray(), (std::vector<double>{0, -1, 1, 2, 3, 4}));

    for (int i : {6, 100, -1})
        VX_EXPECT_THROW_MSG((void)v.Value(i), ERangeError, QStringLiteral("i=%1 index out of range").arg(i));
    EXPECT_THROW(v.SetValue(-1, 0), ERangeError);
    EXPECT_EQ(v.Count(), 6);
}

TEST(VxRealVector, WritingBeyondCountExtendsAndGapKeepsStorage)
{
    TVxRealVector v;
    v.SetValue(3, 7.5);
    EXPECT_EQ(v.ToArray(), (std::vector<double>{0, 0, 0, 7.5}));
    // After Clear the old values are still in the storage and reappear in a gap.
    v.Clear();
    EXPECT_EQ(v.Count(), 0);
    v.SetValue(2, 1.0);
    EXPECT_EQ(v.ToArray(), (std::vector<double>{0, 0, 1.0}));
    v.Clear();
    v.Add(9);
    v.SetValue(3, 2);
    EXPECT_EQ(v.ToArray(), (std::vector<double>{9, 0, 1.0, 2}));
    // Growth past a shrunk capacity yields zeros, not stale values.
    v.Clear();
    v.SetCapacity(2);
    v.SetValue(5, 3);
    EXPECT_EQ(v.ToArray(), (std::vector<double>{9, 0, 0, 0, 0, 3}));
}

TEST(VxRealVector, AddDeleteInsert)
{
    // {operation, index, expected} on 1 2 3; an index at Count or below 0 is ignored.
    const struct {
        char op;
        int index;
        std::vector<double> expected;
    } rows[] = {
        {'D', 0, {2, 3}}, {'D', 1, {1, 3}}, {'D', 2, {1, 2}}, {'D', 3, {1, 2, 3}}, {'D', -1, {1, 2, 3}},
        {'I', 0, {9, 1, 2, 3}}, {'I', 2, {1, 2, 9, 3}}, {'I', 3, {1, 2, 3}}, {'I', -1, {1, 2, 3}},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(std::string(1, r.op) + std::to_string(r.index));
        TVxRealVector v;
        for (double x : {1, 2})
            v.Add(x);
        EXPECT_EQ(v.Add(3), 3); // the new count
        r.op == 'D' ? v.Delete(r.index) : v.Insert(r.index, 9);
        EXPECT_EQ(v.ToArray(), r.expected);
    }
    TVxRealVector v; // inserting across the capacity boundary keeps every value
    for (int i = 0; i < 50; ++i)
        v.Add(i);
    v.Insert(10, -1);
    ASSERT_EQ(v.Count(), 51);
    EXPECT_EQ(std::make_tuple(v.Value(10), v.Value(11), v.Value(50)), std::make_tuple(-1.0, 10.0, 49.0));
}

TEST(VxRealVector, ValuesPropertyFollowsPersistentValues)
{
    TVxRealVector v;
    v.Add(1.5);
    v.Add(-2);
    EXPECT_TRUE(v.property("Values").value<QList<double>>().isEmpty());
    v.setProperty("PersistentValues", true);
    EXPECT_EQ(v.property("Values").value<QList<double>>(), (QList<double>{1.5, -2}));

    // Loading a form's list replaces the values in order.
    TVxRealVector loaded;
    for (double x : {7, 8, 9})
        loaded.Add(x);
    ASSERT_TRUE(loaded.setProperty("Values", QVariant::fromValue(QList<double>{4, 5})));
    EXPECT_EQ(loaded.ToArray(), (std::vector<double>{4, 5}));
}

// ---------------------------------------------------------------- live notices

TEST(VxLiveVector, NoticesCarryIndexDeletedFlagAndOrder)
{
    TVxLiveVector v;
    Listener l(&v);
    v.IChangedList().Add(&l, &Listener::VectorChanged);
    v.Delete(0);         // empty: nothing to drop, no notice
    v.Add(1);            // (0,false) after Count grew
    v.Add(2);            // (1,false)
    v.Add(3);            // (2,false)
    v.Insert(1, 9);      // (1,false): 1 9 2 3
    v.SetValue(5, 4);    // (5,false): gap at 4
    v.Delete(1);         // (1,true) before Count drops: 1 2 3 0 4
    v.Delete(v.Count()); // (5,true): drops the last value
    v.Delete(9);         // beyond Count: ignored
    EXPECT_EQ(v.ToArray(), (std::vector<double>{1, 2, 3, 0}));
    v.Clear();           // (-1,true) before Count drops
    const std::vector<Notice> expected = {
        {0, false, 1}, {1, false, 2}, {2, false, 3}, {1, false, 4}, {5, false, 6},
        {1, true, 6}, {5, true, 5}, {-1, true, 4},
    };
    EXPECT_EQ(l.Received, expected);
    EXPECT_EQ(v.Count(), 0);
}

TEST(VxValueIChangedList, OneSlotPerClassAndMethodCalledInSubscriptionOrder)
{
    TVxLiveVector v;
    std::vector<int> log;
    Listener first(&v, &log, 1), second(&v, &log, 2);
    OtherListener third(&v, &log, 3);
    TVxValueIChangedList& list = v.IChangedList();
    list.Add(&first, &Listener::VectorChanged);
    list.Add(&first, &Listener::OtherHandler);    // another method: own slot
    list.Add(&second, &Listener::VectorChanged);  // same method: replaces first's entry, at the end
    list.Add(&third, &OtherListener::OwnHandler); // a subclass's own method: own slot
    list.Add(nullptr, "plain", [&log](int, bool) { log.push_back(4); });
    EXPECT_EQ(list.Count(), 4);
    v.Add(1);
    EXPECT_EQ(log, (std::vector<int>{1, 2, 3, 4}));
    EXPECT_TRUE(first.Received.empty());
    EXPECT_EQ(list.Items(1).Receiver, &second);
    list.Add(&third, &OtherListener::VectorChanged); // inherited: the base class's slot
    EXPECT_EQ(list.Count(), 4);
    EXPECT_EQ(list.Items(3).Receiver, &third);

    // Remove ignores the receiver: removing through another object drops third's entry.
    list.Remove(&first, &Listener::VectorChanged);
    log.clear();
    v.Add(2);
    EXPECT_EQ(log, (std::vector<int>{1, 3, 4}));
    EXPECT_THROW(list.Items(3), EListError);
}

TEST(VxValueIChangedList, DestroyedReceiversAreDroppedAndChangesDuringNoticeAreSafe)
{
    TVxLiveVector v;
    auto gone = std::make_unique<Listener>(&v);
    Listener stays(&v);
    v.IChangedList().Add(gone.get(), &Listener::VectorChanged);
    v.IChangedList().Add(&stays, &Listener::OtherHandler);
    gone.reset();
    EXPECT_EQ(v.IChangedList().Count(), 1);
    v.Add(1);
    EXPECT_EQ(stays.Other.size(), 1u);

    // A handler that unsubscribes everybody and deletes another receiver mid-round.
    auto victim = std::make_unique<Listener>(&v);
    v.IChangedList().Clear();
    v.IChangedList().Add(nullptr, "killer", [&](int, bool) {
        victim.reset();
        v.IChangedList().Clear();
    });
    v.IChangedList().Add(victim.get(), &Listener::VectorChanged);
    v.Add(2);
    EXPECT_EQ(v.IChangedList().Count(), 0);
}

// ---------------------------------------------------------------- utility vectors

TEST(VxPointVector, StepGrowthAndRangeCheck)
{
    TVxPointVector p(0);
    EXPECT_EQ(p.Increment(), 50);
    TVxIntegerVector iv(10);
    EXPECT_EQ(iv.Capacity(), 0);
    EXPECT_EQ(iv.Add(4), 1);
    EXPECT_EQ(iv.Capacity(), 10);
    iv.SetValue(25, 7); // grows by whole steps
    EXPECT_EQ(std::make_pair(iv.Capacity(), iv.Count()), std::make_pair(30, 26));
    EXPECT_EQ(std::make_pair(iv.Value(25), iv.Value(3)), std::make_pair(7, 0));
    iv.SetCount(2); // the index check follows the new count
    VX_EXPECT_THROW_MSG((void)iv.Value(2), ERangeError, QStringLiteral("i=2 index out of range"));

    for (int i = 0; i < 5; ++i)
        p.Add(QPoint(i, 2 * i));
    const QPoint* run = p.GetPointer(2);
    EXPECT_EQ(run[0], QPoint(2, 4));
    EXPECT_EQ(run[2], QPoint(4, 8));
    p.Clear();
    EXPECT_EQ(p.Count(), 0);
    EXPECT_THROW((void)p.Value(0), ERangeError);
}

// ---------------------------------------------------------------- model-bound vector

namespace {

std::unique_ptr<QStandardItemModel> ColumnModel(const QStringList& ys)
{
    auto m = std::make_unique<QStandardItemModel>(0, 2);
    m->setHorizontalHeaderLabels({QStringLiteral("X"), QStringLiteral("Y")});
    for (int r = 0; r < ys.size(); ++r)
        m->appendRow({new QStandardItem(QString::number(r)), new QStandardItem(ys[r])});
    return m;
}

} // namespace

TEST(VxDBVector, MirrorsColumnUpToFirstEmptyValueAndLetsGoOfTheModel)
{
    auto m = ColumnModel({"1", "2.5", "3", "4", "", "6"});
    TVxDBVector unbound;
    unbound.SetDataSource(m.get());
    EXPECT_EQ(unbound.Count(), 0); // no field: not bound

    QObject form; // while the form loads, the reload waits for Loaded
    auto* v = new TVxDBVector(&form);
    BeginLoading(&form);
    v->SetDataSource(m.get());
    v->SetDataField(QStringLiteral("y")); // header match ignores case
    EXPECT_EQ(v->Count(), 0);
    EndLoading(&form);
    EXPECT_EQ(v->ToArray(), (std::vector<double>{1, 2.5, 3, 4}));
    v->SetDataField(QStringLiteral("Missing")); // unbound: values stay
    EXPECT_EQ(v->Count(), 4);

    v->SetDataField(QStringLiteral("Y"));
    m.reset();
    EXPECT_EQ(v->DataSource(), nullptr);
    v->UpdateVector(); // unbound: nothing happens
    EXPECT_EQ(v->Count(), 4);
}

TEST(VxDBVector, FollowsEditsInsertsAndRemovals)
{
    auto m = ColumnModel({"1", "2", "3"});
    TVxDBVector v;
    v.SetDataField(QStringLiteral("Y"));
    v.SetDataSource(m.get());
    Listener l(&v);
    v.IChangedList().Add(&l, &Listener::VectorChanged);

    m->setData(m->index(1, 1), QStringLiteral("20")); // edit inside
    EXPECT_EQ(v.ToArray(), (std::vector<double>{1, 20, 3}));
    m->setData(m->index(1, 0), QStringLiteral("99")); // other column: no notice
    m->appendRow({new QStandardItem("3"), new QStandardItem("4")}); // appended after the end
    EXPECT_EQ(v.ToArray(), (std::vector<double>{1, 20, 3, 4}));
    m->removeRow(0); // dropped before the row goes
    EXPECT_EQ(v.ToArray(), (std::vector<double>{20, 3, 4}));
    m->insertRow(1, {new QStandardItem("x"), new QStandardItem("7")}); // inside: reload
    EXPECT_EQ(v.ToArray(), (std::vector<double>{20, 7, 3, 4}));
    EXPECT_EQ(l.Received, (std::vector<Notice>{{1, false, 3}, {3, false, 4}, {0, true, 4}, {-1, true, 4}}));
    m->insertRow(3, {new QStandardItem("x"), new QStandardItem("8")}); // before the last: reload
    EXPECT_EQ(v.ToArray(), (std::vector<double>{20, 7, 3, 8, 4}));

    // Emptying a value cuts the vector; filling it in again lets the rest join.
    m->setData(m->index(2, 1), QString());
    EXPECT_EQ(v.ToArray(), (std::vector<double>{20, 7}));
    m->setData(m->index(2, 1), QStringLiteral("abc")); // not a number: still the end
    EXPECT_EQ(v.Count(), 2);
    m->setData(m->index(2, 1), QStringLiteral("5"));
    EXPECT_EQ(v.ToArray(), (std::vector<double>{20, 7, 5, 8, 4}));
    // Removing the empty row that ended the vector lets the rows after it join.
    m->setData(m->index(2, 1), QString());
    m->removeRow(2);
    EXPECT_EQ(v.ToArray(), (std::vector<double>{20, 7, 8, 4}));
}

TEST(VxDBVector, SqlTableBeyondOneFetchBatch)
{
    QTemporaryDir dir;
    const QString connection = QUuid::createUuid().toString(QUuid::WithoutBraces);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(dir.filePath(QStringLiteral("data.sqlite")));
        ASSERT_TRUE(db.open());
        QSqlQuery q(db);
        ASSERT_TRUE(q.exec(QStringLiteral("CREATE TABLE samples (id INTEGER PRIMARY KEY, t REAL, signal REAL)")));
        // 600 rows: more than one fetch batch of the SQL model (256 rows); NULL in row 450.
        db.transaction();
        q.prepare(QStringLiteral("INSERT INTO samples (id, t, signal) VALUES (?, ?, ?)"));
        for (int i = 1; i <= 600; ++i) {
            q.addBindValue(i);
            q.addBindValue(i * 0.5);
            q.addBindValue(i == 450 ? QVariant() : QVariant(i * 2.0));
            ASSERT_TRUE(q.exec());
        }
        db.commit();
        QSqlTableModel model(nullptr, db);
        QSqlTableModel* m = &model;
        m->setTable(QStringLiteral("samples"));
        m->setSort(0, Qt::AscendingOrder);
        m->setEditStrategy(QSqlTableModel::OnManualSubmit);
        ASSERT_TRUE(m->select());

        TVxDBVector v, t;
        v.SetDataSource(m);
        v.SetDataField(QStringLiteral("signal"));
        t.SetDataField(QStringLiteral("T")); // bound field first, then the model
        t.SetDataSource(m);
        ASSERT_EQ(v.Count(), 449); // up to the NULL
        ASSERT_EQ(t.Count(), 600); // past the first fetch batch
        EXPECT_EQ(std::make_pair(v.Value(0), v.Value(448)), std::make_pair(2.0, 898.0));
        Listener l(&v), lt(&t);
        v.IChangedList().Add(&l, &Listener::VectorChanged);
        t.IChangedList().Add(&lt, &Listener::VectorChanged);

        ASSERT_TRUE(m->setData(m->index(2, 2), 123.25));
        EXPECT_EQ(v.Value(2), 123.25);
        EXPECT_EQ(l.Received, (std::vector<Notice>{{2, false, 449}}));
        // A new, blank record ends t where it stood; entering its value makes it join.
        const int row = m->rowCount();
        ASSERT_TRUE(m->insertRow(row));
        EXPECT_EQ(t.Count(), 600);
        ASSERT_TRUE(m->setData(m->index(row, 1), 300.5));
        EXPECT_EQ(lt.Received, (std::vector<Notice>{{600, false, 601}}));
        ASSERT_TRUE(m->setData(m->index(row, 0), 601));
        // Filling the NULL in and submitting reloads from the file: v runs on up to the new record.
        ASSERT_TRUE(m->setData(m->index(449, 2), 1.0));
        ASSERT_TRUE(m->submitAll());
        EXPECT_EQ(std::make_pair(v.Count(), t.Count()), std::make_pair(600, 601));
        EXPECT_EQ(std::make_tuple(v.Value(2), v.Value(449), t.Value(600)), std::make_tuple(123.25, 1.0, 300.5));
        // Deleting a row and submitting.
        ASSERT_TRUE(m->removeRows(0, 1));
        ASSERT_TRUE(m->submitAll());
        EXPECT_EQ(std::make_pair(v.Count(), v.Value(0)), std::make_pair(599, 4.0));
        EXPECT_EQ(std::get<0>(l.Received.back()), -1);
    }
    QSqlDatabase::removeDatabase(connection);
}
