#pragma once
// The one setter of the library. Every published property goes through QyAssign:
//   compare (equal does nothing), record on the undo stack, store, raise one flag.
// The QY_PROPERTY macros declare the Q_PROPERTY, the getter, the setter and the field in one line,
// so that run-time property access (undo, links, documents) sees every published name.
#include <QObject>
#include <QPointer>
#include <QString>
#include <cmath>
#include <type_traits>

// What a setter needs of the undo stack. The undo stack implements it; the core knows no more.
class TQyUndoRecorder : public QObject {
  Q_OBJECT
public:
  using QObject::QObject;
  // True while changes are recorded (false while the stack itself restores a state).
  virtual bool IsRecording() const = 0;
  // Records the current value of `propertyName` of `object` under `caption`, before a change.
  virtual void PushProperty(QObject* object, const QString& caption, const char* propertyName) = 0;
  // Records the whole data of a vector (values and outliers) under `caption`.
  virtual void PushVectorState(QObject* vector, const QString& caption) { (void)vector, (void)caption; }
  // Brackets records so that they make one entry under `caption`; groups may nest.
  virtual void StartGroup(const QString& caption) { (void)caption; }
  virtual void StopGroup() {}
};

// Mixin for every class whose setters record: holds the stack reference and the destroying flag.
class TQyRecording {
public:
  TQyUndoRecorder* UndoRecorder() const { return FUndoRecorder.data(); }
  bool Destroying() const { return FDestroying; }

protected:
  void SetUndoRecorder(TQyUndoRecorder* recorder) { FUndoRecorder = recorder; }
  QPointer<TQyUndoRecorder> FUndoRecorder;
  bool FDestroying = false; // set first thing in every destructor
};

// Equality as the setters compare: plain ==, except that two NaNs count as equal (so that a
// NaN cannot record endless undo entries) for floating-point types.
template <class T> bool QyEqual(const T& a, const T& b) {
  if constexpr (std::is_floating_point_v<T>)
    return a == b || (std::isnan(a) && std::isnan(b));
  else
    return a == b;
}

void QyRecordChange(TQyUndoRecorder* recorder, QObject* object, const char* caption,
                    const char* propertyName);

// The setter pattern. Returns true when the value changed.
template <class T, class Notify>
bool QyAssign(QObject* self, TQyUndoRecorder* recorder, T& field, const T& value,
              const char* caption, const char* propertyName, Notify&& notify) {
  if (QyEqual(field, value)) return false;
  QyRecordChange(recorder, self, caption, propertyName);
  field = value;
  notify();
  return true;
}

// A published property with the standard setter. `Notify` is the statement that raises the flag,
// e.g. Modified() or Invalidate(); `Caption` an entry of the message table or nullptr for none.
// Use inside a class that has UndoRecorder(); follow with `= default value;` and an access label.
#define QY_PROPERTY(Type, Name, Caption, Notify)                                                   \
  Q_PROPERTY(Type Name READ Get##Name WRITE Set##Name)                                             \
public:                                                                                            \
  Type Get##Name() const { return F##Name; }                                                       \
  void Set##Name(Type value) {                                                                     \
    QyAssign(this, UndoRecorder(), F##Name, value, Caption, #Name, [this] { Notify; });            \
  }                                                                                                \
                                                                                                   \
protected:                                                                                         \
  Type F##Name

// A published property whose setter has more to do; Set##Name is written out in the .cpp and
// still goes through QyAssign.
#define QY_PROPERTY_CUSTOM(Type, Name)                                                             \
  Q_PROPERTY(Type Name READ Get##Name WRITE Set##Name)                                             \
public:                                                                                            \
  Type Get##Name() const { return F##Name; }                                                       \
  void Set##Name(Type value);                                                                      \
                                                                                                   \
protected:                                                                                         \
  Type F##Name

// A published object property (setting groups like line settings): read-only pointer, the group
// records its own changes.
#define QY_PROPERTY_OBJECT(Type, Name)                                                             \
  Q_PROPERTY(Type* Name READ Get##Name)                                                            \
public:                                                                                            \
  Type* Get##Name() const { return F##Name; }                                                      \
                                                                                                   \
protected:                                                                                         \
  Type* F##Name = nullptr
