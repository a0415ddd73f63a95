// The legend box on its own: settings and their undo entries, the grid of items in rows and
// columns (empty texts make every distance analytic), auto size against measured captions, and
// what the box paints. The items come from a source of the test's own, as any kind of legend
// may supply them.
#include "QyFakeRecorder.h"
#include "QyRecordingDevice.h"
#include <QyCustomLegend.h>
#include <QyUndoStack.h>
#include <QPainter>
#include <gtest/gtest.h>

namespace {
class TQyListLegend : public TQyCustomLegend {
public:
  using TQyCustomLegend::TQyCustomLegend;
  QStringList Captions;
  std::vector<int> MinHeights;
  int ItemCount() const override { return int(Captions.size()); }
  QString ItemCaption(int i) const override { return Captions[i]; }
  int ItemMinHeight(int i) const override { return i < int(MinHeights.size()) ? MinHeights[size_t(i)] : 0; }
  void DrawItem(int, const TQyLegendItemDrawArgs& a) override { a.Graphics->fillRect(a.Rect, Qt::red); }

protected:
  void CollectItems() override {}
};

struct Box {
  QWidget form;
  TQyListLegend* legend = new TQyListLegend(&form);
  explicit Box(int items = 3) {
    for (int i = 0; i < items; ++i) legend->Captions << QString();
    legend->SetItemHeight(30); // taller than a line of text: every row is 30 high
  }
};

TQyColor ColorNamed(const char* name) { return ColorToARGB(QString(name)); }
} // namespace

TEST(LegendBox, DefaultsAndUndoCaptions) {
  struct Row { const char* property; QVariant initial, changed; const char* caption; };
  const Row rows[] = {
      {"Caption", QString(), QString("Series"), "Legend caption"},
      {"CaptionAlignment", QVariant::fromValue(TAlignment::Center), QVariant::fromValue(TAlignment::LeftJustify), "Legend caption alignment"},
      {"CaptionColor", ColorNamed("ControlText"), 0xFF112233u, "Legend caption color"},
      {"CaptionDistanceAfter", 0.0f, 2.0f, "Legend distance below caption"},
      {"CaptionDistanceBefore", 0.0f, 2.0f, "Legend distance above caption"},
      {"CaptionVisible", false, true, "Legend caption visible"},
      {"BackColor", ColorNamed("Transparent"), 0xFFFFFFFFu, "Legend background color"},
      {"ForeColor", 0xFF000000u, 0xFF0000FFu, "Legend color of items text"},
      {"DropShadow", false, true, "Drop shadow below legend"},
      {"BorderLowered", false, true, "Legend border lowered drawing"},
      {"Rows", 1, 2, "Legend number of rows"},
      {"Columns", 1, 2, "Legend number of columns"},
      {"ItemHeight", 0.0f, 12.0f, "Legend items height"},
      {"ItemWidth", 80.0f, 40.0f, "Legend item width"},
      {"ItemsOrder", QVariant::fromValue(TQyItemsOrder::ByColumn), QVariant::fromValue(TQyItemsOrder::ByRow), "Legend items order by row/column"},
      {"DistanceItemCaption", 4.0f, 5.0f, "Distance between legend items and caption"},
      {"DistanceBetweenLines", 3.0f, 5.0f, "Distance between legend item lines"},
      {"DistanceBetweenColumns", 10.0f, 5.0f, "Distance between legend item columns"},
      {"DistanceToBorder", 8.0f, 5.0f, "Distance of legend items to border"},
      {"CornerRounding", 0.0f, 5.0f, "Legend border corner rounding radius"},
      {"Visible", true, false, "Legend visible"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.property);
    TQyListLegend legend;
    QyFakeRecorder rec;
    legend.SetUndoStack(&rec);
    QVariant initial = r.initial;
    ASSERT_TRUE(initial.convert(legend.property(r.property).metaType()));
    EXPECT_EQ(legend.property(r.property), initial);
    legend.setProperty(r.property, r.changed);
    ASSERT_FALSE(rec.Pushes.empty());
    // The first entry: the text colour brings the whole font along behind it.
    EXPECT_EQ(rec.Pushes.front().caption, r.caption);
    EXPECT_EQ(rec.Pushes.front().property, QByteArray(r.property));
  }
  Box box;
  EXPECT_TRUE(box.legend->GetAutoSize());
  EXPECT_EQ(box.legend->GetFont()->GetName(), "Arial");
  EXPECT_EQ(box.legend->GetFont()->GetSize(), 9.0f);
  EXPECT_EQ(box.legend->GetCaptionFont()->GetSize(), 11.0f);
  EXPECT_TRUE(box.legend->GetCaptionFont()->GetStyle().testFlag(TQyFontStyle::Bold));
  EXPECT_EQ(box.legend->GetFrame()->GetColor(), ColorNamed("WindowFrame"));
  EXPECT_FALSE(box.legend->GetBackgroundGradient()->GetVisible());
}

// The raised border records the drop shadow: undoing it restores the drop shadow, not itself.
TEST(LegendBox, RaisedBorderRecordsTheDropShadow) {
  Box box;
  TQyUndoStack stack;
  box.legend->SetUndoStack(&stack);
  box.legend->SetBorderRaised(true);
  box.legend->SetUndoStack(nullptr);
  box.legend->SetDropShadow(true);
  box.legend->SetUndoStack(&stack);
  stack.Undo(0);
  EXPECT_FALSE(box.legend->GetDropShadow());
  EXPECT_TRUE(box.legend->GetBorderRaised());
}

// Rows of 30 and empty texts: an item takes s = round(80 + 4) = 84 across, columns are 10 apart,
// lines 3, the border 8. Expected places follow from those numbers by hand.
TEST(LegendBox, ItemGridByRowAndByColumn) {
  struct Row {
    const char* name;
    TQyItemsOrder order;
    int rows, columns, items;
    std::vector<QPoint> places;
    QSize size;
  };
  const auto R = TQyItemsOrder::ByRow, C = TQyItemsOrder::ByColumn;
  const Row rows[] = {
      {"one row of three", R, 1, 1, 3, {{8, 8}, {102, 8}, {196, 8}}, {288, 46}},
      {"as many items as rows: one a row", R, 3, 1, 3, {{8, 8}, {8, 41}, {8, 74}}, {100, 112}},
      {"two rows of two", R, 2, 1, 4, {{8, 8}, {102, 8}, {8, 41}, {102, 41}}, {194, 79}},
      {"two rows of three items: per = 1", R, 2, 1, 3, {{8, 8}, {8, 41}, {8, 74}}, {100, 112}},
      {"no rows counts as one", R, 0, 1, 3, {{8, 8}, {102, 8}, {196, 8}}, {288, 46}},
      {"one column", C, 1, 1, 3, {{8, 8}, {8, 41}, {8, 74}}, {100, 112}},
      {"two columns fill the first to half the height", C, 1, 2, 3, {{8, 8}, {8, 41}, {102, 8}}, {194, 79}},
      {"more columns than items: one item each", C, 1, 5, 3, {{8, 8}, {102, 8}, {196, 8}}, {288, 46}},
      {"no columns counts as one", C, 1, 0, 3, {{8, 8}, {8, 41}, {8, 74}}, {100, 112}},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    Box box(r.items);
    box.legend->SetItemsOrder(r.order);
    box.legend->SetRows(r.rows);
    box.legend->SetColumns(r.columns);
    box.legend->PreparePaint();
    ASSERT_EQ(box.legend->ItemRects().size(), r.places.size());
    for (size_t i = 0; i < r.places.size(); ++i) {
      EXPECT_EQ(box.legend->ItemRects()[i], QRect(r.places[i], QSize(80, 30))) << "item " << i;
      EXPECT_FLOAT_EQ(box.legend->ItemCaptions()[int(i)]->X, r.places[i].x() + 84);
      EXPECT_FLOAT_EQ(box.legend->ItemCaptions()[int(i)]->Y, r.places[i].y() + 15);
    }
    EXPECT_EQ(box.legend->size(), r.size);
  }
}

// A sample that needs more than the items' height raises it for all, and centres in its row.
TEST(LegendBox, SamplesRaiseTheItemHeight) {
  Box box(2);
  box.legend->SetItemHeight(0);
  box.legend->MinHeights = {40, 0};
  box.legend->PreparePaint();
  EXPECT_EQ(box.legend->EffectiveItemHeight(), 40);
  EXPECT_EQ(box.legend->ItemRects()[1], QRect(8, 8 + 40 + 3, 80, 40));
}

// Texts measured as captions in the items' font set the width; a wider caption widens the box
// and moves the items by the difference (centre: half of it; left: not at all).
TEST(LegendBox, AutoSizeFollowsMeasuredCaptions) {
  auto measured = [](const QString& text, const TQyFont& font) {
    auto c = std::make_unique<TQyRichCaptionObject>();
    c->Font()->Assign(font);
    c->SetCaption(text);
    c->ParseForSize(nullptr, nullptr);
    return c;
  };
  Box box(0);
  box.legend->Captions = {"short", "a much longer text"};
  box.legend->PreparePaint();
  const int wide = int(std::nearbyint(measured("a much longer text", *box.legend->GetFont())->Width()));
  EXPECT_EQ(box.legend->width(), 8 + 84 + wide + 8);

  const QString title = "A caption far wider than every item of this legend";
  const float captionWidth = measured(title, *box.legend->GetCaptionFont())->Width();
  for (TAlignment a : {TAlignment::LeftJustify, TAlignment::Center, TAlignment::RightJustify}) {
    box.legend->SetCaption(title);
    box.legend->SetCaptionVisible(true);
    box.legend->SetCaptionAlignment(a);
    box.legend->PreparePaint();
    const int extra = int(16 + captionWidth) - (16 + 84 + wide);
    const int shift = a == TAlignment::LeftJustify ? 0 : a == TAlignment::Center ? extra / 2 : extra;
    EXPECT_EQ(box.legend->width(), int(std::nearbyint(16 + captionWidth)));
    EXPECT_EQ(box.legend->ItemRects()[0].x(), 8 + shift) << int(a);
  }
}

// The drop shadow takes room (5 right, 4 down) only on an opaque enough background or a gradient.
TEST(LegendBox, DropShadowTakesRoomWhereItShows) {
  struct Row { TQyColor back; bool gradient; QSize extra; };
  const Row rows[] = {{0x00FFFFFF, false, {0, 0}}, {0xC7FFFFFF, false, {0, 0}}, {0xC8FFFFFF, false, {5, 4}},
                      {0x00FFFFFF, true, {5, 4}}};
  for (const Row& r : rows) {
    Box box;
    box.legend->PreparePaint();
    const QSize plain = box.legend->size();
    box.legend->SetDropShadow(true);
    box.legend->SetBackColor(r.back);
    box.legend->GetBackgroundGradient()->SetVisible(r.gradient);
    box.legend->PreparePaint();
    EXPECT_EQ(box.legend->size(), plain + r.extra) << std::hex << r.back;
  }
}

// Frame at half its width inside, samples clipped to their boxes, texts after them.
TEST(LegendBox, PaintsFrameSamplesAndTexts) {
  Box box(2);
  box.legend->Captions = {"first", "second"};
  box.legend->GetFrame()->SetColor(0xFF0000FF);
  box.legend->GetFrame()->SetWidth(3);
  QyRecordingDevice dev;
  {
    QPainter p(&dev);
    box.legend->PaintGr(&p);
  }
  const auto frames = dev.WithPenColor(QColor(0, 0, 255));
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_EQ(frames[0]->rect, QRectF(1.5, 1.5, box.legend->width() - 4, box.legend->height() - 4));
  const auto samples = dev.Select([](const QyPrimitive& p) { return p.brush.color() == Qt::red; });
  ASSERT_EQ(samples.size(), 2u);
  for (size_t i = 0; i < 2; ++i) {
    EXPECT_TRUE(samples[i]->clipped);
    EXPECT_EQ(samples[i]->clip.boundingRect(), QRectF(box.legend->ItemRects()[i]));
  }
  EXPECT_EQ(dev.WithText("first").size(), 1u);
  EXPECT_EQ(dev.WithText("second").size(), 1u);
}
