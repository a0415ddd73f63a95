// The Fourier transform of 2^20 points against FFTW's (same sign, unnormalised), and the whole
// spectrum engine over 2^20 samples. FFTW is used here only; the library does not link it.
#include <QySpectrum.h>
#include <benchmark/benchmark.h>
#include <cmath>
#include <fftw3.h>

namespace {
constexpr int N = 1 << 20;

double Sample(int i) { return std::sin(i * 0.013) + 0.5 * std::cos(i * 0.31) + 0.1 * std::sin(i * i * 1e-7); }

void BM_Transform(benchmark::State& state) {
  TComplexArray input(N), work;
  for (int i = 0; i < N; ++i) input[i] = {Sample(i), 0};
  for (auto _ : state) {
    state.PauseTiming();
    work = input;
    state.ResumeTiming();
    DiscreteFourierTransform(work);
    benchmark::DoNotOptimize(work.data());
  }
}

// FFTW_BACKWARD is the transform with e^(+2 pi i j k / N), as ours.
void BM_Fftw(benchmark::State& state) {
  auto* in = fftw_alloc_complex(N);
  auto* out = fftw_alloc_complex(N);
  fftw_plan plan = fftw_plan_dft_1d(N, in, out, FFTW_BACKWARD, unsigned(state.range(0)));
  for (int i = 0; i < N; ++i) in[i][0] = Sample(i), in[i][1] = 0;
  for (auto _ : state) {
    fftw_execute(plan);
    benchmark::DoNotOptimize(out);
  }
  fftw_destroy_plan(plan);
  fftw_free(in);
  fftw_free(out);
}

// Collecting the samples, the transform, amplitudes and phases.
void BM_SpectrumEngine(benchmark::State& state) {
  TQyDoubleVector x, y;
  std::vector<double> xs(N), ys(N);
  for (int i = 0; i < N; ++i) xs[i] = i * 1e-4, ys[i] = Sample(i);
  x.AddRange(xs), y.AddRange(ys);
  TQyDiscreteFourierCalculation engine;
  engine.XData = &x, engine.YData = &y;
  engine.Start = xs.front(), engine.Stop = xs.back();
  for (auto _ : state) engine.Calculate();
}
} // namespace

BENCHMARK(BM_Transform)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Fftw)->Arg(FFTW_ESTIMATE)->Arg(FFTW_MEASURE)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SpectrumEngine)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
