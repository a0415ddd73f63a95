// The layout pass: any axis starts it, and it places every axis of the parent, the margins and the
// data area of the graph, in one sweep. Pixel arithmetic saturates (CeilI, RoundI, TruncI): a
// distance of NaN counts as 0 and a huge one as far outside, whatever the properties hold.
#include "QyAxis.h"
#include "QyGraphPart.h"
#include "QyRounding.h"
#include "QyStyles.h"
#include <cmath>

namespace {
constexpr float MinAxisLength = 40;
using Margins = TQyLayoutMargins;
} // namespace

// One pass over the axes of a parent; holds what the steps hand to each other.
class TQyAxisLayout {
public:
  TQyAxisLayout(TQyAxis* starter) : FStarter(starter), FGraph(starter->Graph()) {
    QWidget* parent = starter->parentWidget();
    if (parent)
      for (QObject* c : parent->children())
        if (auto* a = qobject_cast<TQyAxis*>(c)) FAxes.append(a);
    if (FAxes.isEmpty()) FAxes.append(starter);
    const QSize client = FGraph ? FGraph->LayoutSize() : parent ? parent->size() : starter->size();
    FWidth = client.width();
    FHeight = client.height();
  }

  void Run();

private:
  bool Begin();
  void FirstRound();
  void StartMargins();
  void AxisBands();
  void PlaceInControl(TQyAxis* a, float s);
  void CommonMargins();
  void FinalLengths();
  void ZeroOriginLengths(TQyAxis* x, TQyAxis* y);
  void DataArea();
  void Finish();
  // The part of the end labels, series margins and arrow that reach past each end of an axis.
  void Overhangs(TQyAxis* a, float& atStart, float& atStop) const;
public:
  static void SetLength(TQyAxis* a, float length) { a->FAxisLength = length >= MinAxisLength ? length : MinAxisLength; }

private:
  static float Band(TQyAxis* a);
  bool TakesMargin(TQyAxis* a) const;

  TQyAxis* FStarter;
  IQyAxisHost* FGraph;
  QList<TQyAxis*> FAxes;
  int FWidth, FHeight;
  Margins FM;
  TQyAxis *FKeepLeft = nullptr, *FKeepRight = nullptr, *FKeepTop = nullptr, *FKeepBottom = nullptr;
};

void TQyAxis::Calculate() { TQyAxisLayout(this).Run(); }

void TQyAxisLayout::Run() {
  if (!Begin()) return;
  if (FGraph && FGraph->InDrag()) { // a pan or a scroll-bar drag: the ticks move, nothing else
    for (TQyAxis* a : FAxes) a->CalculateTicks();
    Finish();
    return;
  }
  FirstRound();
  StartMargins();
  AxisBands();
  CommonMargins();
  FinalLengths();
  DataArea();
  Finish();
}

bool TQyAxisLayout::Begin() {
  FStarter->FFontSize = FStarter->FFont->GetSize();
  SetLayoutInProgress(FStarter->LayoutParent(), true);
  if (!FGraph) return true;
  if (FGraph->GetZeroOrigin()) {
    if (auto* x = FGraph->GetPrimaryXAxis()) x->FVisible = true, x->QWidget::setVisible(true);
    if (auto* y = FGraph->GetPrimaryYAxis()) y->FVisible = true, y->QWidget::setVisible(true);
  }
  // While the graph is updating the pass leaves at once; the flag stays until the next full pass.
  return !FGraph->Updating();
}

void TQyAxisLayout::FirstRound() {
  for (TQyAxis* a : FAxes) {
    a->UpdateDB();
    a->FFontSize = a->FFont->GetSize();
    a->ParseCaption();
    a->ApplyMaster();
    if (!a->FEndsRounded) {
      double start = a->FStart, stop = a->FStop;
      a->RoundEnds(start, stop);
      a->FStart = start, a->FStop = stop;
      a->FEndsRounded = true;
    }
    a->FOriginX = a->FOriginY = 0;
    a->FAxisLength = a->GetHorizontal() ? a->width() : a->height();
    a->CalculateTicks();
  }
}

void TQyAxisLayout::StartMargins() {
  if (!FGraph) return;
  FM.Left = CeilI(FGraph->GetDistanceBorderAxisLeft());
  FM.Right = CeilI(FGraph->GetDistanceBorderAxisRight());
  FM.Top = CeilI(FGraph->GetDistanceBorderAxisTop());
  FM.Bottom = CeilI(FGraph->GetDistanceBorderAxisBottom());
  TQyRichCaptionObject* title = FGraph->CaptionObject();
  if (FGraph->TitleShown())
    FM.Top = CeilI(FM.Top + title->Height() + FGraph->GetCaptionDistanceBefore() +
                  FGraph->GetCaptionDistanceAfter());
  FGraph->TakeLayoutMargins(FM); // the graph's other parts: legends on a side, scroll bars
}

// The thickness of the band an axis needs across its direction.
float TQyAxisLayout::Band(TQyAxis* a) {
  float s = a->GetDistanceToBorder() + a->FMajorTickLength + CeilI(a->FAxisThicknes / 2);
  const float labels = a->LabelExtentAcross();
  if (labels > 0) s += a->FDistanceAxisLabels + labels;
  const float caption = a->CaptionExtentAcross();
  if (caption > 0) s += caption + (labels > 0 ? a->GetDistanceNumbersCaption() : a->FDistanceAxisLabels);
  if (a->FExtraExponentOn) {
    const float t = a->FDistanceAxisExtraExponent + a->FMajorTickLength +
                    a->FExtraExponentCaption->Height() + a->FAxisThicknes;
    s = std::max(s, t);
  }
  return s;
}

// With the zero origin, the bottom and left axes take a margin only while the other primary axis
// starts at or above 0 (else they cross the data area).
bool TQyAxisLayout::TakesMargin(TQyAxis* a) const {
  if (!FGraph || !FGraph->GetZeroOrigin()) return true;
  TQyAxis* x = FGraph->GetPrimaryXAxis();
  TQyAxis* y = FGraph->GetPrimaryYAxis();
  if (a->FPosition == TQyAxisPosition::Bottom && y) return y->FStart >= 0;
  if (a->FPosition == TQyAxisPosition::Left && x) return x->FStart >= 0;
  return true;
}

void TQyAxisLayout::AxisBands() {
  for (int i = FAxes.size() - 1; i >= 0; --i) {
    TQyAxis* a = FAxes[i];
    if (!a->FAutoSize) continue;
    const float s = Band(a);
    const int band = CeilI(s);
    const bool horizontal = a->GetHorizontal();
    QRect geo = a->geometry();
    if (FGraph) geo = horizontal ? QRect(0, geo.y(), FWidth, band) : QRect(geo.x(), 0, band, FHeight);
    else geo.setSize(horizontal ? QSize(geo.width(), band) : QSize(band, geo.height()));
    if (FGraph && a->FVisible && TakesMargin(a)) {
      switch (a->FPosition) {
      case TQyAxisPosition::Bottom: FM.Bottom += band; geo.moveTop(FHeight - TruncI(FM.Bottom)); FKeepBottom = a; break;
      case TQyAxisPosition::Left: geo.moveLeft(TruncI(FM.Left)); FM.Left += band; FKeepLeft = a; break;
      case TQyAxisPosition::Top: geo.moveTop(TruncI(FM.Top)); FM.Top += band; FKeepTop = a; break;
      case TQyAxisPosition::Right: FM.Right += band; geo.moveLeft(FWidth - TruncI(FM.Right)); FKeepRight = a; break;
      }
    }
    a->setGeometry(geo);
    PlaceInControl(a, s);
  }
}

void TQyAxisLayout::PlaceInControl(TQyAxis* a, float s) {
  float atStart, atStop;
  Overhangs(a, atStart, atStop);
  const float half = CeilI(a->FAxisThicknes / 2);
  if (a->GetHorizontal()) {
    // Along x, the start end lies left unless twisted.
    const float left = a->FTwisted ? atStop : atStart, right = a->FTwisted ? atStart : atStop;
    a->FOriginX = left;
    SetLength(a, a->width() - right - left);
    if (a->FPosition == TQyAxisPosition::Bottom) {
      a->FOriginY = a->FTicksPointToData ? a->FMajorTickLength : half;
      if (a->FOriginY < 1) a->FOriginY = 0;
    } else {
      a->FOriginY = a->FTicksPointToData ? a->height() - a->FMajorTickLength : CeilI(a->height() - a->FAxisThicknes / 2);
    }
  } else {
    // Along y, the start end lies at the bottom unless twisted.
    const float top = a->FTwisted ? atStart : atStop, bottom = a->FTwisted ? atStop : atStart;
    a->FOriginY = top;
    SetLength(a, a->height() - bottom - top);
    if (a->FPosition == TQyAxisPosition::Left)
      a->FOriginX = a->FTicksPointToData ? a->width() - a->FMajorTickLength : CeilI(s - a->FAxisThicknes / 2);
    else
      a->FOriginX = a->FTicksPointToData ? a->FMajorTickLength : half;
  }
  a->CalculateTicks();
  a->FNeedsCalc = false;
}

void TQyAxisLayout::Overhangs(TQyAxis* a, float& atStart, float& atStop) const {
  atStart = atStop = 0;
  const bool horizontal = a->GetHorizontal();
  if (!a->FTickLabels.empty()) {
    // Half the extent of a label along the axis, less the distance of its anchor to the end.
    auto reach = [&](const TQyRichCaptionObject& l) {
      const float along = horizontal ? l.Width() * a->FCosAngle + l.Height() * a->FSinAngle
                                     : l.Height() * a->FCosAngle + l.Width() * a->FSinAngle;
      return along / 2;
    };
    const float startEnd = a->NumberToWorld(a->FStart), stopEnd = a->NumberToWorld(a->FStop);
    const auto& first = *a->FTickLabels.front();
    const auto& last = *a->FTickLabels.back();
    const float firstPos = horizontal ? first.X : first.Y, lastPos = horizontal ? last.X : last.Y;
    atStart = std::max(0.0f, reach(first) - std::fabs(firstPos - startEnd));
    atStop = std::max(0.0f, reach(last) - std::fabs(stopEnd - lastPos));
    if (horizontal) (a->FTwisted ? atStart : atStop) += 2; // the right end
  }
  if (!a->GetIsClipped()) {
    // Series ask for room for half a symbol: sides 0 bottom, 1 left, 2 top, 3 right.
    const int startSide = horizontal ? 1 : 0, stopSide = horizontal ? 3 : 2;
    for (IQyAxisSeries* s : a->Series()) {
      atStart = std::max(atStart, s->ExtraSpaceAt(startSide));
      atStop = std::max(atStop, s->ExtraSpaceAt(stopSide));
    }
  }
  // The arrow points the way the values grow: it always stands at the stop end (at the left or
  // bottom of a twisted axis).
  if (a->FArrowPoint->GetVisible()) atStop = std::max(atStop, 3 * a->FArrowPoint->GetPointLength());
  atStart = CeilI(atStart);
  atStop = CeilI(atStop);
}

void TQyAxisLayout::CommonMargins() {
  if (!FGraph) return;
  Margins over;
  for (TQyAxis* a : FAxes) {
    if (!a->FAutoSize) continue;
    float atStart, atStop;
    Overhangs(a, atStart, atStop);
    if (a->GetHorizontal()) {
      over.Left = std::max(over.Left, a->FTwisted ? atStop : atStart);
      over.Right = std::max(over.Right, a->FTwisted ? atStart : atStop);
    } else {
      over.Bottom = std::max(over.Bottom, a->FTwisted ? atStop : atStart);
      over.Top = std::max(over.Top, a->FTwisted ? atStart : atStop);
    }
  }
  if (FGraph->GetZeroOrigin()) {
    // An axis that crosses the other's zero keeps no side of the data area.
    auto crossesZero = [](TQyAxis* a) { return a && !a->FLogActive && a->FStart < 0 && a->FStop > 0; };
    if (crossesZero(FGraph->GetPrimaryXAxis())) FKeepLeft = FKeepRight = nullptr;
    if (crossesZero(FGraph->GetPrimaryYAxis())) FKeepTop = FKeepBottom = nullptr;
  }
  auto side = [](float& margin, float overhang, TQyAxis* keeper, float linePos) {
    if (!keeper) margin += overhang;
    else if (margin >= overhang) margin = CeilI(linePos + keeper->GetDistanceValuesAxis());
    else margin = overhang;
  };
  if (FKeepLeft) side(FM.Left, over.Left, FKeepLeft, FKeepLeft->x() + FKeepLeft->FOriginX); else FM.Left += over.Left;
  if (FKeepTop) side(FM.Top, over.Top, FKeepTop, FKeepTop->y() + FKeepTop->FOriginY); else FM.Top += over.Top;
  if (FKeepRight) side(FM.Right, over.Right, FKeepRight, FWidth - (FKeepRight->x() + FKeepRight->FOriginX));
  else FM.Right += over.Right;
  if (FKeepBottom) side(FM.Bottom, over.Bottom, FKeepBottom, FHeight - (FKeepBottom->y() + FKeepBottom->FOriginY));
  else FM.Bottom += over.Bottom;
}

void TQyAxisLayout::FinalLengths() {
  if (!FGraph) return;
  TQyAxis* x = FGraph->GetPrimaryXAxis();
  TQyAxis* y = FGraph->GetPrimaryYAxis();
  if (FGraph->GetZeroOrigin() && x && y) {
    ZeroOriginLengths(x, y);
    return;
  }
  for (TQyAxis* a : FAxes) {
    if (!a->FAutoSize) continue;
    if (a->GetHorizontal()) {
      a->FOriginX = FM.Left;
      FM.Right = std::max(FM.Right, float(CeilI(a->FMajorTickThicknes / 2)));
      SetLength(a, FWidth - FM.Left - FM.Right);
    } else {
      a->FOriginY = FM.Top;
      FM.Top = std::max(FM.Top, float(CeilI(a->FMajorTickThicknes / 2)));
      SetLength(a, FHeight - FM.Top - FM.Bottom);
    }
    a->CalculateTicks();
  }
}

namespace {
// Removes the tick and the label that stand within 0.1 pixel of `pixel` (the first of each).
void DropTickAt(TQySingleVector& ticks, TQyBooleanVector& major, TQyBooleanVector& grid,
                std::vector<std::unique_ptr<TQyRichCaptionObject>>& labels, float pixel, bool horizontal) {
  for (int i = 0; i < ticks.Count(); ++i)
    if (std::fabs(ticks[i] - pixel) < 0.1f) {
      ticks.Delete(i), major.Delete(i), grid.Delete(i);
      break;
    }
  for (size_t i = 0; i < labels.size(); ++i)
    if (std::fabs((horizontal ? labels[i]->X : labels[i]->Y) - pixel) < 0.1f) {
      labels.erase(labels.begin() + i);
      break;
    }
}
} // namespace

void TQyAxisLayout::ZeroOriginLengths(TQyAxis* x, TQyAxis* y) {
  x->FOriginX = FM.Left;
  SetLength(x, FWidth - FM.Left - FM.Right);
  x->CalculateTicks();
  y->FOriginY = FM.Top;
  SetLength(y, FHeight - FM.Top - FM.Bottom);
  y->CalculateTicks();
  auto crosses = [](TQyAxis* a) { return !a->FLogActive && a->FStart < 0 && a->FStop > 0; };
  const bool xCross = crosses(x), yCross = crosses(y);
  if (xCross) {
    y->move(RoundI(x->NumberToWorld(0) - y->FOriginX), y->y());
    DropTickAt(y->FTickPositions, y->FMajorFlags, y->FGridFlags, y->FTickLabels, y->NumberToWorld(0), false);
  } else if (!x->FTickLabels.empty()) {
    x->FTickLabels.erase(x->FTickLabels.begin());
  }
  if (yCross) {
    x->move(x->x(), RoundI(y->NumberToWorld(0) - x->FOriginY));
    DropTickAt(x->FTickPositions, x->FMajorFlags, x->FGridFlags, x->FTickLabels, x->NumberToWorld(0), true);
  } else if (!y->FTickLabels.empty()) {
    y->FTickLabels.erase(y->FTickLabels.begin());
  }
}

void TQyAxisLayout::DataArea() {
  if (!FGraph) return;
  const QRectF area(FM.Left, FM.Top, FWidth - FM.Left - FM.Right + 1, FHeight - FM.Top - FM.Bottom + 1);
  FGraph->SetDataArea(area);
  const QRectF placed = FGraph->CoupleDataArea(area);
  TQyRichCaptionObject* title = FGraph->CaptionObject();
  title->Y = FGraph->GetCaptionDistanceBefore();
  switch (FGraph->GetCaptionAlignment()) {
  case TAlignment::LeftJustify: title->X = FGraph->GetDistanceBorderAxisLeft(); title->Alignment = TQyContentAlignment::TopLeft; break;
  case TAlignment::RightJustify: title->X = FWidth - FGraph->GetDistanceBorderAxisRight(); title->Alignment = TQyContentAlignment::TopRight; break;
  case TAlignment::Center: title->X = FWidth / 2.0f; title->Alignment = TQyContentAlignment::TopCenter; break;
  }
  FGraph->DataAreaPlaced(placed); // the graph's other parts place themselves
}

// Coupled graphs: a horizontal axis spans the edges common to the graphs.
void TQyAxis::PlaceAlong(float origin, float length) {
  (GetHorizontal() ? FOriginX : FOriginY) = origin;
  TQyAxisLayout::SetLength(this, length);
  CalculateTicks();
}

void TQyAxisLayout::Finish() {
  for (TQyAxis* a : FAxes) a->FNeedsCalc = false;
  if (FGraph) FGraph->SeriesModified();
  SetLayoutInProgress(FStarter->LayoutParent(), false);
  for (TQyAxis* a : FAxes)
    if (a->OnCalculated) a->OnCalculated(a);
}

// ---- extents used by the pass -----------------------------------------------------------------

float TQyAxis::LabelExtentAcross() const {
  if (FTickLabels.empty()) return 0;
  // The maxima are extents of the rotated labels: height across a horizontal axis, width across
  // a vertical one.
  return GetHorizontal() ? FMaxLabelHeight : FMaxLabelWidth;
}

float TQyAxis::CaptionExtentAcross() const {
  if (!FCaptionVisible || FCaption.isEmpty()) return 0;
  const bool upright = !FCaptionHorizontalOnVerticalAxis; // vertical axes turn their caption
  if (GetHorizontal()) return FCaptionObject->Height();
  return upright ? FCaptionObject->Height() : FCaptionObject->Width();
}

// The caption's colour stands for the font's colour; runs with a colour of their own keep it.
void TQyAxis::ParseCaption() {
  FCaptionObject->FillColorOverride = FCaptionColor;
  FCaptionObject->ParseForSize(nullptr, this);
}
