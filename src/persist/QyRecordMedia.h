#pragma once
// The three document media over the record tables of QyRecordSchema: a binary stream (through
// the little-endian byte writer and reader), an XML element and an INI section. One walk over the
// table writes or reads a record in any of them; the media differ only in how one value, one
// nested object and one chained block are kept.
//
// Reading binds references at the end: a reference names a component that may be read later in
// the same document, so its text waits until every object exists (GetComponentFromRef). An empty
// reference sets none; a dangling one leaves the field as it is.
#include "QyIniFile.h"
#include "QyRecordSchema.h"
#include <QDomElement>
#include <QIODevice>
#include <QPointer>
#include <functional>
#include <vector>

class TQyDocumentMedium : public TQyRecordMedium {
public:
  explicit TQyDocumentMedium(bool writing) : FWriting(writing) {}
  bool Writing() const { return FWriting; }
  // The object takes the name written in the document.
  bool TakeName = false;
  // The document holds data (a graph written with its vectors): records with data of their own
  // (captions of bars) write it only then.
  bool WithData = true;
  // When set, each reference read is noted as (key, text): a reader trying a record on a class
  // looks at what it named.
  std::vector<std::pair<QString, QString>>* ReferencesRead = nullptr;

  void WriteObject(const QString& key, const QObject* object) override;
  void ReadObject(const QString& key, QObject* object) override;

  // Into an XML child element path (others: nothing) or a nested object's element or prefix;
  // false when reading and the document lacks it. Each true is paired with Leave().
  virtual bool EnterElement(const QString& path) = 0;
  virtual bool EnterObject(const QString& key) = 0;
  virtual void Leave() = 0;
  // The chained blocks of a stream record: flag 1 before a further block, 0 at the end. Reading:
  // false when the record ended early (the remaining entries keep their values).
  virtual void WriteBlockFlag(bool more) { (void)more; }
  virtual bool ReadBlockFlag() { return true; }

  // A list of child records under `key`: in a stream a 32-bit count; in XML an element `key` with
  // "Count" and one element per child, named by the child's class; in INI the count under
  // "<key>.Count" and one section "<section>.<key>(<i>)" per child. Writing: BeginChildren(key, n),
  // EnterChild(i, class) and Leave() per child, then Leave(). Reading: BeginChildren answers how
  // many children the document can hold (never more than it has), EnterChild gives the class name
  // the medium keeps (XML only; else empty).
  virtual int BeginChildren(const QString& key, int count) = 0;
  virtual void EnterChild(int index, QString& className) = 0;

  // Objects made while reading, removed again when the read fails.
  void Made(QObject* object) { FMade.emplace_back(object); }
  void RemoveMade();

  // Runs `apply` after the whole document is read, if `target` still lives.
  void Defer(QObject* target, std::function<void()> apply);
  // Binds the references and late values, in the order they were read.
  void Bind();

private:
  bool FWriting;
  std::vector<std::pair<QPointer<QObject>, std::function<void()>>> FDeferred;
  std::vector<QPointer<QObject>> FMade;
};

class TQyStreamMedium : public TQyDocumentMedium {
public:
  TQyStreamMedium(QIODevice* device, bool writing) : TQyDocumentMedium(writing), FDevice(device) {}
  TKind Kind() const override { return TKind::Stream; }
  void Write(const QString& key, TQyFieldType type, const QVariant& value) override;
  QVariant Read(const QString& key, TQyFieldType type, const QVariant& def) override;
  void WriteItems(const QString& key, TQyFieldType type, const QVariantList& items) override;
  QVariantList ReadItems(const QString& key, TQyFieldType type) override;
  bool EnterElement(const QString&) override { return true; }
  bool EnterObject(const QString&) override { return true; }
  void Leave() override {}
  void WriteBlockFlag(bool more) override;
  bool ReadBlockFlag() override;
  int BeginChildren(const QString& key, int count) override;
  void EnterChild(int, QString&) override {}
  QIODevice* Device() const { return FDevice; }

private:
  QIODevice* FDevice;
};

class TQyNodeMedium : public TQyDocumentMedium {
public:
  TQyNodeMedium(const QDomElement& element, bool writing) : TQyDocumentMedium(writing), FStack{element} {}
  TKind Kind() const override { return TKind::Node; }
  void Write(const QString& key, TQyFieldType type, const QVariant& value) override;
  QVariant Read(const QString& key, TQyFieldType type, const QVariant& def) override;
  void WriteItems(const QString& key, TQyFieldType type, const QVariantList& items) override;
  QVariantList ReadItems(const QString& key, TQyFieldType type) override;
  bool EnterElement(const QString& path) override;
  bool EnterObject(const QString& key) override;
  void Leave() override { FStack.pop_back(); }
  int BeginChildren(const QString& key, int count) override;
  void EnterChild(int index, QString& className) override;

private:
  QDomElement Child(const QString& name, bool fresh);
  std::vector<QDomElement> FStack;
};

class TQyIniMedium : public TQyDocumentMedium {
public:
  TQyIniMedium(TQyIniFile& ini, const QString& section, const QString& prefix)
      : TQyDocumentMedium(true), FIni(&ini), FScopes{{section, prefix, {}}} {}
  TQyIniMedium(const TQyIniFile& ini, const QString& section, const QString& prefix)
      : TQyDocumentMedium(false), FIni(const_cast<TQyIniFile*>(&ini)), FScopes{{section, prefix, {}}} {} // never written through
  TKind Kind() const override { return TKind::Ini; }
  void Write(const QString& key, TQyFieldType type, const QVariant& value) override;
  QVariant Read(const QString& key, TQyFieldType type, const QVariant& def) override;
  void WriteItems(const QString& key, TQyFieldType type, const QVariantList& items) override;
  QVariantList ReadItems(const QString& key, TQyFieldType type) override;
  bool EnterElement(const QString&) override;
  bool EnterObject(const QString& key) override;
  void Leave() override { FScopes.pop_back(); }
  int BeginChildren(const QString& key, int count) override;
  void EnterChild(int index, QString& className) override;

private:
  // A section and the key prefix in it; a child list keeps its key for the children's sections.
  struct TScope {
    QString Section, Prefix, List;
  };
  QString KeyOf(const QString& key) const;
  const QString& Section() const { return FScopes.back().Section; }
  TQyIniFile* FIni;
  std::vector<TScope> FScopes;
};

// The walk over an object's record (its class's table and its bases'). `firstBlock`: only the
// entries of block 0 and no flags (a record spliced into another in a stream).
void QyWriteRecord(const QObject* object, TQyDocumentMedium& medium, bool firstBlock = false);
void QyReadRecord(QObject* object, TQyDocumentMedium& medium, bool firstBlock = false);

// A list of texts: counted items `itemKey` in a stream and in XML; in INI the count under
// `countKey` and one key "<itemKey>(<i>)" per text.
void QyWriteNumberedTexts(TQyRecordMedium& m, const QString& itemKey, const QString& countKey, const QStringList& texts);
QStringList QyReadNumberedTexts(TQyRecordMedium& m, const QString& itemKey, const QString& countKey);

// A float in the text of a document (a point, fifteen digits; a text that rounds beyond the
// largest double reads as it).
double QyFloatFromText(const QString& text);

// An enumeration takes only its own values from a document: EReadError for any other, so that no
// switch over it meets a value it does not know.
void QyCheckEnumValue(const QObject* object, const char* property, const QVariant& value);

// The hint switches of a widget's record, in element "Properties": hints show whenever there is
// a text, so both are written for other readers only.
TQyRecordEntry QyParentShowHintField();
TQyRecordEntry QyShowHintField();

// Whole documents of one object; the readers bind references before they return.
void QyWriteToStream(const QObject* object, QIODevice* stream);
void QyReadFromStream(QObject* object, QIODevice* stream, bool takeName = false);
void QyWriteToNode(const QObject* object, QDomElement& element);
void QyReadFromNode(QObject* object, const QDomElement& element, bool takeName = false);
void QyWriteToIni(const QObject* object, TQyIniFile& ini, const QString& section, const QString& prefix = {});
void QyReadFromIni(QObject* object, const TQyIniFile& ini, const QString& section,
                   const QString& prefix = {}, bool takeName = false);

// Defines the members that QY_DOCUMENT_MEMBERS declares, over the functions above.
#define QY_DOCUMENT_MEMBERS_IMPL(T)                                                                \
  void T::WriteTo(QIODevice* stream) const { QyWriteToStream(this, stream); }                      \
  void T::ReadFrom(QIODevice* stream, bool takeName) { QyReadFromStream(this, stream, takeName); } \
  void T::WriteTo(QDomElement& node) const { QyWriteToNode(this, node); }                          \
  void T::ReadFrom(const QDomElement& node, bool takeName) { QyReadFromNode(this, node, takeName); } \
  void T::WriteTo(TQyIniFile& ini, const QString& section) const { QyWriteToIni(this, ini, section); } \
  void T::ReadFrom(const TQyIniFile& ini, const QString& section, bool takeName) {                 \
    QyReadFromIni(this, ini, section, {}, takeName);                                               \
  }
