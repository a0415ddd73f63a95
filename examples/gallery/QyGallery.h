#pragma once
// The gallery's registry: every page registers a builder that makes its live widget.
#include <QGridLayout>
#include <QString>
#include <QWidget>
#include <QyGraph2D.h>
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

// A graph in the look of the series pages: white, titled, with horizontal grid lines.
inline TQyGraph2D* QyGallerySeriesGraph(const QString& caption) {
  auto* g = new TQyGraph2D;
  g->SetBackColor(0xFFFFFFFF);
  g->SetCaption(caption);
  g->SetCaptionVisible(true);
  g->SetCaptionDistanceBefore(4);
  g->SetCaptionDistanceAfter(4);
  g->SetDistanceBorderAxisRight(12);
  g->GetMajorGridHorizontal()->SetVisible(true);
  g->GetMajorGridHorizontal()->SetColor(0xFFE0E0E0);
  g->TestPrimaryAxis();
  return g;
}

// A series of class S over x, y on the graph's primary axes, its line in `color` and `width`.
template <class S>
S* QyGalleryJoin(TQyGraph2D* g, TQyCustomDoubleVector* x, TQyCustomDoubleVector* y, TQyColor color, float width = 2) {
  auto* s = new S(g);
  s->SetXData(x);
  s->SetYData(y);
  s->SetXAxis(g->GetPrimaryXAxis());
  s->SetYAxis(g->GetPrimaryYAxis());
  s->GetLine()->SetColor(color);
  s->GetLine()->SetWidth(width);
  return s;
}

// A white page that holds its graphs in a grid.
inline QGridLayout* QyGalleryGrid(QWidget* page) {
  page->setStyleSheet("background: white;");
  auto* grid = new QGridLayout(page);
  grid->setContentsMargins(4, 4, 4, 4);
  grid->setSpacing(4);
  return grid;
}
