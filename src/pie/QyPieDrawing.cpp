// Drawing a pie: flat pies and donuts in one pass of top faces; 3D ones back to front in passes
// of cut faces, hole walls and outer walls before the tops, with shading overlays.
#include "QyDrawing.h"
#include "QyPieChart.h"
#include <QPainter>
#include <cmath>

namespace {
// Shading of a wall from left to right: a light band, then darker towards the right.
const QGradientStops OuterWallShade = {{0.0, QColor::fromRgba(0x00FFFFFF)}, {0.2, QColor::fromRgba(0xBFFFFFFF)},
                                       {0.5, QColor::fromRgba(0x00FFFFFF)}, {0.75, QColor::fromRgba(0x30000000)},
                                       {1.0, QColor::fromRgba(0x90000000)}};
const QGradientStops InnerWallShade = {{0.0, QColor::fromRgba(0xC0000000)}, {0.25, QColor::fromRgba(0x80000000)},
                                       {0.5, QColor::fromRgba(0x30000000)}, {0.8, QColor::fromRgba(0x30FFFFFF)},
                                       {1.0, QColor::fromRgba(0x30000000)}};

// One segment as it is drawn: its rectangles (shifted when exploded), angles, brush and pen.
struct TQyPieSegment {
  int Index = 0; // position in the sweeps
  double Start = 0, Sweep = 0;
  QRectF R, Hole;
  QBrush Brush;
  QPen Pen;
  bool Fill = true, Border = true;
};

class TQyPiePainter {
public:
  TQyPiePainter(TQyPieChart& chart, QPainter* g) : FChart(chart), G(g) {}
  void Paint();

private:
  TQyPieSegment Prepare(int s);
  QPainterPath TopPath(const TQyPieSegment& seg) const;
  QPainterPath Band(const QRectF& r, double from, double to) const;
  QPainterPath Silhouette(const TQyPieSegment& seg) const;
  QPolygonF CutFace(const TQyPieSegment& seg, double angle) const;
  void Background();
  void Empty();
  void Shadow();
  void CutFaces(const TQyPieSegment& seg);
  void ShadeCutFace(const QPolygonF& face, const QRectF& r, double angle);
  void Walls(const TQyPieSegment& seg, const QRectF& r, double visibleFrom, const QGradientStops& shade);
  void WallPiece(const TQyPieSegment& seg, const QRectF& r, double from, double to, const QGradientStops& shade);
  void Top(const TQyPieSegment& seg);
  void FillAndOutline(const QPainterPath& path, const TQyPieSegment& seg);

  TQyPieChart& FChart;
  QPainter* G;
  QPen FPen;
};

void TQyPiePainter::Paint() {
  if (FChart.NeedsCalculate()) FChart.Calculate();
  FChart.SetHighQuality(G, true);
  Background();
  if (FChart.GetCaptionVisible() && !FChart.CaptionAsString().isEmpty()) FChart.CaptionObject()->PaintGr(G);
  FPen = FChart.GetSegmentBorder()->GetPen(FChart.PlotRect());
  if (FChart.Sweeps().empty()) return Empty();
  if (FChart.GetDropShadow()) Shadow();
  const bool donut = FChart.IsDonut();
  if (FChart.IsThreeD()) {
    for (int s : FChart.PaintOrder()) CutFaces(Prepare(s));
    if (donut)
      for (int s : FChart.PaintOrder()) {
        const TQyPieSegment seg = Prepare(s);
        Walls(seg, seg.Hole, 180, InnerWallShade);
      }
    for (int s : FChart.PaintOrder()) {
      const TQyPieSegment seg = Prepare(s);
      Walls(seg, seg.R, 0, OuterWallShade);
    }
  }
  for (int s : FChart.PaintOrder()) Top(Prepare(s));
}

TQyPieSegment TQyPiePainter::Prepare(int s) {
  TQyPieSegment seg;
  seg.Index = s;
  seg.Start = FChart.Starts()[size_t(s)];
  seg.Sweep = FChart.Sweeps()[size_t(s)];
  seg.R = FChart.PieRect();
  if (FChart.AnyExploded()) seg.R.translate(FChart.ExplodeOffsets()[size_t(s)]);
  seg.Hole = QyDonutHole(seg.R, FChart.GetDonutHoleSize());
  seg.Brush = FChart.PaletteItem(s)->GetBrush();
  seg.Pen = FPen;
  seg.Border = FChart.GetSegmentBorder()->GetVisible();
  const int v = FChart.GetLegendItemIndex(s);
  const double value = FChart.GetValues() ? FChart.TransformValue(FChart.GetValues()->GetValue(v), v) : 0.0;
  if (FChart.OnGetBrush) {
    TQyBrushEventArgs args{v, value, seg.Start, seg.Brush, true};
    FChart.OnGetBrush(&FChart, args);
    seg.Brush = args.Brush, seg.Fill = args.Draw;
  }
  if (FChart.OnGetPen) {
    TQyPenEventArgs args{v, value, seg.Start, seg.Pen, true};
    FChart.OnGetPen(&FChart, args);
    seg.Pen = args.Pen, seg.Border = seg.Border && args.Draw;
  }
  return seg;
}

void TQyPiePainter::Background() {
  const QRectF all(-1, -1, FChart.LayoutSize().width() + 2, FChart.LayoutSize().height() + 2);
  G->fillRect(all, TQyColorToQColor(FChart.GetBackColor()));
  if (FChart.GetBackgroundGradient()->GetVisible()) G->fillRect(all, FChart.GetBackgroundGradient()->GetBrush(all));
}

// The outline of the pie and the word "empty" in its middle; a 3D pie shows its wall too.
void TQyPiePainter::Empty() {
  const QRectF R = FChart.PieRect();
  G->setPen(FPen);
  G->setBrush(Qt::NoBrush);
  if (FChart.IsThreeD()) G->drawPath(Band(R, 0, 180));
  G->drawEllipse(R);
  TQyRichCaptionObject text;
  text.Font()->Assign(*FChart.GetCaptionFont());
  text.SetCaption(QyText(QyRes::PieEmpty));
  text.Alignment = TQyContentAlignment::MiddleCenter;
  text.X = float(R.center().x()), text.Y = float(R.center().y());
  text.PaintGr(G);
}

QPainterPath TQyPiePainter::TopPath(const TQyPieSegment& seg) const {
  QPainterPath path;
  if (FChart.IsDonut()) {
    QyPieArc(path, seg.R, seg.Start, seg.Sweep, true);
    QyPieArc(path, seg.Hole, seg.Start + seg.Sweep, -seg.Sweep);
  } else {
    path.moveTo(seg.R.center());
    QyPieArc(path, seg.R, seg.Start, seg.Sweep);
  }
  path.closeSubpath();
  return path;
}

// The wall of the ellipse in `r` between two angles: the arc above, the same arc lowered by the
// depth of the pie back.
QPainterPath TQyPiePainter::Band(const QRectF& r, double from, double to) const {
  QPainterPath path;
  QyPieArc(path, r, from, to - from, true);
  QyPieArc(path, r.translated(0, FChart.PieDepth()), to, from - to);
  path.closeSubpath();
  return path;
}

// A segment of a 3D pie seen from above with its walls: what its shadow falls from.
QPainterPath TQyPiePainter::Silhouette(const TQyPieSegment& seg) const {
  QPainterPath top = TopPath(seg);
  QPainterPath path = top.united(top.translated(0, FChart.PieDepth()));
  path = path.united(Band(seg.R, seg.Start, seg.Start + seg.Sweep));
  for (double a : {seg.Start, seg.Start + seg.Sweep}) {
    QPainterPath face;
    face.addPolygon(CutFace(seg, a));
    path = path.united(face);
  }
  return path;
}

void TQyPiePainter::Shadow() {
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  auto shape = [&](const TQyPieSegment& seg) { return FChart.IsThreeD() ? Silhouette(seg) : TopPath(seg); };
  if (FChart.AnyExploded()) {
    for (int s : FChart.PaintOrder()) path.addPath(shape(Prepare(s)));
  } else {
    TQyPieSegment whole = Prepare(0);
    whole.Start = FChart.GetStartAngle(), whole.Sweep = FChart.GetTotalAngle();
    path.addPath(shape(whole));
  }
  const float d = float(4 * 0.01 * FChart.PieRect().width());
  DrawShadow(G, path, d, d);
}

// The straight face at `angle`, from the centre (or the hole's rim) to the rim and down the wall.
QPolygonF TQyPiePainter::CutFace(const TQyPieSegment& seg, double angle) const {
  const QPointF inner = FChart.IsDonut() ? QyPieRimPoint(seg.Hole, angle) : seg.R.center();
  const QPointF outer = QyPieRimPoint(seg.R, angle), down(0, FChart.PieDepth());
  return QPolygonF({inner, outer, outer + down, inner + down});
}

// A start face can be seen only in the left half, an end face only in the right half; a whole
// pie in one piece shows none.
void TQyPiePainter::CutFaces(const TQyPieSegment& seg) {
  if (!FChart.AnyExploded() && FChart.GetTotalAngle() >= 360) return;
  const double a = QyFitTo360Degrees(seg.Start), b = QyFitTo360Degrees(a + seg.Sweep);
  for (double angle : {a, b}) {
    const bool visible = angle == a ? (a > 90 && a < 270) : (b < 90 || b > 270);
    if (!visible) continue;
    const QPolygonF face = CutFace(seg, angle);
    G->setPen(seg.Border ? seg.Pen : QPen(Qt::NoPen));
    G->setBrush(seg.Fill ? seg.Brush : QBrush());
    G->drawPolygon(face);
    ShadeCutFace(face, seg.R, angle);
  }
}

void TQyPiePainter::ShadeCutFace(const QPolygonF& face, const QRectF& r, double angle) {
  const double g = QyFitTo360Degrees(angle + 130) * M_PI / 180;
  const QColor black = QColor::fromRgba(ColorToARGB(quint8(std::nearbyint(std::fabs(std::sin(g) * 150))), 0, 0, 0));
  const QColor white = QColor::fromRgba(ColorToARGB(quint8(std::nearbyint(std::fabs(std::cos(g) * 100))), 255, 255, 255));
  const QRectF area = r.adjusted(-1, 0, 1, 0);
  QLinearGradient shade(area.left(), 0, area.right(), 0);
  const int q = QyPieQuadrant(QyFitTo360Degrees(angle));
  const bool whiteFirst = q == 1 || q == 3;
  shade.setColorAt(0, whiteFirst ? white : black);
  shade.setColorAt(1, whiteFirst ? black : white);
  G->setPen(Qt::NoPen);
  G->setBrush(shade);
  G->drawPolygon(face);
}

// The wall pieces of a segment that face the viewer: the half turn from `visibleFrom`.
void TQyPiePainter::Walls(const TQyPieSegment& seg, const QRectF& r, double visibleFrom, const QGradientStops& shade) {
  const double a = QyFitTo360Degrees(seg.Start), e = a + seg.Sweep;
  for (double from : {visibleFrom, visibleFrom + 360}) {
    const double p = std::max(a, from), q = std::min(e, from + 180);
    if (q > p) WallPiece(seg, r, p, q, shade);
  }
}

void TQyPiePainter::WallPiece(const TQyPieSegment& seg, const QRectF& r, double from, double to,
                              const QGradientStops& shade) {
  const QPainterPath path = Band(r, from, to);
  FillAndOutline(path, seg);
  QLinearGradient overlay(r.left(), 0, r.right() + 1, 0);
  overlay.setStops(shade);
  G->fillPath(path, overlay);
}

void TQyPiePainter::FillAndOutline(const QPainterPath& path, const TQyPieSegment& seg) {
  if (seg.Fill) G->fillPath(path, seg.Brush);
  if (seg.Border) G->strokePath(path, seg.Pen);
}

// The top face; 3D pies get a shine and a glassy highlight over it.
void TQyPiePainter::Top(const TQyPieSegment& seg) {
  const QPainterPath path = TopPath(seg);
  FillAndOutline(path, seg);
  if (!FChart.IsThreeD()) return;
  G->fillPath(path, LinearBrush(seg.R, 120, 0.5, 0x30000000, 0x00FFFFFF, 0xF0FFFFFF));
  G->fillPath(path, EllipticalBrush(seg.R, QPointF(0.3, 0.8), 0x00FFFFFF, 0x20FFFFFF, 0x90FFFFFF));
}
} // namespace

// Never raises: a picture keeps what was drawn when something fails.
void TQyPieChart::PaintGr(QPainter* graphics) {
  graphics->save();
  try {
    TQyPiePainter(*this, graphics).Paint();
    PaintLabels(graphics);
    PaintParts(graphics);
  } catch (const std::exception&) {
    FReady = true;
  }
  graphics->restore();
}
