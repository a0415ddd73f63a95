// The undo history: recording, groups, the limit, the index rules of undo and redo, and what
// happens to records of objects that are gone.
#include <gtest/gtest.h>
#include <QLineEdit>
#include "QyExpect.h"
#include <QyExceptions.h>
#include <QyStyles.h>
#include <QyUndoStack.h>
#include <QyVectors.h>
#include <memory>
#include <tuple>

namespace {

struct Fixture {
  TQyUndoStack stack;
  std::unique_ptr<TQyLineSettings> line = std::make_unique<TQyLineSettings>(nullptr);
  Fixture() { line->SetUndoStack(&stack); }
  // Width, colour and visibility of the line; the defaults are 1, red and visible.
  std::tuple<float, TQyColor, bool> State() const { return {line->GetWidth(), line->GetColor(), line->GetVisible()}; }
};
constexpr TQyColor Red = 0xFFFF0000u;

// One top-level change of the line width, to `w`.
void SetWidths(TQyLineSettings& line, std::initializer_list<float> widths) {
  for (float w : widths) line.SetWidth(w);
}

} // namespace

TEST(UndoStack, RecordUndoRedoAndEvents) {
  Fixture f;
  int undos = 0, redos = 0;
  f.stack.OnUndo = [&](QObject* sender) { EXPECT_EQ(sender, &f.stack); ++undos; };
  f.stack.OnRedo = [&](QObject*) { ++redos; };
  f.stack.Undo(0); // empty: nothing, no event
  f.stack.Redo(0);
  EXPECT_EQ(undos + redos, 0);

  f.line->SetWidth(3);
  f.line->SetColor(0xFF00FF00);
  ASSERT_EQ(f.stack.UndoCount(), 2);
  EXPECT_EQ(f.stack.UndoList().Strings(), (QStringList{"Line color", "Line width"}));

  f.stack.Undo(0);
  EXPECT_EQ(f.State(), std::tuple(3.0f, Red, true));
  EXPECT_EQ(f.stack.UndoCount(), 2) << "undo only moves the indices";
  EXPECT_EQ(f.stack.UndoList().Count(), 1);
  EXPECT_EQ(f.stack.RedoList().Strings(), QStringList{"Line color"});
  EXPECT_EQ(undos, 1);

  f.stack.Redo(0);
  EXPECT_EQ(f.line->GetColor(), 0xFF00FF00u);
  EXPECT_EQ(f.stack.UndoList().Count(), 2);
  EXPECT_FALSE(f.stack.CanRedo());
  EXPECT_EQ(redos, 1);

  f.stack.Undo(1); // both
  EXPECT_EQ(f.State(), std::tuple(1.0f, Red, true));
  EXPECT_FALSE(f.stack.CanUndo());
  EXPECT_EQ(f.stack.RedoList().Count(), 2);

  f.line->SetDashStyle(QyGDI::TDashStyle::DashStyleDot); // a new record empties the redo list
  EXPECT_FALSE(f.stack.CanRedo());
  EXPECT_EQ(f.stack.UndoList().Strings(), QStringList{"Line dash style"});

  f.stack.SetEnabled(false);
  f.line->SetWidth(7);
  EXPECT_EQ(f.stack.UndoList().Count(), 1) << "disabled records nothing";
  f.stack.Undo(0);
  EXPECT_EQ(f.line->GetDashStyle(), QyGDI::TDashStyle::DashStyleDot) << "disabled does not undo";
  f.stack.SetEnabled(true);

  f.stack.Clear();
  EXPECT_EQ(std::tuple(f.stack.CanUndo(), f.stack.CanRedo(), f.stack.UndoStreamSize()), std::tuple(false, false, 0));
}

TEST(UndoStack, LimitKeepsNewestEntriesAndBoundsTheLog) {
  Fixture f;
  for (int i = 1; i <= 20; ++i) f.line->SetWidth(float(i + 1));
  const qint64 sizeOf20 = f.stack.UndoStreamSize();
  for (int i = 21; i <= 25; ++i) f.line->SetWidth(float(i + 1));
  EXPECT_EQ(f.stack.UndoCount(), 20);
  // All records of this test have one size, so 20 entries take what 20 took before.
  EXPECT_EQ(f.stack.UndoStreamSize(), sizeOf20);
  // Positions were rebased: undoing everything reaches the width before the sixth change (6).
  f.stack.Undo(19);
  EXPECT_EQ(f.line->GetWidth(), 6.0f);
  f.stack.Redo(19);
  EXPECT_EQ(f.line->GetWidth(), 26.0f);

  // A group of five counts once against the limit.
  f.stack.SetLimit(2);
  f.line->SetWidth(1); // a push drops at most one entry: lowering the limit acts gradually
  EXPECT_EQ(f.stack.UndoCount(), 20);
  TQyUndoStack s2;
  s2.SetLimit(2);
  f.line->SetUndoStack(&s2);
  for (int k = 0; k < 3; ++k) {
    s2.StartGroup(QString("Group %1").arg(k));
    SetWidths(*f.line, {2, 3, 4, 5, 6});
    s2.StopGroup();
  }
  EXPECT_EQ(s2.UndoCount(), 2);
  EXPECT_EQ(s2.UndoList().Strings(), (QStringList{"Group 2", "Group 1"}));

  // Unlimited keeps everything.
  TQyUndoStack s3;
  s3.SetLimit(0);
  f.line->SetUndoStack(&s3);
  for (int i = 0; i < 50; ++i) f.line->SetWidth(float(100 + i));
  EXPECT_EQ(s3.UndoCount(), 50);
}

TEST(UndoStack, GroupsAreOneEntryAndReplayInOrder) {
  Fixture f;
  f.stack.StartGroup("Change of the whole line");
  f.line->SetWidth(2);
  f.line->SetColor(0xFF112233);
  f.stack.StartGroup("inner"); // nested: still the outer entry
  f.line->SetDashStyle(QyGDI::TDashStyle::DashStyleDash);
  f.line->SetVisible(false);
  f.stack.StopGroup();
  f.line->SetWidth(4); // the same property twice: undo must end at the first old value
  f.stack.StopGroup();
  ASSERT_EQ(f.stack.UndoCount(), 1);
  EXPECT_EQ(f.stack.UndoList().Strings(), QStringList{"Change of the whole line"});

  f.stack.Undo(0);
  EXPECT_EQ(f.State(), std::tuple(1.0f, Red, true));
  EXPECT_EQ(f.line->GetDashStyle(), QyGDI::TDashStyle::DashStyleSolid);
  EXPECT_EQ(f.stack.RedoList().Strings(), QStringList{"Change of the whole line"});

  f.stack.Redo(0);
  EXPECT_EQ(f.State(), std::tuple(4.0f, 0xFF112233u, false)) << "redo replays in the original order";
  EXPECT_EQ(f.stack.UndoList().Count(), 1);

  // Undo and redo again: the redo log holds the whole mirrored group every time.
  f.stack.Undo(0);
  f.stack.Redo(0);
  EXPECT_EQ(f.line->GetWidth(), 4.0f);
  EXPECT_EQ(f.line->GetDashStyle(), QyGDI::TDashStyle::DashStyleDash);
}

TEST(UndoStack, RedoCountsOfSingleStepsAndOfOneCall) {
  // Single steps stop writing redo records once the redo index passes the undo index.
  Fixture a;
  SetWidths(*a.line, {2, 3, 4, 5});
  for (int i = 0; i < 4; ++i) a.stack.Undo(0);
  EXPECT_EQ(a.stack.RedoList().Count(), 3);
  EXPECT_EQ(a.line->GetWidth(), 1.0f);
  a.stack.Redo(2);
  EXPECT_EQ(a.line->GetWidth(), 5.0f);

  Fixture b;
  SetWidths(*b.line, {2, 3, 4, 5});
  b.stack.Undo(3);
  EXPECT_EQ(b.stack.RedoList().Count(), 4);
  EXPECT_EQ(b.line->GetWidth(), 1.0f);
  b.stack.Redo(0);
  EXPECT_EQ(b.line->GetWidth(), 2.0f);
  b.stack.Redo(2);
  EXPECT_EQ(b.line->GetWidth(), 5.0f);
}

TEST(UndoStack, IndicesStaySafeAfterOddSequences) {
  // An index past the end, then a push: the tables are cut to nothing, not to a negative size.
  Fixture a;
  SetWidths(*a.line, {2, 3, 4, 5});
  a.stack.Undo(100);
  EXPECT_EQ(a.line->GetWidth(), 1.0f);
  EXPECT_FALSE(a.stack.CanUndo());
  a.line->SetColor(0xFF000001);
  EXPECT_EQ(a.stack.UndoCount(), 1);
  a.stack.Undo(0);
  EXPECT_EQ(a.State(), std::tuple(1.0f, Red, true));
  a.stack.Undo(-1); // nothing
  a.stack.Redo(-5);

  // Undo of a group, then a new record: the undone group's inner records must not come back.
  Fixture b;
  b.stack.StartGroup("G1");
  SetWidths(*b.line, {2, 3});
  b.stack.StopGroup();
  b.stack.StartGroup("G2");
  b.line->SetColor(0xFF000002);
  b.line->SetVisible(false);
  b.stack.StopGroup();
  b.stack.Undo(0);
  b.line->SetWidth(9);
  b.stack.Undo(0);
  EXPECT_EQ(b.State(), std::tuple(3.0f, Red, true));
  b.stack.Undo(0);
  EXPECT_EQ(b.line->GetWidth(), 1.0f);

  // Undo, redo, then a new record: the redone group stays whole and undoable.
  Fixture c;
  c.stack.StartGroup("G");
  c.line->SetWidth(2);
  c.line->SetColor(0xFF000003);
  c.stack.StopGroup();
  c.stack.Undo(0);
  c.stack.Redo(0);
  c.line->SetVisible(false);
  c.stack.Undo(1);
  EXPECT_EQ(c.State(), std::tuple(1.0f, Red, true));
}

TEST(UndoStack, ErrorTexts) {
  Fixture f;
  EXPECT_EQ(QyMessageOf<EFilerError>([&] { f.stack.PushProperty(f.line.get(), "x", "NoSuchProperty"); }),
            "Property: \"NoSuchProperty\" not found");
  EXPECT_EQ(f.stack.UndoCount(), 0) << "nothing is written";

  f.stack.StartGroup("G");
  f.stack.StopGroup();
  EXPECT_EQ(QyMessageOf<EOverflow>([&] { f.stack.StopGroup(); }), "Undo stack has too many StopGroup statements");
  f.line->SetWidth(5); // still top level: an entry of its own
  EXPECT_EQ(f.stack.UndoList()[0], "Line width");

  QObject unnamed;
  EXPECT_EQ(QyMessageOf<EStreamError>([&] { f.stack.PushFreeComponent(&unnamed, "New"); }),
            "Component does not have a name");
  EXPECT_THROW(f.stack.UndoList().Get(99), ERangeError);
}

TEST(UndoStack, RecordsOfObjectsThatAreGone) {
  TQyUndoStack stack;
  int undos = 0;
  stack.OnUndo = [&](QObject*) { ++undos; };
  auto line = std::make_unique<TQyLineSettings>(nullptr);
  line->SetUndoStack(&stack);
  line->SetWidth(4);
  line.reset();
  stack.Undo(0); // the sub-object's record resolves to nothing and is skipped
  EXPECT_EQ(undos, 1);
  EXPECT_FALSE(stack.CanUndo());

  // A component recorded for freeing whose name no longer resolves: its record does nothing.
  QWidget form;
  form.setObjectName("UndoForm1");
  auto* w = new TQyDoubleVector(&form);
  w->setObjectName("Vector2");
  stack.PushFreeComponent(w, "New vector");
  w->setObjectName("Renamed");
  stack.Undo(0);
  EXPECT_EQ(form.findChild<QObject*>("Renamed"), w);
}

TEST(UndoStack, VectorEditAndComponentStates) {
  TQyUndoStack stack;
  TQyDoubleVector v;
  v.AddRange(std::vector<double>{1, 2, 3});
  v.AddOutlier(1);
  stack.PushVectorState(&v, "Data");
  v.SetValues({7, 8});
  stack.Undo(0);
  auto values = [&v] { return std::vector<double>(v.Data(), v.Data() + v.Count()); };
  EXPECT_EQ(values(), (std::vector<double>{1, 2, 3}));
  EXPECT_TRUE(v.IsOutlier(1));
  stack.Redo(0);
  EXPECT_EQ(values(), (std::vector<double>{7, 8}));
  EXPECT_FALSE(v.HasOutliers());

  QLineEdit edit;
  edit.setText("abc");
  stack.PushEditState(&edit, edit.text(), 1, 2, "Typing");
  edit.setText("abcdef");
  edit.setCursorPosition(6);
  stack.Undo(0);
  EXPECT_EQ(edit.text(), "abc");
  EXPECT_EQ(edit.selectionStart(), 1);
  EXPECT_EQ(edit.selectedText(), "bc");
  stack.Redo(0);
  EXPECT_EQ(edit.text(), "abcdef");
  EXPECT_EQ(edit.cursorPosition(), 6);

  TQyAreaSettings area(nullptr);
  stack.PushComponent(&area, "Area");
  area.SetForeColor(0xFF010203);
  area.SetAreaStyle(TQyAreaStyle::Cross);
  area.GetGradient()->SetLinearAngle(45);
  stack.Undo(0);
  EXPECT_EQ(area.GetForeColor(), 0xFFD3D3D3u);
  EXPECT_EQ(area.GetAreaStyle(), TQyAreaStyle::Total);
  EXPECT_EQ(area.GetGradient()->GetLinearAngle(), 0.0f) << "nested settings are in the image";
  stack.Redo(0);
  EXPECT_EQ(area.GetAreaStyle(), TQyAreaStyle::Cross);
  EXPECT_EQ(area.GetGradient()->GetLinearAngle(), 45.0f);
}
