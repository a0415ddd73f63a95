#pragma once
// Style objects: small groups of settings for one visual thing (gradient, line, area, point
// symbol, arrow). Owners publish them as object properties. They paint nothing themselves; they
// make the pen or brush the owner paints with. Every change records on the undo stack (when one
// is set) and then calls the owner back through the modified callback.
//
// GetPen/GetBrush return Qt value types: the caller gets its own copy and has nothing to free,
// and a pen once made does not follow later changes of the settings.
#include "QyGDI.h"
#include "QyLocalize.h"
#include "QyProperty.h"
#include <QPainterPath>
#include <QRectF>
#include <functional>

namespace QyStyles {
Q_NAMESPACE
enum class TQyGradientStyle { Linear, Radial, Elliptical };
Q_ENUM_NS(TQyGradientStyle)

// The fill styles of areas; values 0..52 are the hatch patterns, Total is a solid fill.
enum class TQyAreaStyle : int {
  Horizontal, Vertical, ForwardDiagonal, BackwardDiagonal, Cross, DiagonalCross,
  Percent05, Percent10, Percent20, Percent25, Percent30, Percent40, Percent50, Percent60,
  Percent70, Percent75, Percent80, Percent90,
  LightDownwardDiagonal, LightUpwardDiagonal, DarkDownwardDiagonal, DarkUpwardDiagonal,
  WideDownwardDiagonal, WideUpwardDiagonal, LightVertical, LightHorizontal, NarrowVertical,
  NarrowHorizontal, DarkVertical, DarkHorizontal, DashedDownwardDiagonal, DashedUpwardDiagonal,
  DashedHorizontal, DashedVertical, SmallConfetti, LargeConfetti, ZigZag, Wave, DiagonalBrick,
  HorizontalBrick, Weave, Plaid, Divot, DottedGrid, DottedDiamond, Shingle, Trellis, Sphere,
  SmallGrid, SmallCheckerBoard, LargeCheckerBoard, OutlinedDiamond, SolidDiamond, Total
};
Q_ENUM_NS(TQyAreaStyle)

enum class TQyPointSymbol { Dot, Cross, Ex, Star, FiveStar, Circle, Square, Diamond, Delta, Nabla };
Q_ENUM_NS(TQyPointSymbol)
} // namespace QyStyles
using QyStyles::TQyAreaStyle;
using QyStyles::TQyGradientStyle;
using QyStyles::TQyPointSymbol;

// Common base of the style objects: the owner's callback, the undo stack, the change signal, and
// Assign by published properties. A style object records on the stack of the recording object
// it is nested in (its QObject parent chain), unless it was given one of its own.
class TQyStyleObject : public QObject, public TQyRecording {
  Q_OBJECT
  QY_RECORDING_SIGNAL(TQyStyleObject)

public:
  using ModifiedCallback = std::function<void()>;
  explicit TQyStyleObject(ModifiedCallback modifiedCallback, QObject* parent = nullptr);
  ~TQyStyleObject() override;
  // A stack of its own, for a style object that stands alone (nullptr: the owner's again).
  void SetUndoStack(TQyUndoRecorder* stack) { SetUndoRecorder(stack); }
  TQyUndoRecorder* UndoRecorder() const override;
  // A change nested in an object that records as a whole (a font) records that object instead.
  void RecordChange(QObject* self, const char* caption, const char* propertyName) override;

protected:
  // Calls the owner back; nothing without a callback.
  void Modified();
  // Records this object whole for a change of its nested group; false when it does not.
  virtual bool RecordWhole() { return false; }
  // Copies every published property that `source` also has, through the setters (so the copy
  // records and notifies like any change); nested settings are copied likewise.
  void AssignPublished(const QObject& source);

private:
  ModifiedCallback FModifiedCallback;
};

class TQyGradientSettings : public TQyStyleObject {
  Q_OBJECT
  QY_PROPERTY(bool, Visible, QyRes::StyleGradientVisible, Modified()) = false;
  QY_PROPERTY(QyStyles::TQyGradientStyle, Style, QyRes::StyleGradientStyle, Modified()) =
      QyStyles::TQyGradientStyle::Linear;
  QY_PROPERTY(TQyColor, FirstColor, QyRes::StyleGradientFirstColor, Modified()) = 0xFFD3D3D3;
  QY_PROPERTY(TQyColor, MiddleColor, QyRes::StyleGradientMiddleColor, Modified()) = 0xFFB0B0B0;
  QY_PROPERTY(TQyColor, LastColor, QyRes::StyleGradientLastColor, Modified()) = 0xFF808080;
  QY_PROPERTY(float, LinearAngle, QyRes::StyleGradientLinearAngle, Modified()) = 0.0f;
  QY_PROPERTY(float, LinearCenter, QyRes::StyleGradientLinearCenter, Modified()) = 0.5f;
  QY_PROPERTY(float, RadialCenterX, QyRes::StyleGradientRadialCenterX, Modified()) = 0.5f;
  QY_PROPERTY(float, RadialCenterY, QyRes::StyleGradientRadialCenterY, Modified()) = 0.5f;

public:
  explicit TQyGradientSettings(ModifiedCallback modifiedCallback, QObject* parent = nullptr);
  void Assign(const TQyGradientSettings& source) { AssignPublished(source); }
  // The brush of `Style` over `r`; `angle` adds to LinearAngle.
  QBrush GetBrush(const QRectF& r, float angle = 0.0f) const;
};

class TQySimpleLineSettings : public TQyStyleObject {
  Q_OBJECT
  QY_PROPERTY(TQyColor, Color, QyRes::StyleLineColor, Modified()) = 0xFFFF0000;
  QY_PROPERTY(QyGDI::TDashStyle, DashStyle, QyRes::StyleLineDashStyle, Modified()) =
      QyGDI::TDashStyle::DashStyleSolid;
  QY_PROPERTY(float, Width, QyRes::StyleLineWidth, Modified()) = 1.0f;
  QY_PROPERTY_OBJECT(TQyGradientSettings, Gradient);

public:
  explicit TQySimpleLineSettings(ModifiedCallback modifiedCallback, QObject* parent = nullptr);
  void Assign(const TQySimpleLineSettings& source) { AssignPublished(source); }
  // The pen of the line; with a visible gradient its colour comes from the gradient over
  // `area` (turned by `angle`), and Color is ignored.
  virtual TQyPen GetPen(const QRectF& area, float angle = 0.0f) const;
};

class TQyLineSettings : public TQySimpleLineSettings {
  Q_OBJECT
  QY_PROPERTY(bool, Visible, QyRes::StyleLineVisible, Modified()) = true;

public:
  explicit TQyLineSettings(ModifiedCallback modifiedCallback, QObject* parent = nullptr);
};

// A line with an arrowhead at its end. The head is a filled path (ArrowPointCap) in units of the
// line width, drawn by DrawArrowLine.
class TQyArrowSettings : public TQyLineSettings {
  Q_OBJECT
  QY_PROPERTY(float, PointLength, QyRes::StyleArrowPointLength, Modified()) = 5.0f;
  QY_PROPERTY(float, InnerLength, QyRes::StyleArrowInnerLength, Modified()) = 3.0f;
  QY_PROPERTY(float, PointHeight, QyRes::StyleArrowPointHeight, Modified()) = 2.0f;

public:
  explicit TQyArrowSettings(ModifiedCallback modifiedCallback, QObject* parent = nullptr);
};

class TQyAreaSettings : public TQyStyleObject {
  Q_OBJECT
  QY_PROPERTY(bool, Visible, QyRes::StyleAreaVisible, Modified()) = false;
  QY_PROPERTY(TQyColor, ForeColor, QyRes::StyleAreaForeColor, Modified()) = 0xFFD3D3D3;
  QY_PROPERTY(TQyColor, BackColor, QyRes::StyleAreaBackColor, Modified()) = 0xFFA9A9A9;
  QY_PROPERTY(QyStyles::TQyAreaStyle, AreaStyle, QyRes::StyleAreaStyle, Modified()) =
      QyStyles::TQyAreaStyle::Total;
  QY_PROPERTY_OBJECT(TQyGradientSettings, Gradient);

public:
  explicit TQyAreaSettings(ModifiedCallback modifiedCallback, QObject* parent = nullptr);
  void Assign(const TQyAreaSettings& source) { AssignPublished(source); }
  bool Solid() const { return FAreaStyle == QyStyles::TQyAreaStyle::Total; }
  // The gradient's brush when it is visible, else the area brush of AreaStyle.
  QBrush GetBrush(const QRectF& r) const;
};

class TQyPointSymbolSettings : public TQyStyleObject {
  Q_OBJECT
  QY_PROPERTY(bool, Visible, QyRes::StyleSymbolVisible, Modified()) = true;
  QY_PROPERTY(float, Size, QyRes::StyleSymbolSize, Modified()) = 11.0f;
  QY_PROPERTY(float, BorderLineWidth, QyRes::StyleSymbolBorderLineWidth, Modified()) = 1.0f;
  QY_PROPERTY(TQyColor, BorderColor, QyRes::StyleSymbolBorderColor, Modified()) = 0xFF0000FF;
  QY_PROPERTY(TQyColor, FillColor, QyRes::StyleSymbolFillColor, Modified()) = 0xFF0000FF;
  QY_PROPERTY(QyStyles::TQyPointSymbol, PointSymbol, QyRes::StyleSymbolSelection, Modified()) =
      QyStyles::TQyPointSymbol::Circle;

public:
  explicit TQyPointSymbolSettings(ModifiedCallback modifiedCallback, QObject* parent = nullptr);
  void Assign(const TQyPointSymbolSettings& source) { AssignPublished(source); }
};

// The arrow at the end of an axis.
class TQyAxisArrowPoint : public TQyStyleObject {
  Q_OBJECT
  QY_PROPERTY(bool, Visible, QyRes::StyleAxisArrowVisible, Modified()) = false;
  QY_PROPERTY(float, PointLength, QyRes::StyleAxisArrowPointLength, Modified()) = 7.0f;
  QY_PROPERTY(float, InnerLength, QyRes::StyleAxisArrowInnerLength, Modified()) = 5.0f;
  QY_PROPERTY(float, PointHeight, QyRes::StyleAxisArrowPointHeight, Modified()) = 3.0f;

public:
  explicit TQyAxisArrowPoint(ModifiedCallback modifiedCallback, QObject* parent = nullptr);
  void Assign(const TQyAxisArrowPoint& source) { AssignPublished(source); }
};

// The arrowhead outline, in units of the line width, tip at (0, 0), the line arriving along +y
// (so the head lies at negative y): (h, -L), (0, 0), (-h, -L), (0, -I), closed. The line is to
// stop `InnerLength` short of the tip, where the head's notch is.
QPainterPath ArrowPointCap(const TQyAxisArrowPoint& point);
QPainterPath ArrowPointCap(const TQyArrowSettings& arrow);
QPainterPath ArrowPointCap(float pointLength, float innerLength, float pointHeight);
