#include "QyTestGraph.h"
#include <QyAxis.h>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {
// The axis range as (start, stop).
std::pair<double, double> Range(const TQyAxis* a) { return {a->GetStart(), a->GetStop()}; }
} // namespace

TEST(AxisRanges, RepairOfDegenerateRanges) {
  QyTestGraph f;
  TQyAxis* x = f.X();
  const TQyAxisEndRounding defaultRounding = x->GetEndRounding();
  // Rows: default rounding or none, logarithmic, start and stop in, start and stop out.
  const struct { bool rounding, log; double s, e, start, stop; } cases[] = {
      {true, false, 0, 10, 0, 10},     // the default range stays
      {false, false, 5, 5, 4, 6},      // one value: d = 10^0 either side
      {false, false, 0, 0, -1, 1},     {false, false, 3e-7, 3e-7, 2e-7, 4e-7},
      {false, false, 9, 2, 0, 100},    // reversed
      {false, true, 9, 2, 1, 10}};
  for (const auto& c : cases) {
    x->SetEndRounding(c.rounding ? defaultRounding : TQyAxisEndRounding::RndNothing);
    x->SetScaling(c.log ? TQyAxisScaling::Log : TQyAxisScaling::Normal);
    double s = c.s, e = c.e;
    x->RoundEnds(s, e);
    EXPECT_NEAR(s, c.start, 1e-9 * std::fabs(c.start) + 1e-20) << c.s << " " << c.e;
    EXPECT_NEAR(e, c.stop, 1e-9 * std::fabs(c.stop) + 1e-20) << c.s << " " << c.e;
  }
}

TEST(AxisRanges, SingleValueAndEndModes) {
  QyTestGraph f;
  f.AddSeries({5, 5}, {1, 2}); // one X value
  f.Render();
  // 4 .. 6 before rounding; rounded to major ticks it stays there.
  EXPECT_EQ(Range(f.X()), std::pair(4.0, 6.0));

  QyTestGraph g;
  TQyLineSeries* s = g.AddSeries({3, 7}, {0, 1});
  TQyAxis* x = g.X();
  x->SetStartEnd(TQyAxisEnd::FirstSet);
  x->SetStopEnd(TQyAxisEnd::FirstSet);
  x->SetStart(0);
  x->SetStop(10);
  g.Render();
  EXPECT_EQ(Range(x), std::pair(0.0, 10.0));
  auto* xs = qobject_cast<TQyDoubleVector*>(s->GetXData());
  auto* ys = qobject_cast<TQyDoubleVector*>(s->GetYData());
  xs->Add(12), ys->Add(1);
  g.Render();
  EXPECT_GE(x->GetStop(), 12); // data widen the stop
  const double widened = x->GetStop();
  xs->SetValue(2, 7);
  g.Render();
  EXPECT_DOUBLE_EQ(x->GetStop(), widened); // and do not narrow it again
}

TEST(AxisRanges, MovingSlitJumpsInWholeIncrements) {
  QyTestGraph f;
  TQyLineSeries* s = f.AddSeries({0, 12}, {0, 1});
  TQyAxis* x = f.X();
  x->SetEndRounding(TQyAxisEndRounding::RndNothing);
  x->SetStart(0);
  x->SetStop(10);
  x->SetMovingSlitWidth(10);
  x->SetMovingSlitIncrement(5);
  x->SetStopEnd(TQyAxisEnd::MovingSlit);
  EXPECT_EQ(x->GetStartEnd(), TQyAxisEnd::Fixed);
  f.Render();
  EXPECT_EQ(Range(x), std::pair(5.0, 15.0));
  qobject_cast<TQyDoubleVector*>(s->GetXData())->SetValue(1, 15);
  f.Render();
  EXPECT_EQ(Range(x), std::pair(5.0, 15.0));
  qobject_cast<TQyDoubleVector*>(s->GetXData())->SetValue(1, 1e15); // far data: no stall
  f.Render();
  EXPECT_GE(x->GetStop(), 1e15);
}

TEST(AxisRanges, LogStartsAtTheSmallestPositiveValue) {
  QyTestGraph f;
  f.AddSeries({0, 0.5, 3, 100}, {1, 2, 3, 4});
  TQyAxis* x = f.X();
  x->SetScaling(TQyAxisScaling::Log);
  f.Render();
  ASSERT_TRUE(x->LogActive());
  EXPECT_GT(x->GetStart(), 0);
  EXPECT_LE(x->GetStart(), 0.5);
  EXPECT_GE(x->GetStart(), 0.1); // rounded down to a decade step below 0.5
  EXPECT_GE(x->GetStop(), 100);
}

TEST(AxisRanges, SlaveShowsConvertedMasterRange) {
  QyTestGraph f;
  f.AddSeries({0, 1}, {-10, 40});
  auto* slave = new TQyAxis(f.graph);
  slave->SetPosition(TQyAxisPosition::Right);
  auto* follower = new TQyAxis(f.graph);
  follower->SetPosition(TQyAxisPosition::Left);
  follower->SetMasterAxis(f.Y());
  // Refused: the axis itself, the other orientation, a slave. Taken: a free axis alike; nil
  // lets go. Taking a master makes the axis a slave.
  struct Row { TQyAxis* master; TQyAxis* taken; };
  for (const Row& r : {Row{slave, nullptr}, Row{f.X(), nullptr}, Row{follower, nullptr},
                       Row{f.Y(), f.Y()}, Row{nullptr, nullptr}, Row{f.Y(), f.Y()}}) {
    slave->SetMasterAxis(r.master);
    EXPECT_EQ(slave->GetMasterAxis(), r.taken);
    EXPECT_EQ(slave->GetIsSlaveAxis(), r.taken != nullptr);
  }
  slave->SetSlaveSlope(1.8);
  slave->SetSlaveOffset(32);
  f.Render();
  TQyAxis* m = f.Y();
  EXPECT_DOUBLE_EQ(slave->GetStart(), 32 + 1.8 * m->GetStart());
  EXPECT_DOUBLE_EQ(slave->GetStop(), 32 + 1.8 * m->GetStop());
  // The same value maps to the same height on both.
  for (double c : {-5.0, 0.0, 25.0})
    EXPECT_NEAR(slave->y() + slave->NumberToWorld(32 + 1.8 * c), m->y() + m->NumberToWorld(c), 0.01);
  EXPECT_GT(slave->LabelCount(), 2);
}

TEST(AxisRanges, ZoomHistoryIsARing) {
  QyTestGraph f;
  f.AddSeries({0, 100}, {0, 1});
  f.Render();
  TQyAxis* x = f.X();
  const double s0 = x->GetStart(), e0 = x->GetStop();
  EXPECT_FALSE(x->GetCanZoomBack());
  x->ZoomIn(10, 50);
  EXPECT_TRUE(x->GetCanZoomBack());
  EXPECT_EQ(x->GetZoomBufferSize(), 2);
  EXPECT_EQ(x->GetCurrentZoomStage(), 1);
  EXPECT_DOUBLE_EQ(x->GetStart(), 10);
  x->ZoomIn(20, 1000); // the stop is outside the data: kept
  EXPECT_EQ(Range(x), std::pair(20.0, 50.0));
  x->ZoomBack();
  EXPECT_DOUBLE_EQ(x->GetStart(), 10);
  x->ZoomBack();
  EXPECT_EQ(Range(x), std::pair(s0, e0));
  x->ZoomBack(); // wraps to the last stage
  EXPECT_EQ(x->GetCurrentZoomStage(), 2);
  x->RedoZoom(); // wraps to 0
  EXPECT_EQ(x->GetCurrentZoomStage(), 0);
  x->ZoomToStage(1);
  x->ZoomIn(30, 40); // drops stage 2, starts and stops alike
  EXPECT_EQ(x->GetZoomBufferSize(), 3);
  x->ZoomToStage(2);
  EXPECT_EQ(Range(x), std::pair(30.0, 40.0));
  // Scroll mapping over the unzoomed range.
  EXPECT_DOUBLE_EQ(x->GetScrollStart(), s0);
  EXPECT_EQ(x->ScrollRangeSize(s0, e0), 10000);
  EXPECT_EQ(x->ScrollRangeSize(s0, s0 + (e0 - s0) / 4), 2500);
  EXPECT_EQ(x->ScrollPosition(s0 + (e0 - s0) / 2), 5000);
  EXPECT_EQ(x->ScrollRangeSize(e0, s0), 0); // clamped
  x->ZoomClearBuffer();
  EXPECT_FALSE(x->GetCanZoomBack());
}

TEST(AxisRobustness, ExtremeAndBrokenInputEndWithABoundedAxis) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  auto sane = [](TQyAxis* a) {
    EXPECT_TRUE(std::isfinite(a->GetStart()) && std::isfinite(a->GetStop()) && a->GetStart() <= a->GetStop())
        << a->GetStart() << " .. " << a->GetStop();
    EXPECT_LE(a->TickPositions().Count(), 5001);
    EXPECT_LE(a->LabelCount(), 500);
    for (int i = 0; i < a->TickPositions().Count(); ++i) EXPECT_TRUE(std::isfinite(a->TickPositions()[i]));
  };
  {
    QyTestGraph f;
    f.AddSeries({1e-300, 1e300}, {nan, 1});
    f.AddSeries({inf, 2}, {-inf, 3});
    f.Render();
    sane(f.X());
    sane(f.Y());
    f.X()->SetScaling(TQyAxisScaling::Log);
    f.Render();
    sane(f.X());
    EXPECT_TRUE(f.X()->LogActive());
    EXPECT_GT(f.X()->LabelCount(), 1);
  }
  {
    QyTestGraph f;
    f.AddSeries({1e-300, 2e-300}, {1e300, 1.7e308});
    f.Render();
    sane(f.X());
    sane(f.Y());
    EXPECT_GT(f.X()->LabelCount(), 1);
  }
  {
    QyTestGraph f; // fixed parts asking for 10^6 labels
    QyTestGraph::Fix(f.X(), 0, 1e6);
    f.X()->SetAutoTickParts(false);
    f.X()->SetLabelPart(1e-6);
    f.X()->SetMajorTickPart(1e-6);
    f.X()->SetTickPart(1e-6);
    f.Render();
    sane(f.X());
  }
  {
    QyTestGraph f; // start equal to stop, on every scaling
    for (auto sc : {TQyAxisScaling::Normal, TQyAxisScaling::Log, TQyAxisScaling::LogEE, TQyAxisScaling::Seconds,
                    TQyAxisScaling::DateTime, TQyAxisScaling::Rubrics}) {
      f.X()->SetScaling(sc);
      QyTestGraph::Fix(f.X(), 7, 7);
      f.Render();
      sane(f.X());
      EXPECT_LT(f.X()->GetStart(), f.X()->GetStop());
    }
  }
}
