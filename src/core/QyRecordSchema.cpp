#include "QyRecordSchema.h"
#include <QHash>
#include <QMetaProperty>
#include <cstring>

namespace {
struct TTable {
  TQyRecordTable Entries;
  bool BeforeBase = false;
};
// Filled by static registrations while the library loads (function-local: no order problem).
QHash<const QMetaObject*, TTable>& Tables() {
  static QHash<const QMetaObject*, TTable> tables;
  return tables;
}

QMetaProperty PropertyOf(const QObject* o, const char* name) {
  return o->metaObject()->property(o->metaObject()->indexOfProperty(name));
}

// Enumerations and flag sets are kept by their bits, whatever their width.
bool IsOrdinal(const QMetaProperty& p) {
  return (p.isEnumType() || p.isFlagType()) && p.metaType().sizeOf() <= int(sizeof(qint64));
}
} // namespace

TQyRecordEntry QyField(const QString& key, TQyFieldType type, const char* property) {
  TQyRecordEntry e;
  e.Key = key;
  e.Type = type;
  e.Property = property;
  return e;
}

TQyRecordEntry QyField(const QString& key, TQyFieldType type, TQyFieldGetter get, TQyFieldSetter set) {
  TQyRecordEntry e;
  e.Key = key;
  e.Type = type;
  e.Get = std::move(get);
  e.Set = std::move(set);
  return e;
}

TQyRecordEntry QyCustomField(const QString& key, TQyCustomWrite write, TQyCustomRead read) {
  TQyRecordEntry e;
  e.Key = key;
  e.Type = TQyFieldType::Custom;
  e.WriteCustom = std::move(write);
  e.ReadCustom = std::move(read);
  return e;
}

QVariant QyGetField(const QObject* object, const TQyRecordEntry& entry) {
  if (entry.Get) return entry.Get(object);
  if (!entry.Property) return {};
  const QMetaProperty p = PropertyOf(object, entry.Property);
  const QVariant v = p.read(object);
  if (!IsOrdinal(p)) return v;
  qint64 raw = 0;
  std::memcpy(&raw, v.constData(), size_t(p.metaType().sizeOf()));
  return QVariant(raw);
}

bool QyFieldSettable(const TQyRecordEntry& entry) { return entry.Set || entry.Property; }

void QySetField(QObject* object, const TQyRecordEntry& entry, const QVariant& value) {
  if (entry.Set) return entry.Set(object, value);
  if (!entry.Property) return;
  const QMetaProperty p = PropertyOf(object, entry.Property);
  if (!p.isWritable()) return;
  if (IsOrdinal(p)) {
    const qint64 raw = value.toLongLong();
    char bytes[sizeof(qint64)] = {};
    std::memcpy(bytes, &raw, sizeof raw); // little-endian: the low bytes are the value
    p.write(object, QVariant(p.metaType(), bytes));
    return;
  }
  if (p.metaType().flags().testFlag(QMetaType::PointerToQObject)) {
    QObject* target = value.value<QObject*>(); // a component of another class is not taken
    if (target && !target->metaObject()->inherits(p.metaType().metaObject())) return;
    p.write(object, QVariant(p.metaType(), &target));
    return;
  }
  QVariant v = value;
  if (v.metaType() != p.metaType()) v.convert(p.metaType());
  p.write(object, v);
}

void QyRegisterRecord(const QMetaObject& meta, TQyRecordTable table, bool beforeBase) {
  Tables().insert(&meta, {std::move(table), beforeBase});
}

bool QyHasRecord(const QMetaObject* meta) {
  for (; meta; meta = meta->superClass())
    if (Tables().contains(meta)) return true;
  return false;
}

std::vector<const TQyRecordEntry*> QyRecordOf(const QMetaObject* meta) {
  std::vector<const TQyRecordEntry*> record;
  // From the class up: each table goes after the record of its bases, or before it.
  std::vector<const TTable*> chain;
  for (; meta; meta = meta->superClass())
    if (auto it = Tables().constFind(meta); it != Tables().cend()) chain.push_back(&*it);
  for (auto t = chain.rbegin(); t != chain.rend(); ++t) {
    std::vector<const TQyRecordEntry*> own;
    for (const TQyRecordEntry& e : (*t)->Entries) own.push_back(&e);
    record.insert((*t)->BeforeBase ? record.begin() : record.end(), own.begin(), own.end());
  }
  return record;
}
