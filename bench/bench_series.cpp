// Drawing a series: thick and dashed lines of many points, and dense scatters, into an image.
#include <QImage>
#include <QyGraph2D.h>
#include <QyVectors.h>
#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>
#include <random>

namespace {
// A graph with one series of n noisy points whose points are all kept (symbols shown, so no
// thinning per pixel column takes the line's work away).
struct SeriesBench {
  std::unique_ptr<TQyGraph2D> graph = std::make_unique<TQyGraph2D>();
  TQyLineSeries* series;
  explicit SeriesBench(int n) {
    graph->resize(800, 500);
    graph->TestPrimaryAxis();
    auto* x = new TQyDoubleVector(graph.get());
    auto* y = new TQyDoubleVector(graph.get());
    std::mt19937 rng(5);
    std::uniform_real_distribution<double> noise(-100, 100);
    std::vector<double> xs(n), ys(n);
    for (int i = 0; i < n; ++i) xs[i] = i, ys[i] = std::sin(i / 1000.0) * 1000 + noise(rng);
    x->AddRange(xs);
    y->AddRange(ys);
    series = new TQyLineSeries(graph.get());
    series->SetXData(x);
    series->SetYData(y);
    series->SetXAxis(graph->GetPrimaryXAxis());
    series->SetYAxis(graph->GetPrimaryYAxis());
  }
  void Run(benchmark::State& state) {
    graph->RenderToImage(graph->size(), true); // points and layout once
    for (auto _ : state) benchmark::DoNotOptimize(graph->RenderToImage(graph->size(), true));
  }
};

// A thick line through every point (symbols of size 1 keep the points unthinned).
void BM_ThickLine(benchmark::State& state) {
  SeriesBench b(int(state.range(0)));
  b.series->GetLine()->SetWidth(float(state.range(1)));
  b.series->PointSymbol()->SetVisible(true);
  b.series->PointSymbol()->SetSize(1);
  b.Run(state);
}
BENCHMARK(BM_ThickLine)->Args({100'000, 2})->Args({100'000, 4})->Unit(benchmark::kMillisecond);

void BM_DashedLine(benchmark::State& state) {
  SeriesBench b(int(state.range(0)));
  b.series->GetLine()->SetWidth(2);
  b.series->GetLine()->SetDashStyle(QyGDI::TDashStyle::DashStyleDash);
  b.series->PointSymbol()->SetVisible(true);
  b.series->PointSymbol()->SetSize(1);
  b.Run(state);
}
BENCHMARK(BM_DashedLine)->Arg(100'000)->Unit(benchmark::kMillisecond);

// A thick line after thinning per pixel column: what a plain line series of a million draws.
void BM_ThickLineThinned(benchmark::State& state) {
  SeriesBench b(int(state.range(0)));
  b.series->GetLine()->SetWidth(3);
  b.Run(state);
}
BENCHMARK(BM_ThickLineThinned)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void BM_DenseScatter(benchmark::State& state) {
  SeriesBench b(int(state.range(0)));
  b.series->GetLine()->SetVisible(false);
  b.series->PointSymbol()->SetVisible(true);
  b.Run(state);
}
BENCHMARK(BM_DenseScatter)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
} // namespace
