// Calculated curves over noisy data: the three interpolations, moving averages of three
// weightings, and the slope and integral of a smoothing spline. Try: drag a zoom rectangle with the
// left mouse button; the curves are sampled again for every pixel of the zoomed axis.
#include "QyGallery.h"
#include <QGridLayout>
#include <QyGraph2D.h>
#include <QyMovingAverage.h>
#include <QyPointSeries.h>
#include <QyVectors.h>
#include <cmath>
#include <random>

namespace {
TQyGraph2D* NewGraph(const QString& caption) {
  auto* g = new TQyGraph2D;
  g->SetBackColor(0xFFFFFFFF);
  g->SetCaption(caption);
  g->SetCaptionVisible(true);
  g->SetDistanceBorderAxisRight(12);
  g->GetMajorGridHorizontal()->SetVisible(true);
  g->GetMajorGridHorizontal()->SetColor(0xFFE0E0E0);
  g->TestPrimaryAxis();
  return g;
}

// Noisy samples of f at n irregular X from 0 to `span`.
std::pair<TQyDoubleVector*, TQyDoubleVector*> Noisy(TQyGraph2D* g, int n, double span, double noise,
                                                    double (*f)(double)) {
  std::mt19937 random(18);
  std::normal_distribution<double> jitter(0, noise);
  auto* x = new TQyDoubleVector(g);
  auto* y = new TQyDoubleVector(g);
  for (int i = 0; i < n; ++i) {
    const double at = span * (i + 0.4 * std::sin(i * 1.7)) / (n - 1);
    x->Add(at);
    y->Add(f(at) + jitter(random));
  }
  return {x, y};
}

template <class S> S* Join(TQyGraph2D* g, TQyCustomDoubleVector* x, TQyCustomDoubleVector* y, const QString& caption,
                           TQyColor color, float width = 2) {
  auto* s = QyGalleryJoin<S>(g, x, y, color, width);
  s->SetCaption(caption);
  return s;
}

TQyPointSeries* Data(TQyGraph2D* g, TQyCustomDoubleVector* x, TQyCustomDoubleVector* y) {
  auto* points = Join<TQyPointSeries>(g, x, y, "data", 0xFF808080, 1);
  points->GetLine()->SetVisible(false);
  points->PointSymbol()->SetVisible(true);
  points->PointSymbol()->SetSize(6);
  return points;
}

TQyGraph2D* Interpolations() {
  TQyGraph2D* g = NewGraph("Akima (blue), cubic spline (red), smoothing spline (green)");
  auto [x, y] = Noisy(g, 18, 10, 0.15, [](double v) { return std::sin(v) + 0.1 * v; });
  Data(g, x, y);
  Join<TQyInterpolation>(g, x, y, "Akima", 0xFF1F77B4);
  Join<TQyInterpolation>(g, x, y, "cubic", 0xFFD62728)->SetInterpolationMethod(TQyInterpolationMethod::CubicSpline);
  auto* smooth = Join<TQyInterpolation>(g, x, y, "smoothing", 0xFF2CA02C, 3);
  smooth->SetInterpolationMethod(TQyInterpolationMethod::ApproximativeSpline);
  smooth->SetElasticityFactor(20);
  return g;
}

TQyGraph2D* Averages() {
  TQyGraph2D* g = NewGraph("Moving averages of 8 points: simple, linear, exponential");
  auto [x, y] = Noisy(g, 200, 20, 0.4, [](double v) { return std::sin(v / 2) * 2; });
  Data(g, x, y);
  const TQyAveragingMethod methods[] = {TQyAveragingMethod::Simple, TQyAveragingMethod::LinearWeighted,
                                        TQyAveragingMethod::ExponentiallyWeighted};
  const TQyColor colors[] = {0xFF1F77B4, 0xFFD62728, 0xFF2CA02C};
  for (int k = 0; k < 3; ++k) {
    auto* avg = Join<TQyMovingAverage>(g, x, y, QString("average %1").arg(k), colors[k]);
    avg->SetAveragingMethod(methods[k]);
    avg->SetAveragingDirection(TQyAveragingDirection::UpAndDownwards);
    avg->SetN(8);
    avg->SetExponentialFactorForN(0.6);
  }
  return g;
}

TQyGraph2D* SlopeAndIntegral() {
  TQyGraph2D* g = NewGraph("Smoothing spline of cos (blue), its slope (red) and integral (green)");
  auto [x, y] = Noisy(g, 60, 9, 0.05, [](double v) { return std::cos(v); });
  Data(g, x, y);
  const TQyColor colors[] = {0xFF1F77B4, 0xFFD62728, 0xFF2CA02C};
  TQyInterpolation* curves[] = {Join<TQyInterpolation>(g, x, y, "curve", colors[0]),
                                Join<TQyDifferential>(g, x, y, "slope", colors[1]),
                                Join<TQyIntegral>(g, x, y, "integral", colors[2])};
  for (TQyInterpolation* c : curves) {
    c->SetInterpolationMethod(TQyInterpolationMethod::ApproximativeSpline);
    c->SetElasticityFactor(30);
  }
  return g;
}

QWidget* BuildCalculated() {
  auto* page = new QWidget;
  auto* grid = QyGalleryGrid(page);
  grid->addWidget(Interpolations(), 0, 0);
  grid->addWidget(Averages(), 0, 1);
  grid->addWidget(SlopeAndIntegral(), 1, 0, 1, 2);
  return page;
}
} // namespace

QY_GALLERY_PAGE(calculated, "10-calculated", "Calculated curves", BuildCalculated, QSize(1200, 900), 0,
                "Drag a frame to zoom into the noisy data: the curves are sampled again for every pixel");
