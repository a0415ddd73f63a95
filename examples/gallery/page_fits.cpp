// Fits over noisy data: a free formula fitted by the simplex, its coefficients shown live in the
// title, and a linear regression with its 95 % confidence band.
#include "QyGallery.h"
#include <QyLinearRegression.h>
#include <QyPointSeries.h>
#include <QySimplexFit.h>
#include <QyVectors.h>
#include <cmath>
#include <random>

namespace {
TQyGraph2D* NewGraph(const QString& name, const QString& caption) {
  TQyGraph2D* g = QyGallerySeriesGraph(caption);
  g->setObjectName(name);
  return g;
}

// Noisy samples of f at n evenly spaced X from `from` to `to`.
std::pair<TQyDoubleVector*, TQyDoubleVector*> Noisy(TQyGraph2D* g, int n, double from, double to, double noise,
                                                    const std::function<double(double)>& f) {
  std::mt19937 random(45);
  std::normal_distribution<double> jitter(0, noise);
  auto* x = new TQyDoubleVector(g);
  auto* y = new TQyDoubleVector(g);
  for (int i = 0; i < n; ++i) {
    const double at = from + (to - from) * i / (n - 1);
    x->Add(at);
    y->Add(f(at) + jitter(random));
  }
  return {x, y};
}

template <class S> S* Join(TQyGraph2D* g, const QString& name, std::pair<TQyDoubleVector*, TQyDoubleVector*> data,
                           TQyColor color) {
  auto* s = new S(g);
  s->setObjectName(name);
  s->SetCaption(name);
  s->SetXData(data.first);
  s->SetYData(data.second);
  s->SetXAxis(g->GetPrimaryXAxis());
  s->SetYAxis(g->GetPrimaryYAxis());
  s->GetLine()->SetColor(color);
  return s;
}

void Points(TQyGraph2D* g, std::pair<TQyDoubleVector*, TQyDoubleVector*> data) {
  auto* points = Join<TQyPointSeries>(g, "Data", data, 0xFF808080);
  points->GetLine()->SetVisible(false);
  points->PointSymbol()->SetVisible(true);
  points->PointSymbol()->SetSize(6);
}

TQyGraph2D* Decay() {
  TQyGraph2D* g = NewGraph("FitGraph", "\\bA*Exp(-B*X)+C\\b fitted: A = <%FitGraph.Fit.Coefficients(0);0.000%>, "
                                       "B = <%FitGraph.Fit.Coefficients(1);0.000%>, C = <%FitGraph.Fit.Coefficients(2);0.000%>, "
                                       "r² = <%FitGraph.Fit.Probability;0.0000%>");
  const auto data = Noisy(g, 40, 0, 5, 0.08, [](double x) { return 3 * std::exp(-1.3 * x) + 0.4; });
  Points(g, data);
  auto* fit = Join<TQyFittedLine>(g, "Fit", data, 0xFFD62728);
  fit->GetLine()->SetWidth(2);
  fit->SetExpression("A*Exp(-B*X)+C");
  fit->SetCoefficients({1, 1, 1});
  fit->SetIterations(1000);
  return g;
}

TQyGraph2D* Regression() {
  TQyGraph2D* g = NewGraph("RegressionGraph", "\\bLinear regression\\b Y = <%RegressionGraph.Line.Offset;0.00%> "
                                              "+ <%RegressionGraph.Line.Slope;0.000%> X, r = <%RegressionGraph.Line.Correlation;0.000%>, "
                                              "95 % band");
  const auto data = Noisy(g, 60, -2, 8, 0.8, [](double x) { return 1.7 - 0.6 * x; });
  Points(g, data);
  auto* line = Join<TQyLinearRegression>(g, "Line", data, 0xFF1F77B4);
  line->GetLine()->SetWidth(2);
  line->GetConfidenceIntervalLine()->SetVisible(true);
  line->GetConfidenceIntervalLine()->SetColor(0xFF1F77B4);
  line->GetConfidenceIntervalArea()->SetVisible(true);
  line->GetConfidenceIntervalArea()->SetForeColor(0x301F77B4);
  return g;
}

QWidget* BuildFits() {
  auto* page = new QWidget;
  auto* grid = QyGalleryGrid(page);
  grid->addWidget(Decay(), 0, 0);
  grid->addWidget(Regression(), 1, 0);
  return page;
}
} // namespace

QY_GALLERY_PAGE(fits, "13-fits", "Fits", BuildFits, QSize(1100, 1000), 0,
                "Drag a frame to zoom: the fitted curve and the band are sampled again for every pixel");
