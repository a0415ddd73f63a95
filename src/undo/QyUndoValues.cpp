// What the undo records hold: object references, property values by the kind of their type,
// component images, edit states and vector data; and how a record is applied.
#include "QyUndoStack.h"
#include "QyClassRegistry.h"
#include "QyExceptions.h"
#include "QyIO.h"
#include "QyLocalize.h"
#include "QyRecordMedia.h"
#include "QyStateful.h"
#include <QBuffer>
#include <QDataStream>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QWidget>
#include <cstring>

namespace {

QMetaProperty FindProperty(const QObject* o, const char* name) {
  const int i = o->metaObject()->indexOfProperty(name);
  if (i < 0) throw EFilerError(QyFormatMessage(QyRes::UndoPropertyNotFound, {QString::fromLatin1(name)}));
  return o->metaObject()->property(i);
}

bool IsObjectType(QMetaType t) { return t.flags().testFlag(QMetaType::PointerToQObject); }

// Types kept as their raw bits in an integer: booleans, integers, enumerations and flag sets.
bool IsRawInteger(const QMetaProperty& p) {
  switch (p.metaType().id()) {
  case QMetaType::Bool: case QMetaType::Char: case QMetaType::SChar: case QMetaType::UChar:
  case QMetaType::Short: case QMetaType::UShort: case QMetaType::Int: case QMetaType::UInt:
  case QMetaType::Long: case QMetaType::ULong: case QMetaType::LongLong: case QMetaType::ULongLong:
    return true;
  default:
    return (p.isEnumType() || p.isFlagType()) && p.metaType().sizeOf() <= int(sizeof(qint64));
  }
}

bool IsFloat(QMetaType t) { return t.id() == QMetaType::Float || t.id() == QMetaType::Double; }

// A component re-created by class name on its owner (the stack's owner when the recorded one is
// gone), named as before; nullptr for a class that is not registered.
QObject* CreateComponent(const QString& className, const QString& ownerRef, const QString& name,
                         QObject* fallbackOwner) {
  QObject* owner = ownerRef.isEmpty() ? nullptr : GetComponentFromRef(ownerRef);
  QObject* c = QyCreateComponent(className, owner ? owner : fallbackOwner);
  if (c) c->setObjectName(name);
  return c;
}

// ---- edit controls

QString EditText(const QObject* e) {
  if (auto* l = qobject_cast<const QLineEdit*>(e)) return l->text();
  if (auto* t = qobject_cast<const QTextEdit*>(e)) return t->toPlainText();
  if (auto* t = qobject_cast<const QPlainTextEdit*>(e)) return t->toPlainText();
  return e->property("Caption").toString();
}

std::pair<int, int> EditSelection(const QObject* e) {
  if (auto* l = qobject_cast<const QLineEdit*>(e))
    return l->hasSelectedText() ? std::pair{l->selectionStart(), int(l->selectedText().size())}
                                : std::pair{l->cursorPosition(), 0};
  QTextCursor c;
  if (auto* t = qobject_cast<const QTextEdit*>(e)) c = t->textCursor();
  else if (auto* t = qobject_cast<const QPlainTextEdit*>(e)) c = t->textCursor();
  else return {e->property("SelStart").toInt(), e->property("SelLength").toInt()};
  return {c.selectionStart(), c.selectionEnd() - c.selectionStart()};
}

void SetTextCursor(QTextCursor c, int start, int length, const std::function<void(const QTextCursor&)>& set) {
  c.setPosition(start);
  c.setPosition(start + length, QTextCursor::KeepAnchor);
  set(c);
}

void SetEditState(QObject* e, const QString& text, int start, int length) {
  if (auto* l = qobject_cast<QLineEdit*>(e)) {
    l->setText(text);
    if (length > 0) l->setSelection(start, length);
    else l->setCursorPosition(start);
  } else if (auto* t = qobject_cast<QTextEdit*>(e)) {
    t->setPlainText(text);
    SetTextCursor(t->textCursor(), start, length, [t](const QTextCursor& c) { t->setTextCursor(c); });
  } else if (auto* t = qobject_cast<QPlainTextEdit*>(e)) {
    t->setPlainText(text);
    SetTextCursor(t->textCursor(), start, length, [t](const QTextCursor& c) { t->setTextCursor(c); });
  } else {
    e->setProperty("Caption", text);
    e->setProperty("SelStart", start);
    e->setProperty("SelLength", length);
  }
}

} // namespace

// ---- object references: the component path when there is one, and always the object's id, so
// that sub-objects and unnamed components are found again while they live.

qint64 TQyUndoStack::ObjectId(QObject* o) {
  if (!o) return 0;
  if (auto it = FObjectIds.constFind(o); it != FObjectIds.cend()) return *it;
  const qint64 id = FNextObjectId++;
  FObjectIds.insert(o, id);
  FObjects.insert(id, o);
  connect(o, &QObject::destroyed, this, [this, o, id] {
    FObjectIds.remove(o);
    FObjects.remove(id);
  });
  return id;
}

void TQyUndoStack::WriteObjectInstance(TQyValueWriter& w, QObject* o) {
  w.WriteString(GetComponentRef(o));
  w.WriteInteger(ObjectId(o));
}

QObject* TQyUndoStack::ReadObjectInstance(TQyValueReader& r) {
  FCurrentInstanceFullName = r.ReadString();
  const qint64 id = r.ReadInteger();
  if (QObject* o = GetComponentFromRef(FCurrentInstanceFullName)) return o;
  return FObjects.value(id).data();
}

// ---- property values, by the kind of the property's type

void TQyUndoStack::WritePropertyValue(TQyValueWriter& w, QObject* o, const char* name) {
  const QMetaProperty p = FindProperty(o, name);
  const QVariant v = p.read(o);
  const QMetaType t = p.metaType();
  if (IsObjectType(t)) {
    WriteObjectInstance(w, v.value<QObject*>());
  } else if (t.id() == QMetaType::QStringList) {
    w.WriteListBegin();
    for (const QString& s : v.toStringList()) w.WriteString(s);
    w.WriteListEnd();
  } else if (t.id() == QMetaType::QString) {
    w.WriteString(v.toString());
  } else if (IsFloat(t)) {
    w.WriteFloat(v.toDouble());
  } else if (IsRawInteger(p)) {
    qint64 raw = 0; // the value's own bytes, so that enumerations and sets of any width survive
    std::memcpy(&raw, v.constData(), size_t(t.sizeOf()));
    w.WriteInteger(raw);
  } else {
    QByteArray blob; // any other value type (colours, points, fonts) in the framework's form
    QDataStream s(&blob, QIODevice::WriteOnly);
    s << v;
    w.WriteBinary(blob);
  }
}

void TQyUndoStack::ReadPropertyFrom(TQyValueReader& r, QObject* o, const QByteArray& name) {
  const QMetaProperty p = FindProperty(o, name.constData());
  const QMetaType t = p.metaType();
  QVariant v;
  if (IsObjectType(t)) {
    QObject* target = ReadObjectInstance(r); // a referenced object that is gone restores as none
    if (target && !target->metaObject()->inherits(t.metaObject())) target = nullptr;
    v = QVariant(t, &target);
  } else if (t.id() == QMetaType::QStringList) {
    QStringList list;
    r.ReadListBegin();
    while (!r.EndOfList()) list << r.ReadString();
    r.ReadListEnd();
    v = list;
  } else if (t.id() == QMetaType::QString) {
    v = r.ReadString();
  } else if (IsFloat(t)) {
    v = r.ReadFloat();
    v.convert(t);
  } else if (t.id() == QMetaType::Bool) {
    v = (r.ReadInteger() & 0xFF) != 0; // the bool's byte: a damaged log may hold any value there
  } else if (IsRawInteger(p)) {
    const qint64 raw = r.ReadInteger();
    char bytes[sizeof(qint64)] = {};
    std::memcpy(bytes, &raw, sizeof raw); // little-endian: the low bytes are the value
    v = QVariant(t, bytes);
  } else {
    const QByteArray blob = r.ReadBinary();
    QDataStream s(blob);
    s >> v;
  }
  p.write(o, v);
}

// ---- component images: class name, owner reference and the component's document record (as a
// binary stream), so that a deleted component can be made again and read back; its references
// are bound by name when the record has been read.

void TQyUndoStack::WriteComponentImage(TQyValueWriter& w, QObject* o) {
  w.WriteString(QString::fromLatin1(o->metaObject()->className()));
  w.WriteString(GetComponentRef(ComponentOwner(o)));
  QByteArray record;
  QBuffer buffer(&record);
  buffer.open(QIODevice::WriteOnly);
  QyWriteToStream(o, &buffer);
  w.WriteBinary(record);
}

void TQyUndoStack::ReadComponentFrom(TQyValueReader& r, QObject* o) {
  const QString className = r.ReadString();
  const QString ownerRef = r.ReadString();
  QByteArray record = r.ReadBinary();
  if (!o && !FCurrentInstanceFullName.isEmpty())
    o = CreateComponent(className, ownerRef, ComponentName(FCurrentInstanceFullName), parent());
  if (!o) return; // nothing to put the image into
  QBuffer buffer(&record);
  buffer.open(QIODevice::ReadOnly);
  QyReadFromStream(o, &buffer);
}

// ---- applying one record

bool TQyUndoStack::Apply(TQyUndoToken token, TQyValueReader& r, TQyValueWriter* reverse) {
  switch (token) {
  case TQyUndoToken::udProperty: {
    QObject* o = ReadObjectInstance(r);
    const QByteArray name = r.ReadString().toLatin1();
    if (!o) return false; // the object is gone
    if (reverse) {
      reverse->WriteInteger(int(TQyUndoToken::udProperty));
      WriteObjectInstance(*reverse, o);
      reverse->WriteString(QString::fromLatin1(name));
      WritePropertyValue(*reverse, o, name.constData());
    }
    ReadPropertyFrom(r, o, name);
    return true;
  }
  case TQyUndoToken::udComponent: {
    QObject* o = ReadObjectInstance(r);
    const QString ref = FCurrentInstanceFullName;
    if (reverse && o) {
      reverse->WriteInteger(int(TQyUndoToken::udComponent));
      WriteObjectInstance(*reverse, o);
      WriteComponentImage(*reverse, o);
    } else if (reverse && !ref.isEmpty()) {
      reverse->WriteInteger(int(TQyUndoToken::udFreeComponent)); // the undo re-creates it
      reverse->WriteString(ref);
    }
    ReadComponentFrom(r, o);
    return o || !ref.isEmpty();
  }
  case TQyUndoToken::udFreeComponent: {
    const QString ref = r.ReadString();
    QObject* o = GetComponentFromRef(ref);
    if (!o) return false;
    if (reverse) {
      reverse->WriteInteger(int(TQyUndoToken::udComponent));
      WriteObjectInstance(*reverse, o);
      WriteComponentImage(*reverse, o);
    }
    delete o;
    return true;
  }
  case TQyUndoToken::udEditState: {
    QObject* o = ReadObjectInstance(r);
    const QString text = r.ReadString();
    const int start = int(r.ReadInteger());
    const int length = int(r.ReadInteger());
    if (!o) return false;
    if (reverse) {
      const auto [s, l] = EditSelection(o);
      reverse->WriteInteger(int(TQyUndoToken::udEditState));
      WriteObjectInstance(*reverse, o);
      reverse->WriteString(EditText(o));
      reverse->WriteInteger(s);
      reverse->WriteInteger(l);
    }
    SetEditState(o, text, start, length);
    return true;
  }
  case TQyUndoToken::udVectorState: {
    QObject* o = ReadObjectInstance(r);
    auto* v = dynamic_cast<IQyStateful*>(o);
    if (!v) return false;
    if (reverse) {
      reverse->WriteInteger(int(TQyUndoToken::udVectorState));
      WriteVectorState(*reverse, o);
    }
    QByteArray state = r.ReadBinary();
    QBuffer device(&state);
    device.open(QIODevice::ReadOnly);
    v->ReadState(device);
    return true;
  }
  case TQyUndoToken::udStartGroup: // mirrored in the other log
  case TQyUndoToken::udStopGroup:
    if (reverse)
      reverse->WriteInteger(int(token == TQyUndoToken::udStartGroup ? TQyUndoToken::udStopGroup
                                                                   : TQyUndoToken::udStartGroup));
    return reverse != nullptr;
  }
  return false;
}

// ---- vector records

// The object, then its state as one block.
void TQyUndoStack::WriteVectorState(TQyValueWriter& w, QObject* o) {
  QByteArray state;
  QBuffer device(&state);
  device.open(QIODevice::WriteOnly);
  dynamic_cast<IQyStateful*>(o)->WriteState(device);
  WriteObjectInstance(w, o);
  w.WriteBinary(state);
}
