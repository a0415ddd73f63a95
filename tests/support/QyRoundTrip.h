#pragma once
// Writes an object's document record to one medium and reads it into another object.
#include <QBuffer>
#include <QDomDocument>
#include <QyIniFile.h>
#include <QyRecordMedia.h>
#include <gtest/gtest.h>

// medium 0: binary stream (read to its end), 1: XML element, 2: INI section "Section", prefix "S".
inline void QyRoundTrip(int medium, QObject* from, QObject* to, TQyIniFile& ini) {
  if (medium == 0) {
    QByteArray bytes;
    QBuffer out(&bytes);
    out.open(QIODevice::WriteOnly);
    QyWriteToStream(from, &out);
    QBuffer in(&bytes);
    in.open(QIODevice::ReadOnly);
    QyReadFromStream(to, &in);
    EXPECT_TRUE(in.atEnd());
  } else if (medium == 1) {
    QDomDocument dom;
    QDomElement e = dom.createElement("Series");
    QyWriteToNode(from, e);
    QyReadFromNode(to, e);
  } else {
    QyWriteToIni(from, ini, "Section", "S");
    QyReadFromIni(to, ini, "Section", "S");
  }
}
