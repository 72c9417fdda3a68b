#include "vx/numerics/VxSort.h"

#include "vx/platform/VxExceptions.h"

#include <utility>

namespace vx {

namespace {

void CheckBounds(int L, int R, const TVxRealArray& a)
{
    if (L < 0 || R >= static_cast<int>(a.size()))
        throw ERangeError();
}

// Hoare partition with the middle element as pivot. Recursing into the smaller part and
// looping on the larger keeps the stack depth logarithmic; the parts are disjoint, so
// the result equals that of the plain doubly recursive sort.
template <typename SwapPaired>
void HoareSort(int L, int R, TVxRealArray& X, SwapPaired swapPaired)
{
    while (L < R) {
        int i = L;
        int j = R;
        const double P = X[L + (R - L) / 2];
        do {
            while (X[i] < P)
                ++i;
            while (P < X[j])
                --j;
            if (i <= j) {
                swapPaired(i, j);
                std::swap(X[i], X[j]);
                ++i;
                --j;
            }
        } while (i <= j);
        if (j - L < R - i) {
            if (L < j)
                HoareSort(L, j, X, swapPaired);
            L = i;
        } else {
            if (i < R)
                HoareSort(i, R, X, swapPaired);
            R = j;
        }
    }
}

} // namespace

void QuickSortYtoX(int L, int R, TVxRealArray& X, TVxRealArray& Y)
{
    if (L >= R)
        return;
    CheckBounds(L, R, X);
    CheckBounds(L, R, Y);
    HoareSort(L, R, X, [&Y](int i, int j) { std::swap(Y[i], Y[j]); });
}

void QuickSortYWtoX(int L, int R, TVxRealArray& X, TVxRealArray& Y, TVxRealArray& W)
{
    if (L >= R)
        return;
    CheckBounds(L, R, X);
    CheckBounds(L, R, Y);
    CheckBounds(L, R, W);
    HoareSort(L, R, X, [&Y, &W](int i, int j) {
        std::swap(W[i], W[j]);
        std::swap(Y[i], Y[j]);
    });
}

} // namespace vx
