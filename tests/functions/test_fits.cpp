// The fitted line and the linear regression against scipy (tests/calc/gen_fit_reference.py), their
// rules where they differ from the textbook, their failures, undo captions and documents.
#include "QyExpect.h"
#include "QyFakeRecorder.h"
#include "QyPixelProbe.h"
#include "QyRoundTrip.h"
#include "QyTestGraph.h"
#include <QyExceptions.h>
#include <QyIniFile.h>
#include <QyLinearRegression.h>
#include <QyRecordMedia.h>
#include <QyServices.h>
#include <QySimplexFit.h>
#include <QBuffer>
#include <QDomDocument>
#include <cmath>
#include <gtest/gtest.h>

namespace {
#include "../calc/fit_reference.inc"

template <size_t N> std::vector<double> V(const double (&a)[N]) { return {a, a + N}; }

// What a calculation reported, or "" when it ran through.
template <class S> QString Reported(QyTestGraph& t, S* s) {
  QString message;
  s->OnCalculationError = [&](QObject*, const std::exception& e) { message = e.what(); };
  t.Render();
  s->OnCalculationError = nullptr;
  return message;
}

} // namespace

// ---- the fitted line

TEST(QyFittedLine, ReachesTheLeastSquaresOfScipy) {
  QyTestGraph t;
  auto* s = t.Add<TQyFittedLine>(V(FitX), V(FitY));
  s->SetWeight(t.Vector(V(FitW)));
  s->SetExpression("A*Exp(-B*X)+C");
  s->SetCoefficients({FitStart[0], FitStart[1], FitStart[2]});
  s->SetIterations(1500);
  EXPECT_EQ(Reported(t, s), "");
  // curve_fit and Nelder-Mead agree; so does our simplex, to its own last step.
  for (int k = 0; k < 3; ++k) {
    EXPECT_NEAR(s->GetCoeff(k), FitCurveFit[k], 1e-5) << k;
    EXPECT_NEAR(FitNelderMead[k], FitCurveFit[k], 1e-6) << k;
  }
  EXPECT_NEAR(s->GetSumOfResiduals(), FitMinimum[0], 1e-10);
  const double statistics[] = {s->GetAverageX(), s->GetAverageY(), s->GetVarianceX(), s->GetVarianceY(), s->Getr2()};
  for (int k = 0; k < 5; ++k) EXPECT_NEAR(statistics[k], FitStatistics[k], 1e-9) << k;
  EXPECT_NEAR(s->GetY(1.0), FitCurveFit[0] * std::exp(-FitCurveFit[1]) + FitCurveFit[2], 1e-5);
  EXPECT_EQ(s->GetFormula(), "A*Exp(-B*X)+C");
}

TEST(QyFittedLine, ExpressionGivesTheOrder) {
  QyTestGraph t;
  auto* s = t.Add<TQyFittedLine>({1, 2, 3}, {1, 2, 3});
  const struct { const char* text; int order; } orders[] = {
      {"A*X+B", 2}, {"C*X", 3}, {"Sin(A*X)", 1}, {"p + x * a", 16}, {"Exp(X)", 0}};
  for (const auto& o : orders) {
    s->SetOrder(-1);
    s->SetExpression(o.text);
    EXPECT_EQ(s->GetOrder(), o.order) << o.text;
  }
  // New coefficients start at 0.5; with no iterations they stay, and the curve uses them.
  s->SetExpression("C*X");
  EXPECT_EQ(s->GetCoefficients(), QList<double>({0.5, 0.5, 0.5}));
  s->SetIterations(0);
  EXPECT_EQ(Reported(t, s), "");
  EXPECT_EQ(s->GetCoefficients(), QList<double>({0.5, 0.5, 0.5}));
  EXPECT_DOUBLE_EQ(s->GetY(4), 2.0);
  // Bad text raises when it is set, and changes nothing.
  EXPECT_EQ(QyMessageOf<EMathError>([&] { s->SetExpression("A*Sin(B)"); }), "Expression must contain the independent variable X!");
  EXPECT_EQ(QyMessageOf<EMathError>([&] { s->SetExpression("2*X"); }), "Expression must contain a variable a..p!");
  EXPECT_EQ(s->GetExpression(), "C*X");
  EXPECT_EQ(QyMessageOf<EMathError>([&] { s->GetCoeff(3); }), "Fitted line: Index of variable out of range");
}

TEST(QyFittedLine, FailuresAreReported) {
  const double nan = std::nan("");
  const struct {
    const char* what;
    const char* expression;
    std::vector<double> y;
    bool covariance;
    const char* message;
  } cases[] = {
      {"nothing to fit", "", {1, 2, 3}, false, "No FittingFunction or Expression defined"},
      {"no coefficient", "Exp(X)", {1, 2, 3}, false, "SimplexFit: no order set!"},
      {"more coefficients than points", "A+B*X+C*X^2+D*X^3", {1, 2, 3}, false, "Not enough data points to calculate function"},
      {"no number in the data", "A*X", {1, nan, 3}, false, "Invalid floating point operation"},
      {"a formula that overflows", "Exp(A*X*1000)", {1, 2, 3}, false, "Floating point overflow"},
      {"the area form on one line of Y", "A*X", {2, 2, 2}, true, "SimplexFit: DoCovariance, reciprocal indefinite!"},
  };
  for (const auto& c : cases) {
    QyTestGraph t;
    auto* s = t.Add<TQyFittedLine>({1, 2, 3}, c.y);
    if (*c.expression) s->SetExpression(c.expression);
    s->SetDoCovariance(c.covariance);
    EXPECT_EQ(Reported(t, s), c.message) << c.what;
    EXPECT_EQ(s->PointCount(), 0) << c.what;
  }
  TQySimplexFit bare;
  EXPECT_EQ(QyMessageOf<EMathError>([&] { bare.GetY(1); }), "No FittingFunction or Expression defined");
}

TEST(QyFittedLine, RoundsEventsAndEnds) {
  QyTestGraph t;
  auto* s = t.Add<TQyFittedLine>({1, 2, 3, 4, 10}, {1, 2, 3, 4, 30});
  s->SetExpression("A*X");
  int rounds = 0, corners = 0;
  s->SetOnIteration([&](QObject* sender) { EXPECT_EQ(sender, s); ++rounds; });
  s->SetOnNewCorner([&](QObject*, std::span<const double> c) { EXPECT_EQ(c.size(), 1u); ++corners; });
  // A start of 0 becomes 1, which fits the first four points exactly: the range excludes the
  // fifth, but the plain measure counts it, so the fit moves on.
  s->SetCoefficients({0});
  s->SetAutoStop(false);
  s->SetCalculationStop(5);
  s->SetIterations(200);
  t.Render();
  EXPECT_EQ(rounds, 201); // the budget gives one round more
  EXPECT_NEAR(s->GetCoeff(0), (1 + 4 + 9 + 16 + 300.0) / (1 + 4 + 9 + 16 + 100.0), 1e-8); // all five points
  // A perfect fit ends at once with a zero error; a stop in the event ends after that round.
  s->SetAutoStop(true);
  s->GetYData()->SetValue(4, 10);
  s->SetCoefficients({0});
  rounds = 0;
  t.Render();
  EXPECT_EQ(rounds, 1);
  EXPECT_EQ(s->GetSumOfResiduals(), 0);
  s->SetCoefficients({5});
  s->SetOnIteration([&](QObject*) { ++rounds, s->Engine().StopIterations(); });
  rounds = 0;
  t.Render();
  EXPECT_EQ(rounds, 1);
  // The application's function replaces the expression: one coefficient, as a square.
  s->SetFittingFunction([](QObject*, const TQyFittingFunctionArgs& a) { return a.Coefficients[0] * a.Coefficients[0] * a.X; });
  s->SetOnIteration(nullptr);
  s->SetCoefficients({3});
  t.Render();
  EXPECT_NEAR(std::fabs(s->GetCoeff(0)), 1, 1e-6);
}

TEST(QyFittedLine, AreaFormFitsALine) {
  QyTestGraph t;
  auto* s = t.Add<TQyFittedLine>({0, 1, 2, 3, 4, 5}, {1, 3, 5, 7, 9, 11}); // 2x + 1, one rising run
  s->SetExpression("A*X+B");
  s->SetCoefficients({1.5, 0.5});
  s->SetDoCovariance(true);
  s->SetIterations(400);
  EXPECT_EQ(Reported(t, s), "");
  EXPECT_NEAR(s->GetCoeff(0), 2, 1e-3);
  EXPECT_NEAR(s->GetCoeff(1), 1, 1e-3);
  EXPECT_NEAR(s->Getr2(), 1, 1e-3); // 1 - area / sqrt(Qxx Qyy)
}

TEST(QyFittedLine, UndoCaptionsAndDocuments) {
  QyTestGraph t;
  auto* s = t.Add<TQyFittedLine>({0, 1, 2}, {0, 1, 0});
  QyFakeRecorder stack;
  s->SetUndoStack(&stack);
  s->SetExpression("A*X+B");
  s->SetIterations(77);
  s->SetDoCovariance(true);
  s->SetCoefficients({1.25, -2});
  s->SetOrder(3);
  s->SetUndoStack(nullptr);
  const char* captions[] = {"Fitted line expression", "Fitted line iterations", "Fitting using covariance/variance",
                            "Fitted line coefficients", "Fitted line coefficients"};
  ASSERT_EQ(stack.Pushes.size(), 5u);
  for (int k = 0; k < 5; ++k) EXPECT_EQ(stack.Pushes[k].caption, captions[k]) << k;
  s->SetOrder(2);
  for (int medium = 0; medium < 3; ++medium) {
    auto* r = new TQyFittedLine(t.form.get());
    TQyIniFile ini;
    QyRoundTrip(medium, s, r, ini);
    EXPECT_EQ(r->GetExpression(), "A*X+B") << medium;
    EXPECT_EQ(r->GetIterations(), 77) << medium;
    EXPECT_TRUE(r->GetDoCovariance()) << medium;
    EXPECT_EQ(r->GetCoefficients(), QList<double>({1.25, -2})) << medium;
    if (medium == 2) {
      EXPECT_EQ(ini.ReadString("Section", "S.Order", {}), "2");
    }
  }
  auto* empty = new TQyFittedLine(t.form.get());
  TQyIniFile ini;
  QyWriteToIni(empty, ini, "Section", "S");
  EXPECT_EQ(ini.ReadString("Section", "S.Coefficients", {}), "None");
}

// ---- the linear regression

TEST(QyLinearRegression, MatchesLinregressAndOurBand) {
  QyTestGraph t;
  auto* s = t.Add<TQyLinearRegression>(V(RegX), V(RegY));
  s->GetConfidenceIntervalArea()->SetVisible(true);
  EXPECT_EQ(Reported(t, s), "");
  EXPECT_NEAR(s->GetSlope(), RegLinregress[0], 1e-12);
  EXPECT_NEAR(s->GetOffset(), RegLinregress[1], 1e-12);
  EXPECT_NEAR(s->GetR(), RegLinregress[2], 1e-12);
  EXPECT_NEAR(s->Getr2(), RegLinregress[2] * RegLinregress[2], 1e-12);
  EXPECT_NEAR(s->GetDeltaSlope(), RegLinregress[3], 1e-12);
  EXPECT_NEAR(s->GetDeltaOffset(), RegLinregress[4], 1e-12);
  // The band uses the spread of Y about its mean and the unsquared t of the table row at the
  // point count: wider than the textbook band, on purpose.
  for (int k = 0; k < 4; ++k) {
    EXPECT_NEAR(s->Engine().Confidence(RegProbe[k]), RegBand[k], 1e-12) << k;
    EXPECT_GT(RegBand[k], RegBandTextbook[k] * 1.2) << k;
  }
  EXPECT_EQ(s->GetFormula(), "Y=a+b(X)");
  // The area runs along the upper edge, back along the lower one, and is closed.
  const int n = s->UpperConfidencePoints().Count();
  EXPECT_GT(n, 100);
  EXPECT_EQ(s->ConfidenceAreaPoints().Count(), 2 * n + 1);
}

TEST(QyLinearRegression, BandIsFilledInsideTheDataAreaOnly) {
  QyTestGraph t;
  auto* s = t.Add<TQyLinearRegression>(V(RegX), V(RegY));
  s->GetConfidenceIntervalArea()->SetVisible(true);
  s->GetConfidenceIntervalArea()->SetForeColor(0xFF00C000);
  const QImage image = t.Render();
  // The band's samples run a tenth of the range beyond the data area on each side.
  const QRect box = QyProbe::BoundsOf(image, QColor(0, 0xC0, 0));
  ASSERT_FALSE(box.isEmpty());
  const QPointF first = s->UpperConfidencePoints()[0];
  EXPECT_LT(first.x(), box.left() - 10);
  EXPECT_NEAR(box.left(), t.X()->NumberToWorld(t.X()->GetStart()), 2);
  EXPECT_NEAR(box.right(), t.X()->NumberToWorld(t.X()->GetStop()), 2);
}

TEST(QyLinearRegression, WeightsAndFixedOffset) {
  QyTestGraph t;
  auto* weighted = t.Add<TQyLinearRegression>(V(RegX), V(RegY));
  weighted->SetWeight(t.Vector(V(RegW)));
  auto* fixed = t.Add<TQyLinearRegression>(V(RegX), V(RegY));
  fixed->SetFixedOffset(true);
  fixed->SetOffset(2);
  t.Render();
  EXPECT_NEAR(weighted->GetSlope(), RegWeighted[0], 1e-12);
  EXPECT_NEAR(weighted->GetOffset(), RegWeighted[1], 1e-12);
  EXPECT_NEAR(fixed->GetSlope(), RegFixedSlope[0], 1e-12);
  EXPECT_EQ(fixed->GetOffset(), 2);
  EXPECT_EQ(fixed->GetDeltaOffset(), 0); // the imposed offset has no error
  EXPECT_EQ(fixed->GetR(), 0);
}

TEST(QyLinearRegression, DegenerateDataIsReported) {
  const double nan = std::nan("");
  const struct {
    const char* what;
    std::vector<double> x, y;
    const char* message;
    double slope;
  } cases[] = {
      // The line runs through both; the standard errors divide 0 by 0.
      {"two points", {1, 3}, {2, 6}, "Invalid floating point operation", 2},
      {"one X", {2, 2, 2}, {1, 2, 3}, "Invalid floating point operation", 1.7976931348623157e308},
      {"no number", {1, 2, 3}, {1, nan, 3}, "Invalid floating point operation", nan},
  };
  for (const auto& c : cases) {
    QyTestGraph t;
    auto* s = t.Add<TQyLinearRegression>(c.x, c.y);
    EXPECT_EQ(Reported(t, s), c.message) << c.what;
    EXPECT_EQ(s->PointCount(), 0) << c.what;
    if (!std::isnan(c.slope)) {
      EXPECT_EQ(s->GetSlope(), c.slope) << c.what;
    }
  }
  QyTestGraph t;
  auto* one = t.Add<TQyLinearRegression>({1, 2, 3}, {1, 2, 3});
  one->SetAutoStart(false);
  one->SetCalculationStart(2.5);
  EXPECT_EQ(Reported(t, one), "Not enough data points to calculate function");
  auto* same = t.Add<TQyLinearRegression>({2, 2, 2}, {1, 2, 3});
  Reported(t, same);
  EXPECT_EQ(same->GetR(), 1.0);
}

TEST(QyLinearRegression, PowerLawOnLogAxes) {
  QyTestGraph t;
  std::vector<double> x, y;
  for (double v : {1.0, 2.0, 5.0, 10.0, 30.0, 100.0}) x.push_back(v), y.push_back(3 * v * v);
  auto* s = t.Add<TQyLinearRegression>(x, y);
  QStringList notices;
  QyPrompt::SetHandler([&](const QString& text, TQyMsgDlgType, bool) { notices << text; return TQyModalResult::Ok; });
  for (TQyAxis* a : {t.X(), t.Y()}) {
    a->SetScaling(TQyAxisScaling::Log);
    a->SetLogToNormalScalingLevel(1);
  }
  Reported(t, s); // an exact line: the standard errors may divide by no residuals
  QyPrompt::SetHandler(nullptr);
  EXPECT_EQ(notices, QStringList({"Log X-Axis with regression and LogToNormalScalingLevel>0 not possible\rSetting to 0",
                                  "Log Y-Axis with regression and LogToNormalScalingLevel>0 not possible\rSetting to 0"}));
  EXPECT_EQ(t.X()->GetLogToNormalScalingLevel(), 0);
  EXPECT_NEAR(s->GetSlope(), 2, 1e-12);
  EXPECT_NEAR(s->GetOffset(), std::log10(3.0), 1e-12);
  EXPECT_NEAR(s->GetY(7), 147, 1e-9);
  EXPECT_EQ(s->GetFormula(), "lg(Y)=a+b(lg(X))");
}

TEST(QyLinearRegression, OffsetAsksForTheFixedOffset) {
  QyTestGraph t;
  auto* s = t.Add<TQyLinearRegression>({0, 1, 2}, {0, 1, 3});
  QStringList asked;
  TQyModalResult answer = TQyModalResult::No;
  QyPrompt::SetHandler([&](const QString& text, TQyMsgDlgType, bool) { asked << text; return answer; });
  s->SetOffset(4); // no: dropped
  EXPECT_EQ(s->GetOffset(), 0);
  EXPECT_FALSE(s->GetFixedOffset());
  answer = TQyModalResult::Yes;
  QyFakeRecorder stack;
  s->SetUndoStack(&stack);
  s->SetOffset(4);
  s->SetUndoStack(nullptr);
  QyPrompt::SetHandler(nullptr);
  EXPECT_EQ(asked.size(), 2);
  EXPECT_EQ(asked[0], "The offset should only be set with fixed offset\rDou You want to set it to True?");
  EXPECT_TRUE(s->GetFixedOffset());
  EXPECT_EQ(s->GetOffset(), 4);
  ASSERT_EQ(stack.Pushes.size(), 2u);
  EXPECT_EQ(stack.Pushes[0].caption, "Linear regression fixed offset");
  EXPECT_EQ(stack.Pushes[1].caption, "Linear regression offset");
}

TEST(QyLinearRegression, Documents) {
  for (int medium = 0; medium < 3; ++medium) {
    QyTestGraph t;
    auto* s = t.Add<TQyLinearRegression>({0, 1, 2}, {0, 1, 3});
    s->SetFixedOffset(true);
    s->TakeOffset(2.5);
    s->GetConfidenceIntervalLine()->SetVisible(true);
    s->GetConfidenceIntervalArea()->SetVisible(true);
    auto* r = new TQyLinearRegression(t.form.get());
    TQyIniFile ini;
    QyRoundTrip(medium, s, r, ini);
    EXPECT_TRUE(r->GetFixedOffset()) << medium;
    EXPECT_EQ(r->GetOffset(), 2.5) << medium;
    EXPECT_TRUE(r->GetConfidenceIntervalLine()->GetVisible()) << medium;
    EXPECT_TRUE(r->GetConfidenceIntervalArea()->GetVisible()) << medium;
    EXPECT_EQ(r->GetConfidenceIntervalLine()->GetDashStyle(), QyGDI::TDashStyle(1)) << medium;
  }
  // In a stream the offset stands only when it is fixed: 8 bytes fewer without.
  QyTestGraph t;
  auto* s = t.Add<TQyLinearRegression>({0, 1}, {0, 1});
  QByteArray bytes[2];
  for (int fixed = 0; fixed < 2; ++fixed) {
    s->SetFixedOffset(fixed);
    QBuffer out(&bytes[fixed]);
    out.open(QIODevice::WriteOnly);
    QyWriteToStream(s, &out);
  }
  EXPECT_EQ(bytes[1].size() - bytes[0].size(), 8);
}
