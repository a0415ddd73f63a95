// A live signal: a worker thread samples a noisy sine at 10 kHz and appends the values to the
// vectors; the graph's polling thread shows them, and the X axis moves along as a slit over the
// last two seconds. The page never asks for a repaint.
#include "QyGallery.h"
#include <QVBoxLayout>
#include <QyGraph2D.h>
#include <QyVectors.h>
#include <atomic>
#include <chrono>
#include <cmath>
#include <random>
#include <thread>

namespace {
class TLivePage : public QWidget {
public:
  static constexpr double Rate = 10'000; // samples per second

  TLivePage() {
    auto* graph = new TQyGraph2D;
    graph->SetBackColor(0xFFFFFFFF);
    graph->SetCaption("\\bLive signal\\b: 10 kHz from a worker thread, the last 2 s");
    graph->SetCaptionVisible(true);
    graph->SetCaptionDistanceBefore(6);
    graph->SetCaptionDistanceAfter(6);
    graph->SetDistanceBorderAxisRight(14);
    graph->GetMajorGridHorizontal()->SetVisible(true);
    graph->GetMajorGridVertical()->SetVisible(true);
    graph->GetMajorGridHorizontal()->SetColor(0xFFD0D0D0);
    graph->GetMajorGridVertical()->SetColor(0xFFD0D0D0);
    graph->TestPrimaryAxis();
    TQyAxis* x = graph->GetPrimaryXAxis();
    x->SetCaption("Time [s]");
    x->SetStart(0);
    x->SetStop(2);
    x->SetStopEnd(TQyAxisEnd::MovingSlit); // two seconds wide, moving on by a quarter second
    x->SetMovingSlitWidth(2);
    x->SetMovingSlitIncrement(0.25);
    TQyAxis* y = graph->GetPrimaryYAxis();
    y->SetCaption("Amplitude [V]");
    y->SetStartEnd(TQyAxisEnd::Fixed);
    y->SetStopEnd(TQyAxisEnd::Fixed);
    y->SetStart(-2);
    y->SetStop(2);

    FTime = new TQyDoubleVector(graph);
    FSignal = new TQyDoubleVector(graph);
    auto* series = new TQyLineSeries(graph);
    series->SetCaption("Sensor");
    series->SetXAxis(x);
    series->SetYAxis(y);
    series->SetXData(FTime);
    series->SetYData(FSignal);
    series->GetLine()->SetColor(0xFF1F77B4);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(graph);
    FFeeder = std::thread([this] { Feed(); });
  }

  ~TLivePage() override {
    FStop = true;
    FFeeder.join();
  }

private:
  // Appends what is due every few milliseconds, in blocks, as a sampling device would deliver.
  void Feed() {
    std::mt19937 random(42);
    std::normal_distribution<double> noise(0, 0.08);
    const auto t0 = std::chrono::steady_clock::now();
    long long sent = 0;
    std::vector<double> ts, vs;
    while (!FStop) {
      const double elapsed = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
      ts.clear();
      vs.clear();
      for (; sent < static_cast<long long>(elapsed * Rate); ++sent) {
        const double t = sent / Rate;
        ts.push_back(t);
        vs.push_back(std::sin(2 * M_PI * 1.3 * t) + 0.3 * std::sin(2 * M_PI * 11 * t) + noise(random));
      }
      FTime->AddRange(ts); // time first: the series shows the pairs that are complete
      FSignal->AddRange(vs);
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }

  TQyDoubleVector* FTime;
  TQyDoubleVector* FSignal;
  std::atomic<bool> FStop{false};
  std::thread FFeeder;
};
} // namespace

// Rendered after 2.6 s of live data, so that the slit has moved on once.
QY_GALLERY_PAGE(live, "04-live-signal", "Live signal", [] { return static_cast<QWidget*>(new TLivePage); },
                QSize(900, 450), 2600,
                "Drag a frame to look closely at the live signal; double-click beside the data to follow it again");
