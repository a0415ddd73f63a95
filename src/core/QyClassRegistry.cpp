#include "QyClassRegistry.h"
#include <QHash>

namespace {
struct TClass {
  const QMetaObject* Meta = nullptr;
  TQyComponentFactory Factory;
};
// Filled by static registrations while the library loads: a function-local table, so that the
// order of static initialisation across units does not matter.
QHash<QString, TClass>& Classes() {
  static QHash<QString, TClass> classes;
  return classes;
}
} // namespace

void QyRegisterClass(const QMetaObject& meta, TQyComponentFactory factory) {
  Classes().insert(QString::fromLatin1(meta.className()), {&meta, std::move(factory)});
}

const QMetaObject* QyFindClass(const QString& className) {
  auto it = Classes().constFind(className);
  return it == Classes().constEnd() ? nullptr : it->Meta;
}

QObject* QyCreateComponent(const QString& className, QObject* owner) {
  auto it = Classes().constFind(className);
  return it == Classes().constEnd() ? nullptr : it->Factory(owner);
}

QStringList QyRegisteredClasses() { return Classes().keys(); }
