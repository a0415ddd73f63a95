#include "QyComponent.h"
#include <QWidget>
#include <vector>

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

void QySetSubComponent(QObject* component, bool value) { component->setProperty("QySubComponent", value); }

bool QyIsSubComponent(const QObject* component) { return component->property("QySubComponent").toBool(); }

QString UniqueName(const QObject* owner, const QString& base) {
  for (int i = 1;; ++i) {
    const QString candidate = base + QString::number(i);
    if (!owner || !FindComponent(owner, candidate)) return candidate;
  }
}

namespace {
// Objects of this thread whose second phase has not run yet, in the order they were made.
thread_local std::vector<std::pair<TQyDeferredInit*, QObject*>> PendingInits;
} // namespace

TQyDeferredInit::~TQyDeferredInit() {
  if (FInitialized) return;
  std::erase_if(PendingInits, [this](const auto& p) { return p.first == this; });
}

void TQyDeferredInit::DeferInit(QObject* self) {
  PendingInits.emplace_back(this, self);
  // The context object drops the call if the component is gone before the event loop runs.
  QMetaObject::invokeMethod(self, [self] { QyEnsureInit(self); }, Qt::QueuedConnection);
}

void QyEnsureInit(QObject* object) {
  auto* init = dynamic_cast<TQyDeferredInit*>(object);
  if (!init || init->FInitialized) return;
  init->FInitialized = true; // first: AfterConstruction may reach code that asks again
  std::erase_if(PendingInits, [init](const auto& p) { return p.first == init; });
  init->AfterConstruction();
}

void QyCompleteConstruction() {
  while (!PendingInits.empty()) QyEnsureInit(PendingInits.front().second);
}
