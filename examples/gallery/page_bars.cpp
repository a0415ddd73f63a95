// Bars: flat, cuboid and cylinder bars, side by side and stacked, vertical and horizontal, with
// negative values and labels at every position.
#include "QyGallery.h"
#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <QyBars.h>
#include <QyGraph2D.h>
#include <QyVectors.h>
#include <cmath>

namespace {
const TQyColor Palette[] = {0xFF1F77B4, 0xFFFF7F0E, 0xFF2CA02C, 0xFFD62728, 0xFF9467BD};

TQyGraph2D* NewGraph(const QString& caption) {
  TQyGraph2D* g = QyGallerySeriesGraph(caption);
  g->setMouseTracking(true);
  return g;
}

TQyDoubleVector* Values(TQyGraph2D* g, std::initializer_list<double> values) {
  auto* v = new TQyDoubleVector(g);
  for (double x : values) v->Add(x);
  return v;
}

// A bar series over the classes 0, 1, 2, ... (no class vector) in the palette's colour `k`.
TQyBars* AddBars(TQyGraph2D* g, std::initializer_list<double> values, int k, const QString& caption,
                 TQyBarLabelPosition position = TQyBarLabelPosition::Invisible) {
  auto* b = new TQyBars(g);
  b->setObjectName(QString("Bars%1").arg(k));
  b->SetCaption(caption);
  b->SetYData(Values(g, values));
  b->SetXAxis(g->GetPrimaryXAxis());
  b->SetYAxis(g->GetPrimaryYAxis());
  b->GetArea()->SetForeColor(Palette[k % 5]);
  b->GetLine()->SetColor(Brighten(Palette[k % 5], 0.6f));
  b->GetFont()->SetColor(Qt::black);
  b->SetLabelSize(14);
  b->SetLabelPosition(position);
  return b;
}

TQyGraph2D* FlatShifted() {
  TQyGraph2D* g = NewGraph("Flat, shifted: labels on top of the bars");
  AddBars(g, {4, 7, 5, 8}, 0, "2022", TQyBarLabelPosition::OnTopOfBar);
  AddBars(g, {5, 6, 7, 9}, 1, "2023", TQyBarLabelPosition::OnTopOfBar);
  AddBars(g, {3, 8, 6, 10}, 2, "2024", TQyBarLabelPosition::OnTopOfBar)->SetClassesDistance(20);
  return g;
}

TQyGraph2D* FlatStacked() {
  TQyGraph2D* g = NewGraph("Flat, stacked: centred percent, captions in the top");
  TQyBars* a = AddBars(g, {4, 3, 5, 2, 6}, 0, "base", TQyBarLabelPosition::Centered);
  a->SetLabelFrom(TQyLabelStyle::Percent);
  TQyBars* b = AddBars(g, {2, 4, 1, 3, 2}, 1, "middle", TQyBarLabelPosition::Centered);
  b->SetLabelFrom(TQyLabelStyle::Value);
  TQyBars* c = AddBars(g, {3, 2, 4, 5, 3}, 2, "top", TQyBarLabelPosition::InTop);
  c->SetCaptions({"Mon", "Tue", "Wed", "Thu", "Fri"});
  c->SetLabelFrom(TQyLabelStyle::CaptionsList);
  a->SetOverlayStyle(TQyBarsOverlayStyle::Stack); // shared: every bar series of the graph
  a->SetClassesDistance(30);
  return g;
}

TQyGraph2D* CuboidsNegative() {
  TQyGraph2D* g = NewGraph("Cuboids with negative values: labels in the top");
  AddBars(g, {3, -2, 5, -4, 2}, 0, "gain", TQyBarLabelPosition::InTop);
  AddBars(g, {-1, 3, -2, 2, 4}, 3, "loss", TQyBarLabelPosition::InTop)->SetBarStyle(TQyBarStyle::Cuboid);
  g->GetMajorGridVertical()->SetVisible(true);
  return g;
}

TQyGraph2D* Cylinders() {
  TQyGraph2D* g = NewGraph("Cylinders: labels at the golden cut, value and caption");
  TQyBars* b = AddBars(g, {6, 9, 4, 7}, 4, "sales", TQyBarLabelPosition::GoldenCut);
  b->SetBarStyle(TQyBarStyle::Cylinder);
  b->SetClassesDistance(30);
  b->SetCaptions({"north", "east", "south", "west"});
  b->SetLabelFrom(TQyLabelStyle::CaptionAndValue);
  b->SetLabelVertical(true);
  return g;
}

TQyGraph2D* HorizontalStacked() {
  TQyGraph2D* g = NewGraph("Horizontal cuboids, stacked: share of each series");
  TQyBars* a = AddBars(g, {5, 3, 6, 4}, 0, "A", TQyBarLabelPosition::Centered);
  a->SetLabelFrom(TQyLabelStyle::Percent);
  TQyBars* b = AddBars(g, {2, 4, 3, 5}, 2, "B", TQyBarLabelPosition::OnTopOfBar);
  b->SetLabelFrom(TQyLabelStyle::CaptionAndPercent);
  b->SetCaptions({"B", "B", "B", "B"});
  a->SetOverlayStyle(TQyBarsOverlayStyle::Stack);
  a->SetBarStyle(TQyBarStyle::Cuboid);
  a->SetClassesDistance(35);
  a->SetBarsHorizontal(true);
  return g;
}

TQyGraph2D* HorizontalPositions() {
  TQyGraph2D* g = NewGraph("Horizontal, shifted: on the bottom, three fourth");
  AddBars(g, {7, -5, 9}, 1, "bottom", TQyBarLabelPosition::OnBottom);
  AddBars(g, {8, -6, 6}, 3, "3/4", TQyBarLabelPosition::ThreeFourth)->SetLabelFormat("0.0");
  g->RelatedSeries().first()->setProperty("BarsHorizontal", true);
  return g;
}

// Names the bar under the mouse in `status`.
class BarPicker : public QObject {
public:
  BarPicker(QLabel* status, QObject* parent) : QObject(parent), FStatus(status) {}
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::MouseMove) return false;
    auto* g = static_cast<TQyGraph2D*>(watched);
    const QPointF at = static_cast<QMouseEvent*>(event)->position();
    for (TQySeries* s : g->RelatedSeries())
      if (auto* b = qobject_cast<TQyBars*>(s)) {
        const int i = b->FindPoint(at.x(), at.y());
        if (i < 0) continue;
        const double v = b->GetBarsHorizontal() ? b->GetXData()->GetValue(i) : b->GetYData()->GetValue(i);
        FStatus->setText(QString("%1, class %2: %3").arg(b->GetCaption()).arg(i).arg(v));
        return false;
      }
    FStatus->setText("Move the mouse over a bar to see its series, class and value.");
    return false;
  }

private:
  QLabel* FStatus;
};

QWidget* BuildBars() {
  auto* page = new QWidget;
  page->setStyleSheet("background: white;");
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(4, 4, 4, 4);
  auto* status = new QLabel("Move the mouse over a bar to see its series, class and value.");
  column->addWidget(status);
  auto* grid = new QGridLayout;
  grid->setSpacing(4);
  column->addLayout(grid, 1);
  auto* picker = new BarPicker(status, page);
  TQyGraph2D* graphs[] = {FlatShifted(), FlatStacked(), CuboidsNegative(), Cylinders(), HorizontalStacked(),
                          HorizontalPositions()};
  for (int k = 0; k < 6; ++k) {
    graphs[k]->installEventFilter(picker);
    grid->addWidget(graphs[k], k / 2, k % 2);
  }
  return page;
}
} // namespace

QY_GALLERY_PAGE(bars, "09-bars", "Bars", BuildBars, QSize(1200, 1200));
