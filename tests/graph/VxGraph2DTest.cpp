#include "vx/graph/VxGraph2D.h"

#include "vx/core/VxLargeIni.h"
#include "vx/core/VxVector.h"
#include "vx/graph/VxLabel.h"
#include "vx/platform/VxExceptions.h"
#include "vx/series/VxDataSeries.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QImage>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QTemporaryDir>
#include <QWindow>
#include <gtest/gtest.h>
#include "support/PaintCounter.h"
#include "support/ExpectThrowMessage.h"
#include <memory>

using namespace vx;

namespace {

// A graph with a frame and white data area, axes already created.
std::unique_ptr<TVx2DGraph> FramedGraph()
{
    auto g = std::make_unique<TVx2DGraph>();
    g->SetDataColor(clWhite);
    g->FrameLine().SetVisible(true);
    g->XAxis()->SetStart(0);
    g->XAxis()->SetStop(100);
    g->YAxis()->SetStart(0);
    g->YAxis()->SetStop(10);
    return g;
}

QRgb Black() { return qRgb(0, 0, 0); }

// A new axis of the graph at Pos.
TVxAxis* AxisAt(QWidget* graph, TVxAxisPos pos)
{
    auto* axis = new TVxAxis(graph);
    axis->SetPosition(pos);
    return axis;
}

// Graph-client x of an axis value (the drawing world's left plus the axis pixel).
int GraphX(TVx2DGraph& g, double value)
{
    return g.DrawingWorld()->x() + g.PrimaryXAxis()->RealToIntPosition(value);
}

int GraphY(TVx2DGraph& g, double value)
{
    return g.DrawingWorld()->y() + g.PrimaryYAxis()->RealToIntPosition(value);
}

// A legend stand-in: a fixed-size widget laid out by the graph.
class TTestLegend : public QWidget, public IVxGraphLegend {
public:
    TTestLegend(QWidget* parent, TVxAxisPos pos) : QWidget(parent), Pos(pos) { resize(80, 40); }
    void ItemsModified() override { ++Notices; }
    TVxAxisPos InGraphPosition() const override { return Pos; }
    int OutsideGap() const override { return 10; }
    void Calculate() override { ++Calculations; }
    TVxAxisPos Pos;
    int Notices = 0;
    int Calculations = 0;
};

// Sends a left-button event; returns whether the widget kept it.
bool Press(QWidget* w, QEvent::Type type, QPoint p)
{
    QMouseEvent e(type, QPointF(p), w->mapToGlobal(QPointF(p)), Qt::LeftButton,
                  type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
    return e.isAccepted();
}

} // namespace

TEST(VxGraph2D, ConstructionDefaults)
{
    TVx2DGraph g;
    EXPECT_EQ(g.size(), QSize(600, 400));
    EXPECT_EQ(g.PrimaryXAxis(), nullptr); // found or created on first show or render
    EXPECT_EQ(g.Color(), clBtnFace);
    EXPECT_EQ(g.DataColor(), clBtnFace);
    EXPECT_FALSE(g.FrameLine().Visible());
    for (TVxLineStyle* s : {&g.MajorGridX(), &g.MajorGridY(), &g.MinorGridX(), &g.MinorGridY()}) {
        EXPECT_FALSE(s->Visible());
        EXPECT_EQ(s->Style(), psDot);
    }
    EXPECT_TRUE(g.TitleLabel()->isHidden());
}

TEST(VxGraph2D, AxesNamedPerForm)
{
    QWidget form;
    auto* g1 = new TVx2DGraph(&form);
    auto* g2 = new TVx2DGraph(&form);
    g1->ToImage(); // first render creates the axes
    ASSERT_NE(g1->PrimaryXAxis(), nullptr);
    EXPECT_EQ(QStringList({g1->PrimaryXAxis()->objectName(), g1->PrimaryYAxis()->objectName(),
                           g2->XAxis()->objectName(), g2->YAxis()->objectName()}),
              QStringList({"XAxis1", "YAxis1", "XAxis2", "YAxis2"}));
    EXPECT_EQ(g1->PrimaryXAxis()->Position(), AxBottomPos);
    EXPECT_EQ(g1->PrimaryYAxis()->Position(), AxLeftPos);
    // A new y axis turns its ticks away from the data.
    EXPECT_EQ(g1->PrimaryYAxis()->MajorTickLength(), -10);
    EXPECT_EQ(g1->PrimaryYAxis()->TickLength(), -6);
}

TEST(VxGraph2D, ExistingAxesAreReused)
{
    TVx2DGraph g;
    auto* bottom = AxisAt(&g, AxBottomPos);
    auto* left = new TVxAxis(&g);
    EXPECT_EQ(g.XAxis(), bottom);
    EXPECT_EQ(g.YAxis(), left);
    auto* other = new TVxAxis(&g);
    g.SetPrimaryXAxis(other); // forced to the bottom
    EXPECT_EQ(other->Position(), AxBottomPos);
    delete other;
    EXPECT_EQ(g.PrimaryXAxis(), nullptr);
    QWidget elsewhere;
    auto* stray = new TVxAxis(&elsewhere);
    g.SetPrimaryYAxis(stray);
    EXPECT_EQ(stray->parentWidget(), &g);
    g.ToImage(); // painting without a primary axis is harmless
}

TEST(VxGraph2D, DrawingWorldNeedsGraphOwner)
{
    QWidget plain;
    VX_EXPECT_THROW_MSG(TVxDrawingWorld world(&plain), Exception, "Component must be owned by TVx2DGraph");
}

TEST(VxGraph2D, DrawingWorldDeletedFromOutsideIsReplaced)
{
    TVx2DGraph graph;
    graph.ToImage();
    delete graph.DrawingWorld();
    ASSERT_NE(graph.DrawingWorld(), nullptr);
    graph.ToImage(); // used to crash laying out a dangling world
    EXPECT_GT(graph.DrawingWorld()->width(), 0);
}

TEST(VxGraph2D, UpdateBatchingRepaintsOnce)
{
    TVx2DGraph g;
    g.show();
    for (int i = 0; i < 5; ++i) // the first paints settle the layout
        QApplication::processEvents();
    vx::test::PaintCounter counter(&g);
    g.BeginUpdate();
    g.BeginUpdate();
    for (int i = 0; i < 5; ++i) {
        g.XAxis()->SetStop(100 + i);
        g.Modified();
        QApplication::processEvents();
    }
    g.EndUpdate();
    QApplication::processEvents();
    EXPECT_EQ(counter.Count, 0);
    EXPECT_TRUE(g.NeedsCalculation());
    g.EndUpdate();
    QApplication::processEvents();
    EXPECT_EQ(counter.Count, 1);
    EXPECT_FALSE(g.NeedsCalculation());
}

TEST(VxGraph2D, DrawingWorldSitsBetweenTheAxisLines)
{
    for (bool title : {false, true}) {
        SCOPED_TRACE(title);
        auto g = FramedGraph();
        g->SetCaption("Title \\bbold");
        g->SetShowTitle(title);
        g->XAxis()->SetCaption("x / m");
        g->XAxis()->SetShowCaption(true);
        g->YAxis()->SetCaption("y / \\is");
        g->YAxis()->SetShowCaption(true);
        g->resize(500, 300);
        g->EnsureCalculated();
        const TVxAxis* x = g->PrimaryXAxis();
        const TVxAxis* y = g->PrimaryYAxis();
        const QRect world = g->DrawingWorld()->geometry();
        EXPECT_EQ(world, QRect(QPoint(x->x() + x->LineX(), y->y() + y->LineY()),
                               QSize(x->AxisLength() + 1, y->AxisLength() + 1)));
        // The x axis line is the world's last row, the y axis line its first column.
        EXPECT_EQ(x->y() + x->LineY(), world.bottom());
        EXPECT_EQ(y->x() + y->LineX(), world.left());
        // Everything stays inside the graph.
        EXPECT_TRUE(g->rect().contains(x->geometry()) && g->rect().contains(y->geometry()));
        if (title)
            EXPECT_GT(world.top(), g->TitleLabel()->geometry().bottom());
    }
}

TEST(VxGraph2D, AxisThicknessAndLineOrigin)
{
    auto g = FramedGraph();
    TVxAxis* x = g->PrimaryXAxis();
    g->EnsureCalculated();
    int widest = 0;
    for (const TVxAxisPlacedLabel& l : x->LabelList())
        widest = std::max(widest, l.Width);
    // Labels centred on the end ticks overhang the line by half the widest label.
    EXPECT_EQ(x->AxisLength(), x->width() - widest - 1);
    EXPECT_EQ(x->LineX(), widest / 2);
    EXPECT_EQ(x->LineY(), 0);
    const int withLabels = x->Thickness();
    // Ticks turned inward: the line moves down by their length, the thickness stays.
    x->SetMajorTickLength(-10);
    x->SetTickLength(-6);
    g->EnsureCalculated();
    EXPECT_EQ(x->LineY(), 10);
    EXPECT_EQ(x->Thickness(), withLabels);
    EXPECT_EQ(x->y() + x->LineY(), g->DrawingWorld()->geometry().bottom());
    // No labels: no label height in the thickness.
    x->SetShowScaleLabels(false);
    g->EnsureCalculated();
    EXPECT_TRUE(x->LabelList().empty());
    EXPECT_EQ(x->Thickness(), 10 + 1); // ticks inside and the tick gap
}

TEST(VxGraph2D, LegendsArePlacedBesideTheAxes)
{
    auto g = FramedGraph();
    auto* right = new TTestLegend(g.get(), AxRightPos);
    auto* floating = new TTestLegend(g.get(), AxFreeFloating);
    floating->move(20, 30);
    g->AddLegend(right);
    g->AddLegend(floating);
    g->AddLegend(right);
    EXPECT_EQ(g->Legends().size(), 2);
    g->EnsureCalculated();
    const QRect world = g->DrawingWorld()->geometry();
    EXPECT_EQ(right->Notices, 1);
    EXPECT_EQ(right->Calculations, 1);
    EXPECT_GE(right->x(), world.right() + 10);
    EXPECT_LE(right->geometry().right(), g->width() - 1);
    EXPECT_EQ(right->y() + right->height() / 2, world.top() + world.height() / 2);
    EXPECT_EQ(floating->pos(), QPoint(20, 30));
    EXPECT_EQ(floating->Calculations, 0);
    delete right; // a deleted legend leaves the list
    EXPECT_EQ(g->Legends().size(), 1);
    EXPECT_TRUE(g->NeedsCalculation());
}

TEST(VxGraph2D, FourSidesStackOutward)
{
    TVx2DGraph g;
    g.resize(640, 480);
    g.XAxis();
    auto* top = AxisAt(&g, AxTopPos);
    auto* right = AxisAt(&g, AxRightPos);
    auto* bottom2 = AxisAt(&g, AxBottomPos);
    g.EnsureCalculated();
    const QRect world = g.DrawingWorld()->geometry();
    EXPECT_EQ(top->y() + top->LineY(), world.top());
    EXPECT_EQ(right->x() + right->LineX(), world.right());
    EXPECT_GE(bottom2->y(), g.PrimaryXAxis()->geometry().bottom());
    EXPECT_LE(bottom2->geometry().bottom(), g.height() - 1);
    EXPECT_EQ(top->AxisLength(), g.PrimaryXAxis()->AxisLength());
    EXPECT_EQ(right->AxisLength(), g.PrimaryYAxis()->AxisLength());
}

TEST(VxGraph2D, FreeFloatingAxisKeepsItsPlace)
{
    auto g = FramedGraph();
    auto* free = new TVxAxis(g.get());
    free->SetPosition(AxFreeFloating);
    free->move(300, 0);
    g->EnsureCalculated();
    const QRect world = g->DrawingWorld()->geometry();
    const int lineX = free->x() + free->LineX();
    EXPECT_EQ(lineX, 300 + free->LineX());
    EXPECT_EQ(free->y() + free->LineY(), world.top());
    EXPECT_EQ(free->AxisLength(), g->PrimaryYAxis()->AxisLength());
    // Moving it by hand keeps the new place at the next layout.
    free->move(200, free->y());
    g->EnsureCalculated();
    EXPECT_EQ(free->x(), 200);
    // An ordinal outside the positions is laid out like a free (here horizontal) axis.
    free->SetPosition(TVxAxisPos(9));
    g->EnsureCalculated();
    EXPECT_FALSE(free->Vertical());
    EXPECT_EQ(free->AxisLength(), g->PrimaryXAxis()->AxisLength());
}

TEST(VxGraph2D, RenderedFrameGridAndAxes)
{
    auto g = FramedGraph();
    g->MajorGridX().SetVisible(true);
    g->MajorGridX().SetStyle(psSolid);
    g->MajorGridX().SetColor(clRed);
    const QImage img = g->ToImage();
    const QRect world = g->DrawingWorld()->geometry();
    EXPECT_EQ(img.pixel(world.center() + QPoint(3, 0)), qRgb(255, 255, 255));
    EXPECT_EQ(img.pixel(world.right(), world.center().y()), Black()); // frame
    EXPECT_EQ(img.pixel(world.center().x() + 3, world.top()), Black());
    // Grid at the major tick x = 50, from the top down to the bottom of the world.
    const int x50 = GraphX(*g, 50);
    EXPECT_EQ(img.pixel(x50, world.top() + 5), qRgb(255, 0, 0));
    EXPECT_EQ(img.pixel(x50 + 3, world.top() + 5), qRgb(255, 255, 255));
    // A major tick below the x axis line, pointing away from the data.
    const TVxAxis* x = g->PrimaryXAxis();
    EXPECT_EQ(img.pixel(x50, world.bottom() + 5), Black());
    EXPECT_EQ(x->TickIsMajor()[25], true);
    // The label "40" below the ticks at x = 40; no label at 50 (labels every 20).
    auto labelBelow = [&](int x) {
        bool dark = false;
        for (int y = world.bottom() + 12; y < img.height(); ++y)
            for (int dx = -6; dx <= 6; ++dx)
                dark = dark || qGray(img.pixel(x + dx, y)) < 100;
        return dark;
    };
    EXPECT_TRUE(labelBelow(GraphX(*g, 40)));
    EXPECT_FALSE(labelBelow(x50));
}

TEST(VxGraph2D, YTickScreenOffsetsFollowValues)
{
    auto g = FramedGraph();
    g->YAxis()->SetStart(-3); // labels every 2 from -2, majors every 1
    g->YAxis()->SetStop(10);
    g->EnsureCalculated();
    const TVxAxis* y = g->PrimaryYAxis();
    // The stored tick i has the value Start + i * step; it is drawn where that value maps.
    for (int i = 0; i < y->TickCount(); i += 7) {
        const double value = y->Start() + i * (y->Stop() - y->Start()) / (y->TickCount() - 1);
        EXPECT_NEAR(y->TickScreenOffset(i), y->RealToIntPosition(value), 1);
    }
}

TEST(VxGraph2D, ZeroOriginCrossesAxes)
{
    auto g = FramedGraph();
    g->SetZeroOrigin(true);
    g->XAxis()->SetStart(-50);
    g->XAxis()->SetStop(50);
    g->YAxis()->SetStart(-1);
    g->YAxis()->SetStop(1);
    g->EnsureCalculated();
    const TVxAxis* x = g->PrimaryXAxis();
    EXPECT_EQ(x->y() + x->LineY(), GraphY(*g, 0));
    for (const TVxAxisPlacedLabel& l : x->LabelList())
        EXPECT_NE(l.Text, "0");
}

TEST(VxGraph2D, SeriesRangesDriveTheAxes)
{
    QWidget form;
    auto* g = new TVx2DGraph(&form);
    auto* xs = new TVxLiveVector(&form);
    auto* ys = new TVxLiveVector(&form);
    for (double v : {0.3, 50.0, 97.0})
        xs->Add(v);
    for (double v : {1.0, 2.0, 3.0})
        ys->Add(v);
    auto* s = new TVxDataSeries(&form);
    s->SetXData(xs);
    s->SetYData(ys);
    const QImage img = g->ToImage();
    const TVxAxis* xa = g->PrimaryXAxis();
    const TVxAxis* ya = g->PrimaryYAxis();
    EXPECT_EQ((std::vector<double>{xa->Start(), xa->Stop(), ya->Start(), ya->Stop()}), (std::vector<double>{0, 100, 1, 3}));
    EXPECT_EQ(g->GetSeriesList().Count(), 1);
    EXPECT_EQ(s->SettingsList().ReadString("Graph", "Title", "?"), "");
    // The line is drawn: red pixels (the default line colour) on the way from 50 to 97.
    const int y = g->DrawingWorld()->y() + g->PrimaryYAxis()->RealToIntPosition(2.5);
    bool red = false;
    for (int x = GraphX(*g, 50); x <= GraphX(*g, 97); ++x)
        for (int dy = -3; dy <= 3; ++dy)
            red = red || img.pixel(x, y + dy) == qRgb(255, 0, 0);
    EXPECT_TRUE(red);
    // Fixed ends ignore the data; switched back, they follow it again at once.
    TVxAxis* yAxis = g->PrimaryYAxis();
    yAxis->SetStartEnd(AxFixed);
    yAxis->SetStopEnd(AxFixed);
    yAxis->SetStart(10);
    yAxis->SetStop(20);
    g->EnsureCalculated();
    EXPECT_EQ(std::make_pair(yAxis->Start(), yAxis->Stop()), std::make_pair(10.0, 20.0));
    yAxis->SetStartEnd(AxAutoRange);
    yAxis->SetStopEnd(AxAutoRange);
    g->EnsureCalculated();
    EXPECT_EQ(std::make_pair(yAxis->Start(), yAxis->Stop()), std::make_pair(1.0, 3.0));
}

TEST(VxGraph2D, LayingOutAgainKeepsTheAxes)
{
    // Rounding -90..155 gives -100..175, and rounding that again would give -100..200.
    QWidget form;
    auto* g = new TVx2DGraph(&form);
    g->resize(400, 300);
    auto* x = new TVxLiveVector(&form);
    auto* y = new TVxLiveVector(&form);
    for (double v : {-100.0, 150.0})
        x->Add(v);
    for (double v : {-89.9999, 154.581})
        y->Add(v);
    auto* s = new TVxDataSeries(&form);
    s->SetXData(x);
    s->SetYData(y);
    for (int round = 0; round < 3; ++round) {
        g->ToImage();
        EXPECT_EQ(std::make_pair(g->YAxis()->Start(), g->YAxis()->Stop()), std::make_pair(-100.0, 175.0)) << round;
        g->Modified();
    }
    // A range set from outside is rounded from what was set.
    g->YAxis()->SetStop(176);
    g->ToImage();
    EXPECT_GT(g->YAxis()->Stop(), 176);
}

TEST(VxGraph2D, SeriesPaintOnTheGraphSoEdgeSymbolsAreWhole)
{
    // Squares on two corners of the plot: drawn whole, over the frame and the axes, until
    // both axes are zoomed in; then they are clipped to the world. A point beyond the fixed
    // x start is not drawn over the y axis' labels.
    QWidget form;
    auto* g = new TVx2DGraph(&form);
    g->resize(300, 200);
    auto* x = new TVxRealVector(&form);
    auto* y = new TVxRealVector(&form);
    for (double v : {0.0, 10.0, -1.0})
        x->Add(v);
    for (double v : {0.0, 10.0, 5.0})
        y->Add(v);
    auto* s = new TVxDataSeries(&form);
    s->SetXData(x);
    s->SetYData(y);
    s->LineStyle().SetVisible(false);
    s->PointStyle().SetStyle(SySquareFilled);
    s->PointStyle().SetSize(6);
    s->PointStyle().SetColor(clRed);
    g->EnsureCalculated();
    for (TVxAxis* a : {g->PrimaryXAxis(), g->PrimaryYAxis()}) {
        a->SetStartEnd(AxFixed);
        a->SetStopEnd(AxFixed);
        a->SetStart(0);
        a->SetStop(10);
    }
    // Red pixels outside the world widened by Margin.
    auto redOutside = [&](int Margin) {
        const QImage img = g->ToImage();
        const QRect world = g->DrawingWorld()->WorldRect().adjusted(-Margin, -Margin, Margin, Margin);
        int n = 0;
        for (int py = 0; py < img.height(); ++py)
            for (int px = 0; px < img.width(); ++px)
                n += !world.contains(px, py) && img.pixel(px, py) == qRgb(255, 0, 0) ? 1 : 0;
        return n;
    };
    EXPECT_GT(redOutside(0), 2 * 20);
    EXPECT_EQ(redOutside(8), 0);
    g->PrimaryXAxis()->ZoomIn(0, 10);
    g->PrimaryYAxis()->ZoomIn(0, 10);
    EXPECT_EQ(redOutside(0), 0);
}

TEST(VxGraph2D, ZoomDragAndZoomBack)
{
    auto g = FramedGraph();
    g->SetAutoZoom(true);
    g->EnsureCalculated();
    TVxDrawingWorld* w = g->DrawingWorld();
    const TVxAxis* x = g->PrimaryXAxis();
    // A drag along one row does not zoom.
    EXPECT_TRUE(Press(w, QEvent::MouseButtonPress, QPoint(10, 10))); // kept: moves come here
    Press(w, QEvent::MouseMove, QPoint(60, 10));
    EXPECT_TRUE(w->Zooming());
    Press(w, QEvent::MouseButtonRelease, QPoint(60, 10));
    EXPECT_FALSE(w->Zooming());
    EXPECT_FALSE(x->CanZoomBack());
    // A real rectangle zooms both axes to the values under its edges.
    const int x25 = x->RealToIntPosition(25);
    const int x50 = x->RealToIntPosition(50);
    const int y8 = g->PrimaryYAxis()->RealToIntPosition(8);
    const int y4 = g->PrimaryYAxis()->RealToIntPosition(4);
    Press(w, QEvent::MouseButtonPress, QPoint(x50, y4));
    Press(w, QEvent::MouseMove, QPoint(x25, y8));
    EXPECT_EQ(w->ZoomRect(), QRect(QPoint(x25, y8), QPoint(x50, y4)));
    Press(w, QEvent::MouseButtonRelease, QPoint(x25, y8));
    EXPECT_NEAR(x->Start(), 25, 0.5);
    EXPECT_NEAR(x->Stop(), 50, 0.5);
    EXPECT_NEAR(g->PrimaryYAxis()->Start(), 4, 0.05);
    EXPECT_NEAR(g->PrimaryYAxis()->Stop(), 8, 0.05);
    g->EnsureCalculated(); // the ends are rounded outward again
    EXPECT_LE(x->Start(), 25);
    EXPECT_GE(x->Stop(), 50);
    EXPECT_LT(x->Stop() - x->Start(), 40);
    g->ZoomBack();
    EXPECT_EQ(x->Start(), 0);
    EXPECT_EQ(x->Stop(), 100);
}

TEST(VxGraph2D, ZoomDragThroughTheWindow)
{
    // Through the window, as a user's drag arrives: the press grabs the mouse for the world.
    auto g = FramedGraph();
    g->SetAutoZoom(true);
    g->show();
    QApplication::processEvents();
    QWindow* window = g->windowHandle();
    ASSERT_NE(window, nullptr);
    const QPoint origin = g->DrawingWorld()->geometry().topLeft();
    auto send = [&](QEvent::Type type, QPoint p, Qt::MouseButtons buttons) {
        QMouseEvent e(type, QPointF(origin + p), QPointF(origin + p), window->mapToGlobal(QPointF(origin + p)),
                      Qt::LeftButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(window, &e);
    };
    const int x20 = g->PrimaryXAxis()->RealToIntPosition(20);
    const int x60 = g->PrimaryXAxis()->RealToIntPosition(60);
    send(QEvent::MouseButtonPress, QPoint(x20, 20), Qt::LeftButton);
    send(QEvent::MouseMove, QPoint(x60, 200), Qt::LeftButton);
    send(QEvent::MouseButtonRelease, QPoint(x60, 200), Qt::NoButton);
    EXPECT_TRUE(g->PrimaryXAxis()->CanZoomBack());
    EXPECT_NEAR(g->PrimaryXAxis()->Start(), 20, 0.5);
    EXPECT_NEAR(g->PrimaryXAxis()->Stop(), 60, 0.5);
}

TEST(VxGraph2D, StartStopMarkersDrag)
{
    auto g = FramedGraph();
    g->EnsureCalculated();
    TVxDrawingWorld* w = g->DrawingWorld();
    w->SetStartMarker(20);
    w->SetStopMarker(80);
    w->ShowStartStopMarkers();
    int moved = 0;
    w->SetOnMarkerMoved([&moved](QObject*) { ++moved; });
    EXPECT_TRUE(w->NearStart(21));
    EXPECT_FALSE(w->NearStart(22));
    EXPECT_FALSE(Press(w, QEvent::MouseButtonPress, QPoint(50, 30))); // no marker: to the graph
    Press(w, QEvent::MouseButtonPress, QPoint(79, 30));
    EXPECT_TRUE(w->DraggingStop());
    Press(w, QEvent::MouseMove, QPoint(120, 30));
    Press(w, QEvent::MouseMove, QPoint(w->width() + 5, 30)); // outside: ignored
    Press(w, QEvent::MouseButtonRelease, QPoint(120, 30));
    EXPECT_EQ(w->StopMarker(), 120);
    EXPECT_EQ(moved, 1);
    const QImage img = g->ToImage();
    EXPECT_EQ(img.pixel(w->x() + 120, w->y() + 40), Black()); // inverted white
}

TEST(VxGraph2D, OutfitRoundTrip)
{
    TVx2DGraph a;
    a.SetCaption("Spectrum");
    a.SetShowTitle(true);
    a.SetDataColor(clWhite);
    a.SetZeroOrigin(true);
    a.MinorGridY().SetVisible(true);
    a.MinorGridY().SetColor(clTeal);
    TVxIniList ini;
    a.SaveOutfit(ini, "Graph");
    EXPECT_EQ(ini.ReadInteger("Graph", "SeriesCount", -1), 0);
    TVx2DGraph b; // saves what it loaded; spot checks catch a key neither side knows
    b.LoadOutfit(ini, "Graph");
    TVxIniList again;
    b.SaveOutfit(again, "Graph");
    EXPECT_EQ(again.Lines(), ini.Lines());
    EXPECT_EQ(b.Caption(), "Spectrum");
    EXPECT_EQ(b.MinorGridY().Color(), clTeal);
}

TEST(VxGraph2D, MetafileClipboardAndFiles)
{
    auto g = FramedGraph();
    g->PaintToMetafile();
    const QPicture& pic = g->GetMetafile();
    EXPECT_GT(pic.size(), 0u);
    EXPECT_EQ(pic.boundingRect(), QRect(0, 0, 600, 400));
    auto replayOn = [&pic](Qt::GlobalColor background) {
        QImage image(600, 400, QImage::Format_RGB32);
        image.fill(background);
        QPainter(&image).drawPicture(0, 0, pic);
        return image;
    };
    const QRect world = g->DrawingWorld()->geometry();
    EXPECT_EQ(replayOn(Qt::white).pixel(world.right(), world.center().y()), Black());
    // The default face colour stays transparent in pictures.
    const QImage red = replayOn(Qt::red);
    EXPECT_EQ(red.pixel(2, 2), qRgb(255, 0, 0));
    EXPECT_EQ(red.pixel(world.center() + QPoint(3, 3)), qRgb(255, 255, 255));

    std::unique_ptr<QMimeData> mime(g->CreateMimeData());
    EXPECT_TRUE(mime->hasFormat("image/svg+xml"));
    EXPECT_TRUE(mime->data("image/svg+xml").startsWith("<?xml"));
    EXPECT_TRUE(mime->hasImage());
    g->CopyToClipboard();
    if (const QMimeData* clip = QGuiApplication::clipboard()->mimeData())
        EXPECT_TRUE(clip->hasFormat("image/svg+xml"));

    QTemporaryDir dir;
    for (const char* ext : {"svg", "pdf", "png"}) {
        SCOPED_TRACE(ext);
        const QString name = dir.filePath(QStringLiteral("graph.") + ext);
        g->SaveToFile(name);
        QFile f(name);
        ASSERT_TRUE(f.open(QIODevice::ReadOnly));
        EXPECT_GT(f.size(), 100);
    }
    EXPECT_EQ(QImage(dir.filePath("graph.png")).size(), QSize(600, 400));
    EXPECT_THROW(g->SaveToFile(dir.filePath("graph.bmpx")), EConvertError);
    EXPECT_THROW(g->SaveToFile(dir.filePath("missing/graph.png")), EFCreateError);
}

TEST(VxGraph2D, SeriesListBasics)
{
    TVxSeriesList list;
    auto* a = reinterpret_cast<TVxSeries*>(0x10);
    auto* b = reinterpret_cast<TVxSeries*>(0x20);
    list.Add(a);
    list.Add(b);
    list.Add(a);
    EXPECT_EQ(list.Count(), 2);
    list.Move(1, 0);
    EXPECT_EQ(list[0], b);
    list.Remove(b);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_THROW(list.Items(3), EListError);
}
