// Every published property of the classes built so far records its change, goes through undo and
// redo, and tells its listeners; a picture comes back pixel for pixel.
#include <gtest/gtest.h>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QColor>
#include <QyExceptions.h>
#include <QyPointSeries.h>
#include <QyTestGraph.h>
#include <QyUndoStack.h>
#include <functional>
#include <set>

namespace {

// Published properties that record nothing, because their class gives them no undo caption.
// Matched against the end of the walked path; "X.*" matches everything below X.
const QStringList NoUndoCaption{
    "Graph.UndoStack",     // the link to the stack itself
    "Graph.SmoothingMode", // look only, "no undo record"
    "Graph.Zoom.BufferType", "Graph.Zoom.PanningCursor",
    "Font.RenderingHint",  // a font records itself whole, and the whole holds no rendering hint
    "Axis.RubricsField", "Axis.DataSource", // data binding
    "Axis.StartPadding", "Axis.StopPadding", "Axis.AutoSize",
    "Series.AutoUpdate", "Series.MergeLegendItemWith", "Series.DrawBandTo",
    "Series.RangeFromFunction",
    "Vector.*", // data vectors record their data whole (PushVectorState), not their settings
    // A stand-alone caption widget has no undo captions; only its font's gradient records.
    "Label.Angle", "Label.BackColor", "Label.Caption", "Label.TextAlign", "Label.AutoSize",
    "Label.ForeColor", "Label.Font.Name", "Label.Font.Size", "Label.Font.Style",
    "Label.Font.FillColor", "Label.Font.DrawEffects", "Label.Font.Color"};

bool HasNoUndoCaption(const QString& where) {
  return std::any_of(NoUndoCaption.begin(), NoUndoCaption.end(), [&](const QString& k) {
    if (k.endsWith(".*")) return where.contains(k.chopped(1));
    return where.endsWith(k);
  });
}

struct Walk {
  TQyUndoStack* stack = nullptr;
  QList<QObject*> pool; // candidates for reference properties
  int checked = 0;
  std::set<const QObject*> seen;

  // A value other than `v` for the property, or an invalid variant when there is none to try;
  // for a reference, the candidate after `skip` others.
  QVariant OtherValue(QObject* o, const QMetaProperty& p, const QVariant& v, int skip = 0) const {
    if (p.isEnumType() || p.isFlagType()) {
      const QMetaEnum e = p.enumerator();
      int raw = 0;
      std::memcpy(&raw, v.constData(), std::min<size_t>(sizeof raw, size_t(p.metaType().sizeOf())));
      int next = raw;
      if (p.isFlagType()) next = raw ^ e.value(std::min(skip, e.keyCount() - 1));
      else
        for (int i = 0; i < e.keyCount(); ++i)
          if (e.value(i) == raw) next = e.value((i + 1) % e.keyCount());
      return next == raw ? QVariant() : QVariant(p.metaType(), &next);
    }
    if (const QMetaObject* type = p.metaType().metaObject()) { // a reference: another object
      for (QObject* c : pool)
        if (c != o && c != v.value<QObject*>() && c->metaObject()->inherits(type) && skip-- == 0)
          return QVariant(p.metaType(), &c);
      return {};
    }
    switch (p.metaType().id()) {
    case QMetaType::Bool: return !v.toBool();
    case QMetaType::Int: return v.toInt() + 1;
    case QMetaType::UInt: return QVariant(v.toUInt() ^ 0x00102030u);
    case QMetaType::Float: return QVariant(v.toFloat() + 0.25f);
    case QMetaType::Double: return v.toDouble() + 0.25;
    case QMetaType::QString: return v.toString() + "x";
    case QMetaType::QStringList: return v.toStringList() << "x";
    case QMetaType::QColor: return QColor(10, 20, 30);
    default: return {};
    }
  }

  void Object(QObject* o, const QString& path) {
    if (!o || !seen.insert(o).second) return;
    const QMetaObject* mo = o->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < mo->propertyCount(); ++i) {
      const QMetaProperty p = mo->property(i);
      const QString where = path + '.' + p.name();
      const bool object = p.metaType().flags().testFlag(QMetaType::PointerToQObject);
      if (object && !p.isWritable()) Object(p.read(o).value<QObject*>(), where); // setting groups
      else if (p.isWritable() && p.enclosingMetaObject() != &QWidget::staticMetaObject)
        Property(o, p, where);
    }
  }

  // A refusal by exception leaves the value as it was.
  static void Write(QObject* o, const QMetaProperty& p, const QVariant& v) {
    try {
      p.write(o, v);
    } catch (const EQyException&) {
    }
  }

  void Property(QObject* o, const QMetaProperty& p, const QString& where) {
    SCOPED_TRACE(where.toStdString());
    const QVariant before = p.read(o);
    QVariant wanted = OtherValue(o, p, before);
    if (!wanted.isValid()) return;
    const int entries = stack->UndoList().Count();
    Write(o, p, wanted);
    // A setter may refuse a value (an axis takes no master of the other orientation; zooming and
    // panning refuse each other's keys): the next candidate is tried.
    for (int skip = 1; p.read(o) == before && (wanted = OtherValue(o, p, before, skip)).isValid(); ++skip)
      Write(o, p, wanted);
    const QVariant after = p.read(o);
    ASSERT_NE(after, before) << "the setter kept the old value";
    if (HasNoUndoCaption(where)) {
      EXPECT_EQ(stack->UndoList().Count(), entries) << "recorded without a caption";
      p.write(o, before);
      return;
    }
    // One entry, also for a setter with side effects on other properties (a group).
    ASSERT_EQ(stack->UndoList().Count(), entries + 1) << "not recorded as one entry";
    const QString caption = stack->UndoList()[0];
    EXPECT_FALSE(caption.isEmpty());
    stack->Undo(0);
    EXPECT_EQ(p.read(o), before);
    EXPECT_EQ(stack->RedoList()[0], caption);
    stack->Redo(0);
    EXPECT_EQ(p.read(o), after);
    EXPECT_EQ(stack->UndoList()[0], caption);
    stack->Undo(0); // the next property starts from the same world
    ++checked;
  }
};

} // namespace

TEST(UndoProperties, EveryPublishedPropertyRecordsUndoesAndRedoes) {
  QyTestGraph t;
  TQyLineSeries* line = t.AddSeries({1, 2, 3}, {3, 1, 2});
  auto* errors = new TQyPointWithErrorSeries(t.form.get());
  errors->SetYData(line->GetYData());
  errors->SetXAxis(t.X());
  errors->SetYAxis(t.Y());
  auto* label = new TQyRichLabel(t.form.get());
  auto* thirdAxis = new TQyAxis(t.graph);
  thirdAxis->SetPosition(TQyAxisPosition::Right);
  auto* topAxis = new TQyAxis(t.graph); // a master of the X axis' orientation
  topAxis->SetPosition(TQyAxisPosition::Top);
  auto* otherVector = new TQyDoubleVector(t.form.get());
  for (TQyAxis* a : {t.X(), t.Y(), thirdAxis}) a->SetAutoTickParts(false); // else parts are ignored
  TQyUndoStack stack;
  stack.SetLimit(0);
  t.graph->SetUndoStack(&stack); // the graph hands it to its axes and series
  label->SetUndoStack(&stack);
  TQyArrowSettings arrow(nullptr); // no owner yet: stands alone with a stack of its own
  arrow.SetUndoStack(&stack);
  TQyAxis* x = t.X();
  TQyAxis* y = t.Y();

  Walk walk;
  walk.stack = &stack;
  walk.pool = {thirdAxis, x, y, topAxis, otherVector, line->GetYData(), errors, line};
  for (auto [o, name] : std::initializer_list<std::pair<QObject*, const char*>>{
           {t.graph, "Graph"}, {x, "XAxis"}, {y, "YAxis"}, {thirdAxis, "RightAxis"}, {line, "Series"},
           {errors, "ErrorSeries"}, {otherVector, "Vector"}, {label, "Label"}, {&arrow, "Arrow"}})
    walk.Object(o, name);
  // Counted by hand from the tables: graph 15 + gradients 2 x 9 + frame and grids 5 x 13 + font 15
  // = 113; each axis 50 + fonts 2 x 15 + arrow 4 = 84; line series 9 + line 13 + area 13 = 35;
  // error series 35 + symbols 2 x 6 + indicator 13 + deltas 4 = 64; label font gradient 9;
  // arrow 16. So nothing the walk can write is left out.
  EXPECT_GE(walk.checked, 113 + 3 * 84 + 35 + 64 + 9 + 16);

  // Hiding an axis lets the graph correct its primary axes: one entry holds both changes.
  stack.SetEnabled(false);
  y->SetPosition(TQyAxisPosition::Bottom);
  stack.SetEnabled(true);
  const int entries = stack.UndoList().Count();
  y->SetVisible(false);
  EXPECT_EQ(y->GetPosition(), TQyAxisPosition::Left);
  EXPECT_EQ(stack.UndoList().Count(), entries + 1);
  stack.Undo(0);
  EXPECT_TRUE(y->GetVisible());
}

// One entry holds the whole font, so one Undo restores all of it, whatever was changed.
TEST(UndoProperties, FontRecordsItselfWhole) {
  QyTestGraph t;
  TQyUndoStack stack;
  t.graph->SetUndoStack(&stack);
  const struct { TQyFont* font; const char* caption; } fonts[] = {
      {t.graph->GetCaptionFont(), "Font of graph title"},
      {t.X()->GetCaptionFont(), "Font of axis caption"},
      {t.Y()->GetFont(), "Font of axis scaling numbers"}};
  for (const auto& f : fonts) {
    SCOPED_TRACE(f.caption);
    TQyFont before;
    before.Assign(*f.font);
    f.font->GetGradient()->SetMiddleColor(0xFF123456u); // through the nested group
    ASSERT_EQ(stack.UndoList().Count(), 1);
    EXPECT_EQ(stack.UndoList()[0], f.caption);
    stack.SetEnabled(false); // the rest changes unrecorded: the one entry must restore it all
    f.font->SetName("Courier");
    f.font->SetStyle(TQyFontStyle::Italic);
    f.font->SetSize(31);
    f.font->SetFillColor(0xFF00FF00u);
    f.font->SetDrawEffects(TQyCharDrawEffect::Outline);
    TQyGradientSettings* g = f.font->GetGradient();
    g->SetVisible(true), g->SetStyle(TQyGradientStyle::Radial), g->SetFirstColor(1), g->SetLastColor(2);
    g->SetLinearAngle(33), g->SetLinearCenter(0.1f), g->SetRadialCenterX(0.2f), g->SetRadialCenterY(0.3f);
    stack.SetEnabled(true);
    stack.Undo(0);
    for (auto [now, old] : {std::pair<QObject*, QObject*>{f.font, &before}, {g, before.GetGradient()}}) {
      const QMetaObject* mo = now->metaObject();
      for (int i = QObject::staticMetaObject.propertyCount(); i < mo->propertyCount(); ++i)
        if (mo->property(i).isWritable()) {
          EXPECT_EQ(mo->property(i).read(now), mo->property(i).read(old)) << mo->property(i).name();
        }
    }

    TQyFont other; // copying another font in is one entry as well
    other.GetGradient()->SetVisible(true);
    f.font->Assign(other);
    ASSERT_EQ(stack.UndoList().Count(), 1);
    stack.Undo(0);
    EXPECT_EQ(f.font->GetSize(), before.GetSize());
    EXPECT_FALSE(g->GetVisible());
    stack.Clear();
  }
}

// Several listeners follow one change, after it is stored; the library's own reactions leave the
// application's events alone.
TEST(UndoProperties, ChangeSignalReachesEveryListenerAndAppEventsSurvive) {
  QyTestGraph t;
  TQyAxis* x = t.X();
  QStringList heard1, heard2;
  QObject::connect(x, &TQyAxis::PropertyChanged, [&](const QString& name) {
    heard1 << name + "=" + QString::number(x->GetTickLength());
  });
  QObject::connect(x, &TQyAxis::PropertyChanged, [&](const QString& name) { heard2 << name; });
  x->SetTickLength(9);
  x->SetTickLength(9); // equal: nothing
  EXPECT_EQ(heard1, QStringList{"TickLength=9"});
  EXPECT_EQ(heard2, QStringList{"TickLength"});

  int appCalls = 0;
  for (TQyFont* font : {t.graph->GetCaptionFont(), x->GetFont(), x->GetCaptionFont()})
    font->OnChange = [&] { ++appCalls; };
  QStringList fontHeard;
  QObject::connect(t.graph->GetCaptionFont(), &TQyStyleObject::PropertyChanged,
                   [&](const QString& name) { fontHeard << name; });
  t.Render();
  ASSERT_FALSE(t.graph->NeedsCalculate());
  t.graph->GetCaptionFont()->SetSize(30);
  EXPECT_TRUE(t.graph->NeedsCalculate()) << "the graph still reacts to its title font";
  x->GetFont()->SetSize(5);
  x->GetCaptionFont()->GetGradient()->SetVisible(true);
  EXPECT_TRUE(x->NeedsCalc());
  EXPECT_EQ(appCalls, 3) << "the application's OnChange was replaced";
  EXPECT_EQ(fontHeard, QStringList{"Size"});
}

// A reference replays as the object itself, with the setter's side effects.
TEST(UndoProperties, ReferenceUndoPutsTheOldObjectBack) {
  QyTestGraph t;
  TQyLineSeries* s = t.AddSeries({1, 2, 3}, {3, 1, 2});
  auto* right = new TQyAxis(t.graph);
  right->SetPosition(TQyAxisPosition::Right);
  TQyUndoStack stack;
  t.graph->SetUndoStack(&stack);
  s->SetYAxis(right);
  ASSERT_EQ(stack.UndoList().Count(), 1);
  EXPECT_EQ(stack.UndoList()[0], "Series Y-axis reference");
  EXPECT_TRUE(right->Series().contains(s));
  EXPECT_FALSE(t.Y()->Series().contains(s));
  stack.Undo(0);
  EXPECT_EQ(s->GetYAxis(), t.Y());
  EXPECT_TRUE(t.Y()->Series().contains(s)) << "the old axis has the series again";
  EXPECT_FALSE(right->Series().contains(s));
  stack.Redo(0);
  EXPECT_EQ(s->GetYAxis(), right);
}

TEST(UndoProperties, PictureReturnsAfterChangeAndUndo) {
  QyTestGraph t;
  TQyLineSeries* s = t.AddSeries({0, 1, 2, 3}, {1, 3, 2, 4});
  QyTestGraph::Fix(t.X(), 0, 3);
  QyTestGraph::Fix(t.Y(), 0, 5);
  TQyUndoStack stack;
  t.graph->SetUndoStack(&stack);
  t.Render(); // the first paint of a process differs from the later ones (see the graph tests)
  const QImage original = t.Render();

  stack.StartGroup("Look");
  s->GetLine()->SetColor(0xFF0000FFu);
  s->GetLine()->SetWidth(4);
  t.graph->SetDataAreaColor(0xFFFFFFE0u);
  t.X()->SetStop(10);
  t.graph->SetDistanceBorderAxisLeft(30);
  t.X()->GetFont()->SetSize(20);
  stack.StopGroup();
  const QImage changed = t.Render();
  EXPECT_NE(changed, original);

  stack.Undo(0);
  EXPECT_EQ(t.Render(), original) << "the setters' flags came with the replay";
  stack.Redo(0);
  EXPECT_EQ(t.Render(), changed);

  // The series data as one entry of the graph.
  t.graph->UndoPushSeriesVectors();
  EXPECT_EQ(stack.UndoList()[0], "Graph series data");
  qobject_cast<TQyDoubleVector*>(s->GetYData())->SetValues({4, 0, 4, 0});
  qobject_cast<TQyDoubleVector*>(s->GetXData())->SetValues({0, 1});
  stack.Undo(0);
  for (TQyCustomDoubleVector* v : {s->GetXData(), s->GetYData()}) {
    ASSERT_EQ(v->Count(), 4);
    EXPECT_EQ(v == s->GetXData() ? (*v)[3] : (*v)[1], 3.0);
  }
}

// A change of an end mode is one entry holding the ends and the modes it touches.
TEST(UndoProperties, EndModesRecordTheEndsTheyChange) {
  QyTestGraph f;
  f.AddSeries({0, 10}, {0, 1});
  QyTestGraph::Fix(f.X(), 2, 8);
  f.Render();
  TQyUndoStack stack;
  f.graph->SetUndoStack(&stack);
  f.X()->SetStartEnd(TQyAxisEnd::AutoRange);
  f.X()->SetStopEnd(TQyAxisEnd::AutoRange);
  f.Render();
  ASSERT_EQ(stack.UndoList().Count(), 2);
  EXPECT_NE(f.X()->GetStop(), 8.0);
  stack.Undo(1);
  EXPECT_EQ(f.X()->GetStartEnd(), TQyAxisEnd::Fixed);
  EXPECT_EQ(f.X()->GetStopEnd(), TQyAxisEnd::Fixed);
  EXPECT_DOUBLE_EQ(f.X()->GetStart(), 2.0);
  EXPECT_DOUBLE_EQ(f.X()->GetStop(), 8.0);
  // A moving slit fixes the start end and turns zooming and its direction's scroll bar off; one
  // undo takes all of that back.
  f.X()->SetStartEnd(TQyAxisEnd::AutoRange);
  f.X()->SetStopEnd(TQyAxisEnd::MovingSlit);
  TQyZoomSettings* z = f.graph->GetZoom();
  EXPECT_EQ(std::tuple(f.X()->GetStartEnd(), z->GetAuto(), z->GetHScrollbarVisible(), z->GetVScrollbarVisible()),
            std::tuple(TQyAxisEnd::Fixed, false, false, true));
  stack.Undo(0);
  EXPECT_EQ(std::tuple(f.X()->GetStartEnd(), f.X()->GetStopEnd(), z->GetAuto(), z->GetHScrollbarVisible()),
            std::tuple(TQyAxisEnd::AutoRange, TQyAxisEnd::Fixed, true, true));
}

// Settings that move the ends record one entry with the ends: one undo brings the ends of the
// picture before the change back. Switching the automatic parts off is one entry too.
TEST(UndoProperties, SettingsThatMoveTheEndsRecordThemInTheirEntry) {
  using Change = std::function<void(TQyAxis*)>;
  const struct { const char* caption; Change change; bool moves; } cases[] = {
      {"Axis ends rounding mode", [](TQyAxis* x) { x->SetEndRounding(TQyAxisEndRounding::RndToMajor); }, true},
      {"Width of moving range scaling", [](TQyAxis* x) { x->SetMovingSlitWidth(4); }, true},
      {"Incement to move axis range", [](TQyAxis* x) { x->SetMovingSlitIncrement(1); }, true},
      {"Automatic tick partitions", [](TQyAxis* x) { x->SetAutoTickParts(false); }, false},
  };
  for (const auto& c : cases) {
    QyTestGraph f;
    f.AddSeries({0.3, 9.7}, {0, 1});
    TQyAxis* x = f.X();
    x->SetEndRounding(TQyAxisEndRounding::RndNothing);
    x->SetStopEnd(TQyAxisEnd::MovingSlit);
    x->SetStart(0.3), x->SetStop(5.5);
    f.Render();
    const double start = x->GetStart(), stop = x->GetStop(), part = x->GetLabelPart();
    TQyUndoStack stack;
    f.graph->SetUndoStack(&stack);
    c.change(x);
    f.Render();
    ASSERT_EQ(stack.UndoList().Count(), 1) << c.caption;
    EXPECT_EQ(stack.UndoList()[0], c.caption);
    EXPECT_EQ(x->GetStart() != start || x->GetStop() != stop, c.moves) << c.caption;
    stack.Undo(0);
    EXPECT_DOUBLE_EQ(x->GetStart(), start) << c.caption;
    EXPECT_DOUBLE_EQ(x->GetStop(), stop) << c.caption;
    if (!c.moves) {
      EXPECT_DOUBLE_EQ(x->GetLabelPart(), part) << c.caption;
    }
    EXPECT_TRUE(x->GetAutoTickParts()) << c.caption;
  }
}
