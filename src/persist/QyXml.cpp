#include "QyXml.h"
#include "QyExceptions.h"
#include "QyIO.h"
#include "QyLocalize.h"
#include "QyStringFunctions.h"

QDomElement AddChildElement(QDomElement& parent, const QString& name) {
  QDomElement child = parent.ownerDocument().createElement(name);
  parent.appendChild(child);
  return child;
}

QDomElement ChildElement(const QDomElement& parent, const QString& name) {
  return ContainsNode(parent, name) ? parent.firstChildElement(name) : QDomElement();
}

QDomElement RequiredChildElement(const QDomElement& parent, const QString& name) {
  QDomElement child = ChildElement(parent, name);
  if (child.isNull()) throw EReadError(QyFormatMessage(QyRes::XMLReadError, {name}));
  return child;
}

void SetAttrString(QDomElement& e, const QString& name, const QString& value) { e.setAttribute(name, value); }
void SetAttrInteger(QDomElement& e, const QString& name, long long value) { e.setAttribute(name, IntToStr(value)); }
void SetAttrBool(QDomElement& e, const QString& name, bool value) { SetAttrInteger(e, name, value ? 1 : 0); }
void SetAttrFloat(QDomElement& e, const QString& name, double value) { e.setAttribute(name, DoubleToStr(value)); }
void SetAttrColor(QDomElement& e, const QString& name, TQyColor value) { e.setAttribute(name, ARGBToString(value)); }

QString AttrString(const QDomElement& e, const QString& name, const QString& def) {
  return e.hasAttribute(name) ? e.attribute(name) : def;
}

long long AttrInteger(const QDomElement& e, const QString& name, long long def) {
  bool ok = false;
  const long long v = e.attribute(name).toLongLong(&ok);
  return ok ? v : def;
}

bool AttrBool(const QDomElement& e, const QString& name, bool def) {
  const QString text = e.attribute(name).trimmed();
  if (text.compare("true", Qt::CaseInsensitive) == 0) return true; // variant text of booleans
  if (text.compare("false", Qt::CaseInsensitive) == 0) return false;
  return AttrInteger(e, name, def ? 1 : 0) != 0;
}

// A float that cannot be read is a broken document: DoubleFromStr's conversion error passes.
double AttrFloat(const QDomElement& e, const QString& name, double def) {
  return e.hasAttribute(name) ? DoubleFromStr(e.attribute(name)) : def;
}

TQyColor AttrColor(const QDomElement& e, const QString& name, TQyColor def) {
  return e.hasAttribute(name) ? ColorToARGB(e.attribute(name)) : def;
}
