// The amplitude and phase spectrum series against numpy.fft (calc/spectrum_reference.inc): the
// positive exponent negates numpy's phases, and amplitudes are divided by N div 2.
#include "QyTestGraph.h"
#include <QySpectrum.h>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {
#include "../calc/spectrum_reference.inc"

std::vector<double> Times(int n, double dt) {
  std::vector<double> t(n);
  for (int i = 0; i < n; ++i) t[i] = i * dt;
  return t;
}
} // namespace

// 768 = 3 * 2^8 samples: eight halvings and a factor 3. The transform's bound (see the kernel's
// test) is 10 * N * 2^-24.5 * sum |y|; amplitudes divide it by N/2.
TEST(QyDiscreteFourier, NoisyTwoToneMatchesNumpy) {
  QyTestGraph t;
  const int n = 768;
  auto* s = t.Add<TQyDiscreteFourier>(Times(n, 0.01), std::vector<double>(ToneY, ToneY + n));
  t.Render();
  TQyDoubleVector& amplitude = *s->Engine().Amplitude();
  TQyDoubleVector& phase = *s->Engine().Phase();
  ASSERT_EQ(amplitude.GetCount(), n / 2);
  double sum = 0;
  for (double y : ToneY) sum += std::fabs(y);
  const double tol = 10 * n * std::pow(2.0, -24.5) * sum / (n / 2);
  for (int k = 0; k < n / 2; ++k) {
    EXPECT_NEAR(amplitude.GetValue(k), ToneAmplitude[k], tol) << k;
    if (ToneAmplitude[k] > 0.05) {
      EXPECT_NEAR(phase.GetValue(k), TonePhase[k], tol / ToneAmplitude[k]) << k;
    }
  }
  EXPECT_NEAR(amplitude.GetValue(96), 1.2, 0.1); // 12.5 Hz over 7.68 s: 96 whole cycles
  // The frequency step is 1 / (Stop - Start): the span of the X values, not N times their step.
  EXPECT_DOUBLE_EQ(s->Engine().Delta, 1 / ((n - 1) * 0.01));
  EXPECT_EQ(s->LimitMinX(), 0);
  EXPECT_DOUBLE_EQ(s->LimitMaxX(), s->Engine().Frequency(n / 2));
  EXPECT_EQ(s->PointCount(), n / 2);
  const double f = s->Engine().Frequency(96) + s->Engine().Delta / 4; // a quarter to the next
  EXPECT_NEAR(s->GetY(f), 0.75 * ToneAmplitude[96] + 0.25 * ToneAmplitude[97], tol);
}

TEST(QyDiscreteFourier, ConstantsResamplingAndFailures) {
  const struct { std::vector<double> x, y; int amplitudes; double bin0; const char* error; } cases[] = {
      {{0, 1, 2, 3}, {-1.5, -1.5, -1.5, -1.5}, 2, 3, nullptr}, // twice the value; pi reads 0
      {{}, {2, 2, 2, 2, 2}, 2, 5, nullptr},                    // the indexer: 5 div 2
      {{3, 2, 1, 0}, {1, 1, 1, 1}, 512, 2, nullptr},          // not ascending: 1024 Akima samples
      {{0, 1, 2, NAN, 4, 5}, {1, 1, 1, 1, 1, 1}, 512, 2, nullptr}, // X no number: not ascending
      {{0, 1, 2, 3}, {1, NAN, 1, 1}, 1, 3, nullptr},             // Y no number: a gap, 3 div 2
      {{5, 5, 5}, {1, 2, 3}, 0, 0, "Not enough data points to calculate function"}, // merged knots
  };
  for (const auto& c : cases) {
    QyTestGraph t;
    auto* s = t.Add<TQyDiscreteFourier>(c.x, c.y);
    QString message = "none";
    s->OnCalculationError = [&](QObject*, const std::exception& e) { message = e.what(); };
    t.Render();
    TQyDoubleVector& amplitude = *s->Engine().Amplitude();
    EXPECT_EQ(message, c.error ? c.error : "none") << &c - cases;
    ASSERT_EQ(amplitude.GetCount(), c.amplitudes) << &c - cases;
    if (c.amplitudes == 0) continue;
    EXPECT_NEAR(amplitude.GetValue(0), c.bin0, 1e-6) << &c - cases;
    EXPECT_EQ(s->Engine().Phase()->GetValue(0), 0) << &c - cases; // real and positive, or pi
  }
  // Ascending X that a transformation maps onto one value leave no frequency step.
  QyTestGraph t;
  auto* s = t.Add<TQyDiscreteFourier>({0, 1, 2, 3}, {1, 2, 3, 4});
  s->XValueTransformation = [](TQySeries*, const TQyTransformEventArgs&) { return 7.0; };
  QString message;
  s->OnCalculationError = [&](QObject*, const std::exception& e) { message = e.what(); };
  t.Render();
  EXPECT_EQ(message, "Floating point division by zero");
  EXPECT_EQ(s->PointCount(), 0);
}

TEST(QyDiscreteFourier, PhaseSeriesAndFormula) {
  QyTestGraph t;
  auto* s = t.Add<TQyDiscreteFourier>(Times(16, 0.5), std::vector<double>(ToneY, ToneY + 16));
  TQyChildSeries* phase = s->Phase();
  EXPECT_EQ(phase->objectName(), "Phase");
  EXPECT_FALSE(phase->GetVisible());
  EXPECT_EQ(phase->GetLine()->GetColor(), 0xFF008000u);
  EXPECT_FALSE(s->GetClipYValues());
  EXPECT_EQ(phase->GetXAxis(), t.X());
  EXPECT_EQ(phase->GetYAxis(), t.Y());
  EXPECT_EQ(phase->GetYData(), s->Engine().Phase());
  phase->SetVisible(true);
  t.Render();
  EXPECT_EQ(phase->PointCount(), 8);
  EXPECT_DOUBLE_EQ(phase->XValueTransformation(phase, {0, 3}), 3 / 7.5); // the frequency of index 3
  EXPECT_EQ(s->GetFormula(), QString::fromUtf8("Y\\-k\\- = \u03A3y\\-n\\- e\\+(-2\u03C0i/n kn)"));
}
