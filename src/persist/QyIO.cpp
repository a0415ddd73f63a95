#include "QyIO.h"
#include "QyComponent.h"
#include "QyStringFunctions.h"
#include <QApplication>
#include <QDir>
#include <QPointer>
#include <QWidget>
#include <vector>

QString GetTemporaryPath() {
  QString path = QDir::tempPath();
  // A temporary folder that does not exist has no canonical path, and an empty one would put
  // files into the root: keep the folder as named, so that creating a file there fails naming it.
  if (path.isEmpty()) path = qEnvironmentVariable("TMPDIR", QStringLiteral("/tmp"));
  if (!path.endsWith('/')) path += '/';
  return path;
}

// ---- component references

QString OwnerName(const QString& ref) {
  const int p = LastPointPos(ref); // 1-based, -1 without a point
  return p > 0 ? ref.left(p - 1) : QString();
}

QString ComponentName(const QString& ref) {
  const int p = LastPointPos(ref);
  return p > 0 ? ref.mid(p) : ref;
}

QObject* RefOwner(const QString& ref) {
  const QString owner = OwnerName(ref);
  return owner.isEmpty() ? QCoreApplication::instance() : GetComponentFromRef(owner);
}

QString GetComponentRef(const QObject* component) {
  if (!component || component->objectName().isEmpty()) return {};
  // The owner chain skips unnamed containers; it must still end at the form, else the path
  // would start below a window that cannot be found again.
  const QObject* form = ComponentForm(component);
  QString ref = component->objectName();
  const QObject* top = component;
  while (top != form) {
    QObject* o = ComponentOwner(top);
    if (!o || o == QCoreApplication::instance()) break;
    ref = o->objectName() + '.' + ref;
    top = o;
  }
  return top == form ? ref : QString();
}

static std::vector<QPointer<QObject>>& DataModules() {
  static std::vector<QPointer<QObject>> modules;
  return modules;
}

void RegisterDataModule(QObject* module) {
  if (module) DataModules().emplace_back(module);
}

void UnregisterDataModule(QObject* module) {
  auto& m = DataModules();
  std::erase_if(m, [module](const QPointer<QObject>& p) { return !p || p == module; });
}

static QObject* FindTopLevel(const QString& name) {
  for (const QPointer<QObject>& m : DataModules())
    if (m && m->objectName() == name) return m;
  if (qobject_cast<QApplication*>(QCoreApplication::instance()))
    for (QWidget* w : QApplication::topLevelWidgets())
      if (w->objectName() == name) return w;
  return nullptr;
}

QObject* GetComponentFromRef(const QString& ref) {
  if (ref.isEmpty()) return nullptr;
  const QStringList names = ref.split('.');
  QObject* c = FindTopLevel(names.front());
  for (qsizetype i = 1; c && i < names.size(); ++i) c = FindComponent(c, names[i]);
  return c;
}

// ---- stream strings

void StringToStream(QIODevice* stream, const QByteArray& utf8) {
  TQyByteWriter w(stream);
  w.WriteInt32(qint32(utf8.size()));
  w.WriteBytes(utf8);
}

void StringToStream(QIODevice* stream, const QString& text) { StringToStream(stream, text.toUtf8()); }

QString StringFromStream(QIODevice* stream) {
  TQyByteReader r(stream);
  const qint32 n = r.ReadInt32();
  return n > 0 ? QString::fromUtf8(r.ReadBytes(n)) : QString();
}

void EncodeToStream(QIODevice* stream, const QString& text) { StringToStream(stream, text); }

QString DecodeFromStream(QIODevice* stream) { return StringFromStream(stream); }

// ---- INI values

static const QString IniReturn = QStringLiteral("@\\r");

QString EncodeForIni(const QString& text) {
  QString s = text;
  return s.replace(QChar('\r'), IniReturn);
}

QString DecodeFomIni(const QString& text) {
  QString s = text;
  return s.replace(IniReturn, QString(QChar('\r')));
}

// ---- XML

bool ContainsNode(const QDomElement& node, const QString& name) {
  for (QDomNode n = node.firstChild(); !n.isNull(); n = n.nextSibling())
    if (n.isElement() && n.nodeName() == name) return true;
  return false;
}

// ---- floats in value streams

void StoreFloatToString(TQyValueWriter& writer, double value) { writer.WriteString(DoubleToStr(value)); }

double GetFloatFromStringOrFloat(TQyValueReader& reader) {
  if (reader.NextValue() == TQyValueType::String) return DoubleFromStr(reader.ReadString());
  return reader.ReadFloat();
}
