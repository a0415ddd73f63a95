#include "QyFakeRecorder.h"
#include "QyTestGraph.h"
#include <QyAxis.h>
#include <cmath>
#include <gtest/gtest.h>

namespace {
// Lays out a graph whose axes have fixed ends, so that the mapping is known exactly.
struct Fixture : QyTestGraph {
  Fixture(double x0, double x1, double y0, double y1) {
    Fix(X(), x0, x1);
    Fix(Y(), y0, y1);
    Render();
  }
};
} // namespace

TEST(AxisMapping, EndsMapToTheAxisEndsBothWays) {
  Fixture f(0, 10, -5, 5);
  TQyAxis* x = f.X();
  TQyAxis* y = f.Y();
  // Horizontal: Start at the origin, Stop one axis length to the right.
  EXPECT_FLOAT_EQ(x->NumberToWorld(0), x->OriginX());
  EXPECT_FLOAT_EQ(x->NumberToWorld(10), x->OriginX() + x->AxisLength());
  EXPECT_FLOAT_EQ(x->NumberToWorld(2.5), x->OriginX() + x->AxisLength() / 4);
  // Vertical, untwisted: Start at the bottom pixel, Stop at the top.
  EXPECT_FLOAT_EQ(y->NumberToWorld(-5), y->OriginY() + y->AxisLength());
  EXPECT_FLOAT_EQ(y->NumberToWorld(5), y->OriginY());
  for (double v : {-4.0, 0.0, 1.25, 3.0})
    EXPECT_NEAR(y->WorldToNumber(y->NumberToWorld(v)), v, 1e-5);

  x->SetTwisted(true);
  y->SetTwisted(true);
  f.Render();
  EXPECT_FLOAT_EQ(x->NumberToWorld(0), x->OriginX() + x->AxisLength()); // runs right to left
  EXPECT_FLOAT_EQ(y->NumberToWorld(-5), y->OriginY());                  // runs top to bottom
  EXPECT_NEAR(x->WorldToNumber(x->NumberToWorld(7.5)), 7.5, 1e-5);
}

TEST(AxisMapping, PixelBandAndLogarithmicValuesAtOrBelowZero) {
  Fixture f(0, 10, 0, 1);
  TQyAxis* x = f.X();
  TQyAxis* y = f.Y();
  // 10^9 times the range is pinned 100000 pixels from the origin, reversed when not forward.
  EXPECT_FLOAT_EQ(x->NumberToWorld(1e10), x->OriginX() + 100000);
  EXPECT_FLOAT_EQ(x->NumberToWorld(-1e10), x->OriginX() - 100000);
  EXPECT_FLOAT_EQ(y->NumberToWorld(1e10), y->OriginY() - 100000);
  EXPECT_FLOAT_EQ(y->NumberToWorld(-1e10), y->OriginY() + 100000);
  EXPECT_TRUE(std::isfinite(x->NumberToWorld(std::nan(""))));

  x->SetScaling(TQyAxisScaling::Log);
  QyTestGraph::Fix(x, 1, 1000);
  f.Render();
  ASSERT_TRUE(x->LogActive());
  EXPECT_FLOAT_EQ(x->NumberToWorld(1), x->OriginX());
  EXPECT_NEAR(x->NumberToWorld(10), x->OriginX() + x->AxisLength() / 3, 1e-3);
  EXPECT_FLOAT_EQ(x->NumberToWorld(0), x->OriginX() - 100); // 100 pixels before the start end
  EXPECT_FLOAT_EQ(x->NumberToWorld(-3), x->OriginX() - 100);
  EXPECT_NEAR(x->WorldToNumber(x->NumberToWorld(31.6227766)), 31.6227766, 1e-3);
}

TEST(AxisMapping, LogSwitchesToLinearBelowTheDecadeLevel) {
  QyTestGraph f;
  TQyAxis* x = f.X();
  x->SetScaling(TQyAxisScaling::Log);
  x->SetLogToNormalScalingLevel(2);
  QyTestGraph::Fix(x, 10, 500); // 1.7 decades
  f.Render();
  EXPECT_FALSE(x->LogActive());
  QyTestGraph::Fix(x, 10, 5000); // 2.7 decades
  f.Render();
  EXPECT_TRUE(x->LogActive());
  x->SetLogToNormalScalingLevel(-1); // negative becomes 0: always logarithmic
  EXPECT_EQ(x->GetLogToNormalScalingLevel(), 0);
}

TEST(AxisLayout, DataAreaMeetsTheAxisLinesAndKeepsMinimumLengths) {
  Fixture f(0, 100, 0, 1);
  TQyAxis* x = f.X();
  TQyAxis* y = f.Y();
  const QRectF da = f.graph->DataArea();
  // The left edge of the data area is the Y axis line; the bottom row is the X axis line.
  EXPECT_FLOAT_EQ(da.x(), y->x() + y->OriginX());
  EXPECT_FLOAT_EQ(da.y() + da.height() - 1, x->y() + x->OriginY());
  EXPECT_EQ(QRectF(x->OriginX(), y->OriginY(), x->AxisLength() + 1, y->AxisLength() + 1), da);
  // The axes sit inside the control, their labels below and left of the data area.
  EXPECT_GE(da.x(), 20);
  EXPECT_LT(da.x() + da.width(), f.graph->width());
  EXPECT_GT(da.y() + da.height(), f.graph->height() / 2);

  f.graph->resize(60, 50); // far too small for its axes
  f.Render();
  EXPECT_GE(std::min(x->AxisLength(), y->AxisLength()), 40);
}

TEST(AxisLayout, ZeroOriginCrossesAtZeroAndDropsTheZeroLabels) {
  Fixture f(-5, 5, -2, 2);
  f.graph->SetZeroOrigin(true);
  f.Render();
  TQyAxis* x = f.X();
  TQyAxis* y = f.Y();
  // Each axis line stands at the other's zero.
  EXPECT_NEAR(y->x() + y->OriginX(), x->NumberToWorld(0), 1.0);
  EXPECT_NEAR(x->y() + x->OriginY(), y->NumberToWorld(0), 1.0);
  for (TQyAxis* a : {x, y})
    for (int i = 0; i < a->LabelCount(); ++i) EXPECT_NE(a->Label(i).PlainText(), "0");

  // A range that does not hold 0 leaves the axes at the borders.
  QyTestGraph::Fix(x, 1, 5);
  QyTestGraph::Fix(y, 1, 5);
  f.Render();
  const QRectF da = f.graph->DataArea();
  EXPECT_NEAR(y->x() + y->OriginX(), da.x(), 1.0);
  EXPECT_NEAR(x->y() + x->OriginY(), da.y() + da.height() - 1, 1.0);
}

TEST(AxisSetters, RecordCompareAndClamp) {
  QyFakeRecorder rec;
  QyTestGraph f;
  TQyAxis* x = f.X();
  x->SetUndoStack(&rec);
  x->SetTickLength(6); // equal: nothing recorded
  x->SetTickLength(8);
  x->SetMajorThickThicknes(2);
  x->SetDistanceToBorder(3); // an alias of a caption distance, recorded under its own caption
  QStringList log;
  for (const auto& push : rec.Pushes) log << push.caption + "|" + push.property;
  EXPECT_EQ(log, (QStringList{"Axis minor ticks length|TickLength", "Width of major tick lines|MajorTickThicknes",
                              "Distance between axis caption and border|DistanceToBorder"}));
  EXPECT_EQ(x->GetCaptionDistanceAfter(), 3); // bottom axis: the border distance is "after"
  x->SetLabelDistanceFactor(50);
  EXPECT_EQ(x->GetLabelDistanceFactor(), 10);
  x->SetRubricsAngle(-90);
  EXPECT_EQ(x->GetRubricsAngle(), 270);
  x->SetStartPadding(0.1);
  x->SetStartPadding(0); // cannot be set back to 0
  EXPECT_EQ(x->GetStartPadding(), 0.1);
  x->SetLabelPart(0.5); // ignored while the parts are automatic
  EXPECT_NE(x->GetLabelPart(), 0.5);
  x->SetCaption("Time  \t ");
  EXPECT_EQ(x->GetCaption(), "Time"); // trimmed at the right
  x->SetStart(-700000); // no calendar limit on a number axis
  EXPECT_EQ(x->GetStart(), -700000);
  x->SetScaling(TQyAxisScaling::DateTime);
  x->SetAutoTickParts(false); // time scales always choose their parts
  EXPECT_TRUE(x->GetAutoTickParts());
  // Date-time ends stay within 0100-01-01 and 9999-12-31 23:59:59.999 (python's datetime).
  x->SetStart(-700000);
  x->SetStop(3e6);
  EXPECT_EQ(x->GetStart(), -657434.0);
  EXPECT_NEAR(x->GetStop(), 2958466.0 - 0.001 / 86400, 1e-8);
}
