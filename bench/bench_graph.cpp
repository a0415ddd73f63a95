// The spine's hot paths: value to pixel, points of a large series, append and repaint.
#include <QImage>
#include <QPainter>
#include <QyGraph2D.h>
#include <QyVectors.h>
#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>

namespace {
struct BigGraph {
  TQyGraph2D graph;
  TQyDoubleVector* xs = new TQyDoubleVector(&graph);
  TQyDoubleVector* ys = new TQyDoubleVector(&graph);
  TQyLineSeries* series = new TQyLineSeries(&graph);
  QImage image{1600, 1000, QImage::Format_ARGB32_Premultiplied};

  explicit BigGraph(long n) {
    graph.resize(1600, 1000);
    graph.TestPrimaryAxis();
    std::vector<double> x(n), y(n);
    for (long i = 0; i < n; ++i) x[i] = double(i), y[i] = std::sin(i / 1000.0) * 1000.0 + (i % 7) * 10;
    xs->SetValues(std::move(x));
    ys->SetValues(std::move(y));
    series->SetXAxis(graph.GetPrimaryXAxis());
    series->SetYAxis(graph.GetPrimaryYAxis());
    series->SetXData(xs);
    series->SetYData(ys);
    Render();
  }
  void Render() {
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing, true);
    graph.PaintGr(&p);
  }
};
} // namespace

static void BM_NumberToWorld(benchmark::State& state) {
  BigGraph g(1000);
  TQyAxis* x = g.graph.GetPrimaryXAxis();
  double v = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(x->NumberToWorld(v));
    v += 0.37;
  }
}
BENCHMARK(BM_NumberToWorld);

// All points of the series afresh (as after a zoom): one pass over the data.
static void BM_CalculatePoints(benchmark::State& state) {
  BigGraph g(state.range(0));
  for (auto _ : state) {
    g.series->PointsModified();
    g.series->CalculatePoints();
    benchmark::DoNotOptimize(g.series->PointCount());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_CalculatePoints)->Arg(1'000'000)->Arg(10'000'000)->Unit(benchmark::kMillisecond);

// Appending 1000 points to a large series while the axis ends stay, then repainting: the cost
// must follow the new points and the pixel columns, not the points already drawn.
static void BM_AppendAndRender(benchmark::State& state) {
  BigGraph g(state.range(0));
  TQyAxis* x = g.graph.GetPrimaryXAxis();
  x->SetStopEnd(TQyAxisEnd::Fixed);
  x->SetStop(double(state.range(0)) * 2);
  g.Render();
  long next = state.range(0);
  for (auto _ : state) {
    for (int k = 0; k < 1000; ++k, ++next) {
      g.xs->Add(double(next));
      g.ys->Add(std::sin(next / 1000.0) * 1000.0);
    }
    g.Render();
  }
}
BENCHMARK(BM_AppendAndRender)->Arg(1'000'000)->Arg(10'000'000)->Unit(benchmark::kMillisecond);
