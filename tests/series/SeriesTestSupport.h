#pragma once
// A form with one graph and helpers to fill vectors and render, for the series tests.

#include "vx/core/VxVector.h"
#include "vx/graph/VxGraph2D.h"
#include "vx/platform/VxCanvas.h"

#include <QImage>
#include <QWidget>
#include <initializer_list>
#include <memory>

namespace vx::test {

struct SeriesForm {
    std::unique_ptr<QWidget> Form = std::make_unique<QWidget>();
    TVx2DGraph* Graph = nullptr;

    explicit SeriesForm(int Width = 400, int Height = 300)
    {
        Graph = new TVx2DGraph(Form.get());
        Graph->resize(Width, Height);
        Graph->SetDataColor(clWhite);
    }

    template <class V = TVxLiveVector>
    V* Vector(std::initializer_list<double> Values)
    {
        auto* v = new V(Form.get());
        for (double d : Values)
            v->Add(d);
        return v;
    }

    QImage Render() { return Graph->ToImage(); }
    // Offset of the drawing world inside the graph.
    QPoint World() const { return Graph->DrawingWorld()->geometry().topLeft(); }
};

// Colour of pixel P of an image as a TColor.
inline TColor PixelAt(const QImage& Image, QPoint P)
{
    return FromQColor(Image.pixelColor(P));
}

// Number of pixels of Image in Color.
inline int CountColor(const QImage& Image, TColor Color)
{
    const QRgb want = ToQColor(Color).rgb();
    int n = 0;
    for (int y = 0; y < Image.height(); ++y)
        for (int x = 0; x < Image.width(); ++x)
            n += (Image.pixel(x, y) | 0xFF000000u) == want ? 1 : 0;
    return n;
}

} // namespace vx::test
