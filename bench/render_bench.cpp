// Render benchmark: one graph with one series of N points, rendered into a W x H image.
//   qy-render-bench N W H AA MODE     (AA 0/1; MODE line or scatter)
// Prints "name value" lines: setup_ms, first_render_ms, rerender_median_ms (10 re-renders),
// append1000_render_ms (1000 values appended, then one render), peak_rss_kb.
#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QyGraph2D.h>
#include <QyVectors.h>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <sys/resource.h>

namespace {
double Ms(QElapsedTimer& t) { return t.nsecsElapsed() / 1e6; }

struct Signal {
  std::mt19937 rng{12345};
  std::uniform_real_distribution<double> noise{-100.0, 100.0};
  double operator()(int i) { return std::sin(i / 1000.0) * 1000.0 + noise(rng); }
};
} // namespace

int main(int argc, char** argv) {
  if (argc != 6) {
    std::fprintf(stderr, "usage: %s N W H AA MODE   (AA 0/1, MODE line|scatter)\n", argv[0]);
    return 2;
  }
  const int n = std::atoi(argv[1]), w = std::atoi(argv[2]), h = std::atoi(argv[3]);
  const bool aa = std::atoi(argv[4]) != 0;
  const bool scatter = std::strcmp(argv[5], "scatter") == 0;
  if (n < 0 || w < 1 || h < 1 || (!scatter && std::strcmp(argv[5], "line") != 0)) {
    std::fprintf(stderr, "bad arguments\n");
    return 2;
  }
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);

  QElapsedTimer t;
  t.start();
  TQyGraph2D graph;
  graph.resize(w, h);
  graph.TestPrimaryAxis();
  auto* x = new TQyDoubleVector(&graph);
  auto* y = new TQyDoubleVector(&graph);
  Signal signal;
  std::vector<double> xs(n), ys(n);
  for (int i = 0; i < n; ++i) xs[i] = i, ys[i] = signal(i);
  // The vectors take the arrays over: the figure shows the library's own memory, not a copy.
  x->SetValues(std::move(xs));
  y->SetValues(std::move(ys));
  auto* s = new TQyLineSeries(&graph);
  s->SetXData(x);
  s->SetYData(y);
  s->SetXAxis(graph.GetPrimaryXAxis());
  s->SetYAxis(graph.GetPrimaryYAxis());
  if (scatter) {
    s->GetLine()->SetVisible(false);
    s->PointSymbol()->SetVisible(true);
  }
  std::printf("setup_ms %.3f\n", Ms(t));

  t.restart();
  QImage image = graph.RenderToImage(QSize(w, h), aa);
  std::printf("first_render_ms %.3f\n", Ms(t));

  std::vector<double> times;
  for (int k = 0; k < 10; ++k) {
    t.restart();
    image = graph.RenderToImage(QSize(w, h), aa);
    times.push_back(Ms(t));
  }
  std::sort(times.begin(), times.end());
  std::printf("rerender_median_ms %.3f\n", (times[4] + times[5]) / 2);

  t.restart();
  for (int i = n; i < n + 1000; ++i) {
    x->Add(i);
    y->Add(signal(i));
  }
  image = graph.RenderToImage(QSize(w, h), aa);
  std::printf("append1000_render_ms %.3f\n", Ms(t));

  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("peak_rss_kb %ld\n", usage.ru_maxrss);
  return 0;
}
