#pragma once
// The pie and donut chart: a graph control of its own beside the XY graph. It takes a vector of
// values and draws them as a flat or 3D pie or donut, with exploded segments, labels inside the
// segments or in callout boxes beside the pie. The whole geometry is computed once per change in
// Calculate (at the next paint), in a unit space where the pie is a circle of radius 1, and then
// mapped so that pie, shifts, labels and shadow just fit into the control.
#include "QyFillPalette.h"
#include "QyGraph2D.h"
#include "QyPieGeometry.h"
#include "QySeries.h"
#include "QyTypes.h"
#include "QyVectors.h"
#include <QStringList>
#include <functional>
#include <vector>

class TQyPieChart;
class QIODevice;

namespace QyPieChart {
Q_NAMESPACE
enum class TQyPieChartType { FlatPie, FlatDonut, ThreeDPie, ThreeDDonut };
Q_ENUM_NS(TQyPieChartType)
enum class TQyPieLabelPosition { Invisible, InsideHorizontal, InsideAligned, Callouts };
Q_ENUM_NS(TQyPieLabelPosition)
enum class TQyCalloutArrowVisibleMode { None, VisibleIfOverlapped, AllVisible };
Q_ENUM_NS(TQyCalloutArrowVisibleMode)
} // namespace QyPieChart
using QyPieChart::TQyCalloutArrowVisibleMode;
using QyPieChart::TQyPieChartType;
using QyPieChart::TQyPieLabelPosition;

// What a label handler gets: the text (in and out) and the value index.
struct TQyPieLabelEventArgs {
  QString Caption;
  int Index = -1;
};
using TQyPieValueTransformation = std::function<double(TQyPieChart* sender, const TQyTransformEventArgs& args)>;
// Pen and brush handlers get the value index, the transformed value (X) and the start angle (Y).
using TQyPiePenEventHandler = std::function<void(TQyPieChart* sender, TQyPenEventArgs& args)>;
using TQyPieBrushEventHandler = std::function<void(TQyPieChart* sender, TQyBrushEventArgs& args)>;
using TQyPieLabelEventHandler = std::function<void(TQyPieChart* sender, TQyPieLabelEventArgs& args)>;

// A label beside the pie: where its arrow starts on the rim, where the label stood before it was
// moved apart from others, and its place now (unit space until the fit, pixels after).
struct TQyPieCallout {
  QPointF Rim, Bend, Position;
  QSizeF Rect; // the box with the distance to the pie around it: what must not overlap
  QSizeF Box;  // the box alone
  bool Overlapped = false;
};

class TQyPieChart : public TQyCustomGraph, public IQyVectorListener {
  Q_OBJECT
  QY_PROPERTY(QyPieChart::TQyPieChartType, PieChartType, QyRes::PieChartType, Modified()) = TQyPieChartType::FlatPie;
  Q_PROPERTY(TQyCustomDoubleVector* Values READ GetValues WRITE SetValues)
  Q_PROPERTY(TQyCustomDoubleVector* ExplodePercent READ GetExplodePercent WRITE SetExplodePercent)
  QY_PROPERTY_CUSTOM(float, StartAngle) = 0;
  QY_PROPERTY_CUSTOM(float, TotalAngle) = 360;
  QY_PROPERTY_CUSTOM(float, ThreeDElevation) = 50;
  QY_PROPERTY_CUSTOM(float, ThreeDPieHeight) = 10;
  QY_PROPERTY_CUSTOM(float, DonutHoleSize) = 35;
  QY_PROPERTY(bool, DropShadow, QyRes::PieDropShadow, Modified()) = true;
  QY_PROPERTY(bool, OrderAscending, QyRes::PieOrderAscending, Modified()) = false;
  QY_PROPERTY(bool, OutliersVisible, QyRes::PieOutliersVisible, Modified()) = false;
  QY_PROPERTY(bool, AutoUpdate, nullptr, Modified()) = true;
  QY_PROPERTY_OBJECT(TQyLineSettings, SegmentBorder);
  Q_PROPERTY(TQyFillPalette* SegmentSettingsPalette READ GetSegmentSettingsPalette WRITE SetSegmentSettingsPalette)
  QY_PROPERTY(float, DistanceAtTop, QyRes::GraphDistanceTop, Modified()) = 0;
  QY_PROPERTY(float, DistanceAtBottom, QyRes::GraphDistanceBottom, Modified()) = 0;
  QY_PROPERTY(float, DistanceAtLeft, QyRes::GraphDistanceLeft, Modified()) = 0;
  QY_PROPERTY(float, DistanceAtRight, QyRes::GraphDistanceRight, Modified()) = 0;
  QY_PROPERTY(QStringList, Captions, QyRes::PieCaptions, Modified());
  Q_PROPERTY(TQyFont* Font READ GetCaptionFont)
  // ---- labels and callouts
  QY_PROPERTY(QyPieChart::TQyPieLabelPosition, LabelPosition, QyRes::PieLabelPosition, Modified()) =
      TQyPieLabelPosition::Invisible;
  QY_PROPERTY(QyTypes::TQyLabelStyle, LabelFrom, QyRes::PieLabelFrom, Modified()) = TQyLabelStyle::Value;
  QY_PROPERTY(QString, LabelFormat, QyRes::PieLabelFormat, Modified());
  QY_PROPERTY(TQyColor, LabelColor, QyRes::PieLabelColor, Modified()) = 0xFF000000u;
  QY_PROPERTY_CUSTOM(float, LabelSize) = 3.5f;
  QY_PROPERTY_OBJECT(TQyArrowSettings, CalloutArrow);
  QY_PROPERTY(QyPieChart::TQyCalloutArrowVisibleMode, CalloutArrowVisibleMode, QyRes::PieCalloutArrowVisibleMode,
              update()) = TQyCalloutArrowVisibleMode::VisibleIfOverlapped;
  QY_PROPERTY(TQyColor, CalloutBackColor, QyRes::PieCalloutBackColor, Modified()) = 0;
  QY_PROPERTY_OBJECT(TQyGradientSettings, CalloutGradient);
  QY_PROPERTY_OBJECT(TQyLineSettings, CalloutFrame);
  QY_PROPERTY(bool, CalloutRaised, QyRes::PieCalloutRaised, Modified()) = false;
  QY_PROPERTY(bool, CalloutLowered, QyRes::PieCalloutLowered, Modified()) = false;
  QY_PROPERTY(bool, CalloutShadow, QyRes::PieCalloutShadow, Modified()) = false;
  QY_PROPERTY_CUSTOM(float, CalloutDistanceToPie) = 0;
  QY_PROPERTY_CUSTOM(float, CalloutSpaceToBorder) = 10;
  QY_PROPERTY_CUSTOM(float, CalloutRounding) = 0;

  // The chart's documents (QyPieRecord.cpp): a reader that fails leaves the chart as it was.
  QY_DOCUMENT_MEMBERS
  // A file holding the stream form.
  void WriteTo(const QString& fileName) const;
  void ReadFrom(const QString& fileName);

public:
  explicit TQyPieChart(QWidget* parent = nullptr);
  ~TQyPieChart() override;

  TQyCustomDoubleVector* GetValues() const { return FValues; }
  void SetValues(TQyCustomDoubleVector* vector);
  TQyCustomDoubleVector* GetExplodePercent() const { return FExplodePercent; }
  void SetExplodePercent(TQyCustomDoubleVector* vector);
  TQyFillPalette* GetSegmentSettingsPalette() const { return FPalette; }
  void SetSegmentSettingsPalette(TQyFillPalette* palette);

  // Events of the application.
  TQyPieValueTransformation ValueTransformation, ExplodePercentTransformation;
  TQyPiePenEventHandler OnGetPen;
  TQyPieBrushEventHandler OnGetBrush;
  TQyPieLabelEventHandler OnGetLabel;

  // ---- the deferred work
  void Modified() override;
  void Calculate() override;
  void BoundsChanged() override { Modified(); }
  bool NeedsCalculate() const { return FNeedsCalculate; }
  bool Ready() const { return FReady; }
  // The poll: values appended without a notice (or read from a database) show within a period.
  void PiePoll();
  double TransformValue(double value, int index);

  // ---- what a legend of the pie reads (per segment s, in drawing position order)
  int SegmentCount() const { return int(FSweeps.size()); }
  // The value index of segment s.
  int GetLegendItemIndex(int s) const { return FSegmentIndices.at(size_t(s)); }
  // The text of a label for value index `index` in `style` and `format`; works before the first
  // picture too (the percentages are then computed at once).
  QString GetSegmentCaption(int index, TQyLabelStyle style, const QString& format);
  // The fill of segment s: item s mod count of the palette, or a light grey fill without one.
  const TQyFillSettings* PaletteItem(int s) const;

  // ---- computed state (after Calculate)
  double ValueSum() const { return FValueSum; }
  double PercentFactor() const { return FPercentFactor; }
  const std::vector<float>& Sweeps() const { return FSweeps; }
  const std::vector<float>& Starts() const { return FStarts; }
  const std::vector<int>& SegmentIndices() const { return FSegmentIndices; }
  const std::vector<int>& PaintOrder() const { return FPaintOrder; }
  const std::vector<QPointF>& ExplodeOffsets() const { return FExplodeOffsets; } // pixels
  bool AnyExploded() const { return FAnyExploded; }
  QRectF PieRect() const { return FPieRect; }
  QRectF PlotRect() const { return FPlotRect; }
  float PieDepth() const { return FPieDepth; }
  const TQyRichCaptionObjects& LabelObjects() const { return FLabelObjects; }
  const std::vector<TQyPieCallout>& Callouts() const { return FCallouts; }
  float LabelFontSize() const { return FLabelFontSize; }
  bool IsThreeD() const { return FPieChartType >= TQyPieChartType::ThreeDPie; }
  bool IsDonut() const {
    return FPieChartType == TQyPieChartType::FlatDonut || FPieChartType == TQyPieChartType::ThreeDDonut;
  }

  // ---- drawing and output (QyPieDrawing.cpp, QyPieRender.cpp)
  void PaintGr(QPainter* graphics);
  // The one routine of every output: the picture of `size` on `painter`, laid out for that size
  // and the painter's device; the control is left as it was.
  void PaintTo(QPainter* painter, QSize size, bool printing = false) override;
  // Every output (files, printers, the clipboard) draws the chart at (dx, dy) through PaintTo.
  void PaintToImage(QPainter* g, float dx, float dy, bool printing) override;

  // IQyVectorListener
  void VectorChanged(TQyCustomDoubleVector* vector, TQyVectorChange change, int index) override;
  void VectorDestroyed(TQyCustomDoubleVector* vector) override;
  void SetUndoStack(TQyUndoRecorder* stack) override;

protected:
  void paintEvent(QPaintEvent* e) override;

private:
  void SetVector(QPointer<TQyCustomDoubleVector>& field, TQyCustomDoubleVector* vector, const char* caption,
                 const char* name);
  void FontModified(const QString& property);
  std::vector<TQyPieValue> TakenValues();
  std::vector<double> ExplodePercents();
  TQyPieMargins StartMargins();
  void PlaceCaption(const TQyPieMargins& margins);
  void PlaceParts(TQyPieMargins& margins);
  void MapToPixels(double pw, double ph);
  // Legends and other parts that are child widgets, each translated to its place.
  void PaintParts(QPainter* g);
  // ---- labels (QyPieLabels.cpp)
  TQyPieExtents CalculateLabels(double elevation);
  TQyRichCaptionObject* AddLabel(int s, float fontSize);
  void MapLabels(double pw, double ph);
  void PaintLabels(QPainter* g);
  void PaintCallouts(QPainter* g);

  QPointer<TQyCustomDoubleVector> FValues, FExplodePercent;
  QPointer<TQyFillPalette> FPalette;
  TQyFillSettings* FDefaultFill = nullptr;
  // computed
  double FValueSum = 0, FPercentFactor = 0;
  std::vector<float> FSweeps, FStarts;
  std::vector<int> FSegmentIndices, FPaintOrder;
  std::vector<QPointF> FExplodeOffsets;
  bool FAnyExploded = false;
  QRectF FPieRect, FPlotRect;
  float FPieDepth = 0;
  TQyRichCaptionObjects FLabelObjects;
  std::vector<TQyPieCallout> FCallouts;
  float FLabelFontSize = 0, FLabelFontReferenceSize = 10;
  bool FNeedsCalculate = true, FReady = true;
  int FPolledCount = -1;
};
