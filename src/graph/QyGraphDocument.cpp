// The document of a graph: its record (vectors, axes, series, legends and markers as child lists,
// then its own settings and the chained blocks) and the reading of a whole document, which either
// completes or leaves the graph as it was.
#include "QyClassRegistry.h"
#include "QyExceptions.h"
#include "QyGraph2D.h"
#include "QyIO.h"
#include "QyIniFile.h"
#include "QyLocalize.h"
#include "QyRecordMedia.h"
#include "QyVectors.h"
#include <QBuffer>
#include <QDomElement>
#include <QFile>

namespace {
using T = TQyFieldType;
using TKind = TQyRecordMedium::TKind;
constexpr quint8 TextMedia = QyMedia::Node | QyMedia::Ini;

TQyGraph2D* Graph(QObject* o) { return static_cast<TQyGraph2D*>(o); }
const TQyGraph2D* Graph(const QObject* o) { return static_cast<const TQyGraph2D*>(o); }

[[noreturn]] void ReadError() { throw EReadError(QyText(QyRes::StreamReadError)); }

// Class identity by name: the kinds of children stand in layers above the graph.
bool Inherits(const QMetaObject* meta, const char* base) {
  for (; meta; meta = meta->superClass())
    if (qstrcmp(meta->className(), base) == 0) return true;
  return false;
}

bool Named(const QObject* o) {
  return o && !o->objectName().isEmpty() && QyHasRecord(o->metaObject()) && !QyIsSubComponent(o);
}

// Where the graph's series, vectors and legends live: the graph's owner.
QObject* OwnerOf(const TQyGraph2D* g) { return g->parent() ? g->parent() : const_cast<TQyGraph2D*>(g); }

// ---- the child lists

struct TChildList {
  const char* Key;
  const char* Base;     // every child inherits it
  const char* Default;  // the class when the document names none (nullptr: it must)
  bool TypeFirst;       // the stream record starts with the class name
  bool OnGraph;         // made on the graph (else on its owner)
  QList<QObject*> (*Of)(const TQyGraph2D*);
  // The class of a stream record that names none (nullptr: it must name one); `last`: no record
  // of the list follows.
  QString (*Infer)(TQyGraph2D*, TQyDocumentMedium&, bool last) = nullptr;
};

// The vectors of the series' data, then any further vector a named series refers to (the deltas
// of error bars, weights): without those a document read elsewhere would lose their values.
QList<QObject*> VectorsOf(const TQyGraph2D* g) {
  QList<QObject*> out;
  for (TQyCustomDoubleVector* v : g->GetVectorsList())
    if (Named(v)) out << v;
  for (TQySeries* s : g->RelatedSeries()) {
    if (s->objectName().isEmpty()) continue;
    const QMetaObject* meta = s->metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
      auto* v = qobject_cast<TQyDoubleVector*>(meta->property(i).read(s).value<QObject*>());
      if (Named(v) && !out.contains(v)) out << v;
    }
  }
  return out;
}

QList<QObject*> ChildrenOf(const TQyGraph2D* g, const char* base) {
  QList<QObject*> out;
  for (QObject* c : g->children())
    if (Inherits(c->metaObject(), base) && Named(c)) out << c;
  return out;
}

QList<QObject*> AxesOf(const TQyGraph2D* g) { return ChildrenOf(g, "TQyAxis"); }
QList<QObject*> MarkersOf(const TQyGraph2D* g) { return ChildrenOf(g, "TQyMovable"); }

QList<QObject*> SeriesOf(const TQyGraph2D* g) {
  QList<QObject*> out;
  for (TQySeries* s : g->RelatedSeries())
    if (Named(s)) out << s;
  return out;
}

// The legends that name this graph, wherever they stand in its window.
QList<QObject*> LegendsOf(const TQyGraph2D* g) {
  QList<QObject*> out;
  for (QObject* o : g->window()->findChildren<QObject*>())
    if (Inherits(o->metaObject(), "TQyLegend") && Named(o) && o->property("Graph").value<QObject*>() == g) out << o;
  return out;
}

const TChildList Axes{"Axes", "TQyAxis", "TQyAxis", false, true, AxesOf};
const TChildList Series{"RelatedSeries", "TQySeries", nullptr, true, false, SeriesOf};
const TChildList Legends{"RelatedLegends", "TQyLegend", "TQyLegend", false, true, LegendsOf};
QString InferMarker(TQyGraph2D* g, TQyDocumentMedium& m, bool last);
const TChildList Markers{"Markers", "TQyMovable", nullptr, false, true, MarkersOf, InferMarker};
const TChildList Vectors{"Vectors", "TQyCustomDoubleVector", "TQyDoubleVector", false, false, VectorsOf};

bool HasIniEntry(const QObject* o, const QString& key) {
  for (const TQyRecordEntry* e : QyRecordOf(o->metaObject()))
    if (e->Key == key && (e->Media & QyMedia::Ini)) return true;
  return false;
}

void WriteChildren(const QObject* o, TQyRecordMedium& medium, const TChildList& list) {
  auto& m = dynamic_cast<TQyDocumentMedium&>(medium);
  const QList<QObject*> children = list.Of(Graph(o));
  m.BeginChildren(list.Key, int(children.size()));
  for (int i = 0; i < children.size(); ++i) {
    QString className = children[i]->metaObject()->className();
    m.EnterChild(i, className);
    // An INI section is named by its place in the list: the child's name and class go with it.
    if (m.Kind() == TKind::Ini && !HasIniEntry(children[i], "Name"))
      m.Write("Name", T::String, children[i]->objectName());
    if (m.Kind() == TKind::Ini && !list.Default && !HasIniEntry(children[i], "Type"))
      m.Write("Type", T::String, className);
    QyWriteRecord(children[i], m);
    m.Leave();
  }
  m.Leave();
}

// The class and name of the child record at hand, without consuming it.
std::pair<QString, QString> Identity(TQyDocumentMedium& m, const TChildList& list, QString className) {
  if (m.Kind() != TKind::Stream) {
    const QString type = m.Read("Type", T::String, QString()).toString();
    if (!type.isEmpty() && (m.Kind() == TKind::Ini || !QyFindClass(className))) className = type;
    return {className, m.Read("Name", T::String, QString()).toString()};
  }
  QIODevice* d = static_cast<TQyStreamMedium&>(m).Device();
  d->startTransaction();
  try {
    if (list.TypeFirst) className = StringFromStream(d);
    const QString name = ComponentName(StringFromStream(d));
    d->rollbackTransaction();
    return {className, name};
  } catch (...) {
    d->rollbackTransaction();
    throw;
  }
}

// The child of that name, or a new one of the named class (under another name when the name is
// taken by a component of another kind).
QObject* FindOrMake(TQyGraph2D* g, TQyDocumentMedium& m, const TChildList& list, QString className, const QString& name) {
  QObject* owner = list.OnGraph ? g : OwnerOf(g);
  QObject* found = name.isEmpty() ? nullptr : FindComponent(owner, name);
  if (found && Inherits(found->metaObject(), list.Base)) return found;
  if (className.isEmpty() && list.Default) className = list.Default;
  const QMetaObject* meta = QyFindClass(className);
  if (!meta || !Inherits(meta, list.Base)) ReadError();
  QObject* made = QyCreateComponent(className, owner);
  if (!made) ReadError();
  m.Made(made);
  made->setObjectName(name.isEmpty() || found ? UniqueName(owner, name.isEmpty() ? className.mid(3) : name) : name);
  if (auto* w = qobject_cast<QWidget*>(made)) w->show();
  return made;
}

void ReadChildren(QObject* o, TQyRecordMedium& medium, const TChildList& list) {
  auto& m = dynamic_cast<TQyDocumentMedium&>(medium);
  const int n = m.BeginChildren(list.Key, 0);
  for (int i = 0; i < n; ++i) {
    QString className;
    m.EnterChild(i, className);
    auto [type, name] = Identity(m, list, className);
    if (type.isEmpty() && list.Infer && m.Kind() == TKind::Stream && !FindComponent(Graph(o), name))
      type = list.Infer(Graph(o), m, i == n - 1);
    QObject* child = FindOrMake(Graph(o), m, list, type, name);
    QyReadRecord(child, m);
    // The document's order is the stacking order: once all are bound, the children stand so.
    if (auto* w = qobject_cast<QWidget*>(child)) m.Defer(w, [w] { w->raise(); });
    m.Leave();
  }
  m.Leave();
}

// ---- the kind of a marker in a stream

// A marker's stream record names no class, and the kinds of marker differ only in the part that
// places them. A marker that is not on the graph is made of the kind whose record reads the bytes
// cleanly: every value in range, its axes axes of the graph across the right direction, and
// after it the next marker's reference under the same owner, or the graph's `Visible` byte.
bool AxesFit(const TQyGraph2D* g, const std::vector<std::pair<QString, QString>>& references) {
  for (const auto& [key, ref] : references) {
    if ((key != "XAxis" && key != "YAxis") || ref.isEmpty()) continue;
    const auto* axis = qobject_cast<const TQyAxis*>(FindComponent(g, ComponentName(ref)));
    if (!axis || axis->GetHorizontal() != (key == "XAxis")) return false;
  }
  return true;
}

bool FollowedWell(QIODevice* d, const QString& ownerPath, bool last) {
  if (!last) return OwnerName(StringFromStream(d)) == ownerPath;
  char visible = 2;
  return d->read(&visible, 1) == 1 && (visible == 0 || visible == 1);
}

bool ReadsAs(TQyGraph2D* g, TQyDocumentMedium& m, const QString& className, const QString& ownerPath, bool last) {
  QIODevice* d = static_cast<TQyStreamMedium&>(m).Device();
  std::vector<std::pair<QString, QString>> references;
  std::unique_ptr<QObject> trial(QyCreateComponent(className, g));
  d->startTransaction();
  m.ReferencesRead = &references;
  bool fits = false;
  try {
    QyReadRecord(trial.get(), m);
    fits = AxesFit(g, references) && FollowedWell(d, ownerPath, last);
  } catch (const std::exception&) {
  }
  m.ReferencesRead = nullptr;
  d->rollbackTransaction();
  return fits;
}

QString InferMarker(TQyGraph2D* g, TQyDocumentMedium& m, bool last) {
  QIODevice* d = static_cast<TQyStreamMedium&>(m).Device();
  d->startTransaction();
  QString ownerPath;
  try {
    ownerPath = OwnerName(StringFromStream(d));
  } catch (...) {
  }
  d->rollbackTransaction();
  QStringList kinds = QyRegisteredClasses();
  kinds.sort();
  for (const QString& kind : kinds)
    if (const QMetaObject* meta = QyFindClass(kind); Inherits(meta, Markers.Base) && ReadsAs(g, m, kind, ownerPath, last))
      return kind;
  return {}; // none fits: the read fails
}

TQyRecordEntry Children(const TChildList& list) {
  return QyCustomField(list.Key, [&list](const QObject* o, TQyRecordMedium& m) { WriteChildren(o, m, list); },
                       [&list](QObject* o, TQyRecordMedium& m) { ReadChildren(o, m, list); });
}

// Vectors: in a stream behind the byte WithVectors; in XML and INI an empty list without them.
// The records after them (captions of bars) hold their own data only with the vectors.
void WriteVectors(const QObject* o, TQyRecordMedium& m) {
  const bool with = Graph(o)->WithVectors();
  dynamic_cast<TQyDocumentMedium&>(m).WithData = with;
  if (m.Kind() == TKind::Stream) m.Write("WithVectors", T::Bool, with);
  if (m.Kind() == TKind::Stream && !with) return;
  if (with) return WriteChildren(o, m, Vectors);
  dynamic_cast<TQyDocumentMedium&>(m).BeginChildren(Vectors.Key, 0);
  dynamic_cast<TQyDocumentMedium&>(m).Leave();
}

void ReadVectors(QObject* o, TQyRecordMedium& m) {
  if (m.Kind() == TKind::Stream) {
    const bool with = m.Read("WithVectors", T::Bool, false).toBool();
    dynamic_cast<TQyDocumentMedium&>(m).WithData = with;
    if (!with) return;
  }
  ReadChildren(o, m, Vectors);
}

// ---- the graph's own settings

TQyRecordEntry Props(const QString& key, T type, const char* property) {
  return QyField(key, type, property).At("Properties");
}

// Framework settings without a counterpart here, written as a form of the framework keeps them
// (anchored left and top, not aligned, no border) and read past.
TQyRecordEntry Constant(const QString& key, int value) {
  return QyField(key, T::Enum, [value](const QObject*) { return QVariant(value); }).At("Properties");
}

// Shown unless hidden on purpose; a window is never shown by a document.
TQyRecordEntry Visible() {
  return QyField("Visible", T::Bool,
                 [](const QObject* o) {
                   const auto* w = Graph(o);
                   return QVariant(!(w->testAttribute(Qt::WA_WState_ExplicitShowHide) && w->isHidden()));
                 },
                 [](QObject* o, const QVariant& v) {
                   auto* w = Graph(o);
                   if (!v.toBool()) w->hide();
                   else if (w->parentWidget() && w->isHidden()) w->show();
                 })
      .At("Properties");
}

TQyRecordEntry Geometry(const QString& key, QRect (*put)(QRect, int), int (QWidget::*get)() const) {
  return QyField(key, T::Int32, [get](const QObject* o) { return QVariant((Graph(o)->*get)()); },
                 [put](QObject* o, const QVariant& v) {
                   // A window larger than any screen is no document's business.
                   Graph(o)->setGeometry(put(Graph(o)->geometry(), std::clamp(v.toInt(), -100000, 100000)));
                 })
      .At("Properties");
}

QRect PutTop(QRect r, int v) { r.moveTop(v); return r; }
QRect PutLeft(QRect r, int v) { r.moveLeft(v); return r; }
QRect PutWidth(QRect r, int v) { r.setWidth(std::max(v, 0)); return r; }
QRect PutHeight(QRect r, int v) { r.setHeight(std::max(v, 0)); return r; }

TQyRecordEntry Caption(const QString& key, T type, const char* property) {
  return QyField(key, type, property).At("Caption/Properties").Ini("Caption." + key);
}

// A setting of the zoom object, in XML element "Zoom", in INI under "Zoom.".
TQyRecordEntry Zoom(const QString& key, T type) {
  const QByteArray property = key.toLatin1();
  return QyField(key, type,
                 [property](const QObject* o) {
                   return QyGetField(Graph(o)->GetZoom(), QyField({}, T::Int32, property.constData()));
                 },
                 [property, type](QObject* o, const QVariant& v) {
                   QObject* zoom = Graph(o)->GetZoom();
                   if (type == T::Enum) QyCheckEnumValue(zoom, property.constData(), v);
                   QySetField(zoom, QyField({}, T::Int32, property.constData()), v);
                 })
      .At("Zoom")
      .Ini("Zoom." + key);
}

// A shift state: two bytes in a stream, an integer in XML and INI.
TQyRecordEntry ShiftKeys(const char* property) {
  const QString key = property;
  return QyCustomField(
             key,
             [property, key](const QObject* o, TQyRecordMedium& m) {
               const uint keys = QyGetField(Graph(o)->GetZoom(), QyField({}, T::Int32, property)).toUInt();
               if (m.Kind() != TKind::Stream) return m.Write(m.Kind() == TKind::Ini ? "Zoom." + key : key, T::Int32, keys);
               m.Write(key, T::Enum, keys & 0xFF);
               m.Write(key, T::Enum, keys >> 8);
             },
             [property, key](QObject* o, TQyRecordMedium& m) {
               QVariant keys;
               if (m.Kind() != TKind::Stream) {
                 keys = m.Read(m.Kind() == TKind::Ini ? "Zoom." + key : key, T::Int32, {});
               } else {
                 const uint low = m.Read(key, T::Enum, {}).toUInt();
                 keys = low | m.Read(key, T::Enum, {}).toUInt() << 8;
               }
               if (keys.isValid()) QySetField(Graph(o)->GetZoom(), QyField({}, T::Int32, property), keys.toUInt() & 0x7FF);
             })
      .At("Zoom");
}

TQyRecordEntry Grid(const char* property) { return QyField(property, T::Object, property).At("Grid"); }

QY_REGISTER_RECORD(TQyGraph2D, {
    QyField("Name", T::Name, "objectName"),
    QyCustomField("Vectors", WriteVectors, ReadVectors),
    Children(Axes),
    Children(Series),
    Children(Legends),
    Children(Markers),
    Visible(),
    Constant("Anchors", 3),
    Constant("Align", 0),
    Geometry("Top", PutTop, &QWidget::y),
    Geometry("Left", PutLeft, &QWidget::x),
    Geometry("Width", PutWidth, &QWidget::width),
    Geometry("Height", PutHeight, &QWidget::height),
    Constant("BorderStyle", 0),
    Props("Hint", T::String, "toolTip"),
    QyParentShowHintField(),
    QyShowHintField(),
    Props("BackColor", T::Color, "BackColor"),
    Props("DataAreaColor", T::Color, "DataAreaColor"),
    Props("ZeroOrigin", T::Bool, "ZeroOrigin"),
    Props("PrimaryXAxis", T::Reference, "PrimaryXAxis"),
    Props("PrimaryYAxis", T::Reference, "PrimaryYAxis"),
    Props("DistanceBorderAxisTop", T::Single, "DistanceBorderAxisTop"),
    Props("DistanceBorderAxisBottom", T::Single, "DistanceBorderAxisBottom"),
    Props("DistanceBorderAxisLeft", T::Single, "DistanceBorderAxisLeft"),
    Props("DistanceBorderAxisRight", T::Single, "DistanceBorderAxisRight"),
    QyField("Text", T::String, "Caption").At("Caption").Ini("Caption"),
    Caption("Visible", T::Bool, "CaptionVisible").Only(TextMedia), // a later block of the stream
    Caption("Alignment", T::Enum, "CaptionAlignment"),
    Caption("Color", T::Color, "CaptionColor"),
    Caption("DistanceBefore", T::Single, "CaptionDistanceBefore"),
    Caption("DistanceAfter", T::Single, "CaptionDistanceAfter"),
    Caption("Font", T::Object, "CaptionFont"),
    Zoom("Auto", T::Bool),
    Zoom("BufferType", T::Enum).Only(TextMedia),
    Zoom("OptimizeSeries", T::Bool),
    Zoom("BackOnClickBeside", T::Bool),
    Zoom("BackOnRightBottomLeftTopFrame", T::Bool).Only(TextMedia),
    Zoom("ResetOnDoubleClickBeside", T::Bool),
    Zoom("ResetOnRightBottomLeftTopFrame", T::Bool),
    Zoom("HScrollbarVisible", T::Bool),
    Zoom("VScrollbarVisible", T::Bool),
    ShiftKeys("StartZoom"),
    ShiftKeys("StartPanning"),
    Grid("MajorGridHorizontal"),
    Grid("MajorGridVertical"),
    Grid("MinorGridHorizontal"),
    Grid("MinorGridVertical"),
    QyField("BackgroundGradient", T::Object, "BackgroundGradient").InBlock(1),
    QyField("DataAreaGradient", T::Object, "DataAreaGradient").InBlock(1),
    Zoom("BufferType", T::Enum).Only(QyMedia::Stream).InBlock(2),
    QyField("CaptionVisible", T::Bool, "CaptionVisible").Only(QyMedia::Stream).InBlock(3),
    QyField("DataAreaFrame", T::Object, "DataAreaFrame").InBlock(4),
    Zoom("BackOnRightBottomLeftTopFrame", T::Bool).Only(QyMedia::Stream).InBlock(5),
});

// Every undo stack in the graph's window: a read changes parts, series and vectors, which may each
// record on a stack of their own.
std::vector<QPointer<TQyUndoRecorder>> StacksAround(TQyCustomGraph* g) {
  std::vector<QPointer<TQyUndoRecorder>> out;
  const auto add = [&out](TQyUndoRecorder* r) {
    if (r && std::find(out.begin(), out.end(), r) == out.end()) out.emplace_back(r);
  };
  add(g->GetUndoStack());
  for (QObject* o : g->window()->findChildren<QObject*>())
    if (auto* r = dynamic_cast<TQyRecording*>(o)) add(r->UndoRecorder());
  return out;
}
} // namespace

// ---- writing

void TQyCustomGraph::WriteTo(QIODevice* stream, bool withVectors) {
  FWithVectors = withVectors;
  QyWriteToStream(this, stream);
}

void TQyCustomGraph::WriteTo(QDomElement& node) { QyWriteToNode(this, node); }

void TQyCustomGraph::WriteTo(TQyIniFile& ini, const QString& section) { QyWriteToIni(this, ini, section); }

void TQyCustomGraph::WriteTo(const QString& fileName, bool withVectors) {
  QFile file(fileName);
  if (!file.open(QIODevice::WriteOnly))
    throw EStreamError(QyFormatMessage(QyRes::FileCreateError, {fileName, file.errorString()}));
  WriteTo(&file, withVectors);
}

// ---- reading

// A document is untrusted: a read that fails removes the children it made and reads back the
// graph's own document written before, so nothing is left half-read. The undo stack records
// nothing meanwhile: reading is no edit, and children it makes join the stack as usual.
void TQyCustomGraph::ReadDocument(TQyDocumentMedium& medium) {
  QByteArray snapshot;
  QBuffer b(&snapshot);
  b.open(QIODevice::WriteOnly);
  const bool with = FWithVectors;
  WriteTo(&b, true);
  FWithVectors = with;
  const std::vector<QPointer<TQyUndoRecorder>> stacks = StacksAround(this);
  for (TQyUndoRecorder* stack : stacks) stack->SetReading(true);
  FReading = true;
  // Modified once: every axis lays out again and the series make their points anew, since the
  // settings read took effect without their notices.
  const auto done = [&] {
    FReading = false;
    for (TQyUndoRecorder* stack : stacks)
      if (stack) stack->SetReading(false);
    for (TQyAxis* a : findChildren<TQyAxis*>(Qt::FindDirectChildrenOnly)) a->Modified();
    if (auto* g = qobject_cast<TQyGraph2D*>(this)) g->SeriesModified();
    Modified();
  };
  try {
    QyReadRecord(this, medium);
    medium.Bind();
  } catch (...) {
    medium.RemoveMade();
    b.close();
    b.open(QIODevice::ReadOnly);
    TQyStreamMedium back(&b, false);
    QyReadRecord(this, back); // written just now by the same record: it reads
    back.Bind();
    done();
    // Whatever went wrong inside (a short stream, a bad number, an unknown class), the reader
    // answers with one error.
    throw EReadError(QyText(QyRes::StreamReadError));
  }
  done();
}

void TQyCustomGraph::ReadFrom(QIODevice* stream) {
  TQyStreamMedium m(stream, false);
  ReadDocument(m);
}

void TQyCustomGraph::ReadFrom(const QDomElement& node) {
  TQyNodeMedium m(node, false);
  ReadDocument(m);
}

void TQyCustomGraph::ReadFrom(const TQyIniFile& ini, const QString& section) {
  TQyIniMedium m(ini, section, {});
  ReadDocument(m);
}

void TQyCustomGraph::ReadFrom(const QString& fileName) {
  QFile file(fileName);
  if (!file.open(QIODevice::ReadOnly)) throw EReadError(QyText(QyRes::StreamReadError));
  ReadFrom(&file);
}
