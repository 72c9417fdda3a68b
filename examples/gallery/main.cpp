// VxGraph gallery: one page per feature. With a display it opens a window with a tab per
// page; without one (or with --export DIR) it writes every page as PNG, SVG and PDF.
#include "GalleryPages.h"

#include <QApplication>
#include <QDir>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <QTabWidget>
#include <QTextStream>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdio>

std::vector<GalleryPage>& GalleryPages()
{
    static std::vector<GalleryPage> pages;
    return pages;
}

GalleryRegistrar::GalleryRegistrar(GalleryPage page)
{
    GalleryPages().push_back(std::move(page));
}

namespace {

constexpr int kPageWidth = 800;
constexpr int kPageHeight = 560;

// A page widget: the caption above the feature's widget.
QWidget* buildPage(const GalleryPage& page)
{
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    auto* caption = new QLabel(page.Caption, box);
    caption->setWordWrap(true);
    layout->addWidget(caption);
    QWidget* content = page.Create();
    content->setParent(box);
    layout->addWidget(content, 1);
    box->resize(kPageWidth, kPageHeight);
    return box;
}

void renderTo(QWidget* w, QPaintDevice* device)
{
    QPainter painter(device);
    const double sx = double(device->width()) / w->width();
    const double sy = double(device->height()) / w->height();
    painter.scale(std::min(sx, sy), std::min(sx, sy));
    w->render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
}

int exportPages(const QString& dirName)
{
    QDir dir(dirName);
    if (!dir.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "cannot create %s\n", qPrintable(dirName));
        return 1;
    }
    QTextStream out(stdout);
    for (const GalleryPage& page : GalleryPages()) {
        QWidget* w = buildPage(page);
        w->setAttribute(Qt::WA_DontShowOnScreen);
        w->show();
        QCoreApplication::processEvents();
        if (page.PrepareExport)
            page.PrepareExport(w);
        const QString base = dir.filePath(page.Name);

        QImage image(w->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        w->render(&image);
        image.save(base + QStringLiteral(".png"));

        QSvgGenerator svg;
        svg.setFileName(base + QStringLiteral(".svg"));
        svg.setSize(w->size());
        svg.setViewBox(QRect(QPoint(), w->size()));
        svg.setTitle(page.Caption);
        renderTo(w, &svg);

        QPdfWriter pdf(base + QStringLiteral(".pdf"));
        pdf.setPageSize(QPageSize(QSizeF(w->width(), w->height()), QPageSize::Point));
        pdf.setPageMargins(QMarginsF());
        pdf.setResolution(72);
        renderTo(w, &pdf);

        for (const char* ext : {".png", ".svg", ".pdf"})
            out << QDir::cleanPath(QDir(base + QString::fromLatin1(ext)).absolutePath()) << '\n';
        delete w;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QString exportDir;
    for (int i = 1; i < argc; ++i) {
        if (QString::fromLocal8Bit(argv[i]) == QStringLiteral("--export") && i + 1 < argc)
            exportDir = QString::fromLocal8Bit(argv[++i]);
    }
    const bool headless = qEnvironmentVariableIsEmpty("DISPLAY")
                          && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (headless && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    std::stable_sort(GalleryPages().begin(), GalleryPages().end(),
                     [](const GalleryPage& a, const GalleryPage& b) { return a.Name < b.Name; });

    if (!exportDir.isEmpty() || headless || QGuiApplication::platformName() == QStringLiteral("offscreen"))
        return exportPages(exportDir.isEmpty() ? QStringLiteral("gallery-export") : exportDir);

    QTabWidget tabs;
    tabs.setWindowTitle(QStringLiteral("VxGraph gallery"));
    for (const GalleryPage& page : GalleryPages())
        tabs.addTab(buildPage(page), page.Name);
    tabs.resize(kPageWidth + 40, kPageHeight + 60);
    tabs.show();
    return app.exec();
}
