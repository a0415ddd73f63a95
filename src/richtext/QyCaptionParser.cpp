#include "QyCaptionParser.h"
#include <QFontDatabase>
#include <QFontInfo>
#include <QHash>
#include <QPainter>
#include <QyExceptions.h>
#include <algorithm>

namespace {
constexpr float ScriptScale = 0.66f;      // size of super- and subscript runs
constexpr float SubscriptDropRatio = 0.33f;
constexpr float SuperscriptRiseRatio = 0.025f;
constexpr float ScriptSpacingRatio = 0.1f; // extra room before a script, taken back after it
const QString FallbackFamily = QStringLiteral("Arial");

// The colour a \c[...] parameter names. An id the colour notation rejects keeps the current
// colour: the caption still shows its text.
void ColourFromId(const QString& id, TQyColor& colour) {
  try {
    colour = RichIDToTQyColor(id);
  } catch (const EQyException&) {
  }
}
// The family the font system draws for a name, after its substitutions (a face that stands in
// for a missing one of the same metrics, as Liberation Serif for Times New Roman).
QString DrawnFamily(const QString& family) { return QFontInfo(QFont(family)).family(); }

// Whether the font system can draw `family`: installed, or substituted by a face of its own
// rather than by the default that any unknown name gets. Asked once per family (the look-up is
// slow, and axes parse many labels in one face). Captions are parsed on the GUI thread only.
bool FamilyKnown(const QString& family) {
  static QHash<QString, bool> known;
  auto it = known.find(family);
  if (it == known.end()) {
    static const QString unknownFace = DrawnFamily(QStringLiteral("Qy No Such Family"));
    it = known.insert(family, QFontDatabase::hasFamily(family) || DrawnFamily(family) != unknownFace);
  }
  return *it;
}
} // namespace

TQyCaptionParser::TQyCaptionParser(TQyRichCaptionObject& target, QPainter* graphics)
    : FTarget(target), FGraphics(graphics) {}

void TQyCaptionParser::Run(const QString& s) {
  const TQyFont& font = *FTarget.Font();
  const TQyFontStyles styles = font.GetStyle();
  FStyle.Family = font.GetName();
  FStyle.Bold = styles.testFlag(TQyFontStyle::Bold);
  FStyle.Italic = styles.testFlag(TQyFontStyle::Italic);
  FStyle.Underline = styles.testFlag(TQyFontStyle::Underline);
  FStyle.StrikeOut = styles.testFlag(TQyFontStyle::StrikeOut);
  FStyle.Color = FTarget.GetFillColor();
  FBaseSize = font.ToQFont().pointSizeF();
  FTarget.FLineWidths.push_back(0);

  const QFont base = font.ToQFont();
  const QFontMetricsF fm = QyFontMetrics(base, FGraphics);
  FLineHeight = static_cast<float>(fm.lineSpacing());
  // Ordinary text layout leaves a sixth of the em beside each end of a string; the block keeps
  // that margin (added once to each line, drawn half before the text) so text never touches it.
  const qreal dpi = QyMeasureDpiY(FGraphics);
  FPad = static_cast<float>(base.pointSizeF() * dpi / 72.0 / 3.0);
  UpdateStyle();

  for (int i = 0; i < s.size();) {
    const QChar ch = s[i];
    if (ch == QLatin1Char('\r')) {
      Flush();
      NewLine();
      ++i;
    } else if (ch == QLatin1Char('\\')) {
      i = Command(s, i + 1);
    } else {
      FPending += ch;
      ++i;
    }
  }
  Flush();
  Finish();
}

int TQyCaptionParser::Command(const QString& s, int i) {
  if (i >= s.size()) return i; // a lone backslash at the end is dropped
  const QChar c = s[i];
  switch (c.unicode()) {
  case '\\':
    FPending += c;
    return i + 1;
  case 'b': case 'i': case 'u': case 'o': case '+': case '-':
    Flush();
    Toggle(c);
    return i + 1;
  case 'c': case 'f': {
    Flush();
    const int lineEnd = s.indexOf(QLatin1Char('\r'), i);
    const int close = s.indexOf(QLatin1Char(']'), i);
    const bool closed = i + 1 < s.size() && s[i + 1] == QLatin1Char('[') && close > i &&
                        (lineEnd < 0 || close < lineEnd);
    if (!closed) {
      // Without its closing bracket the command has an empty parameter, and the text behind the
      // backslash (command letter included) stays text.
      Parameter(c, QString());
      return i;
    }
    Parameter(c, s.mid(i + 2, close - i - 2));
    return close + 1;
  }
  default:
    return i + 1; // an unknown command is dropped with its backslash
  }
}

void TQyCaptionParser::Toggle(QChar command) {
  switch (command.unicode()) {
  case 'b': FStyle.Bold = !FStyle.Bold; break;
  case 'i': FStyle.Italic = !FStyle.Italic; break;
  case 'u': FStyle.Underline = !FStyle.Underline; break;
  case 'o': FStyle.StrikeOut = !FStyle.StrikeOut; break;
  case '+':
  case '-': {
    bool& flag = command == QLatin1Char('+') ? FStyle.Superscript : FStyle.Subscript;
    flag = !flag;
    UpdateStyle();
    // entering a script makes a little room before it; leaving takes room back
    FScriptShift = (flag ? 1.0f : -1.0f) * ScriptSpacingRatio * FSize;
    return;
  }
  }
  UpdateStyle();
}

void TQyCaptionParser::Parameter(QChar command, const QString& value) {
  if (command == QLatin1Char('f')) {
    FStyle.Family = value.isEmpty() ? FTarget.Font()->GetName() : value;
  } else if (value.isEmpty()) {
    FStyle.Color = FTarget.GetFillColor();
  } else {
    ColourFromId(value, FStyle.Color);
  }
  UpdateStyle();
}

void TQyCaptionParser::UpdateStyle() {
  const bool script = FStyle.Superscript || FStyle.Subscript;
  FSize = script ? FBaseSize * ScriptScale : FBaseSize;
  FY = FLine * FLineHeight;
  if (FStyle.Superscript) FY -= SuperscriptRiseRatio * FLineHeight;
  else if (FStyle.Subscript) FY += SubscriptDropRatio * FLineHeight;
}

QFont TQyCaptionParser::CurrentFont() const {
  QFont font(FStyle.Family);
  font.setPointSizeF(FSize);
  font.setBold(FStyle.Bold);
  font.setItalic(FStyle.Italic);
  font.setUnderline(FStyle.Underline);
  font.setStrikeOut(FStyle.StrikeOut);
  return font;
}

void TQyCaptionParser::Flush() {
  if (FPending.isEmpty()) return;
  if (FStyle.Family != FallbackFamily && !FamilyKnown(FStyle.Family))
    FStyle.Family = FallbackFamily; // stays for the following runs
  auto run = std::make_unique<TQySubCaption>();
  run->Font = CurrentFont();
  run->FontName = FStyle.Family;
  run->DrawEffects = FTarget.Font()->GetDrawEffects();
  run->FillColor = FStyle.Color;
  run->LineIndex = FLine;
  run->Text = FPending;
  run->Position = QPointF(FX + FPad / 2 + FScriptShift, FY);
  const float width = run->GetWidth(FGraphics) + FScriptShift;
  FScriptShift = 0;
  FX += width;
  FTarget.FLineWidths[static_cast<size_t>(FLine)] = FX + FPad;
  FTarget.FPlainText += FPending;
  FTarget.FSubCaptions.push_back(std::move(run));
  FPending.clear();
}

void TQyCaptionParser::NewLine() {
  ++FLine;
  FTarget.FLineWidths.push_back(0);
  FX = 0;
  UpdateStyle();
}

void TQyCaptionParser::Finish() {
  auto& widths = FTarget.FLineWidths;
  FTarget.FWidth = *std::max_element(widths.begin(), widths.end());
  FTarget.FHeight = static_cast<float>(FLine + 1) * FLineHeight;
  const int column = static_cast<int>(FTarget.Alignment) % 3;
  FTarget.FAlignedColumn = column;
  if (FTarget.FSubCaptions.size() < 2 || column == 0) return;
  const float share = column == 1 ? 0.5f : 1.0f;
  for (auto& run : FTarget.FSubCaptions) {
    const float slack = FTarget.FWidth - widths[static_cast<size_t>(run->LineIndex)];
    run->Position.rx() += slack * share;
  }
}
