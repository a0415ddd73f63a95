// Axis speed: the full layout pass of a graph's axes, partitioning alone, and the mapping that
// every series point goes through.
#include <QyAxis.h>
#include <QyGraph2D.h>
#include <QyMath.h>
#include <benchmark/benchmark.h>
#include <memory>

namespace {
struct Graph {
  std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
  TQyGraph2D* g = new TQyGraph2D(form.get());
  Graph() {
    g->resize(800, 500);
    g->TestPrimaryAxis();
  }
};
} // namespace

// One layout pass per iteration; argument 0 is a linear axis over 0 .. 1234.5, 1 a date-time
// axis over 90 days.
static void BM_AxisLayoutPass(benchmark::State& state) {
  Graph f;
  TQyAxis* x = f.g->GetPrimaryXAxis();
  const bool dates = state.range(0) == 1;
  if (dates) x->SetScaling(TQyAxisScaling::DateTime);
  for (auto _ : state) {
    x->SetStartStop(dates ? 45000 : 0, dates ? 45090 : 1234.5);
    x->Calculate();
    benchmark::DoNotOptimize(x->LabelCount());
  }
}
BENCHMARK(BM_AxisLayoutPass)->Arg(0)->Arg(1);

static void BM_AxisNumberToWorld(benchmark::State& state) {
  Graph f;
  TQyAxis* x = f.g->GetPrimaryXAxis();
  x->SetStartStop(0, 100);
  x->Calculate();
  double v = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(x->NumberToWorld(v));
    v += 0.37;
    if (v > 100) v = 0;
  }
}
BENCHMARK(BM_AxisNumberToWorld);

static void BM_Real10thExponent(benchmark::State& state) {
  double v = 1.2345;
  for (auto _ : state) {
    benchmark::DoNotOptimize(Real10thExponent(v));
    v *= 1.7;
    if (v > 1e100) v = 1e-100;
  }
}
BENCHMARK(BM_Real10thExponent);
