#include "vx/graph/VxDraw.h"

#include "vx/platform/VxCanvas.h"
#include "support/PaintCounter.h"
#include "support/PixelProbe.h"
#include "support/RecordingDevice.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QWidget>
#include <gtest/gtest.h>
#include <limits>

using namespace vx;
using namespace vx::test;

namespace {

// An owner that counts the notifications of its styles.
class CountingOwner : public QObject, public IVxModifiable {
public:
    void Modified() override { ++count; }
    int count = 0;
};

QImage RenderSymbol(TVxPointSymbol symbol, int r, TColor pen = clBlue, TColor brush = clYellow)
{
    return Painted([&](TCanvas& c) {
        c.Pen().SetColor(pen);
        c.Brush().SetColor(brush);
        DrawPointSymbol(20, 20, r, symbol, c);
    });
}

} // namespace

TEST(VxDrawStyles, OwnerIsNotifiedOnceForAChangeAndNeverForTheSameValue)
{
    CountingOwner owner;
    TVxLineStyle line(&owner);
    TVxAreaStyle area(&owner);
    TVxPointStyle point(&owner);
    struct Row {
        const char* name;
        std::function<void()> change;
        std::function<void()> same;
    };
    const Row rows[] = {
        {"line visible", [&] { line.SetVisible(false); }, [&] { line.SetVisible(false); }},
        {"line color", [&] { line.SetColor(clGreen); }, [&] { line.SetColor(clGreen); }},
        {"line style", [&] { line.SetStyle(psDot); }, [&] { line.SetStyle(psDot); }},
        {"line width", [&] { line.SetWidth(3); }, [&] { line.SetWidth(3); }},
        // A negative size becomes 5 and a negative width 0: setting those then is no change.
        {"line negative width", [&] { line.SetWidth(-1); }, [&] { line.SetWidth(0); }},
        {"area visible", [&] { area.SetVisible(false); }, [&] { area.SetVisible(false); }},
        {"area xor", [&] { area.SetDrawXOred(false); }, [&] { area.SetDrawXOred(false); }},
        {"area color", [&] { area.SetColor(clRed); }, [&] { area.SetColor(clRed); }},
        {"area style", [&] { area.SetStyle(bsCross); }, [&] { area.SetStyle(bsCross); }},
        {"point visible", [&] { point.SetVisible(false); }, [&] { point.SetVisible(false); }},
        {"point color", [&] { point.SetColor(clRed); }, [&] { point.SetColor(clRed); }},
        {"point style", [&] { point.SetStyle(SyNabla); }, [&] { point.SetStyle(SyNabla); }},
        {"point size", [&] { point.SetSize(8); }, [&] { point.SetSize(8); }},
        {"point negative size", [&] { point.SetSize(-2); }, [&] { point.SetSize(5); }},
        {"point width", [&] { point.SetWidth(2); }, [&] { point.SetWidth(2); }},
        {"point negative width", [&] { point.SetWidth(-3); }, [&] { point.SetWidth(0); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        owner.count = 0;
        row.change();
        EXPECT_EQ(owner.count, 1);
        row.same();
        EXPECT_EQ(owner.count, 1);
    }
}

TEST(VxDrawStyles, AssignCopiesAllValuesAndNotifiesOnce)
{
    CountingOwner owner;
    TVxPointStyle target(&owner);
    TVxPointStyle source;
    source.SetColor(clRed);
    source.SetStyle(SyStar);
    source.SetSize(9);
    source.SetWidth(2);
    source.SetVisible(false);
    target.Assign(source);
    EXPECT_EQ(owner.count, 1);
    EXPECT_TRUE(target.SameAs(source));
    target.Assign(source);
    EXPECT_EQ(owner.count, 1);
    EXPECT_EQ(target.Owner(), &owner);
}

TEST(VxDrawStyles, WidgetOwnerRepaintsAndOtherOrDeletedOwnersAreSafe)
{
    QObject plain;
    TVxLineStyle a(&plain), b;
    a.SetColor(clBlack);
    b.SetColor(clBlack);
    auto* owner = new CountingOwner;
    TVxLineStyle line(owner);
    delete owner;
    EXPECT_EQ(line.Owner(), nullptr);
    line.SetColor(clBlack); // must not touch the deleted owner

    QWidget widget;
    widget.resize(20, 20);
    widget.show();
    QCoreApplication::processEvents();
    PaintCounter paints(&widget);
    TVxAreaStyle area(&widget);
    area.SetColor(clYellow);
    QCoreApplication::processEvents();
    EXPECT_GT(paints.Count, 0);
}

TEST(VxDraw, DrawLineAndFrameMakeTheOnePixelPenCosmetic)
{
    for (int width : {1, 2}) {
        SCOPED_TRACE(width);
        QImage image = WhiteImage();
        TCanvas c(&image);
        c.Pen().SetWidth(width);
        DrawLine(1, 1, 10, 1, c);
        EXPECT_EQ(c.Pen().Width(), width == 1 ? 0 : 2);
        c.Pen().SetWidth(width);
        DrawFrame(5, 5, 15, 15, c);
        EXPECT_EQ(c.Pen().Width(), width == 1 ? 0 : 2);
    }
}

TEST(VxDraw, DrawFrameClosesAllFourSides)
{
    const QImage image = Painted([&](TCanvas& c) { DrawFrame(5, 5, 15, 12, c); });
    EXPECT_EQ(InkBounds(image), QRect(QPoint(5, 5), QPoint(15, 12)));
    EXPECT_EQ(InkAt(image, {{5, 5}, {15, 5}, {5, 12}, {15, 12}, {10, 5}, {10, 12}, {5, 8}, {15, 8}, {10, 8}}), "########.");
}

TEST(VxDraw, SymbolExtents)
{
    // Bounds of the ink of each symbol at (20,20) with R = 10 (one-pixel pen).
    struct Row {
        TVxPointSymbol symbol;
        QRect ink;
    };
    const Row rows[] = {
        {SyPoint, QRect(20, 20, 1, 1)},
        {SyCross, QRect(QPoint(11, 11), QPoint(29, 29))},
        {SyX, QRect(QPoint(11, 11), QPoint(29, 29))},
        {SyStar, QRect(QPoint(11, 11), QPoint(29, 29))},
        {Sy5Star, QRect(QPoint(10, 10), QPoint(30, 28))}, // apex R*108% = 10, feet R*82% = 8
        {SyCircle, QRect(QPoint(10, 10), QPoint(30, 30))},
        {SySquare, QRect(QPoint(10, 10), QPoint(30, 30))},
        {SyDiamond, QRect(QPoint(10, 10), QPoint(30, 30))},
        {SyDelta, QRect(QPoint(10, 10), QPoint(30, 30))},
        {SyNabla, QRect(QPoint(10, 10), QPoint(30, 30))},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.symbol);
        const QImage image = RenderSymbol(row.symbol, 10);
        EXPECT_EQ(InkBounds(image), row.ink);
    }
}

TEST(VxDraw, CrossAndXAreSymmetricAndCentred)
{
    // Arms end one pixel short of R.
    EXPECT_EQ(InkAt(RenderSymbol(SyCross, 4), {{20, 20}, {17, 20}, {23, 20}, {16, 20}, {24, 20}, {21, 21}}), "###...");
    EXPECT_EQ(InkAt(RenderSymbol(SyX, 4), {{17, 17}, {23, 23}, {23, 17}, {21, 20}}), "###.");
}

TEST(VxDraw, FilledSymbolsUseThePenColourHollowOnesTheBrush)
{
    struct Row {
        TVxPointSymbol symbol;
        bool filled;
    };
    const Row rows[] = {
        {Sy5Star, false}, {Sy5StarFilled, true}, {SyCircle, false}, {SyCircleFilled, true},
        {SySquare, false}, {SySquareFilled, true}, {SyDiamond, false}, {SyDiamondFilled, true},
        {SyDelta, false}, {SyDeltaFilled, true}, {SyNabla, false}, {SyNablaFilled, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.symbol);
        QImage image = WhiteImage();
        TColor brushAfter = clNone;
        {
            TCanvas c(&image);
            c.Pen().SetColor(clBlue);
            c.Pen().SetStyle(psDot);
            c.Brush().SetColor(clYellow);
            c.Brush().SetStyle(bsClear);
            DrawPointSymbol(20, 20, 8, row.symbol, c);
            brushAfter = c.Brush().Color();
            EXPECT_EQ(c.Brush().Style(), bsSolid);
            EXPECT_EQ(c.Pen().Style(), psSolid);
        }
        EXPECT_EQ(At(image, 20, 20), row.filled ? clBlue : clYellow);
        EXPECT_EQ(brushAfter, row.filled ? clBlue : clYellow);
    }
}

TEST(VxDraw, SymbolOutsideTheRangeDrawsNothing)
{
    for (int s : {-1, 16, 100}) {
        SCOPED_TRACE(s);
        const QImage image = RenderSymbol(static_cast<TVxPointSymbol>(s), 6);
        EXPECT_TRUE(InkBounds(image).isEmpty());
    }
}

TEST(VxDraw, HugeSizesStaySafe)
{
    for (int s = 0; s < VxPointSymbolCount; ++s) {
        SCOPED_TRACE(s);
        const QImage image = RenderSymbol(static_cast<TVxPointSymbol>(s), std::numeric_limits<int>::max());
        EXPECT_EQ(image.size(), QSize(40, 40));
    }
    const int huge = std::numeric_limits<int>::max();
    EXPECT_TRUE(Ink(Painted([&](TCanvas& c) { DrawArrow(0, 0, 30, 30, huge, huge, c); }), 29, 29));
}

TEST(VxDraw, StarVerticesFollowTheIntegerProportions)
{
    const auto polygons =
        Recorded(RecordedPrimitive::Polygon, [](TCanvas& c) { DrawPointSymbol(100, 100, 7, Sy5Star, c); });
    ASSERT_EQ(polygons.size(), 1);
    const QVector<QPointF> expected{{100, 93}, {101, 98}, {107, 98}, {102, 100}, {104, 105},
                                    {100, 102}, {96, 105}, {98, 100}, {93, 98}, {99, 98}};
    EXPECT_EQ(polygons[0].points, expected);
}

TEST(VxDraw, ArrowHeadSitsOnTheTip)
{
    const QImage image = Painted([&](TCanvas& c) {
        c.Pen().SetColor(clRed);
        c.Brush().SetColor(clLime);
        DrawArrow(5, 20, 45, 20, 10, 3, c);
        EXPECT_EQ(c.Brush().Color(), clLime); // brush left as found
    }, 60, 40);
    EXPECT_TRUE(Ink(image, 5, 20));
    EXPECT_EQ(At(image, 44, 20), clRed);
    EXPECT_EQ(At(image, 37, 22), clRed); // head is filled in the pen colour
    EXPECT_EQ(InkAt(image, {{35, 23}, {35, 25}, {30, 22}, {46, 20}}), "#...");
}

TEST(VxDraw, ArrowPointsEveryWayAndDegenerateArrowsAreSafe)
{
    struct Row {
        const char* name;
        QPoint tail, tip;
        int length, width;
        QRect ink;
    };
    const Row rows[] = {
        {"down", {20, 5}, {20, 35}, 10, 3, QRect(QPoint(17, 5), QPoint(23, 35))},
        {"up", {20, 35}, {20, 5}, 10, 3, QRect(QPoint(17, 5), QPoint(23, 35))},
        {"left", {35, 20}, {5, 20}, 10, 3, QRect(QPoint(5, 17), QPoint(35, 23))},
        {"head longer than shaft", {20, 20}, {24, 20}, 10, 3, QRect(QPoint(20, 17), QPoint(24, 23))},
        {"no head", {5, 10}, {30, 10}, 0, 3, QRect(QPoint(5, 10), QPoint(29, 10))},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QImage image = Painted([&](TCanvas& c) {
            DrawArrow(row.tail.x(), row.tail.y(), row.tip.x(), row.tip.y(), row.length, row.width, c);
        });
        // The slanted head edges may differ by a pixel (Qt's rasterizer).
        const QRect ink = InkBounds(image);
        EXPECT_TRUE(row.ink.adjusted(-1, -1, 1, 1).contains(ink));
        EXPECT_TRUE(ink.contains(row.ink.adjusted(1, 1, -1, -1)));
        EXPECT_TRUE(Ink(image, row.tail.x(), row.tail.y()));
    }
    EXPECT_TRUE(InkBounds(Painted([](TCanvas& c) { DrawArrow(20, 20, 20, 20, 10, 3, c); })).isEmpty());
}

TEST(VxDraw, Draw3DBarShadesTopAndSideFaces)
{
    const QImage image = Painted([&](TCanvas& c) {
        c.Pen().SetColor(clBlack);
        Draw3DBar(10, 20, 30, 50, 8, 5, clNavy, clBlue, clGreen, c);
    }, 60, 60);
    EXPECT_EQ(At(image, 20, 35), clNavy);  // front
    EXPECT_EQ(At(image, 20, 18), clBlue);  // top face, above the front
    EXPECT_EQ(At(image, 33, 35), clGreen); // side face, right of the front
    EXPECT_EQ(At(image, 10, 49), clBlack); // front outline, bottom edge exclusive
    EXPECT_FALSE(Ink(image, 10, 50));
    EXPECT_EQ(InkBounds(image), QRect(QPoint(10, 15), QPoint(37, 49)));
}

TEST(VxDraw, Draw3DBarAcceptsEdgesInEitherOrderAndFlatBars)
{
    EXPECT_EQ(Painted([](TCanvas& c) { Draw3DBar(10, 20, 30, 50, 6, 4, clRed, clLime, clBlue, c); }, 60, 60),
              Painted([](TCanvas& c) { Draw3DBar(30, 50, 10, 20, 6, 4, clRed, clLime, clBlue, c); }, 60, 60));
    const QImage flat = Painted([&](TCanvas& c) {
        Draw3DBar(10, 20, 30, 50, 0, 0, clRed, clLime, clBlue, c);
    }, 60, 60);
    EXPECT_EQ(InkBounds(flat), QRect(10, 20, 20, 30));
}

TEST(VxDraw, DrawPolylineSplitsLongLinesIntoJoinedPieces)
{
    std::vector<QPoint> points;
    for (int i = 0; i < 4500; ++i)
        points.emplace_back(i, (i % 7) * 3);
    const auto pieces = Recorded(RecordedPrimitive::Polyline, [&](TCanvas& c) { DrawPolyline(points, c); }, 5000, 100);
    ASSERT_EQ(pieces.size(), 3);
    int total = 0;
    for (int i = 0; i < pieces.size(); ++i) {
        EXPECT_LE(pieces[i].points.size(), CVxPolylinePiece);
        if (i > 0)
            EXPECT_EQ(pieces[i].points.front(), pieces[i - 1].points.back());
        total += pieces[i].points.size();
    }
    EXPECT_EQ(total, 4500 + 2);
    EXPECT_EQ(pieces.back().points.back(), QPointF(points.back()));
}

TEST(VxDraw, DrawPolylineDropsRepeatedPointsAndIgnoresTooFew)
{
    const std::vector<QPoint> points{{0, 0}, {0, 0}, {5, 5}, {5, 5}, {5, 5}, {9, 1}};
    const auto pieces = Recorded(RecordedPrimitive::Polyline, [&](TCanvas& c) {
        DrawPolyline(points, c);
        DrawPolyline(points.data(), 1, c);
        DrawPolyline(nullptr, 5, c);
    });
    ASSERT_EQ(pieces.size(), 1);
    EXPECT_EQ(pieces[0].points, (QVector<QPointF>{{0, 0}, {5, 5}, {9, 1}}));
}

TEST(VxDraw, ClippingCutsSymbolsButMovesNoPixel)
{
    const QRect clip(5, 3, 20, 20);
    for (int s = 0; s < VxPointSymbolCount; ++s) {
        for (const QPoint& centre : {QPoint(4, 10), QPoint(15, 2), QPoint(24, 24), QPoint(14, 12)}) {
            SCOPED_TRACE(QStringLiteral("symbol %1 at %2,%3").arg(s).arg(centre.x()).arg(centre.y()).toStdString());
            QImage whole = WhiteImage();
            QImage clipped = WhiteImage();
            for (QImage* image : {&whole, &clipped}) {
                TCanvas c(image);
                if (image == &clipped)
                    c.IntersectClipRect(clip);
                c.Pen().SetColor(clBlue);
                c.Brush().SetColor(clYellow);
                DrawPointSymbol(centre.x(), centre.y(), 6, static_cast<TVxPointSymbol>(s), c);
            }
            for (int y = 0; y < whole.height(); ++y)
                for (int x = 0; x < whole.width(); ++x)
                    ASSERT_EQ(clipped.pixel(x, y), clip.contains(x, y) ? whole.pixel(x, y) : qRgb(255, 255, 255))
                        << x << "," << y;
        }
    }
}
