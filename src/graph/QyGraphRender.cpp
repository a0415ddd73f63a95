// Drawing onto devices other than the control: PaintTo lays the graph out for the target and then
// puts the control back as it was.
#include "QyAxis.h"
#include "QyGraph2D.h"
#include "QyMeasure.h"
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
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
  const auto [dpiX, dpiY, sameLayout] = RenderTarget(painter, size);
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

TQyCustomGraph::TQyTarget TQyCustomGraph::RenderTarget(QPainter* painter, QSize size) const {
  QPaintDevice* device = TargetDevice(painter);
  const qreal dpiX = device ? device->logicalDpiX() : logicalDpiX();
  const qreal dpiY = device ? device->logicalDpiY() : logicalDpiY();
  return {dpiX, dpiY,
          size == this->size() && std::abs(dpiY - logicalDpiY()) < 0.5 && std::abs(dpiX - logicalDpiX()) < 0.5};
}

QImage TQyCustomGraph::RenderToImage(QSize size, bool antialiased) {
  if (!size.isValid()) size = this->size();
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  RenderToImage(image, antialiased);
  return image;
}

// Paints into the caller's image, so that a chart redrawn many times a second reuses one buffer
// instead of mapping fresh pages for each picture.
void TQyCustomGraph::RenderToImage(QImage& image, bool antialiased) {
  // The image has the resolution of the screen the control is on, so it shows what the screen does.
  image.setDotsPerMeterX(int(std::lround(logicalDpiX() / 0.0254))); // round-away-ok: metres
  image.setDotsPerMeterY(int(std::lround(logicalDpiY() / 0.0254))); // round-away-ok
  image.fill(Qt::white);
  const TQySmoothingMode mode = GetSmoothingMode();
  if (!antialiased) FSmoothingMode = TQySmoothingMode::None;
  {
    QPainter p(&image);
    PaintTo(&p, image.size());
  }
  FSmoothingMode = mode;
}
