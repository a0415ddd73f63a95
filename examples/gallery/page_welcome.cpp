// The first page: two graphs stacked on one time axis, in motion. Below, a travelling wave in
// the band of its envelope with measured samples and their error bars; above, the rate of change
// of the wave. Both zoom and pan together, and Save as... writes them as one picture.
#include "QyGallery.h"
#include <QTimer>
#include <QVBoxLayout>
#include <QyGraph2D.h>
#include <QyPointSeries.h>
#include <QyRegisters.h>
#include <QyVectors.h>
#include <cmath>

namespace {
constexpr int Points = 801;
constexpr double Span = 40;   // seconds on the time axis
constexpr double Omega = 1.3; // radians per second

double Envelope(double t) { return 1.2 + 0.8 * std::sin(2 * M_PI * t / Span); }
double Wave(double t, double phase) { return Envelope(t) * std::sin(Omega * t - phase); }
double Rate(double t, double phase) {
  const double dEnvelope = 0.8 * 2 * M_PI / Span * std::cos(2 * M_PI * t / Span);
  return dEnvelope * std::sin(Omega * t - phase) + Envelope(t) * Omega * std::cos(Omega * t - phase);
}

TQyGraph2D* NewGraph(const QString& name, const QString& caption) {
  auto* g = new TQyGraph2D;
  g->setObjectName(name);
  g->SetBackColor(0xFFFFFFFF);
  g->SetDataAreaColor(0xFFF8FAFD);
  g->SetCaption(caption);
  g->SetCaptionVisible(true);
  g->SetCaptionDistanceBefore(6);
  g->SetCaptionDistanceAfter(4);
  g->SetDistanceBorderAxisRight(16);
  for (TQyLineSettings* grid : {g->GetMajorGridHorizontal(), g->GetMajorGridVertical()}) {
    grid->SetVisible(true);
    grid->SetColor(0xFFDDE3EA);
  }
  return g;
}

template <class S = TQyLineSeries>
S* Join(TQyGraph2D* g, TQyAxis* x, TQyAxis* y, TQyDoubleVector* xs, TQyDoubleVector* ys, const QString& caption) {
  auto* s = new S(g);
  s->SetCaption(caption);
  s->SetXAxis(x);
  s->SetYAxis(y);
  s->SetXData(xs);
  s->SetYData(ys);
  return s;
}

TQyDoubleVector* Sampled(QObject* owner, int n, const std::function<double(double)>& f, double step) {
  auto* v = new TQyDoubleVector(owner);
  for (int i = 0; i < n; ++i) v->Add(f(i * step));
  return v;
}

class TWelcomePage : public QWidget {
public:
  TWelcomePage() {
    FWave = NewGraph("WelcomeWave", "\\bQyCharts\\b: a travelling wave in its envelope, phase <%WelcomeWave.Phase;0.00%> rad");
    FWave->TestPrimaryAxis();
    TQyAxis* time = FWave->GetPrimaryXAxis();
    time->SetCaption("Time [s]");
    TQyAxis* volts = FWave->GetPrimaryYAxis();
    volts->SetCaption("Amplitude [V]");
    RegisterDoubleVariable(FWave, "Phase", "Phase of the travelling wave", [this] { return FPhase; });

    FRate = NewGraph("WelcomeRate", "Its rate of change");
    FRate->SetPrimaryXAxis(time); // stacked on the same time axis: zooms and pans with it
    FRate->TestPrimaryAxis();
    FRate->GetPrimaryYAxis()->SetCaption("Rate [V/s]");

    const double step = Span / (Points - 1);
    auto* t = Sampled(FWave, Points, [](double s) { return s; }, step);
    auto* upper = Join(FWave, time, volts, t, Sampled(FWave, Points, Envelope, step), "envelope");
    auto* lower = Join(FWave, time, volts, t, Sampled(FWave, Points, [](double s) { return -Envelope(s); }, step), "");
    for (TQyLineSeries* s : {upper, lower}) {
      s->GetLine()->SetColor(0xFF9DB4CC);
      s->GetLine()->SetDashStyle(QyGDI::TDashStyle::DashStyleDash);
    }
    upper->GetArea()->SetVisible(true);
    upper->GetArea()->SetForeColor(0x301F77B4);
    upper->SetDrawBandTo(lower);

    FWaveValues = new TQyDoubleVector(FWave);
    TQyLineSeries* wave = Join(FWave, time, volts, t, FWaveValues, "wave");
    wave->GetLine()->SetColor(0xFF1F77B4);
    wave->GetLine()->SetWidth(2);

    // Samples every two seconds, with a reading error that grows with the amplitude.
    auto* sampleTimes = Sampled(FWave, 21, [](double s) { return s; }, 2.0);
    FSamples = new TQyDoubleVector(FWave);
    auto* samples = Join<TQyPointWithErrorSeries>(FWave, time, volts, sampleTimes, FSamples, "samples");
    samples->SetDeltaYPlus(Sampled(FWave, 21, [](double s) { return 0.1 + 0.15 * Envelope(s); }, 2.0));
    samples->SetDeltaYMinus(Sampled(FWave, 21, [](double s) { return 0.1 + 0.15 * Envelope(s); }, 2.0));
    samples->GetLine()->SetVisible(false);
    samples->GetErrorIndicator()->SetColor(0xFFB85A00);
    samples->PointSymbol()->SetPointSymbol(TQyPointSymbol::Circle);
    samples->PointSymbol()->SetSize(9);
    samples->PointSymbol()->SetFillColor(0xC0FF7F0E);
    samples->PointSymbol()->SetBorderColor(0xFFB85A00);

    FRateValues = new TQyDoubleVector(FRate);
    TQyLineSeries* rate = Join(FRate, time, FRate->GetPrimaryYAxis(), t, FRateValues, "rate");
    rate->GetLine()->SetColor(0xFFD62728);
    rate->GetArea()->SetVisible(true);
    rate->GetArea()->SetForeColor(0x40D62728);

    Move();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(FRate, 2); // above its master, as the saved picture stacks them
    layout->addWidget(FWave, 3);
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this] {
      FPhase = std::fmod(FPhase + 0.06, 2 * M_PI);
      Move();
    });
    timer->start(40);
  }

private:
  void Move() {
    const double step = Span / (Points - 1);
    std::vector<double> wave(Points), rate(Points), samples(21);
    for (int i = 0; i < Points; ++i) {
      wave[size_t(i)] = Wave(i * step, FPhase);
      rate[size_t(i)] = Rate(i * step, FPhase);
    }
    for (int i = 0; i < 21; ++i) samples[size_t(i)] = Wave(2.0 * i, FPhase) + 0.12 * std::sin(7.7 * i);
    FWaveValues->SetValues(std::move(wave));
    FRateValues->SetValues(std::move(rate));
    FSamples->SetValues(std::move(samples));
    FWave->ParseCaption();
  }

  TQyGraph2D* FWave;
  TQyGraph2D* FRate;
  TQyDoubleVector* FWaveValues;
  TQyDoubleVector* FRateValues;
  TQyDoubleVector* FSamples;
  double FPhase = 0;
};
} // namespace

QY_GALLERY_PAGE(welcome, "00-welcome", "Welcome", [] { return static_cast<QWidget*>(new TWelcomePage); },
                QSize(1000, 700), 300,
                "Drag a frame to zoom both graphs, Shift+drag to pan, the wheel zooms, click beside the data to go back");
