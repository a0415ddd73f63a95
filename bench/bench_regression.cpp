// The linear regression over 10^6 points: the closed-form kernel alone (three passes over arrays
// in the cache's way: bytes per second against a plain sum of the same arrays), and the whole
// recalculation of the series (collecting the valid points, the kernel, the band).
#include <QyGraph2D.h>
#include <QyLinearRegression.h>
#include <QyVectors.h>
#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>
#include <numeric>

namespace {
struct TLineData {
  std::vector<double> x, y, w;
  explicit TLineData(int n) : x(n), y(n), w(n, 1.0) {
    for (int i = 0; i < n; ++i) x[i] = i * 1e-3, y[i] = 2 + 0.5 * x[i] + std::sin(i * 0.37);
  }
};

void BM_RegressionKernel(benchmark::State& state) {
  const TLineData d(int(state.range(0)));
  TQyLinearRegressionCalculation r;
  for (auto _ : state) {
    r.Regress(d.x.data(), d.y.data(), d.w.data(), int(d.x.size()));
    benchmark::DoNotOptimize(r.Slope);
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * 3 * int64_t(sizeof(double)));
}
BENCHMARK(BM_RegressionKernel)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

// The floor: one pass summing the same three arrays.
void BM_SumOfThreeArrays(benchmark::State& state) {
  const TLineData d(int(state.range(0)));
  for (auto _ : state) {
    double s = 0;
    for (size_t i = 0; i < d.x.size(); ++i) s += d.x[i] + d.y[i] + d.w[i];
    benchmark::DoNotOptimize(s);
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * 3 * int64_t(sizeof(double)));
}
BENCHMARK(BM_SumOfThreeArrays)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void BM_RegressionRecalculate(benchmark::State& state) {
  const TLineData d(int(state.range(0)));
  auto graph = std::make_unique<TQyGraph2D>();
  graph->resize(1000, 600);
  graph->TestPrimaryAxis();
  auto* x = new TQyDoubleVector(graph.get());
  auto* y = new TQyDoubleVector(graph.get());
  x->AddRange(d.x), y->AddRange(d.y);
  auto* s = new TQyLinearRegression(graph.get());
  s->SetXData(x), s->SetYData(y);
  s->SetXAxis(graph->GetPrimaryXAxis()), s->SetYAxis(graph->GetPrimaryYAxis());
  s->GetConfidenceIntervalArea()->SetVisible(true);
  graph->RenderToImage(graph->size(), false);
  for (auto _ : state) {
    s->SetLastCount(0);
    s->Calculate();
    s->CalculatePoints();
    benchmark::DoNotOptimize(s->PointCount());
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * 2 * int64_t(sizeof(double)));
}
BENCHMARK(BM_RegressionRecalculate)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
} // namespace
