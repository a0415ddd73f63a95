#pragma once
// Series: join an X and a Y data vector to an X and a Y axis, and turn the data into a thinned list
// of pixel points. Every series type derives from TQySeries; TQyLineSeries draws a polyline.
#include "QyLocalize.h"
#include "QyAxis.h"
#include "QyStyles.h"
#include "QyVectors.h"
#include "QyPlainVectors.h"
#include "QyProperty.h"
#include "QyRichLabel.h"
#include <QBrush>
#include <QPen>
#include <QPointer>
#include <QRectF>
#include <functional>

class TQyAxis;
class TQyGraph2D;
class TQyCustomDoubleVector;
class TQyIndexer;
class TQyLineSettings;
class TQyAreaSettings;
class TQyPointSymbolSettings;
class TQySeries;

struct TQyTransformEventArgs {
  double Value;
  int Index;
};
using TQyValueTransformation = std::function<double(TQySeries* sender, const TQyTransformEventArgs& args)>;
// Lets the application pick the pen of one segment; returning false skips the segment.
using TQyPenEventHandler = std::function<bool(TQySeries* sender, int index, QPen& pen)>;
using TQyBrushEventHandler = std::function<bool(TQySeries* sender, int index, QBrush& brush)>;

struct TQyNearestPointResult {
  bool Found = false;
  float Distance = 3.4028235e38f;
  int Index = -1;
  double X = 0, Y = 0;
  QPointF Point;
};

class TQySeries : public QObject, public TQyRecording {
  Q_OBJECT
  QY_PROPERTY_CUSTOM(bool, Visible) = true;
  QY_PROPERTY_CUSTOM(QString, Caption);
  QY_PROPERTY(bool, IncludeInLegend, QyRes::SeriesIncludeInLegend, LegendsModified()) = true;
  QY_PROPERTY(bool, AutoUpdate, nullptr, (void)0) = true;
  QY_PROPERTY_CUSTOM(bool, OutliersVisible) = false;
  QY_PROPERTY_OBJECT(TQyLineSettings, Line);
  QY_PROPERTY_OBJECT(TQyAreaSettings, Area);
  Q_PROPERTY(TQySeries* MergeLegendItemWith READ GetMergeLegendItemWith WRITE SetMergeLegendItemWith)
  Q_PROPERTY(TQyAxis* XAxis READ GetXAxis WRITE SetXAxis)
  Q_PROPERTY(TQyAxis* YAxis READ GetYAxis WRITE SetYAxis)
  Q_PROPERTY(TQyCustomDoubleVector* XData READ GetXData WRITE SetXData)
  Q_PROPERTY(TQyCustomDoubleVector* YData READ GetYData WRITE SetYData)
  Q_PROPERTY(TQySeries* DrawBandTo READ GetDrawBandTo WRITE SetDrawBandTo)
  Q_PROPERTY(int Layer READ GetLayer WRITE SetLayer)

public:
  explicit TQySeries(QObject* owner = nullptr);
  ~TQySeries() override;

  // ---- references
  TQyAxis* GetXAxis() const { return FXAxis; }
  TQyAxis* GetYAxis() const { return FYAxis; }
  virtual void SetXAxis(TQyAxis* axis);
  virtual void SetYAxis(TQyAxis* axis);
  TQyCustomDoubleVector* GetXData() const { return FXData; }
  TQyCustomDoubleVector* GetYData() const { return FYData; }
  void SetXData(TQyCustomDoubleVector* vector);
  void SetYData(TQyCustomDoubleVector* vector);
  TQySeries* GetMergeLegendItemWith() const { return FMergeLegendItemWith; }
  void SetMergeLegendItemWith(TQySeries* series) { FMergeLegendItemWith = series; }
  TQySeries* GetDrawBandTo() const { return FDrawBandTo; }
  void SetDrawBandTo(TQySeries* series);
  int GetLayer() const { return FLayer; }
  void SetLayer(int layer);
  void RenumberLayer(int layer) { FLayer = layer; } // renumbering by the graph, not a user change
  TQyGraph2D* Graph() const;
  TQyPointSymbolSettings* PointSymbol() const { return FPointSymbol; }
  TQyPointSymbolSettings* OutOfRangePointSymbol() const { return FOutOfRangePointSymbol; }
  virtual void SetUndoStack(TQyUndoRecorder* recorder);

  TQyValueTransformation XValueTransformation, YValueTransformation;
  TQyPenEventHandler OnGetPen;
  TQyBrushEventHandler OnGetBrush;

  // ---- data path
  virtual int GetCount();
  virtual void Calculate();
  virtual void CalculatePoints();
  virtual void CheckDBVectors();
  virtual bool HasValuesAt(int i) const;
  virtual void TestAllAssigned();
  virtual void TestVisibleChanged();
  virtual bool SeriesVisible() const;
  virtual bool IsFunctionSeries() const { return false; }
  double TransformX(double value, int i);
  double TransformY(double value, int i);
  void GetCalcPoint(int i, QPointF& point);
  void GetCalcPointsStartStop(int& start, int& stop);
  void PointsModified();
  void RangesModified();
  void SetLastCount(int n);
  void Invalidate();
  void LegendsModified();
  bool CanDoCanvasDraw() const;

  // ---- picking
  virtual double GetY(double x);
  virtual int FindPoint(float x, float y, float tolerance);
  virtual int FindPoint(float x, float y);
  TQyNearestPointResult NearestPoint(QPointF point);
  TQyNearestPointResult NearestX(float x);
  TQyNearestPointResult NearestY(float y);
  virtual float ExtraSpaceAt(int position);
  virtual int GetItemHeight();
  void SwapDataVecs();

  // ---- drawing
  virtual void PaintGr(QPainter* graphics);
  virtual void DrawLine(QPainter* graphics);
  virtual void DrawSymbols(QPainter* graphics) {}

  // ---- linked markers (filled by the markers)
  virtual void ClearLinkedMarkers() {}
  virtual void DeleteLinkedMarkers(int) {}
  virtual void ValueInsertedLinkedMarkers(int) {}
  virtual void CheckLinkedMarkers() {}

  // ---- state read by the graph, axes and tests
  double LimitMinX() const { return FLimitMinX; }
  double LimitMaxX() const { return FLimitMaxX; }
  double LimitMinY() const { return FLimitMinY; }
  double LimitMaxY() const { return FLimitMaxY; }
  bool PointsStale() const { return FPointsStale; }
  int PointCount() const { return FPointCount; }
  int TotalPointCount() const { return FTotalPointCount; }
  const TQyPointVector& Points() const { return FPoints; }
  const TQyIntegerVector& PointIndices() const { return FPointIndices; }
  QString ToString() const;

protected:
  void ScanExtent(TQyCustomDoubleVector* v, bool isX, double& lo, double& hi);
  void AddBandPoints();
  void CompressRuns(int start, int stop);
  void KeepDistinctPoints(int start, int stop);
  QRectF DataArea() const;
  void LeaveGraph();
  void DrawPlainLine(QPainter* graphics);

  QPointer<TQyAxis> FXAxis, FYAxis;
  QPointer<TQyCustomDoubleVector> FXData, FYData;
  QPointer<TQySeries> FMergeLegendItemWith, FDrawBandTo;
  QPointer<TQyGraph2D> FGraph;
  TQyIndexer* FDataIndexer = nullptr;
  TQyPointSymbolSettings* FPointSymbol = nullptr;
  TQyPointSymbolSettings* FOutOfRangePointSymbol = nullptr;
  int FLayer = 0;
  TQyPointVector FPoints;
  TQyIntegerVector FPointIndices;
  int FPointCount = 0, FTotalPointCount = 0;
  int FColumnPoint = 0; // first point of the last pixel column, where appending resumes
  int FCount = 0, FLastCount = 0, FCalculatedCount = 0, FMinimumCount = 2;
  double FLimitMinX, FLimitMaxX, FLimitMinY, FLimitMaxY;
  bool FPointsStale = true;
  bool FLastVisible = false;
  QPen FPen;
  QBrush FBrush;
};

class TQyLineSeries : public TQySeries {
  Q_OBJECT
public:
  explicit TQyLineSeries(QObject* owner = nullptr);
};
