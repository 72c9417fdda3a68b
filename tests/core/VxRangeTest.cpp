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
    explicit ChangeCounter(TRange& range)
    {
        range.SetOnChanged([this](TRange* r) {
            ++count;
            last = r;
        });
    }
};

std::pair<double, double> Ends(const TRange& r) { return {r.Start(), r.Stop()}; }

class DerivedRange : public TRange {};
class Unrelated {
public:
    virtual ~Unrelated() = default;
};

} // namespace

TEST(VxRange, WideningReportsTheEndThatMoved)
{
    TRange fresh; // empty: the first value sets both ends
    ChangeCounter freshChanges(fresh);
    EXPECT_EQ(Ends(fresh), std::make_pair(CVxMaxReal, CVxMinReal));
    EXPECT_EQ(fresh.IfRangeChanged(5.0), rgBothChanged);
    EXPECT_EQ(Ends(fresh), std::make_pair(5.0, 5.0));
    EXPECT_EQ(std::make_pair(freshChanges.count, freshChanges.last), std::make_pair(1, &fresh));

    const struct {
        double value;
        TRangeChangedResult result;
        double start, stop;
    } rows[] = {{1.0, rgMinChanged, 1.0, 4.0}, {9.0, rgMaxChanged, 2.0, 9.0}, {3.0, rgNotChanged, 2.0, 4.0},
                {2.0, rgNotChanged, 2.0, 4.0}, {4.0, rgNotChanged, 2.0, 4.0}}; // ends compare strictly
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        TRange range;
        range.SetStartStop(2.0, 4.0);
        ChangeCounter changes(range);
        EXPECT_EQ(range.IfRangeChanged(row.value), row.result);
        EXPECT_EQ(Ends(range), std::make_pair(row.start, row.stop));
        EXPECT_EQ(changes.count, row.result == rgNotChanged ? 0 : 1);
    }
}

TEST(VxRange, SettersAlwaysNotifyResetNeverDoes)
{
    TRange range;
    ChangeCounter changes(range);
    range.SetStart(3.0);
    range.SetStart(3.0);
    range.SetStop(-1.0); // no ordering check
    range.SetStartStop(3.0, -1.0);
    EXPECT_EQ(changes.count, 4);
    EXPECT_EQ(Ends(range), std::make_pair(3.0, -1.0));
    range.Reset();
    EXPECT_EQ(changes.count, 4);
    EXPECT_EQ(Ends(range), std::make_pair(CVxMaxReal, CVxMinReal));
}

TEST(VxRange, AssignCopiesEndsNotTheEventAndRefusesForeignSources)
{
    TRange source;
    ChangeCounter sourceChanges(source);
    source.SetStartStop(-2.0, 8.0);
    DerivedRange target;
    ChangeCounter targetChanges(target);
    target.Assign(source);
    EXPECT_EQ(Ends(target), std::make_pair(-2.0, 8.0));
    EXPECT_EQ(targetChanges.count, 1);
    EXPECT_EQ(targetChanges.last, &target);
    EXPECT_EQ(sourceChanges.count, 1);
    TRange other; // a descendant is a valid source, also through a pointer of its own type
    other.Assign(&target);
    EXPECT_EQ(other.Stop(), 8.0);

    Unrelated foreign;
    const int plain = 3;
    VX_EXPECT_THROW_MSG(target.Assign(&foreign), EConvertError, QStringLiteral("Cannot be assigned to TRange"));
    EXPECT_THROW(target.Assign(static_cast<const TRange*>(nullptr)), EConvertError);
    EXPECT_THROW(target.Assign(&plain), EConvertError);
    EXPECT_EQ(Ends(target), std::make_pair(-2.0, 8.0));
    EXPECT_EQ(targetChanges.count, 1);
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
    EXPECT_EQ(list.IndexOf(&c), -1);
    EXPECT_THROW(list.Items(2), EListError);
    EXPECT_THROW(list.Items(-1), EListError);
    EXPECT_EQ(std::vector<TRange*>(list.begin(), list.end()), (std::vector<TRange*>{&b, &a}));
}
