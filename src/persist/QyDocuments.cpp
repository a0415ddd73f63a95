// The document members of the classes with records, and the free functions of the style objects,
// all over the walk of QyRecordMedia.
#include "QyDocuments.h"
#include "QyAxis.h"
#include "QyRecordMedia.h"
#include "QySeries.h"
#include "QyVectors.h"
#include "QyXml.h"

QY_DOCUMENT_MEMBERS_IMPL(TQyDoubleVector)
QY_DOCUMENT_MEMBERS_IMPL(TQyAxis)
QY_DOCUMENT_MEMBERS_IMPL(TQySeries)

void ToStream(QIODevice* stream, const QObject& s) { QyWriteToStream(&s, stream); }
void FromStream(QIODevice* stream, QObject& s) { QyReadFromStream(&s, stream); }

void ToNode(QDomElement& node, const QObject& s, const QString& name) {
  QDomElement child = AddChildElement(node, name);
  QyWriteToNode(&s, child);
}

void FromNode(const QDomElement& node, QObject& s, const QString& name) {
  const QDomElement child = ChildElement(node, name);
  if (!child.isNull()) QyReadFromNode(&s, child);
}

void ToIni(TQyIniFile& ini, const QString& section, const QString& prefix, const QObject& s) {
  QyWriteToIni(&s, ini, section, prefix);
}

void FromIni(const TQyIniFile& ini, const QString& section, const QString& prefix, QObject& s) {
  QyReadFromIni(&s, ini, section, prefix);
}
