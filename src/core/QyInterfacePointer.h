#pragma once
// A reference to a component through one of its interfaces, cleared when the component is
// destroyed: the QPointer of an interface. A lower layer keeps its partners of a higher layer so,
// without knowing their classes.
#include <QObject>
#include <QPointer>

template <class I> class TQyInterfacePointer {
public:
  TQyInterfacePointer() = default;
  // The component must be a QObject; anything else is kept as no reference.
  TQyInterfacePointer(I* i) : FObject(dynamic_cast<QObject*>(i)), FInterface(FObject ? i : nullptr) {}
  I* data() const { return FObject ? FInterface : nullptr; }
  QObject* object() const { return FObject.data(); }
  I* operator->() const { return data(); }
  operator I*() const { return data(); }

private:
  QPointer<QObject> FObject;
  I* FInterface = nullptr;
};
