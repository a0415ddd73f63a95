#include "QyComponent.h"
#include <QWidget>

QObject* ComponentOwner(const QObject* component) {
  for (QObject* p = component ? component->parent() : nullptr; p; p = p->parent())
    if (!p->objectName().isEmpty()) return p;
  return nullptr;
}

QObject* ComponentForm(const QObject* component) {
  QObject* top = const_cast<QObject*>(component);
  while (top && top->parent()) {
    if (auto* w = qobject_cast<QWidget*>(top); w && w->isWindow()) break;
    top = top->parent();
  }
  return top;
}

QObject* FindComponent(const QObject* owner, const QString& name) {
  if (!owner || name.isEmpty()) return nullptr;
  return owner->findChild<QObject*>(name, Qt::FindChildrenRecursively);
}

QString UniqueName(const QObject* owner, const QString& base) {
  for (int i = 1;; ++i) {
    const QString candidate = base + QString::number(i);
    if (!owner || !FindComponent(owner, candidate)) return candidate;
  }
}

void TQyDeferredInit::DeferInit(QObject* self) {
  // The context object drops the call if the component is gone before the event loop runs.
  QMetaObject::invokeMethod(self, [self] { QyEnsureInit(self); }, Qt::QueuedConnection);
}

void QyEnsureInit(QObject* object) {
  auto* init = dynamic_cast<TQyDeferredInit*>(object);
  if (!init || init->FInitialized) return;
  init->FInitialized = true; // first: AfterConstruction may reach code that asks again
  init->AfterConstruction();
}
