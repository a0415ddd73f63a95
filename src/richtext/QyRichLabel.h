#pragma once
// Rich captions: a caption string with backslash mark-up and placeholders, parsed into runs of
// uniform look (TQySubCaption), measured, and drawn rotated about an anchor point. TQyFont is the
// font of every caption; TQyRichLabel shows one caption as a widget.
#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QObject>
#include <QPointF>
#include <QString>
#include <QWidget>
#include <QyGDI.h>
#include <QyProperty.h>
#include <QyRegisters.h>
#include <QyStyles.h>
#include <functional>
#include <memory>
#include <vector>

class QPainter;
class QBrush;

// The string type of a caption property: text with mark-up and placeholders.
using TQyRichCaption = QString;

namespace QyRichLabel {
Q_NAMESPACE

// Where the anchor point (X, Y) lies on the caption's block.
enum class TQyContentAlignment {
  TopLeft, TopCenter, TopRight,
  MiddleLeft, MiddleCenter, MiddleRight,
  BottomLeft, BottomCenter, BottomRight
};
Q_ENUM_NS(TQyContentAlignment)

// Effects of a caption's characters; a set holds at most one of them.
enum class TQyCharDrawEffect { Shadow = 0x1, Outline = 0x2, Lowered = 0x4, Raised = 0x8 };
Q_DECLARE_FLAGS(TQyCharDrawEffects, TQyCharDrawEffect)
Q_FLAG_NS(TQyCharDrawEffects)

// Text rendering quality; the values keep their document ordinals.
enum class TQyTextRenderingHint {
  SystemDefault, SingleBitPerPixelGridFit, SingleBitPerPixel,
  AntiAliasGridFit, AntiAlias, ClearTypeGridFit
};
Q_ENUM_NS(TQyTextRenderingHint)

// Font style flags in document bit order: bold 1, italic 2, underline 4, strike-out 8.
enum class TQyFontStyle { Bold = 0x1, Italic = 0x2, Underline = 0x4, StrikeOut = 0x8 };
Q_DECLARE_FLAGS(TQyFontStyles, TQyFontStyle)
Q_FLAG_NS(TQyFontStyles)
} // namespace QyRichLabel

Q_DECLARE_OPERATORS_FOR_FLAGS(QyRichLabel::TQyCharDrawEffects)
Q_DECLARE_OPERATORS_FOR_FLAGS(QyRichLabel::TQyFontStyles)

using QyRichLabel::TQyCharDrawEffect;
using QyRichLabel::TQyCharDrawEffects;
using QyRichLabel::TQyContentAlignment;
using QyRichLabel::TQyFontStyle;
using QyRichLabel::TQyFontStyles;
using QyRichLabel::TQyTextRenderingHint;

// The font of a caption: family, fractional point size, style, ARGB fill colour, gradient,
// character effect and rendering hint. Every change calls the owner's callback, then OnChange
// (which belongs to the application). A font whose owner gave it an undo caption records any
// change of the settings that PushToUndoStack holds, its gradient's included, as one entry
// with the whole font under that caption.
class TQyFont : public TQyStyleObject {
  Q_OBJECT
  QY_PROPERTY(QString, Name, nullptr, Changed()) = QStringLiteral("Arial");
  QY_PROPERTY(float, Size, nullptr, Changed()) = 10.0f;
  QY_PROPERTY(QyRichLabel::TQyFontStyles, Style, nullptr, Changed()) = {};
  QY_PROPERTY_CUSTOM(TQyColor, FillColor) = 0xFF000000u;
  QY_PROPERTY_CUSTOM(QyRichLabel::TQyCharDrawEffects, DrawEffects) = {};
  QY_PROPERTY(QyRichLabel::TQyTextRenderingHint, RenderingHint, nullptr, Changed()) =
      TQyTextRenderingHint::SystemDefault;
  // Fills the runs in the font's own colour when visible.
  QY_PROPERTY_OBJECT(TQyGradientSettings, Gradient);
  // The plain colour: FillColor without its alpha; setting it makes the fill opaque.
  Q_PROPERTY(QColor Color READ GetColor WRITE SetColor)

public:
  explicit TQyFont(ModifiedCallback modifiedCallback = {}, QObject* parent = nullptr);
  ~TQyFont() override;

  QColor GetColor() const;
  void SetColor(const QColor& value);

  // The font to measure and draw with (fractional point size, style flags).
  QFont ToQFont() const;
  // Takes family, size and style of a plain font (the other settings stay).
  void FromQFont(const QFont& font);
  // Copies all settings; a captioned font records the copy as one entry.
  void Assign(const TQyFont& other);
  // Pushes the font's settings as one group under `caption`.
  void PushToUndoStack(TQyUndoRecorder* recorder, const QString& caption);
  // The caption (an entry of the message table) under which the font records itself whole;
  // nullptr: the font's own settings record nothing.
  void SetUndoCaption(const char* caption) { FUndoCaption = caption; }
  void RecordChange(QObject* self, const char* caption, const char* propertyName) override;

  std::function<void()> OnChange;

protected:
  bool RecordWhole() override;

private:
  void Changed();
  bool SameGroupValues(const TQyFont& other) const;
  const char* FUndoCaption = nullptr;
  bool FAssigning = false;
};

// One run of a parsed caption: text in one font, colour and effect, at its top-left corner in
// the caption's own coordinates.
class TQySubCaption {
public:
  QPointF Position;
  QString Text;
  QFont Font;
  QString FontName;
  TQyCharDrawEffects DrawEffects;
  TQyColor FillColor = 0xFF000000u;
  int LineIndex = 0;

  // Advance width of the text (no side bearings padding).
  float GetWidth(QPainter* graphics) const;
  // Draws the run with `brush`; a solid brush takes the run's own colour.
  void PaintGr(QPainter* graphics, QBrush& brush) const;
};

// A caption: source string, font, anchor, alignment and angle; parsed runs after ParseForSize.
// A plain object, not a QObject: axes own many of them.
class TQyRichCaptionObject {
public:
  // `owner` becomes the font's parent: the font records on the owner's undo stack.
  explicit TQyRichCaptionObject(std::function<void()> modified = {}, QObject* owner = nullptr);
  ~TQyRichCaptionObject();
  TQyRichCaptionObject(const TQyRichCaptionObject&) = delete;
  TQyRichCaptionObject& operator=(const TQyRichCaptionObject&) = delete;

  TQyRichCaption Caption;                // the source string
  TQyColor FillColorOverride = 0;        // 0: none; else the colour of the runs in font colour
  TQyContentAlignment Alignment = TQyContentAlignment::TopLeft;
  float X = 0, Y = 0;                    // the anchor
  float Angle = 0;                       // degrees, counter-clockwise
  std::function<void()> ModifiedCallback;

  TQyFont* Font() const { return FFont.get(); }
  // Sets the source and forgets the parse, so that the next paint measures again.
  void SetCaption(const TQyRichCaption& caption);
  // Unrotated block size after ParseForSize.
  float Width() const { return FWidth; }
  float Height() const { return FHeight; }
  QString PlainText() const { return FPlainText; }
  const std::vector<std::unique_ptr<TQySubCaption>>& SubCaptions() const { return FSubCaptions; }
  const std::vector<float>& LineWidths() const { return FLineWidths; }
  bool IsParsed() const { return !FLineWidths.empty(); }

  // Parses Caption (placeholders resolved for `owner`), measures and builds the runs.
  // `graphics` may be nullptr: the runs are then measured for the screen.
  void ParseForSize(QPainter* graphics, QObject* owner);
  // Draws at (X, Y); parses first when never parsed. Never throws.
  void PaintGr(QPainter* graphics);
  TQyColor GetFillColor() const;
  // The font's change callback: runs in font colour follow it, all runs take its effects.
  void DoFontInvalidate();

private:
  friend class TQyCaptionParser;
  void ClearParse();
  QTransform BlockTransform() const;
  void AlignLines();
  QBrush RunBrush(const TQySubCaption& run) const;

  std::unique_ptr<TQyFont> FFont;
  std::vector<std::unique_ptr<TQySubCaption>> FSubCaptions;
  std::vector<float> FLineWidths;
  QString FPlainText;
  float FWidth = 0, FHeight = 0;
  int FAlignedColumn = 0; // the anchor column the runs' lines were aligned for
};

// Metrics of `font` on the painter's device, or for the screen when there is no painter.
QFontMetricsF QyFontMetrics(const QFont& font, QPainter* graphics);
// The vertical resolution that text is measured for (see QyFontMetrics).
qreal QyMeasureDpiY(QPainter* graphics);
// Sets the painter's text antialiasing for a rendering hint (SystemDefault leaves it alone).
void QyApplyRenderingHint(QPainter* graphics, TQyTextRenderingHint hint);

// A growable list of caption objects (axes keep their tick labels in it). Owns its entries.
class TQyRichCaptionObjects {
public:
  int Count() const { return static_cast<int>(FItems.size()); }
  // Raises ERangeError on a bad index.
  TQyRichCaptionObject* GetValue(int i) const;
  void SetValue(int i, std::unique_ptr<TQyRichCaptionObject> value);
  TQyRichCaptionObject* Add(std::unique_ptr<TQyRichCaptionObject> value);
  void Delete(int i);
  void Clear() { FItems.clear(); }
  // Grows with new empty captions or shrinks to `count`.
  void SetCount(int count);
  // Grows to at least `count`.
  void CheckCount(int count);
  TQyRichCaptionObject* operator[](int i) const { return GetValue(i); }

private:
  std::vector<std::unique_ptr<TQyRichCaptionObject>> FItems;
};

// A caption shown as a widget. With AutoSize the widget takes the size of the rotated block,
// and the caption's anchor is placed so that the rotated block fits the widget exactly.
class TQyRichLabel : public QWidget, public TQyRecording, public IQyVariablesUser {
  Q_OBJECT
  QY_RECORDING_SIGNAL(TQyRichLabel)
  QY_PROPERTY_CUSTOM(float, Angle) = 0;
  QY_PROPERTY(QColor, BackColor, nullptr, update()) = QColor(Qt::transparent);
  QY_PROPERTY_CUSTOM(TQyRichCaption, Caption);
  QY_PROPERTY_CUSTOM(QyRichLabel::TQyContentAlignment, TextAlign) = TQyContentAlignment::TopLeft;
  QY_PROPERTY_CUSTOM(bool, AutoSize) = true;
  QY_PROPERTY_OBJECT(TQyFont, Font);
  // The text colour: the font's plain colour.
  Q_PROPERTY(QColor ForeColor READ GetForeColor WRITE SetForeColor)
  Q_PROPERTY(QString PlainText READ GetPlainText)

public:
  explicit TQyRichLabel(QWidget* parent = nullptr);
  ~TQyRichLabel() override;

  QColor GetForeColor() const { return FFont->GetColor(); }
  void SetForeColor(const QColor& value) { FFont->SetColor(value); }
  QString GetPlainText() const { return FCaptionObject->PlainText(); }
  TQyRichCaptionObject* CaptionObject() const { return FCaptionObject.get(); }
  // The anchor of the caption in widget coordinates, after AdjustBounds.
  QPointF LabelAnchor() const { return {FLabelX, FLabelY}; }

  // Measures the caption, resizes to the rotated block (AutoSize) and places the anchor.
  void AdjustBounds();
  // Background and caption, in widget coordinates.
  void PaintGr(QPainter* graphics);
  QSize sizeHint() const override;
  void SetUndoStack(TQyUndoRecorder* recorder) { SetUndoRecorder(recorder); }
  // A registered value the caption shows has changed: measure and draw again.
  void VariablesChanged() override;

protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

private:
  void FontChanged();
  void Readjust();
  QSizeF RotatedExtent() const;

  std::unique_ptr<TQyRichCaptionObject> FCaptionObject;
  bool FNeedsAdjust = true;
  float FLabelX = 0, FLabelY = 0;
};
