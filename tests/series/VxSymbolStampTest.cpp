#include "SeriesTestSupport.h"

#include "vx/graph/VxDraw.h"
#include "vx/series/VxSymbolStamp.h"

#include <QRandomGenerator>
#include <climits>
#include <gtest/gtest.h>

using namespace vx;
using namespace vx::test;

// The kept layer must give exactly the pixels of drawing each symbol in turn: overlapping
// symbols, symbols cut by the clip or the image edge, skipped entries, every symbol and
// several pen widths.
TEST(VxSymbolLayer, StampsTheSamePixelsAsDrawingEachSymbol)
{
    QRandomGenerator rng(99);
    for (int symbol = 0; symbol < VxPointSymbolCount; ++symbol) {
        for (int width : {0, 1, 2, 3}) {
            SCOPED_TRACE(QString("symbol %1 width %2").arg(symbol).arg(width).toStdString());
            std::vector<QPoint> pts;
            for (int i = 0; i < 400; ++i)
                pts.emplace_back(rng.bounded(-10, 130), rng.bounded(-10, 90));
            pts[7] = QPoint(INT_MIN, INT_MIN);
            pts.push_back(pts[3]); // a repeat on top of later symbols
            const int r = 2 + symbol % 5;
            auto setUp = [&](TCanvas& c) {
                c.Pen().SetColor(RGB(200, 30, 30));
                c.Pen().SetWidth(width);
                c.Brush().SetColor(RGB(240, 240, 100));
            };
            QImage each(120, 80, QImage::Format_ARGB32_Premultiplied);
            each.fill(Qt::white);
            QImage stamped = each;
            // The reference is drawn on a larger image, so that no symbol is cut anywhere.
            each = QImage(200, 160, QImage::Format_ARGB32_Premultiplied);
            each.fill(Qt::white);
            {
                TCanvas c(&each);
                setUp(c);
                c.SetWindowOrg(-40, -40);
                for (const QPoint& p : pts)
                    if (p.x() != INT_MIN)
                        DrawPointSymbol(p.x(), p.y(), r, TVxPointSymbol(symbol), c);
            }
            // Round 0 builds the layer, round 1 redraws it, rounds 2 and 3 build a layer from
            // the first half and extend it by the appended rest.
            TVxSymbolLayer layer;
            TVxSymbolLayer grown;
            for (int round = 0; round < 4; ++round) {
                stamped.fill(Qt::white);
                TCanvas c(&stamped);
                setUp(c);
                c.IntersectClipRect(QRect(5, 3, 100, 70));
                const int n = round == 2 ? int(pts.size()) / 2 : int(pts.size());
                (round < 2 ? layer : grown).Draw(c, pts.data(), n, INT_MIN, TVxPointSymbol(symbol), r, 1);
            }
            // Compared inside the clip (drawn unclipped for reference), blank outside it.
            const QRect clip(5, 3, 100, 70);
            int wrong = 0;
            for (int y = 0; y < stamped.height(); ++y)
                for (int x = 0; x < stamped.width(); ++x) {
                    const QRgb want = clip.contains(x, y) ? each.pixel(x + 40, y + 40) : qRgb(255, 255, 255);
                    wrong += stamped.pixel(x, y) != want ? 1 : 0;
                }
            EXPECT_EQ(wrong, 0);
        }
    }
}

TEST(VxSymbolLayer, HugeSymbolsAreDrawnOneByOne)
{
    // Too large for a sprite (and once beyond the sprite's arithmetic): drawn directly.
    QImage img(60, 40, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::white);
    TCanvas c(&img);
    c.IntersectClipRect(QRect(0, 0, 60, 40));
    c.Pen().SetColor(RGB(200, 30, 30));
    const std::vector<QPoint> pts(3, QPoint(30, 20));
    TVxSymbolLayer layer;
    layer.Draw(c, pts.data(), 3, INT_MIN, SySquare, 1000000, 1);
    layer.Draw(c, pts.data(), 3, INT_MIN, SySquareFilled, 300, 1);
    EXPECT_EQ(img.pixel(30, 20), qRgb(200, 30, 30)); // inside the filled square
}
