#include "vx/core/VxConsts.h"
#include "vx/core/VxRange.h"
#include "vx/platform/VxExceptions.h"

#include <gtest/gtest.h>
#include "support/ExpectThrowMessage.h"

using namespace vx;

namespace {

// Counts OnChanged calls and remembers the range reported.
struct ChangeCounter {
    int count = 0;
    TRange* last = nullptr;
    void Attach(TRange& range)
    {
        range.SetOnChanged([this](TRange* r) {
            ++count;
            last = r;
        });
    }
};

std::pair<double, double> Ends(const TRange& r)
{
    return {r.Start(), r.Stop()};
}

class DerivedRange : public TRange {};
class Unrelated {
public:
    virtual ~Unrelated() = default;
};

} // namespace

TEST(VxRange, FreshRangeIsEmptyAndTheFirstValueSetsBothEnds)
{
    TRange range;
    ChangeCounter changes;
    changes.Attach(range);
    EXPECT_EQ(Ends(range), std::make_pair(CVxMaxReal, CVxMinReal));
    EXPECT_EQ(range.IfRangeChanged(5.0), rgBothChanged);
    EXPECT_EQ(Ends(range), std::make_pair(5.0, 5.0));
    EXPECT_EQ(changes.count, 1);
    EXPECT_EQ(changes.last, &range);
    EXPECT_EQ(range.IfRangeChanged(5.0), rgNotChanged);
    EXPECT_EQ(changes.count, 1);
}

TEST(VxRange, WideningReportsTheEndThatMoved)
{
    struct Row {
        const char* name;
        double value;
        TRangeChangedResult result;
        double start, stop;
    };
    const Row rows[] = {
        {"below", 1.0, rgMinChanged, 1.0, 4.0},
        {"above", 9.0, rgMaxChanged, 2.0, 9.0},
        {"inside", 3.0, rgNotChanged, 2.0, 4.0},
        {"equal to an end", 4.0, rgNotChanged, 2.0, 4.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TRange range;
        range.SetStartStop(2.0, 4.0);
        ChangeCounter changes;
        changes.Attach(range);
        EXPECT_EQ(range.IfRangeChanged(row.value), row.result);
        EXPECT_EQ(Ends(range), std::make_pair(row.start, row.stop));
        EXPECT_EQ(changes.count, row.result == rgNotChanged ? 0 : 1);
    }
}

TEST(VxRange, SettersAlwaysNotifyAndResetNeverDoes)
{
    TRange range;
    ChangeCounter changes;
    changes.Attach(range);
    range.SetStart(3.0);
    range.SetStart(3.0);
    range.SetStop(-1.0); // no ordering check
    range.SetStartStop(3.0, -1.0);
    EXPECT_EQ(changes.count, 4);
    EXPECT_EQ(Ends(range), std::make_pair(3.0, -1.0));
    range.Reset();
    EXPECT_EQ(changes.count, 4);
    EXPECT_EQ(range.Start(), CVxMaxReal);
}

TEST(VxRange, AssignCopiesEndsNotTheEvent)
{
    TRange source;
    ChangeCounter sourceChanges;
    sourceChanges.Attach(source);
    source.SetStartStop(-2.0, 8.0);

    DerivedRange target;
    ChangeCounter targetChanges;
    targetChanges.Attach(target);
    target.Assign(source);
    EXPECT_EQ(Ends(target), std::make_pair(-2.0, 8.0));
    EXPECT_EQ(targetChanges.count, 1);
    EXPECT_EQ(targetChanges.last, &target);
    EXPECT_EQ(sourceChanges.count, 1);

    // A descendant is a valid source too, also through a pointer of its own type.
    TRange other;
    other.Assign(&target);
    EXPECT_EQ(other.Stop(), 8.0);
}

TEST(VxRange, AssignFromAForeignSourceRaisesAndKeepsTheRange)
{
    TRange range;
    range.SetStartStop(1.0, 2.0);
    ChangeCounter changes;
    changes.Attach(range);
    Unrelated foreign;
    VX_EXPECT_THROW_MSG(range.Assign(&foreign), EConvertError, QStringLiteral("Cannot be assigned to TRange"));
    EXPECT_THROW(range.Assign(static_cast<const TRange*>(nullptr)), EConvertError);
    const int plain = 3;
    EXPECT_THROW(range.Assign(&plain), EConvertError);
    EXPECT_EQ(Ends(range), std::make_pair(1.0, 2.0));
    EXPECT_EQ(changes.count, 0);
}

TEST(VxRangeList, HoldsEachRangeOnceAndReAddingMovesItToTheEnd)
{
    TRange a, b, c;
    TRangeList list;
    for (TRange* r : {&a, &b, &c, &a})
        list.Add(r);
    ASSERT_EQ(list.Count(), 3);
    EXPECT_EQ(list.Items(0), &b);
    EXPECT_EQ(list[2], &a);
    EXPECT_EQ(list.IndexOf(&c), 1);

    list.Remove(&c);
    list.Remove(&c);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list.IndexOf(&c), -1);
    EXPECT_THROW(list.Items(2), EListError);
    EXPECT_THROW(list.Items(-1), EListError);

    EXPECT_EQ(std::vector<TRange*>(list.begin(), list.end()), (std::vector<TRange*>{&b, &a}));
}
