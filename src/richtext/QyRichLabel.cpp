#include "QyRichLabel.h"
#include <QFontMetricsF>
#include <QPainter>
#include <QScopedValueRollback>
#include <algorithm>
#include <iterator>
#include <QyExceptions.h>
#include <QyPlaceholders.h>
#include "QyCaptionParser.h"

// ---- TQyFont

TQyFont::TQyFont(ModifiedCallback modifiedCallback, QObject* parent)
    : TQyStyleObject(std::move(modifiedCallback), parent) {
  FGradient = new TQyGradientSettings([this] { Changed(); }, this);
}

TQyFont::~TQyFont() { FDestroying = true; }

void TQyFont::Changed() {
  Modified();
  if (OnChange) OnChange();
}

namespace {
// What PushToUndoStack holds, of the font and of its gradient.
constexpr const char* FontGroup[] = {"Name", "Style", "Size", "FillColor", "DrawEffects"};
constexpr const char* GradientGroup[] = {"Visible", "Style", "FirstColor", "MiddleColor", "LastColor",
                                         "LinearAngle", "LinearCenter", "RadialCenterX", "RadialCenterY"};
} // namespace

void TQyFont::SetFillColor(TQyColor value) {
  QyAssign(this, FFillColor, value, nullptr, "FillColor", [this] { Changed(); });
}

QColor TQyFont::GetColor() const { return QColor::fromRgb(FFillColor & 0x00FFFFFFu); }

void TQyFont::SetColor(const QColor& value) { SetFillColor(0xFF000000u | (value.rgb() & 0x00FFFFFFu)); }

// The newest effect replaces the former one: what was set before is taken out of the new set,
// and of the rest the first in the order Shadow, Outline, Lowered, Raised stays.
void TQyFont::SetDrawEffects(TQyCharDrawEffects value) {
  if (value == FDrawEffects) return;
  TQyCharDrawEffects rest = value & ~FDrawEffects;
  TQyCharDrawEffects kept;
  for (auto e : {TQyCharDrawEffect::Shadow, TQyCharDrawEffect::Outline, TQyCharDrawEffect::Lowered,
                 TQyCharDrawEffect::Raised})
    if (rest.testFlag(e)) {
      kept = e;
      break;
    }
  QyAssign(this, FDrawEffects, kept, nullptr, "DrawEffects", [this] { Changed(); });
}

QFont TQyFont::ToQFont() const {
  QFont font(FName);
  // A size from a document may be anything: it is capped at a page-high 4000 points, and a size
  // that is no number takes the default.
  constexpr double MaxPoints = 4000;
  font.setPointSizeF(FSize > 0 ? std::min(double(FSize), MaxPoints) : 10.0);
  font.setBold(FStyle.testFlag(TQyFontStyle::Bold));
  font.setItalic(FStyle.testFlag(TQyFontStyle::Italic));
  font.setUnderline(FStyle.testFlag(TQyFontStyle::Underline));
  font.setStrikeOut(FStyle.testFlag(TQyFontStyle::StrikeOut));
  return font;
}

void TQyFont::FromQFont(const QFont& font) {
  SetName(font.family());
  SetSize(static_cast<float>(font.pointSizeF()));
  TQyFontStyles style;
  style.setFlag(TQyFontStyle::Bold, font.bold());
  style.setFlag(TQyFontStyle::Italic, font.italic());
  style.setFlag(TQyFontStyle::Underline, font.underline());
  style.setFlag(TQyFontStyle::StrikeOut, font.strikeOut());
  SetStyle(style);
}

// A captioned font records one entry with its whole self before the copy, and nothing inside it.
void TQyFont::Assign(const TQyFont& other) {
  if (FUndoCaption && !SameGroupValues(other)) RecordWhole();
  const QScopedValueRollback<bool> assigning(FAssigning, true);
  SetName(other.FName);
  SetSize(other.FSize);
  SetStyle(other.FStyle);
  SetFillColor(other.FFillColor);
  FDrawEffects = {}; // copy the set as it is, not as a newest-wins change
  SetDrawEffects(other.FDrawEffects);
  SetRenderingHint(other.FRenderingHint);
  FGradient->Assign(*other.FGradient);
}

void TQyFont::PushToUndoStack(TQyUndoRecorder* recorder, const QString& caption) {
  if (!recorder || !recorder->IsRecording()) return;
  recorder->StartGroup(caption);
  for (const char* name : FontGroup) recorder->PushProperty(this, QString(), name);
  for (const char* name : GradientGroup) recorder->PushProperty(FGradient, QString(), name);
  recorder->StopGroup();
}

bool TQyFont::RecordWhole() {
  if (!FUndoCaption) return false;
  if (!FAssigning) PushToUndoStack(UndoRecorder(), QyText(FUndoCaption));
  return true;
}

bool TQyFont::SameGroupValues(const TQyFont& other) const {
  auto same = [](const QObject* a, const QObject* b, const auto& names) {
    return std::all_of(std::begin(names), std::end(names),
                       [&](const char* n) { return a->property(n) == b->property(n); });
  };
  return same(this, &other, FontGroup) && same(FGradient, other.FGradient, GradientGroup);
}

void TQyFont::RecordChange(QObject* self, const char* caption, const char* propertyName) {
  const bool inGroup = std::any_of(std::begin(FontGroup), std::end(FontGroup),
                                   [&](const char* n) { return qstrcmp(n, propertyName) == 0; });
  if (inGroup && RecordWhole()) return;
  TQyStyleObject::RecordChange(self, caption, propertyName);
}

// ---- TQyRichCaptionObject

TQyRichCaptionObject::TQyRichCaptionObject(std::function<void()> modified, QObject* owner)
    : ModifiedCallback(std::move(modified)),
      FFont(std::make_unique<TQyFont>([this] { DoFontInvalidate(); }, owner)) {}

TQyRichCaptionObject::~TQyRichCaptionObject() = default;

void TQyRichCaptionObject::SetCaption(const TQyRichCaption& caption) {
  if (caption == Caption) return;
  Caption = caption;
  ClearParse();
  if (ModifiedCallback) ModifiedCallback();
}

void TQyRichCaptionObject::ClearParse() {
  FSubCaptions.clear();
  FLineWidths.clear();
  FPlainText.clear();
  FWidth = FHeight = 0;
}

TQyColor TQyRichCaptionObject::GetFillColor() const {
  return FillColorOverride != 0 ? FillColorOverride : FFont->GetFillColor();
}

void TQyRichCaptionObject::DoFontInvalidate() {
  if (!FSubCaptions.empty()) {
    const TQyColor first = FSubCaptions.front()->FillColor;
    for (auto& run : FSubCaptions) {
      if (run->FillColor == first) run->FillColor = GetFillColor();
      run->DrawEffects = FFont->GetDrawEffects();
    }
  }
  if (ModifiedCallback) ModifiedCallback();
}

// Placeholders resolved (the owner becomes a dependant of the values it shows), line breaks
// made CR. A placeholder that cannot be resolved leaves the caption as written: a caption is
// measured while painting, and painting must not fail.
static QString ExpandCaption(const QString& caption, QObject* owner) {
  QString s = caption;
  try {
    s = ParseVariables(caption, owner);
  } catch (const EQyException&) {
  }
  s.replace(QStringLiteral("\n\r"), QStringLiteral("\r"));
  s.replace(QStringLiteral("\r\n"), QStringLiteral("\r"));
  s.replace(QLatin1Char('\n'), QLatin1Char('\r'));
  return s;
}

void QyApplyRenderingHint(QPainter* graphics, TQyTextRenderingHint hint) {
  if (!graphics || hint == TQyTextRenderingHint::SystemDefault) return;
  const bool smooth = hint != TQyTextRenderingHint::SingleBitPerPixel &&
                      hint != TQyTextRenderingHint::SingleBitPerPixelGridFit;
  graphics->setRenderHint(QPainter::TextAntialiasing, smooth);
}

void TQyRichCaptionObject::ParseForSize(QPainter* graphics, QObject* owner) {
  if (Caption.isEmpty()) return;
  QyApplyRenderingHint(graphics, FFont->GetRenderingHint());
  ClearParse();
  TQyCaptionParser(*this, graphics).Run(ExpandCaption(Caption, owner));
}

QTransform TQyRichCaptionObject::BlockTransform() const {
  float ox = X, oy = Y;
  const int a = static_cast<int>(Alignment);
  if (a % 3 == 1) ox -= FWidth / 2;
  else if (a % 3 == 2) ox -= FWidth;
  if (a / 3 == 1) oy -= FHeight / 2;
  else if (a / 3 == 2) oy -= FHeight;
  QTransform t;
  t.translate(X, Y);
  t.rotate(-Angle);
  t.translate(-X, -Y);
  t.translate(ox, oy);
  return t;
}

namespace {
// Saves the painter state and restores it on every way out.
class TPainterState {
public:
  explicit TPainterState(QPainter* p) : FPainter(p) { FPainter->save(); }
  ~TPainterState() { FPainter->restore(); }
  TPainterState(const TPainterState&) = delete;
  TPainterState& operator=(const TPainterState&) = delete;

private:
  QPainter* FPainter;
};
} // namespace

// The brush of a run: runs in the caption's own colour take the font's gradient when it is on.
QBrush TQyRichCaptionObject::RunBrush(const TQySubCaption& run) const {
  const TQyGradientSettings& gradient = *FFont->GetGradient();
  if (run.FillColor == GetFillColor() && gradient.GetVisible())
    return gradient.GetBrush(QRectF(0, 0, FWidth, FHeight));
  return QBrush(QColor::fromRgba(run.FillColor));
}

void TQyRichCaptionObject::PaintGr(QPainter* graphics) {
  if (!graphics || !graphics->isActive()) return;
  try {
    if (!IsParsed()) ParseForSize(graphics, nullptr);
    AlignLines();
    TPainterState state(graphics);
    graphics->setTransform(BlockTransform(), true);
    QyApplyRenderingHint(graphics, FFont->GetRenderingHint());
    for (const auto& run : FSubCaptions) {
      QBrush brush = RunBrush(*run);
      run->PaintGr(graphics, brush);
    }
  } catch (...) {
    // painting never raises: a caption that cannot be drawn is left out
  }
}

// Owners often set the anchor after measuring (its corner depends on the size): the lines
// follow the anchor's column as it is when drawn.
void TQyRichCaptionObject::AlignLines() {
  const int column = static_cast<int>(Alignment) % 3;
  if (column == FAlignedColumn) return;
  static constexpr float share[] = {0.0f, 0.5f, 1.0f};
  const float move = share[column] - share[FAlignedColumn];
  for (auto& run : FSubCaptions)
    run->Position.rx() += (FWidth - FLineWidths[static_cast<size_t>(run->LineIndex)]) * move;
  FAlignedColumn = column;
}

// ---- TQyRichCaptionObjects

TQyRichCaptionObject* TQyRichCaptionObjects::GetValue(int i) const {
  if (i < 0 || i >= Count()) QyRaiseIndexError(i);
  return FItems[static_cast<size_t>(i)].get();
}

void TQyRichCaptionObjects::SetValue(int i, std::unique_ptr<TQyRichCaptionObject> value) {
  if (i < 0 || i >= Count()) QyRaiseIndexError(i);
  FItems[static_cast<size_t>(i)] = std::move(value);
}

TQyRichCaptionObject* TQyRichCaptionObjects::Add(std::unique_ptr<TQyRichCaptionObject> value) {
  FItems.push_back(std::move(value));
  return FItems.back().get();
}

void TQyRichCaptionObjects::Delete(int i) {
  if (i < 0 || i >= Count()) QyRaiseIndexError(i);
  FItems.erase(FItems.begin() + i);
}

void TQyRichCaptionObjects::SetCount(int count) {
  if (count < Count()) FItems.resize(static_cast<size_t>(std::max(count, 0)));
  else CheckCount(count);
}

void TQyRichCaptionObjects::CheckCount(int count) {
  while (Count() < count) FItems.push_back(std::make_unique<TQyRichCaptionObject>());
}
