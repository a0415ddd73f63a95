// Output of a pie chart to devices other than the screen: images, SVG and PDF of the common base
// come here, to a layout for the target that leaves the control as it was.
#include "QyMeasure.h"
#include "QyPieChart.h"
#include <QPaintEngine>
#include <QPainter>
#include <cmath>

void TQyPieChart::PaintTo(QPainter* painter, QSize size, bool printing) {
  if (!painter || !painter->isActive()) return;
  if (!size.isValid()) size = this->size();
  const auto [dpiX, dpiY, sameLayout] = RenderTarget(painter, size);
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

void TQyPieChart::PaintToImage(QPainter* g, float dx, float dy, bool printing) {
  g->save();
  g->translate(dx, dy);
  PaintTo(g, size(), printing);
  g->restore();
}
