// The legend of a graph: its place on every position and the room the layout makes for it, the
// series it lists as they come and go, the sample of each kind of series, texts as rich
// captions, dragging a free legend with the mouse, and the legend in images and vector output.
#include "QyPixelProbe.h"
#include "QyTestGraph.h"
#include <QyIO.h>
#include <QyLegend.h>
#include <QyUndoStack.h>
#include "QyRoundTrip.h"
#include <QBuffer>
#include <QTest>
#include <gtest/gtest.h>

namespace {
using P = TQyLegendPosition;

struct LegendGraph : QyTestGraph {
  TQyLegend* legend;
  LegendGraph() {
    Fix(X(), 0, 100);
    Fix(Y(), 0, 100);
    AddSeries({0, 50, 100}, {0, 40, 100})->SetCaption("A");
    AddSeries({0, 50, 100}, {10, 60, 90})->SetCaption("B");
    legend = new TQyLegend(graph);
  }
  QStringList Texts() {
    Render();
    QStringList out;
    for (int i = 0; i < legend->ItemCaptions().Count(); ++i) out << legend->ItemCaptions()[i]->PlainText();
    return out;
  }
  // Paints the legend alone into the emptied device.
  void PaintLegend(QyRecordingDevice& dev) {
    dev.Clear();
    QPainter p(&dev);
    legend->PaintGr(&p);
  }
};
} // namespace

// Placed legends lie against the graph's edge beside the axes of their side, the data area gives
// up their extent, and they centre along the side on the graph or on the data area.
TEST(LegendOnGraph, EveryPositionTakesRoomBesideItsAxes) {
  enum Side { Bottom, Left, Top, Right };
  enum Along { GraphMiddle, AreaMiddle, AreaTop };
  struct Row { P position; Side side; Along along; };
  const Row rows[] = {
      {P::BottomCenterOfGraph, Bottom, GraphMiddle}, {P::BottomCenterOfAxis, Bottom, AreaMiddle},
      {P::LeftCenterOfGraph, Left, GraphMiddle},     {P::LeftCenterOfAxis, Left, AreaMiddle},
      {P::LeftTopOfAxis, Left, AreaTop},             {P::TopCenterOfGraph, Top, GraphMiddle},
      {P::TopCenterOfAxis, Top, AreaMiddle},         {P::RightCenterOfGraph, Right, GraphMiddle},
      {P::RightCenterOfAxis, Right, AreaMiddle},     {P::RightTopOfAxis, Right, AreaTop},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(int(r.position));
    LegendGraph f;
    f.legend->SetPosition(P::FreeFloating);
    f.Render();
    const QRectF plain = f.graph->DataArea();
    f.legend->SetPosition(r.position);
    f.Render();
    const QRectF area = f.graph->DataArea();
    const QRect box = f.legend->geometry();
    const bool across = r.side == Bottom || r.side == Top;
    EXPECT_EQ(f.legend->GetItemsOrder(), across ? TQyItemsOrder::ByRow : TQyItemsOrder::ByColumn);
    switch (r.side) {
    case Bottom:
      EXPECT_EQ(box.bottom(), 399);
      EXPECT_DOUBLE_EQ(area.bottom(), plain.bottom() - box.height());
      break;
    case Top:
      EXPECT_EQ(box.top(), 0);
      EXPECT_DOUBLE_EQ(area.top(), plain.top() + box.height());
      break;
    case Left:
      EXPECT_EQ(box.left(), 0);
      EXPECT_DOUBLE_EQ(area.left(), plain.left() + box.width());
      break;
    case Right:
      EXPECT_EQ(box.right(), 599);
      EXPECT_DOUBLE_EQ(area.right(), plain.right() - box.width());
      break;
    }
    // Only the data area gives way: the axis bands between it and the legend keep their size.
    EXPECT_DOUBLE_EQ(across ? area.width() : area.height(), across ? plain.width() : plain.height());
    const int w = box.width(), h = box.height();
    const int expected = r.along == GraphMiddle ? (across ? (600 - w) / 2 : (400 - h) / 2)
                         : r.along == AreaTop   ? int(std::nearbyint(area.y()))
                         : across ? int(std::nearbyint(area.x())) + int(std::nearbyint(area.width() - w)) / 2
                                  : int(std::nearbyint((area.height() - h) / 2 + area.y()));
    EXPECT_EQ(across ? box.x() : box.y(), expected);
  }
}

// Two legends on one side lie over one another; the margin is the larger of them, not the sum.
TEST(LegendOnGraph, LegendsOnOneSideShareTheMargin) {
  LegendGraph f;
  f.legend->SetPosition(P::FreeFloating);
  f.Render();
  const QRectF plain = f.graph->DataArea();
  auto* second = new TQyLegend(f.graph);
  second->SetCaption("Second legend\rwith two lines");
  second->SetCaptionVisible(true);
  for (TQyLegend* l : {f.legend, second}) l->SetPosition(P::BottomCenterOfGraph);
  f.Render();
  const int tallest = std::max(f.legend->height(), second->height());
  EXPECT_GT(second->height(), f.legend->height());
  EXPECT_DOUBLE_EQ(f.graph->DataArea().height(), plain.height() - tallest);
  EXPECT_EQ(f.legend->geometry().bottom(), 399);
  EXPECT_EQ(second->geometry().bottom(), 399);
}

// Series added, removed, hidden, renamed or re-layered show in the legend at the next picture.
TEST(LegendOnGraph, ItemsFollowTheSeriesAtTheNextPicture) {
  LegendGraph f;
  EXPECT_EQ(f.Texts(), QStringList({"A", "B"}));
  TQyLineSeries* c = f.AddSeries({0, 100}, {5, 5});
  c->SetCaption("C");
  EXPECT_EQ(f.Texts(), QStringList({"A", "B", "C"}));
  f.graph->RelatedSeries()[1]->SetVisible(false);
  EXPECT_EQ(f.Texts(), QStringList({"A", "C"}));
  c->SetCaption("Cee");
  f.graph->RelatedSeries()[0]->SetLayer(9);
  EXPECT_EQ(f.Texts(), QStringList({"Cee", "A"}));
  delete c;
  EXPECT_EQ(f.Texts(), QStringList({"A"}));
  // A hidden series that a shown one merges its item into stays listed.
  auto named = [&](const QString& caption) {
    for (TQySeries* s : f.graph->RelatedSeries())
      if (s->GetCaption() == caption) return s;
    return static_cast<TQySeries*>(nullptr);
  };
  TQySeries* b = named("B");
  named("A")->SetMergeLegendItemWith(b);
  EXPECT_EQ(f.Texts(), QStringList({"B", "A"})); // B stands first since A was re-layered
  // The order list comes first.
  f.legend->SetItemsOrderList({GetComponentRef(named("A"))});
  EXPECT_EQ(f.Texts(), QStringList({"A", "B"}));
}

// Texts are rich captions: mark-up is read, placeholders stay live, the caption handler has the
// last word, and text colours may come from the series.
TEST(LegendOnGraph, ItemTextsAreRichCaptions) {
  LegendGraph f;
  TQySeries* a = f.graph->RelatedSeries()[0];
  TQySeries* b = f.graph->RelatedSeries()[1];
  a->SetCaption("H\\-2\\-O");
  b->SetCaption("in <%Form1.Graph1.Caption%>");
  f.graph->SetCaption("air");
  EXPECT_EQ(f.Texts(), QStringList({"H2O", "in air"}));
  f.graph->SetCaption("water");
  EXPECT_EQ(f.Texts(), QStringList({"H2O", "in water"}));

  f.legend->OnGetLegendItemCaption = [&](QObject* item, TQyLegendItemCaptionEventArgs& args) {
    if (item == b) args.Caption = QString("#%1").arg(args.Index);
  };
  f.legend->SetLegendCaptionColorFrom(TQyLegendCaptionColorFrom::SeriesLineColor);
  f.legend->Modified();
  EXPECT_EQ(f.Texts(), QStringList({"H2O", "#1"}));
  QyRecordingDevice dev;
  f.PaintLegend(dev);
  EXPECT_EQ(f.legend->ItemCaptions()[1]->FillColorOverride, static_cast<TQyLineSeries*>(b)->GetLine()->GetColor());
}

// The series draws its own sample into its item's box (each kind's sample is the series' own
// business); a draw handler replaces it.
TEST(LegendOnGraph, SeriesDrawsItsSampleInTheItemBox) {
  const QColor look(0, 128, 255);
  LegendGraph f;
  for (TQySeries* s : f.graph->RelatedSeries()) s->SetIncludeInLegend(false);
  TQySeries* series = f.AddSeries({0, 1}, {0, 1}, look.rgba());
  f.Render();
  ASSERT_EQ(f.legend->ItemSeries().size(), 1);
  const QRectF box(f.legend->ItemRects()[0]);
  auto sample = [&](const QyPrimitive& p) {
    return p.kind == QyPrimitive::Line && p.pen.color() == look && p.points[0].y() == box.center().y() &&
           p.points[0].x() == box.left() && p.points[1].x() == box.right();
  };
  QyRecordingDevice dev;
  f.PaintLegend(dev);
  EXPECT_FALSE(dev.Select(sample).empty());
  QObject* handed = nullptr;
  f.legend->OnDrawLegendItem = [&](QObject* item, const TQyLegendItemDrawArgs&) { handed = item; };
  f.PaintLegend(dev);
  EXPECT_EQ(handed, series);
  EXPECT_TRUE(dev.Select(sample).empty());
}

// A free legend follows the mouse pressed with exactly the starting keys, stays inside the
// graph, and its move is one undo entry.
TEST(LegendOnGraph, DraggingAFreeLegendWithTheMouse) {
  LegendGraph f;
  f.form->resize(600, 400);
  f.form->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(f.form.get()));
  TQyUndoStack stack;
  f.graph->SetUndoStack(&stack);
  f.legend->move(100, 100);
  f.Render();
  int started = 0;
  f.legend->OnStartFreeFloating = [&](QObject*) { ++started; };

  QTest::mousePress(f.legend, Qt::LeftButton, Qt::ControlModifier, QPoint(5, 5));
  QTest::mouseMove(f.legend, QPoint(25, 15));
  QTest::mouseRelease(f.legend, Qt::LeftButton, Qt::ControlModifier, QPoint(25, 15));
  EXPECT_EQ(f.legend->pos(), QPoint(100, 100)) << "a press with other keys does not drag";

  QTest::mousePress(f.legend, Qt::LeftButton, {}, QPoint(5, 5));
  QTest::mouseMove(f.legend, QPoint(25, 15));
  EXPECT_EQ(f.legend->pos(), QPoint(120, 110));
  EXPECT_TRUE(f.legend->Dragging());
  QTest::mouseMove(f.legend, QPoint(2000, -2000));
  EXPECT_EQ(f.legend->pos(), QPoint(600 - f.legend->width(), 0));
  QTest::mouseRelease(f.legend, Qt::LeftButton, {}, QPoint(2000, -2000));
  EXPECT_FALSE(f.legend->Dragging());
  EXPECT_EQ(started, 1);

  stack.Undo(0);
  EXPECT_EQ(f.legend->pos(), QPoint(100, 100));
}

// The graph paints its legends into images of any size and into vector output alike, and leaves
// the legend where it was on the control.
TEST(LegendOnGraph, PaintedIntoImagesAndVectorOutput) {
  LegendGraph f;
  const QColor fill(255, 255, 0);
  f.legend->SetBackColor(fill.rgba());
  f.legend->SetPosition(P::BottomCenterOfGraph);
  const QImage screen = f.Render();
  const QRect box = f.legend->geometry();
  EXPECT_GT(QyProbe::Count(screen, box, fill), box.width() * box.height() / 2);

  const QImage large = f.graph->RenderToImage(QSize(1200, 800));
  const QRect bounds = QyProbe::BoundsOf(large, fill);
  EXPECT_GE(bounds.bottom(), 795);
  EXPECT_NEAR(bounds.center().x(), 600, 2);
  EXPECT_EQ(f.legend->geometry(), box);

  QBuffer svg;
  svg.open(QIODevice::WriteOnly);
  f.graph->RenderToSvg(&svg);
  EXPECT_TRUE(svg.data().contains(">A<") || svg.data().contains(">A</"));
  EXPECT_TRUE(svg.data().contains("#ffff00"));
}

// A legend read back from each document medium has the settings, the order list, the caption and
// the references (graph and parent) of the one written.
TEST(LegendOnGraph, DocumentsKeepTheLegend) {
  LegendGraph f;
  TQyLegend* l = f.legend;
  l->setObjectName("Legend1");
  l->SetPosition(P::RightTopOfAxis);
  l->SetRows(2);
  l->SetItemWidth(33);
  l->SetBackColor(0xFF102030);
  l->SetItemsOrderList({"Form1.Series2", "Form1.Series1"});
  l->SetCaption("Key\\b!");
  l->SetCaptionVisible(true);
  l->GetCaptionFont()->SetSize(14);
  l->SetDropShadow(true);
  l->GetBackgroundGradient()->SetVisible(true);
  l->SetGraph(f.graph);
  const char* checked[] = {"Position", "Rows", "ItemWidth", "BackColor", "ItemsOrderList", "Caption",
                           "CaptionVisible", "DropShadow", "ItemsOrder"};
  for (int medium = 0; medium < 3; ++medium) {
    SCOPED_TRACE(medium);
    TQyIniFile ini;
    TQyLegend copy(f.form.get());
    QyRoundTrip(medium, l, &copy, ini);
    for (const char* p : checked) EXPECT_EQ(copy.property(p), l->property(p)) << p;
    EXPECT_EQ(copy.GetCaptionFont()->GetSize(), 14.0f);
    EXPECT_TRUE(copy.GetBackgroundGradient()->GetVisible());
    EXPECT_EQ(copy.GetGraph(), f.graph);
    EXPECT_EQ(copy.parentWidget(), f.graph);
  }
}
