#include "QyGDI.h"
#include "QyExceptions.h"
#include "QyHatch.h"
#include "QyLocalize.h"
#include "QyRounding.h"
#include "QyStringFunctions.h"
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <array>

namespace {
struct TSystemColor {
  const char* name;
  QPalette::ColorGroup group;
  QPalette::ColorRole role;
};

// The 26 system colours, in table order, and the palette role each is read from. The platform
// has no system colour table of its own; this mapping follows what each name colours in a
// desktop: "Window" is the background of text fields (Base), "Control" the face of buttons, the
// caption colours are the selection colours, the 3D edge colours the palette's shades.
constexpr std::array<TSystemColor, 26> SystemColors{{
    {"ActiveBorder", QPalette::Active, QPalette::Window},
    {"ActiveCaption", QPalette::Active, QPalette::Highlight},
    {"ActiveCaptionText", QPalette::Active, QPalette::HighlightedText},
    {"AppWorkspace", QPalette::Active, QPalette::Mid},
    {"Control", QPalette::Active, QPalette::Button},
    {"ControlDark", QPalette::Active, QPalette::Dark},
    {"ControlDarkDark", QPalette::Active, QPalette::Shadow},
    {"ControlLight", QPalette::Active, QPalette::Midlight},
    {"ControlLightLight", QPalette::Active, QPalette::Light},
    {"ControlText", QPalette::Active, QPalette::ButtonText},
    {"Desktop", QPalette::Active, QPalette::Dark},
    {"GrayText", QPalette::Disabled, QPalette::Text},
    {"Highlight", QPalette::Active, QPalette::Highlight},
    {"HighlightText", QPalette::Active, QPalette::HighlightedText},
    {"HotTrack", QPalette::Active, QPalette::Link},
    {"InactiveBorder", QPalette::Inactive, QPalette::Window},
    {"InactiveCaption", QPalette::Inactive, QPalette::Mid},
    {"InactiveCaptionText", QPalette::Inactive, QPalette::WindowText},
    {"Info", QPalette::Active, QPalette::ToolTipBase},
    {"InfoText", QPalette::Active, QPalette::ToolTipText},
    {"Menu", QPalette::Active, QPalette::Window},
    {"MenuText", QPalette::Active, QPalette::WindowText},
    {"ScrollBar", QPalette::Active, QPalette::Midlight},
    {"Window", QPalette::Active, QPalette::Base},
    {"WindowFrame", QPalette::Active, QPalette::Shadow},
    {"WindowText", QPalette::Active, QPalette::Text},
}};

struct TWebColor {
  const char* name;
  TQyColor value;
};

// Transparent and the 140 web colours, ordered by hue as the colour pickers show them.
constexpr std::array<TWebColor, 141> WebColors{{
    {"Transparent", 0x00FFFFFF},   {"Black", 0xFF000000},          {"DimGray", 0xFF696969},
    {"Gray", 0xFF808080},          {"DarkGray", 0xFFA9A9A9},       {"Silver", 0xFFC0C0C0},
    {"LightGray", 0xFFD3D3D3},     {"Gainsboro", 0xFFDCDCDC},      {"WhiteSmoke", 0xFFF5F5F5},
    {"White", 0xFFFFFFFF},         {"RosyBrown", 0xFFBC8F8F},      {"IndianRed", 0xFFCD5C5C},
    {"Brown", 0xFFA52A2A},         {"Firebrick", 0xFFB22222},      {"LightCoral", 0xFFF08080},
    {"Maroon", 0xFF800000},        {"DarkRed", 0xFF8B0000},        {"Red", 0xFFFF0000},
    {"Snow", 0xFFFFFAFA},          {"MistyRose", 0xFFFFE4E1},      {"Salmon", 0xFFFA8072},
    {"Tomato", 0xFFFF6347},        {"DarkSalmon", 0xFFE9967A},     {"Coral", 0xFFFF7F50},
    {"OrangeRed", 0xFFFF4500},     {"LightSalmon", 0xFFFFA07A},    {"Sienna", 0xFFA0522D},
    {"SeaShell", 0xFFFFF5EE},      {"Chocolate", 0xFFD2691E},      {"SaddleBrown", 0xFF8B4513},
    {"SandyBrown", 0xFFF4A460},    {"PeachPuff", 0xFFFFDAB9},      {"Peru", 0xFFCD853F},
    {"Linen", 0xFFFAF0E6},         {"Bisque", 0xFFFFE4C4},         {"DarkOrange", 0xFFFF8C00},
    {"BurlyWood", 0xFFDEB887},     {"Tan", 0xFFD2B48C},            {"AntiqueWhite", 0xFFFAEBD7},
    {"NavajoWhite", 0xFFFFDEAD},   {"BlanchedAlmond", 0xFFFFEBCD}, {"PapayaWhip", 0xFFFFEFD5},
    {"Moccasin", 0xFFFFE4B5},      {"Orange", 0xFFFFA500},         {"Wheat", 0xFFF5DEB3},
    {"OldLace", 0xFFFDF5E6},       {"FloralWhite", 0xFFFFFAF0},    {"DarkGoldenrod", 0xFFB8860B},
    {"Goldenrod", 0xFFDAA520},     {"Cornsilk", 0xFFFFF8DC},       {"Gold", 0xFFFFD700},
    {"Khaki", 0xFFF0E68C},         {"LemonChiffon", 0xFFFFFACD},   {"PaleGoldenrod", 0xFFEEE8AA},
    {"DarkKhaki", 0xFFBDB76B},     {"Beige", 0xFFF5F5DC},          {"LightGoldenrodYellow", 0xFFFAFAD2},
    {"Olive", 0xFF808000},         {"Yellow", 0xFFFFFF00},         {"LightYellow", 0xFFFFFFE0},
    {"Ivory", 0xFFFFFFF0},         {"OliveDrab", 0xFF6B8E23},      {"YellowGreen", 0xFF9ACD32},
    {"DarkOliveGreen", 0xFF556B2F}, {"GreenYellow", 0xFFADFF2F},   {"Chartreuse", 0xFF7FFF00},
    {"LawnGreen", 0xFF7CFC00},     {"DarkSeaGreen", 0xFF8FBC8F},   {"ForestGreen", 0xFF228B22},
    {"LimeGreen", 0xFF32CD32},     {"LightGreen", 0xFF90EE90},     {"PaleGreen", 0xFF98FB98},
    {"DarkGreen", 0xFF006400},     {"Green", 0xFF008000},          {"Lime", 0xFF00FF00},
    {"Honeydew", 0xFFF0FFF0},      {"SeaGreen", 0xFF2E8B57},       {"MediumSeaGreen", 0xFF3CB371},
    {"SpringGreen", 0xFF00FF7F},   {"MintCream", 0xFFF5FFFA},      {"MediumSpringGreen", 0xFF00FA9A},
    {"MediumAquamarine", 0xFF66CDAA}, {"Aquamarine", 0xFF7FFFD4},  {"Turquoise", 0xFF40E0D0},
    {"LightSeaGreen", 0xFF20B2AA}, {"MediumTurquoise", 0xFF48D1CC}, {"DarkSlateGray", 0xFF2F4F4F},
    {"PaleTurquoise", 0xFFAFEEEE}, {"Teal", 0xFF008080},           {"DarkCyan", 0xFF008B8B},
    {"Aqua", 0xFF00FFFF},          {"Cyan", 0xFF00FFFF},           {"LightCyan", 0xFFE0FFFF},
    {"Azure", 0xFFF0FFFF},         {"DarkTurquoise", 0xFF00CED1},  {"CadetBlue", 0xFF5F9EA0},
    {"PowderBlue", 0xFFB0E0E6},    {"LightBlue", 0xFFADD8E6},      {"DeepSkyBlue", 0xFF00BFFF},
    {"SkyBlue", 0xFF87CEEB},       {"LightSkyBlue", 0xFF87CEFA},   {"SteelBlue", 0xFF4682B4},
    {"AliceBlue", 0xFFF0F8FF},     {"DodgerBlue", 0xFF1E90FF},     {"SlateGray", 0xFF708090},
    {"LightSlateGray", 0xFF778899}, {"LightSteelBlue", 0xFFB0C4DE}, {"CornflowerBlue", 0xFF6495ED},
    {"RoyalBlue", 0xFF4169E1},     {"MidnightBlue", 0xFF191970},   {"Lavender", 0xFFE6E6FA},
    {"Navy", 0xFF000080},          {"DarkBlue", 0xFF00008B},       {"MediumBlue", 0xFF0000CD},
    {"Blue", 0xFF0000FF},          {"GhostWhite", 0xFFF8F8FF},     {"SlateBlue", 0xFF6A5ACD},
    {"DarkSlateBlue", 0xFF483D8B}, {"MediumSlateBlue", 0xFF7B68EE}, {"MediumPurple", 0xFF9370DB},
    {"BlueViolet", 0xFF8A2BE2},    {"Indigo", 0xFF4B0082},         {"DarkOrchid", 0xFF9932CC},
    {"DarkViolet", 0xFF9400D3},    {"MediumOrchid", 0xFFBA55D3},   {"Thistle", 0xFFD8BFD8},
    {"Plum", 0xFFDDA0DD},          {"Violet", 0xFFEE82EE},         {"Purple", 0xFF800080},
    {"DarkMagenta", 0xFF8B008B},   {"Magenta", 0xFFFF00FF},        {"Fuchsia", 0xFFFF00FF},
    {"Orchid", 0xFFDA70D6},        {"MediumVioletRed", 0xFFC71585}, {"DeepPink", 0xFFFF1493},
    {"HotPink", 0xFFFF69B4},       {"LavenderBlush", 0xFFFFF0F5},  {"PaleVioletRed", 0xFFDB7093},
    {"Crimson", 0xFFDC143C},       {"Pink", 0xFFFFC0CB},           {"LightPink", 0xFFFFB6C1},
}};

static_assert(SystemColors.size() + WebColors.size() == QyColorCount);

// The system colours are read once, on first use: from the application's palette when there is
// an application, otherwise from a light palette derived from a neutral button colour.
const std::array<TQyColor, 26>& SystemValues() {
  static const std::array<TQyColor, 26> values = [] {
    const QPalette palette = qGuiApp ? QGuiApplication::palette() : QPalette(QColor(0xF0F0F0));
    std::array<TQyColor, 26> v{};
    for (size_t i = 0; i < SystemColors.size(); ++i)
      v[i] = 0xFF000000 | (palette.color(SystemColors[i].group, SystemColors[i].role).rgba());
    return v;
  }();
  return values;
}

const char* NameAt(int index) {
  return index <= 26 ? SystemColors[size_t(index - 1)].name : WebColors[size_t(index - 27)].name;
}

float Channel(quint8 v) { return float(v) / 255.0f; }
} // namespace

QString QyColorName(int index) {
  if (index < 1 || index > QyColorCount) QyRaiseIndexError(index);
  return QString::fromLatin1(NameAt(index));
}

TQyColor QyColorValue(int index) {
  if (index < 1 || index > QyColorCount) QyRaiseIndexError(index);
  return index <= 26 ? SystemValues()[size_t(index - 1)] : WebColors[size_t(index - 27)].value;
}

TQyColor ColorToARGB(const QString& text) {
  const QString upper = text.toUpper();
  for (int i = 1; i <= QyColorCount; ++i)
    if (upper == QString::fromLatin1(NameAt(i)).toUpper()) return QyColorValue(i);
  return TQyColor(quint32(StrToInt(upper))); // decimal or "$" hex, as any integer text
}

QString ARGBToString(TQyColor c, bool includeSystem) {
  for (int i = includeSystem ? 1 : QyFirstWebColor; i <= QyColorCount; ++i)
    if (QyColorValue(i) == c) return QString::fromLatin1(NameAt(i));
  return "$" + QString::number(c, 16).toUpper().rightJustified(8, '0');
}

QString ARGBToRichID(TQyColor c) {
  return QString("[A=%1, R=%2, G=%3, B=%4]").arg(GetAlpha(c)).arg(GetR(c)).arg(GetG(c)).arg(GetB(c));
}

namespace {
// The number after `key` up to the next "," (or, for the last key, up to "]" or the end),
// truncated to a byte. Rich captions hand the identifier over without its closing bracket, but
// ARGBToRichID writes one: both read the same, so that the two functions round-trip.
quint8 RichIDChannel(const QString& text, const char* key, bool last) {
  const qsizetype at = text.indexOf(QLatin1String(key));
  QString number;
  if (at >= 0) {
    const qsizetype from = at + 2;
    const qsizetype end = text.indexOf(last ? QChar(']') : QChar(','), from);
    number = text.mid(from, end < 0 ? -1 : end - from);
  }
  return quint8(StrToInt(number) & 0xFF);
}
} // namespace

TQyColor RichIDToTQyColor(const QString& text) {
  return ColorToARGB(RichIDChannel(text, "A=", false), RichIDChannel(text, "R=", false),
                     RichIDChannel(text, "G=", false), RichIDChannel(text, "B=", true));
}

// ---- Hue, saturation, lightness

float GetBrightness(TQyColor c) {
  const float r = Channel(GetR(c)), g = Channel(GetG(c)), b = Channel(GetB(c));
  return (std::max({r, g, b}) + std::min({r, g, b})) / 2.0f;
}

float GetSaturation(TQyColor c) {
  const float r = Channel(GetR(c)), g = Channel(GetG(c)), b = Channel(GetB(c));
  const float mx = std::max({r, g, b}), mn = std::min({r, g, b});
  if (mx == mn) return 0.0f;
  return (mx + mn) / 2.0f <= 0.5f ? (mx - mn) / (mx + mn) : (mx - mn) / (2.0f - mx - mn);
}

float GetHue(TQyColor c) {
  const float r = Channel(GetR(c)), g = Channel(GetG(c)), b = Channel(GetB(c));
  const float mx = std::max({r, g, b}), mn = std::min({r, g, b});
  if (mx == mn) return 0.0f;
  const float d = mx - mn;
  float h = r == mx ? (g - b) / d : g == mx ? 2.0f + (b - r) / d : 4.0f + (r - g) / d;
  h *= 60.0f;
  return h < 0.0f ? h + 360.0f : h;
}

namespace {
float HueChannel(float p, float q, float t) {
  if (t < 0.0f) t += 1.0f;
  if (t > 1.0f) t -= 1.0f;
  if (6.0f * t < 1.0f) return p + (q - p) * 6.0f * t;
  if (2.0f * t < 1.0f) return q;
  if (3.0f * t < 2.0f) return p + (q - p) * (2.0f / 3.0f - t) * 6.0f;
  return p;
}

quint8 ToByte(float v) { return quint8(Round(std::clamp(v, 0.0f, 1.0f) * 255.0f)); }
} // namespace

TQyColor HSLToColor(float l, float s, float h) {
  if (l <= 0.0f) return QyBlack;
  if (s == 0.0f) return ColorToARGB(255, ToByte(l), ToByte(l), ToByte(l));
  const float q = l <= 0.5f ? (1.0f + s) * l : l + s - l * s;
  const float p = 2.0f * l - q;
  return ColorToARGB(255, ToByte(HueChannel(p, q, h + 1.0f / 3.0f)), ToByte(HueChannel(p, q, h)),
                     ToByte(HueChannel(p, q, h - 1.0f / 3.0f)));
}

TQyColor Brighten(TQyColor c, float factor) {
  const TQyColor rgb = HSLToColor(GetBrightness(c) * factor, GetSaturation(c), GetHue(c) / 360.0f);
  return (rgb & 0x00FFFFFF) | (c & 0xFF000000);
}

namespace {
constexpr TQyColor DimGray = 0xFF696969;
constexpr TQyColor DarkRed = 0xFF8B0000;
constexpr TQyColor LightCoral = 0xFFF08080;
constexpr TQyColor DarkGreen = 0xFF006400;
constexpr TQyColor LightGreen = 0xFF90EE90;
} // namespace

TQyColor ContrastBackGroundARGB(TQyColor c) {
  const float hue = GetHue(c), light = GetBrightness(c);
  if (hue >= 45.0f && hue < 85.0f) return light >= 0.5f ? DimGray : QyWhite; // yellows
  return light <= 0.8f ? QyWhite : DimGray;
}

TQyColor ContrastForeColorARGB(TQyColor c) {
  const float hue = GetHue(c), light = GetBrightness(c);
  if (hue >= 45.0f && hue <= 250.0f) return light >= 0.5f ? DarkRed : LightCoral;
  return light >= 0.75f ? DarkGreen : LightGreen;
}

// ---- Brushes and pens

QBrush GetAreaBrush(QyStyles::TQyAreaStyle style, TQyColor fore, TQyColor back) {
  const int index = int(style);
  if (index < 0 || index >= QyHatchCount) return QBrush(TQyColorToQColor(fore)); // Total: solid
  return QBrush(QyHatchImage(index, fore, back));
}

void GetInstalledFontNames(QStringList& list) { list = QFontDatabase::families(); }

Qt::PenStyle DashStyleToPenStyle(TDashStyle style) {
  switch (style) {
  case TDashStyle::DashStyleSolid: return Qt::SolidLine;
  case TDashStyle::DashStyleDash: return Qt::DashLine;
  case TDashStyle::DashStyleDot: return Qt::DotLine;
  case TDashStyle::DashStyleDashDot: return Qt::DashDotLine;
  case TDashStyle::DashStyleDashDotDot: return Qt::DashDotDotLine;
  case TDashStyle::DashStyleCustom: return Qt::CustomDashLine;
  }
  return Qt::SolidLine;
}

TDashStyle PenStyleToDashStyle(Qt::PenStyle style) {
  switch (style) {
  case Qt::DashLine: return TDashStyle::DashStyleDash;
  case Qt::DotLine: return TDashStyle::DashStyleDot;
  case Qt::DashDotLine: return TDashStyle::DashStyleDashDot;
  case Qt::DashDotDotLine: return TDashStyle::DashStyleDashDotDot;
  case Qt::CustomDashLine: return TDashStyle::DashStyleCustom;
  default: return TDashStyle::DashStyleSolid;
  }
}

namespace {
// Chart lines end flat at their end points and meet in clipped mitres.
void ChartPenShape(QPen& pen) {
  pen.setCapStyle(Qt::FlatCap);
  pen.setJoinStyle(Qt::MiterJoin);
  pen.setMiterLimit(1.0);
}
} // namespace

TQyPen::TQyPen() : TQyPen(QyBlack, 1.0f) {}

TQyPen::TQyPen(TQyColor color, float width) : QPen(TQyColorToQColor(color), qreal(width)) {
  ChartPenShape(*this);
}

TQyPen::TQyPen(const QBrush& brush, float width) : QPen(brush, qreal(width)) { ChartPenShape(*this); }
