// References, stream strings, INI escapes and the INI document, XML look-up, floats in streams.
#include "QyExpect.h"
#include <gtest/gtest.h>
#include <QApplication>
#include <QBuffer>
#include <QDomDocument>
#include <QTemporaryDir>
#include <QWidget>
#include <QyExceptions.h>
#include <QyIO.h>
#include <QyIniFile.h>
#include <QyXml.h>
#include <memory>

TEST(PersistRefs, PathsFromTheFormDown) {
  auto form = std::make_unique<QWidget>();
  form->setObjectName("RefForm1");
  auto* graph = new QWidget(form.get());
  graph->setObjectName("Graph1");
  auto* unnamed = new QObject(graph);
  auto* axis = new QObject(unnamed); // the unnamed container is skipped: the owner is Graph1
  axis->setObjectName("Axis2");
  EXPECT_EQ(GetComponentRef(axis), "RefForm1.Graph1.Axis2");
  EXPECT_EQ(GetComponentFromRef("RefForm1.Graph1.Axis2"), axis);
  EXPECT_EQ(GetComponentFromRef("RefForm1.Graph1.Axis9"), nullptr);
  EXPECT_EQ(GetComponentFromRef("NoForm.Graph1"), nullptr);
  EXPECT_EQ(GetComponentFromRef("refform1.Graph1"), nullptr) << "names are case-sensitive";
  EXPECT_EQ(GetComponentRef(unnamed), "");
  EXPECT_EQ(GetComponentRef(nullptr), "");
  EXPECT_EQ(RefOwner("RefForm1.Graph1.Axis2"), graph);
  EXPECT_EQ(RefOwner("Axis2"), QCoreApplication::instance());
  EXPECT_EQ((QStringList{OwnerName("Axis2"), ComponentName("Axis2")}), (QStringList{"", "Axis2"}));
  EXPECT_EQ((QStringList{OwnerName("A.B.C"), ComponentName("A.B.C")}), (QStringList{"A.B", "C"}));

  QObject lone;
  lone.setObjectName("Lone");
  EXPECT_EQ(GetComponentRef(&lone), "Lone") << "no owner: the name alone";
  auto* inLone = new QObject(&lone);
  inLone->setObjectName("Vector1");
  EXPECT_EQ(GetComponentFromRef("Lone.Vector1"), nullptr) << "not a form";
  RegisterDataModule(&lone);
  EXPECT_EQ(GetComponentFromRef("Lone.Vector1"), inLone);
  UnregisterDataModule(&lone);

  auto unnamedForm = std::make_unique<QWidget>();
  auto* g2 = new QWidget(unnamedForm.get());
  g2->setObjectName("Graph2");
  auto* a2 = new QObject(g2);
  a2->setObjectName("Axis1");
  EXPECT_EQ(GetComponentRef(a2), "") << "a path below an unnamed form cannot be resolved";
}

TEST(PersistStrings, StreamStringFormat) {
  QBuffer b;
  b.open(QIODevice::ReadWrite);
  StringToStream(&b, QString());
  EXPECT_EQ(b.data(), QByteArray(4, '\0'));
  const QString text = QString::fromUtf8("Größe µ 轴 \xF0\x9F\x93\x88");
  StringToStream(&b, text);
  EncodeToStream(&b, "caption\rsecond");
  StringToStream(&b, QByteArray("\xC3\xA4", 2));
  const QByteArray bytes = b.data();
  // Length little-endian, then the UTF-8 bytes: checked against Qt's own encoder.
  const QByteArray utf8 = text.toUtf8();
  EXPECT_EQ(quint8(bytes[4]), utf8.size());
  EXPECT_EQ(bytes.mid(8, utf8.size()), utf8);
  b.seek(0);
  EXPECT_EQ(StringFromStream(&b), "");
  EXPECT_EQ(DecodeFromStream(&b), text);
  EXPECT_EQ(StringFromStream(&b), "caption\rsecond");
  EXPECT_EQ(StringFromStream(&b), QString::fromUtf8("ä"));
  EXPECT_EQ(QyMessageOf<EReadError>([&] { StringFromStream(&b); }), "Stream read error");

  QBuffer bad; // a negative length is an empty string; a length past the end is an error
  bad.setData(QByteArray("\xFF\xFF\xFF\xFF" "\x10\x00\x00\x00" "ab", 10));
  bad.open(QIODevice::ReadOnly);
  EXPECT_EQ(StringFromStream(&bad), "");
  EXPECT_THROW(StringFromStream(&bad), EReadError);
}

TEST(PersistStrings, IniEscapes) {
  EXPECT_EQ(EncodeForIni("a\rb\nc"), "a@\\rb\nc");
  EXPECT_EQ(DecodeFomIni("a@\\rb\nc"), "a\rb\nc");
  EXPECT_EQ(DecodeFomIni(EncodeForIni("x\r\ry")), "x\r\ry");
  EXPECT_EQ(DecodeFomIni(EncodeForIni("@\\r")), "\r") << "the notation cannot hold its own triple";
}

TEST(PersistIni, OrderCaseAndValues) {
  TQyIniFile ini;
  ini.WriteString("Graph", "Caption", EncodeForIni("Two\rlines"));
  ini.WriteFloat("Graph", "Start", -1.5e-7);
  ini.WriteBool("Axis", "Visible", false);
  ini.WriteInteger("Axis", "Position", 3);
  ini.WriteString("graph", "caption", "changed"); // same key, other case: replaced in place
  EXPECT_EQ(ini.ReadSections(), (QStringList{"Graph", "Axis"}));
  EXPECT_EQ(ini.ReadSection("GRAPH"), (QStringList{"Caption", "Start"}));
  EXPECT_EQ(ini.ReadString("Graph", "Caption", "?"), "changed");
  EXPECT_EQ(ini.ReadInteger("Axis", "Missing", 7), 7);
  EXPECT_EQ(ini.ReadFloat("Axis", "Position", 0), 3.0);
  ini.WriteString("Axis", "Bad", "1,5");
  EXPECT_EQ(ini.ReadFloat("Axis", "Bad", 9), 9.0);

  const QStringList lines = ini.GetStrings();
  EXPECT_EQ(lines.mid(0, 3), (QStringList{"[Graph]", "Caption=changed", "Start=-1.5E-7"}));
  TQyIniFile copy;
  copy.SetStrings(QStringList{"; comment", "[Graph]", " Caption = a=b ", "[Axis]", "Visible=1"});
  EXPECT_EQ(copy.ReadString("Graph", "Caption", ""), " a=b") << "the value keeps what follows '='";
  EXPECT_TRUE(copy.ReadBool("Axis", "Visible", false));
  copy.DeleteKey("Axis", "visible");
  EXPECT_FALSE(copy.ValueExists("Axis", "Visible"));
  copy.EraseSection("GRAPH");
  EXPECT_EQ(copy.ReadSections(), QStringList{"Axis"});

  QTemporaryDir dir;
  TQyIniFile file(dir.path() + "/settings.ini");
  file.WriteString("[Odd] Section", "Key/with@chars", "v");
  file.UpdateFile();
  TQyIniFile again(dir.path() + "/settings.ini");
  EXPECT_EQ(again.ReadString("[Odd] Section", "Key/with@chars", ""), "v");
  TQyIniFile nowhere("/proc/no-such-folder/x.ini");
  EXPECT_THROW(nowhere.UpdateFile(), EStreamError);
}

TEST(PersistXml, NodesAttributesAndFloatsInValueStreams) {
  QDomDocument doc;
  QDomElement root = doc.createElement("Graph");
  doc.appendChild(root);
  QDomElement line = AddChildElement(root, "Line");
  SetAttrFloat(line, "Width", 0.1);
  AddChildElement(line, "Gradient");
  EXPECT_TRUE(ContainsNode(root, "Line"));
  EXPECT_FALSE(ContainsNode(root, "Gradient")) << "direct children only";
  EXPECT_FALSE(ContainsNode(root, "line"));
  EXPECT_EQ(line.attribute("Width"), "0.1"); // values of all kinds come back in the record round trips
  EXPECT_EQ(AttrFloat(line, "Missing", 2.5), 2.5);
  EXPECT_EQ(QyMessageOf<EReadError>([&] { RequiredChildElement(root, "Area"); }),
            "XMLReadError: node \"Area\" not found");

  QBuffer b;
  b.open(QIODevice::ReadWrite);
  TQyValueWriter w(&b);
  StoreFloatToString(w, 0.1); // text of 15 significant digits
  w.WriteFloat(2.75); // an old binary value
  w.WriteInteger(4);
  b.seek(0);
  TQyValueReader r(&b);
  EXPECT_EQ(r.NextValue(), TQyValueType::String);
  EXPECT_EQ(GetFloatFromStringOrFloat(r), 0.1);
  EXPECT_EQ(GetFloatFromStringOrFloat(r), 2.75);
  EXPECT_EQ(GetFloatFromStringOrFloat(r), 4.0);
  EXPECT_THROW(r.ReadInteger(), EReadError);
}
