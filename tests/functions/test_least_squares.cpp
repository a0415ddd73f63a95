// Least squares over basis functions and the polynomial, against numpy.linalg.lstsq and
// numpy.polyfit (calc/spectrum_reference.inc), and their edge cases.
#include "QyExpect.h"
#include "QyFakeRecorder.h"
#include "QyTestGraph.h"
#include <QDomDocument>
#include <QyExceptions.h>
#include <QyLeastSquares.h>
#include <QyRecordMedia.h>
#include <cmath>
#include <gtest/gtest.h>

namespace {
#include "../calc/spectrum_reference.inc"

std::vector<double> Of(const double* a, int n) { return {a, a + n}; }

template <class S> S* Fit(QyTestGraph& t, int order) {
  auto* s = t.Add<S>(Of(LsqX, 25), Of(LsqY, 25));
  s->SetWeight(t.Vector(Of(LsqW, 25)));
  s->SetOrder(order);
  return s;
}

double Basis(double x, int i) {
  switch (i) {
  case 0: return 1;
  case 1: return std::sin(x);
  case 2: return std::cos(x);
  default: return x;
  }
}
} // namespace

// The statistics are weighted; QRel divides by (sum of weights - order), not by the textbook's
// n - (order + 1), and DeltaCoefficients are not scaled by the residual variance.
TEST(QyLeastSquares, MatchesNumpyWithWeights) {
  QyTestGraph t;
  auto* poly = Fit<TQyPolynomial>(t, 3);
  auto* general = Fit<TQyGeneralLinearLeastSquares>(t, 3);
  general->SetBasisFunction([&](QObject* sender, const TQyGeneralLinearFittingArgs& a) {
    EXPECT_EQ(sender, general);
    return Basis(a.X, a.Index);
  });
  t.Render();
  const struct { TQyCustomGeneralLinearLeastSquares* s; const double *coeffs, *delta, *stats; } cases[] = {
      {poly, PolyCoeffs, PolyDelta, PolyStats}, {general, BasisCoeffs, BasisDelta, BasisStats}};
  for (const auto& c : cases) {
    for (int i = 0; i < 4; ++i) {
      EXPECT_NEAR(c.s->Coefficients(i), c.coeffs[i], 1e-10) << i;
      EXPECT_NEAR(c.s->DeltaCoefficient(i), c.delta[i], 1e-10) << i;
    }
    const double stats[] = {c.s->AverageX(), c.s->AverageY(), c.s->VarianceX(), c.s->VarianceY(),
                            c.s->Probability(), c.s->QRel(), c.s->SumOfResiduals()};
    for (int i = 0; i < 7; ++i) EXPECT_NEAR(stats[i], c.stats[i], 1e-10 * std::fabs(c.stats[i])) << i;
    const double x = 1.25;
    double y = 0;
    for (int i = 0; i < 4; ++i) y += c.coeffs[i] * (c.s == poly ? std::pow(x, i) : Basis(x, i));
    EXPECT_NEAR(c.s->GetY(x), y, 1e-9);
  }
}

TEST(QyLeastSquares, DegenerateInputRaisesOrStaysFinite) {
  const char* notEnough = "Not enough data points to calculate function";
  const struct { std::vector<double> x, y; int order; const char* error; } cases[] = {
      {{0, 1, 3}, {1, 2, 10}, 2, nullptr},                  // three points: the exact parabola
      {{0, 1, 1}, {1, 2, 10}, 2, notEnough},                // two of three at one X
      {{0, 1, 2, 3}, {1, 2, 10, 3}, 4, notEnough},          // fewer points than coefficients
      {{2, 2, 2, 2}, {1, 2, 3, 4}, 2, nullptr},             // all X equal: singular values drop out
      {{0, 1, 2, 3, 4}, {1, NAN, 5, 10, 17}, 2, nullptr},   // a Y that is no number is a gap
  };
  for (const auto& c : cases) {
    QyTestGraph t;
    auto* s = t.Add<TQyPolynomial>(c.x, c.y);
    s->SetOrder(c.order);
    QString message = "none";
    s->OnCalculationError = [&](QObject*, const std::exception& e) { message = e.what(); };
    t.Render();
    EXPECT_EQ(message, c.error ? c.error : "none") << c.x[1];
    if (c.error) continue;
    for (int i = 0; i <= c.order; ++i) EXPECT_TRUE(std::isfinite(s->Coefficients(i))) << i;
  }
  QyTestGraph t;
  auto* parabola = t.Add<TQyPolynomial>({0, 1, 3}, {1, 2, 10}); // y = 1 + 0 x + x^2
  t.Render();
  const double exact[] = {1, 0, 1};
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(parabola->Coefficients(i), exact[i], 1e-12);
  auto* gap = t.Add<TQyPolynomial>({0, 1, 2, 3, 4}, {1, NAN, 5, 10, 17}); // y = 1 + x^2 elsewhere
  t.Render();
  EXPECT_NEAR(gap->Coefficients(2), 1, 1e-12);
  EXPECT_NEAR(gap->Probability(), 1, 1e-12);
}

TEST(QyLeastSquares, StatisticsOfSimpleData) {
  QyTestGraph t;
  auto* flat = t.Add<TQyPolynomial>({0, 1, 2, 3}, {4, 4, 4, 4});
  auto* bent = t.Add<TQyPolynomial>({0, 1, 2, 3}, {0, 1, 0, 1}); // no parabola through these
  t.Render();
  EXPECT_EQ(flat->VarianceY(), 0);
  EXPECT_EQ(flat->Probability(), 1.0);
  EXPECT_LT(bent->Probability(), 1);
  EXPECT_NEAR(bent->AverageX(), 1.5, 1e-15);
  EXPECT_NEAR(bent->VarianceX(), 5.0 / 3, 1e-14); // sum of squares 5 over n - 1
}

TEST(QyLeastSquares, OrderIndexAndBasisRules) {
  QyTestGraph t;
  auto* poly = t.Add<TQyPolynomial>({0, 1, 2}, {0, 1, 4});
  auto* general = t.Add<TQyGeneralLinearLeastSquares>({0, 1, 2}, {0, 1, 4});
  EXPECT_EQ(poly->GetOrder(), 2);
  EXPECT_EQ(general->GetMinimumCount(), 3);
  QyFakeRecorder stack;
  poly->SetUndoStack(&stack);
  poly->SetOrder(1); // a polynomial stays at 2 at least
  EXPECT_EQ(poly->GetOrder(), 2);
  poly->SetOrder(3);
  ASSERT_EQ(stack.Pushes.size(), 1u);
  EXPECT_EQ(stack.Pushes[0].caption, "General linear least squares order");
  poly->SetUndoStack(nullptr);
  for (int i = 0; i <= 3; ++i) EXPECT_EQ(poly->Coefficients(i), 1.0); // all 1 until calculated
  general->SetOrder(-3);
  EXPECT_EQ(general->GetOrder(), 0);
  const char* outOfRange = "General Linear Least Squares: Index of variable out of range";
  EXPECT_EQ(QyMessageOf<EMathError>([&] { poly->Coefficients(4); }), outOfRange);
  EXPECT_EQ(QyMessageOf<EMathError>([&] { poly->DeltaCoefficient(-1); }), outOfRange);
  EXPECT_EQ(QyMessageOf<EMathError>([&] { general->Calculate(); }), "No BasisFunction defined");
  TQyGeneralLinearLeastSquaresCalculation alone; // without a series the basis is the powers of X
  alone.XData = t.Vector({0, 1, 2, 3});
  alone.YData = t.Vector({1, 3, 5, 7});
  alone.SetOrder(1);
  alone.Calculate();
  EXPECT_NEAR(alone.Coeffs[1], 2, 1e-12);
}

TEST(QyLeastSquares, Formulas) {
  QyTestGraph t;
  auto* poly = t.Add<TQyPolynomial>({0, 1, 2}, {0, 1, 4});
  const struct { int order; const char* formula; } cases[] = {
      {2, "Y=a+bX+cX\\+2\\+"},
      {5, "Y=a+bX+cX\\+2\\++dX\\+3\\++eX\\+4\\++fX\\+5\\+"},
      {6, "Y=a+bX+cX\\+2\\++dX\\+3\\++eX\\+4\\++...+fX\\+6\\+"},
      {7, "Y=a+bX+cX\\+2\\++dX\\+3\\++eX\\+4\\++...+gX\\+7\\+"},
  };
  for (const auto& c : cases) {
    poly->SetOrder(c.order);
    EXPECT_EQ(poly->GetFormula(), c.formula) << c.order;
  }
  TQyGeneralLinearLeastSquares general;
  EXPECT_EQ(general.GetFormula(), QString::fromUtf8("Y=\u03A3\\-i\\-a\\-i\\-Xf\\-i\\-(X)"));
}

TEST(QyLeastSquaresRecord, OrderUnderItsOwnNode) {
  QyTestGraph t;
  auto* poly = t.Add<TQyPolynomial>({0, 1, 2}, {0, 1, 4});
  auto* general = t.Add<TQyGeneralLinearLeastSquares>({0, 1, 2}, {0, 1, 4});
  poly->SetOrder(5);
  general->SetOrder(7);
  const struct { TQyCustomGeneralLinearLeastSquares* from; const char* node; } cases[] = {
      {poly, "Polynomial"}, {general, "GeneralLinearLeastSquares"}};
  for (const auto& c : cases) {
    QDomDocument dom;
    QDomElement e = dom.createElement("Series");
    QyWriteToNode(c.from, e);
    const QDomElement node = e.elementsByTagName(c.node).at(0).toElement();
    ASSERT_FALSE(node.isNull()) << c.node;
    EXPECT_EQ(node.attribute("Order", node.firstChildElement("Order").text()), QString::number(c.from->GetOrder()));
  }
}
