// Output of a pie chart to devices other than the screen: images, SVG, PDF. Every output goes
// through PaintTo, which lays the chart out for the target and leaves the control as it was.
#include "QyMeasure.h"
#include "QyPieChart.h"
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <cmath>

void TQyPieChart::PaintTo(QPainter* painter, QSize size, bool printing) {
  if (!painter || !painter->isActive()) return;
  if (!size.isValid()) size = this->size();
  QPaintEngine* engine = painter->paintEngine();
  QPaintDevice* device = engine && engine->paintDevice() ? engine->paintDevice() : painter->device();
  const qreal dpiX = device ? device->logicalDpiX() : logicalDpiX();
  const qreal dpiY = device ? device->logicalDpiY() : logicalDpiY();
  const bool sameLayout = size == this->size() && std::abs(dpiY - logicalDpiY()) < 0.5 && std::abs(dpiX - logicalDpiX()) < 0.5;
  const bool wasPrinting = FPrinting, wasRendering = FRenderingToImage;
  FPrinting = printing;
  FRenderingToImage = true;
  if (sameLayout) {
    PaintGr(painter);
  } else {
    // A layout for the target, with text measured for its resolution; the next picture on the
    // screen lays out for the control again.
    const QList<QPair<QPointer<QWidget>, QRect>> places = [this] {
      QList<QPair<QPointer<QWidget>, QRect>> p;
      for (QObject* c : children())
        if (auto* w = qobject_cast<QWidget*>(c)) p.append({w, w->geometry()});
      return p;
    }();
    FLayoutSize = size;
    FNeedsCalculate = true;
    {
      TQyMeasureScope measure(dpiX, dpiY);
      PaintGr(painter);
    }
    FLayoutSize = QSize();
    for (const auto& [widget, place] : places)
      if (widget) widget->setGeometry(place);
    FNeedsCalculate = true;
  }
  FPrinting = wasPrinting;
  FRenderingToImage = wasRendering;
}

QImage TQyPieChart::RenderToImage(QSize size, bool antialiased) {
  if (!size.isValid()) size = this->size();
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
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

void TQyPieChart::RenderToSvg(QIODevice* out, QSize size) {
  if (!size.isValid()) size = this->size();
  QSvgGenerator svg;
  svg.setOutputDevice(out);
  svg.setResolution(logicalDpiX());
  svg.setSize(size);
  svg.setViewBox(QRect(QPoint(0, 0), size));
  QPainter p(&svg);
  PaintTo(&p, size, true);
}

void TQyPieChart::RenderToPdf(QIODevice* out, QSize size) {
  if (!size.isValid()) size = this->size();
  QPdfWriter pdf(out);
  const qreal inch = logicalDpiX();
  pdf.setResolution(int(inch));
  pdf.setPageSize(QPageSize(QSizeF(size.width() * 72.0 / inch, size.height() * 72.0 / inch), QPageSize::Point));
  pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
  QPainter p(&pdf);
  PaintTo(&p, size, true);
}
