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
    gallery::AddCurve(large, 0, 50000, 200, [](double p) { return 2.2e6 * p / (p + 8000); }, clNavy);
    TVx2DGraph* small = gallery::NewGraph("Small values");
    gallery::ShowRange(small->XAxis(), 0, 0.004, "Strain \\se\\s");
    gallery::ShowRange(small->YAxis(), -2e-5, 6e-5, "Current \\iI\\i  / A");
    gallery::AddCurve(small, 0, 0.004, 200, [](double e) { return 5.5e-5 * std::tanh(e / 0.001) - 1.2e-5 * e / 0.004; },
                      clMaroon);
    return gallery::SideBySide(large, small);
}

const GalleryRegistrar registrar{{
    "14-power-of-ten-labels",
    "Tick labels as mantissas with one common power-of-ten label at the axis end, for large values "
    "(left) and small values (right).",
    CreateExponentAxes,
    {},
}};

} // namespace
