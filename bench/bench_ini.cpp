// Reading a settings list of 10 000 lines: the lookups scan from the head of the list,
// so the cost of a section near the end is the worst case.
#include "vx/core/VxLargeIni.h"

#include <benchmark/benchmark.h>

using namespace vx;

namespace {

// 1000 sections of 8 keys, as the writers lay them out: 10 000 lines.
TVxIniList LargeList()
{
    TVxIniList list;
    for (int s = 0; s < 1000; ++s) {
        const QString section = QStringLiteral("Series%1").arg(s);
        list.Lines() << QString() << QLatin1Char('[') + section + QLatin1Char(']');
        for (int k = 0; k < 8; ++k)
            list.Lines() << QStringLiteral("Key%1=%2").arg(k).arg(s * 0.25 + k);
    }
    return list;
}

const TVxIniList& List()
{
    static const TVxIniList list = LargeList();
    return list;
}

void BM_ReadSectionValuesLast(benchmark::State& state)
{
    QStringList values;
    for (auto _ : state) {
        List().ReadSectionValues(QStringLiteral("series999"), values);
        benchmark::DoNotOptimize(values);
    }
    state.counters["lines"] = List().Count();
}
BENCHMARK(BM_ReadSectionValuesLast)->Unit(benchmark::kMicrosecond);

void BM_ReadAllKeysOfLastSection(benchmark::State& state)
{
    for (auto _ : state) {
        double sum = 0;
        for (int k = 0; k < 8; ++k)
            sum += List().ReadReal(QStringLiteral("Series999"), QStringLiteral("key%1").arg(k), 0);
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(BM_ReadAllKeysOfLastSection)->Unit(benchmark::kMicrosecond);

void BM_ReadStringMiddle(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(List().ReadString(QStringLiteral("Series500"), QStringLiteral("Key7"), QString()));
}
BENCHMARK(BM_ReadStringMiddle)->Unit(benchmark::kMicrosecond);

void BM_WriteStringLastSection(benchmark::State& state)
{
    TVxIniList list = List();
    int i = 0;
    for (auto _ : state)
        list.WriteInteger(QStringLiteral("Series999"), QStringLiteral("Key3"), ++i);
}
BENCHMARK(BM_WriteStringLastSection)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
