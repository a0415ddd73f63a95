#pragma once
// A paint device that records every primitive drawn on it, with the painter state in force,
// so that tests assert what was drawn rather than how it looks.
#include <QBrush>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <QTransform>
#include <functional>
#include <memory>
#include <vector>

struct QyPrimitive {
  enum Kind { Line, Polyline, Polygon, Rect, Ellipse, Path, Points, Text, Image } kind;
  QPolygonF points;       // lines: pairs; polyline/polygon/points: vertices; rect/ellipse: 4 corners
  QRectF rect;            // rect, ellipse, image target, text position (topLeft)
  QPainterPath path;      // path primitives
  QString text;           // text items
  QPen pen;
  QBrush brush;
  QTransform transform;   // world transform at draw time
  bool clipped = false;
  QPainterPath clip;      // clip in device coordinates when clipped
  bool antialiased = false;
  // Vertices mapped through the transform, in device pixels.
  QPolygonF DevicePoints() const { return transform.map(points); }
  QRectF DeviceRect() const { return transform.mapRect(rect); }
};

class QyRecordingDevice : public QPaintDevice {
public:
  QyRecordingDevice(int width = 600, int height = 400);
  ~QyRecordingDevice() override;
  QPaintEngine* paintEngine() const override;
  const std::vector<QyPrimitive>& Primitives() const { return FPrims; }
  void Clear() { FPrims.clear(); }
  // Primitives of one kind, or drawn with a pen of the given colour.
  std::vector<const QyPrimitive*> OfKind(QyPrimitive::Kind kind) const;
  std::vector<const QyPrimitive*> WithPenColor(QColor color) const;
  std::vector<const QyPrimitive*> WithText(const QString& text) const;
  std::vector<const QyPrimitive*> Select(const std::function<bool(const QyPrimitive&)>& keep) const;

protected:
  int metric(PaintDeviceMetric metric) const override;

private:
  friend class QyRecordingEngine;
  int FWidth, FHeight;
  std::unique_ptr<QPaintEngine> FEngine;
  std::vector<QyPrimitive> FPrims;
};
