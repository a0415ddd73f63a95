#pragma once
// A graph with primary axes and line series, for tests that need the whole data path.
#include "QyRecordingDevice.h"
#include <QPainter>
#include <QyGraph2D.h>
#include <QyVectors.h>
#include <memory>
#include <vector>

struct QyTestGraph {
  std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
  TQyGraph2D* graph;

  explicit QyTestGraph(int width = 600, int height = 400) {
    form->setObjectName("Form1");
    graph = new TQyGraph2D(form.get());
    graph->setObjectName("Graph1");
    graph->resize(width, height);
    graph->TestPrimaryAxis();
  }
  TQyAxis* X() const { return graph->GetPrimaryXAxis(); }
  TQyAxis* Y() const { return graph->GetPrimaryYAxis(); }

  // A vector of the form holding `values`.
  TQyDoubleVector* Vector(const std::vector<double>& values) {
    auto* v = new TQyDoubleVector(form.get());
    v->AddRange(values);
    return v;
  }
  // A series of class S over (xs, ys) on the primary axes; an empty xs leaves X to the indexer.
  template <class S> S* Add(const std::vector<double>& xs, const std::vector<double>& ys) {
    auto* s = new S(form.get());
    s->setObjectName(QString("Series%1").arg(graph->RelatedSeries().size() + 1));
    if (!xs.empty()) s->SetXData(Vector(xs));
    s->SetYData(Vector(ys));
    s->SetXAxis(X());
    s->SetYAxis(Y());
    return s;
  }
  // A line series drawn in `color`.
  TQyLineSeries* AddSeries(const std::vector<double>& xs, const std::vector<double>& ys,
                           TQyColor color = 0xFFFF0000u) {
    auto* s = Add<TQyLineSeries>(xs, ys);
    s->GetLine()->SetColor(color);
    return s;
  }
  // Fixes both ends of an axis at the given values.
  static void Fix(TQyAxis* a, double start, double stop) {
    a->SetStartEnd(TQyAxisEnd::Fixed);
    a->SetStopEnd(TQyAxisEnd::Fixed);
    a->SetEndRounding(TQyAxisEndRounding::RndNothing);
    a->SetStart(start);
    a->SetStop(stop);
  }
  // Runs one paint into an image (layout, ranges, points) and returns it.
  QImage Render() { return graph->RenderToImage(graph->size(), false); }
  // Paints the graph as it stands into the emptied recording device.
  void Paint(QyRecordingDevice& dev) {
    dev.Clear();
    QPainter p(&dev);
    graph->PaintGr(&p);
  }
};
