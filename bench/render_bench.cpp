// qy-render-bench N W H AA MODE: builds a graph with one series of N points
// (y = sin(x/1000)*1000 + seeded uniform noise, x = 0..N-1, auto-ranged axes with ticks and labels),
// renders it into a W x H image and prints wall-clock milliseconds, one figure per line.
#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QyGraph2D.h>
#include <QyVectors.h>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <sys/resource.h>
#include <vector>

namespace {
double Ms(const QElapsedTimer& t) { return t.nsecsElapsed() / 1e6; }

long PeakRssKb() {
  rusage u{};
  getrusage(RUSAGE_SELF, &u);
  return u.ru_maxrss; // kilobytes on Linux
}

void Render(TQyGraph2D& graph, QImage& image, bool aa) {
  image.fill(Qt::white);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing, aa);
  graph.PaintGr(&p);
}

int Usage() {
  std::fprintf(stderr, "usage: qy-render-bench N W H AA(0|1) MODE(line|scatter)\n");
  return 2;
}
} // namespace

int main(int argc, char** argv) {
  if (argc != 6) return Usage();
  const long n = std::atol(argv[1]);
  const int w = std::atoi(argv[2]), h = std::atoi(argv[3]);
  const bool aa = std::atoi(argv[4]) != 0;
  const QString mode = argv[5];
  if (n < 2 || w < 50 || h < 50 || (mode != "line" && mode != "scatter")) return Usage();
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);

  QElapsedTimer t;
  t.start();
  TQyGraph2D graph;
  graph.setObjectName("Graph1");
  graph.resize(w, h);
  graph.SetBackColor(0xFFFFFFFF);
  graph.SetSmoothingMode(aa ? TQySmoothingMode::AntiAlias : TQySmoothingMode::None);
  graph.TestPrimaryAxis();
  auto* xs = new TQyDoubleVector(&graph);
  auto* ys = new TQyDoubleVector(&graph);
  std::mt19937_64 rng(12345);
  std::uniform_real_distribution<double> noise(-100.0, 100.0);
  auto value = [&](long i) { return std::sin(i / 1000.0) * 1000.0 + noise(rng); };
  {
    std::vector<double> x(n), y(n);
    for (long i = 0; i < n; ++i) x[i] = double(i), y[i] = value(i);
    xs->SetValues(std::move(x));
    ys->SetValues(std::move(y));
  }
  auto* series = new TQyLineSeries(&graph);
  series->SetXAxis(graph.GetPrimaryXAxis());
  series->SetYAxis(graph.GetPrimaryYAxis());
  series->SetXData(xs);
  series->SetYData(ys);
  if (mode == "scatter") {
    series->GetLine()->SetVisible(false);
    series->PointSymbol()->SetVisible(true);
    series->PointSymbol()->SetSize(5);
  }
  QImage image(w, h, QImage::Format_ARGB32_Premultiplied);
  const double setup = Ms(t);

  t.restart();
  Render(graph, image, aa);
  const double first = Ms(t);

  std::vector<double> times;
  for (int k = 0; k < 10; ++k) {
    graph.SeriesModified(); // forces the points to be computed again, as after a zoom
    t.restart();
    Render(graph, image, aa);
    times.push_back(Ms(t));
  }
  std::sort(times.begin(), times.end());
  const double median = (times[4] + times[5]) / 2;

  t.restart();
  for (long i = n; i < n + 1000; ++i) {
    xs->Add(double(i));
    ys->Add(value(i));
  }
  Render(graph, image, aa);
  const double append = Ms(t);

  if (!qEnvironmentVariableIsEmpty("QY_BENCH_PNG")) image.save(qEnvironmentVariable("QY_BENCH_PNG"));
  std::printf("setup_ms %.2f\nfirst_render_ms %.2f\nrerender_median_ms %.2f\nappend1000_render_ms %.2f\npeak_rss_kb %ld\n",
              setup, first, median, append, PeakRssKb());
  return 0;
}
