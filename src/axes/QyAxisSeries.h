#pragma once
// What an axis needs of a series on it. The series implement it; the axes know them only through
// it. Sides count 0 bottom, 1 left, 2 top, 3 right.
class TQyAxis;

class IQyAxisSeries {
public:
  virtual ~IQyAxisSeries() = default;
  // The data extent in axis numbers along X (`x`) or Y; lo > hi when nothing is known.
  virtual void DataExtent(bool x, double& lo, double& hi) const = 0;
  // The smallest positive value below `below` along X or Y, 0 when there is none.
  virtual double SmallestPositive(bool x, double below) = 0;
  // The room the series needs beyond the data area on `side` (half a symbol).
  virtual float ExtraSpaceAt(int side) = 0;
  // The pixel points are stale (the axis' mapping changed).
  virtual void PointsModified() = 0;
  // The axis goes away: the series drops its references to it.
  virtual void AxisDestroyed(TQyAxis* axis) = 0;
};
