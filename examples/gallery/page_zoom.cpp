// Zoom, pan and scroll on a long noisy signal. The graph opens zoomed in, so its scroll bars show.
#include "QyGallery.h"
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>
#include <QyGraph2D.h>
#include <QyVectors.h>
#include <cmath>

namespace {
QWidget* BuildZoom() {
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(new QLabel("Drag a frame to zoom, Shift+drag to pan, turn the wheel to zoom about the "
                               "pointer, click beside the data to go back, double-click there to reset."));
  auto* graph = new TQyGraph2D;
  graph->setObjectName("ZoomGraph");
  graph->SetBackColor(0xFFFFFFFF);
  graph->SetCaption("\\bA day of a noisy sensor\\b: 100000 samples");
  graph->SetCaptionVisible(true);
  graph->SetCaptionDistanceBefore(6);
  graph->SetCaptionDistanceAfter(6);
  graph->SetDistanceBorderAxisRight(12);
  graph->GetMajorGridHorizontal()->SetVisible(true);
  graph->GetMajorGridHorizontal()->SetColor(0xFFE0E0E0);
  graph->GetMajorGridVertical()->SetVisible(true);
  graph->GetMajorGridVertical()->SetColor(0xFFE0E0E0);
  graph->TestPrimaryAxis();
  graph->GetPrimaryXAxis()->SetCaption("Time [h]");
  graph->GetPrimaryYAxis()->SetCaption("Reading");
  auto* x = new TQyDoubleVector(graph);
  auto* y = new TQyDoubleVector(graph);
  std::uint32_t seed = 12345;
  double drift = 0;
  for (int i = 0; i < 100000; ++i) {
    seed = seed * 1664525u + 1013904223u;
    drift += (double(seed >> 8) / double(1u << 24) - 0.5) * 0.05;
    const double t = i * 24.0 / 100000;
    x->Add(t);
    y->Add(10 + 3 * std::sin(t * 0.5) + std::sin(t * 7) * 0.8 + drift + (double(seed & 0xFF) / 255 - 0.5));
  }
  auto* s = new TQyLineSeries(graph);
  s->SetXAxis(graph->GetPrimaryXAxis());
  s->SetYAxis(graph->GetPrimaryYAxis());
  s->SetXData(x);
  s->SetYData(y);
  s->GetLine()->SetColor(0xFF1F77B4);
  layout->addWidget(graph, 1);
  // Zoom in once the graph is laid out: a frame over the middle of the day.
  QTimer::singleShot(50, graph, [graph] {
    const QRectF a = graph->DataArea();
    graph->ZoomTo(QPoint(int(a.x() + a.width() * 0.35), int(a.y() + a.height() * 0.1)),
                  QPoint(int(a.x() + a.width() * 0.6), int(a.y() + a.height() * 0.9)));
  });
  return page;
}
} // namespace

QY_GALLERY_PAGE(zoom, "05-zoom-pan-scroll", "Zoom and pan", BuildZoom, QSize(1000, 600), 400);
