// Line, point and error-bar series: dash styles and widths, areas and bands, every symbol,
// error bars, outliers shown and hidden, and the second look of points outside a range.
#include "QyGallery.h"
#include <QGridLayout>
#include <QyGraph2D.h>
#include <QyPointSeries.h>
#include <QyVectors.h>
#include <cmath>

namespace {
TQyGraph2D* NewGraph(const QString& caption) { return QyGallerySeriesGraph(caption); }

TQyDoubleVector* Values(TQyGraph2D* g, int n, const std::function<double(int)>& f) {
  auto* v = new TQyDoubleVector(g);
  for (int i = 0; i < n; ++i) v->Add(f(i));
  return v;
}

template <class S = TQyLineSeries>
S* Join(TQyGraph2D* g, TQyCustomDoubleVector* x, TQyCustomDoubleVector* y, const QString& caption) {
  auto* s = new S(g);
  s->SetCaption(caption);
  s->SetXData(x);
  s->SetYData(y);
  s->SetXAxis(g->GetPrimaryXAxis());
  s->SetYAxis(g->GetPrimaryYAxis());
  return s;
}

void FixAxis(TQyAxis* a, double start, double stop) {
  a->SetStartEnd(TQyAxisEnd::Fixed);
  a->SetStopEnd(TQyAxisEnd::Fixed);
  a->SetStart(start);
  a->SetStop(stop);
}

// Five dash styles, each at widths 1, 2 and 4.
TQyGraph2D* DashStyles() {
  TQyGraph2D* g = NewGraph("Dash styles at widths 1, 2, 4");
  const QyGDI::TDashStyle styles[] = {QyGDI::TDashStyle::DashStyleSolid, QyGDI::TDashStyle::DashStyleDash,
                                      QyGDI::TDashStyle::DashStyleDot, QyGDI::TDashStyle::DashStyleDashDot,
                                      QyGDI::TDashStyle::DashStyleDashDotDot};
  const TQyColor colors[] = {0xFF1F77B4, 0xFFD62728, 0xFF2CA02C, 0xFF9467BD, 0xFFFF7F0E};
  auto* x = Values(g, 121, [](int i) { return i * 0.1; });
  int row = 0;
  for (int k = 0; k < 5; ++k)
    for (float w : {1.0f, 2.0f, 4.0f}) {
      const double base = 14 - row++;
      TQyLineSeries* s = Join(g, x, Values(g, 121, [base](int i) { return base + 0.3 * std::sin(i * 0.1); }),
                              QString("style %1 width %2").arg(k).arg(w));
      s->GetLine()->SetDashStyle(styles[k]);
      s->GetLine()->SetWidth(w);
      s->GetLine()->SetColor(colors[k]);
    }
  FixAxis(g->GetPrimaryYAxis(), -0.5, 15.5);
  return g;
}

// An area to the baseline with a hatch, and a translucent band between two curves.
TQyGraph2D* AreasAndBands() {
  TQyGraph2D* g = NewGraph("Area to zero (hatched) and a band between two curves");
  auto* x = Values(g, 201, [](int i) { return i * 0.05; });
  TQyLineSeries* area = Join(g, x, Values(g, 201, [](int i) { return 1.5 * std::sin(i * 0.05) - 0.3; }), "area");
  area->GetLine()->SetColor(0xFF1F77B4);
  area->GetLine()->SetWidth(2);
  area->GetArea()->SetVisible(true);
  area->GetArea()->SetAreaStyle(TQyAreaStyle::ForwardDiagonal);
  area->GetArea()->SetForeColor(0xFF1F77B4);
  area->GetArea()->SetBackColor(0x201F77B4);
  TQyLineSeries* upper = Join(g, x, Values(g, 201, [](int i) { return 3.5 + 0.6 * std::cos(i * 0.08); }), "upper");
  TQyLineSeries* lower = Join(g, x, Values(g, 201, [](int i) { return 2.3 + 0.4 * std::sin(i * 0.12); }), "lower");
  for (TQyLineSeries* s : {upper, lower}) s->GetLine()->SetColor(0xFFD62728);
  upper->GetArea()->SetVisible(true);
  upper->GetArea()->SetForeColor(0x60FF7F0E);
  upper->SetDrawBandTo(lower);
  return g;
}

// Every symbol, one row each, and translucent symbols that a thick line does not cross.
TQyGraph2D* Symbols() {
  TQyGraph2D* g = NewGraph("All symbols; translucent fills keep the line out");
  auto* x = Values(g, 8, [](int i) { return i + 1.0; });
  for (int k = 0; k < 10; ++k) {
    auto* s = Join<TQyPointSeries>(g, x, Values(g, 8, [k](int) { return 10.0 - k; }), QString("symbol %1").arg(k));
    s->GetLine()->SetVisible(false);
    s->PointSymbol()->SetPointSymbol(TQyPointSymbol(k));
    s->PointSymbol()->SetSize(7 + (k % 3) * 3);
  }
  auto* see = Join<TQyPointSeries>(g, Values(g, 4, [](int i) { return 9.5 + i * 0.8; }),
                                   Values(g, 4, [](int i) { return 2.0 + i * 2.5; }), "translucent");
  see->GetLine()->SetWidth(3);
  see->GetLine()->SetColor(0xFF000000);
  see->PointSymbol()->SetPointSymbol(TQyPointSymbol::Circle);
  see->PointSymbol()->SetSize(24);
  see->PointSymbol()->SetFillColor(0x4000A000);
  see->PointSymbol()->SetBorderColor(0xFF006000);
  see->PointSymbol()->SetBorderLineWidth(2);
  FixAxis(g->GetPrimaryXAxis(), 0, 13);
  FixAxis(g->GetPrimaryYAxis(), 0, 11);
  return g;
}

// Error bars in X and Y; outliers hidden in one copy and shown in the other; points outside the
// range of a fitted curve in their own look.
TQyGraph2D* ErrorsAndOutliers() {
  TQyGraph2D* g = NewGraph("Error bars; outliers hidden (blue) and shown (red); out-of-range look");
  const int n = 12;
  auto* x = Values(g, n, [](int i) { return i + 1.0; });
  auto* y = Values(g, n, [](int i) { return 2 + 0.5 * i + std::sin(i * 1.3); });
  y->SetValue(6, 12); // a wild value
  y->AddOutlier(6);
  auto* e = Join<TQyPointWithErrorSeries>(g, x, y, "outliers hidden");
  e->SetDeltaYPlus(Values(g, n, [](int i) { return 0.4 + 0.1 * (i % 4); }));
  e->SetDeltaYMinus(Values(g, n, [](int i) { return 0.3 + 0.15 * (i % 3); }));
  e->SetDeltaXPlus(Values(g, n, [](int) { return 0.25; }));
  e->SetDeltaXMinus(Values(g, n, [](int) { return -0.25; })); // drawn as a magnitude
  e->GetLine()->SetColor(0xFF1F77B4);
  e->GetErrorIndicator()->SetColor(0xFF404040);
  e->PointSymbol()->SetPointSymbol(TQyPointSymbol::Circle);
  e->PointSymbol()->SetFillColor(0xFF9ECAE9);
  e->PointSymbol()->SetBorderColor(0xFF1F77B4);

  auto* shifted = Values(g, n, [y](int i) { return y->GetValue(i) - 3; });
  shifted->AddOutlier(6);
  auto* shown = Join<TQyPointSeries>(g, x, shifted, "outliers shown");
  shown->SetOutliersVisible(true);
  shown->GetLine()->SetColor(0xFFD62728);
  shown->PointSymbol()->SetPointSymbol(TQyPointSymbol::Diamond);
  shown->PointSymbol()->SetFillColor(0xFFF4A6A6);
  shown->PointSymbol()->SetBorderColor(0xFFD62728);

  // The range of a curve fitted over x = 3 .. 9: points beyond it look grey.
  auto* fit = Join(g, Values(g, 2, [](int i) { return i ? 9.0 : 3.0; }), Values(g, 2, [](int i) { return i ? 6.5 : 3.5; }),
                   "fitted range");
  fit->GetLine()->SetColor(0xFF2CA02C);
  fit->GetLine()->SetWidth(2);
  fit->GetLine()->SetDashStyle(QyGDI::TDashStyle::DashStyleDash);
  shown->SetRangeFromFunction(fit);
  return g;
}

QWidget* BuildSeries() {
  auto* page = new QWidget;
  auto* grid = QyGalleryGrid(page);
  grid->addWidget(DashStyles(), 0, 0);
  grid->addWidget(AreasAndBands(), 0, 1);
  grid->addWidget(Symbols(), 1, 0);
  grid->addWidget(ErrorsAndOutliers(), 1, 1);
  return page;
}
} // namespace

QY_GALLERY_PAGE(series, "03-series", "Series", BuildSeries, QSize(1200, 900), 0,
                "Zoom into the symbols or the hatched area with a frame, Shift+drag to pan, click beside the data to go back");
