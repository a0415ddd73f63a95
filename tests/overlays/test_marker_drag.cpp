// Markers under real mouse drags: each kind moves, snaps to data, and keeps to its data point
// through zoom and resize; the pixel <-> axis unit round trip at the axis ends.
#include "QyMarkerTestKit.h"
#include <QyUndoStack.h>
#include <gtest/gtest.h>

namespace {

// Where a drag of each kind ends up: a horizontal line moves only in Y, a vertical one only in
// X, a cross hair and an arrow marker in both. Expected: the axis' inverse of the moved pixel.
TEST(MarkerDrag, EachKindFollowsTheMouseOnItsAxes) {
  struct Row { const char* kind; bool movesX, movesY; };
  for (const Row& row : {Row{"horizontal", false, true}, Row{"vertical", true, false},
                         Row{"crosshair", true, true}, Row{"arrow", true, true}}) {
    SCOPED_TRACE(row.kind);
    QyMarkerGraph t;
    TQyMovable* m = nullptr;
    const QString kind = row.kind;
    if (kind == "horizontal") m = t.Marker<TQyHorizontalMarker>("M");
    else if (kind == "vertical") m = t.Marker<TQyVerticalMarker>("M");
    else if (kind == "crosshair") m = t.Marker<TQyCrossHair>("M");
    else m = t.Marker<TQyLabelWithArrowMarker>("M");
    m->SetXAxis(t.X());
    m->SetYAxis(t.Y());
    m->SetX(4);
    m->SetY(40);
    t.Settle();
    const QPoint hot = m->HotSpot();
    const QPoint grab = kind == "horizontal" ? QPoint(hot.x() + 100, hot.y())
                      : kind == "vertical"   ? QPoint(hot.x(), hot.y() + 100)
                      : kind == "arrow"      ? hot + QPoint(20, -20) // on the arrow's line
                                             : hot;
    EXPECT_EQ(t.Drag(grab, {30, -25}), m);
    EXPECT_FALSE(m->Moving());
    const double x = row.movesX ? t.X()->WorldToNumber(float(hot.x() + 30)) : 4.0;
    const double y = row.movesY ? t.Y()->WorldToNumber(float(hot.y() - 25)) : 40.0;
    if (kind != "horizontal") {
      EXPECT_DOUBLE_EQ(m->GetX(), x);
    }
    if (kind != "vertical") {
      EXPECT_DOUBLE_EQ(m->GetY(), y);
    }
    // The cross hair's lines stand on its centre.
    if (auto* c = qobject_cast<TQyCrossHair*>(m)) {
      EXPECT_DOUBLE_EQ(c->GetHorizontalMarker()->GetY(), y);
      EXPECT_DOUBLE_EQ(c->GetVerticalMarker()->GetX(), x);
    }
  }
}

// Only exactly StartMovingKeys starts a drag; a press beside a line marker's band goes to the graph.
TEST(MarkerDrag, StartKeysAndHitBand) {
  QyMarkerGraph t;
  auto* m = t.Marker<TQyHorizontalMarker>("H");
  m->SetYAxis(t.Y());
  m->SetY(50);
  t.Settle();
  const QPoint on(300, m->HotSpot().y());
  t.Drag(on, {0, 40}, Qt::ShiftModifier);
  EXPECT_DOUBLE_EQ(m->GetY(), 50) << "left plus shift is not the plain left drag";
  EXPECT_EQ(m->height(), 5) << "a line thinner than 5 takes a band of 5";
  EXPECT_EQ(t.graph->childAt(on + QPoint(0, 3)), nullptr);
  m->SetStartMovingKeys(QyShift::ssLeft | QyShift::ssShift);
  t.Drag(on, {0, 40}, Qt::ShiftModifier);
  EXPECT_DOUBLE_EQ(m->GetY(), t.Y()->WorldToNumber(float(on.y() + 40)));
  // A drag beyond the graph's edge stops at its last pixel.
  t.Drag(QPoint(300, m->HotSpot().y()), {0, 1000}, Qt::ShiftModifier);
  EXPECT_EQ(m->HotSpot().y(), t.graph->height() - 1);
}

// Snapping: the nearest point of all series on the axes, or only of the series set from outside.
TEST(MarkerDrag, SnapsToNearestPointAndToAChosenSeries) {
  QyMarkerGraph t;
  TQyLineSeries* low = t.AddSeries({1, 2, 3, 4, 5, 6, 7, 8, 9}, {1, 4, 9, 16, 25, 36, 49, 64, 81});
  TQyLineSeries* high = t.AddSeries({1, 2, 3, 4, 5, 6, 7, 8, 9}, {90, 90, 90, 90, 90, 90, 90, 90, 90});
  auto* c = t.Placed<TQyCrossHair>("C", 1, 50);
  c->SetSnapToSeriesValues(true);
  // The target lies 3 pixels right of (3, 9) on the lower curve.
  const QPoint target(QyMarkerGraph::Px(t.X(), 3) + 3, QyMarkerGraph::Px(t.Y(), 9));
  t.Drag(c->HotSpot(), target - c->HotSpot());
  EXPECT_EQ(c->GetSnappedSeries(), low);
  EXPECT_EQ(c->GetSnappedIdx(), 2);
  EXPECT_DOUBLE_EQ(c->GetX(), 3);
  EXPECT_DOUBLE_EQ(c->GetY(), 9);
  EXPECT_EQ(c->HotSpot(), QPoint(QyMarkerGraph::Px(t.X(), 3), QyMarkerGraph::Px(t.Y(), 9)));
  // With the upper series chosen, the same place snaps onto it.
  c->SetSnappedSeries(high);
  t.Drag(c->HotSpot(), QPoint(3, 0));
  EXPECT_EQ(c->GetSnappedSeries(), high);
  EXPECT_EQ(c->GetSnappedIdx(), 2);
  EXPECT_DOUBLE_EQ(c->GetY(), 90);
  // A vertical marker has only an X axis: it snaps by X alone.
  auto* v = t.Marker<TQyVerticalMarker>("V");
  v->SetXAxis(t.X());
  v->SetSnapToSeriesValues(true);
  v->SetX(1);
  t.Settle();
  t.Drag(QPoint(v->HotSpot().x(), 200), QPoint(QyMarkerGraph::Px(t.X(), 7) - 2 - v->HotSpot().x(), 0));
  EXPECT_DOUBLE_EQ(v->GetX(), 7);
  EXPECT_EQ(v->GetSnappedIdx(), 6);
}

// Nothing in reach (no points in the data area): the marker stays at the mouse, unsnapped.
TEST(MarkerDrag, SnapWithoutVisibleDataStaysAtTheMouse) {
  QyMarkerGraph t;
  t.AddSeries({20, 30}, {500, 600}); // outside the fixed ends
  auto* c = t.Placed<TQyCrossHair>("C", 5, 50);
  c->SetSnapToSeriesValues(true);
  const QPoint hot = c->HotSpot();
  t.Drag(hot, {20, 10});
  EXPECT_EQ(c->GetSnappedIdx(), -1);
  EXPECT_EQ(c->HotSpot(), hot + QPoint(20, 10));
}

// The position in axis units is the truth: after zoom and resize the marker stands on its point.
TEST(MarkerDrag, StaysOnItsPointThroughZoomAndResize) {
  QyMarkerGraph t;
  t.AddSeries({1, 2, 3, 4, 5}, {10, 20, 30, 40, 50});
  auto* c = t.Marker<TQyCrossHair>("C");
  c->SetXAxis(t.X());
  c->SetYAxis(t.Y());
  c->SetSnapToSeriesValues(true);
  t.Settle();
  const QPoint target(QyMarkerGraph::Px(t.X(), 3), QyMarkerGraph::Px(t.Y(), 30));
  t.Drag(c->HotSpot(), target - c->HotSpot() + QPoint(2, -2));
  ASSERT_EQ(c->GetSnappedIdx(), 2);
  auto expectOnPoint = [&](const char* when) {
    SCOPED_TRACE(when);
    t.Settle();
    EXPECT_DOUBLE_EQ(c->GetX(), 3);
    EXPECT_DOUBLE_EQ(c->GetY(), 30);
    EXPECT_EQ(c->HotSpot(), QPoint(QyMarkerGraph::Px(t.X(), 3), QyMarkerGraph::Px(t.Y(), 30)));
    EXPECT_EQ(c->pos() + c->HotDelta(), c->HotSpot());
    EXPECT_EQ(c->GetVerticalMarker()->x() + c->GetVerticalMarker()->HotDelta().x(), c->HotSpot().x());
  };
  t.X()->ZoomIn(2, 6);
  expectOnPoint("zoomed");
  t.graph->resize(420, 300);
  expectOnPoint("resized");
  t.Y()->SetTwisted(true);
  expectOnPoint("twisted");
  // The data change under it: a value inserted before the point shifts its index.
  c->GetSnappedSeries()->GetYData()->Insert(0, 5);
  EXPECT_EQ(c->GetSnappedIdx(), 3);
}

// Pixel -> axis units -> pixel at both ends of linear, log and twisted axes: moving the widget
// by code takes the axis value of the hot spot, and the next layout puts it back on that pixel.
TEST(MarkerDrag, PixelAxisRoundTripAtBothEnds) {
  struct Row { const char* name; bool log, twisted; double start, stop; };
  for (const Row& row : {Row{"linear", false, false, -5, 5}, Row{"log", true, false, 1, 1000},
                         Row{"twisted", false, true, 0, 10}}) {
    SCOPED_TRACE(row.name);
    QyMarkerGraph t;
    QyMarkerGraph::Fix(t.X(), row.start, row.stop);
    if (row.log) t.X()->SetScaling(TQyAxisScaling::Log);
    t.X()->SetTwisted(row.twisted);
    auto* v = t.Marker<TQyVerticalMarker>("V");
    v->SetXAxis(t.X());
    v->SetClipToData(false);
    t.Settle();
    const int left = RoundI(t.graph->DataArea().left());
    const double atLeft = row.twisted ? row.stop : row.start, atRight = row.twisted ? row.start : row.stop;
    const int ends[] = {left, RoundI(t.X()->NumberToWorld(atRight))};
    const double values[] = {atLeft, atRight};
    ASSERT_EQ(RoundI(t.X()->NumberToWorld(atLeft)), left);
    for (int k = 0; k < 2; ++k) {
      v->SetBounds(ends[k] - v->HotDelta().x(), v->y(), v->width(), v->height());
      EXPECT_NEAR(v->GetX(), values[k], 1e-4 * std::max(1.0, std::fabs(values[k])));
      t.graph->Modified();
      t.Settle();
      EXPECT_EQ(v->HotSpot().x(), ends[k]);
    }
  }
}

// A drag is one undo entry that brings the marker back; X set twice records twice.
TEST(MarkerDrag, DragIsOneUndoStep) {
  QyMarkerGraph t;
  TQyUndoStack stack(t.form.get());
  stack.SetToMemoryStream(true);
  t.graph->SetUndoStack(&stack);
  auto* c = t.Marker<TQyCrossHair>("C");
  c->SetUndoStack(&stack);
  c->SetXAxis(t.X());
  c->SetYAxis(t.Y());
  const int before = stack.UndoCount();
  c->SetX(5);
  c->SetX(5);
  EXPECT_EQ(stack.UndoCount(), before + 2);
  c->SetY(50);
  t.Settle();
  const int count = stack.UndoCount();
  t.Drag(c->HotSpot(), {40, 40});
  ASSERT_EQ(stack.UndoCount(), count + 1);
  EXPECT_EQ(stack.UndoList()[0], "Marker move");
  EXPECT_NE(c->GetX(), 5);
  stack.Undo();
  EXPECT_DOUBLE_EQ(c->GetX(), 5);
  EXPECT_DOUBLE_EQ(c->GetY(), 50);
  EXPECT_DOUBLE_EQ(c->GetVerticalMarker()->GetX(), 5);
}

} // namespace
