// Render benchmark: one graph with one series of N points, rendered into a W x H image.
//   qy-render-bench N W H AA MODE     (AA 0/1; MODE line or scatter)
// Prints "name value" lines:
//   setup_ms               filling the vectors (not part of any rendering figure)
//   first_render_ms        the first picture (points, ranges and layout from nothing)
//   rerender_median_ms     median of 10 further pictures of the same data
//   append1000_render_ms   median of 10 cycles: 1000 values appended, then one picture; after
//                          each cycle the 1000 values are removed and a picture settles the
//                          graph, both outside the timing (so every cycle goes N -> N + 1000)
//   zoom_render_ms         the X axis set to a window of 1/1000 of the data, one picture
//   pan_render_ms          that window moved by half its width, one picture
//   peak_rss_kb            the process' peak resident memory
// The workload (shared with the comparison program, see RenderWorkload.h): x_i = i,
// y_i = sin(i / 1000) * 1000 + (u_i - 0.5) * 200 with u_i uniform from splitmix64.
#include "RenderWorkload.h"
#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QyAxis.h>
#include <QyGraph2D.h>
#include <QyStyles.h>
#include <QyVectors.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {
// Fills a vector in slices, so that no second copy of the whole data is ever held.
void Fill(TQyDoubleVector* v, int from, int to, double (*value)(int)) {
  std::vector<double> slice;
  for (int a = from; a < to; a += 1 << 20) {
    const int b = std::min(to, a + (1 << 20));
    slice.resize(size_t(b - a));
    for (int i = a; i < b; ++i) slice[size_t(i - a)] = value(i);
    v->AddRange(slice);
  }
}

double XOf(int i) { return i; }
} // namespace

int main(int argc, char** argv) {
  TQyBenchArgs args;
  if (!args.Parse(argc, argv)) return 2;
  QApplication app(argc, argv);
  QyWarmUpText();
  const int n = args.N;
  const QSize size = args.Size();

  TQyBenchClock clock;
  TQyGraph2D graph;
  graph.resize(size);
  graph.TestPrimaryAxis();
  auto* x = new TQyDoubleVector(&graph);
  auto* y = new TQyDoubleVector(&graph);
  Fill(x, 0, n, XOf);
  Fill(y, 0, n, QyBenchSignal);
  auto* s = new TQyLineSeries(&graph);
  s->SetXData(x);
  s->SetYData(y);
  s->SetXAxis(graph.GetPrimaryXAxis());
  s->SetYAxis(graph.GetPrimaryYAxis());
  graph.GetPrimaryXAxis()->SetCaption("x");
  graph.GetPrimaryYAxis()->SetCaption("y");
  if (args.Scatter) {
    s->GetLine()->SetVisible(false);
    s->PointSymbol()->SetVisible(true);
    s->PointSymbol()->SetSize(5);
  }

  clock.Print("setup_ms");
  clock.Restart();
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  graph.RenderToImage(image, args.AA);
  clock.Print("first_render_ms");

  std::vector<double> times;
  // QY_REPEAT in the environment repeats the re-render and the append 300 times, for a profiler.
  const int repeat = getenv("QY_REPEAT") ? 300 : 10;
  for (int k = 0; k < repeat; ++k) {
    clock.Restart();
    graph.RenderToImage(image, args.AA);
    times.push_back(clock.Ms());
  }
  QyPrintMedian("rerender_median_ms", times);

  times.clear();
  std::vector<double> xs(1000), ys(1000);
  for (int i = 0; i < 1000; ++i) xs[size_t(i)] = n + i, ys[size_t(i)] = QyBenchSignal(n + i);
  for (int k = 0; k < repeat; ++k) {
    clock.Restart();
    x->AddRange(xs);
    y->AddRange(ys);
    graph.RenderToImage(image, args.AA);
    times.push_back(clock.Ms());
    for (int i = n + 999; i >= n; --i) x->Delete(i), y->Delete(i);
    graph.RenderToImage(image, args.AA);
  }
  QyPrintMedian("append1000_render_ms", times);

  if (args.Zoom) {
    TQyAxis* axis = graph.GetPrimaryXAxis();
    const double width = std::max(10.0, n / 1000.0), start = n * 0.37;
    clock.Restart();
    axis->ZoomIn(start, start + width);
    graph.RenderToImage(image, args.AA);
    clock.Print("zoom_render_ms");
    clock.Restart();
    axis->SetStartStop(start + width / 2, start + width * 1.5);
    graph.RenderToImage(image, args.AA);
    clock.Print("pan_render_ms");
  }
  if (!args.Save.isEmpty()) image.save(args.Save);
  QyPrintPeakRss();
  return 0;
}
