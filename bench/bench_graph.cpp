// Time of one full layout and paint of a graph with four axes (bottom, left, top, right;
// captions, a common power-of-ten label, logarithmic top axis) into an image.

#include "vx/graph/VxAxis.h"
#include "vx/graph/VxGraph2D.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>

using namespace vx;

namespace {

void SetUp(TVx2DGraph& g)
{
    g.resize(800, 600);
    g.SetCaption("Four axes");
    g.SetShowTitle(true);
    g.SetDataColor(clWhite);
    g.FrameLine().SetVisible(true);
    g.MajorGridX().SetVisible(true);
    g.MajorGridY().SetVisible(true);
    TVxAxis* x = g.XAxis();
    x->SetStart(0);
    x->SetStop(20000);
    x->SetCaption("Time t / s");
    x->SetShowCaption(true);
    TVxAxis* y = g.YAxis();
    y->SetStart(-1.3);
    y->SetStop(2.7);
    y->SetCaption("Amplitude \\iA\\i / V");
    y->SetShowCaption(true);
    auto* top = new TVxAxis(&g);
    top->SetPosition(AxTopPos);
    top->SetScaling(AxLogEE);
    top->SetStart(0.5);
    top->SetStop(2000);
    auto* right = new TVxAxis(&g);
    right->SetPosition(AxRightPos);
    right->SetMasterAxis(y);
}

void BM_GraphLayoutAndPaint(benchmark::State& state)
{
    TVx2DGraph g;
    SetUp(g);
    QImage image(g.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        g.Modified(); // forces the full calculation: scaling, ticks, labels, layout
        QPainter painter(&image);
        g.RenderTo(painter);
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(BM_GraphLayoutAndPaint)->Unit(benchmark::kMillisecond);

void BM_AxisScaleAndTicks(benchmark::State& state)
{
    TVxAxisScaleOptions options;
    for (auto _ : state) {
        TVxAxisScale scale;
        scale.Start = 0.3;
        scale.Stop = 97;
        const TVxAxisScale ends = CalculateAxisEnds(scale, options);
        benchmark::DoNotOptimize(CalculateAxisTicks(ends, options));
    }
}
BENCHMARK(BM_AxisScaleAndTicks)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
