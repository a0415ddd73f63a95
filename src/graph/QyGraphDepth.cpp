// The box of a graph whose data area has depth (three-dimensional bars): a back wall moved up and
// right by the depth, a left wall and a floor, grid lines across the floor and up the back wall,
// and the box's edges in the pen of the major horizontal grid.
#include "QyAxis.h"
#include "QyGDI.h"
#include "QyGraph2D.h"
#include "QyRounding.h"
#include "QyStyles.h"
#include <QPainter>

void TQyGraph2D::MeasureDepth(const QList<IQyGraphPart*>& parts) {
  FDepth = TDepth();
  float dx = 0, dy = 0;
  for (IQyGraphPart* part : parts)
    if (PartShown(part) && part->GraphDepth(dx, dy)) {
      FDepth.Has = true;
      break;
    }
  if (!FDepth.Has) return;
  FDepth.X = int(Round(dx)) - 1;
  FDepth.Y = int(Round(dy));
  const QRectF& a = FDataArea;
  FDepth.XAxisLine = FPrimaryXAxis->GetPosition() == TQyAxisPosition::Top ? Round(a.y()) : Round(a.y() + a.height() - 1);
  FDepth.YAxisLine = FPrimaryYAxis->GetPosition() == TQyAxisPosition::Left ? Round(a.x()) : Round(a.x() + a.width());
  for (TQyLineSettings* grid : {FMajorGridHorizontal, FMinorGridHorizontal, FMajorGridVertical, FMinorGridVertical})
    FDepth.Grid3D = FDepth.Grid3D || grid->GetVisible();
  if (FDepth.Grid3D)
    for (TQyAxis* axis : Axes()) FDepth.RightYAxis = FDepth.RightYAxis || axis->GetPosition() == TQyAxisPosition::Right;
}

void TQyGraph2D::PaintWalls(QPainter* g) {
  const bool gradient = FDataAreaGradient->GetVisible();
  const QRectF& a = FDataArea;
  const float x = a.x(), y = a.y(), w = a.width(), h = a.height();
  const float dx = FDepth.X, dy = FDepth.Y;
  // The back wall without smoothing, in the gradient or the plain colour of the data area.
  g->setRenderHint(QPainter::Antialiasing, false);
  const QRectF back(x + dx, y - dy, w - 1, h);
  g->fillRect(back, gradient ? FDataAreaGradient->GetBrush(back) : QBrush(TQyColorToQColor(GetDataAreaColor())));
  SetHighQuality(g, true);
  const TQyColor wall = gradient ? FDataAreaGradient->GetLastColor() : GetDataAreaColor();
  g->setPen(Qt::NoPen);
  g->setBrush(TQyColorToQColor(Brighten(wall, 0.85f)));
  g->drawPolygon(QPolygonF{{x, y}, {x, y + h}, {x + dx, y + h - dy}, {x + dx, y - dy}});
  g->setBrush(TQyColorToQColor(Brighten(wall, 0.75f)));
  g->drawPolygon(QPolygonF{{x + w - 2, y + h - 1}, {x + w + dx, y + h - dy - 1}, {x + dx, y + h - dy - 1}, {x - 1, y + h - 1}});
  g->setBrush(Qt::NoBrush);
}

// One grid line of a box: across the floor (or the left wall) from the axis line to the back
// wall, then along the back wall.
void TQyGraph2D::PaintGridLine3D(QPainter* g, bool alongX, float p) {
  const QRectF& a = FDataArea;
  const float dx = FDepth.X, dy = FDepth.Y;
  if (alongX) {
    const float line = FDepth.XAxisLine;
    g->drawLine(QPointF(p, line), QPointF(p + dx, line - dy));
    g->drawLine(QPointF(p + dx, a.y() - dy), QPointF(p + dx, a.y() + a.height() - dy - 1));
  } else {
    const float line = FDepth.YAxisLine;
    g->drawLine(QPointF(line, p), QPointF(line + dx, p - dy));
    g->drawLine(QPointF(a.x() + dx, p - dy), QPointF(a.x() + a.width() + dx - 1, p - dy));
  }
}

// The edges of the box that no axis or grid line draws, in the pen of the major horizontal grid.
void TQyGraph2D::PaintBoxEdges(QPainter* g) {
  const float x = FDataArea.x(), y = FDataArea.y(), w = FDataArea.width(), h = FDataArea.height();
  const float dx = FDepth.X, dy = FDepth.Y;
  const bool coloured = GetDataAreaColor() != GetBackColor();
  if (!FDepth.RightYAxis && !FMajorGridVertical->GetVisible()) {
    const QPointF foot(x + w + dx - 1, y + h - dy - 1);
    g->drawLine(QPointF(x + w - 1, y + h - 1), foot);
    if (coloured) g->drawLine(foot, QPointF(x + w + dx - 1, y - dy));
  }
  auto close = [](TQyAxis* axis) { return axis->GetVisible() && axis->GetDistanceValuesAxis() <= 2; };
  const bool yAxisOnEdge = FPrimaryYAxis->GetPosition() == TQyAxisPosition::Left && close(FPrimaryYAxis);
  if (coloured && !yAxisOnEdge) g->drawLine(QPointF(x, y + h - 1), QPointF(x, y));
  if (coloured && !close(FPrimaryXAxis)) g->drawLine(QPointF(x, y + h - 1), QPointF(x + w - 1, y + h - 1));
}
