#pragma once
// Caption placeholders: "<%name or expression;format%>" in a text is replaced by the value of a
// registered string, or by a numeric expression formatted with the format after ";".
// "<%<%" stands for a literal "<%" and "%>%>" for a literal "%>".
#include <QObject>
#include <QString>

// Resolves every placeholder of `s`; `owner` (the caption's object) becomes a dependant of every
// value owner used. Parser errors go to the caller (EMathError, EExternal).
QString ParseVariables(const QString& s, QObject* owner);
void ParseVariables(const QString& s, QObject* owner, QString& result);
// Resolves the text of one placeholder (between the marks).
QString FindTheVar(const QString& name, QObject* owner);
void FindTheVar(const QString& name, QObject* owner, QString& result);
