#pragma once
// Document records, described once per class. A class declares an ordered table of entries
// (document key, stream type, accessor, chained block, XML element, INI key, default); the three
// document media (binary stream, XML element, INI section) and the undo stack walk that table.
// The media themselves live in the persistence layer; here stand only the description and the
// interface that irregular entries write through.
//
//   QY_REGISTER_RECORD(TQyAreaSettings, {
//       QyField("Visible", TQyFieldType::Bool, "Visible"),
//       QyField("AreaStyle", TQyFieldType::Enum, "AreaStyle"),
//       QyField("Gradient", TQyFieldType::Object, "Gradient").InBlock(1),
//   });
#include <QMetaObject>
#include <QObject>
#include <QString>
#include <QVariant>
#include <QVariantList>
#include <functional>
#include <vector>

class QIODevice;
class QDomElement;
class TQyIniFile; // the INI document of the persistence layer

// How an entry is stored. Stream widths: Bool and Enum 1 byte, Int32, Color and Single 4,
// Double 8; strings as a 32-bit length and UTF-8 (captions use the same form).
enum class TQyFieldType : quint8 {
  Bool,
  Enum,      // the ordinal (a flag set: its bits); an integer in XML and INI
  Int32,     // a float value is rounded half to even
  Color,     // ARGB; its text form in XML and INI
  Single,
  Double,
  String,    // INI text escapes carriage returns
  Name,      // the object itself: its reference in a stream, its name in XML and INI
  Reference, // another component by reference, bound after the whole document is read
  Object,    // a nested object with a record of its own (in a stream with its own flags)
  Inline,    // a nested object whose first block stands in this record (no flags in a stream)
  Custom     // written and read by the entry's own functions
};

// The media an entry appears in.
namespace QyMedia {
enum : quint8 { Stream = 1, Node = 2, Ini = 4, All = 7 };
}

// What irregular entries write through: one medium of one document, positioned at the record.
class TQyRecordMedium {
public:
  enum class TKind { Stream, Node, Ini };
  virtual ~TQyRecordMedium() = default;
  virtual TKind Kind() const = 0;
  // A value under `key`: the next value in a stream, an attribute of the current XML element, a
  // key under the current INI prefix.
  virtual void Write(const QString& key, TQyFieldType type, const QVariant& value) = 0;
  // The value under `key`, or `def` when the document has none (a stream always has one).
  virtual QVariant Read(const QString& key, TQyFieldType type, const QVariant& def) = 0;
  // A list of values: in a stream a 32-bit count and each value; in XML a child element `key`
  // with "Count" and one "Item" element per value; in INI one key with the texts joined by ",".
  virtual void WriteItems(const QString& key, TQyFieldType type, const QVariantList& items) = 0;
  virtual QVariantList ReadItems(const QString& key, TQyFieldType type) = 0;
  // The record of a nested object (XML: child element `key`; INI: prefix `key`).
  virtual void WriteObject(const QString& key, const QObject* object) = 0;
  virtual void ReadObject(const QString& key, QObject* object) = 0;
};

using TQyFieldGetter = std::function<QVariant(const QObject*)>;
using TQyFieldSetter = std::function<void(QObject*, const QVariant&)>;
using TQyCustomWrite = std::function<void(const QObject*, TQyRecordMedium&)>;
using TQyCustomRead = std::function<void(QObject*, TQyRecordMedium&)>;

struct TQyRecordEntry {
  QString Key;               // XML attribute or child element, INI key suffix
  TQyFieldType Type = TQyFieldType::Int32;
  const char* Property = nullptr; // the published property, or nullptr with Get/Set
  TQyFieldGetter Get;
  TQyFieldSetter Set;        // none: the value is written, and read past
  int Block = 0;             // the chained block of the stream record
  // The chain: a class may add its fields after its base's record has closed with flag 0. A
  // later chain has blocks of its own and closes with 0 only when it has further blocks; a
  // reader that met an early 0 goes on with the next chain.
  int Chain = 0;
  QString Element;           // XML child element path ("Caption/Properties"); empty: the record's
  QString IniKey;            // INI key when it is not Key
  QVariant Default;          // what a missing XML attribute or INI key reads as (else the present value)
  quint8 Media = QyMedia::All;
  bool Late = false;         // set after the references of the document are bound
  TQyCustomWrite WriteCustom;
  TQyCustomRead ReadCustom;

  TQyRecordEntry& InBlock(int block) { Block = block; return *this; }
  TQyRecordEntry& InChain(int chain) { Chain = chain; return *this; }
  TQyRecordEntry& At(const QString& element) { Element = element; return *this; }
  TQyRecordEntry& Ini(const QString& key) { IniKey = key; return *this; }
  TQyRecordEntry& Only(quint8 media) { Media = media; return *this; }
  TQyRecordEntry& Defaults(const QVariant& value) { Default = value; return *this; }
  TQyRecordEntry& AfterReferences() { Late = true; return *this; }
};

// An entry over a published property.
TQyRecordEntry QyField(const QString& key, TQyFieldType type, const char* property);
// An entry over an accessor pair (a null setter: written only).
TQyRecordEntry QyField(const QString& key, TQyFieldType type, TQyFieldGetter get, TQyFieldSetter set = {});
// An irregular entry with its own writing and reading in each medium.
TQyRecordEntry QyCustomField(const QString& key, TQyCustomWrite write, TQyCustomRead read);

// The value of an entry (enumerations and flag sets as integers; nested objects as QObject*),
// and setting it through the accessor or the property's setter (converted to its type).
QVariant QyGetField(const QObject* object, const TQyRecordEntry& entry);
void QySetField(QObject* object, const TQyRecordEntry& entry, const QVariant& value);
bool QyFieldSettable(const TQyRecordEntry& entry);

// ---- the tables by class
using TQyRecordTable = std::vector<TQyRecordEntry>;
// Registers the table of a class. Its entries follow those of its superclasses, or, with
// `beforeBase`, stand before them.
void QyRegisterRecord(const QMetaObject& meta, TQyRecordTable table, bool beforeBase = false);
// The whole record of a class: its table and those of its superclasses in document order.
std::vector<const TQyRecordEntry*> QyRecordOf(const QMetaObject* meta);
bool QyHasRecord(const QMetaObject* meta);

struct TQyRecordRegistration {
  TQyRecordRegistration(const QMetaObject& meta, TQyRecordTable table, bool beforeBase = false) {
    QyRegisterRecord(meta, std::move(table), beforeBase);
  }
};

#define QY_RECORD_CAT2(a, b) a##b
#define QY_RECORD_CAT(a, b) QY_RECORD_CAT2(a, b)
// Declares the record of class T next to the class: QY_REGISTER_RECORD(T, { entries... });
#define QY_REGISTER_RECORD(T, ...)                                                                 \
  static const TQyRecordRegistration QY_RECORD_CAT(QyRecordRegistration_, __LINE__)(              \
      T::staticMetaObject, TQyRecordTable __VA_ARGS__)
#define QY_REGISTER_RECORD_BEFORE_BASE(T, ...)                                                     \
  static const TQyRecordRegistration QY_RECORD_CAT(QyRecordRegistration_, __LINE__)(              \
      T::staticMetaObject, TQyRecordTable __VA_ARGS__, true)

// The document members of a class with a record (defined by the persistence layer). `takeName`
// says whether the object takes the name written in the document.
#define QY_DOCUMENT_MEMBERS                                                                        \
public:                                                                                            \
  void WriteTo(QIODevice* stream) const;                                                           \
  void ReadFrom(QIODevice* stream, bool takeName = false);                                         \
  void WriteTo(QDomElement& node) const;                                                           \
  void ReadFrom(const QDomElement& node, bool takeName = false);                                   \
  void WriteTo(TQyIniFile& ini, const QString& section) const;                                     \
  void ReadFrom(const TQyIniFile& ini, const QString& section, bool takeName = false);
