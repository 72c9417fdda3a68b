#pragma once
// A kept raster picture of a long one-pixel line, extended as points are appended.
//
// On raster devices whose painter only translates, the line is drawn into a transparent
// layer that is composited in one call; while the earlier points stay as they are (same
// reduction generation), a redraw only adds the segments from the last drawn point on.
// Segments only ever add pixels, so the extended layer holds exactly the pixels of the
// whole line. Other devices get the polylines drawn directly.

#include "vx/platform/VxGraphics.h"

#include <QImage>
#include <QPoint>
#include <QRect>

namespace vx {

class TCanvas;
class TVxPolylineReducer;

class TVxLineLayer {
public:
    // Draws the line of Count points (Points; x = Skip breaks it), whose reduction is
    // Reduced, in the canvas pen. Generation changes whenever a point below Count changed.
    void Draw(TCanvas& Canvas, const TVxPolylineReducer& Reduced, quint64 Generation, const QPoint* Points,
              int Count, int Skip);
    void Clear()
    {
        FValid = false;
        FLayer = QImage();
    }

private:
    bool FValid = false;
    quint64 FGeneration = 0;
    TColor FColor = 0;
    QRect FRect;
    int FCount = 0;
    QImage FLayer;
};

// Draws every polyline of Reduced on the canvas (pieces of at most CVxPolylinePiece).
void DrawReducedLine(const TVxPolylineReducer& Reduced, TCanvas& Canvas);

} // namespace vx
