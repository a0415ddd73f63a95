#include "QyDrawing.h"
#include "QyRounding.h"
#include <QLinearGradient>
#include <QRadialGradient>
#include <QtMath>
#include <algorithm>
#include <cmath>

namespace {
QColor Q(TQyColor c) { return TQyColorToQColor(c); }

// Brighten, exact for the factor 1 (the lightness round trip may move a channel by one).
TQyColor Bright(TQyColor c, float factor) { return factor == 1.0f ? c : Brighten(c, factor); }

// The painter's whole drawing surface in logical coordinates, with a margin: the "everything"
// from which clip helpers subtract a shape.
QPainterPath Everything(QPainter* painter) {
  const QPaintDevice* dev = painter->device();
  const QRectF device(-1, -1, dev->width() + 2, dev->height() + 2);
  QPainterPath all;
  all.addRect(painter->combinedTransform().inverted().mapRect(device));
  return all;
}

// Clips away `shape` from what the painter may touch.
void ClipOut(QPainter* painter, const QPainterPath& shape) {
  painter->setClipPath(Everything(painter).subtracted(shape), Qt::IntersectClip);
}

QPolygonF Scaled(std::initializer_list<QPointF> unit, float x, float y, float r) {
  QPolygonF poly;
  for (const QPointF& p : unit) poly << QPointF(x + p.x() * r, y + p.y() * r);
  return poly;
}

// The vertices of the polygon symbols, in units of the inner radius from the centre.
QPolygonF SymbolPolygon(float x, float y, float r, TQyPointSymbol symbol) {
  switch (symbol) {
  case TQyPointSymbol::FiveStar:
    return Scaled({{0, -1.04}, {0.27, -0.3}, {1, -0.3}, {0.4, 0.12}, {0.64, 0.82}, {0, 0.4},
                   {-0.64, 0.82}, {-0.4, 0.12}, {-1, -0.3}, {-0.27, -0.3}, {0, -1.04}},
                  x, y, r);
  case TQyPointSymbol::Diamond: return Scaled({{0, -1}, {1, 0}, {0, 1}, {-1, 0}, {0, -1}}, x, y, r);
  // Equilateral triangles whose inscribed circle has the radius 0.57735*r.
  case TQyPointSymbol::Delta: return Scaled({{0, -1.1547}, {1, 0.57735}, {-1, 0.57735}}, x, y, r);
  case TQyPointSymbol::Nabla: return Scaled({{-1, -0.57735}, {1, -0.57735}, {0, 1.1547}}, x, y, r);
  default: return {};
  }
}

bool IsAreaSymbol(TQyPointSymbol symbol) {
  return symbol >= TQyPointSymbol::FiveStar && symbol <= TQyPointSymbol::Nabla;
}

// Lines from the centre to (x, y ± d) and (x ± d, y), or to the corners (x ± d, y ± d).
void DrawSpokes(QPainter* painter, float x, float y, float d, bool diagonal) {
  static constexpr int axial[4][2] = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}};
  static constexpr int corner[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
  for (const auto& dir : diagonal ? corner : axial)
    painter->drawLine(QPointF(x, y), QPointF(x + dir[0] * d, y + dir[1] * d));
}
} // namespace

// ---- Point symbols

QPainterPath PointSymbolOutline(float x, float y, float r, TQyPointSymbol symbol) {
  QPainterPath path;
  const QRectF box(x - r, y - r, 2 * r, 2 * r);
  if (symbol == TQyPointSymbol::Circle) path.addEllipse(box);
  else if (symbol == TQyPointSymbol::Square) path.addRect(box);
  else if (IsAreaSymbol(symbol)) path.addPolygon(SymbolPolygon(x, y, r, symbol)), path.closeSubpath();
  return path;
}

void DrawPointSymbol(QPainter* painter, const QPen& pen, const QBrush& brush, float x, float y,
                     float size, TQyPointSymbol symbol) {
  const float w = pen.widthF() > 0 ? float(pen.widthF()) : 1.0f;
  const float r = std::max(0.0f, (size - w) / 2.0f); // the radius inside the border
  const QRectF box(x - r, y - r, 2 * r, 2 * r);
  painter->save();
  painter->setPen(pen);
  painter->setBrush(brush);
  switch (symbol) {
  case TQyPointSymbol::Dot:
    painter->setPen(Qt::NoPen);
    painter->setBrush(pen.color());
    painter->drawRect(QRectF(x - w / 2, y - w / 2, w, w));
    break;
  case TQyPointSymbol::Cross: DrawSpokes(painter, x, y, r, false); break;
  case TQyPointSymbol::Ex: DrawSpokes(painter, x, y, r, true); break;
  case TQyPointSymbol::Star:
    DrawSpokes(painter, x, y, r, false);
    DrawSpokes(painter, x, y, 0.7071067f * r, true);
    break;
  case TQyPointSymbol::Circle: painter->drawEllipse(box); break;
  case TQyPointSymbol::Square: painter->drawRect(box); break;
  default:
    if (IsAreaSymbol(symbol)) painter->drawPolygon(SymbolPolygon(x, y, r, symbol));
    break; // values beyond the enumeration draw nothing
  }
  painter->restore();
}

void ExcludeSymbolSpace(QPainter* painter, float x, float y, float size, TQyPointSymbol symbol) {
  if (!IsAreaSymbol(symbol)) return; // line symbols cover no area
  ClipOut(painter, PointSymbolOutline(x, y, (size - 1.0f) / 2.0f, symbol));
}

// ---- Rectangles

QRect OrderedRect(int x1, int y1, int x2, int y2) {
  return QRect(QPoint(std::min(x1, x2), std::min(y1, y2)),
               QSize(std::abs(x2 - x1), std::abs(y2 - y1)));
}

QRectF OrderedRect(float x1, float y1, float x2, float y2) {
  return QRectF(std::min(x1, x2), std::min(y1, y2), std::fabs(x2 - x1), std::fabs(y2 - y1));
}

bool RectanglesOverlaping(const QRectF& a, const QRectF& b) {
  const QRectF p = a.normalized(), q = b.normalized();
  return p.left() <= q.right() && q.left() <= p.right() && p.top() <= q.bottom() &&
         q.top() <= p.bottom();
}

// ---- Brushes

namespace {
// Settings from a document may be anything; the raster engine must never see a gradient that is
// no number (it fails inside).
double FiniteOr(double v, double fallback) { return std::isfinite(v) ? v : fallback; }
bool Finite(const QRectF& r) {
  return std::isfinite(r.x()) && std::isfinite(r.y()) && std::isfinite(r.width()) && std::isfinite(r.height());
}
} // namespace

QLineF GradientLine(const QRectF& rect, float angle) {
  // The gradient runs along the direction of `angle` (clockwise, y downwards) and spans the
  // rectangle's projection onto it, so its start and end lines touch opposite corners.
  const double a = qDegreesToRadians(FiniteOr(angle, 0));
  const QPointF dir(std::cos(a), std::sin(a));
  const double half = (rect.width() * std::fabs(dir.x()) + rect.height() * std::fabs(dir.y())) / 2;
  return QLineF(rect.center() - dir * half, rect.center() + dir * half);
}

namespace {
QBrush TwoColorBrush(const QRectF& rect, float angle, TQyColor first, TQyColor last) {
  if (!Finite(rect)) return QBrush(Q(last));
  const QLineF line = GradientLine(rect, angle);
  QLinearGradient g(line.p1(), line.p2());
  g.setColorAt(0, Q(first));
  g.setColorAt(1, Q(last));
  return QBrush(g);
}

// A gradient from `last` at the focal point to `first` on an ellipse of half-axes rx, ry around
// the rectangle's middle. A radial gradient is circular, so the ellipse is a circle of radius rx
// squeezed by the brush transform; the focal point is placed in the unsqueezed circle.
QBrush FocalBrush(const QRectF& rect, const QPointF& center, double rx, double ry, TQyColor first,
                  TQyColor middle, TQyColor last) {
  if (!(rx > 0) || !(ry > 0) || !std::isfinite(rx) || !std::isfinite(ry) || !Finite(rect)) return QBrush(Q(last));
  const QPointF mid = rect.center();
  const double dx = (FiniteOr(center.x(), 0.5) - 0.5) * rect.width();
  const double dy = (FiniteOr(center.y(), 0.5) - 0.5) * rect.height();
  const double squeeze = ry / rx;
  QRadialGradient g(mid, rx, mid + QPointF(dx, dy / squeeze));
  g.setColorAt(0, Q(last)); // the centre point
  g.setColorAt(0.5, Q(middle));
  g.setColorAt(1, Q(first)); // the rim
  QBrush brush(g);
  if (squeeze != 1.0) {
    QTransform t;
    t.translate(mid.x(), mid.y());
    t.scale(1, squeeze);
    t.translate(-mid.x(), -mid.y());
    brush.setTransform(t);
  }
  return brush;
}
} // namespace

QBrush LinearBrush(const QRectF& rect, float angle, float center, TQyColor first,
                   TQyColor middle, TQyColor last) {
  if (!Finite(rect)) return QBrush(Q(middle));
  const QLineF line = GradientLine(rect.adjusted(-1, -1, 1, 1), angle);
  QLinearGradient g(line.p1(), line.p2());
  // Always three stops. A gradient keeps one colour per position, so a centre at an end is
  // moved inside by a hair: the result is the same hard edge, and the middle colour stays.
  constexpr double hair = 1e-6;
  g.setStops({{0.0, Q(first)}, {std::clamp(FiniteOr(center, 0.5), hair, 1.0 - hair), Q(middle)}, {1.0, Q(last)}});
  return QBrush(g);
}

QBrush RadialBrush(const QRectF& rect, const QPointF& center, TQyColor first, TQyColor middle,
                   TQyColor last) {
  const double r = std::hypot(rect.width() / 2, rect.height() / 2); // the circle through the corners
  return FocalBrush(rect, center, r, r, first, middle, last);
}

QBrush EllipticalBrush(const QRectF& rect, const QPointF& center, TQyColor first,
                       TQyColor middle, TQyColor last) {
  // The ellipse of the rectangle's proportions that passes through its corners.
  return FocalBrush(rect, center, rect.width() * M_SQRT1_2, rect.height() * M_SQRT1_2, first,
                    middle, last);
}

// ---- Shadow, rounded rectangles, arrows

void DrawShadow(QPainter* painter, const QPainterPath& path, float steps, float offset) {
  const int n = RoundI(steps);
  if (n <= 0 || 255 / n == 0) return; // beyond 255 layers each one is wholly transparent
  const double shift = double(Round(offset / steps));
  painter->save();
  ClipOut(painter, path); // the shadow shows only outside the shape
  painter->setPen(Qt::NoPen);
  painter->setBrush(QColor(0, 0, 0, 255 / n));
  // n+1 layers, each shifted one step further: the alpha piles up towards the shape.
  for (int i = 1; i <= n + 1; ++i) painter->drawPath(path.translated(shift * i, shift * i));
  painter->restore();
}

namespace {
// Corners of diameter `radius`; the plain rectangle when there is no room for them.
QPainterPath RoundRectPath(const QRectF& rect, float radius) {
  QPainterPath path;
  if (radius <= 0 || std::min(rect.width(), rect.height()) < radius) path.addRect(rect);
  else path.addRoundedRect(rect, radius / 2.0, radius / 2.0);
  return path;
}

constexpr TQyColor EdgeLight = 0xD2FFFFFF;
constexpr TQyColor EdgeDark = 0x5A000000;
constexpr double EdgeWidth = 1.5;

// The two L-shaped bands along the top-left and bottom-right edges: the shape less itself
// shifted inwards.
void DrawEdgeBands(QPainter* painter, const QRectF& rect, float radius, TQyColor topLeft,
                   TQyColor bottomRight) {
  const QPainterPath shape = RoundRectPath(rect, radius);
  painter->fillPath(shape.subtracted(shape.translated(EdgeWidth, EdgeWidth)), Q(topLeft));
  painter->fillPath(shape.subtracted(shape.translated(-EdgeWidth, -EdgeWidth)), Q(bottomRight));
}
} // namespace

void DrawRoundRect(QPainter* painter, const QBrush& brush, const QPen& pen, const QRectF& rect,
                   float radius, bool shadow, bool frame, bool raised, bool lowered) {
  if (frame) raised = lowered = false;
  radius = std::min({radius, float(rect.width()), float(rect.height())});
  if (shadow) DrawShadow(painter, RoundRectPath(rect, radius), 5, 4);
  painter->save();
  painter->setBrush(brush);
  painter->setPen(frame ? pen : QPen(Qt::NoPen));
  if (radius <= 0) {
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->drawRect(rect);
  } else {
    painter->drawPath(RoundRectPath(rect, radius));
  }
  if (raised) DrawEdgeBands(painter, rect, radius, EdgeLight, EdgeDark);
  if (lowered) {
    const QRectF inner =
        raised ? rect.adjusted(EdgeWidth, EdgeWidth, -EdgeWidth, -EdgeWidth) : rect;
    DrawEdgeBands(painter, inner, radius, EdgeDark, EdgeLight);
  }
  painter->restore();
}

void DrawArrowLine(QPainter* painter, const QPen& pen, const QPointF& from, const QPointF& to,
                   const QPainterPath& cap, float inset) {
  const QLineF line(from, to);
  const double length = line.length();
  if (!(length > 0) || !std::isfinite(length)) return; // no direction: points not numbers or beyond any
  const double w = pen.widthF() > 0 ? pen.widthF() : 1.0;
  const QPointF unit = (to - from) / length;
  painter->save();
  painter->setPen(pen);
  painter->drawLine(from, to - unit * (inset * w));
  // The head's +y axis points along the line; its tip (the origin) sits on `to`.
  painter->translate(to);
  painter->rotate(qRadiansToDegrees(std::atan2(unit.y(), unit.x())) - 90.0);
  painter->scale(w, w);
  painter->fillPath(cap, pen.brush());
  painter->restore();
}

// ---- 3D bars

namespace {
QBrush Shade(const QRectF& rect, TQyColor c, float f1, float f2, float f3) {
  return LinearBrush(rect, 0, 0.5f, Bright(c, f1), Bright(c, f2), Bright(c, f3));
}

// One face: filled with `fill`, outlined by a 1-wide pen of `line` unless there is none.
void DrawFace(QPainter* painter, const QPolygonF& face, const QBrush& fill, const QBrush* line) {
  painter->setBrush(fill);
  painter->setPen(line ? QPen(*line, 1.0) : QPen(Qt::NoPen));
  painter->drawPolygon(face);
}
} // namespace

void Draw3DBar(QPainter* painter, TQyColor lineColor, TQyColor fillColor, float x1, float y1,
               float x2, float y2, float depthX, float depthY, float shadeStart, float shadeWidth) {
  const QRectF r = OrderedRect(x1, y1, x2, y2);
  const QRectF g = shadeWidth > 0 ? QRectF(shadeStart, r.y(), shadeWidth, r.height()) : r;
  const double dx = std::fabs(depthX), dy = std::fabs(depthY);
  const double x = r.x(), y = r.y(), w = r.width(), h = r.height();
  const bool lines = lineColor != QyTransparent;
  painter->save();

  // Front; an opaque bar first fills its whole silhouette so that no seam shows between faces.
  const QBrush front = Shade(g, fillColor, 1.2f, 1.0f, 0.8f);
  if (GetAlpha(fillColor) > 254) {
    painter->setPen(Qt::NoPen);
    painter->setBrush(front);
    painter->drawPolygon(QPolygonF({{x, y}, {x + dx, y - dy}, {x + w + dx, y - dy},
                                    {x + w + dx, y + h - dy}, {x + w, y + h}, {x, y + h}}));
  }
  const QBrush frontLine = Shade(g, lineColor, 1.2f, 1.0f, 0.8f);
  DrawFace(painter, QPolygonF(r), front, lines ? &frontLine : nullptr);

  // Top: lit brightest in the middle, a little more on the left than at the back right. The
  // shading spans the shade rectangle's top, so neighbouring bars share it.
  const QRectF topShade(g.x(), y - dy, g.width() + dx, dy);
  const QPolygonF top({{x, y}, {x + w, y}, {x + w + dx, y - dy}, {x + dx, y - dy}});
  const QBrush topLine = Shade(topShade, lineColor, 1.275f, 1.325f, 1.15f);
  DrawFace(painter, top, Shade(topShade, fillColor, 1.275f, 1.325f, 1.15f),
           lines ? &topLine : nullptr);

  // Right side, in shadow.
  const QRectF sideShade(x + w, y, dx, h);
  const QPolygonF side({{x + w, y}, {x + w + dx, y - dy}, {x + w + dx, y + h - dy}, {x + w, y + h}});
  const QBrush sideLine = Shade(sideShade, lineColor, 0.6f, 0.5f, 0.4f);
  DrawFace(painter, side, Shade(sideShade, fillColor, 0.6f, 0.5f, 0.4f),
           lines ? &sideLine : nullptr);
  painter->restore();
}

// ---- Cylinders

double ShearedEllipseAngle(double a, double b, double k) {
  const double t = std::atan2(std::sqrt(k * k * b * b + a * a) + k * b, a);
  const double theta = 2 * M_PI - 2 * t;
  return qRadiansToDegrees(std::atan2(b * std::cos(theta), a * std::sin(theta)));
}

namespace {
// A standing cylinder in local coordinates: width w, body height h from y = 0 down, the cap
// ellipse of height e above y = 0. Arc angles follow QPainterPath: counter-clockwise on screen.
void DrawCylinderLocal(QPainter* painter, TQyColor lineColor, TQyColor fillColor, double w,
                       double h, double depth, double e) {
  const QRectF cap(0, -e, w, e);
  double edge = 180; // where the side lines meet the caps, clockwise degrees
  double shift = 0;  // the bottom ellipse's offset in the sheared frame
  QTransform bodyBrushTransform;
  if (depth > 0 && e > 0) {
    const double s = depth / e;
    painter->setTransform(QTransform().shear(-s, 0), true);
    edge = ShearedEllipseAngle(w / 2, e / 2, -s);
    shift = h * s;
    bodyBrushTransform.shear(s, 0); // undoes the shear: the body shading stays upright
  }
  QPainterPath body;
  const QRectF bottom(shift, h - e, w, e);
  body.arcMoveTo(bottom, -(edge - 180));
  body.arcTo(bottom, -(edge - 180), -180); // the front half of the bottom ellipse
  body.arcTo(cap, -edge, 180);             // the front half of the top ellipse, backwards
  body.closeSubpath();

  QLinearGradient shading(0, 0, w + depth, 0); // a highlight a quarter of the way across
  shading.setStops({{0, Q(fillColor)}, {0.25, Q(Brighten(fillColor, 1.4f))}, {0.5, Q(fillColor)},
                    {0.75, Q(Brighten(fillColor, 0.6f))}, {1, Q(Brighten(fillColor, 0.4f))}});
  QBrush bodyBrush(shading);
  bodyBrush.setTransform(bodyBrushTransform);

  painter->setPen(Qt::NoPen);
  painter->setBrush(bodyBrush);
  painter->drawPath(body);
  painter->setBrush(TwoColorBrush(cap, 97, Brighten(fillColor, 1.4f), Brighten(fillColor, 0.8f)));
  painter->drawEllipse(cap);
  painter->setBrush(EllipticalBrush(cap, {0.3, 0.85}, 0x00FFFFFF, 0x3CFFFFFF, 0x8CFFFFFF)); // shine
  painter->drawEllipse(cap);
  if (lineColor != QyTransparent) {
    painter->setPen(QPen(TwoColorBrush(cap, 97, Brighten(lineColor, 1.4f), Brighten(lineColor, 0.8f)), 1.0));
    painter->setBrush(Qt::NoBrush);
    painter->drawEllipse(cap);
  }
}
} // namespace

void DrawCylinderVertical(QPainter* painter, TQyColor lineColor, TQyColor fillColor, float x1,
                          float y1, float x2, float y2, float depth, float ellipseHeight) {
  const QRectF r = OrderedRect(x1, y1, x2, y2);
  painter->save();
  painter->translate(r.topLeft());
  DrawCylinderLocal(painter, lineColor, fillColor, r.width(), r.height(), depth, ellipseHeight);
  painter->restore();
}

void DrawCylinderHorizontal(QPainter* painter, TQyColor lineColor, TQyColor fillColor, float x1,
                            float y1, float x2, float y2, float depth, float ellipseHeight) {
  const QRectF r = OrderedRect(x1, y1, x2, y2);
  painter->save();
  // The standing cylinder turned by a quarter: its length runs leftwards from the right end,
  // where the cap sits; its width runs downwards from the top.
  painter->setTransform(QTransform(0, 1, -1, 0, r.right(), r.top()), true);
  DrawCylinderLocal(painter, lineColor, fillColor, r.height(), r.width(), depth, ellipseHeight);
  painter->restore();
}
