// Speed of the numerics on large inputs: Akima and the smoothing spline on 10^6 points,
// polynomial regression of order 5 on 10^6 points, 10^6 ascending Interpolate calls, and
// the band solver at growing N (time per row should stay flat: the solver is linear).

#include "vx/core/VxVector.h"
#include "vx/numerics/VxAkima.h"
#include "vx/numerics/VxApproxSpline.h"
#include "vx/numerics/VxMatrix.h"
#include "vx/numerics/VxPolyRegr.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <random>

using namespace vx;

namespace {

// Noisy sine over [0, 100) with slightly uneven spacing, in ascending x.
struct Data {
    std::unique_ptr<TVxRealVector> X, Y;
    explicit Data(int n) : X(std::make_unique<TVxRealVector>()), Y(std::make_unique<TVxRealVector>())
    {
        std::mt19937 rng(1);
        std::uniform_real_distribution<double> jitter(0.0, 0.5), noise(-0.05, 0.05);
        for (int i = 0; i < n; ++i) {
            const double x = 100.0 * (i + jitter(rng)) / n;
            X->Add(x);
            Y->Add(std::sin(x) + noise(rng));
        }
    }
};

const Data& Million()
{
    static const Data data(1000000);
    return data;
}

void BM_AkimaRecalculate(benchmark::State& state)
{
    const Data& d = Million();
    TVxAkima akima;
    for (auto _ : state)
        akima.RecalculateCoeffs(-1e300, 1e300, *d.X, *d.Y, nullptr);
    state.SetItemsProcessed(state.iterations() * d.X->Count());
}
BENCHMARK(BM_AkimaRecalculate)->Unit(benchmark::kMillisecond);

void BM_ApproxSplineRecalculate(benchmark::State& state)
{
    const Data& d = Million();
    TVxApproxSpline spline;
    for (auto _ : state)
        spline.RecalculateCoeffs(-1e300, 1e300, *d.X, *d.Y, nullptr);
    state.SetItemsProcessed(state.iterations() * d.X->Count());
}
BENCHMARK(BM_ApproxSplineRecalculate)->Unit(benchmark::kMillisecond);

void BM_PolynomRegressionOrder5(benchmark::State& state)
{
    const Data& d = Million();
    TVxPolynomRegessionResults r;
    r.Order = 5;
    for (auto _ : state)
        PolynomRegression(-1e300, 1e300, *d.X, *d.Y, r);
    state.SetItemsProcessed(state.iterations() * d.X->Count());
}
BENCHMARK(BM_PolynomRegressionOrder5)->Unit(benchmark::kMillisecond);

// One curve drawn left to right: 10^6 ascending calls over a 10^6-knot Akima curve.
void BM_InterpolateAscending(benchmark::State& state)
{
    const Data& d = Million();
    TVxAkima akima;
    akima.RecalculateCoeffs(-1e300, 1e300, *d.X, *d.Y, nullptr);
    const int calls = 1000000;
    for (auto _ : state) {
        double sum = 0.0;
        for (int i = 0; i < calls; ++i)
            sum += akima.Interpolate(100.0 * i / calls);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * calls);
}
BENCHMARK(BM_InterpolateAscending)->Unit(benchmark::kMillisecond);

// Pentadiagonal, diagonally dominant system of N rows.
void BM_SolveBand(benchmark::State& state)
{
    const int n = int(state.range(0));
    TVxRealMatrix A0(size_t(n), TVxRealArray { 0.5, -1.0, 6.0, -1.0, 0.5 });
    TVxRealArray B0(size_t(n) + 2, 1.0);
    for (auto _ : state) {
        state.PauseTiming();
        TVxRealMatrix A = A0;
        TVxRealArray B = B0;
        state.ResumeTiming();
        SolveBand(n, 2, 2, A, B);
        benchmark::DoNotOptimize(B.data());
    }
    state.SetItemsProcessed(state.iterations() * n);
    state.SetComplexityN(n);
}
BENCHMARK(BM_SolveBand)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMicrosecond)->Complexity(benchmark::oN);

} // namespace

BENCHMARK_MAIN();
