// Appending to the data vectors: amortised O(1) per value despite the small linear
// Increment of the vectors' documented capacity rule.
#include "vx/core/VxVector.h"

#include <benchmark/benchmark.h>

#include <QObject>

using namespace vx;

namespace {

constexpr int kAppends = 10'000'000;

class Counter : public QObject {
public:
    void Changed(int, bool) { ++Notices; }
    long Notices = 0;
};

void BM_RealVectorAppend(benchmark::State& state)
{
    for (auto _ : state) {
        TVxRealVector v;
        for (int i = 0; i < kAppends; ++i)
            v.Add(i * 0.5);
        benchmark::DoNotOptimize(v.Data());
    }
    state.SetItemsProcessed(state.iterations() * kAppends);
}
BENCHMARK(BM_RealVectorAppend)->Unit(benchmark::kMillisecond);

void BM_LiveVectorAppendWithSubscriber(benchmark::State& state)
{
    for (auto _ : state) {
        TVxLiveVector v;
        Counter c;
        v.IChangedList().Add(&c, &Counter::Changed);
        for (int i = 0; i < kAppends; ++i)
            v.Add(i * 0.5);
        benchmark::DoNotOptimize(c.Notices);
    }
    state.SetItemsProcessed(state.iterations() * kAppends);
}
BENCHMARK(BM_LiveVectorAppendWithSubscriber)->Unit(benchmark::kMillisecond);

void BM_PointVectorAppend(benchmark::State& state)
{
    for (auto _ : state) {
        TVxPointVector v;
        for (int i = 0; i < kAppends; ++i)
            v.Add(QPoint(i, i));
        benchmark::DoNotOptimize(v.GetPointer(0));
    }
    state.SetItemsProcessed(state.iterations() * kAppends);
}
BENCHMARK(BM_PointVectorAppend)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
