// Tick labels with a common power of ten, for large and for small values.
#include "GalleryPages.h"
#include "PageAxesCommon.h"

using namespace vx;

namespace {

QWidget* CreateExponentAxes()
{
    TVx2DGraph* large = gallery::NewGraph("Large values");
    gallery::ShowRange(large->XAxis(), 0, 50000, "Pressure \\ip\\i  / Pa");
    gallery::ShowRange(large->YAxis(), 0, 2.4e6, "Count rate / s\\+-1");
    TVx2DGraph* small = gallery::NewGraph("Small values");
    gallery::ShowRange(small->XAxis(), 0, 0.004, "Strain \\se\\s");
    gallery::ShowRange(small->YAxis(), -2e-5, 6e-5, "Current \\iI\\i  / A");
    return gallery::SideBySide(large, small);
}

const GalleryRegistrar registrar{{
    "power-of-ten-labels",
    "Tick labels as mantissas with one common power-of-ten label at the axis end, for large values "
    "(left) and small values (right).",
    CreateExponentAxes,
    {},
}};

} // namespace
