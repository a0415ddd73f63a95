#include "QyPixelProbe.h"
#include "QyRecordingDevice.h"
#include "QyTestGraph.h"
#include <QPainter>
#include <gtest/gtest.h>

TEST(Graph, EmptyGraphGetsNamedPrimaryAxesAtFirstPaint) {
  QWidget form;
  form.setObjectName("Form1");
  auto* graph = new TQyGraph2D(&form);
  graph->setObjectName("Graph1");
  EXPECT_EQ(graph->GetPrimaryXAxis(), nullptr);
  graph->resize(400, 300);
  QImage img = graph->RenderToImage();
  ASSERT_NE(graph->GetPrimaryXAxis(), nullptr);
  ASSERT_NE(graph->GetPrimaryYAxis(), nullptr);
  EXPECT_EQ((QStringList{graph->GetPrimaryXAxis()->objectName(), graph->GetPrimaryYAxis()->objectName()}),
            (QStringList{"XAxis1", "YAxis1"}));
  EXPECT_EQ(graph->GetPrimaryXAxis()->GetCaption(), "X-Axis");
  EXPECT_EQ(graph->GetPrimaryYAxis()->GetPosition(), TQyAxisPosition::Left);
  EXPECT_GT(graph->DataArea().width(), 40);
  // A second graph on the same form gets the next names.
  auto* second = new TQyGraph2D(&form);
  second->RenderToImage(QSize(200, 200));
  EXPECT_EQ(second->GetPrimaryXAxis()->objectName(), "XAxis2");
}

TEST(Graph, LayersSortStablyAndFindPrefersTheTopSeries) {
  QyTestGraph f;
  TQyLineSeries* a = f.AddSeries({0, 1}, {0, 1});
  TQyLineSeries* b = f.AddSeries({0, 1}, {0, 1});
  TQyLineSeries* c = f.AddSeries({0, 1}, {0, 1});
  a->SetLayer(5);
  b->SetLayer(5);
  c->SetLayer(0);
  f.graph->SortLayers();
  const auto& order = f.graph->RelatedSeries();
  ASSERT_EQ(order.size(), 3);
  EXPECT_EQ(std::tuple(order[0], order[1], order[2]), std::tuple(c, a, b)); // equal layers keep their order
  EXPECT_EQ(b->GetLayer(), 2);
  f.Render();
  const float px = f.X()->NumberToWorld(1), py = f.Y()->NumberToWorld(1);
  const TQyFindSeriesPointResult r = f.graph->FindSeriesPoint(px, py);
  ASSERT_TRUE(r.Found);
  EXPECT_EQ(std::tuple(r.Series, r.Index, r.Y), std::tuple(b, 1, 1.0)); // b is drawn last, on top
}

TEST(Graph, CaptionTrimsTrailingBlanksAndTakesTitleHeight) {
  QyTestGraph f;
  f.graph->SetCaptionVisible(true);
  f.Render();
  const double topWithout = f.graph->DataArea().y();
  f.graph->SetCaption("   ");
  EXPECT_EQ(f.graph->GetCaption(), "");
  f.Render();
  EXPECT_EQ(f.graph->DataArea().y(), topWithout);
  f.graph->SetCaption("Title  ");
  EXPECT_EQ(f.graph->GetCaption(), "Title");
  f.Render();
  EXPECT_GT(f.graph->DataArea().y(), topWithout + 8);
}

// The paint draws the curve through the recording device: one polyline in the line colour whose
// vertices are the pixel points, clipped only where an axis hides data.
TEST(GraphPaint, SeriesIsDrawnAsItsPointsAndFollowsAppends) {
  QyTestGraph f;
  TQyLineSeries* s = f.AddSeries({0, 1, 2, 3}, {0, 2, 1, 3}, 0xFF123456);
  QyRecordingDevice dev(600, 400);
  auto curve = [&] { // the one polyline in the line colour
    f.Paint(dev);
    const auto lines = dev.WithPenColor(QColor(0x12, 0x34, 0x56));
    EXPECT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines.at(0)->kind, QyPrimitive::Polyline);
    return lines.at(0);
  };
  const QyPrimitive* line = curve();
  ASSERT_EQ(line->points.size(), 4);
  EXPECT_FLOAT_EQ(line->points[3].x(), f.X()->NumberToWorld(3));
  EXPECT_FLOAT_EQ(line->points[3].y(), f.Y()->NumberToWorld(3));
  EXPECT_FALSE(line->clipped);
  // Axis labels were drawn as text, with the decimals of the label step (0.5).
  EXPECT_EQ(dev.WithText("3.0").size(), 2u);

  qobject_cast<TQyDoubleVector*>(s->GetXData())->Add(4);
  qobject_cast<TQyDoubleVector*>(s->GetYData())->Add(2);
  line = curve();
  ASSERT_EQ(line->points.size(), 5);
  EXPECT_FLOAT_EQ(line->points[4].x(), f.X()->NumberToWorld(4));

  QyTestGraph::Fix(f.X(), 1, 2); // now the X axis hides data on both sides
  line = curve();
  EXPECT_TRUE(line->clipped);
  const QRectF clip = line->clip.boundingRect();
  const QRectF da = f.graph->DataArea();
  EXPECT_NEAR(clip.left(), da.left(), 0.5);
  EXPECT_NEAR(clip.right(), da.left() + da.width(), 0.5);
}

// A value appended inside the rounded ends asks for no new layout; one beyond the ends does.
TEST(Graph, AppendInsideTheEndsNeedsNoLayout) {
  QyTestGraph f;
  TQyLineSeries* s = f.AddSeries({0, 1, 2, 3}, {0, 2, 1, 3.2});
  f.Render();
  TQyAxis* y = f.Y();
  const double stop = y->GetStop();
  ASSERT_GT(stop, 3.3); // rounded up beyond the data
  auto* xs = qobject_cast<TQyDoubleVector*>(s->GetXData());
  auto* ys = qobject_cast<TQyDoubleVector*>(s->GetYData());
  xs->Add(4), ys->Add(3.3);
  f.graph->TestSeriesAndAxis();
  EXPECT_FALSE(y->NeedsCalc());
  EXPECT_EQ(y->GetStop(), stop);
  xs->Add(5), ys->Add(stop * 3);
  f.graph->TestSeriesAndAxis();
  EXPECT_TRUE(y->NeedsCalc());
  EXPECT_GE(y->GetStop(), stop * 3);
}

// A series that is no line series: the graph and its axes take its extent and ask it through the
// virtuals; it draws nothing and picks nothing.
TEST(Graph, ASeriesOfNoDrawingKindStillRangesTheAxes) {
  QyTestGraph f;
  auto* s = f.Add<TQySeries>({2, 4, 6}, {1, 5, 3});
  f.Render();
  EXPECT_EQ(f.graph->RelatedSeries(), QList<TQySeries*>{s});
  EXPECT_EQ(std::tuple(f.X()->DataHullMin(), f.X()->DataHullMax()), std::tuple(2, 6));
  EXPECT_EQ(std::tuple(f.Y()->DataHullMin(), f.Y()->DataHullMax()), std::tuple(1, 5));
  EXPECT_EQ(s->PointCount(), 0);
  EXPECT_EQ(s->FindPoint(f.X()->NumberToWorld(4), f.Y()->NumberToWorld(5)), -1);
}

TEST(Graph, APassLeftOpenByAnUpdatingGraphStopsNoOtherGraph) {
  QyTestGraph a, b;
  a.AddSeries({0, 1}, {0, 1});
  b.AddSeries({0, 1}, {0, 1});
  const QImage before = b.Render();
  a.graph->BeginUpdate();
  a.X()->SetCaption("changed while updating"); // the axis lays out at its paint and leaves at once
  a.Render();
  b.graph->update();
  EXPECT_EQ(QyProbe::Differences(b.Render(), before), 0); // b still draws its axes
  a.graph->EndUpdate();
}

TEST(Graph, ChangingTheScalingTakesTheRangeAnew) {
  QyTestGraph f;
  f.AddSeries({0, 1, 2, 3}, {0.5, 3, 40, 500});
  f.Render();
  const double start = f.Y()->GetStart(), stop = f.Y()->GetStop();
  f.Y()->SetScaling(TQyAxisScaling::Log);
  f.Render();
  EXPECT_NE(f.Y()->GetStop(), stop); // a log range rounds to decades
  f.Y()->SetScaling(TQyAxisScaling::Normal);
  f.Render();
  EXPECT_DOUBLE_EQ(f.Y()->GetStart(), start);
  EXPECT_DOUBLE_EQ(f.Y()->GetStop(), stop);
}

namespace {
// A chart whose parts are freed one by one: two series on the primary axes, one with X and Y
// data, one with Y data only (its X is the indexer).
struct Teardown {
  enum Part { XAxis, YAxis, XData, YData, Series, Graph, Form, PartCount };
  QyTestGraph f{240, 160};
  TQyLineSeries* both = f.AddSeries({0, 1, 2}, {1, 3, 2});
  TQyLineSeries* yOnly = f.AddSeries({}, {2, 1, 3});
  std::array<QPointer<QObject>, PartCount> parts{f.X(), f.Y(), both->GetXData(), both->GetYData(),
                                                 both, f.graph, f.form.get()};
  Teardown() { yOnly->SetYData(both->GetYData()); } // two series on one vector

  bool Alive(Part p) const { return !parts[p].isNull(); }
  void Free(Part p) {
    if (p == Form) f.form.reset();
    else delete parts[p].data();
  }
  // A series is registered exactly while it has both axes on a living graph and a vector.
  bool Expected(TQySeries* s) const {
    const bool data = s == both ? Alive(XData) || Alive(YData) : Alive(YData);
    return Alive(XAxis) && Alive(YAxis) && Alive(Graph) && data;
  }
  void Check() const {
    QList<QPointer<TQySeries>> series{parts[Series].data() ? both : nullptr, Alive(Form) ? yOnly : nullptr};
    int registered = 0;
    for (TQySeries* s : series) {
      if (!s) continue;
      const bool expected = Expected(s);
      registered += expected;
      if (Alive(Graph)) {
        EXPECT_EQ(f.graph->RelatedSeries().contains(s), expected);
      }
      for (Part a : {XAxis, YAxis})
        if (Alive(a)) {
          EXPECT_EQ(static_cast<TQyAxis*>(parts[a].data())->Series().contains(s), expected);
        }
      if (expected) {
        EXPECT_TRUE(s->GetXData() && s->GetYData()); // the indexer stands in
      }
      for (Part v : {XData, YData})
        if (Alive(v)) {
          auto* vector = static_cast<TQyCustomDoubleVector*>(parts[v].data());
          EXPECT_EQ(vector->RelatedSeries().contains(s), s->GetXData() == vector || s->GetYData() == vector);
        }
    }
    if (Alive(Graph)) {
      EXPECT_EQ(f.graph->RelatedSeries().size(), registered);
      QImage image(f.graph->size(), QImage::Format_ARGB32_Premultiplied);
      QPainter p(&image);
      f.graph->PaintGr(&p);
    }
  }
};
} // namespace

// Freeing the parts of a chart in any order leaves no series registered without its axes or
// data, and no reference to what went: every order of freeing the axes, the vectors, the series
// and the graph (then the form), and the form first.
TEST(Lifetime, TeardownInEveryOrder) {
  using P = Teardown::Part;
  std::vector<std::vector<P>> orders{{P::Form}};
  std::vector<P> order{P::XAxis, P::YAxis, P::XData, P::YData, P::Series, P::Graph};
  do {
    orders.push_back(order);
    orders.back().push_back(P::Form);
  } while (std::next_permutation(order.begin(), order.end()));
  ASSERT_EQ(orders.size(), 721u);
  for (const auto& row : orders) {
    Teardown t;
    t.Check();
    QString trace;
    for (P p : row) {
      trace += QString::number(int(p));
      SCOPED_TRACE(trace.toStdString());
      t.Free(p);
      t.Check();
    }
  }
}

namespace {
const QColor AreaColor(0xE0, 0xF0, 0xFF), ChildCurve(0, 0, 0xFF);

// The data area as drawn (its fill) and the points of the curve drawn in `curve`.
std::pair<QRectF, QPolygonF> DrawnAreaAndCurve(TQyGraph2D* g, QColor curve) {
  QyRecordingDevice dev(g->width(), g->height());
  {
    QPainter p(&dev);
    g->PaintGr(&p);
  }
  const auto fills = dev.Select([](const QyPrimitive& p) { return p.kind == QyPrimitive::Rect && p.brush.color() == AreaColor; });
  const auto lines = dev.Select([&](const QyPrimitive& p) { return p.kind == QyPrimitive::Polyline && p.pen.color() == curve; });
  return {fills.empty() ? QRectF() : fills[0]->DeviceRect(), lines.empty() ? QPolygonF() : lines[0]->DevicePoints()};
}
} // namespace

// A child graph on the master's X axis draws into a data area with the master's left and right
// edges (the narrowest span either layout allows), whichever graph is drawn first, and its curve
// reaches from edge to edge; the Y axes keep their distance to the shared left edge.
TEST(CoupledGraphs, ShareTheLeftAndRightEdgesOfTheirDataAreas) {
  for (bool masterFirst : {true, false}) {
    SCOPED_TRACE(masterFirst ? "master first" : "child first");
    QyTestGraph m(400, 200);
    m.AddSeries({0, 10}, {0, 1});
    QyTestGraph::Fix(m.X(), 0, 10);
    auto* c = new TQyGraph2D(m.form.get());
    c->setObjectName("Graph2");
    c->resize(400, 200);
    c->SetPrimaryXAxis(m.X());
    c->TestPrimaryAxis();
    TQyLineSeries* s = m.AddSeries({0, 10}, {1e6, 3e6});
    s->SetYAxis(c->GetPrimaryYAxis());
    c->SetDistanceBorderAxisLeft(60); // the child's own left edge lies further right
    s->GetLine()->SetColor(0xFF0000FFu);
    for (TQyGraph2D* g : {m.graph, c}) g->SetDataAreaColor(0xFFE0F0FFu);

    for (TQyGraph2D* g : masterFirst ? QList{m.graph, c} : QList{c, m.graph}) g->RenderToImage(g->size(), false);
    const auto [childArea, curve] = DrawnAreaAndCurve(c, ChildCurve);
    const QRectF masterArea = DrawnAreaAndCurve(m.graph, ChildCurve).first;
    ASSERT_FALSE(childArea.isEmpty());
    EXPECT_EQ(childArea.left(), masterArea.left());
    EXPECT_EQ(childArea.width(), masterArea.width());
    ASSERT_EQ(curve.size(), 2);
    EXPECT_FLOAT_EQ(curve[0].x(), childArea.left());
    EXPECT_FLOAT_EQ(curve[1].x(), childArea.left() + childArea.width() - 1);
    auto gap = [](TQyGraph2D* g) { return g->DataArea().x() - (g->GetPrimaryYAxis()->x() + g->GetPrimaryYAxis()->OriginX()); };
    EXPECT_FLOAT_EQ(gap(c), gap(m.graph));
  }
}
