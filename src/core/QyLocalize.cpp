#include "QyLocalize.h"
#include "QyExceptions.h"
#include "QyTextFormat.h"

QString QyText(const char* id) { return QString::fromUtf8(id); }

namespace {
QString FormatOne(QChar kind, int width, int precision, const QVariant& v) {
  QString s;
  switch (kind.toLower().unicode()) {
  case 'd': s = QString::number(v.toLongLong()); break;
  case 'x': s = QString::number(v.toLongLong(), 16).toUpper(); break;
  case 'f': s = QString::number(v.toDouble(), 'f', precision < 0 ? 2 : precision); break;
  case 'e': s = QString::number(v.toDouble(), 'E', precision < 0 ? 15 : precision); break;
  case 'g': s = QString::number(v.toDouble(), 'g', precision < 0 ? 15 : precision); break;
  default: s = v.toString(); if (precision >= 0) s.truncate(precision); break;
  }
  return width > s.size() ? s.rightJustified(width) : s;
}
} // namespace

QString QyFormatMessage(const char* id, std::initializer_list<QVariant> args) {
  const QString fmt = QyText(id);
  try {
    return Format(fmt, args); // the runtime's Format (QyTextFormat)
  } catch (const EConvertError&) {
    // An argument of another kind than its directive asks for: format leniently below, so that
    // building an error message never raises by itself.
  }
  QString out;
  auto arg = args.begin();
  for (qsizetype i = 0; i < fmt.size(); ++i) {
    if (fmt[i] != '%' || i + 1 >= fmt.size()) { out += fmt[i]; continue; }
    if (fmt[i + 1] == '%') { out += '%'; ++i; continue; }
    qsizetype j = i + 1;
    int width = 0, precision = -1;
    while (j < fmt.size() && fmt[j].isDigit()) width = width * 10 + fmt[j++].digitValue();
    if (j < fmt.size() && fmt[j] == '.') {
      precision = 0;
      ++j;
      while (j < fmt.size() && fmt[j].isDigit()) precision = precision * 10 + fmt[j++].digitValue();
    }
    if (j >= fmt.size()) { out += fmt.mid(i); break; }
    out += FormatOne(fmt[j], width, precision, arg != args.end() ? *arg++ : QVariant());
    i = j;
  }
  return out;
}
