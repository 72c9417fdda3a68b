#pragma once
// Pixel probes for paint tests: white test images and where ink landed on them.

#include "vx/platform/VxCanvas.h"
#include "vx/platform/VxGraphics.h"

#include <QImage>
#include <QRect>
#include <initializer_list>
#include <string>

namespace vx::test {

// An opaque white image (the background every probe compares against).
inline QImage WhiteImage(int width = 40, int height = 40)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

// A white image with what `draw` paints on it through a canvas (the canvas is gone, and
// its painter ended, before the image is returned).
template <class Draw>
QImage Painted(Draw&& draw, int width = 40, int height = 40)
{
    QImage image = WhiteImage(width, height);
    {
        TCanvas c(&image);
        draw(c);
    }
    return image;
}

inline bool IsWhite(const QImage& image, int x, int y)
{
    return image.pixel(x, y) == qRgb(255, 255, 255);
}

inline bool Ink(const QImage& image, int x, int y)
{
    return !IsWhite(image, x, y);
}

// '#' for every inked point and '.' for every white one: several probes in one comparison.
inline std::string InkAt(const QImage& image, std::initializer_list<QPoint> points)
{
    std::string marks;
    for (const QPoint& p : points)
        marks += Ink(image, p.x(), p.y()) ? '#' : '.';
    return marks;
}

// The colour of pixel (x, y) as a platform colour value.
inline TColor At(const QImage& image, int x, int y)
{
    return FromQColor(QColor::fromRgb(image.pixel(x, y)));
}

// Bounding box of the non-white pixels inside Area (the whole image when Area is null;
// empty if there are none).
inline QRect InkBounds(const QImage& image, QRect area = QRect())
{
    area = area.isNull() ? image.rect() : area & image.rect();
    QRect r;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (Ink(image, x, y))
                r |= QRect(x, y, 1, 1);
    return r;
}

inline int InkCount(const QImage& image)
{
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += Ink(image, x, y) ? 1 : 0;
    return n;
}

} // namespace vx::test
