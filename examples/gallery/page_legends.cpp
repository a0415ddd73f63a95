// Legends: one graph for each place on a side of the graph, where the layout makes room for the
// legend, and one free legend with a caption, shadow and rounded corners that the mouse moves.
#include "QyGallery.h"
#include <QGridLayout>
#include <QLabel>
#include <QMetaEnum>
#include <QVBoxLayout>
#include <QyGraph2D.h>
#include <QyLegend.h>
#include <QyPointSeries.h>
#include <QyVectors.h>
#include <cmath>

namespace {
TQyDoubleVector* Values(TQyGraph2D* g, int n, const std::function<double(int)>& f) {
  auto* v = new TQyDoubleVector(g);
  for (int i = 0; i < n; ++i) v->Add(f(i));
  return v;
}

// A small graph with a line, an area and a point series, and its legend at `position`.
TQyGraph2D* LegendGraph(TQyLegendPosition position) {
  auto* g = new TQyGraph2D;
  g->SetBackColor(0xFFFFFFFF);
  g->SetCaption(QMetaEnum::fromType<TQyLegendPosition>().valueToKey(int(position)));
  g->SetCaptionVisible(true);
  g->GetCaptionFont()->SetSize(9);
  g->SetDistanceBorderAxisRight(6);
  g->SetDistanceBorderAxisTop(2);
  g->TestPrimaryAxis();
  g->GetPrimaryXAxis()->SetCaptionVisible(false);
  g->GetPrimaryYAxis()->SetCaptionVisible(false);
  auto* x = Values(g, 40, [](int i) { return i * 0.25; });
  auto join = [&](TQySeries* s, const QString& caption, const std::function<double(int)>& f) {
    s->SetCaption(caption);
    s->SetXData(x);
    s->SetYData(Values(g, 40, f));
    s->SetXAxis(g->GetPrimaryXAxis());
    s->SetYAxis(g->GetPrimaryYAxis());
  };
  auto* wave = new TQyLineSeries(g);
  join(wave, "sin x", [](int i) { return 2 + std::sin(i * 0.25); });
  wave->GetLine()->SetColor(0xFF1F77B4);
  wave->GetLine()->SetWidth(2);
  auto* area = new TQyLineSeries(g);
  join(area, "area", [](int i) { return 0.5 + 0.3 * std::cos(i * 0.2); });
  area->GetLine()->SetColor(0xFF2CA02C);
  area->GetArea()->SetVisible(true);
  area->GetArea()->SetForeColor(0x802CA02C);
  auto* points = new TQyPointSeries(g);
  join(points, "p\\-i\\- \\b(bold)", [](int i) { return 3.5 - i * 0.02; });
  points->GetLine()->SetVisible(false);

  auto* legend = new TQyLegend(g);
  legend->SetBackColor(0xFFFAFAF0);
  legend->SetItemWidth(30);
  legend->SetDistanceToBorder(5);
  legend->SetPosition(position);
  return g;
}

// The free legend: captioned, shadowed, rounded, in two columns; drag it with the left button.
TQyGraph2D* FreeLegendGraph() {
  TQyGraph2D* g = LegendGraph(TQyLegendPosition::FreeFloating);
  g->SetCaption("FreeFloating: drag the legend");
  auto* legend = g->findChild<TQyLegend*>();
  legend->SetCaption("Free \\c[A=255, R=200, G=30, B=30]legend");
  legend->SetCaptionVisible(true);
  legend->SetDropShadow(true);
  legend->SetCornerRounding(8);
  legend->SetColumns(2);
  legend->GetFrame()->SetColor(0xFF606060);
  legend->GetBackgroundGradient()->SetVisible(true);
  legend->GetBackgroundGradient()->SetFirstColor(0xFFFFFFFF);
  legend->GetBackgroundGradient()->SetLastColor(0xFFDDE8F5);
  legend->GetBackgroundGradient()->SetLinearAngle(90);
  legend->move(60, 40);
  return g;
}

QWidget* BuildLegends() {
  auto* page = new QWidget;
  page->setStyleSheet("background: white;");
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(4, 4, 4, 4);
  column->addWidget(new QLabel("Drag the free legend (bottom right) with the left mouse button; it stays inside its graph."));
  auto* grid = new QGridLayout;
  grid->setSpacing(4);
  column->addLayout(grid, 1);
  for (int p = 0; p < int(TQyLegendPosition::FreeFloating); ++p)
    grid->addWidget(LegendGraph(TQyLegendPosition(p)), p / 4, p % 4);
  grid->addWidget(FreeLegendGraph(), 2, 2, 1, 2);
  return page;
}
} // namespace

QY_GALLERY_PAGE(legends, "08-legends", "Legends", BuildLegends, QSize(1400, 900));
