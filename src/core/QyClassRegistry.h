#pragma once
// Components by class name: document readers and the undo stack make the objects that a document
// or an undo record names. Each class that can be made so registers once, next to its own code:
//   QY_REGISTER_CLASS(TQyLineSeries)
// A registered class needs a constructor that takes its owner (a QObject*, or a QWidget* for
// controls). Objects made here have completed their construction (QyCreate).
#include "QyComponent.h"
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <type_traits>

using TQyComponentFactory = std::function<QObject*(QObject* owner)>;

// Registers `factory` under the class name of `meta`; a second registration replaces the first.
void QyRegisterClass(const QMetaObject& meta, TQyComponentFactory factory);
// The registered class of that name, or nullptr.
const QMetaObject* QyFindClass(const QString& className);
// Makes a component of the named class on `owner`; nullptr for an unknown class.
QObject* QyCreateComponent(const QString& className, QObject* owner);
QStringList QyRegisteredClasses();

template <class T> struct TQyClassRegistration {
  TQyClassRegistration() {
    QyRegisterClass(T::staticMetaObject, [](QObject* owner) -> QObject* {
      if constexpr (std::is_base_of_v<QWidget, T>) return QyCreate<T>(qobject_cast<QWidget*>(owner));
      else return QyCreate<T>(owner);
    });
  }
};

#define QY_REGISTER_CLASS_CAT2(a, b) a##b
#define QY_REGISTER_CLASS_CAT(a, b) QY_REGISTER_CLASS_CAT2(a, b)
#define QY_REGISTER_CLASS(T)                                                                       \
  static const TQyClassRegistration<T> QY_REGISTER_CLASS_CAT(QyClassRegistration_, __LINE__)
