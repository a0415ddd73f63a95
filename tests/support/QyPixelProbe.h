#pragma once
// Pixel probes on rendered images.
#include <QColor>
#include <QImage>
#include <QRect>

namespace QyProbe {
// The colour at (x, y) as ARGB.
QRgb At(const QImage& image, int x, int y);
// Number of pixels in `area` whose colour lies within `tolerance` per channel of `color`.
int Count(const QImage& image, const QRect& area, QColor color, int tolerance = 0);
// True if any pixel of `area` is within tolerance of `color`.
bool Any(const QImage& image, const QRect& area, QColor color, int tolerance = 0);
// Bounding box of all pixels within tolerance of `color` (empty when none).
QRect BoundsOf(const QImage& image, QColor color, int tolerance = 0);
// Number of pixels that differ between two images of the same size.
int Differences(const QImage& a, const QImage& b);
// The largest difference of one channel between two images of the same size.
int MaxChannelDifference(const QImage& a, const QImage& b);
} // namespace QyProbe
