// A slave axis: a second vertical axis on the right that follows the range of the left one.
#include "GalleryPages.h"
#include "PageAxesCommon.h"

using namespace vx;

namespace {

QWidget* CreateSlaveAxis()
{
    TVx2DGraph* graph = gallery::NewGraph("Temperature log");
    gallery::ShowRange(graph->XAxis(), 0, 24, "Time of day / h");
    TVxAxis* master = graph->YAxis();
    gallery::ShowRange(master, 12.5, 31.5, QStringLiteral(u"Temperature / \\s\u00B0\\sC"));
    gallery::AddCurve(graph, 0, 24, 200,
                      [](double h) { return 21 + 7 * std::sin((h - 9) * 3.14159265 / 12) + 0.6 * std::sin(h * 1.1); },
                      clMaroon);
    auto* slave = new TVxAxis(graph);
    slave->setObjectName("RightAxis");
    slave->SetPosition(AxRightPos);
    slave->SetFont(gallery::PageFont(9));
    slave->SetCaptionFont(gallery::PageFont(10));
    // Fixed ends: the slave shows the master's range as it is instead of rounding it outward.
    slave->SetStartEnd(AxFixed);
    slave->SetStopEnd(AxFixed);
    slave->SetMasterAxis(master);
    slave->SetUserCaption(QStringLiteral(u"Temperature / \\s\u00B0\\sC  (slave axis)"));
    slave->SetDoUserCaption(true);
    slave->SetShowCaption(true);
    return graph;
}

const GalleryRegistrar registrar{{
    "13-slave-axis",
    "A slave axis on the right follows the range of its master on the left (12.5 ... 31.5, rounded outward to 12.4 ... 31.6); with "
    "fixed ends of its own it repeats the master's scale exactly.",
    CreateSlaveAxis,
    {},
}};

} // namespace
