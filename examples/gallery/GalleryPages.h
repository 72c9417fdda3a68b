#pragma once
// The gallery's page registry: each page is a caption and a factory that builds the
// widget showing one feature. Pages register themselves from their own source files.

#include <QString>
#include <functional>
#include <vector>

class QWidget;

struct GalleryPage {
    QString Name;     // file-name friendly identifier, e.g. "linear-axes"
    QString Caption;  // one sentence saying what the page shows
    std::function<QWidget*()> Create;
    // Called in export mode before the page is rendered (e.g. to feed live data).
    std::function<void(QWidget*)> PrepareExport;
};

std::vector<GalleryPage>& GalleryPages();

// Registers a page at static-initialisation time: static GalleryRegistrar r{{...}};
struct GalleryRegistrar {
    explicit GalleryRegistrar(GalleryPage page);
};
