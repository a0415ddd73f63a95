// Bars: painting all bar series of a graph class by class, one bar and its label at a time, and
// the legend sample.
#include "QyBars.h"
#include "QyDrawing.h"
#include <QPainter>
#include <cmath>

// The first visible bar series paints the bars of every visible one: class by class, and within
// a class in list order, so that the depth of a later bar covers the one before it.
void TQyBars::PaintGr(QPainter* g) {
  if (!FXAxis || !FYAxis || !FGraph || !SeriesVisible()) return;
  QList<TQyBars*> members;
  for (TQyBars* b : GraphBars())
    if (b->FXAxis && b->FYAxis && b->FGraph && b->SeriesVisible()) members << b;
  if (members.isEmpty() || members.first() != this) return;
  int most = 0;
  for (TQyBars* b : members) {
    if (b->FPointsStale) b->CalculatePoints();
    most = std::max(most, b->FPointCount);
  }
  g->save();
  if (members.size() == 1 && PlainFills()) PaintColumns(g);
  else
    for (int i = 0; i < most; ++i)
    for (TQyBars* b : members)
      if (i < b->FPointCount) b->PaintBar(g, i);
  g->restore();
}

// Fills only, in one plain brush, with nothing for the application to decide per bar.
bool TQyBars::PlainFills() const {
  return FBarStyle == TQyBarStyle::Flat && !OnGetBrush && !OnGetPen && !FLine->GetVisible() &&
         FArea->GetVisible() && !FArea->GetGradient()->GetVisible() &&
         FLabelPosition == TQyBarLabelPosition::Invisible;
}

// Bars narrower than a pixel that share a pixel column (a row for horizontal bars) are filled as
// one rectangle around them: a histogram of many classes costs the pixels, not the classes.
void TQyBars::PaintColumns(QPainter* g) {
  const TQyPointVector& p = FPoints;
  const TQyPointVector& q = FSecondCorners;
  // Along the classes (a) and along the values (v); a run is [a0, a1] x [v0, v1].
  auto along = [this](const QPointF& c) { return FBarsHorizontal ? c.y() : c.x(); };
  auto across = [this](const QPointF& c) { return FBarsHorizontal ? c.x() : c.y(); };
  double a0 = 0, a1 = 0, v0 = 0, v1 = 0, column = -1e30;
  auto flush = [&] {
    g->fillRect(FBarsHorizontal ? QRectF(v0, a0, v1 - v0, a1 - a0) : QRectF(a0, v0, a1 - a0, v1 - v0), FBrush);
  };
  for (int j = 0; j < FPointCount; ++j) {
    const double b0 = std::min(along(p[j]), along(q[j])), b1 = std::max(along(p[j]), along(q[j]));
    const double w0 = std::min(across(p[j]), across(q[j])), w1 = std::max(across(p[j]), across(q[j]));
    if (std::floor(b0) == column && b1 <= column + 1 && a1 <= column + 1) {
      a0 = std::min(a0, b0), a1 = std::max(a1, b1), v0 = std::min(v0, w0), v1 = std::max(v1, w1);
      continue;
    }
    if (j > 0) flush();
    a0 = b0, a1 = b1, v0 = w0, v1 = w1;
    column = std::floor(b0);
  }
  if (FPointCount > 0) flush();
}

namespace {
// What one bar is drawn with, after the application's handlers had their say.
struct TBarLook {
  QPen Pen;
  QBrush Brush;
  TQyColor Line, Fill;
  bool DrawLine, DrawArea;
};
} // namespace

void TQyBars::PaintBar(QPainter* g, int j) {
  const QRectF r = BarRect(j);
  const bool gradientLine = FLine->GetGradient()->GetVisible() && FBarStyle == TQyBarStyle::Flat;
  TBarLook look{gradientLine ? QPen(FLine->GetPen(r)) : FPen,
                FArea->GetGradient()->GetVisible() ? FArea->GetBrush(r) : FBrush,
                FLine->GetVisible() ? FLine->GetColor() : QyTransparent,
                FArea->GetVisible() ? FArea->GetForeColor() : QyTransparent,
                FLine->GetVisible(), FArea->GetVisible()};
  const int index = FPointIndices[j];
  if (OnGetBrush || OnGetPen) {
    const double x = Get_X(index), y = Get_Y(index);
    if (OnGetBrush) {
      TQyBrushEventArgs args{index, x, y, look.Brush, look.DrawArea};
      OnGetBrush(this, args);
      look.Brush = args.Brush, look.DrawArea = args.Draw;
      if (look.Brush.style() == Qt::SolidPattern) look.Fill = QColorToTQyColor(look.Brush.color());
    }
    if (OnGetPen) {
      TQyPenEventArgs args{index, x, y, look.Pen, look.DrawLine};
      OnGetPen(this, args);
      look.Pen = args.Pen, look.DrawLine = args.Draw;
      look.Line = QColorToTQyColor(look.Pen.color());
    }
  }
  const TQyColor line = look.DrawLine ? look.Line : QyTransparent;
  const TQyColor fill = look.DrawArea ? look.Fill : QyTransparent;
  const QPointF p = FPoints[j], q = FSecondCorners[j];
  switch (FBarStyle) {
  case TQyBarStyle::Flat: {
    // An outline takes room: a bar thinner than its pen is left out, and the rest shrinks by
    // the pen around its centre.
    const double pw = look.DrawLine ? look.Pen.widthF() : 0;
    if (pw >= r.width() || pw >= r.height()) break;
    const QRectF inner = r.adjusted(pw / 2, pw / 2, -pw / 2, -pw / 2);
    if (look.DrawArea) g->fillRect(inner, look.Brush);
    if (look.DrawLine) {
      g->setPen(look.Pen);
      g->setBrush(Qt::NoBrush);
      g->drawRect(inner);
    }
    break;
  }
  case TQyBarStyle::Cuboid:
    if (look.DrawArea || look.DrawLine) {
      // Horizontal bars share one shading across the data area.
      const QRectF area = FBarsHorizontal ? DataArea() : QRectF();
      Draw3DBar(g, line, fill, p.x(), p.y(), q.x(), q.y(), FDepth3DX, FDepth3DY, area.left(), area.width());
    }
    break;
  case TQyBarStyle::Cylinder:
    if (look.DrawArea || look.DrawLine) {
      if (FBarsHorizontal) DrawCylinderHorizontal(g, line, fill, p.x(), p.y(), q.x(), q.y(), FDepth3DX, FDepth3DY);
      else DrawCylinderVertical(g, line, fill, p.x(), p.y(), q.x(), q.y(), FDepth3DX, FDepth3DY);
    }
    break;
  }
  // Labels interleave with the bars: a bar of a later class may cover a label of an earlier one.
  if (FLabelPosition != TQyBarLabelPosition::Invisible && j < FCaptionObjects.Count())
    FCaptionObjects.GetValue(j)->PaintGr(g);
}

void TQyBars::DrawListItem(const TQyLegendItemDrawArgs& args, LegendItemStyle) {
  QPainter* g = args.Graphics;
  const QRectF& r = args.Rect;
  const float x = r.x(), y = r.y(), w = r.width(), h = r.height();
  const bool area = FArea->GetVisible(), lineShown = FLine->GetVisible();
  const TQyColor line = lineShown ? FLine->GetColor() : QyTransparent;
  const TQyColor fill = area ? FArea->GetForeColor() : QyTransparent;
  const float d = h / 4;
  g->save();
  switch (FBarStyle) {
  case TQyBarStyle::Flat: {
    const QPen pen = FLine->GetPen(r);
    const double pw = std::max(pen.widthF(), 1.0);
    const QRectF inner = r.adjusted(pw, pw, -pw, -pw);
    if (area) g->fillRect(inner, FArea->GetBrush(inner));
    if (lineShown) {
      g->setPen(pen);
      g->setBrush(Qt::NoBrush);
      g->drawRect(inner);
    }
    break;
  }
  case TQyBarStyle::Cuboid:
    if (area || lineShown) Draw3DBar(g, line, fill, x, y + d, x + w - d, y + h - 1, d, d, x, w - d);
    break;
  case TQyBarStyle::Cylinder:
    if (area || lineShown) DrawCylinderHorizontal(g, line, fill, x, y + d, x + w - d - 1, y + h - 1, d, 0);
    break;
  }
  g->restore();
}
