// Point symbols of a series: which look each point gets, at most one symbol per pixel, and the
// holes that translucent symbols cut into the clip before the line is drawn.
#include "QyAxis.h"
#include "QyDrawing.h"
#include "QySeries.h"
#include "QyStyles.h"
#include "QyVectors.h"
#include "QyRounding.h"
#include "QyStamp.h"
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QRegion>
#include <cmath>

namespace {
bool Translucent(const TQyPointSymbolSettings* s) { return (s->GetFillColor() >> 24) != 0xFF; }

// Unites many regions pairwise: one after the other would cost the square of their number.
QRegion UniteAll(std::vector<QRegion> parts) {
  if (parts.empty()) return {};
  while (parts.size() > 1) {
    size_t w = 0;
    for (size_t r = 0; r < parts.size(); r += 2)
      parts[w++] = r + 1 < parts.size() ? parts[r].united(parts[r + 1]) : parts[r];
    parts.resize(w);
  }
  return parts.front();
}
} // namespace

// The X of data index i lies within the calculated range of RangeFromFunction (bounds included).
// The data index is what decides, so that thinned points are judged by their own value.
bool TQyLineSeries::InFunctionRange(int i) {
  if (i < 0) return true; // a point of a calculated curve lies in its own range
  const double x = TransformX(FXData->GetValue(i), i);
  return x >= FRangeFromFunction->GetCalcStart() && x <= FRangeFromFunction->GetCalcStop();
}

const TQyPointSymbolSettings* TQyLineSeries::SymbolAt(int i, const QPen*& pen, const QBrush*& brush) {
  if (!FPointSymbol->GetVisible()) return nullptr;
  if (FRangeFromFunction && !InFunctionRange(i)) {
    if (!FOutOfRangePointSymbol->GetVisible()) return nullptr;
    pen = &FOutOfRangeSymbolPen, brush = &FOutOfRangeSymbolBrush;
    return FOutOfRangePointSymbol;
  }
  pen = &FSymbolPen, brush = &FSymbolBrush;
  return FPointSymbol;
}

bool TQyLineSeries::NeedsHoles() const {
  if (!FPointSymbol->GetVisible()) return false;
  return Translucent(FPointSymbol) ||
         (FRangeFromFunction && FOutOfRangePointSymbol->GetVisible() && Translucent(FOutOfRangePointSymbol));
}

template <class F> void TQyLineSeries::ForEachDistinctSymbol(F f) {
  const int m = int(std::ceil(std::max(FPointSymbol->GetSize(), FOutOfRangePointSymbol->GetSize()))) + 1;
  FDrawCells.Reset(QRect(QPoint(0, 0), FGraph->LayoutSize()).adjusted(-m, -m, m, m));
  for (int k = 0; k < FPointCount; ++k)
    if (FDrawCells.Claim(FPoints[k])) f(k);
}

void TQyLineSeries::ShootHolesToClip(QPainter* g) {
  std::vector<QRegion> holes;
  ForEachDistinctSymbol([&](int k) {
    const QPen* pen;
    const QBrush* brush;
    const TQyPointSymbolSettings* s = SymbolAt(FPointIndices[k], pen, brush);
    if (!s || !Translucent(s)) return;
    const QPointF& p = FPoints[k];
    const QPainterPath outline = PointSymbolOutline(p.x(), p.y(), (s->GetSize() - 1) / 2, s->GetPointSymbol());
    if (!outline.isEmpty()) holes.emplace_back(outline.toFillPolygon().toPolygon(), Qt::WindingFill);
  });
  if (holes.empty()) return;
  // The holes are whole pixels: the symbol's border covers their edge.
  const QRegion all = g->hasClipping() ? g->clipRegion()
                                        : QRegion(g->transform().inverted().mapRect(
                                              QRect(0, 0, g->device()->width(), g->device()->height())));
  g->setClipRegion(all.subtracted(UniteAll(std::move(holes))));
}

// Symbols are drawn once per paint, above the axes (the graph calls this after them), so that
// translucent fills are not blended twice.
void TQyLineSeries::DrawSymbols(QPainter* g) {
  if (!FVisible || !FGraph || FPointsStale || FPointCount == 0) return;
  if (OnGetPointSymbol) {
    ForEachDistinctSymbol([&](int k) {
      PointSymbolEventArgs a;
      double x, y;
      ElementAt(k, a.Index, x, y);
      a.X = x, a.Y = y;
      a.Size = FPointSymbol->GetSize();
      a.Symbol = FPointSymbol->GetPointSymbol();
      a.Visible = FPointSymbol->GetVisible();
      a.Pen = FSymbolPen, a.Brush = FSymbolBrush;
      OnGetPointSymbol(this, a);
      if (a.Visible) DrawPointSymbol(g, a.Pen, a.Brush, FPoints[k].x(), FPoints[k].y(), a.Size, a.Symbol);
    });
    return;
  }
  if (!FPointSymbol->GetVisible()) return;
  if (QyCanStamp(g, FPointCount)) {
    StampSymbols(g);
    return;
  }
  ForEachDistinctSymbol([&](int k) {
    const QPen* pen;
    const QBrush* brush;
    if (const TQyPointSymbolSettings* s = SymbolAt(FPointIndices[k], pen, brush))
      DrawPointSymbol(g, *pen, *brush, FPoints[k].x(), FPoints[k].y(), s->GetSize(), s->GetPointSymbol());
  });
}

// Many symbols are stamped, into a layer that the next paint reuses while the points and their
// look stay the same.
void TQyLineSeries::StampSymbols(QPainter* g) {
  const bool aa = g->testRenderHint(QPainter::Antialiasing);
  TQyStamp normal(FSymbolPen, FSymbolBrush, FPointSymbol->GetSize(), FPointSymbol->GetPointSymbol(), aa);
  TQyStamp outside(FOutOfRangeSymbolPen, FOutOfRangeSymbolBrush, FOutOfRangePointSymbol->GetSize(),
                   FOutOfRangePointSymbol->GetPointSymbol(), aa);
  const int m = std::max(normal.Image().width(), outside.Image().width());
  const QRect bounds = QRect(QPoint(0, 0), FGraph->LayoutSize()).adjusted(-m, -m, m, m);
  FStampLayer.Paint(g, {FPointsVersion, normal.Look() + outside.Look()}, bounds, [&](QPainter* layer) {
    normal.Begin(layer);
    outside.Begin(layer);
    ForEachDistinctSymbol([&](int k) {
      const QPen* pen;
      const QBrush* brush;
      const TQyPointSymbolSettings* s = SymbolAt(FPointIndices[k], pen, brush);
      if (!s) return;
      (s == FPointSymbol ? normal : outside).Put(layer, int(Round(FPoints[k].x())), int(Round(FPoints[k].y())));
    });
  });
}
