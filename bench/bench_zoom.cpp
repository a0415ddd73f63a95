// A pan step on a large line series: one mouse move of a pan (the axes move, the ticks are walked
// again, no layout) and the picture that follows it. Against it, the same move followed by a
// whole layout, as a change of the axes' settings would cost.
#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QyGraph2D.h>
#include <QyVectors.h>
#include <benchmark/benchmark.h>
#include <cmath>

namespace {
struct PanGraph {
  TQyGraph2D graph;
  QImage image{1600, 1000, QImage::Format_ARGB32_Premultiplied};
  QPoint down;

  explicit PanGraph(long n) {
    graph.resize(1600, 1000);
    graph.TestPrimaryAxis();
    std::vector<double> x(static_cast<size_t>(n)), y(static_cast<size_t>(n));
    for (long i = 0; i < n; ++i) x[size_t(i)] = double(i), y[size_t(i)] = std::sin(i / 1000.0) * 1000.0 + (i % 7) * 10;
    auto* xs = new TQyDoubleVector(&graph);
    auto* ys = new TQyDoubleVector(&graph);
    xs->SetValues(std::move(x));
    ys->SetValues(std::move(y));
    auto* s = new TQyLineSeries(&graph);
    s->SetXAxis(graph.GetPrimaryXAxis());
    s->SetYAxis(graph.GetPrimaryYAxis());
    s->SetXData(xs);
    s->SetYData(ys);
    Render();
    const QRectF a = graph.DataArea();
    graph.ZoomTo(a.topLeft().toPoint() + QPoint(int(a.width() / 4), int(a.height() / 4)),
                 a.bottomRight().toPoint() - QPoint(int(a.width() / 4), int(a.height() / 4)));
    Render();
    down = a.center().toPoint();
    Send(QEvent::MouseButtonPress, down, Qt::LeftButton);
  }
  ~PanGraph() { Send(QEvent::MouseButtonRelease, down, Qt::NoButton); }
  void Send(QEvent::Type type, QPoint p, Qt::MouseButtons buttons) {
    QMouseEvent e(type, p, graph.mapToGlobal(p), Qt::LeftButton, buttons, Qt::ShiftModifier);
    QCoreApplication::sendEvent(&graph, &e);
  }
  void Render() {
    QPainter p(&image);
    graph.PaintGr(&p);
  }
  // A move to and fro, both ways at once (a pan moves along both axes or not at all).
  void Step(long k) { Send(QEvent::MouseMove, down + QPoint(k % 2 ? 40 : -40, k % 2 ? 25 : -25), Qt::LeftButton); }
};
} // namespace

static void BM_PanStep(benchmark::State& state) {
  PanGraph g(state.range(0));
  long k = 0;
  for (auto _ : state) {
    g.Step(k++);
    g.Render();
  }
}
BENCHMARK(BM_PanStep)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

static void BM_PanStepWithWholeLayout(benchmark::State& state) {
  PanGraph g(state.range(0));
  long k = 0;
  for (auto _ : state) {
    g.Step(k++);
    g.graph.Modified();
    g.graph.SetPanning(false); // as if it were no drag: ranging, label fitting, the whole pass
    g.Render();
    g.graph.SetPanning(true);
  }
}
BENCHMARK(BM_PanStepWithWholeLayout)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
