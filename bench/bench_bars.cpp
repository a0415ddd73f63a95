// Drawing bars: a histogram of 10^5 flat bars into an image, with the corners computed once
// (a re-render) and computed anew (every picture after a data change).
#include <QImage>
#include <QyBars.h>
#include <QyGraph2D.h>
#include <QyVectors.h>
#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>

namespace {
struct BarsBench {
  std::unique_ptr<TQyGraph2D> graph = std::make_unique<TQyGraph2D>();
  TQyBars* bars;
  explicit BarsBench(int n) {
    graph->resize(800, 500);
    graph->TestPrimaryAxis();
    auto* y = new TQyDoubleVector(graph.get());
    std::vector<double> ys(n);
    for (int i = 0; i < n; ++i) ys[i] = 100 * std::exp(-std::pow((i - n / 2.0) / (n / 6.0), 2)) + (i % 7);
    y->AddRange(ys);
    bars = new TQyBars(graph.get());
    bars->SetYData(y);
    bars->SetXAxis(graph->GetPrimaryXAxis());
    bars->SetYAxis(graph->GetPrimaryYAxis());
    bars->GetLine()->SetVisible(false); // a histogram of many classes: fills only
    graph->RenderToImage(graph->size(), false);
  }
};

void BM_FlatBarsRender(benchmark::State& state) {
  BarsBench b(int(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(b.graph->RenderToImage(b.graph->size(), false));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_FlatBarsRender)->Arg(1)->Arg(100'000)->Unit(benchmark::kMillisecond);

void BM_FlatBarsRecalculateAndRender(benchmark::State& state) {
  BarsBench b(int(state.range(0)));
  for (auto _ : state) {
    b.bars->PointsModified();
    benchmark::DoNotOptimize(b.graph->RenderToImage(b.graph->size(), false));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_FlatBarsRecalculateAndRender)->Arg(1)->Arg(100'000)->Unit(benchmark::kMillisecond);
} // namespace
