// Two line series on one graph; the second one grows while the page is shown.
#include "QyGallery.h"
#include <QTimer>
#include <QyGraph2D.h>
#include <QyVectors.h>
#include <cmath>

namespace {
QWidget* BuildSpine() {
  auto* graph = new TQyGraph2D;
  graph->setObjectName("Graph1");
  graph->SetBackColor(0xFFFFFFFF);
  // The title shows a live value: the growing series publishes its number of points.
  graph->SetCaption("\\bDamped oscillation\\b and a growing signal of <%Graph1.Growing.Points;0%> points");
  graph->SetCaptionVisible(true);
  graph->SetCaptionDistanceBefore(6);
  graph->SetCaptionDistanceAfter(6);
  graph->SetDistanceBorderAxisRight(10);
  graph->GetMajorGridHorizontal()->SetVisible(true);
  graph->GetMajorGridVertical()->SetVisible(true);
  graph->GetMajorGridHorizontal()->SetColor(0xFFD0D0D0);
  graph->GetMajorGridVertical()->SetColor(0xFFD0D0D0);
  graph->TestPrimaryAxis();
  graph->GetPrimaryXAxis()->SetCaption("Time [s]");
  graph->GetPrimaryYAxis()->SetCaption("Amplitude [V]");

  auto* x1 = new TQyDoubleVector(graph);
  auto* y1 = new TQyDoubleVector(graph);
  for (int i = 0; i <= 400; ++i) {
    const double t = i * 0.05;
    x1->Add(t);
    y1->Add(3.0 * std::exp(-t / 8) * std::sin(2 * t));
  }
  auto* s1 = new TQyLineSeries(graph);
  s1->setObjectName("Damped");
  s1->SetXAxis(graph->GetPrimaryXAxis());
  s1->SetYAxis(graph->GetPrimaryYAxis());
  s1->SetXData(x1);
  s1->SetYData(y1);
  s1->GetLine()->SetWidth(2);

  auto* x2 = new TQyDoubleVector(graph);
  auto* y2 = new TQyDoubleVector(graph);
  auto* s2 = new TQyLineSeries(graph);
  s2->setObjectName("Growing");
  s2->SetXAxis(graph->GetPrimaryXAxis());
  s2->SetYAxis(graph->GetPrimaryYAxis());
  s2->SetXData(x2);
  s2->SetYData(y2);
  RegisterDoubleVariable(s2, "Points", "Number of points of the growing signal",
                         [x2] { return double(x2->Count()); });
  auto grow = [x2, y2] {
    const int n = x2->Count();
    const double t = n * 0.05;
    x2->Add(t);
    y2->Add(1.5 * std::sin(0.7 * t) + 0.2 * std::sin(9 * t));
  };
  for (int i = 0; i < 250; ++i) grow();
  auto* timer = new QTimer(graph);
  QObject::connect(timer, &QTimer::timeout, graph, grow);
  timer->start(50);
  return graph;
}
} // namespace

QY_GALLERY_PAGE(spine, "01-line-series", "Line series", BuildSpine, QSize(800, 500), 0,
                "Drag a frame over the growing signal to zoom, Shift+drag to pan, double-click beside the data to reset");
