#pragma once
// Component glue: names, the owner chain and look-up by name, on top of QObject's tree.
// A component's owner is its nearest named ancestor; a top-level window is a form.
#include <QObject>
#include <QString>
#include <utility>

// The nearest ancestor with a name (the component owner), or nullptr.
QObject* ComponentOwner(const QObject* component);
// The form: the top-level widget above the component (or its outermost ancestor).
QObject* ComponentForm(const QObject* component);
// Recursive look-up of a named component below `owner` (exact, case-sensitive name).
QObject* FindComponent(const QObject* owner, const QString& name);
// A sub-component is part of another component, which makes it and keeps its settings: documents
// leave it out.
void QySetSubComponent(QObject* component, bool value = true);
bool QyIsSubComponent(const QObject* component);
// `base` followed by 1, 2, 3, ...: the first name that `owner` does not know; base + "1" without owner.
QString UniqueName(const QObject* owner, const QString& base);

// ---- The construction rule -------------------------------------------------------------------
// C++ does not dispatch a virtual call from a constructor to the derived class. So constructors
// only set fields; work that needs the final class (defaults named after the class, publishing
// variables, anything a derived class overrides) goes into AfterConstruction(), which runs
// exactly once, after the most derived constructor has finished:
//   - at once, for objects made by QyCreate<T>(...) or by the class registry;
//   - otherwise at its first use (the graph taking the object in, a paint, a document reader,
//     the undo stack; QyEnsureInit is cheap and safe to call anywhere), at the first look-up of
//     the named-value registers (QyCompleteConstruction: what an object publishes is there before
//     anybody asks), or from a queued call that the constructor posts, whichever comes first.
class TQyDeferredInit {
public:
  virtual ~TQyDeferredInit();
  bool Initialized() const { return FInitialized; }

protected:
  // The second phase of construction. Derived classes call the inherited one first.
  virtual void AfterConstruction() {}
  // Called by the constructor of a class that needs the second phase: posts the queued call.
  void DeferInit(QObject* self);

private:
  friend void QyEnsureInit(QObject* object);
  bool FInitialized = false;
};

// Runs AfterConstruction of `object` now unless it already ran (nothing for other objects).
void QyEnsureInit(QObject* object);
// Completes the construction of every object of this thread still waiting for it.
void QyCompleteConstruction();

// Makes a component and completes its construction at once.
template <class T, class... Args> T* QyCreate(Args&&... args) {
  T* object = new T(std::forward<Args>(args)...);
  QyEnsureInit(object);
  return object;
}
