#include "QyRecordMedia.h"
#include "QyExceptions.h"
#include "QyIO.h"
#include "QyLocalize.h"
#include "QyStringFunctions.h"
#include "QyXml.h"
#include <QMetaProperty>
#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using TKind = TQyRecordMedium::TKind;

quint8 MaskOf(TKind kind) {
  return kind == TKind::Stream ? QyMedia::Stream : kind == TKind::Node ? QyMedia::Node : QyMedia::Ini;
}

QString KeyFor(const TQyRecordEntry& e, TKind kind) {
  return kind == TKind::Ini && !e.IniKey.isEmpty() ? e.IniKey : e.Key;
}

qint32 RoundedInt(const QVariant& v) { return qint32(std::nearbyint(v.toDouble())); } // half to even

bool IsText(TQyFieldType t) {
  return t == TQyFieldType::String || t == TQyFieldType::Name || t == TQyFieldType::Reference;
}
bool IsFloat(TQyFieldType t) { return t == TQyFieldType::Single || t == TQyFieldType::Double; }

// The text form of a value in XML and INI: floats with a point, colours by name or "$AARRGGBB",
// booleans, enumerations and integers as integers.
QString ToText(TQyFieldType type, const QVariant& v) {
  if (IsText(type)) return v.toString();
  if (IsFloat(type)) return DoubleToStr(v.toDouble());
  if (type == TQyFieldType::Color) return ARGBToString(v.toUInt());
  if (type == TQyFieldType::Bool) return QString::number(v.toBool() ? 1 : 0);
  return QString::number(type == TQyFieldType::Int32 ? RoundedInt(v) : v.toLongLong());
}

QVariant FromText(TQyFieldType type, const QString& text) {
  if (IsText(type)) return text;
  if (IsFloat(type)) return QyFloatFromText(text);
  if (type == TQyFieldType::Color) return QVariant(uint(ColorToARGB(text)));
  const QString t = text.trimmed();
  if (type == TQyFieldType::Bool) {
    if (t.compare("true", Qt::CaseInsensitive) == 0) return true;
    if (t.compare("false", Qt::CaseInsensitive) == 0) return false;
  }
  bool ok = false; // a number where one belongs: "abc" is no 0
  const qlonglong n = t.toLongLong(&ok);
  if (!ok) throw EConvertError(QyFormatMessage(QyRes::InvalidInteger, {t}));
  return type == TQyFieldType::Bool ? QVariant(n != 0) : QVariant(n);
}

// INI text: a line break would end the entry, so a line feed is escaped as "@\n" beside the
// carriage return's "@\r" (EncodeForIni leaves line feeds alone).
QString IniText(const QString& text) { return EncodeForIni(text).replace('\n', QLatin1String("@\\n")); }
QString TextFromIni(QString text) { return DecodeFomIni(text.replace(QLatin1String("@\\n"), QLatin1String("\n"))); }

QObject* Nested(const QObject* o, const TQyRecordEntry& e) { return QyGetField(o, e).value<QObject*>(); }

// A nested object's record inside its element; an inline one in a stream has no blocks of its own.
template <class Walk>
void InNested(const QObject* o, const TQyRecordEntry& e, TQyDocumentMedium& m, const QString& key, Walk walk) {
  if (QObject* nested = Nested(o, e); nested && m.EnterObject(key)) {
    walk(nested, e.Type == TQyFieldType::Inline && m.Kind() == TKind::Stream);
    m.Leave();
  }
}

void WriteEntry(const QObject* o, const TQyRecordEntry& e, TQyDocumentMedium& m) {
  const QString key = KeyFor(e, m.Kind());
  switch (e.Type) {
  case TQyFieldType::Object:
  case TQyFieldType::Inline:
    return InNested(o, e, m, key, [&m](QObject* nested, bool inlined) { QyWriteRecord(nested, m, inlined); });
  case TQyFieldType::Custom:
    return e.WriteCustom(o, m);
  case TQyFieldType::Name:
    return m.Write(key, e.Type, m.Kind() == TKind::Stream ? GetComponentRef(o) : o->objectName());
  case TQyFieldType::Reference:
    return m.Write(key, e.Type, GetComponentRef(Nested(o, e)));
  default:
    return m.Write(key, e.Type, QyGetField(o, e));
  }
}

// A reference: bound after the document; an empty one sets none, a dangling one nothing.
void ReadReference(QObject* o, const TQyRecordEntry& e, const QString& ref, TQyDocumentMedium& m) {
  if (m.ReferencesRead) m.ReferencesRead->emplace_back(e.Key, ref);
  m.Defer(o, [o, &e, ref] {
    QObject* target = ref.isEmpty() ? nullptr : GetComponentFromRef(ref);
    if ((target || ref.isEmpty()) && Nested(o, e) != target) QySetField(o, e, QVariant::fromValue(target));
  });
}

void ReadEntry(QObject* o, const TQyRecordEntry& e, TQyDocumentMedium& m) {
  const QString key = KeyFor(e, m.Kind());
  switch (e.Type) {
  case TQyFieldType::Object:
  case TQyFieldType::Inline:
    return InNested(o, e, m, key, [&m](QObject* nested, bool inlined) { QyReadRecord(nested, m, inlined); });
  case TQyFieldType::Custom:
    return e.ReadCustom(o, m);
  default:
    break;
  }
  const QVariant v = m.Read(key, e.Type, e.Default);
  if (!v.isValid()) return; // not in the document: the present value stays
  if (e.Type == TQyFieldType::Name) {
    if (m.TakeName) o->setObjectName(ComponentName(v.toString()));
  } else if (e.Type == TQyFieldType::Reference) {
    if (QyFieldSettable(e)) ReadReference(o, e, v.toString(), m);
  } else if (!QyFieldSettable(e)) {
    // written for other readers only
  } else if (e.Late) {
    if (e.Type == TQyFieldType::Enum && e.Property) QyCheckEnumValue(o, e.Property, v);
    m.Defer(o, [o, &e, v] { QySetField(o, e, v); });
  } else {
    if (e.Type == TQyFieldType::Enum && e.Property) QyCheckEnumValue(o, e.Property, v);
    QySetField(o, e, v);
  }
}

// Whether a chain of the record has further blocks (the first chain always closes with a flag).
bool ChainCloses(const std::vector<const TQyRecordEntry*>& record, int chain, quint8 mask) {
  return chain == 0 || std::any_of(record.begin(), record.end(), [&](const TQyRecordEntry* e) {
           return e->Chain == chain && e->Block > 0 && (e->Media & mask);
         });
}

template <class Visit>
void Walk(const QObject* o, TQyDocumentMedium& m, bool firstBlock, Visit&& visit) {
  const quint8 mask = MaskOf(m.Kind());
  const auto record = QyRecordOf(o->metaObject());
  int chain = 0, block = 0;
  bool open = true; // false once the present chain has ended early
  auto close = [&] {
    if (open && !firstBlock && ChainCloses(record, chain, mask)) visit.End();
  };
  for (const TQyRecordEntry* e : record) {
    if (!(e->Media & mask) || (firstBlock && e->Block > 0)) continue;
    if (e->Chain != chain) {
      close();
      chain = e->Chain, block = 0, open = true;
    }
    for (; open && block < e->Block; ++block) open = visit.Block();
    if (!open) continue;
    if (e->Element.isEmpty() || m.Kind() == TKind::Ini) {
      visit.Entry(*e);
    } else if (m.EnterElement(e->Element)) {
      visit.Entry(*e);
      m.Leave();
    }
  }
  close();
}

} // namespace

// The 15-digit text of a double near the largest one may round beyond it
// ("1.79769313486232E308"): such a text reads as the largest double of its sign.
double QyFloatFromText(const QString& text) {
  try {
    return DoubleFromStr(text);
  } catch (const EConvertError&) {
    QString lower = text.trimmed().toUpper();
    if (!lower.endsWith(QLatin1String("E308"))) throw;
    lower.chop(1);
    const double tenth = DoubleFromStr(lower + '7');
    if (std::fabs(tenth) < 1.7e307) throw;
    return std::copysign(std::numeric_limits<double>::max(), tenth);
  }
}

// ---- the walk

void QyWriteRecord(const QObject* object, TQyDocumentMedium& medium, bool firstBlock) {
  struct {
    const QObject* o;
    TQyDocumentMedium& m;
    bool Block() { m.WriteBlockFlag(true); return true; }
    void Entry(const TQyRecordEntry& e) { WriteEntry(o, e, m); }
    void End() { m.WriteBlockFlag(false); }
  } visit{object, medium};
  Walk(object, medium, firstBlock, visit);
}

void QyReadRecord(QObject* object, TQyDocumentMedium& medium, bool firstBlock) {
  struct {
    QObject* o;
    TQyDocumentMedium& m;
    bool Block() { return m.ReadBlockFlag(); }
    void Entry(const TQyRecordEntry& e) { ReadEntry(o, e, m); }
    // A further block this reader does not know cannot be skipped.
    void End() {
      if (m.Kind() == TKind::Stream && m.ReadBlockFlag()) throw EReadError(QyText(QyRes::StreamReadError));
    }
  } visit{object, medium};
  Walk(object, medium, firstBlock, visit);
}

// ---- shared by the media

void TQyDocumentMedium::WriteObject(const QString& key, const QObject* object) {
  if (!EnterObject(key)) return;
  QyWriteRecord(object, *this);
  Leave();
}

void TQyDocumentMedium::ReadObject(const QString& key, QObject* object) {
  if (!EnterObject(key)) return;
  QyReadRecord(object, *this);
  Leave();
}

void TQyDocumentMedium::Defer(QObject* target, std::function<void()> apply) {
  FDeferred.emplace_back(target, std::move(apply));
}

void TQyDocumentMedium::RemoveMade() {
  auto made = std::move(FMade);
  FMade.clear();
  for (auto it = made.rbegin(); it != made.rend(); ++it) delete it->data();
}

void TQyDocumentMedium::Bind() {
  auto deferred = std::move(FDeferred);
  FDeferred.clear();
  for (auto& [target, apply] : deferred)
    if (target) apply();
}

// ---- binary stream

void TQyStreamMedium::Write(const QString&, TQyFieldType type, const QVariant& v) {
  TQyByteWriter w(FDevice);
  switch (type) {
  case TQyFieldType::Bool: return w.WriteBool(v.toBool());
  case TQyFieldType::Enum: return w.WriteUInt8(quint8(v.toLongLong()));
  case TQyFieldType::Int32: return w.WriteInt32(RoundedInt(v));
  case TQyFieldType::Color: return w.WriteUInt32(v.toUInt());
  case TQyFieldType::Single: return w.WriteSingle(v.toFloat());
  case TQyFieldType::Double: return w.WriteDouble(v.toDouble());
  default: return StringToStream(FDevice, v.toString());
  }
}

QVariant TQyStreamMedium::Read(const QString&, TQyFieldType type, const QVariant&) {
  TQyByteReader r(FDevice);
  switch (type) {
  case TQyFieldType::Bool: return r.ReadBool();
  case TQyFieldType::Enum: return qlonglong(r.ReadUInt8());
  case TQyFieldType::Int32: return r.ReadInt32();
  case TQyFieldType::Color: return uint(r.ReadUInt32());
  case TQyFieldType::Single: return r.ReadSingle();
  case TQyFieldType::Double: return r.ReadDouble();
  default: return StringFromStream(FDevice);
  }
}

void TQyStreamMedium::WriteItems(const QString& key, TQyFieldType type, const QVariantList& items) {
  TQyByteWriter(FDevice).WriteInt32(qint32(items.size()));
  for (const QVariant& v : items) Write(key, type, v);
}

QVariantList TQyStreamMedium::ReadItems(const QString& key, TQyFieldType type) {
  const qint32 n = TQyByteReader(FDevice).ReadInt32();
  QVariantList items;
  for (qint32 i = 0; i < n; ++i) items << Read(key, type, {}); // a short stream raises first
  return items;
}

void TQyStreamMedium::WriteBlockFlag(bool more) { TQyByteWriter(FDevice).WriteBool(more); }

// A negative count holds none; a large one ends with the stream, as each child reads something.
int TQyStreamMedium::BeginChildren(const QString&, int count) {
  if (Writing()) TQyByteWriter(FDevice).WriteInt32(count);
  else count = std::max(0, TQyByteReader(FDevice).ReadInt32());
  return count;
}
bool TQyStreamMedium::ReadBlockFlag() { return TQyByteReader(FDevice).ReadUInt8() == 1; }

// ---- XML element

QDomElement TQyNodeMedium::Child(const QString& name, bool fresh) {
  QDomElement& parent = FStack.back();
  if (!Writing()) return ChildElement(parent, name);
  QDomElement child = fresh ? QDomElement() : ChildElement(parent, name);
  return child.isNull() ? AddChildElement(parent, name) : child;
}

bool TQyNodeMedium::EnterElement(const QString& path) {
  QDomElement e = FStack.back();
  for (const QString& name : path.split('/')) {
    FStack.push_back(e);
    e = Child(name, false);
    FStack.pop_back();
    if (e.isNull()) return false;
  }
  FStack.push_back(e);
  return true;
}

bool TQyNodeMedium::EnterObject(const QString& key) {
  QDomElement e = Child(key, true);
  if (e.isNull()) return false;
  FStack.push_back(e);
  return true;
}

int TQyNodeMedium::BeginChildren(const QString& key, int count) {
  QDomElement list = Child(key, Writing());
  if (Writing()) list.setAttribute("Count", QString::number(count));
  FStack.push_back(list);
  if (Writing()) return count;
  int n = 0; // the elements present, whatever "Count" claims
  for (QDomElement c = list.firstChildElement(); !c.isNull(); c = c.nextSiblingElement()) ++n;
  return n;
}

void TQyNodeMedium::EnterChild(int index, QString& className) {
  QDomElement& list = FStack.back();
  if (Writing()) {
    FStack.push_back(AddChildElement(list, className));
    return;
  }
  QDomElement c = list.firstChildElement();
  for (int i = 0; i < index; ++i) c = c.nextSiblingElement();
  className = c.tagName();
  FStack.push_back(c);
}

void TQyNodeMedium::Write(const QString& key, TQyFieldType type, const QVariant& v) {
  FStack.back().setAttribute(key, ToText(type, v));
}

QVariant TQyNodeMedium::Read(const QString& key, TQyFieldType type, const QVariant& def) {
  const QDomElement& e = FStack.back();
  return e.hasAttribute(key) ? FromText(type, e.attribute(key)) : def;
}

void TQyNodeMedium::WriteItems(const QString& key, TQyFieldType type, const QVariantList& items) {
  QDomElement list = Child(key, true);
  list.setAttribute("Count", QString::number(items.size()));
  for (const QVariant& v : items)
    AddChildElement(list, "Item").appendChild(list.ownerDocument().createTextNode(ToText(type, v)));
}

QVariantList TQyNodeMedium::ReadItems(const QString& key, TQyFieldType type) {
  QVariantList items;
  const QDomElement list = Child(key, false);
  for (QDomElement i = list.firstChildElement("Item"); !i.isNull(); i = i.nextSiblingElement("Item"))
    items << FromText(type, i.text());
  return items;
}

// ---- INI section: keys under the prefix of the object, nested objects extend it

QString TQyIniMedium::KeyOf(const QString& key) const {
  const QString& prefix = FScopes.back().Prefix;
  return prefix.isEmpty() ? key : key.isEmpty() ? prefix : prefix + '.' + key;
}

bool TQyIniMedium::EnterElement(const QString&) {
  FScopes.push_back(FScopes.back());
  return true;
}

bool TQyIniMedium::EnterObject(const QString& key) {
  FScopes.push_back({Section(), KeyOf(key), {}});
  return true;
}

int TQyIniMedium::BeginChildren(const QString& key, int count) {
  const QString countKey = key + ".Count";
  if (Writing()) Write(countKey, TQyFieldType::Int32, count);
  else count = Read(countKey, TQyFieldType::Int32, 0).toInt();
  FScopes.push_back({Section(), FScopes.back().Prefix, Section() + '.' + key + '('});
  // A count beyond the sections present would make objects of nothing.
  int n = 0;
  while (n < count && (Writing() || FIni->SectionExists(FScopes.back().List + QString::number(n) + ')'))) ++n;
  return n;
}

void TQyIniMedium::EnterChild(int index, QString&) {
  FScopes.push_back({FScopes.back().List + QString::number(index) + ')', {}, {}});
}

void TQyIniMedium::Write(const QString& key, TQyFieldType type, const QVariant& v) {
  const QString text = ToText(type, v);
  FIni->WriteString(Section(), KeyOf(key), IsText(type) ? IniText(text) : text);
}

QVariant TQyIniMedium::Read(const QString& key, TQyFieldType type, const QVariant& def) {
  if (!FIni->ValueExists(Section(), KeyOf(key))) return def;
  const QString text = FIni->ReadString(Section(), KeyOf(key), {});
  return IsText(type) ? QVariant(TextFromIni(text)) : FromText(type, text);
}

void TQyIniMedium::WriteItems(const QString& key, TQyFieldType type, const QVariantList& items) {
  QStringList texts;
  for (const QVariant& v : items) texts << ToText(type, v);
  FIni->WriteString(Section(), KeyOf(key), texts.join(','));
}

QVariantList TQyIniMedium::ReadItems(const QString& key, TQyFieldType type) {
  QVariantList items;
  for (const QString& t : FIni->ReadString(Section(), KeyOf(key), {}).split(',', Qt::SkipEmptyParts))
    items << FromText(type, t);
  return items;
}

// ---- whole documents

void QyWriteToStream(const QObject* object, QIODevice* stream) {
  TQyStreamMedium m(stream, true);
  QyWriteRecord(object, m);
}

void QyReadFromStream(QObject* object, QIODevice* stream, bool takeName) {
  TQyStreamMedium m(stream, false);
  m.TakeName = takeName;
  QyReadRecord(object, m);
  m.Bind();
}

void QyWriteToNode(const QObject* object, QDomElement& element) {
  TQyNodeMedium m(element, true);
  QyWriteRecord(object, m);
}

void QyReadFromNode(QObject* object, const QDomElement& element, bool takeName) {
  TQyNodeMedium m(element, false);
  m.TakeName = takeName;
  QyReadRecord(object, m);
  m.Bind();
}

void QyWriteToIni(const QObject* object, TQyIniFile& ini, const QString& section, const QString& prefix) {
  TQyIniMedium m(ini, section, prefix);
  QyWriteRecord(object, m);
}

void QyReadFromIni(QObject* object, const TQyIniFile& ini, const QString& section,
                   const QString& prefix, bool takeName) {
  TQyIniMedium m(ini, section, prefix);
  m.TakeName = takeName;
  QyReadRecord(object, m);
  m.Bind();
}

void QyWriteNumberedTexts(TQyRecordMedium& m, const QString& itemKey, const QString& countKey, const QStringList& texts) {
  if (m.Kind() != TKind::Ini) return m.WriteItems(itemKey, TQyFieldType::String, QVariantList(texts.begin(), texts.end()));
  m.Write(countKey, TQyFieldType::Int32, texts.size());
  for (qsizetype i = 0; i < texts.size(); ++i) m.Write(QString("%1(%2)").arg(itemKey).arg(i), TQyFieldType::String, texts[i]);
}

QStringList QyReadNumberedTexts(TQyRecordMedium& m, const QString& itemKey, const QString& countKey) {
  QStringList texts;
  if (m.Kind() != TKind::Ini) {
    for (const QVariant& v : m.ReadItems(itemKey, TQyFieldType::String)) texts << v.toString();
  } else {
    for (int i = 0, n = m.Read(countKey, TQyFieldType::Int32, 0).toInt(); i < n; ++i)
      texts << m.Read(QString("%1(%2)").arg(itemKey).arg(i), TQyFieldType::String, QString()).toString();
  }
  return texts;
}

void QyCheckEnumValue(const QObject* object, const char* property, const QVariant& value) {
  const QMetaObject* meta = object->metaObject();
  const QMetaProperty p = meta->property(meta->indexOfProperty(property));
  if (!p.isEnumType() || p.isFlagType()) return;
  const qlonglong v = value.toLongLong();
  if (v < INT_MIN || v > INT_MAX || !p.enumerator().valueToKey(int(v))) throw EReadError(QyText(QyRes::StreamReadError));
}

TQyRecordEntry QyParentShowHintField() {
  return QyField("ParentShowHint", TQyFieldType::Bool, [](const QObject*) { return QVariant(true); }).At("Properties");
}

TQyRecordEntry QyShowHintField() {
  return QyField("ShowHint", TQyFieldType::Bool, [](const QObject* o) {
           const QVariant hint = o->property("toolTip");
           return QVariant(!hint.toString().isEmpty());
         }).At("Properties");
}
