#include "QyPixelProbe.h"
#include "QyTestGraph.h"
#include <QyAxis.h>
#include <QyCalendar.h>
#include <cmath>
#include <gtest/gtest.h>
#include <functional>
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
  x->ZoomIn(30, 40); // drops stage 2 of the starts only: stage 2 reads the old stop
  EXPECT_EQ(x->GetZoomBufferSize(), 3);
  x->ZoomToStage(2);
  EXPECT_EQ(Range(x), std::pair(30.0, 50.0));
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
  // Rows: the data, or fixed parts asking for 10^6 labels, and the log step of the first row.
  const struct { std::vector<double> xs, ys; bool hugeParts, log; } rows[] = {
      {{1e-300, 1e300, inf, 2}, {nan, 1, -inf, 3}, false, true},
      {{1e-300, 2e-300}, {1e300, 1.7e308}, false, false},
      {{}, {}, true, false}};
  for (const auto& r : rows) {
    QyTestGraph f;
    if (!r.xs.empty()) f.AddSeries(r.xs, r.ys);
    if (r.hugeParts) {
      QyTestGraph::Fix(f.X(), 0, 1e6);
      f.X()->SetAutoTickParts(false);
      f.X()->SetLabelPart(1e-6), f.X()->SetMajorTickPart(1e-6), f.X()->SetTickPart(1e-6);
    }
    f.Render();
    sane(f.X());
    sane(f.Y());
    if (!r.hugeParts) {
      EXPECT_GT(f.X()->LabelCount(), 1);
    }
    if (r.log) {
      f.X()->SetScaling(TQyAxisScaling::Log);
      f.Render();
      sane(f.X());
      EXPECT_TRUE(f.X()->LogActive());
      EXPECT_GT(f.X()->LabelCount(), 1);
    }
  }
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

// Ranges no axis can label are settled before anything is drawn: the ranging and the layout raise
// nothing, the ends stay finite, and the rest of the picture (the series) is drawn.
TEST(AxisRobustness, UnshowableRangesSettleAndThePictureStaysWhole) {
  const double big = 1.7e308;
  enum Source { Data, FixedEnds };
  const struct {
    const char* what;
    TQyAxisScaling scaling;
    bool yAxis;
    Source source;
    double lo, hi;
    double minStart, maxStop; // the settled ends lie within these
    bool seriesShown;
  } cases[] = {
      {"Unix seconds as dates", TQyAxisScaling::DateTime, false, Data, 1.6e9, 1.7e9, MinDateTime, MaxDateTime, false},
      {"dates beyond both ends", TQyAxisScaling::DateTime, false, FixedEnds, -big, big, MinDateTime, MaxDateTime, true},
      {"fixed ends of the largest doubles", TQyAxisScaling::Normal, false, FixedEnds, -big, big, -big, big, true},
      {"data of the largest doubles", TQyAxisScaling::Normal, true, Data, -big, big, -big, big, true},
  };
  for (const auto& c : cases) {
    QyTestGraph f;
    const std::vector<double> values = {c.lo, 0.5 * (c.lo + c.hi) == 0 ? 1 : 0.5 * c.lo + 0.5 * c.hi, c.hi};
    const std::vector<double> plain = {1, 2, 3};
    f.AddSeries(c.yAxis ? plain : values, c.yAxis ? values : plain);
    if (!c.yAxis) f.Y()->SetScaling(TQyAxisScaling::Normal);
    TQyAxis* a = c.yAxis ? f.Y() : f.X();
    a->SetScaling(c.scaling);
    if (c.source == FixedEnds) QyTestGraph::Fix(a, c.lo, c.hi);
    for (int pass = 0; pass < 2; ++pass) {
      EXPECT_NO_THROW(f.graph->TestSeriesAndAxis()) << c.what;
      EXPECT_NO_THROW(f.graph->Calculate()) << c.what;
    }
    const QImage image = f.Render();
    EXPECT_TRUE(std::isfinite(a->GetStop() - a->GetStart())) << c.what;
    EXPECT_LT(a->GetStart(), a->GetStop()) << c.what;
    EXPECT_GE(a->GetStart(), c.minStart) << c.what;
    EXPECT_LE(a->GetStop(), c.maxStop) << c.what;
    EXPECT_GT(a->LabelCount(), 0) << c.what;
    const QRect area = f.graph->DataArea().toRect().adjusted(2, 2, -2, -2);
    EXPECT_EQ(QyProbe::Any(image, area, QColor(255, 0, 0), 60), c.seriesShown) << c.what;
  }
}

// The layout runs on whatever the properties hold: NaN and huge distances, parts and data at the
// edges of the doubles end in a picture, never in an exception or an undefined conversion.
TEST(AxisRobustness, NonFiniteAndHugeSettingsLayOutWithoutRaising) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  using Setter = std::function<void(QyTestGraph&, double)>;
  const Setter setters[] = {
      [](QyTestGraph& f, double v) { f.X()->SetMajorTickLength(float(v)); },
      [](QyTestGraph& f, double v) { f.Y()->SetDistanceToBorder(float(v)); },
      [](QyTestGraph& f, double v) { f.X()->SetDistanceAxisLabels(float(v)); },
      [](QyTestGraph& f, double v) { f.Y()->SetAxisThicknes(float(v)); },
      [](QyTestGraph& f, double v) { f.X()->SetDistanceValuesAxis(float(v)); },
      [](QyTestGraph& f, double v) { f.Y()->SetMajorThickThicknes(float(v)); },
      [](QyTestGraph& f, double v) { f.graph->SetDistanceBorderAxisLeft(float(v)); },
      [](QyTestGraph& f, double v) { f.X()->SetCaption("x"), f.X()->SetCaptionDistanceBefore(float(v)); },
      [](QyTestGraph& f, double v) { // parts the user sets, on both scalings
        f.X()->SetAutoTickParts(false);
        f.X()->SetLabelPart(v), f.X()->SetMajorTickPart(v), f.X()->SetTickPart(v);
        f.Y()->SetScaling(TQyAxisScaling::Log), f.Y()->SetAutoTickParts(false);
        f.Y()->SetLabelPart(v), f.Y()->SetMajorTickPart(v), f.Y()->SetTickPart(v);
      },
  };
  for (double v : {nan, inf, -inf, 1e30, -1e30, 3e9}) {
    for (const Setter& set : setters) {
      QyTestGraph f;
      f.AddSeries({0, 1, 2}, {1e-320, 1, 5e-324}); // denormal data on a logarithmic axis
      f.Y()->SetScaling(TQyAxisScaling::Log);
      set(f, v);
      EXPECT_NO_THROW(f.graph->TestSeriesAndAxis()) << v;
      EXPECT_NO_THROW(f.graph->Calculate()) << v;
      f.Render();
      for (TQyAxis* a : {f.X(), f.Y()}) {
        EXPECT_TRUE(std::isfinite(a->GetStart()) && std::isfinite(a->GetStop())) << v;
        EXPECT_GE(a->AxisLength(), 40) << v;
      }
    }
  }
}

// A picture is a fixed point of the layout: after a change that moves no axis end (a caption), the
// next picture shows the same ticks and labels.
TEST(AxisRanges, ThePictureIsAFixedPointOfTheLayout) {
  const struct { int width, height; double lo, hi; } cases[] = {
      {640, 400, 0, 97}, {640, 400, 0.13, 0.37}, {300, 250, -3, 1234}, {1000, 700, 5, 5.5},
      {420, 600, -0.004, 97e6}, {640, 400, 1, 99},
  };
  auto snapshot = [](TQyAxis* a) {
    QStringList s{QString::number(a->GetStart()), QString::number(a->GetStop())};
    for (int i = 0; i < a->LabelCount(); ++i) s << a->Label(i).PlainText();
    for (int i = 0; i < a->TickPositions().Count(); ++i) s << QString::number(a->TickPositions()[i]);
    return s;
  };
  for (const auto& c : cases) {
    QyTestGraph f(c.width, c.height);
    f.AddSeries({c.lo, c.hi}, {c.lo, c.hi});
    f.Render();
    const QStringList x = snapshot(f.X()), y = snapshot(f.Y());
    f.X()->SetCaption("Caption"); // moves the Y axis' pixels, not its values
    f.Render();
    EXPECT_EQ(snapshot(f.X()), x) << c.lo << " .. " << c.hi << " on " << c.width;
    f.Y()->SetMajorGridMode(TQyMajorGridMode::AtMajorTick); // lays out again, moves nothing
    f.Render();
    EXPECT_EQ(snapshot(f.X()), x) << c.lo << " .. " << c.hi << " on " << c.width;
    EXPECT_EQ(snapshot(f.Y()).mid(0, 2), y.mid(0, 2)) << c.lo << " .. " << c.hi << " on " << c.width;
  }
}
