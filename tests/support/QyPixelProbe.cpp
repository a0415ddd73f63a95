#include "QyPixelProbe.h"
#include <algorithm>
#include <cstdlib>

namespace {
bool Near(QRgb a, QRgb b, int tol) {
  return std::abs(qRed(a) - qRed(b)) <= tol && std::abs(qGreen(a) - qGreen(b)) <= tol &&
         std::abs(qBlue(a) - qBlue(b)) <= tol && std::abs(qAlpha(a) - qAlpha(b)) <= tol;
}
} // namespace

QRgb QyProbe::At(const QImage& image, int x, int y) { return image.pixel(x, y); }

int QyProbe::Count(const QImage& image, const QRect& area, QColor color, int tolerance) {
  const QRect r = area.intersected(image.rect());
  int n = 0;
  for (int y = r.top(); y <= r.bottom(); ++y)
    for (int x = r.left(); x <= r.right(); ++x)
      if (Near(image.pixel(x, y), color.rgba(), tolerance)) ++n;
  return n;
}

bool QyProbe::Any(const QImage& image, const QRect& area, QColor color, int tolerance) {
  return Count(image, area, color, tolerance) > 0;
}

QRect QyProbe::BoundsOf(const QImage& image, QColor color, int tolerance) {
  QRect box;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (Near(image.pixel(x, y), color.rgba(), tolerance)) box |= QRect(x, y, 1, 1);
  return box;
}

int QyProbe::Differences(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return a.width() * a.height() + b.width() * b.height();
  int n = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if (a.pixel(x, y) != b.pixel(x, y)) ++n;
  return n;
}

int QyProbe::MaxChannelDifference(const QImage& a, const QImage& b) {
  int most = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      for (int shift : {0, 8, 16, 24}) most = std::max(most, std::abs(int((p >> shift) & 255) - int((q >> shift) & 255)));
    }
  return most;
}
