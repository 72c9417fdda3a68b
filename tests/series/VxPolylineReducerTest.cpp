#include "vx/graph/VxDraw.h"
#include "vx/platform/VxCanvas.h"
#include "vx/series/VxPolylineReducer.h"

#include <QImage>
#include <QRandomGenerator>
#include <gtest/gtest.h>

using namespace vx;

namespace {

QImage Draw(const std::vector<std::vector<QPoint>>& Runs)
{
    QImage img(60, 60, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::white);
    TCanvas canvas(&img);
    canvas.Pen().SetColor(clRed);
    canvas.Pen().SetWidth(0);
    for (const auto& r : Runs)
        DrawPolyline(r, canvas);
    return img;
}

QImage DrawReduced(const TVxPolylineReducer& R)
{
    std::vector<std::vector<QPoint>> runs;
    for (const auto& run : R.Runs())
        runs.emplace_back(run.Points, run.Points + run.Count);
    return Draw(runs);
}

QString Text(const std::vector<QPoint>& Pts)
{
    QString s;
    for (const QPoint& p : Pts)
        s += QString("(%1,%2) ").arg(p.x()).arg(p.y());
    return s;
}

} // namespace

TEST(VxPolylineReducer, SmallRandomPolylinesKeepTheirPixels)
{
    QRandomGenerator rng(7);
    for (int trial = 0; trial < 20000; ++trial) {
        const int n = 2 + rng.bounded(trial % 2 ? 8 : 40);
        std::vector<QPoint> pts;
        int x = 10 + rng.bounded(5);
        for (int i = 0; i < n; ++i) {
            x += rng.bounded(3) == 0 ? 1 + rng.bounded(2) : 0;
            pts.emplace_back(x, trial % 3 ? 5 + rng.bounded(50) : 20 + rng.bounded(5));
        }
        TVxPolylineReducer r;
        for (const QPoint& p : pts)
            r.Add(p);
        if (DrawReduced(r) != Draw({pts})) {
            ADD_FAILURE() << qPrintable(Text(pts));
            break;
        }
    }
}
