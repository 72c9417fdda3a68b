#include "vx/numerics/VxSort.h"
#include "vx/platform/VxExceptions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace vx;

namespace {

// The textbook recursive Hoare sort with the middle pivot: the order it leaves equal
// keys in is what duplicate merging sees.
void Hoare(int L, int R, TVxRealArray& X, TVxRealArray& Y)
{
    int i = L, j = R;
    const double P = X[(L + R) / 2];
    do {
        while (X[i] < P)
            ++i;
        while (P < X[j])
            --j;
        if (i <= j) {
            std::swap(Y[i], Y[j]);
            std::swap(X[i++], X[j--]);
        }
    } while (i <= j);
    if (L < j)
        Hoare(L, j, X, Y);
    if (i < R)
        Hoare(i, R, X, Y);
}

} // namespace

TEST(QuickSort, LeavesEqualKeysInHoareOrderAndCarriesThePairedArrays)
{
    std::mt19937 rng(3);
    for (int n : { 2, 3, 10, 1000, 200000 }) {
        for (bool organPipe : { false, true }) {
            SCOPED_TRACE(n * 10 + organPipe);
            if (organPipe && n > 1000)
                continue; // the textbook sort would recurse too deep
            TVxRealArray X(n), Y(n), W(n);
            for (int i = 0; i < n; ++i) {
                X[i] = organPipe ? std::min(i, n - i) : double(rng() % 50); // many equal x
                Y[i] = i;
                W[i] = -i;
            }
            TVxRealArray Xr = X, Yr = Y, X2 = X, Y2 = Y;
            Hoare(0, n - 1, Xr, Yr);
            QuickSortYtoX(0, n - 1, X2, Y2);
            QuickSortYWtoX(0, n - 1, X, Y, W);
            EXPECT_TRUE(Xr == X && Xr == X2);
            EXPECT_TRUE(Yr == Y && Yr == Y2);
            for (int i = 0; i < n; ++i)
                ASSERT_EQ(W[i], -Y[i]);
        }
    }
}

TEST(QuickSort, AdversarialInputSubrangesAndBadRanges)
{
    // A long organ pipe drives the middle pivot quadratic; it must neither hang nor
    // overflow the stack, and a NaN must not stall the scans.
    const int n = 1 << 17;
    TVxRealArray X(n), Y(n);
    for (int i = 0; i < n; ++i) {
        X[i] = i < n / 2 ? i : n - i;
        Y[i] = i;
    }
    X[n / 3] = NAN;
    const TVxRealArray original = X;
    QuickSortYtoX(0, n - 1, X, Y);
    for (int i = 0; i < n; i += 997) // the pairing survives
        EXPECT_TRUE(X[i] == original[size_t(Y[i])] || std::isnan(X[i])) << i;
    X.erase(std::remove_if(X.begin(), X.end(), [](double v) { return std::isnan(v); }), X.end());
    EXPECT_EQ(X.size(), size_t(n - 1));
    EXPECT_TRUE(std::is_sorted(X.begin(), X.end()));

    // Three equal keys come out reversed; a subrange leaves the rest alone.
    TVxRealArray A { 1, 1, 1 }, B { 10, 20, 30 }, C { 9, 5, 3, 4, 1, 0 }, D { 0, 1, 2, 3, 4, 5 };
    QuickSortYtoX(0, 2, A, B);
    EXPECT_EQ(B, (TVxRealArray { 30, 20, 10 }));
    QuickSortYtoX(1, 4, C, D);
    EXPECT_EQ(D, (TVxRealArray { 0, 4, 2, 3, 1, 5 }));
    A = { 3, 2, 1 };
    B = { 1, 2 };
    EXPECT_THROW(QuickSortYtoX(0, 2, A, B), ERangeError);
    EXPECT_THROW(QuickSortYtoX(-1, 1, A, A), ERangeError);
    QuickSortYtoX(0, -1, B, B); // empty range: nothing to do
}
