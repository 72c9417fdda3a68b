#pragma once
// Registers the library's widgets with Qt Designer (group "VxGraph").

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <QIcon>
#include <functional>

namespace vx {

// One widget class on Designer's widget box; the factory builds a new instance.
class TVxDesignerWidget : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    TVxDesignerWidget(const QString& className, const QString& objectName, const QString& header,
                      const QString& toolTip, bool isContainer,
                      std::function<QWidget*(QWidget*)> factory, QObject* parent);

    QString name() const override { return FClassName; }
    QString group() const override { return QStringLiteral("VxGraph"); }
    QString toolTip() const override { return FToolTip; }
    QString whatsThis() const override { return FToolTip; }
    QString includeFile() const override { return FHeader; }
    QIcon icon() const override { return QIcon(); }
    bool isContainer() const override { return FIsContainer; }
    QWidget* createWidget(QWidget* parent) override { return FFactory(parent); }
    bool isInitialized() const override { return FInitialized; }
    void initialize(QDesignerFormEditorInterface*) override { FInitialized = true; }
    QString domXml() const override;

private:
    QString FClassName;
    QString FObjectName;
    QString FHeader;
    QString FToolTip;
    bool FIsContainer;
    std::function<QWidget*(QWidget*)> FFactory;
    bool FInitialized = false;
};

// The plugin object Designer loads.
class TVxDesignerPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
public:
    explicit TVxDesignerPlugin(QObject* parent = nullptr);
    QList<QDesignerCustomWidgetInterface*> customWidgets() const override { return FWidgets; }

private:
    QList<QDesignerCustomWidgetInterface*> FWidgets;
};

} // namespace vx
