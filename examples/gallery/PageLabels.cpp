// Labels with caption markup at several angles on a graph.
#include "GalleryPages.h"
#include "PageAxesCommon.h"

using namespace vx;

namespace {

TVxLabel* AddLabel(TVx2DGraph* Graph, const QString& Caption, int Angle, QPoint TopLeft, bool Opaque = false)
{
    auto* label = new TVxLabel(Graph);
    label->SetFont(gallery::PageFont(11));
    label->SetCaption(Caption);
    label->SetAngle(Angle);
    label->SetTransparent(!Opaque);
    if (Opaque)
        label->SetColor(clCream);
    label->move(TopLeft);
    label->raise();
    return label;
}

QWidget* CreateLabels()
{
    TVx2DGraph* graph = gallery::NewGraph("Rotated labels with markup");
    gallery::ShowRange(graph->XAxis(), 0, 10, QStringLiteral(u"Wavelength \\i\\sl\\s\\i  / nm"));
    gallery::ShowRange(graph->YAxis(), 0, 10, "Intensity \\iI\\i\\-0\\-  / W m\\+-2");

    AddLabel(graph, "E = \\bm\\bc\\+2\\+  and H\\-2\\-O", 0, QPoint(120, 60));
    AddLabel(graph, QStringLiteral(u"\\iDiagonal:\\i  \\sa\\s  + \\sb\\s  = 90\\s\u00B0\\s"), 450, QPoint(150, 150));
    AddLabel(graph, "\\bVertical\\b: \\iU\\i\\-out\\-  / mV", 900, QPoint(90, 150), true);
    AddLabel(graph, QStringLiteral(u"CO\\-2\\-  + H\\-2\\-O \\s\u00AE\\s  H\\-2\\-CO\\-3\\-"), -300, QPoint(420, 60));
    AddLabel(graph, "\\uUnderlined\\u  and \\ostruck\\o, upside down", 1800, QPoint(380, 300));
    AddLabel(graph, QStringLiteral(u"\\s\u00B6\\s\\iu\\i/\\s\u00B6\\s\\it\\i  = \\s\u00D1\\s\\+2\\+\\iu\\i,   \\sS\\s\\-\\ii\\i\\-\\ix\\i\\-\\ii\\i\\-\\+2\\+  \\s\u00A3 \u00A5\\s"),
             0, QPoint(300, 220), true);
    return graph;
}

const GalleryRegistrar registrar{{
    "15-rotated-labels",
    "Label components with caption markup (bold, italic, underline, strikeout, sub- and superscript, "
    "symbol-font Greek letters and signs) at 0, 45, 90, -30 and 180 degrees; two of them opaque.",
    CreateLabels,
    {},
}};

} // namespace
