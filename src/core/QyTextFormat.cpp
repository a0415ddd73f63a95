// Placeholder implementation; completed in a following commit.
#include "QyTextFormat.h"
#include "QyExceptions.h"

const TFormatSettings& DefaultFormatSettings() {
  static const TFormatSettings fs = [] {
    TFormatSettings s;
    s.ShortMonthNames = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    s.LongMonthNames = {"January", "February", "March", "April", "May", "June", "July", "August",
                        "September", "October", "November", "December"};
    s.ShortDayNames = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    s.LongDayNames = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
    return s;
  }();
  return fs;
}
QString FloatToStr(double value, const TFormatSettings&) { return QString::number(value, 'g', 15); }
QString FloatToStrF(double value, TFloatFormat, int precision, int, const TFormatSettings&) {
  return QString::number(value, 'g', precision);
}
QString FormatFloat(const QString&, double value, const TFormatSettings&) { return QString::number(value, 'g', 15); }
QString FormatDateTime(const QString&, double dateTime, const TFormatSettings&) { return QString::number(dateTime, 'g', 15); }
bool TryStrToFloat(const QString& text, double& value, const TFormatSettings&) {
  bool ok = false;
  value = text.trimmed().toDouble(&ok);
  return ok;
}
double StrToFloat(const QString& text, const TFormatSettings& fs) {
  double v = 0;
  if (!TryStrToFloat(text, v, fs)) throw EConvertError(QString("'%1' is not a valid floating point value").arg(text));
  return v;
}
QString Format(const QString& format, std::initializer_list<QVariant>, const TFormatSettings&) { return format; }
