// The one drawing path of the graph, used for the screen, images and printing alike.
#include "QyAxis.h"
#include "QyComponent.h"
#include "QyGDI.h"
#include "QyGraph2D.h"
#include "QyRounding.h"
#include "QySeries.h"
#include "QyStyles.h"
#include <QImage>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>

void TQyGraph2D::paintEvent(QPaintEvent* e) {
  // A partial repaint that moves an edge of a non-solid area cannot be drawn piecewise.
  const QRect clip = e->rect();
  if (!FRepaintAfterPaint && FLastClipRect.isValid() &&
      (clip.left() != FLastClipRect.left() || clip.right() != FLastClipRect.right()))
    for (TQySeries* s : FRelatedSeries)
      if (s->NeedsWholeRepaint()) FRepaintAfterPaint = true;
  FLastClipRect = clip;
  QPainter painter(this);
  // Rendered onto another kind of device (QWidget::render to SVG, PDF, a printer): lay out for it.
  if (painter.paintEngine() && painter.paintEngine()->type() != QPaintEngine::Raster) PaintTo(&painter, size(), true);
  else PaintGr(&painter);
  if (FRepaintAfterPaint) {
    FRepaintAfterPaint = false;
    update();
  }
}

// A picture never raises: a part that fails (a range no label can show, say) leaves what was drawn
// so far, and the application goes on.
void TQyGraph2D::PaintGr(QPainter* g) {
  try {
    PaintPicture(g);
  } catch (const std::exception&) {
  }
}

void TQyGraph2D::PaintPicture(QPainter* g) {
  QyCompleteConstruction(); // a picture is the first use of everything made so far
  if (FFirstPaint) {
    TestPrimaryAxis();
    FFirstPaint = false;
  }
  if (!FPrimaryXAxis || !FPrimaryYAxis) return;
  // One state of the data for the whole picture: ranges and points agree.
  const TQyVectorReadLocks hold = HoldSeriesData();
  // Ranges, then layout, until nothing is stale: a layout can make a range stale again (a series
  // that became visible asks for new ranges), and a picture must never show half of a change.
  // An axis whose settings changed lays out the whole graph before anything is drawn.
  for (int pass = 0; pass < 3; ++pass) {
    TestSeriesAndAxis(true);
    bool stale = FNeedsCalculate;
    for (TQyAxis* a : Axes()) stale = stale || a->NeedsCalc();
    if (!stale || Updating()) break;
    Calculate();
  }
  const QList<IQyGraphPart*> parts = Parts(); // one list for the whole picture
  MeasureDepth(parts);
  g->save();
  for (int pass = int(TQyPaintPass::Background); pass <= int(TQyPaintPass::Overlays); ++pass)
    PaintPass(g, TQyPaintPass(pass), parts);
  g->restore();
}

// One pass: the graph's own share, then every part that paints in it, in part order.
void TQyGraph2D::PaintPass(QPainter* g, TQyPaintPass pass, const QList<IQyGraphPart*>& parts) {
  const bool clipped = pass == TQyPaintPass::SeriesLines || pass == TQyPaintPass::SeriesSymbols;
  if (clipped) SetDataClip(g);
  if (pass == TQyPaintPass::SeriesLines) SetHighQuality(g, true);
  PaintOwnShare(g, pass);
  for (IQyGraphPart* part : parts)
    if (QyPaintsIn(part->PaintPasses(), pass) && PartShown(part)) PaintPart(g, part, pass);
  if (clipped) g->setClipping(false);
  if (pass == TQyPaintPass::Axes) SetHighQuality(g, true);
}

void TQyGraph2D::PaintOwnShare(QPainter* g, TQyPaintPass pass) {
  switch (pass) {
  case TQyPaintPass::Background: PaintBackground(g); break;
  case TQyPaintPass::DataArea: PaintDataArea(g); break;
  case TQyPaintPass::Title:
    if (GetCaptionVisible()) FCaptionObject->PaintGr(g);
    break;
  case TQyPaintPass::Grid:
    PaintGrid(g, FPrimaryXAxis, FMajorGridVertical, FMinorGridVertical);
    PaintGrid(g, FPrimaryYAxis, FMajorGridHorizontal, FMinorGridHorizontal);
    break;
  case TQyPaintPass::Frame: PaintFrame(g); break;
  default: break;
  }
}

// A part that is a widget of another parent paints itself; a child widget paints translated to
// its place in the graph; any other part paints in the graph's coordinates.
void TQyGraph2D::PaintPart(QPainter* g, IQyGraphPart* part, TQyPaintPass pass) {
  auto* widget = dynamic_cast<QWidget*>(part);
  if (widget && widget->parentWidget() != this) return;
  if (!widget) return part->PaintPass(pass, g);
  g->save();
  g->translate(widget->x(), widget->y());
  part->PaintPass(pass, g);
  g->restore();
}

void TQyGraph2D::PaintFrame(QPainter* g) {
  if (!FDataAreaFrame->GetVisible()) return;
  const float w = FDataAreaFrame->GetWidth();
  g->setPen(FDataAreaFrame->GetPen(FDataArea.adjusted(-w, -w, w, w)));
  g->setBrush(Qt::NoBrush);
  g->drawRect(FDataArea.adjusted(0, 0, -1, -1));
}

void TQyGraph2D::PaintBackground(QPainter* g) {
  g->setRenderHint(QPainter::Antialiasing, false);
  const QRectF client(QPointF(0, 0), LayoutSize());
  g->fillRect(client, TQyColorToQColor(GetBackColor()));
  if (FBackgroundGradient->GetVisible()) g->fillRect(client, FBackgroundGradient->GetBrush(client));
}

void TQyGraph2D::PaintDataArea(QPainter* g) {
  const bool gradient = FDataAreaGradient->GetVisible();
  const TQyColor color = GetDataAreaColor();
  if (!gradient && (color == GetBackColor() || (color >> 24) == 0)) return;
  if (FDepth.Has) return PaintWalls(g);
  g->fillRect(FDataArea, gradient ? FDataAreaGradient->GetBrush(FDataArea) : QBrush(TQyColorToQColor(color)));
}

// Major grid lines first, then minor ones, at whole pixels on screen and fractional in print.
void TQyGraph2D::PaintGrid(QPainter* g, TQyAxis* axis, TQyLineSettings* major, TQyLineSettings* minor) {
  const TQySingleVector& ticks = axis->TickPositions();
  const TQyBooleanVector& flags = axis->GridFlags();
  const bool vertical = axis->GetHorizontal(); // a horizontal axis has vertical grid lines
  const float x0 = FDataArea.x(), y0 = FDataArea.y();
  const float x1 = x0 + FDataArea.width() - 1, y1 = y0 + FDataArea.height() - 1;
  const bool box = FDepth.Has && FDepth.Grid3D;
  for (TQyLineSettings* grid : {major, minor}) {
    if (!grid->GetVisible()) continue;
    const QPen pen = grid->GetPen(FDataArea);
    // Flat grids smooth dashed lines only; across a box only the solid ones are smoothed.
    const bool smooth = box ? pen.style() == Qt::SolidLine : pen.style() != Qt::SolidLine;
    g->setRenderHint(QPainter::Antialiasing, smooth && GetSmoothingMode() >= TQySmoothingMode::AntiAlias);
    g->setPen(pen);
    for (int i = 0; i < ticks.Count(); ++i) {
      if (flags[i] != (grid == major)) continue;
      // Tick positions are in the axis' own coordinates: add the axis' offset in the graph.
      const float p = (vertical ? axis->x() : axis->y()) + (FPrinting ? ticks[i] : float(Round(ticks[i])));
      if (box) PaintGridLine3D(g, vertical, p);
      else if (vertical) g->drawLine(QPointF(p, y0), QPointF(p, y1));
      else g->drawLine(QPointF(x0, p), QPointF(x1, p));
    }
    if (FDepth.Has && grid == major && grid == FMajorGridHorizontal) PaintBoxEdges(g);
  }
}

// Series are clipped to the data area only on the sides where an axis hides data.
void TQyGraph2D::SetDataClip(QPainter* g) {
  float l = 0, t = 0, r = LayoutSize().width(), b = LayoutSize().height();
  bool clipped = false;
  for (TQyAxis* a : Axes()) {
    if (!a->GetIsClipped()) continue;
    const double m = (a->GetStop() - a->GetStart()) * 1e-8;
    const bool cutStart = a->GetStart() - m > a->DataHullMin(), cutStop = a->GetStop() + m < a->DataHullMax();
    if (!cutStart && !cutStop) continue;
    clipped = true;
    if (a->GetHorizontal()) {
      const float lo = FDataArea.x(), hi = FDataArea.x() + FDataArea.width();
      if (cutStart) (a->GetTwisted() ? r : l) = a->GetTwisted() ? hi : lo;
      if (cutStop) (a->GetTwisted() ? l : r) = a->GetTwisted() ? lo : hi;
    } else {
      // Vertical axes clip as if never twisted.
      if (cutStart) b = FDataArea.y() + FDataArea.height();
      if (cutStop) t = FDataArea.y();
    }
  }
  if (clipped) g->setClipRect(QRectF(l, t, r - l, b - t), Qt::IntersectClip);
  else g->setClipping(false);
}
