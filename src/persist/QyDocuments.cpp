// The document members of the classes with records, and the free functions of the style objects,
// all over the walk of QyRecordMedia.
#include "QyDocuments.h"
#include "QyAxis.h"
#include "QyRecordMedia.h"
#include "QyRichLabel.h"
#include "QySeries.h"
#include "QyStyles.h"
#include "QyVectors.h"
#include "QyXml.h"

QY_DOCUMENT_MEMBERS_IMPL(TQyDoubleVector)
QY_DOCUMENT_MEMBERS_IMPL(TQyAxis)
QY_DOCUMENT_MEMBERS_IMPL(TQySeries)

namespace {
void NodeOf(QDomElement& node, const QObject& o, const QString& name) {
  QDomElement child = AddChildElement(node, name);
  QyWriteToNode(&o, child);
}
void FromNodeOf(const QDomElement& node, QObject& o, const QString& name) {
  const QDomElement child = ChildElement(node, name);
  if (!child.isNull()) QyReadFromNode(&o, child);
}
} // namespace

void ToStream(QIODevice* stream, const TQyStyleObject& s) { QyWriteToStream(&s, stream); }
void FromStream(QIODevice* stream, TQyStyleObject& s) { QyReadFromStream(&s, stream); }
void ToNode(QDomElement& node, const TQyStyleObject& s, const QString& name) { NodeOf(node, s, name); }
void FromNode(const QDomElement& node, TQyStyleObject& s, const QString& name) { FromNodeOf(node, s, name); }
void ToIni(TQyIniFile& ini, const QString& section, const QString& prefix, const TQyStyleObject& s) {
  QyWriteToIni(&s, ini, section, prefix);
}
void FromIni(const TQyIniFile& ini, const QString& section, const QString& prefix, TQyStyleObject& s) {
  QyReadFromIni(&s, ini, section, prefix);
}

void ToStream(QIODevice* stream, const TQyFont& f) { QyWriteToStream(&f, stream); }
void FromStream(QIODevice* stream, TQyFont& f) { QyReadFromStream(&f, stream); }
void ToNode(QDomElement& node, const TQyFont& f, const QString& name) { NodeOf(node, f, name); }
void FromNode(const QDomElement& node, TQyFont& f, const QString& name) { FromNodeOf(node, f, name); }
void ToIni(TQyIniFile& ini, const QString& section, const QString& prefix, const TQyFont& f) {
  QyWriteToIni(&f, ini, section, prefix);
}
void FromIni(const TQyIniFile& ini, const QString& section, const QString& prefix, TQyFont& f) {
  QyReadFromIni(&f, ini, section, prefix);
}
