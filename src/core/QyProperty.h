#pragma once
// The one setter of the library. Every published property goes through QyAssign:
//   compare (equal does nothing), record on the undo stack, store, raise one flag, signal.
// The QY_PROPERTY macros declare the Q_PROPERTY, the getter, the setter and the field in one line,
// so that run-time property access (undo, links, documents) sees every published name.
#include <QMetaMethod>
#include <QObject>
#include <QPointer>
#include <QString>
#include <cmath>
#include <type_traits>
#include <utility>

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
  // While a document is read nothing is recorded, whichever object the reader changes; calls nest.
  virtual void SetReading(bool on) { (void)on; }
};

// Mixin for every class whose setters record. A part that the graph hands the stack to holds it;
// objects nested in another (setting groups, fonts) find it up their QObject parent chain.
class TQyRecording {
public:
  virtual ~TQyRecording() = default;
  // The stack the setters record on (nullptr: none).
  virtual TQyUndoRecorder* UndoRecorder() const { return FUndoRecorder.data(); }
  // Records the present value of `propertyName` of `self` (this object) before a real change,
  // under `caption` (an entry of the message table; nullptr records nothing).
  virtual void RecordChange(QObject* self, const char* caption, const char* propertyName);
  bool Destroying() const { return FDestroying; }

protected:
  void SetUndoRecorder(TQyUndoRecorder* recorder) { FUndoRecorder = recorder; }
  QPointer<TQyUndoRecorder> FUndoRecorder;
  bool FDestroying = false; // set first thing in every destructor
};

// The nearest recording object above `object` in its parent chain, or nullptr.
TQyRecording* QyRecordingOwner(const QObject* object);

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

// Brackets the records made while it lives into one entry under `caption` (nothing without a
// recording stack): for setters whose notification changes further recorded properties.
class TQyUndoGroup {
public:
  TQyUndoGroup(TQyUndoRecorder* recorder, const char* caption);
  ~TQyUndoGroup();
  TQyUndoGroup(const TQyUndoGroup&) = delete;
  TQyUndoGroup& operator=(const TQyUndoGroup&) = delete;

private:
  QPointer<TQyUndoRecorder> FRecorder;
};

// The setter pattern. Returns true when the value changed. `self` is the recording object
// (QY_RECORDING_SIGNAL declares its signal). A reference to another component is a QPointer
// field: it records and replays as the object itself.
template <class Self, class T, class Notify>
bool QyAssign(Self* self, T& field, const std::type_identity_t<T>& value, const char* caption,
              const char* propertyName, Notify&& notify) {
  if (QyEqual(field, value)) return false;
  self->RecordChange(self, caption, propertyName);
  field = value;
  notify();
  self->EmitPropertyChanged(propertyName);
  return true;
}

// The setter pattern for a setter whose notification changes further recorded properties (a
// font, a widget's state): one undo entry under `caption` holds them all.
template <class Self, class T, class Notify>
bool QyAssignGrouped(Self* self, T& field, const std::type_identity_t<T>& value, const char* caption,
                     const char* propertyName, Notify&& notify) {
  if (QyEqual(field, value)) return false;
  TQyUndoGroup group(self->UndoRecorder(), caption);
  return QyAssign(self, field, value, caption, propertyName, std::forward<Notify>(notify));
}

// The change signal of a recording class, declared once per class tree beside Q_OBJECT.
// Every setter that goes through QyAssign emits PropertyChanged(name) after its store and
// notification; without a listener the setter pays one bit test.
#define QY_RECORDING_SIGNAL(Class)                                                                 \
  Q_SIGNALS:                                                                                       \
  void PropertyChanged(const QString& name);                                                       \
                                                                                                   \
public:                                                                                            \
  void EmitPropertyChanged(const char* name) {                                                     \
    static const QMetaMethod signal = QMetaMethod::fromSignal(&Class::PropertyChanged);            \
    if (isSignalConnected(signal)) Q_EMIT PropertyChanged(QString::fromLatin1(name));              \
  }                                                                                                \
                                                                                                   \
private:

// A published property with the standard setter. `Notify` is the statement that raises the flag,
// e.g. Modified() or Invalidate(); `Caption` an entry of the message table or nullptr for none.
// Use inside a recording class; follow with `= default value;` and an access label.
#define QY_PROPERTY(Type, Name, Caption, Notify)                                                   \
  Q_PROPERTY(Type Name READ Get##Name WRITE Set##Name)                                             \
public:                                                                                            \
  Type Get##Name() const { return F##Name; }                                                       \
  void Set##Name(Type value) { QyAssign(this, F##Name, value, Caption, #Name, [this] { Notify; }); } \
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
