#include "support/RecordingDevice.h"

#include <QPaintEngine>
#include <QPainterPath>
#include <QTextItem>

namespace vx::test {

class RecordingEngine : public QPaintEngine {
public:
    RecordingEngine() : QPaintEngine(QPaintEngine::AllFeatures) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return QPaintEngine::User; }

    void updateState(const QPaintEngineState& state) override
    {
        const DirtyFlags f = state.state();
        if (f & DirtyPen) {
            FPen = state.pen();
            ++penChanges;
        }
        if (f & DirtyBrush) {
            FBrush = state.brush();
            ++brushChanges;
        }
        if (f & DirtyFont) {
            FFont = state.font();
            ++fontChanges;
        }
        if (f & DirtyTransform)
            FTransform = state.transform();
        if (f & DirtyCompositionMode)
            FMode = state.compositionMode();
        if (f & (DirtyClipRegion | DirtyClipPath | DirtyClipEnabled)) {
            FClipped = state.isClipEnabled() && state.clipOperation() != Qt::NoClip;
            if (f & DirtyClipRegion)
                FClip = state.transform().map(state.clipRegion()).boundingRect();
            else if (f & DirtyClipPath)
                FClip = state.transform().map(state.clipPath()).boundingRect();
        }
    }

    void drawLines(const QLineF* lines, int count) override
    {
        for (int i = 0; i < count; ++i)
            Add(RecordedPrimitive::Line, {lines[i].p1(), lines[i].p2()});
    }
    void drawLines(const QLine* lines, int count) override
    {
        for (int i = 0; i < count; ++i)
            Add(RecordedPrimitive::Line, {QPointF(lines[i].p1()), QPointF(lines[i].p2())});
    }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override
    {
        Add(mode == PolylineMode ? RecordedPrimitive::Polyline : RecordedPrimitive::Polygon,
            QVector<QPointF>(points, points + count));
    }
    void drawPolygon(const QPoint* points, int count, PolygonDrawMode mode) override
    {
        QVector<QPointF> pts;
        pts.reserve(count);
        for (int i = 0; i < count; ++i)
            pts.append(QPointF(points[i]));
        Add(mode == PolylineMode ? RecordedPrimitive::Polyline : RecordedPrimitive::Polygon, pts);
    }
    void drawRects(const QRectF* rects, int count) override
    {
        for (int i = 0; i < count; ++i)
            AddRect(RecordedPrimitive::Rect, rects[i]);
    }
    void drawRects(const QRect* rects, int count) override
    {
        for (int i = 0; i < count; ++i)
            AddRect(RecordedPrimitive::Rect, QRectF(rects[i]));
    }
    void drawEllipse(const QRectF& r) override { AddRect(RecordedPrimitive::Ellipse, r); }
    void drawEllipse(const QRect& r) override { AddRect(RecordedPrimitive::Ellipse, QRectF(r)); }
    void drawPath(const QPainterPath& path) override
    {
        RecordedPrimitive p = Make(RecordedPrimitive::Path);
        p.rect = FTransform.map(path).boundingRect();
        primitives.append(p);
    }
    void drawPixmap(const QRectF& r, const QPixmap&, const QRectF&) override
    {
        AddRect(RecordedPrimitive::Pixmap, r);
    }
    void drawTextItem(const QPointF& p, const QTextItem& item) override
    {
        RecordedPrimitive r = Make(RecordedPrimitive::Text);
        r.points = {FTransform.map(p)};
        r.rect = QRectF(FTransform.map(p), QSizeF());
        r.text = item.text();
        r.font = item.font();
        primitives.append(r);
    }

    QVector<RecordedPrimitive> primitives;
    int penChanges = 0;
    int brushChanges = 0;
    int fontChanges = 0;

private:
    RecordedPrimitive Make(RecordedPrimitive::Kind kind) const
    {
        RecordedPrimitive p;
        p.kind = kind;
        p.pen = FPen;
        p.brush = FBrush;
        p.font = FFont;
        p.mode = FMode;
        p.clipped = FClipped;
        p.clip = FClip;
        return p;
    }
    void Add(RecordedPrimitive::Kind kind, QVector<QPointF> pts)
    {
        RecordedPrimitive p = Make(kind);
        for (QPointF& q : pts)
            q = FTransform.map(q);
        p.points = std::move(pts);
        primitives.append(p);
    }
    void AddRect(RecordedPrimitive::Kind kind, const QRectF& r)
    {
        RecordedPrimitive p = Make(kind);
        p.rect = FTransform.mapRect(r);
        primitives.append(p);
    }

    QPen FPen;
    QBrush FBrush;
    QFont FFont;
    QTransform FTransform;
    QPainter::CompositionMode FMode = QPainter::CompositionMode_SourceOver;
    bool FClipped = false;
    QRectF FClip;
};

RecordingDevice::RecordingDevice(int width, int height)
    : FWidth(width)
    , FHeight(height)
    , FEngine(std::make_unique<RecordingEngine>())
{
}

RecordingDevice::~RecordingDevice() = default;

QPaintEngine* RecordingDevice::paintEngine() const
{
    return FEngine.get();
}

const QVector<RecordedPrimitive>& RecordingDevice::Primitives() const
{
    return FEngine->primitives;
}

QVector<RecordedPrimitive> RecordingDevice::OfKind(RecordedPrimitive::Kind kind) const
{
    QVector<RecordedPrimitive> out;
    for (const RecordedPrimitive& p : FEngine->primitives)
        if (p.kind == kind)
            out.append(p);
    return out;
}

int RecordingDevice::PenChanges() const { return FEngine->penChanges; }
int RecordingDevice::BrushChanges() const { return FEngine->brushChanges; }
int RecordingDevice::FontChanges() const { return FEngine->fontChanges; }

void RecordingDevice::Clear()
{
    FEngine->primitives.clear();
    FEngine->penChanges = 0;
    FEngine->brushChanges = 0;
    FEngine->fontChanges = 0;
}

int RecordingDevice::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth: return FWidth;
    case PdmHeight: return FHeight;
    case PdmWidthMM: return FWidth * 254 / 960;
    case PdmHeightMM: return FHeight * 254 / 960;
    case PdmNumColors: return 0x7fffffff;
    case PdmDepth: return 32;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY: return 96;
    case PdmDevicePixelRatio: return 1;
    case PdmDevicePixelRatioScaled: return static_cast<int>(QPaintDevice::devicePixelRatioFScale());
    default: return 0;
    }
}

} // namespace vx::test
