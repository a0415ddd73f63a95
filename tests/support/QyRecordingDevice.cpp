#include "QyRecordingDevice.h"
#include <QPainter>
#include <QTextItem>

class QyRecordingEngine : public QPaintEngine {
public:
  explicit QyRecordingEngine(QyRecordingDevice* device)
      : QPaintEngine(QPaintEngine::AllFeatures), FDevice(device) {}
  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  Type type() const override { return QPaintEngine::User; }
  void updateState(const QPaintEngineState&) override {}
  // The integer forms of the drawing calls reach the floating ones through the base class.

  void drawLines(const QLineF* lines, int count) override {
    QyPrimitive p = Make(QyPrimitive::Line);
    for (int i = 0; i < count; ++i) p.points << lines[i].p1() << lines[i].p2();
    Store(std::move(p));
  }
  void drawRects(const QRectF* rects, int count) override {
    for (int i = 0; i < count; ++i) {
      QyPrimitive p = Make(QyPrimitive::Rect);
      p.rect = rects[i];
      p.points = QPolygonF(rects[i]);
      Store(std::move(p));
    }
  }
  void drawEllipse(const QRectF& r) override {
    QyPrimitive p = Make(QyPrimitive::Ellipse);
    p.rect = r;
    p.points = QPolygonF(r);
    Store(std::move(p));
  }
  void drawPath(const QPainterPath& path) override {
    QyPrimitive p = Make(QyPrimitive::Path);
    p.path = path;
    p.points = path.toFillPolygon();
    p.rect = path.boundingRect();
    Store(std::move(p));
  }
  void drawPoints(const QPointF* points, int count) override {
    QyPrimitive p = Make(QyPrimitive::Points);
    for (int i = 0; i < count; ++i) p.points << points[i];
    Store(std::move(p));
  }
  void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
    QyPrimitive p = Make(mode == PolylineMode ? QyPrimitive::Polyline : QyPrimitive::Polygon);
    for (int i = 0; i < count; ++i) p.points << points[i];
    if (mode == PolylineMode) p.brush = Qt::NoBrush;
    Store(std::move(p));
  }
  void drawTextItem(const QPointF& pos, const QTextItem& item) override {
    QyPrimitive p = Make(QyPrimitive::Text);
    p.text = item.text();
    p.rect = QRectF(pos, QSizeF(item.width(), item.ascent() + item.descent()));
    p.points << pos;
    Store(std::move(p));
  }
  void drawPixmap(const QRectF& r, const QPixmap&, const QRectF&) override { StoreImage(r); }
  void drawImage(const QRectF& r, const QImage&, const QRectF&, Qt::ImageConversionFlags) override {
    StoreImage(r);
  }
  void drawTiledPixmap(const QRectF& r, const QPixmap&, const QPointF&) override { StoreImage(r); }

private:
  QyPrimitive Make(QyPrimitive::Kind kind) const {
    QyPrimitive p{kind, {}, {}, {}, {}, {}, {}, {}, false, {}, false};
    QPainter* painter = this->painter();
    p.pen = painter->pen();
    p.brush = painter->brush();
    p.transform = painter->transform();
    p.clipped = painter->hasClipping();
    if (p.clipped) p.clip = painter->transform().map(painter->clipPath());
    p.antialiased = painter->testRenderHint(QPainter::Antialiasing);
    return p;
  }
  void StoreImage(const QRectF& r) {
    QyPrimitive p = Make(QyPrimitive::Image);
    p.rect = r;
    p.points = QPolygonF(r);
    Store(std::move(p));
  }
  void Store(QyPrimitive&& p) { FDevice->FPrims.push_back(std::move(p)); }
  QyRecordingDevice* FDevice;
};

QyRecordingDevice::QyRecordingDevice(int width, int height)
    : FWidth(width), FHeight(height), FEngine(std::make_unique<QyRecordingEngine>(this)) {}

QyRecordingDevice::~QyRecordingDevice() = default;

QPaintEngine* QyRecordingDevice::paintEngine() const { return FEngine.get(); }

int QyRecordingDevice::metric(PaintDeviceMetric m) const {
  switch (m) {
  case PdmWidth: return FWidth;
  case PdmHeight: return FHeight;
  case PdmWidthMM: return FWidth * 254 / 960;
  case PdmHeightMM: return FHeight * 254 / 960;
  case PdmDpiX: case PdmDpiY: case PdmPhysicalDpiX: case PdmPhysicalDpiY: return 96;
  case PdmDepth: return 32;
  case PdmNumColors: return 0x7fffffff;
  case PdmDevicePixelRatio: return 1;
  case PdmDevicePixelRatioScaled: return int(QPaintDevice::devicePixelRatioFScale());
  default: return 0;
  }
}

std::vector<const QyPrimitive*> QyRecordingDevice::Select(const std::function<bool(const QyPrimitive&)>& keep) const {
  std::vector<const QyPrimitive*> out;
  for (const auto& p : FPrims)
    if (keep(p)) out.push_back(&p);
  return out;
}

std::vector<const QyPrimitive*> QyRecordingDevice::OfKind(QyPrimitive::Kind kind) const {
  return Select([kind](const QyPrimitive& p) { return p.kind == kind; });
}

std::vector<const QyPrimitive*> QyRecordingDevice::WithPenColor(QColor color) const {
  return Select([&](const QyPrimitive& p) { return p.pen.style() != Qt::NoPen && p.pen.color().rgba() == color.rgba(); });
}

std::vector<const QyPrimitive*> QyRecordingDevice::WithText(const QString& text) const {
  return Select([&](const QyPrimitive& p) { return p.kind == QyPrimitive::Text && p.text == text; });
}
