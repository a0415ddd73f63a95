#pragma once
// The process-wide registers of named functions, numeric variables, strings and numeric arrays
// that formulas and caption placeholders refer to, and the dependants lists through which an
// offering object tells the users of its values to parse their captions again.
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>

// Shapes of what a register entry offers.
using TQyOnePrmFunction = double (*)(double);
using TQyTwoPrmFunction = double (*)(double, double);
using TQyDoubleGetter = std::function<double()>;
using TQyStringGetter = std::function<QString()>;
using TQyArrayValGetter = std::function<double(int)>;

struct TQyFunctionRec {
  QString Name;
  QString Help;
  TQyOnePrmFunction Func = nullptr;
};

// An entry offered by an object (its Owner) or by nobody. The owner is watched: an entry whose
// owner died without removing it is skipped by every look-up instead of calling into freed memory.
struct TQyOwnedRec {
  QString Name;
  QString Help;
  QPointer<QObject> Owner;
  bool HasOwner = false;

  bool IsOrphan() const { return HasOwner && Owner.isNull(); }
  bool BelongsTo(const QObject* owner) const { return owner ? Owner.data() == owner : !HasOwner; }
  // The dotted reference of the owner, ".", the name; just the name without owner.
  QString QualifiedName() const;
};

template <class G> struct TQyGetterRec : TQyOwnedRec {
  G Getter;
};
using TQyDoubleGetterRec = TQyGetterRec<TQyDoubleGetter>;
using TQyStringGetterRec = TQyGetterRec<TQyStringGetter>;
using TQyDoubleArrayRec = TQyGetterRec<TQyArrayValGetter>;

using TQyFunctionsList = QList<TQyFunctionRec>;
using TQyDoubleGetterList = QList<TQyDoubleGetterRec>;
using TQyStringGetterList = QList<TQyStringGetterRec>;
using TQyDoubleArraysList = QList<TQyDoubleArrayRec>;

// The four registers. The function register holds the built-in functions from start-up on.
extern TQyFunctionsList GlobalFunctionList;
extern TQyDoubleGetterList GlobalVariableList;
extern TQyStringGetterList GlobalStringList;
extern TQyDoubleArraysList GlobalArrayList;

// Replace the entry of the same name (case-insensitive), else append.
void AddFunctionToList(const QString& name, const QString& help, TQyOnePrmFunction func, TQyFunctionsList& list);
// Replace the entry of the same owner and name (case-insensitive), else append.
void AddVariableToList(const QString& name, const QString& help, QObject* owner, TQyDoubleGetter getter,
                       TQyDoubleGetterList& list);
void AddStringToList(const QString& name, const QString& help, QObject* owner, TQyStringGetter getter,
                     TQyStringGetterList& list);
void AddArrayToList(const QString& name, const QString& help, QObject* owner, TQyArrayValGetter getter,
                    TQyDoubleArraysList& list);
// Delete every function whose name begins with `prefix` (case-sensitive).
void RemoveFromFunctionsList(const QString& prefix, TQyFunctionsList& list);
// Delete every entry of `owner`, keeping the order of the others.
void RemoveFromVariablesList(const QObject* owner, TQyDoubleGetterList& list);
void RemoveFromStringList(const QObject* owner, TQyStringGetterList& list);
void RemoveFromArrayList(const QObject* owner, TQyDoubleArraysList& list);

// ---- Publishing the values of an object (what a series' or graph's RegisterVariables calls)
// Each adds to the matching global register; the owner must not be null.
void RegisterStringVariable(QObject* owner, const QString& name, const QString& help, TQyStringGetter getter);
void RegisterDoubleVariable(QObject* owner, const QString& name, const QString& help, TQyDoubleGetter getter);
void RegisterArrayVariable(QObject* owner, const QString& name, const QString& help, TQyArrayValGetter getter);
// Removes all entries of `owner` from the variable, string and array registers (DeRegisterVariables).
void RemoveVariablesOfOwner(const QObject* owner);

// ---- Dependants
// Implemented by objects whose captions use registered values (labels, caption editors, axes,
// graphs, legends, markers): parse the captions again, then repaint.
class IQyVariablesUser {
public:
  virtual ~IQyVariablesUser() = default;
  virtual void VariablesChanged() = 0;
};

// The dependants list of an offering object (`VariableObjects` of series and graphs): the
// objects that used one of its values. Constructing it makes the owner one that keeps
// dependants; only such owners collect them. Freed dependants drop out by themselves.
class TQyVariableObjects {
public:
  explicit TQyVariableObjects(QObject* owner);
  ~TQyVariableObjects();
  TQyVariableObjects(const TQyVariableObjects&) = delete;
  TQyVariableObjects& operator=(const TQyVariableObjects&) = delete;

  void Add(QObject* dependant); // once; null is ignored
  void Remove(QObject* dependant);
  bool Contains(const QObject* dependant) const;
  int Count() const; // living dependants
  // The living dependants, in the order they came.
  QList<QObject*> Items() const;
  // Tells every dependant to parse again (UpdateVariablesObjects on this list).
  void Update() const;

private:
  QObject* FOwner;
  QList<QPointer<QObject>> FItems;
};

// The dependants list that `owner` keeps, or nullptr.
TQyVariableObjects* VariableObjectsOf(const QObject* owner);
// Enters `dependant` in the dependants list of `owner`, if the owner keeps one.
void RegisterDependant(const QObject* owner, QObject* dependant);
// Makes each object of the list that uses registered values parse its captions again.
void UpdateVariablesObjects(const TQyVariableObjects& list);
