#pragma once
// Series: join an X and a Y data vector to an X and a Y axis, and turn the data into pixel points.
// Every series type derives from TQySeries; TQyLineSeries thins the points and draws a polyline
// with area, band and symbols.
#include "QyLocalize.h"
#include "QyAxis.h"
#include "QyInterfacePointer.h"
#include "QySeriesHost.h"
#include "QyStyles.h"
#include "QyVectors.h"
#include "QyPlainVectors.h"
#include "QyProperty.h"
#include "QyRecordSchema.h"
#include "QyRegisters.h"
#include "QyRichLabel.h"
#include "QyPixelOccupancy.h"
#include "QyKeptLayer.h"
#include "QyStamp.h"
#include "QyComponent.h"
#include "QyGraphPart.h"
#include <QVariantMap>
#include <QBrush>
#include <QPen>
#include <QPointer>
#include <QRectF>
#include <functional>

class TQyAxis;
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
// What a pen or brush handler gets for one element (segment, area piece, error bar): the data
// index (-1 for a function series), the transformed X and Y, and the pen or brush, which the
// handler may replace, and Draw, which it may clear to skip the element. A replaced pen or brush
// stays in use for the following elements of the same paint.
struct TQyPenEventArgs {
  int Index = -1;
  double X = 0, Y = 0;
  QPen Pen;
  bool Draw = true;
};
struct TQyBrushEventArgs {
  int Index = -1;
  double X = 0, Y = 0;
  QBrush Brush;
  bool Draw = true;
};
using TQyPenEventHandler = std::function<void(TQySeries* sender, TQyPenEventArgs& args)>;
using TQyBrushEventHandler = std::function<void(TQySeries* sender, TQyBrushEventArgs& args)>;

// What a symbol handler gets for one point; it may change every field, Visible false hides it.
struct PointSymbolEventArgs {
  int Index = -1;
  double X = 0, Y = 0;
  float Size = 0;
  QPen Pen;
  QBrush Brush;
  TQyPointSymbol Symbol = TQyPointSymbol::Circle;
  bool Visible = true;
};
using PointSymbolEventHandler = std::function<void(TQySeries* sender, PointSymbolEventArgs& args)>;

// A legend row handed to a series to draw its sample into.
struct TQyLegendItemDrawArgs {
  QPainter* Graphics = nullptr;
  QRectF Rect;
  int Index = 0;
};
// How a legend sample fills its rectangle; merged items share one rectangle by these.
enum class LegendItemStyle { Filled, HalfHorizontal, AscendingDiagonal, DescendingDiagonal };

struct TQyNearestPointResult {
  bool Found = false;
  float Distance = 3.4028235e38f;
  int Index = -1;
  double X = 0, Y = 0;
  QPointF Point;
};

class TQySeries : public QObject, public TQyRecording, public TQyDeferredInit, public IQyGraphPart,
                  public IQyVectorListener, public IQyAxisSeries {
  Q_OBJECT
  Q_INTERFACES(IQyGraphPart)
  QY_RECORDING_SIGNAL(TQySeries)
  QY_PROPERTY_CUSTOM(bool, Visible) = true;
  Q_PROPERTY(QString Caption READ GetCaption WRITE SetCaption)
  QY_PROPERTY(bool, IncludeInLegend, QyRes::SeriesIncludeInLegend, LegendsModified()) = true;
  QY_PROPERTY(bool, AutoUpdate, nullptr, (void)0) = true;
  QY_PROPERTY_CUSTOM(bool, OutliersVisible) = false;
  Q_PROPERTY(TQySeries* MergeLegendItemWith READ GetMergeLegendItemWith WRITE SetMergeLegendItemWith)
  Q_PROPERTY(TQyAxis* XAxis READ GetXAxis WRITE SetXAxis)
  Q_PROPERTY(TQyAxis* YAxis READ GetYAxis WRITE SetYAxis)
  Q_PROPERTY(TQyCustomDoubleVector* XData READ GetXData WRITE SetXData)
  Q_PROPERTY(TQyCustomDoubleVector* YData READ GetYData WRITE SetYData)
  Q_PROPERTY(int Layer READ GetLayer WRITE SetLayer)

public:
  explicit TQySeries(QObject* owner = nullptr);
  ~TQySeries() override;

  // The class name until the caption is set.
  QString GetCaption() const;
  void SetCaption(QString value);

  // ---- as a part of its graph: lines below the axes, symbols above them
  TQyPaintPasses PaintPasses() const override;
  void PaintPass(TQyPaintPass pass, QPainter* graphics) override;
  void GraphChanged(TQyGraphChange change) override;

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
  void SetMergeLegendItemWith(TQySeries* series);
  int GetLayer() const { return FLayer; }
  void SetLayer(int layer);
  void RenumberLayer(int layer) { FLayer = layer; } // renumbering by the graph, not a user change
  IQySeriesHost* Graph() const;
  // Puts the series on the graph's primary axes, and so into the graph, through the setters. A
  // kind of series that belongs on another axis by default overrides it.
  virtual void SetDefaultAxis(IQySeriesHost* graph);
  // The series holds the stack; its setting groups find it through their parent.
  void SetUndoStack(TQyUndoRecorder* recorder) override { SetUndoRecorder(recorder); }
  // Publishes "Name" and "Caption" for captions elsewhere (after construction); derived series
  // add their values.
  virtual void RegisterVariables();
  void DeRegisterVariables() { RemoveVariablesOfOwner(this); }
  // Objects whose captions show this series' values.
  TQyVariableObjects VariableObjects{this};

  // The X range over which this series' curve is defined: its data extent here; calculated
  // curves answer the range they compute over.
  virtual double GetCalcStart() const { return FLimitMinX; }
  virtual double GetCalcStop() const { return FLimitMaxX; }

  TQyValueTransformation XValueTransformation, YValueTransformation;

  // ---- data path
  // Every vector whose values the series reads: its graph holds them while it polls and paints.
  virtual QList<TQyCustomDoubleVector*> DataVectors() const { return {FXData, FYData}; }
  virtual int GetCount();
  virtual void Calculate();
  // The data extent for the axes: X and Y minimum and maximum in axis numbers.
  virtual void GetExtent(double& minX, double& maxX, double& minY, double& maxY);
  // Turns the data into pixel points; a series without a picture of points has none.
  virtual void CalculatePoints();
  virtual void CheckDBVectors();
  virtual bool HasValuesAt(int i) const;
  // True when every index has values (nothing to skip); lets the point calculation go straight.
  virtual bool EveryIndexHasValues() const;
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

  // ---- what the axes ask
  void DataExtent(bool x, double& lo, double& hi) const override;
  double SmallestPositive(bool x, double below) override;
  void AxisDestroyed(TQyAxis* axis) override;
  // A data vector of the series changed.
  void VectorChanged(TQyCustomDoubleVector* vector, TQyVectorChange change, int index) override;
  // A freed data vector is cleared through its setter, as if the application had cleared it.
  void VectorDestroyed(TQyCustomDoubleVector* vector) override;

  // ---- picking
  virtual double GetY(double x);
  virtual int FindPoint(float x, float y, float tolerance);
  virtual int FindPoint(float x, float y);
  TQyNearestPointResult NearestPoint(QPointF point);
  TQyNearestPointResult NearestX(float x);
  TQyNearestPointResult NearestY(float y);
  float ExtraSpaceAt(int position) override { return 0; }
  virtual int GetItemHeight() { return 0; }
  void SwapDataVecs();

  // ---- drawing (the kinds of series draw; nothing here)
  // The series' picture below the axes, clipped to the data area.
  virtual void PaintGr(QPainter*) {}
  // What stands above the axes (symbols), clipped to the data area.
  virtual void DrawSymbols(QPainter*) {}
  // A partial repaint that moves an edge of this series' picture cannot be drawn piecewise.
  virtual bool NeedsWholeRepaint() const { return false; }
  // The legend sample: merged with MergeLegendItemWith's, or the series' own in `style`.
  virtual void DrawListItem(const TQyLegendItemDrawArgs& args);
  virtual void DrawListItem(const TQyLegendItemDrawArgs&, LegendItemStyle) {}
  void DrawMergedItems(const TQyLegendItemDrawArgs& args);
  // Whether the sample shows a line, an area: merged samples split their rectangle by them.
  virtual bool SampleHasLine() const { return false; }
  virtual bool SampleHasArea() const { return false; }

  // ---- documents: the record stands in QySeriesRecord.cpp
  QY_DOCUMENT_MEMBERS

public:
  // ---- linked markers: a marker snapped to a point of this series listens to LinkedMarkers
  // (Inserted and Deleted at an index of the Y data, Cleared, Appended when the data grew).
  virtual void ClearLinkedMarkers() { Q_EMIT LinkedMarkers(TQyVectorChange::Cleared, -1); }
  virtual void DeleteLinkedMarkers(int i) { Q_EMIT LinkedMarkers(TQyVectorChange::Deleted, i); }
  virtual void ValueInsertedLinkedMarkers(int i) { Q_EMIT LinkedMarkers(TQyVectorChange::Inserted, i); }
  virtual void CheckLinkedMarkers() { Q_EMIT LinkedMarkers(TQyVectorChange::Appended, -1); }
Q_SIGNALS:
  void LinkedMarkers(TQyVectorChange change, int index);

public:

  // ---- state read by the graph, axes and tests
  double LimitMinX() const { return FLimitMinX; }
  double LimitMaxX() const { return FLimitMaxX; }
  double LimitMinY() const { return FLimitMinY; }
  double LimitMaxY() const { return FLimitMaxY; }
  bool PointsStale() const { return FPointsStale; }
  int PointCount() const { return FPointCount; }
  const TQyPointVector& Points() const { return FPoints; }
  const TQyIntegerVector& PointIndices() const { return FPointIndices; }
  QString ToString() const;

protected:
  void AfterConstruction() override;
  void ReplaceAxis(QPointer<TQyAxis>& side, const QPointer<TQyAxis>& other, TQyAxis* axis,
                   const char* caption, const char* name);
  void ReplaceData(QPointer<TQyCustomDoubleVector>& side, QPointer<TQyCustomDoubleVector>& other,
                   TQyCustomDoubleVector* vector, const char* caption, const char* name);
  void ScanExtent(TQyCustomDoubleVector* v, bool isX, double& lo, double& hi);
  QRectF DataArea() const;
  void LeaveGraph();
  // Index, X and Y of point k for the event handlers.
  void ElementAt(int k, int& index, double& x, double& y);

  QString FCaption;
  QPointer<TQyAxis> FXAxis, FYAxis;
  QPointer<TQyCustomDoubleVector> FXData, FYData;
  QPointer<TQySeries> FMergeLegendItemWith;
  TQyInterfacePointer<IQySeriesHost> FGraph;
  TQyIndexer* FDataIndexer = nullptr;
  int FLayer = 0;
  int FLookRow = 0; // the row of the default looks this series took
  TQyPointVector FPoints;
  TQyIntegerVector FPointIndices;
  int FPointCount = 0;
  int FCount = 0, FLastCount = 0, FCalculatedCount = 0, FMinimumCount = 2;
  double FLimitMinX, FLimitMaxX, FLimitMinY, FLimitMaxY;
  bool FPointsStale = true;
  bool FLastVisible = false;
};

// A series drawn as a line through its points, with an area below it or a band to another
// series, and symbols at the points. The points are thinned to what the pixels can show.
class TQyLineSeries : public TQySeries {
  Q_OBJECT
  QY_PROPERTY_OBJECT(TQyLineSettings, Line);
  QY_PROPERTY_OBJECT(TQyAreaSettings, Area);
  Q_PROPERTY(TQySeries* DrawBandTo READ GetDrawBandTo WRITE SetDrawBandTo)

public:
  explicit TQyLineSeries(QObject* owner = nullptr);

  TQySeries* GetDrawBandTo() const { return FDrawBandTo; }
  void SetDrawBandTo(TQySeries* series);
  TQyPointSymbolSettings* PointSymbol() const { return FPointSymbol; }
  TQyPointSymbolSettings* OutOfRangePointSymbol() const { return FOutOfRangePointSymbol; }
  // The series whose calculated X range separates the points drawn with PointSymbol from those
  // drawn with OutOfRangePointSymbol (a calculated curve's range; any series gives its X extent).
  TQySeries* GetRangeFromFunction() const { return FRangeFromFunction; }
  void SetRangeFromFunction(TQySeries* series);

  TQyPenEventHandler OnGetPen;
  TQyBrushEventHandler OnGetBrush;
  PointSymbolEventHandler OnGetPointSymbol;

  int GetCount() override;
  void CalculatePoints() override;
  void TestVisibleChanged() override;
  bool SeriesVisible() const override;
  bool CanDoCanvasDraw() const;
  using TQySeries::FindPoint;
  int FindPoint(float x, float y) override;
  float ExtraSpaceAt(int position) override;
  int GetItemHeight() override;

  // ---- drawing
  void PaintGr(QPainter* graphics) override;
  virtual void DrawLine(QPainter* graphics);
  void DrawSymbols(QPainter* graphics) override;
  bool NeedsWholeRepaint() const override;
  // Decorations drawn between the line and the symbols (error bars); nothing here.
  virtual void DrawIndicators(QPainter*) {}
  // Cuts the translucent symbols out of the painter's clip, so the line does not show through.
  void ShootHolesToClip(QPainter* graphics);
  using TQySeries::DrawListItem;
  void DrawListItem(const TQyLegendItemDrawArgs& args, LegendItemStyle style) override;
  bool SampleHasLine() const override { return FLine->GetVisible(); }
  bool SampleHasArea() const override { return FArea->GetVisible(); }

  int TotalPointCount() const { return FTotalPointCount; }

protected:
  class TQyPointSource;
  void AddBandPoints();
  void CompressRuns(int start, int stop);
  bool CompressColumns(int start, int stop);
  struct TQyKeptPoint { QPointF P; int I; };
  void PutColumn(const TQyKeptPoint& first, const TQyKeptPoint& low, const TQyKeptPoint& high,
                 const TQyKeptPoint& last);
  void KeepDistinctPoints(int start, int stop);
  void KeepOccupyingPoints(int start, int stop);
  virtual bool PureScatter() const;
  void DrawPlainLine(QPainter* graphics);
  void DrawArea(QPainter* graphics);
  void DrawSegments(QPainter* graphics);
  template <class Args, class Handler, class Value, class Draw>
  void EachHandledSegment(const Handler& handler, Value Args::*field, Value first, Draw draw);
  void DrawCanvasLine(QPainter* graphics);
  float Baseline() const;
  // The symbol settings, pen and brush of the point with data index i; nullptr when not drawn.
  const TQyPointSymbolSettings* SymbolAt(int i, const QPen*& pen, const QBrush*& brush);
  bool InFunctionRange(int i);
  bool NeedsHoles() const;
  // Calls f(k) for each point whose symbol is drawn: at most one per pixel of the graph.
  template <class F> void ForEachDistinctSymbol(F f);
  void StampSymbols(QPainter* g);

  QPointer<TQySeries> FDrawBandTo, FRangeFromFunction;
  TQyPointSymbolSettings* FPointSymbol = nullptr;
  TQyPointSymbolSettings* FOutOfRangePointSymbol = nullptr;
  int FTotalPointCount = 0;
  int FColumnPoint = 0; // first point of the last pixel column, where appending resumes
  QPen FPen;
  QBrush FBrush;
  QPen FSymbolPen, FOutOfRangeSymbolPen;
  QBrush FSymbolBrush, FOutOfRangeSymbolBrush;
  float FLastSymbolSize = -1;
  TQyPixelOccupancy FScatterCells; // pixels taken by the points of a pure scatter
  TQyPixelOccupancy FDrawCells;    // pixels taken by the symbols of one drawing pass
  quint64 FPointsVersion = 0;      // counts the calculations of the points
  TQyKeptLayer FStampLayer;        // the last picture of many stamped symbols
  TQyKeptLayer FLineLayer;         // the last picture of a dense line
};
