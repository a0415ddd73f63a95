#pragma once
// Component glue: names, the owner chain and look-up by name, on top of QObject's tree.
// A component's owner is its nearest named ancestor; a top-level window is a form.
#include <QObject>
#include <QString>

// The nearest ancestor with a name (the component owner), or nullptr.
QObject* ComponentOwner(const QObject* component);
// The form: the top-level widget above the component (or its outermost ancestor).
QObject* ComponentForm(const QObject* component);
// Recursive look-up of a named component below `owner` (exact, case-sensitive name).
QObject* FindComponent(const QObject* owner, const QString& name);
// `base` followed by 1, 2, 3, ...: the first name that `owner` does not know; base + "1" without owner.
QString UniqueName(const QObject* owner, const QString& base);
