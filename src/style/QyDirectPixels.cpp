#include "QyDirectPixels.h"
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QRegion>
#include <algorithm>
#include <cmath>

namespace {
// A clip of more rectangles than this is left to the painter.
constexpr int MaxClipRects = 16;

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

bool TQyDirectPixels::Begin(QPainter* g) {
  FBits = nullptr;
  FClip.clear();
  QImage* target = DirectTarget(g);
  if (!target) return false;
  const QTransform& t = g->deviceTransform();
  const QRect bounds = target->rect();
  if (g->hasClipping()) {
    const QRegion region = t.map(g->clipRegion());
    if (region.rectCount() > MaxClipRects) return false;
    for (const QRect& r : region)
      if (const QRect c = r & bounds; !c.isEmpty()) FClip.push_back(c);
  } else {
    FClip.push_back(bounds);
  }
  FOffset = QPoint(int(t.dx()), int(t.dy()));
  FBits = target->bits(); // the painter made the image its own at begin(), so this copies nothing
  FStride = target->bytesPerLine();
  return true;
}

QRect TQyDirectPixels::Bounds() const {
  QRect r;
  for (const QRect& c : FClip) r |= c;
  return r.translated(-FOffset);
}

void TQyDirectPixels::Span(int x0, int x1, int y, quint32 color, uint a) const {
  x0 += FOffset.x(), x1 += FOffset.x(), y += FOffset.y();
  const quint32 src = a >= 255 ? color : QyByteMul(color, a);
  for (const QRect& c : FClip) {
    if (y < c.top() || y > c.bottom()) continue;
    const int from = std::max(x0, c.left()), to = std::min(x1, c.right() + 1);
    quint32* dst = Row(y);
    if (a >= 255) std::fill(dst + from, dst + std::max(from, to), src);
    else
      for (int x = from; x < to; ++x) dst[x] = src + QyByteMul(dst[x], 255 - (src >> 24));
  }
}
