#include "QyRegisters.h"
#include "QyComponent.h"
#include "QyExprFunctions.h"
#include <QHash>
#include <algorithm>

TQyFunctionsList GlobalFunctionList = QyExprFunctions::BuiltInFunctions();
TQyDoubleGetterList GlobalVariableList;
TQyStringGetterList GlobalStringList;
TQyDoubleArraysList GlobalArrayList;

namespace {
// The dotted path of a component from its form down; empty when it has no name.
QString ComponentPath(const QObject* component) {
  if (!component || component->objectName().isEmpty()) return {};
  QString path = component->objectName();
  for (const QObject* o = ComponentOwner(component); o; o = ComponentOwner(o))
    path = o->objectName() + '.' + path;
  return path;
}

template <class Rec, class G>
void AddOwned(const QString& name, const QString& help, QObject* owner, G getter, QList<Rec>& list) {
  Rec rec;
  rec.Name = name;
  rec.Help = help;
  rec.Owner = owner;
  rec.HasOwner = owner != nullptr;
  rec.Getter = std::move(getter);
  const QString upper = name.toUpper();
  for (Rec& r : list)
    if (r.BelongsTo(owner) && r.Name.toUpper() == upper) {
      r = std::move(rec);
      return;
    }
  list.append(std::move(rec));
}

template <class Rec> void RemoveOwned(const QObject* owner, QList<Rec>& list) {
  list.removeIf([owner](const Rec& r) { return r.BelongsTo(owner) || r.IsOrphan(); });
}

QHash<const QObject*, TQyVariableObjects*>& DependantLists() {
  static QHash<const QObject*, TQyVariableObjects*> lists;
  return lists;
}
} // namespace

QString TQyOwnedRec::QualifiedName() const {
  return HasOwner ? ComponentPath(Owner.data()) + '.' + Name : Name;
}

void AddFunctionToList(const QString& name, const QString& help, TQyOnePrmFunction func, TQyFunctionsList& list) {
  const QString upper = name.toUpper();
  for (TQyFunctionRec& r : list)
    if (r.Name.toUpper() == upper) {
      r = {name, help, func};
      return;
    }
  list.append({name, help, func});
}

void AddVariableToList(const QString& name, const QString& help, QObject* owner, TQyDoubleGetter getter,
                       TQyDoubleGetterList& list) {
  AddOwned(name, help, owner, std::move(getter), list);
}
void AddStringToList(const QString& name, const QString& help, QObject* owner, TQyStringGetter getter,
                     TQyStringGetterList& list) {
  AddOwned(name, help, owner, std::move(getter), list);
}
void AddArrayToList(const QString& name, const QString& help, QObject* owner, TQyArrayValGetter getter,
                    TQyDoubleArraysList& list) {
  AddOwned(name, help, owner, std::move(getter), list);
}

void RemoveFromFunctionsList(const QString& prefix, TQyFunctionsList& list) {
  list.removeIf([&prefix](const TQyFunctionRec& r) { return r.Name.startsWith(prefix); });
}
// Removing an owner's entries also sweeps entries whose owner has died.
void RemoveFromVariablesList(const QObject* owner, TQyDoubleGetterList& list) { RemoveOwned(owner, list); }
void RemoveFromStringList(const QObject* owner, TQyStringGetterList& list) { RemoveOwned(owner, list); }
void RemoveFromArrayList(const QObject* owner, TQyDoubleArraysList& list) { RemoveOwned(owner, list); }

void RegisterStringVariable(QObject* owner, const QString& name, const QString& help, TQyStringGetter getter) {
  if (owner) AddStringToList(name, help, owner, std::move(getter), GlobalStringList);
}
void RegisterDoubleVariable(QObject* owner, const QString& name, const QString& help, TQyDoubleGetter getter) {
  if (owner) AddVariableToList(name, help, owner, std::move(getter), GlobalVariableList);
}
void RegisterArrayVariable(QObject* owner, const QString& name, const QString& help, TQyArrayValGetter getter) {
  if (owner) AddArrayToList(name, help, owner, std::move(getter), GlobalArrayList);
}
void RemoveVariablesOfOwner(const QObject* owner) {
  if (!owner) return;
  RemoveFromVariablesList(owner, GlobalVariableList);
  RemoveFromStringList(owner, GlobalStringList);
  RemoveFromArrayList(owner, GlobalArrayList);
}

// ---- Dependants

TQyVariableObjects::TQyVariableObjects(QObject* owner) : FOwner(owner) {
  if (FOwner) DependantLists().insert(FOwner, this);
}

TQyVariableObjects::~TQyVariableObjects() {
  auto& lists = DependantLists();
  if (FOwner && lists.value(FOwner) == this) lists.remove(FOwner);
}

void TQyVariableObjects::Add(QObject* dependant) {
  if (dependant && !Contains(dependant)) FItems.append(dependant);
}

void TQyVariableObjects::Remove(QObject* dependant) {
  FItems.removeIf([dependant](const QPointer<QObject>& p) { return p.isNull() || p.data() == dependant; });
}

bool TQyVariableObjects::Contains(const QObject* dependant) const {
  return std::any_of(FItems.begin(), FItems.end(), [dependant](const QPointer<QObject>& p) { return p.data() == dependant; });
}

QList<QObject*> TQyVariableObjects::Items() const {
  QList<QObject*> items;
  for (const QPointer<QObject>& p : FItems)
    if (p) items.append(p.data());
  return items;
}

int TQyVariableObjects::Count() const { return static_cast<int>(Items().size()); }

void TQyVariableObjects::Update() const { UpdateVariablesObjects(*this); }

TQyVariableObjects* VariableObjectsOf(const QObject* owner) { return owner ? DependantLists().value(owner) : nullptr; }

void RegisterDependant(const QObject* owner, QObject* dependant) {
  if (TQyVariableObjects* list = VariableObjectsOf(owner)) list->Add(dependant);
}

void UpdateVariablesObjects(const TQyVariableObjects& list) {
  // A snapshot: re-parsing may add dependants to this very list.
  // Guarded: a dependant may free another one while it re-parses.
  const QList<QObject*> items = list.Items();
  const QList<QPointer<QObject>> guarded(items.begin(), items.end());
  for (const QPointer<QObject>& o : guarded)
    if (auto* user = dynamic_cast<IQyVariablesUser*>(o.data())) user->VariablesChanged();
}
