#include <QyRounding.h>
#include <benchmark/benchmark.h>

static void BM_RoundHalfEven(benchmark::State& state) {
  double x = 0.5;
  for (auto _ : state) {
    benchmark::DoNotOptimize(Round(x));
    x += 0.25;
  }
}
BENCHMARK(BM_RoundHalfEven);
