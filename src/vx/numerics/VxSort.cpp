#include "vx/numerics/VxSort.h"

#include "vx/platform/VxExceptions.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

namespace vx {

namespace {

void CheckBounds(int L, int R, const TVxRealArray& a)
{
    if (L < 0 || R >= static_cast<int>(a.size()))
        throw ERangeError();
}

// Hoare partition with the middle element as pivot. The order in which it leaves equal
// keys is part of the interface (duplicate merging depends on it), so the plain algorithm
// runs whenever it is efficient. Inputs that drive it quadratic (an organ pipe, x rising
// and falling again) exhaust a work budget of O(n log n) element visits; the ranges still
// open then finish with a stable sort, NaN last, so no input can stall it.
template <typename SwapPaired>
class THoareSort {
public:
    THoareSort(TVxRealArray& X, SwapPaired swapPaired, int n)
        : FX(X), FSwap(swapPaired)
    {
        const double logN = std::log2(double(std::max(n, 2)));
        FBudget = 8.0 * n * logN + double(1 << 20);
    }

    void Sort(int L, int R)
    {
        // Recursing into the smaller part and looping on the larger keeps the stack
        // depth logarithmic; the parts are disjoint, so the result is that of the plain
        // doubly recursive sort.
        while (L < R) {
            FBudget -= R - L + 1;
            if (FBudget < 0.0) {
                Fallback(L, R);
                return;
            }
            int i = L;
            int j = R;
            const double P = FX[L + (R - L) / 2];
            do {
                while (FX[i] < P)
                    ++i;
                while (P < FX[j])
                    --j;
                if (i <= j) {
                    FSwap(i, j);
                    std::swap(FX[i], FX[j]);
                    ++i;
                    --j;
                }
            } while (i <= j);
            if (j - L < R - i) {
                if (L < j)
                    Sort(L, j);
                L = i;
            } else {
                if (i < R)
                    Sort(i, R);
                R = j;
            }
        }
    }

private:
    // Sorts L..R through a permutation, applied with the same pairwise exchanges.
    void Fallback(int L, int R)
    {
        std::vector<int> order(size_t(R - L + 1));
        std::iota(order.begin(), order.end(), L);
        std::stable_sort(order.begin(), order.end(), [this](int a, int b) {
            const double x = FX[a];
            const double y = FX[b];
            return std::isnan(y) ? !std::isnan(x) : x < y;
        });
        // where[k]: current position of the element originally at k; at[p]: its inverse.
        std::vector<int> where(order.size()), at(order.size());
        std::iota(where.begin(), where.end(), 0);
        std::iota(at.begin(), at.end(), 0);
        for (int p = 0; p < int(order.size()); ++p) {
            const int q = where[size_t(order[size_t(p)] - L)];
            if (q == p)
                continue;
            FSwap(L + p, L + q);
            std::swap(FX[size_t(L + p)], FX[size_t(L + q)]);
            const int a = at[size_t(p)];
            const int b = at[size_t(q)];
            std::swap(at[size_t(p)], at[size_t(q)]);
            where[size_t(a)] = q;
            where[size_t(b)] = p;
        }
    }

    TVxRealArray& FX;
    SwapPaired FSwap;
    double FBudget = 0.0;
};

template <typename SwapPaired>
void HoareSort(int L, int R, TVxRealArray& X, SwapPaired swapPaired)
{
    THoareSort<SwapPaired>(X, swapPaired, R - L + 1).Sort(L, R);
}

} // namespace

void QuickSortYtoX(int L, int R, TVxRealArray& X, TVxRealArray& Y)
{
    if (L >= R)
        return;
    CheckBounds(L, R, X);
    CheckBounds(L, R, Y);
    HoareSort(L, R, X, [&Y](int i, int j) { std::swap(Y[size_t(i)], Y[size_t(j)]); });
}

void QuickSortYWtoX(int L, int R, TVxRealArray& X, TVxRealArray& Y, TVxRealArray& W)
{
    if (L >= R)
        return;
    CheckBounds(L, R, X);
    CheckBounds(L, R, Y);
    CheckBounds(L, R, W);
    HoareSort(L, R, X, [&Y, &W](int i, int j) {
        std::swap(W[size_t(i)], W[size_t(j)]);
        std::swap(Y[size_t(i)], Y[size_t(j)]);
    });
}

} // namespace vx
