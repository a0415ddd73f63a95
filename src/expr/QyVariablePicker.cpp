#include "QyVariablePicker.h"
#include "QyRegisters.h"

namespace {
QStandardItem* ParentOf(const QStandardItem* item) {
  return item->parent() ? item->parent() : item->model()->invisibleRootItem();
}

// Depth-first, parents before children: the order in which the tree lists its nodes.
QStandardItem* NextInTree(const QStandardItem* item) {
  if (item->hasChildren()) return item->child(0);
  for (const QStandardItem* i = item; i; i = i->parent()) {
    QStandardItem* parent = ParentOf(i);
    if (i->row() + 1 < parent->rowCount()) return parent->child(i->row() + 1);
  }
  return nullptr;
}

QStandardItem* FirstInTree(const QStandardItemModel& nodes) { return nodes.item(0); }

// From `from` on through the whole tree, the first node that `matches`.
template <class Match> QStandardItem* Search(QStandardItem* from, Match matches) {
  for (QStandardItem* n = from; n; n = NextInTree(n))
    if (matches(n->text())) return n;
  return nullptr;
}

QStandardItem* AddChild(QStandardItemModel& nodes, QStandardItem* parent, const QString& text) {
  auto* item = new QStandardItem(text);
  (parent ? parent : nodes.invisibleRootItem())->appendRow(item);
  return item;
}

// Each segment but the last is looked for anywhere from the current node onward (not only among
// its children) and made below the current node when missing; the last becomes a new child.
void AddPath(QStandardItemModel& nodes, const QString& path) {
  const QStringList segments = path.split('.');
  QStandardItem* current = FirstInTree(nodes);
  for (qsizetype i = 0; i + 1 < segments.size(); ++i) {
    const QString& segment = segments[i];
    QStandardItem* found = Search(current, [&](const QString& t) { return t == segment; });
    current = found ? found : AddChild(nodes, current, segment);
  }
  AddChild(nodes, current, segments.last());
}

QString WithoutBrackets(const QString& text) {
  qsizetype cut = text.size();
  for (QChar c : {QChar('('), QChar('[')})
    if (const qsizetype i = text.indexOf(c); i >= 0) cut = std::min(cut, i);
  return text.left(cut);
}
} // namespace

void PopulateTreeWithVariables(QStandardItemModel& nodes) {
  for (const TQyDoubleGetterRec& r : GlobalVariableList)
    if (!r.IsOrphan()) AddPath(nodes, r.QualifiedName());
  for (const TQyDoubleArrayRec& r : GlobalArrayList)
    if (!r.IsOrphan()) AddPath(nodes, r.QualifiedName() + "[]");
}

void PopulateTreeWithStrings(QStandardItemModel& nodes) {
  nodes.clear();
  for (const TQyStringGetterRec& r : GlobalStringList)
    if (!r.IsOrphan()) AddPath(nodes, r.QualifiedName());
}

void PopulateListWithFunctions(QStringList& list) {
  list = {"Pi", "e", "Random"};
  for (const TQyFunctionRec& r : GlobalFunctionList) list.append(r.Name + "()");
}

QStandardItem* FindInTree(const QString& name, const QStandardItemModel& nodes) {
  QStandardItem* node = FirstInTree(nodes);
  bool first = true;
  for (const QString& segment : name.split('.')) {
    // A child comes after its parent, so each later segment is searched behind the last match.
    if (!first && node) node = NextInTree(node);
    const QString wanted = WithoutBrackets(segment);
    node = node ? Search(node, [&](const QString& t) { return WithoutBrackets(t) == wanted; }) : nullptr;
    first = false;
  }
  return node;
}

QString RefFromNode(const QStandardItem* node) {
  QStringList texts;
  for (const QStandardItem* n = node; n; n = n->parent()) texts.prepend(n->text());
  return texts.join('.');
}

void RefFromNode(const QStandardItem* node, QString& result) { result = RefFromNode(node); }
