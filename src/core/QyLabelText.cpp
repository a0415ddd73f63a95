#include "QyLabelText.h"
#include "QyTextFormat.h"

QString QyFormatLabelValue(const QString& format, double value) {
  return format.isEmpty() ? FloatToStr(value) : FormatFloat(format, value);
}

QString QyFormatLabelPercent(const QString& format, double percent) {
  if (format.isEmpty()) return FormatFloat(QStringLiteral("##0.##%"), percent);
  return FormatFloat(format.contains(u'%') ? format : format + u'%', percent);
}

QString QyLabelText(TQyLabelStyle style, const QString& format, double value, double percent,
                    const QString& caption) {
  const QString lead = caption.isEmpty() ? caption : caption + u' ';
  switch (style) {
  case TQyLabelStyle::Value: return QyFormatLabelValue(format, value);
  case TQyLabelStyle::CaptionsList: return caption;
  case TQyLabelStyle::Percent: return QyFormatLabelPercent(format, percent);
  case TQyLabelStyle::CaptionAndValue: return lead + QyFormatLabelValue(format, value);
  case TQyLabelStyle::CaptionAndPercent: return lead + QyFormatLabelPercent(format, percent);
  }
  return {};
}
