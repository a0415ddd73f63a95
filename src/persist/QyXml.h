#pragma once
// Attribute helpers of the XML documents: every object is one element, simple values are its
// attributes, nested objects are child elements found by name. Floats use a point, colours their
// text form, booleans and enumerations integers. A missing attribute reads as the default, so
// that documents from older writers load.
#include "QyGDI.h"
#include <QDomElement>
#include <QString>

// A new child element of `parent` named `name`.
QDomElement AddChildElement(QDomElement& parent, const QString& name);
// The first direct child element named `name`; a null element when there is none.
QDomElement ChildElement(const QDomElement& parent, const QString& name);
// The child element, or EReadError "XMLReadError: node "%s" not found" for a required one.
QDomElement RequiredChildElement(const QDomElement& parent, const QString& name);

void SetAttrString(QDomElement& e, const QString& name, const QString& value);
void SetAttrInteger(QDomElement& e, const QString& name, long long value);
void SetAttrBool(QDomElement& e, const QString& name, bool value);
void SetAttrFloat(QDomElement& e, const QString& name, double value);
void SetAttrColor(QDomElement& e, const QString& name, TQyColor value);

QString AttrString(const QDomElement& e, const QString& name, const QString& def);
long long AttrInteger(const QDomElement& e, const QString& name, long long def);
bool AttrBool(const QDomElement& e, const QString& name, bool def);
double AttrFloat(const QDomElement& e, const QString& name, double def);
TQyColor AttrColor(const QDomElement& e, const QString& name, TQyColor def);
