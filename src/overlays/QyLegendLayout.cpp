// The legend's layout: item captions, the common item height, and the grid of items in rows or
// columns, in whole pixels (rounding half to even), with the size it needs.
#include "QyCustomLegend.h"
#include "QyRounding.h"
#include <algorithm>

void TQyCustomLegend::NewList() {
  FItemCaptions.Clear();
  CollectItems();
  const int n = ItemCount();
  FItemRects.assign(size_t(std::max(0, n)), QRect(0, 0, RoundI(FItemWidth), 0));
  for (int i = 0; i < n; ++i) {
    TQyLegendItemCaptionEventArgs args{ItemCaption(i), i};
    if (OnGetLegendItemCaption) OnGetLegendItemCaption(ItemObject(i), args);
    auto caption = std::make_unique<TQyRichCaptionObject>();
    caption->Font()->Assign(*FFont);
    caption->Alignment = TQyContentAlignment::MiddleLeft;
    caption->SetCaption(args.Caption);
    // The legend is the dependant of the values its items show: it rebuilds when they change.
    caption->ParseForSize(nullptr, this);
    FItemCaptions.Add(std::move(caption));
  }
}

int TQyCustomLegend::LineHeight() const {
  TQyRichCaptionObject probe;
  probe.Font()->Assign(*FFont);
  probe.SetCaption(QStringLiteral("M"));
  probe.ParseForSize(nullptr, nullptr);
  return RoundI(probe.Height());
}

// The height of one item: ItemHeight, raised to a line of text and to every sample's need.
void TQyCustomLegend::CheckItemHeight() {
  FEffectiveItemHeight = FItemHeight;
  if (const int line = LineHeight(); line > FEffectiveItemHeight) FEffectiveItemHeight = line;
  for (int i = 0; i < ItemCount(); ++i)
    FEffectiveItemHeight = std::max<float>(FEffectiveItemHeight, ItemMinHeight(i));
}

int TQyCustomLegend::TextWidth(int i) const { return RoundI(FItemCaptions[i]->Width()); }

// An item's row: its text's height, at least the common item height.
int TQyCustomLegend::TextHeight(int i) const {
  return std::max(RoundI(FItemCaptions[i]->Height()), RoundI(FEffectiveItemHeight));
}

// The sample's box centred on its row of height h at (x, y); the text to its right, middle left.
void TQyCustomLegend::PlaceItem(int i, float x, float y, int h) {
  const float hi = FEffectiveItemHeight;
  QRect& r = FItemRects[size_t(i)];
  r = QRect(RoundI(x), RoundI(y + (h - hi) / 2), r.width(), RoundI(hi));
  TQyRichCaptionObject* text = FItemCaptions[i];
  text->X = x + RoundI(FItemWidth + FDistanceItemCaption);
  text->Y = y + h / 2.0f;
}

void TQyCustomLegend::ShiftItems(int from, int to, int dx) {
  for (int i = from; i < to; ++i) {
    FItemRects[size_t(i)].translate(dx, 0);
    FItemCaptions[i]->X += dx;
  }
}

void TQyCustomLegend::SetItemPositions() {
  const float d = FDistanceToBorder;
  float height = RoundI(d), width = RoundI(2 * d);
  const bool caption = FCaptionVisible && !FCaption.isEmpty();
  if (caption) {
    if (FCaptionObject->Height() <= 0) FCaptionObject->ParseForSize(nullptr, this);
    height += RoundI(FCaptionObject->Height() + FCaptionDistanceBefore + FCaptionDistanceAfter);
  }
  const int n = std::min<int>(ItemCount(), FItemCaptions.Count());
  if (n > 0) {
    if (FItemsOrder == TQyItemsOrder::ByRow) LayOutRows(int(height), width, height);
    else LayOutColumns(int(height), width, height);
  }
  height = RoundI(height + d);
  if (caption && width < 2 * d + FCaptionObject->Width()) {
    const float wider = 2 * d + FCaptionObject->Width() - width;
    if (FCaptionAlignment == TAlignment::RightJustify) ShiftItems(0, n, TruncI(wider));
    else if (FCaptionAlignment == TAlignment::Center) ShiftItems(0, n, TruncI(wider / 2));
    width = RoundI(2 * d + FCaptionObject->Width());
  }
  FNeededWidth = RoundI(width);
  FNeededHeight = RoundI(height);
  if (FAutoSize) {
    const bool shadow = ShadowEffective();
    const QSize size(std::clamp(FNeededWidth + (shadow ? 5 : 0), 0, QWIDGETSIZE_MAX),
                     std::clamp(FNeededHeight + (shadow ? 4 : 0), 0, QWIDGETSIZE_MAX));
    FSettingBounds = true;
    resize(size);
    FSettingBounds = false;
  }
  if (caption) {
    FCaptionObject->Y = d + FCaptionDistanceBefore;
    switch (FCaptionAlignment) {
    case TAlignment::LeftJustify: FCaptionObject->X = d; FCaptionObject->Alignment = TQyContentAlignment::TopLeft; break;
    case TAlignment::RightJustify: FCaptionObject->X = FNeededWidth - d; FCaptionObject->Alignment = TQyContentAlignment::TopRight; break;
    case TAlignment::Center: FCaptionObject->X = FNeededWidth / 2.0f; FCaptionObject->Alignment = TQyContentAlignment::TopCenter; break;
    }
  }
}

// Rows of `per` items each (Rows divides the count; as many items as rows gives one a row),
// every row centred in the width.
void TQyCustomLegend::LayOutRows(int top, float& width, float& height) {
  const float d = FDistanceToBorder, gap = FDistanceBetweenColumns;
  const int s = RoundI(FItemWidth + FDistanceItemCaption);
  const int n = std::min<int>(ItemCount(), FItemCaptions.Count());
  const int rows = std::max(1, FRows); // no rows at all would leave nothing to divide by
  const int per = n == rows ? 0 : n / rows;
  struct TRow { int first, end, width; };
  std::vector<TRow> done;
  float x = 0, y = top, r = 0;
  int c = 0, m = 0, first = 0;
  for (int i = 0; i < n; ++i) {
    const int w = TextWidth(i), h = TextHeight(i);
    ++c;
    m = std::max(m, h);
    PlaceItem(i, x, y, h);
    r += w + s + gap;
    if (width < r - gap + 2 * d) width = RoundI(r - gap + 2 * d);
    x = RoundI(r);
    if (i == n - 1 || c < per) continue;
    done.push_back({first, i + 1, RoundI(r - gap)});
    first = i + 1;
    r = x = 0, c = 0;
    y = RoundI(y + m + FDistanceBetweenLines);
    height = RoundI(height + m + FDistanceBetweenLines);
    m = 0;
  }
  done.push_back({first, n, RoundI(r - gap)});
  height += m;
  const int available = FAutoSize ? RoundI(width) : this->width();
  for (const TRow& row : done) ShiftItems(row.first, row.end, (available - row.width) / 2);
}

// Columns filled top down until each holds its share of the total height.
void TQyCustomLegend::LayOutColumns(int top, float& width, float& height) {
  const float gap = FDistanceBetweenColumns;
  const int s = RoundI(FItemWidth + FDistanceItemCaption);
  const int n = std::min<int>(ItemCount(), FItemCaptions.Count());
  double sum = 0;
  for (int i = 0; i < n; ++i) sum += TextHeight(i);
  const double target = sum / std::max(1, FColumns); // no columns at all: one column
  float x = RoundI(FDistanceToBorder), y = top;
  double t = 0;
  int m = 0;
  for (int i = 0; i < n; ++i) {
    const int w = TextWidth(i), h = TextHeight(i);
    t += h;
    m = std::max(m, w);
    PlaceItem(i, x, y, h);
    if (y + h > height) height = y + h;
    y = RoundI(y + h + FDistanceBetweenLines);
    if (t < target || i == n - 1) continue;
    t = 0;
    y = top;
    x = RoundI(x + m + gap + s);
    width = RoundI(width + m + gap + s);
    m = 0;
  }
  width = width + m + s;
}
