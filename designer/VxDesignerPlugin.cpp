#include "VxDesignerPlugin.h"

#include "vx/graph/VxAxis.h"
#include "vx/graph/VxGraph2D.h"
#include "vx/graph/VxLabel.h"

namespace vx {

TVxDesignerWidget::TVxDesignerWidget(const QString& className, const QString& objectName,
                                     const QString& header, const QString& toolTip,
                                     bool isContainer, std::function<QWidget*(QWidget*)> factory,
                                     QObject* parent)
    : QObject(parent), FClassName(className), FObjectName(objectName), FHeader(header),
      FToolTip(toolTip),
      FIsContainer(isContainer), FFactory(std::move(factory))
{
}

QString TVxDesignerWidget::domXml() const
{
    return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\"/></ui>")
        .arg(FClassName, FObjectName);
}

namespace {
template <typename W>
TVxDesignerWidget* widgetEntry(const char* className, const char* objectName, const char* header,
                               const char* toolTip, bool isContainer, QObject* parent)
{
    return new TVxDesignerWidget(QString::fromLatin1(className), QString::fromLatin1(objectName),
                                 QString::fromLatin1(header),
                                 QString::fromLatin1(toolTip), isContainer,
                                 [](QWidget* p) { return new W(p); }, parent);
}
} // namespace

TVxDesignerPlugin::TVxDesignerPlugin(QObject* parent) : QObject(parent)
{
    FWidgets << widgetEntry<TVx2DGraph>("vx::TVx2DGraph", "graph", "vx/graph/VxGraph2D.h",
                                        "Two-dimensional scientific graph", true, this)
             << widgetEntry<TVxAxis>("vx::TVxAxis", "axis", "vx/graph/VxAxis.h",
                                     "Axis of a graph (place it on a graph)", false, this)
             << widgetEntry<TVxLabel>("vx::TVxLabel", "label", "vx/graph/VxLabel.h",
                                      "Label with caption markup (bold, italic, indices, Greek)",
                                      false, this);
}

} // namespace vx
