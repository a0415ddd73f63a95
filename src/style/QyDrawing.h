#pragma once
// Drawing helpers: point symbols, 3D bars and cylinders, rounded rectangles with shadow and
// edges, the three gradient brushes and a drop shadow. All take the painter to draw with, all
// colours are TQyColor, none keeps state. Brushes are returned by value (the caller's copy).
#include "QyGDI.h"
#include "QyStyles.h"
#include <QPainter>
#include <QPainterPath>
#include <QRectF>

// ---- Point symbols
// Draws `symbol` centred on (x, y): lines with `pen`, areas filled with `brush` and outlined with
// `pen`. The radius inside the border is (size - pen width)/2; Dot is a square of the pen width
// in the pen's colour.
void DrawPointSymbol(QPainter* painter, const QPen& pen, const QBrush& brush, float x, float y,
                     float size, TQyPointSymbol symbol);
// The outline of an area symbol (FiveStar ... Nabla) of radius r around (x, y); empty for the
// line symbols (Dot, Cross, Ex, Star), which cover no area.
QPainterPath PointSymbolOutline(float x, float y, float r, TQyPointSymbol symbol);
// Removes the area of the symbol (border width 1 assumed) from the painter's clip, so that a
// line drawn next shows behind transparent symbols without crossing them.
void ExcludeSymbolSpace(QPainter* painter, float x, float y, float size, TQyPointSymbol symbol);

// ---- Rectangles
// The rectangle between two corners, with non-negative width and height.
QRect OrderedRect(int x1, int y1, int x2, int y2);
QRectF OrderedRect(float x1, float y1, float x2, float y2);
// True if the rectangles share area or touch.
bool RectanglesOverlaping(const QRectF& a, const QRectF& b);

// ---- Brushes
// A linear gradient over `rect`, running at `angle` degrees (clockwise, 0 = left to right), with
// `first` at the start, `middle` at `center` (0..1) and `last` at the end: always three stops.
// The gradient line is as long as the rectangle's extent in that direction.
QBrush LinearBrush(const QRectF& rect, float angle, float center, TQyColor first,
                   TQyColor middle, TQyColor last);
// A gradient from `first` at the rim of a circle that encloses `rect` to `last` at the centre
// point (centre given in 0..1 of the rectangle), `middle` half way.
QBrush RadialBrush(const QRectF& rect, const QPointF& center, TQyColor first, TQyColor middle,
                   TQyColor last);
// As RadialBrush, with an ellipse of half-axes width/sqrt(2) and height/sqrt(2).
QBrush EllipticalBrush(const QRectF& rect, const QPointF& center, TQyColor first,
                       TQyColor middle, TQyColor last);
// The start and end of the gradient line of a linear gradient over `rect` at `angle`.
QLineF GradientLine(const QRectF& rect, float angle);

// ---- Shapes
// A bar with depth: front, top and right side faces, shaded from `fillColor`; outlines from
// `lineColor` unless it is QyTransparent. The depth goes up and to the right. With shadeWidth > 0
// the front shading runs over (shadeStart, shadeWidth) instead of the bar's own width, so that
// neighbouring bars share one gradient.
void Draw3DBar(QPainter* painter, TQyColor lineColor, TQyColor fillColor, float x1, float y1,
               float x2, float y2, float depthX, float depthY, float shadeStart = 0.0f,
               float shadeWidth = 0.0f);
// Cylinders standing (cap on top) and lying (cap at the right end); `depth` shears the cylinder
// for a perspective look, `ellipseHeight` is the cap's thickness.
void DrawCylinderVertical(QPainter* painter, TQyColor lineColor, TQyColor fillColor, float x1,
                          float y1, float x2, float y2, float depth, float ellipseHeight);
void DrawCylinderHorizontal(QPainter* painter, TQyColor lineColor, TQyColor fillColor, float x1,
                            float y1, float x2, float y2, float depth, float ellipseHeight);
// The angle (degrees) at which the outline of an ellipse (half-axes a, b) sheared by k runs
// vertical: where the sheared cylinder's side lines meet its caps.
double ShearedEllipseAngle(double a, double b, double k);
// A rectangle with corners of diameter `radius` (capped to the sides), optional drop shadow,
// outline (`frame`) and light/dark edges (`raised`, `lowered`; off with `frame`).
void DrawRoundRect(QPainter* painter, const QBrush& brush, const QPen& pen, const QRectF& rect,
                   float radius, bool shadow, bool frame, bool raised, bool lowered);
// A soft shadow of `path` shifted down-right by `offset`, piled up in `steps` translucent
// layers, outside the path only. The path itself is not changed.
void DrawShadow(QPainter* painter, const QPainterPath& path, float steps, float offset);
// A line from `from` to `to` ending in the arrowhead `cap` (see ArrowPointCap), scaled by the
// pen's width and filled with the pen's brush; the line stops `inset` widths short of the tip.
void DrawArrowLine(QPainter* painter, const QPen& pen, const QPointF& from, const QPointF& to,
                   const QPainterPath& cap, float inset);
