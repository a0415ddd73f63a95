// Output to devices other than the screen: images, SVG, PDF, printers. Every output goes through
// PaintTo, which lays the graph out for the target and then puts the control back as it was.
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

// The scale of the painter's units to the device's (1 on an image of the picture's size).
qreal PainterScale(const QPainter* painter) {
  const qreal s = std::sqrt(std::abs(painter->combinedTransform().determinant()));
  return s > 0 && std::isfinite(s) ? s : 1.0;
}

QPaintDevice* TargetDevice(QPainter* painter) {
  QPaintEngine* engine = painter->paintEngine();
  return engine && engine->paintDevice() ? engine->paintDevice() : painter->device();
}
} // namespace

void TQyGraph2D::PaintTo(QPainter* painter, QSize size, bool printing) {
  if (!painter || !painter->isActive()) return;
  if (!size.isValid()) size = this->size();
  // Text is measured in the picture's own units: the device's resolution over the painter's scale.
  QPaintDevice* device = TargetDevice(painter);
  const qreal scale = PainterScale(painter);
  const qreal dpiX = (device ? device->logicalDpiX() : logicalDpiX()) / scale;
  const qreal dpiY = (device ? device->logicalDpiY() : logicalDpiY()) / scale;
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
    Modified(); // lay out for the target
    {
      TQyMeasureScope measure(dpiX, dpiY);
      PaintGr(painter);
    }
    FLayoutSize = QSize();
    state.Restore();
    Modified(); // the next picture on screen lays out for the control again
    SeriesModified();
  }
  FPrinting = wasPrinting;
  FRenderingToImage = wasRendering;
}

QImage TQyGraph2D::RenderToImage(QSize size, bool antialiased) {
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

namespace {
// A painter on a vector device of `dpi`, scaled so that one unit is one pixel of the screen.
void PaintScaled(TQyGraph2D* graph, QPaintDevice* device, QSize size) {
  QPainter p(device);
  const qreal s = device->logicalDpiX() / qreal(graph->logicalDpiX());
  p.scale(s, s);
  graph->PaintTo(&p, size, true);
}
} // namespace

void TQyGraph2D::RenderToSvg(QIODevice* out, QSize size) {
  if (!size.isValid()) size = this->size();
  QSvgGenerator svg;
  svg.setOutputDevice(out);
  svg.setResolution(logicalDpiX());
  svg.setSize(size);
  svg.setViewBox(QRect(QPoint(0, 0), size));
  PaintScaled(this, &svg, size);
}

void TQyGraph2D::RenderToPdf(QIODevice* out, QSize size) {
  if (!size.isValid()) size = this->size();
  QPdfWriter pdf(out);
  const qreal inch = logicalDpiX();
  pdf.setPageSize(QPageSize(QSizeF(size.width() * 72.0 / inch, size.height() * 72.0 / inch), QPageSize::Point));
  pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
  PaintScaled(this, &pdf, size);
}

void TQyGraph2D::PrintTo(QPagedPaintDevice* printer, QRectF rect) {
  if (!printer) return;
  if (rect.isEmpty()) rect = QRectF(0, 0, printer->width(), printer->height());
  // The picture keeps its proportions, centred across when the rectangle is wider.
  const QSizeF picture = size();
  const qreal s = std::min(rect.width() / picture.width(), rect.height() / picture.height());
  QPainter p(printer);
  p.translate(rect.left() + (rect.width() - picture.width() * s) / 2, rect.top());
  p.scale(s, s);
  PaintTo(&p, size(), true);
}
