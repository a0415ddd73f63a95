// The render benchmark's workload drawn by QCustomPlot, the library we measure ourselves against,
// with its fast options (adaptive sampling, fast polylines, no data copies). Same arguments and
// phases as qy-render-bench, so that one run gives both sides.
#include "RenderWorkload.h"
#include <QApplication>
#include <QImage>
#include <QPainter>
#include <qcustomplot.h>

namespace {
// One drawing pass into a picture (toPixmap lays out and draws by itself): a replot before it
// would draw everything twice and flatter the comparison.
QImage Render(QCustomPlot& plot, QSize size) { return plot.toPixmap(size.width(), size.height()).toImage(); }
} // namespace

int main(int argc, char** argv) {
  TQyBenchArgs args;
  if (!args.Parse(argc, argv)) return 2;
  QApplication app(argc, argv);
  QyWarmUpText();
  QCustomPlot plot;
  const int n = args.N;
  const QSize size = args.Size();
  plot.resize(size);
  plot.setAntialiasedElements(args.AA ? QCP::aeAll : QCP::aeNone);
  plot.setPlottingHint(QCP::phFastPolylines, true);
  QCPGraph* graph = plot.addGraph();
  graph->setAdaptiveSampling(true);
  graph->setAntialiased(args.AA);
  graph->setPen(QPen(Qt::blue, 1));
  if (args.Scatter) {
    graph->setLineStyle(QCPGraph::lsNone);
    graph->setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssDisc, 5));
  }
  plot.xAxis->setLabel("x");
  plot.yAxis->setLabel("y");
  {
    QVector<QCPGraphData> data;
    data.reserve(n);
    for (int i = 0; i < n; ++i) data.append(QCPGraphData(i, QyBenchSignal(i)));
    graph->data()->set(data, true);
  }
  auto autoRange = [&] { graph->rescaleAxes(); };

  TQyBenchClock clock;
  autoRange();
  QImage image = Render(plot, size);
  clock.Print("first_render_ms");

  std::vector<double> times;
  for (int k = 0; k < 10; ++k) {
    clock.Restart();
    image = Render(plot, size);
    times.push_back(clock.Ms());
  }
  QyPrintMedian("rerender_median_ms", times);

  times.clear();
  QVector<double> xs(1000), ys(1000);
  for (int i = 0; i < 1000; ++i) xs[i] = n + i, ys[i] = QyBenchSignal(n + i);
  for (int k = 0; k < 10; ++k) {
    clock.Restart();
    graph->addData(xs, ys, true);
    autoRange();
    image = Render(plot, size);
    times.push_back(clock.Ms());
    graph->data()->removeAfter(n - 0.5);
    autoRange();
    image = Render(plot, size);
  }
  QyPrintMedian("append1000_render_ms", times);

  if (args.Zoom) {
    const double width = std::max(10.0, n / 1000.0), start = n * 0.37;
    clock.Restart();
    plot.xAxis->setRange(start, start + width);
    image = Render(plot, size);
    clock.Print("zoom_render_ms");
    clock.Restart();
    plot.xAxis->setRange(start + width / 2, start + width * 1.5);
    image = Render(plot, size);
    clock.Print("pan_render_ms");
  }
  if (!args.Save.isEmpty()) image.save(args.Save);
  QyPrintPeakRss();
  return 0;
}
