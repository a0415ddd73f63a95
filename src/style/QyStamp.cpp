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

void TQyStamp::Begin(QPainter* g) { FPixels.Begin(g); }

void TQyStamp::Put(QPainter* g, int x, int y) const {
  const int left = x - FHalf, top = y - FHalf;
  if (!FPixels.Active()) {
    g->drawImage(QPoint(left, top), FImage);
    return;
  }
  for (const QRect& clip : FPixels.Clip()) Blend(left + FPixels.Offset().x(), top + FPixels.Offset().y(), clip);
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
    quint32* dst = FPixels.Row(y) + from;
    // Branch-free: an opaque source pixel scales the destination by 0.
    for (int i = 0; i < to - from; ++i) dst[i] = src[i] + QyByteMul(dst[i], 255 - (src[i] >> 24));
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
