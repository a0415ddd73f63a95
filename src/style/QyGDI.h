#pragma once
// Colours and pens: the one colour type of all drawing (32-bit ARGB), its text forms (table names,
// "$AARRGGBB", rich-caption identifiers), the colour arithmetic drawing needs (hue, saturation,
// brightness, brighten, readable contrast colours), area brushes and the pen class.
#include <QBrush>
#include <QColor>
#include <QObject>
#include <QPen>
#include <QString>
#include <QStringList>

// ARGB, alpha in bits 24..31, red 16..23, green 8..15, blue 0..7 (the layout of QRgb).
using TQyColor = quint32;

namespace QyGDI {
Q_NAMESPACE
// Line dash styles; the numbers are stored in documents, so the order is fixed.
enum class TDashStyle {
  DashStyleSolid,
  DashStyleDash,
  DashStyleDot,
  DashStyleDashDot,
  DashStyleDashDotDot,
  DashStyleCustom
};
Q_ENUM_NS(TDashStyle)
} // namespace QyGDI
using QyGDI::TDashStyle;

// The fill styles of areas live with the style objects; declared here for GetAreaBrush.
namespace QyStyles {
enum class TQyAreaStyle : int;
}

// Well-known values used as defaults and sentinels.
inline constexpr TQyColor QyTransparent = 0x00FFFFFF; // also "no line" for 3D bars
inline constexpr TQyColor QyBlack = 0xFF000000;
inline constexpr TQyColor QyWhite = 0xFFFFFFFF;

// ---- Channels and Qt conversion
inline quint8 GetAlpha(TQyColor c) { return quint8(c >> 24); }
inline quint8 GetR(TQyColor c) { return quint8(c >> 16); }
inline quint8 GetG(TQyColor c) { return quint8(c >> 8); }
inline quint8 GetB(TQyColor c) { return quint8(c); }
inline QColor TQyColorToQColor(TQyColor c) { return QColor::fromRgba(c); }
inline TQyColor QColorToTQyColor(const QColor& c) { return c.rgba(); }
inline TQyColor ColorToARGB(quint8 a, quint8 r, quint8 g, quint8 b) {
  return (TQyColor(a) << 24) | (TQyColor(r) << 16) | (TQyColor(g) << 8) | TQyColor(b);
}

// ---- Text forms
// A table name (any letter case) or an integer: decimal, or hexadecimal after "$" or "0x".
// Raises EConvertError "'%s' is not a valid integer value" for anything else.
TQyColor ColorToARGB(const QString& text);
// The first table name of the value, else "$" and eight upper-case hex digits. The search starts
// after the system colours unless `includeSystem`, so plain values keep their web names.
QString ARGBToString(TQyColor c, bool includeSystem = false);
// Rich-caption notation "[A=255, R=139, G=0, B=0]" and back (the bracket is optional on input).
QString ARGBToRichID(TQyColor c);
TQyColor RichIDToTQyColor(const QString& text);

// ---- The named-colour table: 26 system colours, Transparent, 140 web colours ordered by hue.
inline constexpr int QyColorCount = 167;
inline constexpr int QyFirstWebColor = 27; // 1-based index of Transparent
// 1-based, as the colour pickers number them; raises ERangeError outside 1..167.
QString QyColorName(int index);
TQyColor QyColorValue(int index);

// ---- Hue, saturation, lightness
float GetHue(TQyColor c);        // degrees 0..360, 0 for greys
float GetSaturation(TQyColor c); // 0..1
float GetBrightness(TQyColor c); // 0..1, (max+min)/2
// Note the argument order, and that the hue is 0..1 here. Alpha 255.
TQyColor HSLToColor(float l, float s, float h);
// Lightness times `factor`, hue and saturation kept, alpha of `c` kept.
TQyColor Brighten(TQyColor c, float factor);
// A background (white or DimGray) and a text colour that stay readable on `c`.
TQyColor ContrastBackGroundARGB(TQyColor c);
TQyColor ContrastForeColorARGB(TQyColor c);

// ---- Brushes and pens
// Solid in `fore` for Total, else the 8x8 hatch pattern of `style` in `fore` on `back`.
// Returned by value: the caller owns the copy, nothing to free.
QBrush GetAreaBrush(QyStyles::TQyAreaStyle style, TQyColor fore, TQyColor back);
// Family names of the installed fonts (replaces the list's contents).
void GetInstalledFontNames(QStringList& list);

// Qt pen style of a dash style and back. Custom maps to Qt::CustomDashLine.
Qt::PenStyle DashStyleToPenStyle(TDashStyle style);
TDashStyle PenStyleToDashStyle(Qt::PenStyle style);

// A QPen with accessors in the system's own terms, so that a pen can serve as a property bag.
// Flat caps and mitred joins, as lines of the charts are drawn.
class TQyPen : public QPen {
public:
  TQyPen();
  TQyPen(TQyColor color, float width);
  TQyPen(const QBrush& brush, float width);
  void Set_DashStyle(TDashStyle style) { setStyle(DashStyleToPenStyle(style)); }
  TDashStyle Get_DashStyle() const { return PenStyleToDashStyle(style()); }
  void Set_Width(float width) { setWidthF(width); }
  float Get_Width() const { return float(widthF()); }
  void Set_Color(TQyColor color) { setColor(TQyColorToQColor(color)); }
  TQyColor Get_Color() const { return QColorToTQyColor(color()); }
};
