// Loads the built Designer plugin the way Designer does and creates every widget it
// offers; fails when the module has unresolved symbols or a factory breaks.
#include <QApplication>
#include <QPluginLoader>
#include <QWidget>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (argc < 2)
        return 2;
    QPluginLoader loader(QString::fromLocal8Bit(argv[1]));
    auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    if (!collection) {
        std::printf("cannot load the plugin: %s\n", qPrintable(loader.errorString()));
        return 1;
    }
    const auto widgets = collection->customWidgets();
    int failures = widgets.size() == 3 ? 0 : 1;
    for (QDesignerCustomWidgetInterface* entry : widgets) {
        QWidget* made = entry->createWidget(nullptr);
        const bool ok = made && entry->name() == QString::fromLatin1(made->metaObject()->className())
                        && entry->domXml().contains(entry->name());
        std::printf("%s: %s\n", qPrintable(entry->name()), ok ? "ok" : "FAILED");
        failures += ok ? 0 : 1;
        delete made;
    }
    return failures == 0 ? 0 : 1;
}
