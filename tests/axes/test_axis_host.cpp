// The axes lay out in any host that implements IQyAxisHost; the host's other parts take margins
// after the title and learn the data area through the two hooks.
#include <QyAxis.h>
#include <QyGraphPart.h>
#include <QyRichLabel.h>
#include <QWidget>
#include <gtest/gtest.h>

namespace {
struct Host : QWidget, IQyAxisHost {
  TQyAxis* x = new TQyAxis(this);
  TQyAxis* y = new TQyAxis(this);
  std::unique_ptr<TQyRichCaptionObject> title = std::make_unique<TQyRichCaptionObject>();
  float extraLeft = 0;
  int marginCalls = 0, placedCalls = 0;
  TQyLayoutMargins seen;
  QRectF written, placed;

  Host() {
    resize(500, 400);
    y->SetPosition(TQyAxisPosition::Left);
    for (TQyAxis* a : {x, y}) {
      a->SetStartEnd(TQyAxisEnd::Fixed), a->SetStopEnd(TQyAxisEnd::Fixed);
      a->SetStartStop(0, 10);
    }
  }
  bool Updating() const override { return false; }
  bool Printing() const override { return false; }
  bool InDrag() const override { return false; }
  TQyUndoRecorder* GetUndoStack() const override { return nullptr; }
  TQyAxis* GetPrimaryXAxis() const override { return x; }
  TQyAxis* GetPrimaryYAxis() const override { return y; }
  bool GetZeroOrigin() const override { return false; }
  float GetDistanceBorderAxisLeft() const override { return 7; }
  float GetDistanceBorderAxisRight() const override { return 0; }
  float GetDistanceBorderAxisTop() const override { return 5; }
  float GetDistanceBorderAxisBottom() const override { return 0; }
  bool IsChildGraph() const override { return false; }
  QSize LayoutSize() const override { return size(); }
  TQyRichCaptionObject* CaptionObject() const override { return title.get(); }
  bool TitleShown() const override { return false; }
  float GetCaptionDistanceBefore() const override { return 0; }
  float GetCaptionDistanceAfter() const override { return 0; }
  TAlignment GetCaptionAlignment() const override { return TAlignment::Center; }
  void SeriesModified() override {}
  void ZoomReset() override {}
  void TestPrimaryAxis() override {}
  void SetDataArea(const QRectF& area) override { written = area; }
  void TakeLayoutMargins(TQyLayoutMargins& m) override {
    ++marginCalls;
    seen = m;
    m.Left += extraLeft;
  }
  void DataAreaPlaced(const QRectF& area) override {
    ++placedCalls;
    placed = area;
  }
};
} // namespace

TEST(AxisHost, HooksSeeTheStartMarginsAndTheDataAreaAndMarginsTakenThereMoveIt) {
  Host plain, legend;
  legend.extraLeft = 30;
  for (Host* h : {&plain, &legend}) {
    h->x->Calculate();
    EXPECT_EQ(h->marginCalls, 1);
    EXPECT_EQ(h->placedCalls, 1);
    // Before any axis the margins are the border distances (no title shown).
    EXPECT_EQ(std::tuple(h->seen.Left, h->seen.Top, h->seen.Right, h->seen.Bottom), std::tuple(7, 5, 0, 0));
    EXPECT_EQ(h->placed, h->written);
  }
  // A part that takes 30 pixels on the left shifts the left axis and the data area by as much.
  EXPECT_EQ(legend.written.left(), plain.written.left() + 30);
  EXPECT_EQ(legend.written.right(), plain.written.right());
  EXPECT_EQ(legend.y->x(), plain.y->x() + 30);
}
