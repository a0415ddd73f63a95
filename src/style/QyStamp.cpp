// Stamps: see QyStamp.h.
#include "QyStamp.h"
#include "QyDrawing.h"
#include "QyKeptLayer.h"
#include <QPaintEngine>
#include <QPainter>
#include <QRegion>
#include <algorithm>
#include <cmath>

namespace {
// Above this many points a stamp pays for its own drawing.
constexpr int StampAbove = 1000;
// A clip of more rectangles than this is left to the painter.
constexpr int MaxClipRects = 16;

// x * a / 255 per channel, rounded as the raster engine rounds, so both paths give equal pixels.
inline uint ByteMul(uint x, uint a) {
  uint t = (x & 0xff00ff) * a;
  t = ((t + ((t >> 8) & 0xff00ff) + 0x800080) >> 8) & 0xff00ff;
  x = ((x >> 8) & 0xff00ff) * a;
  x = (x + ((x >> 8) & 0xff00ff) + 0x800080) & 0xff00ff00;
  return x | t;
}

// The image behind a painter that may be written directly: painted on as itself (not through a
// widget's redirection), premultiplied or opaque 32-bit pixels, one pixel per unit, plain
// source-over painting without scaling.
QImage* DirectTarget(QPainter* g) {
  QPaintDevice* d = g->device();
  QPaintEngine* e = g->paintEngine();
  if (!d || !e || d->devType() != QInternal::Image || e->paintDevice() != d) return nullptr;
  auto* image = static_cast<QImage*>(d);
  const bool format = image->format() == QImage::Format_ARGB32_Premultiplied || image->format() == QImage::Format_RGB32;
  const QTransform& t = g->deviceTransform();
  const bool plain = g->compositionMode() == QPainter::CompositionMode_SourceOver && g->opacity() == 1.0 &&
                     t.type() <= QTransform::TxTranslate && t.dx() == std::floor(t.dx()) &&
                     t.dy() == std::floor(t.dy()) && image->devicePixelRatio() == 1.0;
  return format && plain ? image : nullptr;
}
} // namespace

TQyStamp::TQyStamp(const QPen& pen, const QBrush& brush, float size, TQyPointSymbol symbol, bool antialiased) {
  const int extent = int(std::ceil(size + pen.widthF())) + 4;
  FHalf = extent / 2;
  FImage = QImage(extent, extent, QImage::Format_ARGB32_Premultiplied);
  FImage.fill(Qt::transparent);
  {
    QPainter p(&FImage);
    p.setRenderHint(QPainter::Antialiasing, antialiased);
    DrawPointSymbol(&p, pen, brush, FHalf, FHalf, size, symbol);
  }
  for (int y = 0; y < extent; ++y) {
    const auto* row = reinterpret_cast<const uint*>(FImage.constScanLine(y));
    int left = 0, right = extent;
    while (left < right && row[left] == 0) ++left;
    while (right > left && row[right - 1] == 0) --right;
    if (right > left) FSpans.push_back({y, left, right - left});
  }
}

void TQyStamp::Begin(QPainter* g) {
  FTarget = DirectTarget(g);
  FClip.clear();
  if (!FTarget) return;
  const QTransform& t = g->deviceTransform();
  FOffset = QPoint(int(t.dx()), int(t.dy()));
  FBits = FTarget->bits(); // the painter made the image its own at begin(), so this copies nothing
  FStride = FTarget->bytesPerLine();
  const QRect bounds = FTarget->rect();
  if (!g->hasClipping()) {
    FClip.push_back(bounds);
    return;
  }
  const QRegion region = t.map(g->clipRegion());
  if (region.rectCount() > MaxClipRects) {
    FTarget = nullptr;
    return;
  }
  for (const QRect& r : region)
    if (const QRect c = r & bounds; !c.isEmpty()) FClip.push_back(c);
}

void TQyStamp::Put(QPainter* g, int x, int y) const {
  const int left = x - FHalf, top = y - FHalf;
  if (!FTarget) {
    g->drawImage(QPoint(left, top), FImage);
    return;
  }
  for (const QRect& clip : FClip) Blend(left + FOffset.x(), top + FOffset.y(), clip);
}

void TQyStamp::Blend(int left, int top, const QRect& clip) const {
  if (left > clip.right() || top > clip.bottom() || left + FImage.width() <= clip.left() ||
      top + FImage.height() <= clip.top())
    return;
  for (const Span& s : FSpans) {
    const int y = top + s.Row;
    if (y < clip.top() || y > clip.bottom()) continue;
    const int from = std::max(left + s.Left, clip.left()), to = std::min(left + s.Left + s.Count, clip.right() + 1);
    const auto* src = reinterpret_cast<const uint*>(FImage.constScanLine(s.Row)) + (from - left);
    auto* dst = reinterpret_cast<uint*>(FBits + y * FStride) + from;
    // Branch-free: an opaque source pixel scales the destination by 0.
    for (int i = 0; i < to - from; ++i) dst[i] = src[i] + ByteMul(dst[i], 255 - (src[i] >> 24));
  }
}

bool QyCanStamp(QPainter* g, int count) {
  return count > StampAbove && QyCanKeepLayer(g);
}

QByteArray TQyStamp::Look() const {
  QByteArray bytes(reinterpret_cast<const char*>(FImage.constBits()), FImage.sizeInBytes());
  bytes.append(reinterpret_cast<const char*>(&FHalf), sizeof FHalf);
  return bytes;
}
