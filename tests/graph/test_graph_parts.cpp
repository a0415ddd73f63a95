// The graph's extension point, the construction rule, and output to other devices.
#include "QyPixelProbe.h"
#include "QyTestGraph.h"
#include <QyPlaceholders.h>
#include <QyPointSeries.h>
#include <QyRegisters.h>
#include <QyUndoStack.h>
#include <QBuffer>
#include <QPainter>
#include <gtest/gtest.h>

namespace {
// A kind of part the graph has never heard of: fills a 10x10 square at its origin in each pass.
class TQyProbePart : public QWidget, public IQyGraphPart {
  Q_OBJECT
  Q_INTERFACES(IQyGraphPart)
public:
  using QWidget::QWidget;
  TQyPaintPasses Passes = QyPass(TQyPaintPass::Legends) | QyPass(TQyPaintPass::Overlays);
  std::vector<TQyPaintPass> Painted;
  QList<TQyGraphChange> Changes;
  TQyUndoRecorder* Stack = nullptr;
  QRectF PlacedIn;
  float Margin = 50;
  QPointF Depth; // none when null

  TQyPaintPasses PaintPasses() const override { return Passes; }
  void PaintPass(TQyPaintPass pass, QPainter* g) override {
    Painted.push_back(pass);
    g->fillRect(QRectF(0, 0, 10, 10), Qt::magenta);
  }
  void TakeMargins(TQyLayoutMargins& m, QSizeF) override { m.Left += Margin; }
  void PlaceInLayout(const QRectF& dataArea) override { PlacedIn = dataArea; }
  void SetUndoStack(TQyUndoRecorder* stack) override { Stack = stack; }
  bool GraphDepth(float& x, float& y) override {
    x = Depth.x(), y = Depth.y();
    return !Depth.isNull();
  }
  void GraphChanged(TQyGraphChange change) override { Changes << change; }
};

class TQyCountingSeries : public TQyPointSeries {
  Q_OBJECT
public:
  using TQyPointSeries::TQyPointSeries;
  void RegisterVariables() override {
    TQyPointSeries::RegisterVariables();
    RegisterDoubleVariable(this, "Answer", "", [] { return 42.0; });
  }
};
} // namespace

TEST(GraphParts, NewKindPaintsInItsPassesTakesMarginsAndHearsTheGraph) {
  QyTestGraph f;
  f.Render();
  const float plainLeft = f.graph->DataArea().x();
  auto* part = new TQyProbePart(f.graph);
  part->setGeometry(100, 50, 20, 20);
  part->show();
  const QImage img = f.Render();
  EXPECT_FLOAT_EQ(f.graph->DataArea().x(), plainLeft + 50);
  EXPECT_EQ(part->PlacedIn, f.graph->DataArea());
  EXPECT_EQ(part->Painted, (std::vector<TQyPaintPass>{TQyPaintPass::Legends, TQyPaintPass::Overlays}));
  // Painted translated to its own place, above the axes and series.
  EXPECT_EQ(QyProbe::Count(img, QRect(100, 50, 10, 10), Qt::magenta), 100);
  EXPECT_EQ(QyProbe::Count(img, QRect(110, 60, 10, 10), Qt::magenta), 0);

  TQyUndoStack stack;
  f.graph->SetUndoStack(&stack);
  EXPECT_EQ(part->Stack, &stack);
  part->Changes.clear();
  f.graph->LegendsModified();
  f.graph->SeriesModified();
  EXPECT_EQ(part->Changes, (QList<TQyGraphChange>{TQyGraphChange::Legends, TQyGraphChange::Series}));

  // An invisible part neither paints nor takes room; a part on another parent paints itself.
  part->hide();
  part->Painted.clear();
  f.graph->Modified();
  f.Render();
  EXPECT_TRUE(part->Painted.empty());
  QWidget elsewhere;
  auto* foreign = new TQyProbePart(&elsewhere);
  f.graph->RegisterPart(foreign);
  EXPECT_EQ(foreign->Stack, &stack);
  f.graph->Modified();
  f.Render();
  EXPECT_TRUE(foreign->Painted.empty());
  EXPECT_FLOAT_EQ(f.graph->DataArea().x(), plainLeft + 50); // its margin counts
  f.graph->UnregisterPart(foreign);
  f.graph->Modified();
  f.Render();
  EXPECT_FLOAT_EQ(f.graph->DataArea().x(), plainLeft);
}

TEST(GraphParts, SeriesDrawLinesBelowAndSymbolsAboveTheAxes) {
  QyTestGraph f;
  TQyLineSeries* s = f.AddSeries({0, 1, 2}, {0, 1, 2});
  auto* probe = new TQyProbePart(f.graph);
  probe->Passes = QyPass(TQyPaintPass::Axes);
  probe->Margin = 0;
  probe->show();
  const TQyPaintPasses passes = s->PaintPasses();
  EXPECT_TRUE(QyPaintsIn(passes, TQyPaintPass::SeriesLines));
  EXPECT_TRUE(QyPaintsIn(passes, TQyPaintPass::SeriesSymbols));
  EXPECT_LT(int(TQyPaintPass::SeriesLines), int(TQyPaintPass::Axes));
  EXPECT_LT(int(TQyPaintPass::Axes), int(TQyPaintPass::SeriesSymbols));
  f.Render();
  EXPECT_EQ(probe->Painted.size(), 1u);
}

TEST(GraphParts, APartWithDepthMakesTheDataAreaABox) {
  QyTestGraph f;
  f.graph->SetDataAreaColor(0xFFC0C0FFu);
  auto* bars = new TQyProbePart(f.graph);
  bars->Passes = {};
  bars->Margin = 0;
  bars->Depth = QPointF(21, 12); // 20 pixels to the right, 12 up
  bars->show();
  const QImage img = f.Render();
  const QRectF a = f.graph->DataArea();
  auto lightness = [&](double x, double y) { return QColor(QyProbe::At(img, int(x), int(y))).lightness(); };
  const int back = lightness(a.center().x() + 20, a.top() - 6);   // above the data area: back wall
  const int left = lightness(a.left() + 5, a.center().y());        // left wall
  const int floor = lightness(a.center().x(), a.bottom() - 4);     // floor
  EXPECT_EQ(QyProbe::At(img, int(a.center().x() + 20), int(a.top() - 6)), 0xFFC0C0FFu);
  EXPECT_LT(left, back); // walls are darker than the back wall: 0.85 and 0.75 of its brightness
  EXPECT_LT(floor, left);
  // Without depth the area above the data area is background.
  bars->Depth = QPointF();
  f.graph->update();
  const QImage flat = f.Render();
  EXPECT_NE(QyProbe::At(flat, int(a.center().x() + 20), int(a.top() - 6)), 0xFFC0C0FFu);
}

TEST(Construction, SecondPhaseRunsForTheMostDerivedClass) {
  QWidget form;
  form.setObjectName("Form1");
  auto* point = new TQyPointSeries(&form);
  EXPECT_EQ(point->GetCaption(), "TQyPointSeries");
  auto* counting = new TQyCountingSeries(&form);
  counting->setObjectName("S1");
  // The override published its value before anybody looked the name up.
  EXPECT_EQ(ParseVariables("<%Form1.S1.Answer%>", nullptr), "42");
  auto* made = QyCreate<TQyCountingSeries>(&form);
  EXPECT_TRUE(made->Initialized());
  EXPECT_EQ(made->GetCaption(), "TQyCountingSeries");
  // A caption given before the second phase is kept.
  auto* named = new TQyLineSeries(&form);
  named->SetCaption("Mine");
  QyCompleteConstruction();
  EXPECT_EQ(named->GetCaption(), "Mine");
  delete new TQyLineSeries(&form); // destroyed before its second phase: nothing left pending
  QyCompleteConstruction();
}

namespace {
// The data-area frame in green: its left edge in an image is where the layout put the data area.
QyTestGraph FramedGraph() {
  QyTestGraph f;
  f.AddSeries({0, 1, 2}, {0, 1, 2}, 0xFF0000FFu);
  f.graph->GetDataAreaFrame()->SetVisible(true);
  f.graph->GetDataAreaFrame()->SetColor(0xFF00FF00u);
  return f;
}
} // namespace

TEST(Output, AnotherSizeOrDeviceLeavesTheControlAsItWas) {
  QyTestGraph f = FramedGraph();
  const QImage before = f.Render();
  const QRectF area = f.graph->DataArea();
  const QRect xPlace = f.X()->geometry(), yPlace = f.Y()->geometry();

  const QImage big = f.graph->RenderToImage(QSize(1200, 800), false);
  const QRect frame = QyProbe::BoundsOf(big, Qt::green);
  EXPECT_NEAR(frame.right(), 1200 - (600 - area.right()), 2); // laid out for 1200 x 800
  EXPECT_GT(frame.bottom(), 700);

  QBuffer svg, pdf;
  svg.open(QIODevice::WriteOnly);
  pdf.open(QIODevice::WriteOnly);
  f.graph->RenderToSvg(&svg);
  f.graph->RenderToPdf(&pdf, QSize(300, 200));
  EXPECT_TRUE(svg.data().contains("X-Axis"));
  EXPECT_TRUE(pdf.data().startsWith("%PDF"));

  EXPECT_EQ(f.graph->size(), QSize(600, 400));
  EXPECT_EQ(f.X()->geometry(), xPlace);
  EXPECT_EQ(f.Y()->geometry(), yPlace);
  EXPECT_EQ(f.graph->DataArea(), area);
  EXPECT_EQ(QyProbe::Differences(f.Render(), before), 0);
}

TEST(Output, TextIsMeasuredForTheTargetResolution) {
  QyTestGraph f = FramedGraph();
  const QRect plain = QyProbe::BoundsOf(f.Render(), Qt::green);
  // At twice the resolution text is twice as large in pixels (even under a scaled painter): the
  // Y axis' labels and caption need more room and the data area starts further right (the
  // ticks and distances stay as they are).
  for (qreal scale : {1.0, 2.0}) {
    QImage dense(1200, 800, QImage::Format_ARGB32_Premultiplied);
    dense.setDotsPerMeterX(int(2 * 96 / 0.0254));
    dense.setDotsPerMeterY(int(2 * 96 / 0.0254));
    dense.fill(Qt::white);
    {
      QPainter p(&dense);
      p.scale(scale, scale);
      f.graph->PaintTo(&p, QSize(1200, 800) / scale);
    }
    const QRect frame = QyProbe::BoundsOf(dense, Qt::green, 130);
    EXPECT_GT(frame.left() / scale, plain.left() + 30) << scale;
  }
}

#include "test_graph_parts.moc"
