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
        EXPECT_EQ(Y, Y2);
        for (int i = 0; i < n; ++i) {
            EXPECT_EQ(std::floor(Y[i] / 1000.0), X[i]);
            EXPECT_EQ(W[i], -Y[i]);
        }
    }
}

TEST(QuickSort, SortsOnlyTheGivenRange)
{
    TVxRealArray X { 9, 5, 3, 4, 1, 0 };
    TVxRealArray Y { 0, 1, 2, 3, 4, 5 };
    QuickSortYtoX(1, 4, X, Y);
    EXPECT_EQ(X, (TVxRealArray { 9, 1, 3, 4, 5, 0 }));
    EXPECT_EQ(Y, (TVxRealArray { 0, 4, 2, 3, 1, 5 }));
}

TEST(QuickSort, IsNotStable)
{
    // Hoare exchanges equal keys: the documented behaviour that duplicate merging sees.
    TVxRealArray X { 1, 1, 1 };
    TVxRealArray Y { 10, 20, 30 };
    QuickSortYtoX(0, 2, X, Y);
    EXPECT_EQ(Y, (TVxRealArray { 30, 20, 10 }));
}

TEST(QuickSort, LargeAdversarialInputNeitherOverflowsTheStackNorHangs)
{
    const int n = 1 << 17;
    TVxRealArray X(n), Y(n);
    for (int i = 0; i < n; ++i) {
        X[i] = i < n / 2 ? i : n - i; // organ pipe
        Y[i] = i;
    }
    X[n / 3] = NAN; // NaN neither crashes nor stalls the scans
    const TVxRealArray original = X;
    QuickSortYtoX(0, n - 1, X, Y);
    EXPECT_EQ(int(std::count_if(X.begin(), X.end(), [](double v) { return std::isnan(v); })), 1);
    TVxRealArray finite;
    for (double v : X)
        if (!std::isnan(v))
            finite.push_back(v);
    EXPECT_TRUE(std::is_sorted(finite.begin(), finite.end()));
    for (int i = 0; i < n; i += 997) // the pairing survives
        EXPECT_TRUE(X[i] == original[size_t(Y[i])] || std::isnan(X[i])) << i;
}

TEST(QuickSort, RangeOutsideTheArraysRaises)
{
    TVxRealArray X { 3, 2, 1 };
    TVxRealArray Y { 1, 2 };
    EXPECT_THROW(QuickSortYtoX(0, 2, X, Y), ERangeError);
    EXPECT_THROW(QuickSortYtoX(-1, 1, X, X), ERangeError);
    QuickSortYtoX(0, -1, Y, Y); // empty range: nothing to do
}
