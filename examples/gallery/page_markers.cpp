// Markers: a cross hair that snaps to the curve and reads its values, a labelled arrow pointing at
// the peak, and a threshold line. Try: drag the cross hair's centre along the curve, drag either
// of its lines, drag the threshold; hover over the arrow to drag its end, leader or caption.
#include "QyGallery.h"
#include <QyArrowMarker.h>
#include <QyGraph2D.h>
#include <QyMarkers.h>
#include <QyVectors.h>
#include <cmath>

namespace {
QWidget* BuildMarkers() {
  auto* graph = new TQyGraph2D;
  graph->setObjectName("MarkerGraph");
  graph->SetBackColor(0xFFFFFFFF);
  graph->SetCaption("Markers: drag the cross hair along the curve, the threshold, or the arrow's grips");
  graph->SetCaptionVisible(true);
  graph->SetCaptionDistanceBefore(6);
  graph->SetCaptionDistanceAfter(6);
  graph->SetDistanceBorderAxisRight(14);
  graph->GetMajorGridHorizontal()->SetVisible(true);
  graph->GetMajorGridHorizontal()->SetColor(0xFFE0E0E0);
  graph->TestPrimaryAxis();
  TQyAxis* xAxis = graph->GetPrimaryXAxis();
  TQyAxis* yAxis = graph->GetPrimaryYAxis();
  xAxis->SetCaption("Wavelength [nm]");
  yAxis->SetCaption("Intensity");

  // A spectrum: a broad background with one sharp peak at 532 nm.
  auto* x = new TQyDoubleVector(graph);
  auto* y = new TQyDoubleVector(graph);
  for (int i = 0; i <= 300; ++i) {
    const double nm = 400 + i;
    x->Add(nm);
    y->Add(20 + 15 * std::sin(nm / 40.0) + 70 * std::exp(-std::pow((nm - 532) / 6.0, 2)));
  }
  auto* s = new TQyLineSeries(graph);
  s->setObjectName("Spectrum");
  s->SetXAxis(xAxis);
  s->SetYAxis(yAxis);
  s->SetXData(x);
  s->SetYData(y);
  s->GetLine()->SetColor(0xFF1F77B4);
  s->GetLine()->SetWidth(2);

  auto* cross = new TQyCrossHair(graph);
  cross->setObjectName("Reader");
  cross->SetXAxis(xAxis);
  cross->SetYAxis(yAxis);
  cross->SetSnapToSeriesValues(true);
  cross->GetLine()->SetColor(0xFF808080);
  cross->GetLine()->SetDashStyle(QyGDI::TDashStyle::DashStyleDash);
  cross->SetCaption("\\b<%MarkerGraph.Reader.X;0%> nm\\b\n<%MarkerGraph.Reader.Y;0.0%>");
  cross->SetCaptionBackColor(0xF0FFFFE0);
  cross->GetCaptionBackFrame()->SetVisible(true);
  cross->GetCaptionBackFrame()->SetColor(0xFF808080);
  cross->SetCaptionBackRounding(30);
  cross->SetSnappedSeries(s);
  cross->SetSnapToSeriesValues(true);
  cross->SetSnappedIdx(220);

  auto* peak = new TQyLabelWithArrowMarker(graph);
  peak->setObjectName("Peak");
  peak->SetXAxis(xAxis);
  peak->SetYAxis(yAxis);
  peak->SetX(532);
  peak->SetY(20 + 15 * std::sin(532 / 40.0) + 70);
  peak->SetCaption("\\bpeak\\b at 532 nm");
  peak->SetArrowDeltaX(-70);
  peak->SetArrowDeltaY(-10);
  peak->SetBentLength(25);
  peak->GetArrow()->SetColor(0xFFD62728);
  peak->GetArrow()->SetWidth(1.5f);
  peak->SetForeColor(0xFFD62728);

  auto* threshold = new TQyHorizontalMarker(graph);
  threshold->setObjectName("Threshold");
  threshold->SetYAxis(yAxis);
  threshold->SetY(50);
  threshold->GetLine()->SetColor(0xFF2CA02C);
  threshold->GetLine()->SetWidth(1.5f);
  threshold->SetCaption("threshold <%MarkerGraph.Threshold.Y;0.0%>");
  threshold->SetCaptionVisible(true);
  threshold->SetCaptionPosition(TQyContentAlignment::TopLeft);
  threshold->SetCaptionDeltaX(-6);
  threshold->SetForeColor(0xFF2CA02C);
  return graph;
}
} // namespace

QY_GALLERY_PAGE(markers, "11-markers", "Markers", BuildMarkers, QSize(900, 520));
