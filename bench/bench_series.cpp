// Series drawing costs, offscreen into a 1000 x 600 image (points = argument):
//  - BM_LineFirstRender: bind the data to a new line series, autoscale, render;
//    BM_LineReRender: render again with the data unchanged; 10^3 .. 10^7 points;
//  - BM_HollowCirclesFirstRender / BM_HollowCirclesReRender: the same for a data series
//    drawn as hollow circles of radius 3 without a line, 10^4 .. 10^6 points;
//  - BM_LiveAppend: 10^5 points appended to live vectors in batches of 100, a render after
//    each batch; counters points_per_second and seconds_per_frame (mean over the batches);
//  - BM_LineMemoryPerPoint: heap bytes per point (counter bytes_per_point) of a rendered
//    line series with its two vectors.
#include "vx/core/VxVector.h"
#include "vx/graph/VxGraph2D.h"
#include "vx/series/VxDataSeries.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <benchmark/benchmark.h>
#include <cmath>
#include <malloc.h>
#include <memory>

using namespace vx;

namespace {

constexpr int kWidth = 1000;
constexpr int kHeight = 600;

struct Scene {
    std::unique_ptr<QWidget> Form = std::make_unique<QWidget>();
    TVx2DGraph* Graph;
    QImage Image{kWidth, kHeight, QImage::Format_ARGB32_Premultiplied};

    Scene()
    {
        Graph = new TVx2DGraph(Form.get());
        Graph->resize(kWidth, kHeight);
        Graph->SetDataColor(clWhite);
    }
    void Render()
    {
        Image.fill(Qt::white);
        QPainter painter(&Image);
        Graph->RenderTo(painter);
    }
};

// A noisy oscillation over increasing x.
void FillLine(TVxRealVector& X, TVxRealVector& Y, int N)
{
    QRandomGenerator rng(1);
    X.SetCapacity(N + 1);
    Y.SetCapacity(N + 1);
    for (int i = 0; i < N; ++i) {
        X.Add(i);
        Y.Add(std::sin(i * 20.0 / N) * 100 + rng.generateDouble() * 10);
    }
}

void FillScatter(TVxRealVector& X, TVxRealVector& Y, int N)
{
    QRandomGenerator rng(2);
    X.SetCapacity(N + 1);
    Y.SetCapacity(N + 1);
    for (int i = 0; i < N; ++i) {
        const double r = std::sqrt(-2 * std::log(rng.generateDouble() + 1e-12));
        const double a = rng.generateDouble() * 6.283185307179586;
        X.Add(r * std::cos(a));
        Y.Add(r * std::sin(a));
    }
}

TVxDataSeries* NewSeries(Scene& S, TVxCustomRealVector* X, TVxCustomRealVector* Y, bool Scatter)
{
    auto* s = new TVxDataSeries(S.Form.get());
    if (Scatter) {
        s->LineStyle().SetVisible(false);
        s->PointStyle().SetStyle(SyCircle);
        s->PointStyle().SetSize(3);
    } else {
        s->PointStyle().SetVisible(false);
    }
    s->SetXData(X);
    s->SetYData(Y);
    return s;
}

void FirstRender(benchmark::State& State, bool Scatter)
{
    Scene scene;
    auto* x = new TVxRealVector(scene.Form.get());
    auto* y = new TVxRealVector(scene.Form.get());
    const int n = int(State.range(0));
    (Scatter ? FillScatter : FillLine)(*x, *y, n);
    for (auto _ : State) {
        TVxDataSeries* s = NewSeries(scene, x, y, Scatter);
        scene.Render();
        State.PauseTiming();
        delete s;
        scene.Graph->Modified();
        State.ResumeTiming();
    }
    State.SetItemsProcessed(State.iterations() * n);
}

void ReRender(benchmark::State& State, bool Scatter)
{
    Scene scene;
    auto* x = new TVxRealVector(scene.Form.get());
    auto* y = new TVxRealVector(scene.Form.get());
    const int n = int(State.range(0));
    (Scatter ? FillScatter : FillLine)(*x, *y, n);
    NewSeries(scene, x, y, Scatter);
    scene.Render();
    for (auto _ : State)
        scene.Render();
    State.SetItemsProcessed(State.iterations() * n);
}

void BM_LineFirstRender(benchmark::State& State) { FirstRender(State, false); }
void BM_LineReRender(benchmark::State& State) { ReRender(State, false); }
void BM_HollowCirclesFirstRender(benchmark::State& State) { FirstRender(State, true); }
void BM_HollowCirclesReRender(benchmark::State& State) { ReRender(State, true); }

void BM_LiveAppend(benchmark::State& State)
{
    constexpr int kPoints = 100000;
    constexpr int kBatch = 100;
    for (auto _ : State) {
        State.PauseTiming();
        Scene scene;
        auto* x = new TVxLiveVector(scene.Form.get());
        auto* y = new TVxLiveVector(scene.Form.get());
        NewSeries(scene, x, y, false);
        State.ResumeTiming();
        for (int i = 0; i < kPoints;) {
            for (int k = 0; k < kBatch; ++k, ++i) {
                x->Add(i * 0.01);
                y->Add(std::sin(i * 0.001) * 50 + (i % 13));
            }
            scene.Render();
        }
        State.PauseTiming();
        scene.Form.reset();
        State.ResumeTiming();
    }
    const double points = double(State.iterations()) * kPoints;
    State.counters["points_per_second"] = benchmark::Counter(points, benchmark::Counter::kIsRate);
    State.counters["seconds_per_frame"] =
        benchmark::Counter(points / kBatch, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// Heap in use, including the large blocks malloc maps directly.
size_t HeapInUse()
{
    const struct mallinfo2 m = mallinfo2();
    return m.uordblks + m.hblkhd;
}

void BM_LineMemoryPerPoint(benchmark::State& State)
{
    const int n = int(State.range(0));
    double perPoint = 0;
    for (auto _ : State) {
        const size_t before = HeapInUse();
        {
            Scene scene;
            auto* x = new TVxLiveVector(scene.Form.get());
            auto* y = new TVxLiveVector(scene.Form.get());
            NewSeries(scene, x, y, false);
            for (int i = 0; i < n; ++i) {
                x->Add(i);
                y->Add(std::sin(i * 0.001));
            }
            x->SetCapacity(x->Count() + 1); // drop the growth reserve, as a filled vector would
            y->SetCapacity(y->Count() + 1);
            scene.Render();
            perPoint = double(HeapInUse() - before) / n;
        }
    }
    State.counters["bytes_per_point"] = perPoint;
}

// 10^3 .. 10^7 points for lines, 10^4 .. 10^6 for circles, timed in milliseconds.
void LineSizes(benchmark::internal::Benchmark* B)
{
    B->ArgName("points")->RangeMultiplier(10)->Range(1000, 10000000)->Unit(benchmark::kMillisecond);
}
void CircleSizes(benchmark::internal::Benchmark* B)
{
    B->ArgName("points")->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(BM_LineFirstRender)->Apply(LineSizes);
BENCHMARK(BM_LineReRender)->Apply(LineSizes);
BENCHMARK(BM_HollowCirclesFirstRender)->Apply(CircleSizes);
BENCHMARK(BM_HollowCirclesReRender)->Apply(CircleSizes);
BENCHMARK(BM_LiveAppend)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_LineMemoryPerPoint)->ArgName("points")->Arg(1000000)->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
