#pragma once
// Bars and histograms. Each bar stands on one class (between two class boundaries on one axis)
// and runs from the base to its value on the other axis. All bar series of a graph share one
// style, orientation, class distance and depth; they stand side by side (Shift) or on top of one
// another (Stack), and the first visible one paints the bars of all of them class by class, so
// that three-dimensional bars overlap correctly. A bar may carry a label whose font follows the
// width of the classes.
#include "QyListLink.h"
#include "QyRichLabel.h"
#include "QySeries.h"
#include "QyTypes.h"
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

namespace QyBars {
Q_NAMESPACE
// The shape of a bar.
enum class TQyBarStyle { Flat, Cuboid, Cylinder };
Q_ENUM_NS(TQyBarStyle)
// How the bars of several series share a class.
enum class TQyBarsOverlayStyle { Shift, Stack };
Q_ENUM_NS(TQyBarsOverlayStyle)
// Where a label stands along its bar.
enum class TQyBarLabelPosition { Invisible, OnBottom, Centered, GoldenCut, ThreeFourth, InTop, OnTopOfBar };
Q_ENUM_NS(TQyBarLabelPosition)
} // namespace QyBars
using QyBars::TQyBarLabelPosition;
using QyBars::TQyBarStyle;
using QyBars::TQyBarsOverlayStyle;

class TQyBars;
// What a label handler gets: the label's text (it may replace it) and the bar's data index.
struct TQyGetLabelEventArgs {
  QString Caption;
  int Index = -1;
};
using TQyGetLabelEventHandler = std::function<void(TQyBars* sender, TQyGetLabelEventArgs& args)>;

class TQyBars : public TQyLineSeries {
  Q_OBJECT
  Q_PROPERTY(QString CaptionsField READ GetCaptionsField WRITE SetCaptionsField)
  Q_PROPERTY(QAbstractItemModel* DataSource READ GetDataSource WRITE SetDataSource)
  QY_PROPERTY_CUSTOM(QyBars::TQyBarsOverlayStyle, OverlayStyle) = TQyBarsOverlayStyle::Shift;
  QY_PROPERTY_CUSTOM(bool, BarsHorizontal) = false;
  QY_PROPERTY_CUSTOM(QyBars::TQyBarStyle, BarStyle) = TQyBarStyle::Flat;
  QY_PROPERTY_CUSTOM(double, Depth3D) = 50.0;
  QY_PROPERTY_CUSTOM(double, ClassesDistance) = 0.0;
  Q_PROPERTY(QStringList Captions READ GetCaptions WRITE SetCaptions)
  QY_PROPERTY_OBJECT(TQyFont, Font);
  Q_PROPERTY(TQyColor LabelColor READ GetLabelColor WRITE SetLabelColor)
  QY_PROPERTY(QString, LabelFormat, QyRes::BarsLabelFormat, LabelModified()) = {};
  QY_PROPERTY(QyTypes::TQyLabelStyle, LabelFrom, QyRes::BarsLabelFrom, LabelModified()) = TQyLabelStyle::Value;
  QY_PROPERTY(QyBars::TQyBarLabelPosition, LabelPosition, QyRes::BarsLabelPosition, RangesModified()) =
      TQyBarLabelPosition::Invisible;
  QY_PROPERTY(float, LabelSize, QyRes::BarsLabelSize, LabelModified()) = 20.0f;
  QY_PROPERTY(bool, LabelVertical, QyRes::BarsLabelVertical, LabelModified()) = false;

public:
  explicit TQyBars(QObject* owner = nullptr);
  ~TQyBars() override;

  // ---- published accessors with more to do
  QStringList GetCaptions() const { return FFromDatabase ? QStringList() : FCaptions; }
  void SetCaptions(QStringList value);
  TQyColor GetLabelColor() const { return FFont->GetFillColor(); }
  void SetLabelColor(TQyColor value);
  // Copies `font` into the label font; later size changes of the font rescale LabelSize.
  void SetFont(const TQyFont& font);
  QString GetCaptionsField() const { return FCaptionLink->FieldName(); }
  void SetCaptionsField(QString field);
  QAbstractItemModel* GetDataSource() const { return FCaptionLink->DataSource(); }
  void SetDataSource(QAbstractItemModel* source);

  TQyGetLabelEventHandler OnGetLabel;

  // ---- data: the coordinate of index i as the bars use it (a stacked value sums the series below)
  double Get_X(int i);
  double Get_Y(int i);
  // A number of a label: FormatFloat with `format`, FloatToStr without.
  static QString FmtLab(const QString& format, double value);
  // The labels' texts or look changed: a new layout when they stand on top, else new points.
  void LabelModified();

  // ---- the series' virtuals
  int GetCount() override;
  void Calculate() override;
  void CalculatePoints() override;
  void PaintGr(QPainter* graphics) override;
  void DrawSymbols(QPainter*) override {}
  bool NeedsWholeRepaint() const override { return true; }
  using TQyLineSeries::FindPoint;
  int FindPoint(float x, float y) override;
  int FindPoint(float x, float y, float tolerance) override;
  float ExtraSpaceAt(int side) override;
  bool GraphDepth(float& depthX, float& depthY) override;
  using TQyLineSeries::DrawListItem;
  void DrawListItem(const TQyLegendItemDrawArgs& args, LegendItemStyle style) override;
  bool SampleHasLine() const override { return false; }
  bool SampleHasArea() const override { return true; }
  bool HasValuesAt(int i) const override { return TQySeries::HasValuesAt(i); }
  bool EveryIndexHasValues() const override { return false; }
  void VectorDestroyed(TQyCustomDoubleVector* vector) override;

  // ---- state read by the graph, tests and documents
  const TQyPointVector& SecondCorners() const { return FSecondCorners; }
  float Depth3DX() const { return FDepth3DX; }
  float Depth3DY() const { return FDepth3DY; }
  bool LastInGroup() const { return FLastInGroup; }
  bool FromDatabase() const { return FFromDatabase; }
  const TQyRichCaptionObjects& CaptionObjects() const { return FCaptionObjects; }
  // The bar rectangle j (in drawing order of this series), corners ordered.
  QRectF BarRect(int j) const;
  // The captions as the labels use them (from the list or the database).
  const QStringList& CaptionList() const { return FCaptions; }

protected:
  // The value vector (X for horizontal bars) and the class vector (the other one).
  TQyCustomDoubleVector* ValueData() const { return FBarsHorizontal ? FXData : FYData; }
  TQyCustomDoubleVector* ClassData() const { return FBarsHorizontal ? FYData : FXData; }
  TQyAxis* ValueAxis() const { return FBarsHorizontal ? FXAxis : FYAxis; }
  TQyAxis* ClassAxis() const { return FBarsHorizontal ? FYAxis : FXAxis; }
  // Every bar series of the graph in list order (this one alone without a graph).
  QList<TQyBars*> GraphBars() const;
  // Bars that share this one's classes: same orientation and class axis.
  bool SameGroup(const TQyBars* other) const;
  // The own (untransformed sum) value of the value coordinate at i, and whether there is one.
  bool IsIndexer(const TQyCustomDoubleVector* v) const;
  bool OwnValue(int i, double& value);
  double ValueAt(int i);
  double ClassBoundary(int i);
  // A setter whose value all bars of the graph share: records here, writes into every one.
  template <class T> void SetShared(T TQyBars::*field, T value, const char* caption, const char* name);

  // ---- geometry (QyBarsGeometry.cpp) and labels (QyBarsLabels.cpp)
  void ComputeCorners(int count);
  void MakeLabels(int count);
  QString LabelText(int index, double percentFactor);
  void PlaceLabel(int j, TQyRichCaptionObject& label, bool keepInside) const;
  float LabelExtraSpace(bool top, double a, double u);
  // ---- painting (QyBarsPaint.cpp)
  void PaintBar(QPainter* g, int j);
  bool PlainFills() const;
  void PaintColumns(QPainter* g);
  // ---- captions from a data model
  void DBChanged();
  void DBModified();
  void UpdateDB();
  void FontModified();
  void ListenToLowerVectors();

  QStringList FCaptions;
  TQyListLink* FCaptionLink = nullptr;
  TQyPointVector FSecondCorners;
  QList<QPointer<TQyBars>> FStackedBelow;
  QList<QPointer<TQyCustomDoubleVector>> FListenedVectors; // value vectors of the series below
  TQyRichCaptionObjects FCaptionObjects;
  float FDepth3DX = 1, FDepth3DY = 1, FCylinderShift = 0;
  float FLabelFontReferenceSize = 10;
  float FNarrowestClass = 100; // the narrowest class width in pixels, which the label font follows
  bool FLastInGroup = true;
  bool FCalculating = false;
  bool FFromDatabase = false, FDatabaseChanged = false, FUpdatingFromDatabase = false;
};
