// Drawing of an axis: ticks, the axis line with its optional arrow, labels, caption and extra
// exponent, in the axis's own coordinates. Everything was measured and placed by the layout.
#include "QyAxis.h"
#include "QyDrawing.h"
#include "QyGDI.h"
#include "QyRounding.h"
#include <QPainter>
#include <cmath>

namespace {
QPen FlatPen(TQyColor color, float width) {
  QPen pen(TQyColorToQColor(color), width);
  pen.setCapStyle(Qt::FlatCap);
  return pen;
}
} // namespace

void TQyAxis::PaintGr(QPainter* g) {
  if (!g || LayoutInProgress(LayoutParent())) return;
  if (FNeedsCalc) Calculate();
  // On screen ticks sit on whole pixels; an image keeps them fractional, so that thin ticks are
  // not bunched at high resolution.
  const bool exact = Graph() && Graph()->Printing();
  g->save();
  g->setRenderHint(QPainter::Antialiasing, false);
  PaintTicks(g, exact);
  PaintAxisLine(g, exact);
  if (FNumbersVisible)
    for (const auto& label : FTickLabels) label->PaintGr(g);
  // Colours of numbers and caption were given to the runs when they were parsed.
  if (FCaptionVisible && !FCaption.isEmpty()) FCaptionObject->PaintGr(g);
  if (FExtraExponentOn && !FExtraExponentCaption->Caption.isEmpty()) FExtraExponentCaption->PaintGr(g);
  g->restore();
}

void TQyAxis::paintEvent(QPaintEvent*) {
  if (Graph()) return; // the graph draws its axes with its own painter
  QPainter painter(this);
  PaintGr(&painter);
}

// Ticks leave the axis line at its edge, away from the data unless they point to it; all majors
// first, then all minors, with one pen for each group.
void TQyAxis::PaintTicks(QPainter* g, bool exact) {
  const float t = FAxisThicknes;
  const bool leftOrTop = FPosition == TQyAxisPosition::Left || FPosition == TQyAxisPosition::Top;
  const bool negative = leftOrTop != FTicksPointToData; // ticks grow towards smaller coordinates
  const float origin = GetHorizontal() ? FOriginY : FOriginX;
  const float base = leftOrTop ? (FTicksPointToData ? float(Ceil(origin - t / 2)) : float(Floor(t / 2 + origin)))
                               : (FTicksPointToData ? float(Floor(origin - t / 2)) : float(Ceil(t / 2 + origin)));
  const float sign = negative ? -1.0f : 1.0f;
  for (int pass = 0; pass < 2; ++pass) {
    const bool major = pass == 0;
    g->setPen(FlatPen(major ? FMajorTickColor : FTickColor, major ? FMajorTickThicknes : FTickThicknes));
    const float len = sign * (major ? FMajorTickLength : FTickLength);
    for (int i = 0; i < FTickPositions.Count(); ++i) {
      if (FMajorFlags[i] != major) continue;
      const float p = exact ? FTickPositions[i] : float(Round(FTickPositions[i]));
      if (GetHorizontal()) g->drawLine(QPointF(p, base), QPointF(p, base + len));
      else g->drawLine(QPointF(base, p), QPointF(base + len, p));
    }
  }
}

// The axis line; with the arrow it runs 3 point lengths past the end at which the arrow stands
// (the stop end, or the start end when twisted).
void TQyAxis::PaintAxisLine(QPainter* g, bool exact) {
  const bool horizontal = GetHorizontal();
  float across = horizontal ? FOriginY : FOriginX;
  if (!exact) across = float(Round(across));
  const float a0 = horizontal ? FOriginX : FOriginY;
  const float a1 = a0 + FAxisLength;
  auto at = [&](float along) { return horizontal ? QPointF(along, across) : QPointF(across, along); };
  const QPen pen = FlatPen(FForeColor, FAxisThicknes);
  if (!FArrowPoint->GetVisible()) {
    if (!horizontal) g->setRenderHint(QPainter::Antialiasing, true);
    g->setPen(pen);
    g->drawLine(at(a0), at(a1));
    return;
  }
  g->setRenderHint(QPainter::Antialiasing, true);
  const float ext = 3 * FArrowPoint->GetPointLength();
  // Screen coordinates: the stop end is right on a horizontal axis and up on a vertical one.
  const bool tipAtHigh = horizontal != FTwisted;
  const QPointF from = tipAtHigh ? at(a0) : at(a1);
  const QPointF to = tipAtHigh ? at(a1 + ext) : at(a0 - ext);
  DrawArrowLine(g, pen, from, to, ArrowPointCap(*FArrowPoint), FArrowPoint->GetInnerLength());
  g->setRenderHint(QPainter::Antialiasing, false);
}
