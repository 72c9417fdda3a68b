#include "vx/graph/VxGraph2D.h"

#include "vx/core/VxArithm.h"
#include "vx/core/VxLargeIni.h"
#include "vx/core/VxVector.h"
#include "vx/graph/VxLabel.h"
#include "vx/platform/VxCanvas.h"
#include "vx/platform/VxComponent.h"
#include "vx/platform/VxExceptions.h"
#include "vx/series/VxDataSeries.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QCursor>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QMimeData>
#include <QMouseEvent>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <algorithm>

namespace vx {

namespace {

// Calculation passes a render may need: ranges found by the series re-scale the axes,
// which then need the points computed once more.
constexpr int CMaxSettlePasses = 4;

QWidget* CheckedGraphOwner(QWidget* owner)
{
    if (!qobject_cast<TVx2DGraph*>(owner))
        throw EComponentError(QStringLiteral("Component must be owned by TVx2DGraph"));
    return owner;
}

// The axes a graph may take as primary: its own child axes and axes placed directly on
// its owner, in creation order.
QList<TVxAxis*> CandidateAxes(const TVx2DGraph* graph)
{
    QList<TVxAxis*> axes = ComponentsOf<TVxAxis>(graph->parent());
    axes.append(ComponentsOf<TVxAxis>(graph));
    return axes;
}

TVxAxis* LastAxisAt(const TVx2DGraph* graph, TVxAxisPos pos)
{
    TVxAxis* found = nullptr;
    for (TVxAxis* a : CandidateAxes(graph))
        if (a->Position() == pos)
            found = a;
    return found;
}

struct TOverrideCursor {
    TOverrideCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~TOverrideCursor() { QGuiApplication::restoreOverrideCursor(); }
};

QString SeriesKey(int index)
{
    return QStringLiteral("Series(") + QString::number(index) + QLatin1Char(')');
}

} // namespace

// ---------------------------------------------------------------------------------
// TVxSeriesList

TVxSeries* TVxSeriesList::Items(int Index) const
{
    if (Index < 0 || Index >= FItems.size())
        throw EListError::IndexOutOfBounds(Index);
    return FItems[Index];
}

void TVxSeriesList::Add(TVxSeries* Series)
{
    if (Series && !FItems.contains(Series))
        FItems.append(Series);
}

void TVxSeriesList::Insert(int Index, TVxSeries* Series)
{
    if (!Series)
        return;
    FItems.removeAll(Series);
    FItems.insert(std::clamp(Index, 0, int(FItems.size())), Series);
}

void TVxSeriesList::Remove(TVxSeries* Series)
{
    FItems.removeAll(Series);
}

void TVxSeriesList::Move(int From, int To)
{
    if (From < 0 || From >= FItems.size())
        throw EListError::IndexOutOfBounds(From);
    if (To < 0 || To >= FItems.size())
        throw EListError::IndexOutOfBounds(To);
    FItems.move(From, To);
}

// ---------------------------------------------------------------------------------
// TVxDrawingWorld

TVxDrawingWorld::TVxDrawingWorld(QWidget* AOwner)
    : QWidget(CheckedGraphOwner(AOwner))
{
    setMouseTracking(true);
}

TVxDrawingWorld::~TVxDrawingWorld()
{
    Destroying(this);
}

TVx2DGraph* TVxDrawingWorld::Graph() const
{
    return qobject_cast<TVx2DGraph*>(parentWidget());
}

void TVxDrawingWorld::SetAutoZoom(bool value)
{
    FAutoZoom = value;
    if (!value && FZooming) {
        FZooming = false;
        update();
    }
}

QRect TVxDrawingWorld::ZoomRect() const
{
    if (!FZooming)
        return QRect();
    return OrderedRect(FZoomAnchor.x(), FZoomAnchor.y(), FZoomCorner.x(), FZoomCorner.y());
}

void TVxDrawingWorld::ShowStartStopMarkers()
{
    if (FMarkersShown)
        return;
    FMarkersShown = true;
    update();
}

void TVxDrawingWorld::HideStartStopMarkers()
{
    if (!FMarkersShown)
        return;
    FMarkersShown = false;
    FDraggingStart = FDraggingStop = false;
    update();
}

void TVxDrawingWorld::SetStartMarker(int X)
{
    if (FStartMarker == X)
        return;
    FStartMarker = X;
    if (FMarkersShown)
        update();
}

void TVxDrawingWorld::SetStopMarker(int X)
{
    if (FStopMarker == X)
        return;
    FStopMarker = X;
    if (FMarkersShown)
        update();
}

void TVxDrawingWorld::ReorderSeriesList()
{
    // The drawing order is the list order; null entries are dropped.
    FSeriesList.Remove(nullptr);
}

void TVxDrawingWorld::PaintMarker(TCanvas& Canvas, int X) const
{
    Canvas.Pen().SetStyle(psSolid);
    Canvas.Pen().SetWidth(0);
    Canvas.Pen().SetColor(clBlack);
    Canvas.Pen().SetMode(pmNot);
    Canvas.MoveTo(X, 0);
    Canvas.LineTo(X, height());
    Canvas.Pen().SetMode(pmCopy);
}

void TVxDrawingWorld::DrawZoomRect(TCanvas& Canvas) const
{
    Canvas.DrawFocusRect(ZoomRect());
}

void TVxDrawingWorld::Paint(TCanvas& Canvas)
{
    TVx2DGraph* g = Graph();
    if (!g || !g->PrimaryXAxis() || !g->PrimaryYAxis() || !g->NotUpdating() || g->NeedsCalculation())
        return;
    const QRect world = WorldRect();
    Canvas.IntersectClipRect(world);
    Canvas.SetWindowOrg(-world.left(), -world.top());
    for (TVxSeries* s : FSeriesList)
        GuardEvent([&] { s->Draw(Canvas); });
    Canvas.SetWindowOrg(0, 0);
    Canvas.ClearClip();
}

void TVxDrawingWorld::UpdateSeries()
{
    // Series may draw beyond the world (symbols on its edge are drawn whole), so the
    // whole graph surface is repainted.
    if (TVx2DGraph* g = Graph())
        g->update();
    else
        update();
}

void TVxDrawingWorld::paintEvent(QPaintEvent*)
{
    GuardEvent([this] {
        if (!FMarkersShown && !FZooming)
            return;
        QPainter painter(this);
        TCanvas canvas(&painter);
        if (FMarkersShown) {
            PaintMarker(canvas, FStartMarker);
            PaintMarker(canvas, FStopMarker);
        }
        if (FZooming)
            DrawZoomRect(canvas);
    });
}

void TVxDrawingWorld::mousePressEvent(QMouseEvent* event)
{
    // A press that starts a drag is kept (so that the moves and the release come here);
    // any other press goes on to the graph.
    bool handled = false;
    GuardEvent([&] {
        const QPoint p = event->position().toPoint();
        if (FMarkersShown) {
            if (NearStart(p.x()))
                FDraggingStart = handled = true;
            else if (NearStop(p.x()))
                FDraggingStop = handled = true;
        } else if (FAutoZoom && event->button() == Qt::LeftButton) {
            FZoomAnchor = FZoomCorner = p;
            FZooming = handled = true;
            update();
        }
    });
    if (handled)
        event->accept();
    else
        QWidget::mousePressEvent(event);
}

void TVxDrawingWorld::mouseMoveEvent(QMouseEvent* event)
{
    GuardEvent([&] {
        const QPoint p = event->position().toPoint();
        if (FMarkersShown) {
            if (NearStart(p.x()) || NearStop(p.x()) || FDraggingStart || FDraggingStop)
                setCursor(Qt::SizeHorCursor);
            else
                unsetCursor();
            if ((FDraggingStart || FDraggingStop) && p.x() >= 0 && p.x() < width()) {
                int& marker = FDraggingStart ? FStartMarker : FStopMarker;
                if (marker != p.x()) {
                    marker = p.x();
                    update();
                    if (FOnMarkerMoved)
                        FOnMarkerMoved(this);
                }
            }
        } else if (FZooming && p != FZoomCorner) {
            FZoomCorner = p;
            update();
        }
    });
    QWidget::mouseMoveEvent(event);
}

void TVxDrawingWorld::mouseReleaseEvent(QMouseEvent* event)
{
    GuardEvent([&] {
        FDraggingStart = FDraggingStop = false;
        if (!FZooming)
            return;
        const QRect r = ZoomRect();
        FZooming = false;
        update();
        // A drag along one row or column does not zoom.
        if (r.right() != r.left() && r.bottom() != r.top())
            if (TVx2DGraph* g = Graph())
                g->ZoomTo(r);
    });
    QWidget::mouseReleaseEvent(event);
}

// ---------------------------------------------------------------------------------
// TVx2DGraph: construction and properties

TVx2DGraph::TVx2DGraph(QWidget* parent)
    : QFrame(parent), FFont(std::make_unique<TFont>()), FColor(clBtnFace), FDataColor(clBtnFace)
{
    CreateDrawingWorld();
    FFrameLine = std::make_unique<TVxLineStyle>(this);
    FFrameLine->SetColor(clBlack);
    FFrameLine->SetVisible(false);
    for (auto* grid : {&FMajorGridX, &FMajorGridY, &FMinorGridX, &FMinorGridY}) {
        *grid = std::make_unique<TVxLineStyle>(this);
        (*grid)->SetColor(clGray);
        (*grid)->SetStyle(psDot);
        (*grid)->SetVisible(false);
    }
    FTitleLabel = new TVxCustomLabel(this);
    FTitleLabel->SetFont(*FFont);
    FTitleLabel->SetAlignment(taCenter);
    FTitleLabel->SetCaption(FCaption);
    FTitleLabel->SetTransparent(true);
    FTitleLabel->hide();
    FFont->SetOnChange([this] { Modified(); });
    FNeedsCalculation = true;
    resize(600, 400);
}

TVx2DGraph::~TVx2DGraph()
{
    Destroying(this);
    // The drawing world dies with the children: it is not to be replaced then.
    disconnect(FDrawingWorld, &QObject::destroyed, this, nullptr);
    // Legends among the children die after the members: they must not call back.
    for (QWidget* legend : Legends())
        disconnect(legend, &QObject::destroyed, this, nullptr);
}

void TVx2DGraph::CreateDrawingWorld()
{
    FDrawingWorld = new TVxDrawingWorld(this);
    FDrawingWorld->lower(); // below the axes, legends and labels
    connect(FDrawingWorld, &QObject::destroyed, this, [this, world = FDrawingWorld] {
        if (FDrawingWorld != world)
            return;
        CreateDrawingWorld();
        Modified();
    });
}

bool TVx2DGraph::AutoZoom() const { return FDrawingWorld->AutoZoom(); }
void TVx2DGraph::SetAutoZoom(bool value) { FDrawingWorld->SetAutoZoom(value); }

TFont& TVx2DGraph::TitleFont() const { return FTitleLabel->Font(); }

void TVx2DGraph::SetTitleFont(const TFont& font)
{
    FTitleLabel->SetFont(font);
    Modified();
}

void TVx2DGraph::SetFont(const TFont& font)
{
    FFont->Assign(font);
}

void TVx2DGraph::Adopt(TVxAxis* axis)
{
    // Axes are laid out among the graph's children: one placed elsewhere moves in.
    if (axis && axis->parentWidget() != this) {
        axis->setParent(this);
        if (isVisible())
            axis->show();
    }
}

void TVx2DGraph::SetPrimaryXAxis(TVxAxis* axis)
{
    if (FPrimaryXAxis == axis)
        return;
    Adopt(axis);
    FPrimaryXAxis = axis;
    if (axis)
        axis->SetPosition(AxBottomPos);
    Modified();
}

void TVx2DGraph::SetPrimaryYAxis(TVxAxis* axis)
{
    if (FPrimaryYAxis == axis)
        return;
    Adopt(axis);
    FPrimaryYAxis = axis;
    if (axis)
        axis->SetPosition(AxLeftPos);
    Modified();
}

TVxAxis* TVx2DGraph::XAxis()
{
    CreateAxes();
    return FPrimaryXAxis;
}

TVxAxis* TVx2DGraph::YAxis()
{
    CreateAxes();
    return FPrimaryYAxis;
}

void TVx2DGraph::CreateAxes()
{
    auto make = [this](TVxAxisPos pos, const char* prefix) {
        auto* axis = new TVxAxis(this);
        axis->setObjectName(FirstFreeName(this, QLatin1String(prefix)));
        axis->SetPosition(pos);
        if (isVisible())
            axis->show();
        return axis;
    };
    if (!FPrimaryXAxis) {
        TVxAxis* x = LastAxisAt(this, AxBottomPos);
        SetPrimaryXAxis(x ? x : make(AxBottomPos, "XAxis"));
    }
    if (!FPrimaryYAxis) {
        TVxAxis* y = LastAxisAt(this, AxLeftPos);
        if (!y) {
            // Ticks of a new y axis point away from the data, like those of the x axis.
            y = make(AxLeftPos, "YAxis");
            y->SetMajorTickLength(-y->MajorTickLength());
            y->SetTickLength(-y->TickLength());
        }
        SetPrimaryYAxis(y);
    }
}

void TVx2DGraph::SetColor(TColor value)
{
    if (FColor == value)
        return;
    FColor = value;
    update();
}

void TVx2DGraph::SetDataColor(TColor value)
{
    if (FDataColor == value)
        return;
    FDataColor = value;
    update();
}

void TVx2DGraph::SetFrameLine(const TVxLineStyle& style) { FFrameLine->Assign(style); Modified(); }
void TVx2DGraph::SetMajorGridX(const TVxLineStyle& style) { FMajorGridX->Assign(style); update(); }
void TVx2DGraph::SetMajorGridY(const TVxLineStyle& style) { FMajorGridY->Assign(style); update(); }
void TVx2DGraph::SetMinorGridX(const TVxLineStyle& style) { FMinorGridX->Assign(style); update(); }
void TVx2DGraph::SetMinorGridY(const TVxLineStyle& style) { FMinorGridY->Assign(style); update(); }

void TVx2DGraph::SetZeroOrigin(bool value)
{
    if (FZeroOrigin == value)
        return;
    FZeroOrigin = value;
    Modified();
}

void TVx2DGraph::UpdateTitle()
{
    FTitleLabel->SetCaption(FShowTitle ? FCaption : QString());
    FTitleLabel->setVisible(FShowTitle);
}

void TVx2DGraph::SetShowTitle(bool value)
{
    if (FShowTitle == value)
        return;
    FShowTitle = value;
    UpdateTitle();
    Modified();
}

void TVx2DGraph::SetCaption(const TVxCaption& value)
{
    if (FCaption == value)
        return;
    FCaption = value;
    if (FShowTitle) {
        UpdateTitle();
        Modified();
    }
}

TVxSeriesList& TVx2DGraph::GetSeriesList() const
{
    return FDrawingWorld->SeriesList();
}

// ---------------------------------------------------------------------------------
// Update cycle

void TVx2DGraph::EndUpdate()
{
    if (FUpdateCount > 0)
        --FUpdateCount;
    if (NotUpdating() && FNeedsCalculation)
        update();
}

void TVx2DGraph::Modified()
{
    if (IsDestroying(this))
        return;
    FNeedsCalculation = true;
    ++FModifyStamp;
    if (NotUpdating())
        update();
}

void TVx2DGraph::Calculate()
{
    if (FCalculating)
        return;
    FCalculating = true;
    struct TDone {
        bool& Flag;
        ~TDone() { Flag = false; }
    } done{FCalculating};

    FDrawingWorld->ReorderSeriesList();
    const TVxSeriesList& list = GetSeriesList();
    for (TVxSeries* s : list)
        s->SettingsList().WriteString(QStringLiteral("Graph"), QStringLiteral("Title"), FCaption);
    for (QWidget* w : Legends())
        if (auto* l = dynamic_cast<IVxGraphLegend*>(w))
            l->ItemsModified();
    // Axes, then points; series that found new data ranges on the way re-scale the axes,
    // so the two steps repeat (a few rounds) until nothing changes.
    for (int round = 0; round < CMaxSettlePasses; ++round) {
        const quint64 stamp = FModifyStamp;
        // The x axis lays out every axis of the graph.
        if (FPrimaryXAxis)
            FPrimaryXAxis->Calculate();
        else if (FPrimaryYAxis)
            FPrimaryYAxis->Calculate();
        // Dependent series first, then their parent.
        for (TVxSeries* s : list) {
            for (TVxSeries* c : s->Childs())
                c->CalculatePoints();
            s->CalculatePoints();
        }
        if (FModifyStamp == stamp)
            break;
    }
    // Still changing after the last round: stop here rather than repaint for ever.
    FNeedsCalculation = false;
}

void TVx2DGraph::EnsureCalculated()
{
    CreateAxes();
    if (FNeedsCalculation && NotUpdating())
        Calculate();
    FNeedsCalculation = false;
}

// ---------------------------------------------------------------------------------
// Painting

void TVx2DGraph::PaintGrid(TCanvas& Canvas, const TVxAxis* axis, const TVxLineStyle& major,
                           const TVxLineStyle& minor, bool vertical) const
{
    if (!axis || !axis->Visible() || (!major.Visible() && !minor.Visible()))
        return;
    const QRect world = FDrawingWorld->geometry();
    const int count = int(axis->TickPositions().size());
    for (int i = 0; i < count; ++i) {
        const int o = axis->TickScreenOffset(i);
        // Lines on the frame are left to the frame.
        if (o <= 0 || o >= axis->AxisLength())
            continue;
        const TVxLineStyle& style = axis->TickIsMajor()[i] ? major : minor;
        if (!style.Visible())
            continue;
        style.ApplyTo(Canvas.Pen());
        if (vertical)
            DrawLine(o, 0, o, world.height(), Canvas);
        else
            DrawLine(0, o, world.width(), o, Canvas);
    }
}

void TVx2DGraph::Paint(TCanvas& Canvas)
{
    const QRect world = FDrawingWorld->geometry();
    // Background (left transparent in pictures when it is the default face colour).
    if (!(FPaintingToMetafile && FColor == clBtnFace)) {
        Canvas.Brush().SetStyle(bsSolid);
        Canvas.Brush().SetColor(FColor);
        Canvas.FillRect(rect());
    }
    // Data background, then the frame on the world's edge.
    if (FDataColor != FColor) {
        Canvas.Brush().SetStyle(bsSolid);
        Canvas.Brush().SetColor(FDataColor);
        Canvas.FillRect(world);
    }
    if (FFrameLine->Visible()) {
        FFrameLine->ApplyTo(Canvas.Pen());
        Canvas.Brush().SetStyle(bsClear);
        Canvas.Rectangle(world.left(), world.top(), world.right() + 1, world.bottom() + 1);
    }
    // Grid inside the world, minor and major lines at the primary axes' ticks.
    Canvas.IntersectClipRect(world);
    Canvas.SetWindowOrg(-world.left(), -world.top());
    PaintGrid(Canvas, FPrimaryXAxis, *FMajorGridX, *FMinorGridX, true);
    PaintGrid(Canvas, FPrimaryYAxis, *FMajorGridY, *FMinorGridY, false);
    Canvas.SetWindowOrg(0, 0);
    Canvas.ClearClip();
}

void TVx2DGraph::paintEvent(QPaintEvent*)
{
    GuardEvent([this] {
        if (NotUpdating() && FPrimaryXAxis && FPrimaryYAxis && FNeedsCalculation) {
            BeginUpdate();
            struct TEnd {
                TVx2DGraph* G;
                ~TEnd() { G->EndUpdate(); }
            } end{this};
            TOverrideCursor cursor;
            Calculate();
        }
        QPainter painter(this);
        TCanvas canvas(&painter);
        Paint(canvas);
        // The drawing world stands for a control without a surface of its own: its series
        // paint here, on the graph, and the axes and legends paint over them.
        if (FDrawingWorld)
            FDrawingWorld->Paint(canvas);
    });
}

void TVx2DGraph::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    FNeedsCalculation = true;
}

void TVx2DGraph::showEvent(QShowEvent* event)
{
    CreateAxes();
    QFrame::showEvent(event);
}

void TVx2DGraph::childEvent(QChildEvent* event)
{
    QFrame::childEvent(event);
    // Axes and legends coming and going change the layout.
    if ((event->added() || event->removed()) && FDrawingWorld)
        Modified();
}

bool TVx2DGraph::event(QEvent* event)
{
    // First show and first render both polish the widget: the moment the axes are
    // found or created.
    if (event->type() == QEvent::Polish)
        GuardEvent([this] { CreateAxes(); });
    return QFrame::event(event);
}

// ---------------------------------------------------------------------------------
// Legends

void TVx2DGraph::AddLegend(QWidget* legend)
{
    if (!legend || Legends().contains(legend))
        return;
    FLegends.append(legend);
    connect(legend, &QObject::destroyed, this, [this](QObject* o) { LegendDestroyed(o); });
    Modified();
}

void TVx2DGraph::RemoveLegend(QWidget* legend)
{
    const qsizetype before = FLegends.size();
    FLegends.removeIf([legend](const QPointer<QWidget>& p) { return p.isNull() || p == legend; });
    if (legend)
        disconnect(legend, &QObject::destroyed, this, nullptr);
    if (FLegends.size() != before)
        Modified();
}

void TVx2DGraph::LegendDestroyed(QObject*)
{
    FLegends.removeIf([](const QPointer<QWidget>& p) { return p.isNull(); });
    Modified();
}

QList<QWidget*> TVx2DGraph::Legends() const
{
    QList<QWidget*> result;
    for (const QPointer<QWidget>& p : FLegends)
        if (p)
            result.append(p.data());
    return result;
}

// ---------------------------------------------------------------------------------
// Zoom

void TVx2DGraph::ZoomTo(const QRect& rect)
{
    for (TVxAxis* a : ComponentsOf<TVxAxis>(this)) {
        double lo = a->Vertical() ? a->IntToRealPosition(rect.bottom()) : a->IntToRealPosition(rect.left());
        double hi = a->Vertical() ? a->IntToRealPosition(rect.top()) : a->IntToRealPosition(rect.right());
        if (lo > hi)
            std::swap(lo, hi);
        a->ZoomIn(lo, hi);
    }
    for (TVxSeries* s : GetSeriesList())
        s->Modified();
    Modified();
}

void TVx2DGraph::ZoomBack()
{
    for (TVxAxis* a : ComponentsOf<TVxAxis>(this))
        if (a->CanZoomBack())
            a->ZoomBack();
    for (TVxSeries* s : GetSeriesList())
        s->Modified();
    Modified();
}

// ---------------------------------------------------------------------------------
// Settings

void TVx2DGraph::SaveOutfit(TVxIniList& ini, const QString& section) const
{
    ini.WriteBool(section, QStringLiteral("ShowTitle"), FShowTitle);
    ini.WriteString(section, QStringLiteral("Caption"), FCaption);
    ini.WriteFont(section, QStringLiteral("Font"), *FFont);
    ini.WriteInteger(section, QStringLiteral("Color"), FColor);
    ini.WriteInteger(section, QStringLiteral("DataColor"), FDataColor);
    ini.WriteBool(section, QStringLiteral("ZeroOrigin"), FZeroOrigin);
    ini.WriteLine(section, QStringLiteral("FrameLine"), *FFrameLine);
    ini.WriteLine(section, QStringLiteral("MajorGridX"), *FMajorGridX);
    ini.WriteLine(section, QStringLiteral("MinorGridX"), *FMinorGridX);
    ini.WriteLine(section, QStringLiteral("MajorGridY"), *FMajorGridY);
    ini.WriteLine(section, QStringLiteral("MinorGridY"), *FMinorGridY);
    const TVxSeriesList& list = GetSeriesList();
    ini.WriteInteger(section, QStringLiteral("SeriesCount"), list.Count());
    for (int i = 0; i < list.Count(); ++i)
        ini.WriteString(section, SeriesKey(i), list[i]->objectName());
}

void TVx2DGraph::LoadOutfit(TVxIniList& ini, const QString& section)
{
    BeginUpdate();
    struct TEnd {
        TVx2DGraph* G;
        ~TEnd() { G->EndUpdate(); }
    } end{this};
    SetCaption(ini.ReadString(section, QStringLiteral("Caption"), FCaption));
    SetShowTitle(ini.ReadBool(section, QStringLiteral("ShowTitle"), FShowTitle));
    TFont font = *FFont;
    ini.ReadFont(section, QStringLiteral("Font"), font);
    SetFont(font);
    SetColor(ini.ReadInteger(section, QStringLiteral("Color"), FColor));
    SetDataColor(ini.ReadInteger(section, QStringLiteral("DataColor"), FDataColor));
    SetZeroOrigin(ini.ReadBool(section, QStringLiteral("ZeroOrigin"), FZeroOrigin));
    ini.ReadLine(section, QStringLiteral("FrameLine"), *FFrameLine);
    ini.ReadLine(section, QStringLiteral("MajorGridX"), *FMajorGridX);
    ini.ReadLine(section, QStringLiteral("MinorGridX"), *FMinorGridX);
    ini.ReadLine(section, QStringLiteral("MajorGridY"), *FMajorGridY);
    ini.ReadLine(section, QStringLiteral("MinorGridY"), *FMinorGridY);
    // The stored order of the series, as far as they are still there.
    TVxSeriesList& list = GetSeriesList();
    const int count = ini.ReadInteger(section, QStringLiteral("SeriesCount"), 0);
    int place = 0;
    for (int i = 0; i < count; ++i) {
        const QString name = ini.ReadString(section, SeriesKey(i), QString());
        for (int j = place; j < list.Count() && !name.isEmpty(); ++j) {
            if (list[j]->objectName() == name) {
                list.Move(j, place++);
                break;
            }
        }
    }
    Modified();
}

// ---------------------------------------------------------------------------------
// Pictures, files and clipboard

void TVx2DGraph::RenderTo(QPainter& painter)
{
    EnsureCalculated();
    render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
}

void TVx2DGraph::PaintToMetafile()
{
    FPaintingToMetafile = true;
    struct TDone {
        bool& Flag;
        ~TDone() { Flag = false; }
    } done{FPaintingToMetafile};
    FMetafile = QPicture();
    FMetafile.setBoundingRect(QRect(QPoint(), size()));
    QPainter painter(&FMetafile);
    RenderTo(painter);
}

QImage TVx2DGraph::ToImage()
{
    QImage image(size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    RenderTo(painter);
    return image;
}

namespace {
QByteArray SvgBytes(TVx2DGraph& graph)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setSize(graph.size());
    svg.setViewBox(QRect(QPoint(), graph.size()));
    svg.setTitle(GetStrippedString(graph.Caption()));
    QPainter painter(&svg);
    graph.RenderTo(painter);
    painter.end();
    return buffer.data();
}
} // namespace

QMimeData* TVx2DGraph::CreateMimeData()
{
    auto* data = new QMimeData;
    data->setData(QStringLiteral("image/svg+xml"), SvgBytes(*this));
    data->setImageData(ToImage());
    return data;
}

void TVx2DGraph::CopyToClipboard()
{
    PaintToMetafile();
    if (QClipboard* clipboard = QGuiApplication::clipboard())
        clipboard->setMimeData(CreateMimeData());
}

void TVx2DGraph::SaveToFile(const QString& FileName)
{
    const QString ext = QFileInfo(FileName).suffix().toLower();
    if (ext != QLatin1String("svg") && ext != QLatin1String("pdf") && ext != QLatin1String("png"))
        throw EConvertError(QStringLiteral("Cannot save a graph as \"%1\": use the extension .svg, .pdf or .png")
                                .arg(FileName));
    // Render first, so that a failed file leaves nothing half written.
    QByteArray bytes;
    if (ext == QLatin1String("svg")) {
        bytes = SvgBytes(*this);
    } else if (ext == QLatin1String("png")) {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        ToImage().save(&buffer, "PNG");
    } else {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter pdf(&buffer);
        pdf.setResolution(72);
        pdf.setPageSize(QPageSize(QSizeF(width(), height()), QPageSize::Point));
        pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
        pdf.setTitle(GetStrippedString(FCaption));
        QPainter painter(&pdf);
        RenderTo(painter);
        painter.end();
    }
    QFile file(FileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        throw EFCreateError(QStringLiteral("Cannot create file \"%1\". %2").arg(FileName, file.errorString()));
}

} // namespace vx
