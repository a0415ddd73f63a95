#pragma once
// Runtime text formatting: reproduces the documented behaviour of the classic Object-Pascal
// runtime's FloatToStr, FloatToStrF, FormatFloat, FormatDateTime, StrToFloat, TryStrToFloat and
// Format. Results never depend on the machine's locale: only the TFormatSettings passed in count.
#include <QString>
#include <QStringList>
#include <QVariant>
#include <initializer_list>
enum class TFloatFormat { General, Exponent, Fixed, Number, Currency };
struct TFormatSettings {            // fixed invariant default, never the machine locale
  QChar DecimalSeparator = '.';  QChar ThousandSeparator = ',';
  QChar DateSeparator = '/';     QChar TimeSeparator = ':';
  QString ShortDateFormat = "M/d/yyyy", LongDateFormat = "dddd, MMMM d, yyyy";
  QString ShortTimeFormat = "h:nn AMPM", LongTimeFormat = "h:nn:ss AMPM";
  QString TimeAMString = "AM", TimePMString = "PM";
  QStringList ShortMonthNames, LongMonthNames, ShortDayNames, LongDayNames; // English, filled by DefaultFormatSettings()
  QString CurrencyString = "$"; int CurrencyFormat = 0, NegCurrFormat = 0, CurrencyDecimals = 2;
};
const TFormatSettings& DefaultFormatSettings();
QString FloatToStr(double value, const TFormatSettings& fs = DefaultFormatSettings());
QString FloatToStrF(double value, TFloatFormat format, int precision, int digits, const TFormatSettings& fs = DefaultFormatSettings());
QString FormatFloat(const QString& format, double value, const TFormatSettings& fs = DefaultFormatSettings());
QString FormatDateTime(const QString& format, double dateTime, const TFormatSettings& fs = DefaultFormatSettings());
double StrToFloat(const QString& text, const TFormatSettings& fs = DefaultFormatSettings());   // EConvertError
bool TryStrToFloat(const QString& text, double& value, const TFormatSettings& fs = DefaultFormatSettings());
QString Format(const QString& format, std::initializer_list<QVariant> args, const TFormatSettings& fs = DefaultFormatSettings());
