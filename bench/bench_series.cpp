// Series drawing costs, offscreen into a 1000 x 600 image:
//  - first render of a line series (bind the data, autoscale, render) and a re-render of
//    unchanged data, 10^3 .. 10^7 points;
//  - the same for a scatter of hollow circles (radius 3, no line), 10^4 .. 10^6 points;
//  - live append: 10^5 points in batches of 100 into live vectors, a render after each
//    batch (items_per_second = appended points per second);
//  - heap bytes per point of a line series with its vectors.
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
void BM_ScatterFirstRender(benchmark::State& State) { FirstRender(State, true); }
void BM_ScatterReRender(benchmark::State& State) { ReRender(State, true); }

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
    State.SetItemsProcessed(State.iterations() * kPoints);
}

// Heap in use, including the large blocks malloc maps directly.
size_t HeapInUse()
{
    const struct mallinfo2 m = mallinfo2();
    return m.uordblks + m.hblkhd;
}

void BM_MemoryPerPoint(benchmark::State& State)
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

} // namespace

BENCHMARK(BM_LineFirstRender)->RangeMultiplier(10)->Range(1000, 10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LineReRender)->RangeMultiplier(10)->Range(1000, 10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScatterFirstRender)->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScatterReRender)->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LiveAppend)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_MemoryPerPoint)->Arg(1000000)->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
