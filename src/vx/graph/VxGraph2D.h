#pragma once
// The graph widget, its drawing world and the series list.
//
// A TVx2DGraph is a frame holding the drawing world (where series draw), its axes
// (child TVxAxis widgets, the primary x and y axis found or created when the graph is
// first shown or rendered), legends and labels. Changes go through Modified: a flag plus
// a repaint; the next paint recalculates once (ranges, ticks, layout, series points).
// Batches between BeginUpdate and EndUpdate repaint once.
//
// Typical use:
//     auto* graph = new TVx2DGraph(parent);
//     graph->SetCaption("Decay");  graph->SetShowTitle(true);
//     graph->XAxis()->SetCaption("t / s");  graph->XAxis()->SetShowCaption(true);
//     ... series bound to the graph ...
//     graph->SaveToFile("decay.svg");

#include "vx/core/VxConsts.h"
#include "vx/graph/VxAxis.h"
#include "vx/graph/VxDraw.h"
#include "vx/platform/VxGraphics.h"

#include <QFrame>
#include <QList>
#include <QPicture>
#include <QPointer>
#include <QWidget>
#include <memory>

class QMimeData;

namespace vx {

class TCanvas;
class TVxIniList;
class TVxSeries;
class TVxCustomLabel;
class TVx2DGraph;

// The series drawn by a drawing world, or the dependent series of a series, in drawing
// order. Holds references; whoever creates the list decides who deletes the series.
class TVxSeriesList {
public:
    int Count() const { return int(FItems.size()); }
    // The series at Index; an index outside 0..Count-1 raises EListError.
    TVxSeries* Items(int Index) const;
    TVxSeries* operator[](int Index) const { return Items(Index); }
    // Appends Series unless it is already in the list.
    void Add(TVxSeries* Series);
    void Insert(int Index, TVxSeries* Series);
    // Removes every occurrence of Series.
    void Remove(TVxSeries* Series);
    void Move(int From, int To);
    int IndexOf(const TVxSeries* Series) const { return FItems.indexOf(const_cast<TVxSeries*>(Series)); }
    bool Contains(const TVxSeries* Series) const { return IndexOf(Series) >= 0; }
    void Clear() { FItems.clear(); }
    QList<TVxSeries*>::const_iterator begin() const { return FItems.cbegin(); }
    QList<TVxSeries*>::const_iterator end() const { return FItems.cend(); }

private:
    QList<TVxSeries*> FItems;
};

// What the graph needs of a legend. A legend widget that wants to be laid out by the
// graph and told about series changes implements this and registers with AddLegend.
class IVxGraphLegend {
public:
    virtual ~IVxGraphLegend() = default;
    // The series list or their captions/styles changed.
    virtual void ItemsModified() = 0;
    // Where the graph places the legend (AxFreeFloating: the legend keeps its bounds).
    virtual TVxAxisPos InGraphPosition() const = 0;
    // Distance kept between the legend and the drawing world's side.
    virtual int OutsideGap() const = 0;
    // Lets the legend compute its size; called by the layout before placing it. It must
    // not call Modified of the graph or its axes (the layout is running).
    virtual void Calculate() = 0;
};

// The area inside the graph where series draw, with the zoom rectangle and the
// draggable start/stop markers. Mouse events that start no zoom or marker drag go on to
// the graph.
class TVxDrawingWorld : public QWidget {
    Q_OBJECT
public:
    // Owner must be a TVx2DGraph ("Component must be owned by TVx2DGraph" otherwise).
    explicit TVxDrawingWorld(QWidget* AOwner);
    ~TVxDrawingWorld() override;

    TVx2DGraph* Graph() const;
    TVxSeriesList& SeriesList() { return FSeriesList; }
    const TVxSeriesList& SeriesList() const { return FSeriesList; }
    // The rectangle it occupies in the graph (client pixels of the graph).
    QRect WorldRect() const { return geometry(); }

    bool AutoZoom() const { return FAutoZoom; }
    void SetAutoZoom(bool value);
    // The zoom rectangle being dragged (null when not zooming).
    bool Zooming() const { return FZooming; }
    QRect ZoomRect() const;

    // Start and stop marker x (pixels of the drawing world).
    bool MarkersShown() const { return FMarkersShown; }
    void ShowStartStopMarkers();
    void HideStartStopMarkers();
    int StartMarker() const { return FStartMarker; }
    void SetStartMarker(int X);
    int StopMarker() const { return FStopMarker; }
    void SetStopMarker(int X);
    bool NearStart(int X) const { return FStartMarker - 1 <= X && X <= FStartMarker + 1; }
    bool NearStop(int X) const { return FStopMarker - 1 <= X && X <= FStopMarker + 1; }
    bool DraggingStart() const { return FDraggingStart; }
    bool DraggingStop() const { return FDraggingStop; }
    // Called when a marker was dragged to a new place.
    TNotifyEvent OnMarkerMoved() const { return FOnMarkerMoved; }
    void SetOnMarkerMoved(TNotifyEvent handler) { FOnMarkerMoved = std::move(handler); }

    // Brings the series list into drawing order (stable; series first, then their
    // place among the owner's children is kept).
    void ReorderSeriesList();
    // Draws every series on Canvas, a canvas on the graph's surface: with the origin at
    // the world's top-left and clipped to it, so a series that lifts the clip (point
    // symbols and arrows of axes not zoomed in) draws whole beyond the world's edge.
    // Nothing while the graph lacks a primary axis, is updating or needs calculation.
    // The graph calls it when it paints; the world's own surface shows only the markers
    // and the zoom rectangle.
    void Paint(TCanvas& Canvas);
    // Asks for the series to be painted again (the graph's surface under and around the
    // world); use it instead of update().
    void UpdateSeries();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void PaintMarker(TCanvas& Canvas, int X) const;
    void DrawZoomRect(TCanvas& Canvas) const;

    TVxSeriesList FSeriesList;
    bool FAutoZoom = false;
    bool FZooming = false;
    QPoint FZoomAnchor;
    QPoint FZoomCorner;
    bool FMarkersShown = false;
    bool FDraggingStart = false;
    bool FDraggingStop = false;
    int FStartMarker = 0;
    int FStopMarker = 0;
    TNotifyEvent FOnMarkerMoved;
};

// The graph: background, frame, grid, drawing world, axes, legends and title.
class TVx2DGraph : public QFrame, public IVxModifiable {
    Q_OBJECT
    Q_PROPERTY(bool AutoZoom READ AutoZoom WRITE SetAutoZoom)
    Q_PROPERTY(bool ZeroOrigin READ ZeroOrigin WRITE SetZeroOrigin)
    Q_PROPERTY(bool ShowTitle READ ShowTitle WRITE SetShowTitle)
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(int DataColor READ DataColor WRITE SetDataColor)
    Q_PROPERTY(int Color READ Color WRITE SetColor)

public:
    explicit TVx2DGraph(QWidget* parent = nullptr);
    ~TVx2DGraph() override;

    // Enables the zoom rectangle of the drawing world.
    bool AutoZoom() const;
    void SetAutoZoom(bool value);
    TFont& TitleFont() const;
    void SetTitleFont(const TFont& font);
    // The font of the graph (base of the title font at construction).
    TFont& Font() const { return *FFont; }
    void SetFont(const TFont& font);
    // Horizontal axis for the vertical grid lines and the calculation; setting one moves
    // it to the bottom (and into the graph when it sits elsewhere). Found or created when
    // the graph is first shown or rendered.
    TVxAxis* PrimaryXAxis() const { return FPrimaryXAxis; }
    void SetPrimaryXAxis(TVxAxis* axis);
    TVxAxis* PrimaryYAxis() const { return FPrimaryYAxis; }
    void SetPrimaryYAxis(TVxAxis* axis);
    // The primary axes, found or created now if not yet there (never null).
    TVxAxis* XAxis();
    TVxAxis* YAxis();
    // Background (default clBtnFace) and drawing-world background.
    TColor Color() const { return FColor; }
    void SetColor(TColor value);
    TColor DataColor() const { return FDataColor; }
    void SetDataColor(TColor value);
    TVxLineStyle& FrameLine() const { return *FFrameLine; }
    void SetFrameLine(const TVxLineStyle& style);
    TVxLineStyle& MajorGridX() const { return *FMajorGridX; }
    void SetMajorGridX(const TVxLineStyle& style);
    TVxLineStyle& MajorGridY() const { return *FMajorGridY; }
    void SetMajorGridY(const TVxLineStyle& style);
    TVxLineStyle& MinorGridX() const { return *FMinorGridX; }
    void SetMinorGridX(const TVxLineStyle& style);
    TVxLineStyle& MinorGridY() const { return *FMinorGridY; }
    void SetMinorGridY(const TVxLineStyle& style);
    // Axes cross at the origin (read by the axes).
    bool ZeroOrigin() const { return FZeroOrigin; }
    void SetZeroOrigin(bool value);
    bool ShowTitle() const { return FShowTitle; }
    void SetShowTitle(bool value);
    TVxCaption Caption() const { return FCaption; }
    void SetCaption(const TVxCaption& value);
    TVxCustomLabel* TitleLabel() const { return FTitleLabel; }

    TVxDrawingWorld* DrawingWorld() const { return FDrawingWorld; }
    TVxSeriesList& GetSeriesList() const;

    // Update batching.
    void BeginUpdate() { ++FUpdateCount; }
    void EndUpdate();
    bool NotUpdating() const { return FUpdateCount == 0; }
    int UpdateCount() const { return FUpdateCount; }
    // Needs calculation; repaints.
    void Modified() override;
    bool NeedsCalculation() const { return FNeedsCalculation; }
    // True while Calculate runs.
    bool Calculating() const { return FCalculating; }
    // Scales the axes, lays out axes, legends and drawing world, computes the series'
    // points. Normally run by the next paint.
    void Calculate();
    // Runs Calculate when needed (first finding the primary axes).
    void EnsureCalculated();
    // Paints the graph's own layer (background, frame, data background, grid).
    void Paint(TCanvas& Canvas);

    // Legends attached to this graph (not owned).
    void AddLegend(QWidget* legend);
    void RemoveLegend(QWidget* legend);
    QList<QWidget*> Legends() const;

    // Zooms every axis of the graph to the pixel rectangle (drawing-world coordinates, the
    // axes' pixel offsets); each axis keeps a zoom history.
    void ZoomTo(const QRect& rect);
    // Steps every zoomed axis back (cyclic history).
    void ZoomBack();

    void SaveOutfit(TVxIniList& ini, const QString& section) const;
    void LoadOutfit(TVxIniList& ini, const QString& section);

    // Records the whole graph with its child widgets into the metafile.
    void PaintToMetafile();
    const QPicture& GetMetafile() const { return FMetafile; }
    bool PaintingToMetafile() const { return FPaintingToMetafile; }
    // The graph as SVG + PNG clipboard data.
    QMimeData* CreateMimeData();
    void CopyToClipboard();
    // Writes SVG, PDF or PNG, chosen by the extension; raises EFCreateError when the
    // file cannot be written and EConvertError for an unknown extension.
    void SaveToFile(const QString& FileName);
    // Renders the whole graph (with axes, legends, labels) into an image of its size.
    QImage ToImage();
    // Renders the whole graph onto a painter at (0,0) (vector devices included).
    void RenderTo(QPainter& painter);

    // Finds or creates the primary axes (done on first show or render).
    void CreateAxes();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void childEvent(QChildEvent* event) override;
    bool event(QEvent* event) override;

private:
    friend class TVxDrawingWorld;
    void PaintGrid(TCanvas& Canvas, const TVxAxis* axis, const TVxLineStyle& major,
                   const TVxLineStyle& minor, bool vertical) const;
    void UpdateTitle();
    void Adopt(TVxAxis* axis);
    void LegendDestroyed(QObject* legend);
    // Creates the drawing world; one deleted from outside is replaced, so the graph
    // never paints through a dangling pointer.
    void CreateDrawingWorld();

    TVxDrawingWorld* FDrawingWorld = nullptr;
    QPointer<TVxAxis> FPrimaryXAxis;
    QPointer<TVxAxis> FPrimaryYAxis;
    std::unique_ptr<TFont> FFont;
    std::unique_ptr<TVxLineStyle> FFrameLine;
    std::unique_ptr<TVxLineStyle> FMajorGridX;
    std::unique_ptr<TVxLineStyle> FMajorGridY;
    std::unique_ptr<TVxLineStyle> FMinorGridX;
    std::unique_ptr<TVxLineStyle> FMinorGridY;
    QPicture FMetafile;
    TColor FColor;
    TColor FDataColor;
    bool FNeedsCalculation = true;
    bool FZeroOrigin = false;
    bool FShowTitle = false;
    TVxCaption FCaption;
    TVxCustomLabel* FTitleLabel = nullptr;
    int FUpdateCount = 0;
    QList<QPointer<QWidget>> FLegends;
    bool FPaintingToMetafile = false;
    bool FCalculating = false;
    quint64 FModifyStamp = 0;
};

} // namespace vx
