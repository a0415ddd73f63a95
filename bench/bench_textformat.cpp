// Runtime text formatting (QyTextFormat): the calls axis labels and documents make most.
#include <QyTextFormat.h>
#include <benchmark/benchmark.h>

static void BM_FloatToStr(benchmark::State& state) {
  double x = 0.1;
  for (auto _ : state) {
    benchmark::DoNotOptimize(FloatToStr(x));
    x = x * 1.37 + 0.013;
    if (x > 1e12) x = 0.1;
  }
}
BENCHMARK(BM_FloatToStr);

static void BM_FormatFloat_0_000(benchmark::State& state) {
  const QString format = QStringLiteral("0.000");
  double x = 0.1;
  for (auto _ : state) {
    benchmark::DoNotOptimize(FormatFloat(format, x));
    x = x * 1.37 + 0.013;
    if (x > 1e9) x = 0.1;
  }
}
BENCHMARK(BM_FormatFloat_0_000);

static void BM_FormatDateTime_Iso(benchmark::State& state) {
  const QString format = QStringLiteral("yyyy-mm-dd hh:nn:ss.zzz");
  double t = 36526.0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(FormatDateTime(format, t));
    t += 0.0123456789;
  }
}
BENCHMARK(BM_FormatDateTime_Iso);

static void BM_StrToFloat(benchmark::State& state) {
  const QString text = QStringLiteral("-1234.56789E-3");
  for (auto _ : state) benchmark::DoNotOptimize(StrToFloat(text));
}
BENCHMARK(BM_StrToFloat);
