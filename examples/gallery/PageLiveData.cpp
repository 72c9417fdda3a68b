// Data arriving while the graph is shown: live vectors fed by a timer.
#include "GalleryPages.h"
#include "PageSeriesCommon.h"

#include <QTimer>
#include <cmath>

using namespace vx;

namespace {

// Appends samples of a noisy, slowly drifting signal to the live vectors of the page.
class TLiveFeed : public QObject {
public:
    TLiveFeed(QObject* Owner, TVxLiveVector* X, TVxLiveVector* Y) : QObject(Owner), FX(X), FY(Y)
    {
        setObjectName(QStringLiteral("liveFeed"));
    }
    void Append(int Count)
    {
        for (int k = 0; k < Count; ++k, ++FN) {
            const double t = FN * 0.05;
            // A deterministic pseudo-noise keeps exported pictures reproducible.
            const double noise = std::sin(FN * 12.9898) * 43758.5453;
            FX->Add(t);
            FY->Add(3 * std::sin(t * 0.7) + 0.02 * t + 0.4 * (noise - std::floor(noise) - 0.5));
        }
    }

private:
    TVxLiveVector* FX;
    TVxLiveVector* FY;
    int FN = 0;
};

QWidget* CreateLiveData()
{
    TVx2DGraph* graph = gallery::NewGraph("Live signal");
    gallery::FollowData(graph->XAxis(), "Time \\it\\i  / s");
    gallery::FollowData(graph->YAxis(), "Signal / mV");
    auto* x = new TVxLiveVector(graph);
    auto* y = new TVxLiveVector(graph);
    auto* s = new TVxLineSeries(graph);
    s->LineStyle().SetColor(clNavy);
    s->SetXData(x);
    s->SetYData(y);
    auto* feed = new TLiveFeed(graph, x, y);
    feed->Append(50);
    auto* timer = new QTimer(graph);
    timer->setObjectName(QStringLiteral("liveTimer"));
    QObject::connect(timer, &QTimer::timeout, feed, [feed] { feed->Append(20); });
    timer->start(40);
    return graph;
}

// Export: stop the clock and append a fixed number of samples, as if they had arrived.
void PrepareLiveData(QWidget* Page)
{
    if (auto* timer = Page->findChild<QTimer*>(QStringLiteral("liveTimer")))
        timer->stop();
    if (auto* feed = dynamic_cast<TLiveFeed*>(Page->findChild<QObject*>(QStringLiteral("liveFeed"))))
        feed->Append(4000);
}

const GalleryRegistrar registrar{{
    "25-live-data",
    "Live data: a timer appends samples to two live vectors, and the axes follow the data as it "
    "arrives (each appended point widens the ranges in constant time; only new points are "
    "mapped and drawn). The export shows the graph after 4050 samples.",
    CreateLiveData,
    PrepareLiveData,
}};

} // namespace
