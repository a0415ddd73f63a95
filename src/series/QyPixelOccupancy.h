#pragma once
// Which pixels of a rectangle are already taken: lets a series draw at most one symbol per pixel,
// so that a dense scatter of millions of values costs as many symbols as the picture has pixels.
#include <QPointF>
#include <QRect>
#include <cmath>
#include <vector>

class TQyPixelOccupancy {
public:
  // Frees all pixels and covers `area` (whole pixels); points outside it are never taken.
  void Reset(const QRect& area) {
    FArea = area;
    FCells.assign(size_t(std::max(0, area.width())) * size_t(std::max(0, area.height())), 0);
  }
  bool Contains(const QPointF& p) const {
    return p.x() >= FArea.left() && p.y() >= FArea.top() && p.x() < FArea.left() + FArea.width() &&
           p.y() < FArea.top() + FArea.height();
  }
  // Takes the pixel of p; true if it was free. False also for points outside the area.
  bool Claim(const QPointF& p) {
    if (!Contains(p)) return false;
    const long long col = (long long)std::floor(p.x()) - FArea.left();
    const long long row = (long long)std::floor(p.y()) - FArea.top();
    quint8& cell = FCells[size_t(row * FArea.width() + col)];
    if (cell) return false;
    cell = 1;
    return true;
  }
  const QRect& Area() const { return FArea; }

private:
  QRect FArea;
  std::vector<quint8> FCells;
};
