// The function-series framework through its curves: what the engine sees, when it runs, the
// sampling, the ranges, failures and undo; and the interpolation, differential, integral and
// moving average series against analytic values.
#include "QyExpect.h"
#include "QyFakeRecorder.h"
#include "QyRoundTrip.h"
#include "QyTestGraph.h"
#include <QyExceptions.h>
#include <QyMovingAverage.h>
#include <QyRecordMedia.h>
#include <QyIniFile.h>
#include <QyServices.h>
#include <QBuffer>
#include <QDomDocument>
#include <cmath>
#include <gtest/gtest.h>

namespace {
std::vector<double> Range(int n, double step, double from = 0) {
  std::vector<double> v(n);
  for (int i = 0; i < n; ++i) v[i] = from + i * step;
  return v;
}
std::vector<double> Map(const std::vector<double>& x, double (*f)(double)) {
  std::vector<double> y(x.size());
  for (size_t i = 0; i < x.size(); ++i) y[i] = f(x[i]);
  return y;
}
} // namespace

TEST(QyFunctionSeries, EngineSeesValidTransformedData) {
  QyTestGraph t;
  TQyCalculation c;
  c.XData = t.Vector({0, 1, 2, 3});
  c.YData = t.Vector({5, 6, 7, 8});
  c.Weight = t.Vector({-2, 0, 3, 4});
  c.Start = 1, c.Stop = 2; // bounds included
  c.YData->AddOutlier(2);
  const bool valid[] = {false, true, false, true};
  c.Stop = 3;
  for (int i = 0; i < 4; ++i) EXPECT_EQ(c.IsValid(i), valid[i]) << i;
  c.OutliersVisible = true;
  EXPECT_TRUE(c.IsValid(2));
  EXPECT_EQ(c.Wi(0), 2); // magnitudes
  c.mWeightValueTransformation = [](TQySeries*, const TQyTransformEventArgs& a) { return -a.Value * 10; };
  c.mXValueTransformation = [](TQySeries*, const TQyTransformEventArgs& a) { return a.Value + a.Index; };
  EXPECT_EQ(c.Wi(0), 20);
  EXPECT_EQ(c.Xi(3), 6);
}

TEST(QyFunctionSeries, RunsOncePerChangeAndSamplesOncePerPixel) {
  QyTestGraph t;
  const std::vector<double> x = Range(50, 0.2);
  auto* s = t.Add<TQyInterpolation>(x, Map(x, std::sin));
  int runs = 0;
  s->OnCalculated = [&](QObject*) { ++runs; };
  t.Render();
  t.Render();
  EXPECT_EQ(runs, 1);
  // One point per pixel of the X axis within the display range.
  EXPECT_NEAR(s->PointCount(), t.X()->AxisLength(), 2);
  EXPECT_NEAR(s->GetY(1.0), std::sin(1.0), 1e-4);
  s->GetYData()->Add(0.0); // more data
  t.Render();
  EXPECT_EQ(runs, 1); // X did not grow: the count is the smaller one
  s->GetXData()->Add(10.0);
  t.Render();
  EXPECT_EQ(runs, 2);
  s->SetClipYValues(false); // a setter that affects the result
  t.Render();
  EXPECT_EQ(runs, 3);
  EXPECT_EQ(s->GetFormula(), "Interpolation (Akima)");
}

TEST(QyFunctionSeries, YRangeClaimAndDisplayRange) {
  QyTestGraph t;
  const std::vector<double> x = Range(21, 0.5);
  auto* s = t.Add<TQyInterpolation>(x, Map(x, std::sin));
  t.Render();
  EXPECT_NEAR(s->LimitMaxY(), 1, 5e-3); // alone on its axis: the curve's extent
  t.AddSeries({0, 10}, {-5, 5});
  s->SetClipYValues(false);
  s->SetClipYValues(true);
  t.Render();
  EXPECT_GT(s->LimitMinY(), s->LimitMaxY()); // beside a data series: no claim
  // A fixed display range wider than the data widens the X extent, only with coupling off.
  s->SetDisplayAutoStop(false);
  s->SetDisplayStop(14);
  t.Render();
  EXPECT_EQ(s->LimitMaxX(), 10);
  EXPECT_EQ(s->GetDisplayStop(), 10); // coupled: the display range is the calculation range
  s->SetCoupleCalculationAndDisplay(false);
  s->SetDisplayStop(14);
  t.Render();
  EXPECT_EQ(s->LimitMaxX(), 14);
}

TEST(QyFunctionSeries, FailuresClearTheCurveAndReachTheHandler) {
  QyTestGraph t;
  const std::vector<double> x = Range(10, 1);
  auto* s = t.Add<TQyInterpolation>(x, x);
  s->SetAutoStart(false);
  s->SetCalculationStart(100); // no point is valid
  QString message;
  s->OnCalculationError = [&](QObject*, const std::exception& e) { message = e.what(); };
  t.Render();
  EXPECT_EQ(message, "Not enough data points to calculate function");
  EXPECT_EQ(s->PointCount(), 0);
  s->OnCalculationError = nullptr;
  s->SetCalculationStart(101);
  EXPECT_EQ(QyMessageOf<EMathError>([&] { s->Calculate(); }), "Not enough data points to calculate function");
  s->Calculate(); // as if calculated: no retry until something changes
  auto* few = t.Add<TQyInterpolation>({0}, {1});
  t.Render();
  EXPECT_EQ(few->PointCount(), 0);
  TQyFunctionSeries bare;
  EXPECT_EQ(QyMessageOf<EMethodNotFound>([&] { bare.GetFormula(); }),
            "Formula function of function series must be overridden in derived classes");
}

TEST(QyFunctionSeries, ClearingAnAutoFlagRecordsTheFixedValue) {
  QyTestGraph t;
  auto* s = t.Add<TQyInterpolation>({0, 1, 2}, {0, 1, 0});
  QyFakeRecorder stack;
  s->SetUndoStack(&stack);
  s->SetAutoStart(false); // from true: the flag alone
  ASSERT_EQ(stack.Pushes.size(), 1u);
  EXPECT_EQ(stack.Pushes[0].caption, "Function series calculation start auto");
  s->SetAutoStart(true); // from false: the fixed start first, then the flag, in a group
  ASSERT_EQ(stack.Pushes.size(), 3u);
  EXPECT_EQ(QString(stack.Pushes[1].property), "CalculationStart");
  EXPECT_EQ(QString(stack.Pushes[2].property), "AutoStart");
  s->SetUndoStack(nullptr);
}

TEST(QyInterpolationSeries, IntegralAndDerivativeOfSampledCurves) {
  QyTestGraph t;
  const std::vector<double> x = Range(101, 0.1);
  auto* integral = t.Add<TQyIntegral>(x, Map(x, std::sin));
  auto* slope = t.Add<TQyDifferential>(x, Map(x, [](double v) { return v * v * v - 2 * v; }));
  integral->SetInterpolationMethod(TQyInterpolationMethod::CubicSpline);
  slope->SetInterpolationMethod(TQyInterpolationMethod::CubicSpline);
  EXPECT_EQ(integral->GetFormula(), "Integral (cubic spline)");
  EXPECT_EQ(slope->GetFormula(), "Differential (cubic spline)");
  t.Render(); // the engines take their data
  for (double v : {0.0, 0.05, 2.0, 3.14, 7.7, 10.0, 10.0, 11.0, 4.0, 0.0}) { // up, repeated, beyond, back
    EXPECT_NEAR(integral->GetY(v), 1 - std::cos(v), v > 10 ? 2e-2 : 1e-6) << v;
    EXPECT_NEAR(slope->GetY(v), 3 * v * v - 2, 1e-9) << v; // the spline reproduces the cubic
  }
  EXPECT_EQ(integral->GetY(0), 0.0);
  // The integral's extrema at the zeros of the sine: maxima near pi and 3 pi, a minimum near 2 pi.
  ASSERT_GE(integral->GetMaxima().size(), 2u);
  EXPECT_NEAR(integral->GetXMaxima(0), M_PI, 1e-3);
  EXPECT_NEAR(integral->GetXMinima(1), 2 * M_PI, 1e-3);
  EXPECT_THROW(integral->GetXMaxima(99), ERangeError);
}

TEST(QyInterpolationSeries, KnotCleanUpAndCounts) {
  QyTestGraph t;
  // Unsorted X is sorted; equal X merge to their mean Y.
  auto* s = t.Add<TQyInterpolation>({3, 0, 2, 1, 2}, {3, 0, 1, 1, 3});
  auto* five = t.Add<TQyInterpolation>({0, 1, 2, 3, 4}, {0, 1, 0, 1, 0});
  std::vector<TQyInterpolation*> threes;
  for (int k = 0; k < 2; ++k) threes.push_back(t.Add<TQyInterpolation>({0, 1, 3}, {1, 0, 4}));
  t.Render();
  EXPECT_NEAR(s->GetY(2), 2, 1e-12);
  EXPECT_NEAR(s->GetY(1), 1, 1e-12);
  s->SetInterpolationMethod(TQyInterpolationMethod::CubicSpline);
  EXPECT_EQ(s->GetMinimumCount(), 6); // the series' pairing, kept as designed
  t.Render();
  // Knots given as sorted keep equal X, which divide by zero (a vector with equal neighbours
  // does not count as ascending, so its knots merge).
  EXPECT_THROW(s->Engine().Fit({0, 1, 1, 2}, {0, 1, 2, 3}, {}, true), EZeroDivide);
  // Exactly 3 points work with both interpolating methods; 5 are too few to smooth.
  threes[1]->Engine().SetInterpolationMethod(TQyInterpolationMethod::CubicSpline);
  for (TQyInterpolation* three : threes) EXPECT_NEAR(three->GetY(1), 0, 1e-12);
  five->SetInterpolationMethod(TQyInterpolationMethod::ApproximativeSpline);
  EXPECT_EQ(QyMessageOf<EMathError>([&] { five->GetY(1); }), "Not enough data points to calculate function");
  // Smoothing and the smoothing spline exclude each other, with a notice.
  QStringList notices;
  QyPrompt::SetHandler([&](const QString& text, TQyMsgDlgType, bool) { notices << text; return TQyModalResult::Ok; });
  five->SetSmoothPoints(true);
  EXPECT_FALSE(five->GetSmoothPoints());
  EXPECT_EQ(notices.size(), 1);
  five->SetElasticityFactor(-1);
  EXPECT_EQ(five->GetElasticityFactor(), 1e-300);
  QyPrompt::SetHandler(nullptr);
}

TEST(QyInterpolationSeries, SlopesAndIntegralsDefaultToASecondYAxis) {
  // Axes of the graph in child order: a horizontal one, a slave, then the one to take.
  QyTestGraph t;
  t.Render(); // the primary axes made
  TQyAxis* axes[3];
  const std::pair<TQyAxisPosition, bool> kinds[] = {
      {TQyAxisPosition::Top, false}, {TQyAxisPosition::Right, true}, {TQyAxisPosition::Right, false}};
  for (int k = 0; k < 3; ++k) {
    axes[k] = new TQyAxis(t.graph);
    axes[k]->SetPosition(kinds[k].first);
    axes[k]->SetIsSlaveAxis(kinds[k].second);
  }
  QyTestGraph alone;
  alone.Render();
  struct Case { TQySeries* series; QyTestGraph* graph; TQyAxis* y; };
  const Case cases[] = {{new TQyInterpolation(t.form.get()), &t, t.Y()},
                        {new TQyDifferential(t.form.get()), &t, axes[2]},
                        {new TQyIntegral(t.form.get()), &t, axes[2]},
                        {new TQyDifferential(alone.form.get()), &alone, alone.Y()}};
  for (const Case& c : cases) {
    c.series->SetYData(c.graph->Vector({0, 1, 4, 9}));
    c.series->SetDefaultAxis(c.graph->graph);
    EXPECT_EQ(c.series->GetXAxis(), c.graph->X()) << c.series->metaObject()->className();
    EXPECT_EQ(c.series->GetYAxis(), c.y) << c.series->metaObject()->className();
    EXPECT_EQ(c.series->Graph(), c.graph->graph) << c.series->metaObject()->className(); // joined
  }
}

TEST(QyMovingAverageSeries, SettingsAndCurve) {
  QyTestGraph t;
  const std::vector<double> x = Range(30, 1);
  const std::vector<double> y = Map(x, [](double v) { return std::fmod(v * 7, 5.0); });
  auto* s = t.Add<TQyMovingAverage>(x, y);
  s->SetN(-0.0);
  s->SetAveragingMethod(TQyAveragingMethod::Simple);
  EXPECT_EQ(s->GetFormula(), "Simple moving average (all values equally weighted)");
  t.Render();
  for (int i = 0; i < 30; ++i) EXPECT_NEAR(s->GetY(x[i]), y[i], 1e-12) << i; // N = 0: through the data
  s->SetN(-3);
  EXPECT_EQ(s->GetN(), 3);
  EXPECT_NEAR(s->GetY(10), (y[7] + y[8] + y[9] + y[10]) / 4, 1e-12);
  s->SetExponentialFactorForN(-2);
  EXPECT_EQ(s->GetExponentialFactorForN(), 1);
}

TEST(QyMovingAverageSeries, DataReadInPlaceGiveTheCollectedCurve) {
  // Stored ascending data are averaged where they stand; the same data through an identity
  // transformation are collected point by point. Both must give one curve, over the whole data
  // and over a calculation range whose ends fall on points (bounds included) and between them.
  const std::vector<double> x = Range(200, 0.25, -10);
  const std::vector<double> y = Map(x, [](double v) { return std::sin(v) + 0.3 * std::cos(7 * v); });
  for (auto [start, stop] : {std::pair{0.0, 0.0}, {-5.0, 20.0}, {-4.9, 19.99}}) {
    QyTestGraph t;
    auto* inPlace = t.Add<TQyMovingAverage>(x, y);
    auto* collected = t.Add<TQyMovingAverage>(x, y);
    collected->YValueTransformation = [](TQySeries*, const TQyTransformEventArgs& a) { return a.Value; };
    for (TQyMovingAverage* s : {inPlace, collected}) {
      s->SetAveragingDirection(TQyAveragingDirection::UpAndDownwards);
      if (start == stop) continue;
      s->SetAutoStart(false), s->SetAutoStop(false);
      s->SetCalculationStart(start), s->SetCalculationStop(stop);
    }
    t.Render();
    ASSERT_GT(inPlace->PointCount(), 100);
    for (double at = -11; at <= 41; at += 0.37)
      EXPECT_EQ(inPlace->GetY(at), collected->GetY(at)) << start << ".." << stop << " at " << at;
  }
}

TEST(QyFunctionSeriesRecord, SettingsSurviveEachMedium) {
  for (int medium = 0; medium < 3; ++medium) {
    QyTestGraph t;
    auto* s = t.Add<TQyInterpolation>({0, 1, 2}, {0, 1, 0});
    s->SetInterpolationMethod(TQyInterpolationMethod::ApproximativeSpline);
    s->SetElasticityFactor(7.5);
    s->SetAutoStart(false);
    s->SetCalculationStart(2.5);
    s->SetCoupleCalculationAndDisplay(false);
    s->SetDisplayStop(9.25);
    s->SetClipYValues(false);
    auto* avg = t.Add<TQyMovingAverage>({0, 1, 2}, {0, 1, 0});
    avg->SetAveragingRangeMethod(TQyAveragingRangeMethod::NasXDistance);
    avg->SetN(3.5);
    auto* r = new TQyInterpolation(t.form.get());
    auto* ravg = new TQyMovingAverage(t.form.get());
    TQyIniFile ini;
    for (auto [from, to] : {std::pair<QObject*, QObject*>{s, r}, {avg, ravg}}) QyRoundTrip(medium, from, to, ini);
    EXPECT_EQ(r->GetInterpolationMethod(), TQyInterpolationMethod::ApproximativeSpline) << medium;
    EXPECT_EQ(r->GetElasticityFactor(), 7.5) << medium;
    EXPECT_FALSE(r->GetAutoStart()) << medium;
    EXPECT_EQ(r->GetCalculationStart(), 2.5) << medium;
    EXPECT_FALSE(r->GetCoupleCalculationAndDisplay()) << medium;
    EXPECT_EQ(r->GetDisplayStop(), 9.25) << medium;
    EXPECT_FALSE(r->GetClipYValues()) << medium;
    EXPECT_EQ(ravg->GetAveragingRangeMethod(), TQyAveragingRangeMethod::NasXDistance) << medium;
    EXPECT_EQ(ravg->GetN(), 3.5) << medium;
  }
}
