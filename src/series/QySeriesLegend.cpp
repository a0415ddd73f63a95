// The legend sample of a series: area, line and symbol in a small rectangle; series merged into
// one legend row share the rectangle by halves or diagonals.
#include "QyDrawing.h"
#include "QySeries.h"
#include "QyStyles.h"
#include <QPainter>

void TQySeries::DrawListItem(const TQyLegendItemDrawArgs& args) {
  if (FMergeLegendItemWith) DrawMergedItems(args);
  else DrawListItem(args, LegendItemStyle::Filled);
}

namespace {
// Where the symbols of a sample stand: the out-of-range look beside the normal one, placed along
// the style's diagonal.
void SymbolPlaces(const QRectF& r, LegendItemStyle style, QPointF& first, QPointF& second) {
  const QPointF c = r.center();
  const double dx = r.width() / 4, dy = r.height() / 4;
  switch (style) {
  case LegendItemStyle::AscendingDiagonal: first = c + QPointF(-dx, dy), second = c + QPointF(dx, -dy); break;
  case LegendItemStyle::DescendingDiagonal: first = c + QPointF(-dx, -dy), second = c + QPointF(dx, dy); break;
  default: first = c + QPointF(-dx, 0), second = c + QPointF(dx, 0); break;
  }
}

void DrawLook(QPainter* g, const TQyPointSymbolSettings& s, QPointF at) {
  DrawPointSymbol(g, TQyPen(s.GetBorderColor(), s.GetBorderLineWidth()), QBrush(TQyColorToQColor(s.GetFillColor())),
                  at.x(), at.y(), s.GetSize(), s.GetPointSymbol());
}

QPolygonF AreaOf(const QRectF& r, LegendItemStyle style) {
  switch (style) {
  case LegendItemStyle::HalfHorizontal: return QPolygonF(QRectF(r.x(), r.center().y(), r.width(), r.height() / 2));
  case LegendItemStyle::AscendingDiagonal: return QPolygonF({r.bottomLeft(), r.topRight(), r.bottomRight()});
  case LegendItemStyle::DescendingDiagonal: return QPolygonF({r.bottomRight(), r.topLeft(), r.bottomLeft()});
  default: return QPolygonF(r);
  }
}
} // namespace

void TQyLineSeries::DrawListItem(const TQyLegendItemDrawArgs& args, LegendItemStyle style) {
  QPainter* g = args.Graphics;
  const QRectF& r = args.Rect;
  const bool twoLooks = FRangeFromFunction && FOutOfRangePointSymbol->GetVisible();
  QPointF first, second;
  SymbolPlaces(r, style, first, second);
  const QPointF normalAt = twoLooks || style == LegendItemStyle::AscendingDiagonal ||
                                   style == LegendItemStyle::DescendingDiagonal
                               ? first
                               : r.center();
  g->save();
  const bool symbol = FPointSymbol->GetVisible();
  if (symbol && NeedsHoles()) {
    ExcludeSymbolSpace(g, normalAt.x(), normalAt.y(), FPointSymbol->GetSize(), FPointSymbol->GetPointSymbol());
    if (twoLooks)
      ExcludeSymbolSpace(g, second.x(), second.y(), FOutOfRangePointSymbol->GetSize(),
                         FOutOfRangePointSymbol->GetPointSymbol());
    if (style == LegendItemStyle::Filled) style = LegendItemStyle::HalfHorizontal;
  }
  if (FArea->GetVisible()) {
    g->setPen(Qt::NoPen);
    g->setBrush(FArea->GetBrush(r));
    g->drawPolygon(AreaOf(r, style));
  }
  if (FLine->GetVisible()) {
    g->setPen(FLine->GetPen(r));
    if (style == LegendItemStyle::AscendingDiagonal) g->drawLine(r.bottomLeft(), r.topRight());
    else if (style == LegendItemStyle::DescendingDiagonal) g->drawLine(r.topLeft(), r.bottomRight());
    else g->drawLine(QPointF(r.left(), r.center().y()), QPointF(r.right(), r.center().y()));
  }
  g->restore();
  if (!symbol) return;
  DrawLook(g, *FPointSymbol, normalAt);
  if (twoLooks) DrawLook(g, *FOutOfRangePointSymbol, second);
}

// This series and the ones merged with it share the row: with two or more lines or areas the
// rectangle is cut along its diagonals, one part per series.
void TQySeries::DrawMergedItems(const TQyLegendItemDrawArgs& args) {
  QList<TQySeries*> group{this};
  if (FMergeLegendItemWith) group << FMergeLegendItemWith.data();
  if (FGraph)
    for (TQySeries* s : FGraph->RelatedSeries())
      if (s != this && s->GetMergeLegendItemWith() == this && !group.contains(s)) group << s;
  int lines = 0, areas = 0;
  for (TQySeries* s : group) {
    lines += s->SampleHasLine();
    areas += s->SampleHasArea();
  }
  const bool split = std::max(lines, areas) > 1;
  static constexpr LegendItemStyle Parts[] = {LegendItemStyle::AscendingDiagonal, LegendItemStyle::DescendingDiagonal};
  for (int k = 0; k < group.size(); ++k)
    group[k]->DrawListItem(args, split && k < 2 ? Parts[k] : LegendItemStyle::Filled);
}
