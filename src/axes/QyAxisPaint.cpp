// Drawing of an axis: line, ticks, labels and caption, in the axis' own coordinates.
#include "QyAxis.h"
#include "QyGDI.h"
#include "QyGraph2D.h"
#include "QyRounding.h"
#include <QPainter>

namespace {
QPen SolidPen(TQyColor color, float width) {
  QPen pen(TQyColorToQColor(color), width);
  pen.setCapStyle(Qt::FlatCap);
  return pen;
}
} // namespace

void TQyAxis::PaintGr(QPainter* g) {
  if (FNeedsCalc) Calculate();
  const bool horizontal = GetHorizontal();
  const bool printing = Graph() && Graph()->Printing();
  // Ticks point away from the data area unless asked otherwise.
  const bool awayIsPositive = FPosition == TQyAxisPosition::Bottom || FPosition == TQyAxisPosition::Right;
  const float dir = (awayIsPositive != FTicksPointToData) ? 1.0f : -1.0f;
  const float line = horizontal ? FOriginY : FOriginX;
  const float a0 = horizontal ? FOriginX : FOriginY;

  g->save();
  g->setRenderHint(QPainter::Antialiasing, false);
  for (int i = 0; i < FTickPositions.Count(); ++i) {
    const bool major = FMajorFlags[i];
    const float p = printing ? FTickPositions[i] : float(Round(FTickPositions[i]));
    const float len = major ? FMajorTickLength : FTickLength;
    g->setPen(SolidPen(major ? FMajorTickColor : FTickColor, major ? FMajorTickThicknes : FTickThicknes));
    if (horizontal) g->drawLine(QPointF(p, line), QPointF(p, line + dir * len));
    else g->drawLine(QPointF(line, p), QPointF(line + dir * len, p));
  }
  g->setPen(SolidPen(FForeColor, FAxisThicknes));
  if (horizontal) g->drawLine(QPointF(a0, line), QPointF(a0 + FAxisLength, line));
  else g->drawLine(QPointF(line, a0), QPointF(line, a0 + FAxisLength));
  g->restore();

  for (const auto& label : FTickLabels) label->PaintGr(g);
  PaintCaption(g);
}

void TQyAxis::PaintCaption(QPainter* g) {
  if (!FCaptionVisible || FCaption.isEmpty()) return;
  TQyRichCaptionObject& c = *FCaptionObject;
  const bool horizontal = GetHorizontal();
  const float along = (horizontal ? FOriginX : FOriginY) +
                      (FCaptionAlignment == TAlignment::Center ? FAxisLength / 2
                       : (FCaptionAlignment == TAlignment::LeftJustify) == horizontal ? 0 : FAxisLength);
  const float border = GetDistanceToBorder();
  switch (FPosition) {
  case TQyAxisPosition::Bottom:
    c.Angle = 0, c.Alignment = TQyContentAlignment::BottomCenter;
    c.X = along, c.Y = height() - border;
    break;
  case TQyAxisPosition::Top:
    c.Angle = 0, c.Alignment = TQyContentAlignment::TopCenter;
    c.X = along, c.Y = border;
    break;
  case TQyAxisPosition::Left:
  case TQyAxisPosition::Right: {
    const bool left = FPosition == TQyAxisPosition::Left;
    c.X = left ? border : width() - border;
    c.Y = along;
    if (FCaptionHorizontalOnVerticalAxis) {
      c.Angle = 0, c.Alignment = left ? TQyContentAlignment::MiddleLeft : TQyContentAlignment::MiddleRight;
    } else {
      // Upright text reads bottom to top; its top faces the outer border on the left side.
      c.Angle = left ? 90 : 270, c.Alignment = TQyContentAlignment::TopCenter;
    }
    break;
  }
  }
  c.PaintGr(g);
}
