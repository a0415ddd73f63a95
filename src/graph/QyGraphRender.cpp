// Output to devices other than the screen: images, SVG, PDF, printers. Every output goes through
// PaintTo, which lays the graph out for the target and then puts the control back as it was.
#include "QyAxis.h"
#include "QyGraph2D.h"
#include "QyMeasure.h"
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <cmath>

namespace {
// What a layout for another size changes on the control: the data area and the places of its
// child widgets (axes, legends, scroll bars). Taken before and put back after.
class TQyLayoutState {
public:
  explicit TQyLayoutState(TQyGraph2D* graph) : FGraph(graph), FDataArea(graph->DataArea()) {
    for (QObject* c : graph->children())
      if (auto* w = qobject_cast<QWidget*>(c)) FPlaces.append({w, w->geometry()});
  }
  void Restore() {
    for (const auto& [widget, place] : FPlaces)
      if (widget) widget->setGeometry(place);
    FGraph->SetDataArea(FDataArea);
  }

private:
  TQyGraph2D* FGraph;
  QRectF FDataArea;
  QList<QPair<QPointer<QWidget>, QRect>> FPlaces;
};

QPaintDevice* TargetDevice(QPainter* painter) {
  QPaintEngine* engine = painter->paintEngine();
  return engine && engine->paintDevice() ? engine->paintDevice() : painter->device();
}
} // namespace

void TQyGraph2D::PaintTo(QPainter* painter, QSize size, bool printing) {
  if (!painter || !painter->isActive()) return;
  if (!size.isValid()) size = this->size();
  // Text is measured for the device's resolution: a painter resolves fonts for it, whatever its
  // transformation, so the layout must see the same sizes.
  QPaintDevice* device = TargetDevice(painter);
  const qreal dpiX = device ? device->logicalDpiX() : logicalDpiX();
  const qreal dpiY = device ? device->logicalDpiY() : logicalDpiY();
  const bool sameLayout = size == this->size() && std::abs(dpiY - logicalDpiY()) < 0.5 &&
                          std::abs(dpiX - logicalDpiX()) < 0.5;
  const bool wasPrinting = FPrinting, wasRendering = FRenderingToImage;
  FPrinting = printing;
  FRenderingToImage = true;
  if (sameLayout) {
    PaintGr(painter);
  } else {
    TQyLayoutState state(this);
    FLayoutSize = size;
    RedoLayout(); // for the target
    {
      TQyMeasureScope measure(dpiX, dpiY);
      PaintGr(painter);
    }
    FLayoutSize = QSize();
    state.Restore();
    RedoLayout(); // the next picture on screen lays out for the control again
    SeriesModified();
  }
  FPrinting = wasPrinting;
  FRenderingToImage = wasRendering;
}

// Labels of another size need other parts: every axis rounds its ends again from the range it
// had before rounding, as after a resize.
void TQyGraph2D::RedoLayout() {
  for (TQyAxis* a : Axes()) a->CheckResize();
  Modified();
}

QImage TQyCustomGraph::RenderToImage(QSize size, bool antialiased) {
  if (!size.isValid()) size = this->size();
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  // The image has the resolution of the screen the control is on, so it shows what the screen does.
  image.setDotsPerMeterX(int(std::lround(logicalDpiX() / 0.0254))); // round-away-ok: metres
  image.setDotsPerMeterY(int(std::lround(logicalDpiY() / 0.0254))); // round-away-ok
  image.fill(Qt::white);
  const TQySmoothingMode mode = GetSmoothingMode();
  if (!antialiased) FSmoothingMode = TQySmoothingMode::None;
  {
    QPainter p(&image);
    PaintTo(&p, size);
  }
  FSmoothingMode = mode;
  return image;
}

void TQyCustomGraph::RenderToSvg(QIODevice* out, QSize size) {
  if (!size.isValid()) size = this->size();
  QSvgGenerator svg;
  svg.setOutputDevice(out);
  svg.setResolution(logicalDpiX());
  svg.setSize(size);
  svg.setViewBox(QRect(QPoint(0, 0), size));
  QPainter p(&svg);
  PaintTo(&p, size, true);
}

void TQyCustomGraph::RenderToPdf(QIODevice* out, QSize size) {
  if (!size.isValid()) size = this->size();
  // Vector output in the screen's units: one unit is one pixel of the control.
  QPdfWriter pdf(out);
  const qreal inch = logicalDpiX();
  pdf.setResolution(int(inch));
  pdf.setPageSize(QPageSize(QSizeF(size.width() * 72.0 / inch, size.height() * 72.0 / inch), QPageSize::Point));
  pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
  QPainter p(&pdf);
  PaintTo(&p, size, true);
}

// The picture keeps the control's proportions, centred across when the rectangle is wider, and
// is laid out for the printer's own resolution: text has its point size on paper.
void TQyGraph2D::PrintTo(QPagedPaintDevice* printer, QRectF rect) {
  if (!printer) return;
  if (rect.isEmpty()) rect = QRectF(0, 0, printer->width(), printer->height());
  const qreal aspect = qreal(width()) / std::max(1, height());
  QSizeF picture(rect.height() * aspect, rect.height());
  if (picture.width() > rect.width()) picture = QSizeF(rect.width(), rect.width() / aspect);
  QPainter p(printer);
  p.translate(rect.left() + (rect.width() - picture.width()) / 2, rect.top());
  PaintTo(&p, picture.toSize(), true);
}
