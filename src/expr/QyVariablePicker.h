#pragma once
// Content for the pickers of the caption dialogs: the registered variables, arrays and strings as
// a tree of dotted names (form, component, value), and the list of functions.
#include <QStandardItemModel>
#include <QString>
#include <QStringList>

// Adds every variable and every array (with "[]" behind) of the registers as a dotted path.
void PopulateTreeWithVariables(QStandardItemModel& nodes);
// Clears the tree, then adds every registered string as a dotted path.
void PopulateTreeWithStrings(QStandardItemModel& nodes);
// "Pi", "e", "Random", then each registered function with "()" behind.
void PopulateListWithFunctions(QStringList& list);
// The node for a dotted name, texts compared without anything from "(" or "[" on; nullptr if none.
QStandardItem* FindInTree(const QString& name, const QStandardItemModel& nodes);
// The dotted name of a node: the texts from the top of the tree down to it.
QString RefFromNode(const QStandardItem* node);
void RefFromNode(const QStandardItem* node, QString& result);
