// Drawing of a series: the area under or between curves and the polyline.
#include "QyAxis.h"
#include "QyGraph2D.h"
#include "QySeries.h"
#include "QyStyles.h"
#include <QPainter>

namespace {
// Thick or dashed polylines are drawn in pieces: the raster engine's cost for one long wide path
// grows much faster than linearly, pieces keep it linear.
constexpr int ChunkPoints = 1000;
} // namespace

void TQySeries::PaintGr(QPainter* g) {
  if (!FXAxis || !FYAxis || !FGraph || !SeriesVisible()) return;
  if (FPointsStale) CalculatePoints();
  if (FPointCount > 1) DrawLine(g);
  DrawSymbols(g);
}

void TQySeries::DrawLine(QPainter* g) {
  const QPointF* pts = FPoints.Data();
  if (FArea->GetVisible() && FTotalPointCount > 2) {
    g->setPen(Qt::NoPen);
    g->setBrush(FBrush);
    g->drawPolygon(pts, FTotalPointCount);
  }
  if (!FLine->GetVisible()) return;
  g->setBrush(Qt::NoBrush);
  if (OnGetPen) {
    for (int k = 0; k + 1 < FPointCount; ++k) {
      QPen pen = FPen;
      if (!OnGetPen(this, FPointIndices[k], pen)) continue; // the application skips this segment
      g->setPen(pen);
      g->drawLine(pts[k], pts[k + 1]);
    }
    return;
  }
  g->setPen(FPen);
  DrawPlainLine(g);
}

void TQySeries::DrawPlainLine(QPainter* g) {
  const QPointF* pts = FPoints.Data();
  const bool plain = FPen.widthF() <= 1 && FPen.style() == Qt::SolidLine;
  if (plain || FPointCount <= ChunkPoints) {
    g->drawPolyline(pts, FPointCount);
    return;
  }
  for (int k = 0; k + 1 < FPointCount; k += ChunkPoints) {
    const int n = std::min(ChunkPoints + 1, FPointCount - k); // pieces share their end points
    g->drawPolyline(pts + k, n);
  }
}

TQyLineSeries::TQyLineSeries(QObject* owner) : TQySeries(owner) {}
