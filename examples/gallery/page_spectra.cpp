// Least squares and spectra: a cubic polynomial and a fit over sine and cosine basis functions
// through noisy data, and the amplitude spectrum of a noisy two-tone signal. Try: drag a zoom frame
// around a peak of the spectrum; the line joins the frequencies, one point per frequency.
#include "QyGallery.h"
#include <QGridLayout>
#include <QyGraph2D.h>
#include <QyLeastSquares.h>
#include <QyPointSeries.h>
#include <QySpectrum.h>
#include <QyVectors.h>
#include <cmath>
#include <numbers>
#include <random>

namespace {
// n samples of f(x) + noise at x = span * i / (n - 1).
std::pair<TQyDoubleVector*, TQyDoubleVector*> Sampled(TQyGraph2D* g, int n, double span, double noise,
                                                      const std::function<double(double)>& f) {
  std::mt19937 random(14);
  std::normal_distribution<double> jitter(0, noise);
  auto* x = new TQyDoubleVector(g);
  auto* y = new TQyDoubleVector(g);
  for (int i = 0; i < n; ++i) {
    const double at = span * i / (n - 1);
    x->Add(at);
    y->Add(f(at) + jitter(random));
  }
  return {x, y};
}

void Points(TQyGraph2D* g, TQyCustomDoubleVector* x, TQyCustomDoubleVector* y) {
  auto* points = QyGalleryJoin<TQyPointSeries>(g, x, y, 0xFF808080, 1);
  points->GetLine()->SetVisible(false);
  points->PointSymbol()->SetSize(6);
}

TQyGraph2D* Polynomial() {
  TQyGraph2D* g = QyGallerySeriesGraph("Polynomial of order 3 through noisy data");
  auto [x, y] = Sampled(g, 40, 6, 0.6, [](double v) { return 2 - 3 * v + 1.2 * v * v - 0.12 * v * v * v; });
  Points(g, x, y);
  QyGalleryJoin<TQyPolynomial>(g, x, y, 0xFF1F77B4, 3)->SetOrder(3);
  return g;
}

TQyGraph2D* BasisFit() {
  TQyGraph2D* g = QyGallerySeriesGraph("Least squares over 1, x, sin 2x, cos 2x");
  auto [x, y] = Sampled(g, 60, 8, 0.3, [](double v) { return 0.5 + 0.2 * v + std::sin(2 * v + 0.6); });
  Points(g, x, y);
  auto* fit = QyGalleryJoin<TQyGeneralLinearLeastSquares>(g, x, y, 0xFFD62728, 3);
  fit->SetOrder(3);
  fit->SetBasisFunction([](QObject*, const TQyGeneralLinearFittingArgs& a) {
    const double basis[] = {1, a.X, std::sin(2 * a.X), std::cos(2 * a.X)};
    return basis[a.Index];
  });
  return g;
}

// 1024 samples over 2 s: tones of 40 Hz (amplitude 1) and 95 Hz (0.5) in noise of sigma 0.8.
double TwoTones(double t) {
  return std::sin(2 * std::numbers::pi * 40 * t) + 0.5 * std::sin(2 * std::numbers::pi * 95 * t);
}

TQyGraph2D* Signal() {
  TQyGraph2D* g = QyGallerySeriesGraph("Two tones, 40 Hz and 95 Hz, in noise");
  auto [x, y] = Sampled(g, 1024, 2, 0.8, TwoTones);
  QyGalleryJoin<TQyLineSeries>(g, x, y, 0xFF2CA02C, 1);
  return g;
}

TQyGraph2D* Spectrum() {
  TQyGraph2D* g = QyGallerySeriesGraph("Its amplitude spectrum: peaks near 1 and 0.5");
  auto [x, y] = Sampled(g, 1024, 2, 0.8, TwoTones);
  QyGalleryJoin<TQyDiscreteFourier>(g, x, y, 0xFF9467BD, 1.5);
  return g;
}

QWidget* BuildSpectra() {
  auto* page = new QWidget;
  auto* grid = QyGalleryGrid(page);
  int k = 0;
  for (TQyGraph2D* g : {Polynomial(), BasisFit(), Signal(), Spectrum()}) grid->addWidget(g, k / 2, k % 2), ++k;
  return page;
}
} // namespace

QY_GALLERY_PAGE(spectra, "14-spectra", "Least squares and spectra", BuildSpectra, QSize(1200, 900), 0,
                "Drag a frame around a peak of the spectrum to zoom: each frequency is one point of the line");
