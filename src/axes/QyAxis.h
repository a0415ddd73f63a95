#pragma once
// An axis: one numeric range mapped to a pixel interval, its ticks and labels, and the layout pass
// that places all axes, margins and the data area of a graph.
#include "QyAxisHost.h"
#include "QyAxisSeries.h"
#include "QyDateTime.h"
#include "QyInterfacePointer.h"
#include "QyLocalize.h"
#include "QyStyles.h"
#include "QyPlainVectors.h"
#include "QyProperty.h"
#include "QyRegisters.h"
#include "QyGraphPart.h"
#include "QyRecordSchema.h"
#include "QyRichLabel.h"
#include "QyTypes.h"
#include <QAbstractItemModel>
#include <QList>
#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

class TQyAxisArrowPoint;
class TQyDoubleVector;
class TQyListLink;

namespace QyAxis {
Q_NAMESPACE
enum class TQyAxisPosition { Bottom, Left, Top, Right };
Q_ENUM_NS(TQyAxisPosition)
enum class TQyAxisScaling { Normal, Log, LogEE, Seconds, DateTime, Rubrics };
Q_ENUM_NS(TQyAxisScaling)
enum class TQyAxisEnd { AutoRange, FirstSet, Fixed, MovingSlit };
Q_ENUM_NS(TQyAxisEnd)
enum class TQyAxisEndRounding {
  RndToMajorZoomToMinor, RndToMajorZoomToNothing, RndToMajor, RndToMinorZoomToNothing, RndToMinor,
  RndNothing
};
Q_ENUM_NS(TQyAxisEndRounding)
enum class TQyMajorGridMode { AtLabel, AtMajorTick };
Q_ENUM_NS(TQyMajorGridMode)
enum class TQyDtRegion { Year, Month, Day, Hour, Minute, Second, MilliSecond };
Q_ENUM_NS(TQyDtRegion)
} // namespace QyAxis
using QyAxis::TQyAxisEnd;
using QyAxis::TQyAxisEndRounding;
using QyAxis::TQyAxisPosition;
using QyAxis::TQyAxisScaling;
using QyAxis::TQyDtRegion;
using QyAxis::TQyMajorGridMode;

// The time unit and decade of a seconds axis's parts, and the largest unit its labels show.
struct TQySecParameters {
  TQyDtRegion Region = TQyDtRegion::Second;
  int Exponent = 0;
  TQySecondsFormatRange Format = TQySecondsFormatRange::Second;
};

// The calendar steps of a date-time axis: labels and major ticks every LabelCount and MajorCount
// units of LabelRegion, minor ticks every TickCount units of TickRegion.
struct TQyDtParameters {
  TQyDtRegion LabelRegion = TQyDtRegion::Day;
  TQyDtRegion TickRegion = TQyDtRegion::Day;
  int TickCount = 1;
  int MajorCount = 1;
  int LabelCount = 1;
  QString FormatString;
};

// The label formats of a date-time axis, made from the format settings at construction.
struct TQyAxisTimeFormats {
  QString ShortMonth, LongMonth, Day, Minute, DayAndHour, Second, MilliSecond;
  static TQyAxisTimeFormats FromSettings(const TFormatSettings& fs);
};

// The label text of a tick may be replaced by the application.
using TQyScaleLabelEventHandler = std::function<void(class TQyAxis* sender, double value, QString& label)>;
using TQyNotifyEvent = std::function<void(QObject* sender)>;

// The value-to-pixel mapping of a linear axis as a plain value, for the inner loops of series:
// the same arithmetic as TQyAxis::NumberToWorld, without the calls.
struct TQyLinearMap {
  double Start = 0, Scale = 1, InvScale = 1;
  float Base = 0, Length = 0;
  bool Forward = true;
  // A distance along the axis in pixels, pinned to +/-100000 pixels, placed at the origin.
  static float Place(double d, bool forward, float length, float base) {
    float r;
    if (d > -100000 && d < 100000) r = forward ? float(d) : length - float(d);
    else if (forward) r = d < 0 ? -100000.0f : 100000.0f;
    else r = d < 0 ? 100000.0f : -100000.0f; // NaN lands here too, far outside
    return base + r;
  }
  // A product instead of the quotient: within a rounding step of NumberToWorld, and much faster.
  float Map(double value) const { return Place((value - Start) * InvScale, Forward, Length, Base); }
};

// True while a layout pass over the axes of `parent` runs (guards against the resizes and shows
// the pass itself causes). Each graph has its own: a pass left open while one graph updates
// stops no other graph. An axis without a parent is its own.
bool LayoutInProgress(const QObject* parent);
void SetLayoutInProgress(QObject* parent, bool on);

class TQyAxis : public QWidget, public TQyRecording, public IQyGraphPart, public IQyVariablesUser {
  Q_OBJECT
  Q_INTERFACES(IQyGraphPart)
  QY_RECORDING_SIGNAL(TQyAxis)
  QY_PROPERTY_CUSTOM(QString, Caption);
  QY_PROPERTY(QyTypes::TAlignment, CaptionAlignment, QyRes::AxisCaptionAlignment, Modified()) = TAlignment::Center;
  QY_PROPERTY(TQyColor, CaptionColor, QyRes::AxisCaptionColor, Modified()) = 0xFF8B0000u;
  QY_PROPERTY(float, CaptionDistanceAfter, QyRes::AxisCaptionDistanceAfter, Modified()) = 0;
  QY_PROPERTY(float, CaptionDistanceBefore, QyRes::AxisCaptionDistanceBefore, Modified()) = 0;
  QY_PROPERTY(bool, CaptionVisible, QyRes::AxisCaptionVisible, Modified()) = true;
  QY_PROPERTY(bool, CaptionHorizontalOnVerticalAxis, QyRes::AxisCaptionHorizontal, Modified()) = false;
  QY_PROPERTY(int, ExtraDigits, QyRes::AxisExtraDigits, Modified()) = 0;
  QY_PROPERTY(TQyColor, ForeColor, QyRes::AxisForeColor, DoInvalidate()) = 0xFF000000u;
  QY_PROPERTY(TQyColor, NumbersColor, QyRes::AxisNumbersColor, Modified()) = 0xFF00008Bu;
  QY_PROPERTY_CUSTOM(float, RubricsAngle) = 0;
  QY_PROPERTY_CUSTOM(QyAxis::TQyAxisScaling, Scaling) = TQyAxisScaling::Normal;
  QY_PROPERTY_CUSTOM(double, LogToNormalScalingLevel) = 0;
  QY_PROPERTY_CUSTOM(double, MovingSlitWidth) = 0;
  QY_PROPERTY_CUSTOM(double, MovingSlitIncrement) = 0;
  QY_PROPERTY_CUSTOM(QStringList, Rubrics);
  // Rubrics from a column of a data model (no undo: a data binding).
  Q_PROPERTY(QString RubricsField READ GetRubricsField WRITE SetRubricsField)
  Q_PROPERTY(QAbstractItemModel* DataSource READ GetDataSource WRITE SetDataSource)
  QY_PROPERTY(bool, NumbersVisible, QyRes::AxisNumbersVisible, Modified()) = true;
  QY_PROPERTY_CUSTOM(QyAxis::TQyAxisPosition, Position) = TQyAxisPosition::Bottom;
  QY_PROPERTY_CUSTOM(bool, AutoTickParts) = true;
  QY_PROPERTY_CUSTOM(float, LabelDistanceFactor) = 1.0f;
  QY_PROPERTY_CUSTOM(double, LabelPart) = 0;
  QY_PROPERTY_CUSTOM(double, MajorTickPart) = 0;
  QY_PROPERTY_CUSTOM(double, TickPart) = 0;
  QY_PROPERTY(QyAxis::TQyMajorGridMode, MajorGridMode, QyRes::AxisMajorGridMode, Modified()) = TQyMajorGridMode::AtLabel;
  QY_PROPERTY(float, AxisThicknes, QyRes::AxisThicknes, Modified()) = 1.0f;
  QY_PROPERTY(float, TickThicknes, QyRes::AxisTickThicknes, Modified()) = 1.0f;
  QY_PROPERTY(float, TickLength, QyRes::AxisTickLength, Modified()) = 6.0f;
  QY_PROPERTY(float, MajorTickLength, QyRes::AxisMajorTickLength, Modified()) = 10.0f;
  QY_PROPERTY(TQyColor, MajorTickColor, QyRes::AxisMajorTickColor, DoInvalidate()) = 0xFF000000u;
  QY_PROPERTY(TQyColor, TickColor, QyRes::AxisTickColor, DoInvalidate()) = 0xFF000000u;
  QY_PROPERTY(bool, TicksPointToData, QyRes::AxisTicksPointToData, Modified()) = false;
  QY_PROPERTY(bool, Twisted, QyRes::AxisTwisted, Modified()) = false;
  QY_PROPERTY(bool, IsSlaveAxis, QyRes::AxisIsSlave, Modified()) = false;
  QY_PROPERTY(double, SlaveSlope, QyRes::AxisSlaveSlope, Modified()) = 1.0;
  QY_PROPERTY(double, SlaveOffset, QyRes::AxisSlaveOffset, Modified()) = 0.0;
  QY_PROPERTY_CUSTOM(double, Start) = 0.0;
  QY_PROPERTY_CUSTOM(double, Stop) = 10.0;
  QY_PROPERTY_CUSTOM(QyAxis::TQyAxisEnd, StartEnd) = TQyAxisEnd::AutoRange;
  QY_PROPERTY_CUSTOM(QyAxis::TQyAxisEnd, StopEnd) = TQyAxisEnd::AutoRange;
  QY_PROPERTY_CUSTOM(double, StartPadding) = 0;
  QY_PROPERTY_CUSTOM(double, StopPadding) = 0;
  QY_PROPERTY_CUSTOM(QyAxis::TQyAxisEndRounding, EndRounding) = TQyAxisEndRounding::RndToMajorZoomToMinor;
  QY_PROPERTY_CUSTOM(double, MaxForExtraExponent) = 1000.0;
  QY_PROPERTY_CUSTOM(double, MinForExtraExponent) = 0.001;
  QY_PROPERTY(float, DistanceValuesAxis, QyRes::AxisDistanceValuesAxis, Modified()) = 0;
  QY_PROPERTY(float, DistanceAxisLabels, QyRes::AxisDistanceAxisLabels, Modified()) = 0;
  QY_PROPERTY(float, DistanceAxisExtraExponent, QyRes::AxisDistanceExtraExponent, Modified()) = 10.0f;
  QY_PROPERTY_OBJECT(TQyFont, Font);
  QY_PROPERTY_OBJECT(TQyFont, CaptionFont);
  QY_PROPERTY_OBJECT(TQyAxisArrowPoint, ArrowPoint);
  Q_PROPERTY(float MajorTickThicknes READ GetMajorTickThicknes WRITE SetMajorThickThicknes)
  Q_PROPERTY(float DistanceNumbersCaption READ GetDistanceNumbersCaption WRITE SetDistanceNumbersCaption)
  Q_PROPERTY(float DistanceToBorder READ GetDistanceToBorder WRITE SetDistanceToBorder)
  Q_PROPERTY(TQyAxis* MasterAxis READ GetMasterAxis WRITE SetMasterAxis)
  Q_PROPERTY(bool AutoSize READ GetAutoSize WRITE SetAutoSize)
  Q_PROPERTY(bool Visible READ GetVisible WRITE SetVisible)
  QY_DOCUMENT_MEMBERS

public:
  explicit TQyAxis(QWidget* parent = nullptr);
  ~TQyAxis() override;

  // ---- mapping
  float NumberToWorld(double value) const;
  double WorldToNumber(float pixel) const;
  bool GetHorizontal() const { return FPosition == TQyAxisPosition::Bottom || FPosition == TQyAxisPosition::Top; }
  bool LogActive() const { return FLogActive; }
  // The linear mapping as a value; false where the mapping is not linear (log, date-time).
  bool LinearMap(TQyLinearMap& map) const;

  // ---- layout, ranges, ticks
  void Calculate();
  void CalculateTicks();
  void Modified();
  void DoInvalidate();
  void RangeModified();
  void GetNewRanges();
  // `padToData`: the ends come from the data hull and take StartPadding and StopPadding.
  void RoundEnds(double& start, double& stop, bool padToData = false);
  bool GetIsClipped() const;
  void CheckResize();
  void SetStartStop(double start, double stop);
  double MajorIncrement() const;
  double MinorIncrement() const;
  bool NeedsCalc() const { return FNeedsCalc; }
  double RoundEnd(double value, bool up, bool major) const;

  // ---- partitioning (the parts finders run inside RoundEnds)
  void GetNormalAxisParts(double start, double stop);
  void GetLogAxisParts(double start, double stop);
  void GetExponentAndDigits(double start, double stop);
  QString NormalCaption(double value) const;
  float ApproxLen(double value, QString text) const;
  TQySecParameters GetSecParameters(double start, double stop);
  TQyDtParameters GetDtParameters(double start, double stop);
  double SecondsRound(double value, double part, int exponent, bool up) const;
  double DateTimeRound(double value, bool up, bool major) const;
  int RangeExponent() const { return FRangeExponent; }
  int LabelExponent() const { return FLabelExponent; }
  int Digits() const { return FDigits; }
  bool ExtraExponentOn() const { return FExtraExponentOn; }
  const TQyRichCaptionObject& ExtraExponentCaption() const { return *FExtraExponentCaption; }
  const TQySecParameters& SecParameters() const { return FSecParameters; }
  const TQyDtParameters& DtParameters() const { return FDtParameters; }
  TQyAxisTimeFormats& TimeFormats() { return FTimeFormats; }

  // ---- drawing
  void PaintGr(QPainter* graphics);

  // ---- zoom history: stage 0 is the unzoomed range; back and redo wrap round as a ring
  int GetCurrentZoomStage() const { return FZoomStage; }
  void ZoomIn(double start, double stop);
  void ZoomToStage(int stage);
  void ZoomBack();
  void RedoZoom();
  void ZoomClearBuffer();
  bool GetCanZoomBack() const { return !FZoomStarts.empty(); }
  int GetZoomBufferSize() const { return int(FZoomStarts.size()); }
  // ---- scroll bars work on 0 .. 10000 over the unzoomed range
  double GetScrollStart() const;
  double GetScrollStop() const;
  int ScrollRangeSize(double start, double stop) const;
  int ScrollPosition(double value) const;

  // ---- series on this axis
  void AddSeries(IQyAxisSeries* series);
  void RemoveSeries(IQyAxisSeries* series);
  QList<IQyAxisSeries*> Series() const;

  // ---- property accessors written out
  float GetMajorTickThicknes() const { return FMajorTickThicknes; }
  void SetMajorThickThicknes(float value);
  float GetDistanceNumbersCaption() const;
  void SetDistanceNumbersCaption(float value);
  float GetDistanceToBorder() const;
  void SetDistanceToBorder(float value);
  TQyAxis* GetMasterAxis() const { return FMasterAxis; }
  void SetMasterAxis(TQyAxis* value);
  bool GetAutoSize() const { return FAutoSize; }
  void SetAutoSize(bool value);
  bool GetVisible() const { return FVisible; }
  // The object whose layout pass places this axis: its parent widget, or the axis itself.
  QObject* LayoutParent() const;

private:
  void PushEndsUncaptioned(std::initializer_list<const char*> names);
  double ClampEnd(double value) const;
  template <class T, class Notify>
  void AssignGroupedWith(T& field, const T& value, const char* caption, const char* name,
                         std::initializer_list<const char*> others, Notify notify);

public:
  void SetVisible(bool visible);
  // The axis holds the stack; its fonts and arrow find it through their parent.
  void SetUndoStack(TQyUndoRecorder* recorder) override { SetUndoRecorder(recorder); }
  // As a part of its graph: drawn in the axes pass, translated to its position.
  TQyPaintPasses PaintPasses() const override { return QyPass(TQyPaintPass::Axes); }
  void PaintPass(TQyPaintPass, QPainter* graphics) override { PaintGr(graphics); }
  bool PartVisible() const override { return GetVisible(); }
  QString GetRubricsField() const;
  void SetRubricsField(QString field);
  QAbstractItemModel* GetDataSource() const;
  void SetDataSource(QAbstractItemModel* source);
  void DBModified();
  // Reads the rubrics of the bound column when it changed (the layout pass calls it).
  void UpdateDB();
  QString ToString() const;
  // A value that the caption shows has changed.
  void VariablesChanged() override;

  // ---- state read by the graph, series and tests
  float AxisLength() const { return FAxisLength; }
  // Puts the axis' start end at `origin` (in its own coordinates) with `length` along it, outside
  // the layout pass (coupled graphs share their data-area edges).
  void PlaceAlong(float origin, float length);
  float OriginX() const { return FOriginX; }
  float OriginY() const { return FOriginY; }
  double Scale() const { return FScale; }
  double DataMin() const { return FDataMin; }
  double DataMax() const { return FDataMax; }
  // The hull of the attached series' data, whatever the end modes made of the range.
  double DataHullMin() const { return FHullMin; }
  double DataHullMax() const { return FHullMax; }
  const TQySingleVector& TickPositions() const { return FTickPositions; }
  const TQyBooleanVector& MajorFlags() const { return FMajorFlags; }
  const TQyBooleanVector& GridFlags() const { return FGridFlags; }
  int LabelCount() const { return int(FTickLabels.size()); }
  const TQyRichCaptionObject& Label(int i) const;
  TQyRichCaptionObject* CaptionObject() const { return FCaptionObject.get(); }
  // The graph the axis stands in; nullptr for a free axis.
  IQyAxisHost* Graph() const;

  TQyScaleLabelEventHandler OnGetScaleLabel;
  TQyNotifyEvent OnGetTicks;
  TQyNotifyEvent OnCalculated;

protected:
  // Inside a graph the graph draws its axes; under any other parent the axis draws itself.
  void paintEvent(QPaintEvent*) override;
  void changeEvent(QEvent* e) override;

private:
  friend class TQyAxisLayout;
  friend struct TQyAxisRecord; // the document record reaches the partitions and the zoom stages
  friend class TQyAxisPainter;
  void ParseCaption();
  void ApplyMaster();
  bool InPanDrag() const;
  bool TicksFromRoundedEnds() const;
  void AddLabel(QString text, double value, float pixel);
  void ClearTicks();
  void LabelBasePoint();
  void LinearTicks();
  void LogTicks();
  void RubricsTicks();
  void SecondsTicks();
  void DateTimeTicks();
  void PlaceExtraExponent();
  void PlaceCaption();
  double SmallestPositiveData(double below) const;
  void RepairEnds(double& start, double& stop);
  void PadEnds(double& start, double& stop) const;
  void FindParts(double start, double stop, bool pan);
  bool RoundToParts(double& start, double& stop) const;
  void ReadZoomStage();
  int LabelExtent() const;
  void PaintTicks(QPainter* g, bool exact);
  void PaintAxisLine(QPainter* g, bool exact);
  float LabelExtentAcross() const;
  float CaptionExtentAcross() const;
  float& CaptionDistance(bool numbersSide);

  float FMajorTickThicknes = 1.0f;
  bool FVisible = true;
  TQyListLink* FRubricsLink = nullptr;
  bool FDBChanged = false, FReadingDB = false;
  bool FAutoSize = true;
  QPointer<TQyAxis> FMasterAxis;

  float FAxisLength = 400;
  float FOriginX = 0, FOriginY = 0;
  double FScale = 1.0;
  bool FLogActive = false;
  double FLogStart = 0, FLogStop = 1;
  int FRangeExponent = 0;
  int FLabelExponent = 0;
  int FDigits = 0;
  bool FExtraExponentOn = false;
  bool FNeedsCalc = true;
  bool FEndsRounded = false;
  bool FRangeChanged = false;
  double FSetStart = 0, FSetStop = 10;
  double FLastStart = 0, FLastStop = 10;
  double FDataMin = 1.7976931348623157e308, FDataMax = -1.7976931348623157e308;
  double FHullMin = 1.7976931348623157e308, FHullMax = -1.7976931348623157e308;
  TQySingleVector FTickPositions;
  TQyBooleanVector FMajorFlags{20}, FGridFlags{20};
  std::vector<std::unique_ptr<TQyRichCaptionObject>> FTickLabels;
  std::unique_ptr<TQyRichCaptionObject> FCaptionObject;
  std::unique_ptr<TQyRichCaptionObject> FExtraExponentCaption;
  float FSinAngle = 0, FCosAngle = 1;
  float FLabelBaseX = 0, FLabelBaseY = 0; // where labels hang from, across the axis
  float FUx = 0, FUy = 0;                 // shift of an oblique label's end towards its tick
  bool FOblique = false;
  TQySecParameters FSecParameters;
  TQyDtParameters FDtParameters;
  TQyAxisTimeFormats FTimeFormats;
  float FFontSize = 20;
  float FMaxLabelWidth = 0, FMaxLabelHeight = 0;
  double FLabelPartitions[3] = {1.0, 0.5, 0.2};
  double FMajorPartitions[3] = {0.5, 0.5, 0.1};
  double FMinorPartitions[3] = {0.1, 0.1, 0.02};
  std::vector<double> FZoomStarts, FZoomStops;
  int FZoomStage = 0;
  QList<TQyInterfacePointer<IQyAxisSeries>> FSeries;
};
