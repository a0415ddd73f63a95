#pragma once
// The gallery's registry: every page registers a builder that makes its live widget.
#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

struct QyGalleryPage {
  QString name;  // file name of the rendered picture
  QString title; // tab title
  std::function<QWidget*()> build;
  QSize size{800, 500};
  int settleMs = 0; // live pages run this long before they are rendered
  QString hint;     // one line: what to try with the mouse
};

std::vector<QyGalleryPage>& QyGalleryPages();

struct QyGalleryRegistrar {
  explicit QyGalleryRegistrar(QyGalleryPage page) { QyGalleryPages().push_back(std::move(page)); }
};

#define QY_GALLERY_PAGE(id, ...) static QyGalleryRegistrar qyGallery_##id(QyGalleryPage{__VA_ARGS__})
