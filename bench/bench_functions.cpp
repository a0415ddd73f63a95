// Calculated curves: a function series recalculated over 10^6 points (the engine's pass over the
// data plus the once-per-pixel sampling, against the points of a line series of the same width),
// and the moving average of 10^7 points.
#include <QyGraph2D.h>
#include <QyMovingAverage.h>
#include <QyVectors.h>
#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>

namespace {
struct TCurveGraph {
  std::unique_ptr<TQyGraph2D> graph = std::make_unique<TQyGraph2D>();
  TQyDoubleVector* x = new TQyDoubleVector(graph.get());
  TQyDoubleVector* y = new TQyDoubleVector(graph.get());
  explicit TCurveGraph(int n) {
    graph->resize(1000, 600);
    graph->TestPrimaryAxis();
    std::vector<double> xs(n), ys(n);
    for (int i = 0; i < n; ++i) xs[i] = i * 1e-3, ys[i] = std::sin(i * 1e-3) + 0.1 * std::sin(i * 0.37);
    x->AddRange(xs);
    y->AddRange(ys);
  }
  template <class S> S* Join() {
    auto* s = new S(graph.get());
    s->SetXData(x), s->SetYData(y);
    s->SetXAxis(graph->GetPrimaryXAxis()), s->SetYAxis(graph->GetPrimaryYAxis());
    return s;
  }
};

// A whole recalculation: engine over all points, Y extent by sampling, points by sampling.
template <TQyInterpolationMethod Method> void BM_InterpolationRecalculate(benchmark::State& state) {
  TCurveGraph g(int(state.range(0)));
  auto* s = g.Join<TQyInterpolation>();
  s->SetInterpolationMethod(Method);
  g.graph->RenderToImage(g.graph->size(), false);
  for (auto _ : state) {
    s->SetLastCount(0);
    s->Calculate();
    s->CalculatePoints();
    benchmark::DoNotOptimize(s->PointCount());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_InterpolationRecalculate<TQyInterpolationMethod::Akima>)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_InterpolationRecalculate<TQyInterpolationMethod::CubicSpline>)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_InterpolationRecalculate<TQyInterpolationMethod::ApproximativeSpline>)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

// Only the points: the once-per-pixel sampling of a calculated curve against the points of a
// line series over the same data (columns of a 1000-pixel axis).
template <class S> void BM_Points(benchmark::State& state) {
  TCurveGraph g(1'000'000);
  auto* s = g.Join<S>();
  g.graph->RenderToImage(g.graph->size(), false);
  for (auto _ : state) {
    s->PointsModified();
    s->CalculatePoints();
    benchmark::DoNotOptimize(s->PointCount());
  }
}
BENCHMARK(BM_Points<TQyInterpolation>)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Points<TQyLineSeries>)->Unit(benchmark::kMicrosecond);

// The averaging kernel over 10^7 points, 10 neighbours back, by weighting.
void BM_MovingAverageKernel(benchmark::State& state) {
  const int n = 10'000'000;
  std::vector<double> x(n), y(n), w(n, 1.0), avg(n);
  for (int i = 0; i < n; ++i) x[i] = i, y[i] = std::sin(i * 1e-3);
  TQyAveraging how;
  how.Method = TQyAveragingMethod(state.range(0));
  for (auto _ : state) {
    MovingAverage(how, x.data(), y.data(), w.data(), n, avg.data());
    benchmark::DoNotOptimize(avg.data());
  }
  state.SetBytesProcessed(state.iterations() * int64_t(n) * 4 * sizeof(double));
}
BENCHMARK(BM_MovingAverageKernel)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

// The whole moving-average series over 10^7 points: averaging, the curve and its once-per-pixel
// samples (Y extent and points). Arg 1: every run after the first, whose buffers are reused;
// Arg 0: a fresh series each time, whose buffers are first touched.
void BM_MovingAverageRecalculate(benchmark::State& state) {
  TCurveGraph g(10'000'000);
  auto* s = g.Join<TQyMovingAverage>();
  g.graph->RenderToImage(g.graph->size(), false);
  for (auto _ : state) {
    if (!state.range(0)) {
      state.PauseTiming();
      delete s;
      s = g.Join<TQyMovingAverage>();
      state.ResumeTiming();
    }
    s->SetLastCount(0);
    s->Calculate();
    s->CalculatePoints();
    benchmark::DoNotOptimize(s->PointCount());
  }
  state.SetBytesProcessed(state.iterations() * int64_t(10'000'000) * 2 * sizeof(double));
}
BENCHMARK(BM_MovingAverageRecalculate)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
} // namespace
