#pragma once
// Series with symbols at their points, and with error bars from four delta vectors.
#include "QySeries.h"

// A line series whose symbols are visible; points outside the X range of RangeFromFunction take
// the OutOfRangePointSymbol look.
class TQyPointSeries : public TQyLineSeries {
  Q_OBJECT
  Q_PROPERTY(TQyPointSymbolSettings* PointSymbol READ PointSymbol)
  Q_PROPERTY(TQyPointSymbolSettings* OutOfRangePointSymbol READ OutOfRangePointSymbol)
  Q_PROPERTY(TQySeries* RangeFromFunction READ GetRangeFromFunction WRITE SetRangeFromFunction)
public:
  explicit TQyPointSeries(QObject* owner = nullptr);
};

// Point series with error bars: X bars to X + DeltaXPlus and X - DeltaXMinus, Y bars likewise,
// each ending in a cap as wide as the symbol. Deltas are magnitudes: the sign is dropped.
class TQyPointWithErrorSeries : public TQyPointSeries {
  Q_OBJECT
  QY_PROPERTY_OBJECT(TQyLineSettings, ErrorIndicator);
  Q_PROPERTY(TQyCustomDoubleVector* DeltaXPlus READ GetDeltaXPlus WRITE SetDeltaXPlus)
  Q_PROPERTY(TQyCustomDoubleVector* DeltaXMinus READ GetDeltaXMinus WRITE SetDeltaXMinus)
  Q_PROPERTY(TQyCustomDoubleVector* DeltaYPlus READ GetDeltaYPlus WRITE SetDeltaYPlus)
  Q_PROPERTY(TQyCustomDoubleVector* DeltaYMinus READ GetDeltaYMinus WRITE SetDeltaYMinus)

public:
  // The four bar directions, in the order of the delta vectors.
  enum Direction { XPlus, XMinus, YPlus, YMinus };

  explicit TQyPointWithErrorSeries(QObject* owner = nullptr);
  ~TQyPointWithErrorSeries() override;

  TQyCustomDoubleVector* GetDeltaXPlus() const { return FDelta[XPlus]; }
  TQyCustomDoubleVector* GetDeltaXMinus() const { return FDelta[XMinus]; }
  TQyCustomDoubleVector* GetDeltaYPlus() const { return FDelta[YPlus]; }
  TQyCustomDoubleVector* GetDeltaYMinus() const { return FDelta[YMinus]; }
  void SetDeltaXPlus(TQyCustomDoubleVector* v) { SetDelta(XPlus, v); }
  void SetDeltaXMinus(TQyCustomDoubleVector* v) { SetDelta(XMinus, v); }
  void SetDeltaYPlus(TQyCustomDoubleVector* v) { SetDelta(YPlus, v); }
  void SetDeltaYMinus(TQyCustomDoubleVector* v) { SetDelta(YMinus, v); }

  // The magnitude of a delta at data index i: 0 without a vector or beyond its end.
  double GetDxPlus(int i) { return GetDelta(XPlus, i); }
  double GetDxMinus(int i) { return GetDelta(XMinus, i); }
  double GetDyPlus(int i) { return GetDelta(YPlus, i); }
  double GetDyMinus(int i) { return GetDelta(YMinus, i); }

  TQyValueTransformation DxPlusTransformation, DxMinusTransformation, DyPlusTransformation,
      DyMinusTransformation;
  TQyPenEventHandler OnGetIndicatorsPen;

  // The pixel coordinate of each bar's end, parallel to Points (NaN where a point has no bar).
  const TQySingleVector& BarEnds(Direction d) const { return FBarEnds[d]; }

  void GetExtent(double& minX, double& maxX, double& minY, double& maxY) override;
  void CalculatePoints() override;
  void CheckDBVectors() override;
  bool HasValuesAt(int i) const override;
  bool EveryIndexHasValues() const override;
  bool SeriesVisible() const override;
  void VectorDestroyed(TQyCustomDoubleVector* vector) override;
  void TestVisibleChanged() override;
  int GetItemHeight() override;
  void DrawIndicators(QPainter* graphics) override;
  using TQySeries::DrawListItem;
  void DrawListItem(const TQyLegendItemDrawArgs& args) override;
  void DrawListItem(const TQyLegendItemDrawArgs& args, LegendItemStyle style) override;

protected:
  bool PureScatter() const override;

private:
  void SetDelta(Direction d, TQyCustomDoubleVector* v);
  double GetDelta(Direction d, int i);
  bool HasDelta(Direction d) const { return FDelta[d] != nullptr; }
  bool HasAnyDelta() const;
  bool IndicatorsShown() const;
  void ExtendExtent(TQyCustomDoubleVector* v, bool isX, double& lo, double& hi);

  QPointer<TQyCustomDoubleVector> FDelta[4];
  TQySingleVector FBarEnds[4];
  QPen FErrorPen;
  bool FLastIndicatorVisible = true;
};
