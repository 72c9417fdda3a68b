#include "vx/platform/VxCanvas.h"

#include "support/PixelProbe.h"
#include "support/RecordingDevice.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>
#include <functional>
#include <limits>

using namespace vx;
using namespace vx::test;

TEST(VxCanvas, LineToLeavesOutTheEndPixelAndMovesPenPos)
{
    struct Row {
        const char* name;
        QPoint from, to;
        QRect ink;
        int count;
    };
    const Row rows[] = {
        {"horizontal", {2, 5}, {12, 5}, QRect(2, 5, 10, 1), 10},
        {"leftwards", {12, 5}, {2, 5}, QRect(3, 5, 10, 1), 10},
        {"upwards", {7, 20}, {7, 3}, QRect(7, 4, 1, 17), 17},
        {"diagonal up-left", {11, 11}, {1, 1}, QRect(2, 2, 10, 10), 10},
        {"vertical", {7, 3}, {7, 20}, QRect(7, 3, 1, 17), 17},
        {"diagonal", {1, 1}, {11, 11}, QRect(1, 1, 10, 10), 10},
        {"shallow up-left", {30, 10}, {2, 17}, QRect(QPoint(3, 10), QPoint(30, 17)), 28},
        {"steep up-right", {20, 35}, {23, 4}, QRect(QPoint(20, 5), QPoint(23, 35)), 31},
        {"far off", {30, 10}, {-1000000000, 20}, QRect(QPoint(0, 10), QPoint(30, 10)), 31},
        {"extreme", {30, 10}, {std::numeric_limits<int>::min(), 10}, QRect(QPoint(0, 10), QPoint(30, 10)), 31},
        {"extreme both", {std::numeric_limits<int>::max(), 12}, {std::numeric_limits<int>::min(), 12},
         QRect(QPoint(0, 12), QPoint(39, 12)), 40},
        {"zero length", {4, 4}, {4, 4}, QRect(), 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QImage image = Painted([&](TCanvas& c) {
            c.MoveTo(row.from.x(), row.from.y());
            c.LineTo(row.to.x(), row.to.y());
            EXPECT_EQ(c.PenPos(), row.to);
        });
        EXPECT_EQ(InkBounds(image), row.ink);
        EXPECT_EQ(InkCount(image), row.count);
        if (row.count > 0 && image.rect().contains(row.from))
            EXPECT_FALSE(IsWhite(image, row.from.x(), row.from.y()));
    }
}

TEST(VxCanvas, PenWidthsZeroAndOneDrawOnePixelAndWiderPensAreCentred)
{
    for (int width : {0, 1, 3}) {
        SCOPED_TRACE(width);
        const QImage image = Painted([&](TCanvas& c) {
            c.Pen().SetWidth(width);
            c.Pen().SetColor(clRed);
            c.MoveTo(5, 20);
            c.LineTo(15, 20);
        });
        EXPECT_EQ(At(image, 5, 20), clRed);
        EXPECT_TRUE(IsWhite(image, 15, 20) || width > 1);
        // Rows 19 and 21 inked only by the wide pen, rows 17 and 23 never.
        EXPECT_EQ(InkAt(image, {{10, 19}, {10, 21}, {10, 17}, {10, 23}}), width == 3 ? "##.." : "....");
    }
}

TEST(VxCanvas, RectangleAndEllipseExcludeRightAndBottomEdges)
{
    struct Row {
        const char* name;
        bool ellipse;
        TPenStyle pen;
        int penWidth;
    };
    const Row rows[] = {
        {"rectangle", false, psSolid, 1},
        {"rectangle without pen", false, psClear, 1},
        {"ellipse", true, psSolid, 1},
        {"rectangle inside-frame wide pen", false, psInsideFrame, 3},
        {"ellipse inside-frame wide pen", true, psInsideFrame, 3},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QImage image = Painted([&](TCanvas& c) {
            c.Pen().SetStyle(row.pen);
            c.Pen().SetWidth(row.penWidth);
            c.Brush().SetColor(clLime);
            if (row.ellipse)
                c.Ellipse(10, 10, 20, 20);
            else
                c.Rectangle(10, 10, 20, 20);
        });
        const QRect ink = InkBounds(image);
        EXPECT_TRUE(QRect(10, 10, 10, 10).contains(ink));
        EXPECT_GE(ink.width(), 9);
        EXPECT_GE(ink.height(), 9);
        if (!row.ellipse)
            EXPECT_EQ(ink, QRect(10, 10, 10, 10));
        EXPECT_EQ(At(image, 15, 15), clLime);
    }
}

TEST(VxCanvas, RectangleOutlinesWithPenAndFillsInside)
{
    const QImage image = Painted([](TCanvas& c) {
        c.Pen().SetColor(clRed);
        c.Brush().SetColor(clBlue);
        c.Rectangle(QRect(0, 0, 10, 10)); // a QRect covers its own pixels
    });
    for (QPoint p : {QPoint(0, 0), QPoint(9, 9), QPoint(9, 4)})
        EXPECT_EQ(At(image, p.x(), p.y()), clRed);
    EXPECT_EQ(At(image, 1, 1), clBlue);
    EXPECT_EQ(At(image, 8, 8), clBlue);
    EXPECT_TRUE(IsWhite(image, 10, 4) && IsWhite(image, 4, 10));
}

TEST(VxCanvas, ClippedRectangleKeepsItsVisibleFramePixels)
{
    struct Row {
        const char* name;
        QRect clip;
    };
    const Row rows[] = {{"clip", QRect(5, 3, 100, 70)}, {"device edge", QRect()}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QImage image = Painted([&](TCanvas& c) {
            if (!row.clip.isNull())
                c.IntersectClipRect(row.clip);
            c.Pen().SetColor(clRed);
            c.Brush().SetColor(clYellow);
            c.Rectangle(-4, 21, 7, 32);
        });
        EXPECT_EQ(At(image, 6, 31), clRed);
        EXPECT_EQ(At(image, 6, 21), clRed);
        EXPECT_EQ(At(image, 5, 25), clYellow);
    }
}

TEST(VxCanvas, ThinRectanglesAreLines)
{
    const QImage image = Painted([](TCanvas& c) {
        c.Pen().SetMode(pmXor);
        c.Pen().SetColor(clWhite);
        c.Rectangle(2, 2, 3, 12);  // one column
        c.Rectangle(5, 2, 15, 3);  // one row
        c.Rectangle(20, 20, 21, 21); // one pixel
    });
    EXPECT_EQ(InkBounds(image), QRect(2, 2, 19, 19));
    EXPECT_EQ(InkCount(image), 10 + 10 + 1);
}

TEST(VxCanvas, FillRectUsesTheBrushOnlyAndClearBrushFillsNothing)
{
    const QImage image = Painted([](TCanvas& c) {
        c.Pen().SetMode(pmXor); // filling ignores the pen mode
        c.Pen().SetColor(clRed);
        c.Brush().SetColor(clYellow);
        c.FillRect(2, 2, 6, 6);
        c.Brush().SetStyle(bsClear);
        c.FillRect(10, 10, 20, 20);
    });
    EXPECT_EQ(InkBounds(image), QRect(2, 2, 4, 4));
    EXPECT_EQ(At(image, 2, 2), clYellow);
    EXPECT_EQ(At(image, 5, 5), clYellow);
}

TEST(VxCanvas, PolygonFillsWithBrushAndPolylineOmitsTheLastPixel)
{
    const QImage image = Painted([](TCanvas& c) {
        c.Pen().SetColor(clRed);
        c.Brush().SetColor(clBlue);
        c.Polygon(std::vector<QPoint>{{5, 5}, {25, 5}, {5, 25}});
        c.Polyline(std::vector<QPoint>{{30, 2}, {35, 2}, {35, 10}});
    });
    for (QPoint p : {QPoint(5, 5), QPoint(25, 5), QPoint(35, 2), QPoint(35, 9)})
        EXPECT_EQ(At(image, p.x(), p.y()), clRed);
    EXPECT_EQ(At(image, 8, 8), clBlue);
    EXPECT_TRUE(IsWhite(image, 20, 20) && IsWhite(image, 35, 10));
}

TEST(VxCanvas, XorModeTwiceRestoresTheImage)
{
    QImage image = Painted([](TCanvas& c) {
        c.Brush().SetColor(clGreen);
        c.FillRect(0, 0, 20, 40);
    });
    const QImage before = image.copy();
    {
        TCanvas c(&image);
        c.Pen().SetMode(pmXor);
        c.Pen().SetColor(clAqua);
        c.Brush().SetColor(clAqua);
        for (int pass = 0; pass < 2; ++pass) {
            c.MoveTo(0, 30);
            c.LineTo(40, 30);
            c.Rectangle(5, 5, 35, 25);
            if (pass == 0) {
                EXPECT_EQ(c.Pixel(10, 30), clGreen ^ clAqua);
                EXPECT_EQ(c.Pixel(30, 30), clWhite ^ clAqua);
            }
        }
    }
    EXPECT_EQ(image, before);
}

TEST(VxCanvas, XorShapesCombineFillAndOutlineOnce)
{
    // Colours pre-mixed with the white background, as the series do: the result shows
    // the plain pen and brush colours.
    struct Row {
        const char* name;
        int penWidth;
        std::function<void(TCanvas&)> draw;
        QPoint edge, inside;
    };
    const std::vector<QPoint> triangle{{5, 5}, {35, 5}, {5, 35}};
    const Row rows[] = {
        {"rectangle", 1, [](TCanvas& c) { c.Rectangle(5, 5, 35, 35); }, {20, 5}, {20, 20}},
        {"wide rectangle", 3, [](TCanvas& c) { c.Rectangle(5, 5, 35, 35); }, {20, 6}, {20, 20}},
        {"ellipse", 1, [](TCanvas& c) { c.Ellipse(5, 5, 35, 35); }, {20, 5}, {20, 20}},
        {"polygon", 1, [&](TCanvas& c) { c.Polygon(triangle); }, {20, 5}, {10, 10}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        QImage image = WhiteImage();
        const QImage before = image.copy();
        TCanvas c(&image);
        c.Pen().SetMode(pmXor);
        c.Pen().SetWidth(row.penWidth);
        c.Pen().SetColor(clRed ^ clWhite);
        c.Brush().SetColor(clBlue ^ clWhite);
        row.draw(c);
        EXPECT_EQ(At(image, row.edge.x(), row.edge.y()), clRed);
        EXPECT_EQ(At(image, row.inside.x(), row.inside.y()), clBlue);
        row.draw(c);
        EXPECT_EQ(image, before);
    }
}

TEST(VxCanvas, WindowOriginShiftsDrawingAndClipRectangles)
{
    const QImage image = Painted([](TCanvas& c) {
        c.SetWindowOrg(-10, -5); // logical (0,0) appears at device (10,5)
        c.Pen().SetColor(clRed);
        c.MoveTo(0, 0);
        c.LineTo(3, 0);
        EXPECT_EQ(c.Pixel(0, 0), clRed);
        EXPECT_EQ(c.ClipRect(), QRect(-10, -5, 40, 40)); // the device, in logical coordinates
        c.IntersectClipRect(QRect(0, 0, 5, 5)); // logical
        EXPECT_EQ(c.ClipRect(), QRect(0, 0, 5, 5));
    });
    EXPECT_EQ(InkBounds(image), QRect(10, 5, 3, 1));
}

TEST(VxCanvas, ClippingSelectIntersectAndClear)
{
    const QImage image = Painted([](TCanvas& c) {
        c.Brush().SetColor(clBlack);
        c.SetWindowOrg(5, 5);
        c.SelectClipRect(QRect(0, 0, 20, 20)); // device coordinates: origin not applied
        EXPECT_TRUE(c.HasClip());
        c.IntersectClipRect(QRect(15, 15, 100, 100)); // logical -> device (10,10)-(19,19)
        c.FillRect(QRect(0, 0, 60, 60));
        c.ClearClip();
        EXPECT_FALSE(c.HasClip());
        c.SetWindowOrg(0, 0);
        c.FillRect(QRect(30, 30, 2, 2));
    });
    EXPECT_EQ(InkAt(image, {{10, 10}, {19, 19}, {31, 31}, {9, 10}, {20, 19}}), "###..");
}

TEST(VxCanvas, TextOutIsAnchoredTopLeftWithOptionalBackground)
{
    for (bool clearBrush : {true, false}) {
        SCOPED_TRACE(clearBrush ? "transparent" : "opaque");
        QSize extent;
        const QImage image = Painted([&](TCanvas& c) {
            c.Font().SetSize(12);
            c.Font().SetColor(clBlack);
            c.Brush().SetColor(clYellow);
            c.Brush().SetStyle(clearBrush ? bsClear : bsSolid);
            extent = c.TextExtent("Hg");
            c.TextOut(10, 5, "Hg");
            EXPECT_EQ(c.PenPos(), QPoint(10 + extent.width(), 5));
        }, 120, 40);
        EXPECT_GT(extent.width(), 5);
        EXPECT_GT(extent.height(), 10);
        const QRect ink = InkBounds(image);
        EXPECT_TRUE(QRect(10, 5, extent.width(), extent.height()).contains(ink)) << ink.x() << "," << ink.y();
        EXPECT_EQ(At(image, 10, 5) == clYellow, !clearBrush);
    }
}

TEST(VxCanvas, RotatedTextTurnsCounterClockwiseAroundItsStart)
{
    for (bool byOrientation : {true, false}) {
        SCOPED_TRACE(byOrientation ? "font orientation 900" : "TextOutAngle 900");
        int w = 0, h = 0;
        const QImage image = Painted([&](TCanvas& c) {
            c.Font().SetSize(12);
            c.Brush().SetStyle(bsClear);
            w = c.TextWidth("Rotated");
            h = c.TextHeight("Rotated");
            if (byOrientation) {
                c.Font().SetOrientation(900);
                c.TextOut(20, 100, "Rotated");
            } else {
                c.TextOutAngle(20, 100, 900, "Rotated");
            }
        }, 80, 120);
        // Turned up by 90 degrees: the text runs upwards from (20,100), its top to the left.
        const QRect ink = InkBounds(image);
        EXPECT_TRUE(QRect(20, 100 - w, h, w).contains(ink));
        EXPECT_GT(ink.height(), w / 2);
        EXPECT_LT(ink.width(), h + 1);
    }
}

TEST(VxCanvas, FontMetricsFollowTheFontSize)
{
    QImage image = WhiteImage();
    TCanvas c(&image);
    c.Font().SetSize(8);
    const int small = c.TextHeight("X");
    const int smallWidth = c.TextWidth("XXXX");
    c.Font().SetSize(16);
    EXPECT_GT(c.TextHeight("X"), small * 3 / 2);
    EXPECT_GT(c.TextWidth("XXXX"), smallWidth * 3 / 2);
    EXPECT_EQ(c.TextWidth(""), 0);

    // A canvas without a device measures the same (fonts are pixel sized) and draws nothing.
    TCanvas measuring;
    measuring.Font().SetSize(16);
    EXPECT_EQ(measuring.TextWidth("XXXX"), c.TextWidth("XXXX"));
    EXPECT_EQ(measuring.TextHeight("X"), c.TextHeight("X"));
    measuring.Rectangle(0, 0, 10, 10);
    measuring.TextOut(0, 0, "XXXX");
    EXPECT_EQ(measuring.PenPos(), QPoint(c.TextWidth("XXXX"), 0));
}

TEST(VxCanvas, SystemColoursResolveThroughThePalette)
{
    const QImage image = Painted([](TCanvas& c) {
        QPalette palette;
        palette.setColor(QPalette::Button, QColor(10, 20, 30));
        c.SetPalette(palette);
        c.Brush().SetColor(clBtnFace);
        c.FillRect(0, 0, 5, 5);
    });
    EXPECT_EQ(At(image, 2, 2), RGB(10, 20, 30));
}

TEST(VxCanvas, DrawFocusRectTwiceRemovesIt)
{
    QImage image = WhiteImage();
    const QImage before = image.copy();
    TCanvas c(&image);
    c.DrawFocusRect(QRect(5, 5, 20, 10));
    EXPECT_FALSE(InkBounds(image).isEmpty());
    EXPECT_TRUE(QRect(5, 5, 20, 10).contains(InkBounds(image)));
    c.DrawFocusRect(QRect(5, 5, 20, 10));
    EXPECT_EQ(image, before);
}

TEST(VxCanvas, VectorDevicesGetConnectedGeometryInCopyModeAndNoPixels)
{
    RecordingDevice device;
    QPainter painter(&device);
    TCanvas c(&painter);
    EXPECT_FALSE(c.IsRaster());
    c.Pen().SetMode(pmXor); // xor has no meaning on a vector device
    c.Polyline(std::vector<QPoint>{{0, 0}, {30, 7}, {2, 20}});
    c.MoveTo(0, 0);
    c.LineTo(10, 0);
    const auto lines = device.OfKind(RecordedPrimitive::Polyline);
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0].points, (QVector<QPointF>{{0, 0}, {30, 7}, {2, 20}}));
    EXPECT_EQ(lines[0].mode, QPainter::CompositionMode_SourceOver);
    ASSERT_EQ(device.OfKind(RecordedPrimitive::Line).size(), 1);
    EXPECT_EQ(device.OfKind(RecordedPrimitive::Line)[0].mode, QPainter::CompositionMode_SourceOver);
    c.Pen().SetMode(pmCopy);
    c.SetWindowOrg(-3, -4);
    c.Rectangle(0, 0, 10, 10);
    c.Brush().SetStyle(bsClear);
    c.TextOut(1, 1, "a");
    EXPECT_EQ(c.Pixel(0, 0), clNone);
    const auto rects = device.OfKind(RecordedPrimitive::Rect);
    ASSERT_EQ(rects.size(), 1);
    EXPECT_EQ(rects[0].rect.topLeft(), QPointF(3, 4));
    const auto texts = device.OfKind(RecordedPrimitive::Text);
    ASSERT_EQ(texts.size(), 1);
    EXPECT_EQ(texts[0].text, QStringLiteral("a"));
}

TEST(VxCanvas, PolylineAndPolygonOutlinesDrawEveryVertexExactlyOnce)
{
    // Zig-zags in every direction, including reversals, which Qt's own polylines drop.
    const std::vector<QPoint> shape{{5, 5}, {30, 5}, {10, 8}, {10, 30}, {12, 12}, {35, 20}, {20, 35}};
    const QImage line = Painted([&](TCanvas& c) { c.Polyline(shape); });
    const QImage ring = Painted([&](TCanvas& c) {
        c.Brush().SetStyle(bsClear);
        c.Polygon(shape);
    });
    for (std::size_t i = 0; i < shape.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(IsWhite(line, shape[i].x(), shape[i].y()), i + 1 == shape.size());
        EXPECT_FALSE(IsWhite(ring, shape[i].x(), shape[i].y()));
    }
    // In xor mode a vertex drawn twice would vanish.
    const QImage xored = Painted([&](TCanvas& c) {
        c.Pen().SetMode(pmXor);
        c.Pen().SetColor(clWhite);
        c.Brush().SetStyle(bsClear);
        c.Polygon(shape);
    });
    for (const QPoint& p : shape)
        EXPECT_FALSE(IsWhite(xored, p.x(), p.y())) << p.x() << "," << p.y();
}

TEST(VxCanvas, PolylineMatchesItsSegmentsDrawnOneByOne)
{
    // Fixed pseudo-random zig-zags: one Polyline call must set the same pixels as
    // MoveTo/LineTo per segment, and each LineTo its start pixel but not its end pixel.
    unsigned seed = 12345;
    auto next = [&seed](int range) {
        seed = seed * 1103515245u + 12345u;
        return static_cast<int>((seed >> 16) % static_cast<unsigned>(range));
    };
    for (int trial = 0; trial < 200; ++trial) {
        SCOPED_TRACE(trial);
        std::vector<QPoint> points;
        for (int i = 0; i < 8; ++i)
            points.emplace_back(5 + next(50), 5 + next(50));
        QImage pieces = WhiteImage(60, 60);
        const QRect clip(10, 12, 35, 30);
        const QImage whole = Painted([&](TCanvas& c) { c.Polyline(points); }, 60, 60);
        // Clipping cuts pixels away but moves none.
        const QImage clipped = Painted([&](TCanvas& c) {
            c.IntersectClipRect(clip);
            c.Polyline(points);
        }, 60, 60);
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 60; ++x)
                ASSERT_EQ(clipped.pixel(x, y), clip.contains(x, y) ? whole.pixel(x, y) : qRgb(255, 255, 255))
                    << x << "," << y;
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            QImage single = WhiteImage(60, 60);
            TCanvas one(&single);
            one.MoveTo(points[i].x(), points[i].y());
            one.LineTo(points[i + 1].x(), points[i + 1].y());
            if (points[i] != points[i + 1]) {
                ASSERT_FALSE(IsWhite(single, points[i].x(), points[i].y()));
                ASSERT_TRUE(IsWhite(single, points[i + 1].x(), points[i + 1].y()));
            }
            TCanvas c(&pieces);
            c.MoveTo(points[i].x(), points[i].y());
            c.LineTo(points[i + 1].x(), points[i + 1].y());
        }
        ASSERT_EQ(whole, pieces);
    }
}
