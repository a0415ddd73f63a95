// The free functions of the style objects, over the walk of QyRecordMedia. Classes with document
// members define them beside their records (QY_DOCUMENT_MEMBERS_IMPL).
#include "QyDocuments.h"
#include "QyRecordMedia.h"
#include "QyXml.h"

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
