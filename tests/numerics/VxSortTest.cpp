#include "vx/numerics/VxSort.h"
#include "vx/platform/VxExceptions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace vx;

TEST(QuickSort, SortsXAndCarriesThePairedArrays)
{
    std::mt19937 rng(3);
    std::uniform_int_distribution<int> u(0, 50); // many equal x
    for (int n : { 2, 3, 10, 1000 }) {
        SCOPED_TRACE(n);
        TVxRealArray X(n), Y(n), W(n);
        for (int i = 0; i < n; ++i) {
            X[i] = u(rng);
            Y[i] = 1000.0 * X[i] + i; // pairing is recoverable from Y
            W[i] = -Y[i];
        }
        TVxRealArray X2 = X, Y2 = Y;
        QuickSortYtoX(0, n - 1, X2, Y2);
        QuickSortYWtoX(0, n - 1, X, Y, W);
        EXPECT_TRUE(std::is_sorted(X.begin(), X.end()));
        EXPECT_EQ(X, X2);
        EXPECT_EQ(Y, Y2); // both sorts permute alike
        for (int i = 0; i < n; ++i) {
            EXPECT_EQ(std::floor(Y[i] / 1000.0), X[i]);
            EXPECT_EQ(W[i], -Y[i]);
        }
    }
}

TEST(QuickSort, HoareOrderOfEqualKeysAndSubranges)
{
    struct Row {
        int L, R;
        TVxRealArray X, Y, SortedY;
    } rows[] = {
        { 0, 2, { 1, 1, 1 }, { 10, 20, 30 }, { 30, 20, 10 } }, // not stable
        { 0, 4, { 1, 2, 3, 4, 5 }, { 0, 1, 2, 3, 4 }, { 0, 1, 2, 3, 4 } }, // sorted: no visible exchange
        { 0, 3, { 1, 2, 2, 3 }, { 0, 1, 2, 3 }, { 0, 2, 1, 3 } }, // ... except of equal keys
        { 1, 4, { 9, 5, 3, 4, 1, 0 }, { 0, 1, 2, 3, 4, 5 }, { 0, 4, 2, 3, 1, 5 } }, // only L..R
    };
    for (Row& row : rows) {
        SCOPED_TRACE(row.R);
        QuickSortYtoX(row.L, row.R, row.X, row.Y);
        EXPECT_EQ(row.Y, row.SortedY);
    }
}

TEST(QuickSort, AdversarialInputAndBadRanges)
{
    // An organ pipe drives the middle pivot quadratic; it must neither hang nor overflow
    // the stack, and a NaN must not stall the scans.
    const int n = 1 << 17;
    TVxRealArray X(n), Y(n);
    for (int i = 0; i < n; ++i) {
        X[i] = i < n / 2 ? i : n - i;
        Y[i] = i;
    }
    X[n / 3] = NAN;
    const TVxRealArray original = X;
    QuickSortYtoX(0, n - 1, X, Y);
    TVxRealArray finite;
    std::copy_if(X.begin(), X.end(), std::back_inserter(finite), [](double v) { return !std::isnan(v); });
    EXPECT_EQ(finite.size(), size_t(n - 1));
    EXPECT_TRUE(std::is_sorted(finite.begin(), finite.end()));
    for (int i = 0; i < n; i += 997) // the pairing survives
        EXPECT_TRUE(X[i] == original[size_t(Y[i])] || std::isnan(X[i])) << i;

    TVxRealArray A { 3, 2, 1 }, B { 1, 2 };
    EXPECT_THROW(QuickSortYtoX(0, 2, A, B), ERangeError);
    EXPECT_THROW(QuickSortYtoX(-1, 1, A, A), ERangeError);
    QuickSortYtoX(0, -1, B, B); // empty range: nothing to do
}
