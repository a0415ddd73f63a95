// The document record of an axis: settings, caption, scaling, tick parts, ends, rubrics, date-time
// formats, slave settings, arrow, distances and the zoom stages, in the order of its stream.
// XML groups them into child elements; INI keys carry the group as a prefix.
#include "QyAxis.h"
#include "QyClassRegistry.h"
#include "QyRecordMedia.h"
#include "QyStyles.h"
#include "QyValueList.h"
#include <algorithm>
#include <memory>
#include <optional>

QY_REGISTER_CLASS(TQyAxis);

namespace {
using T = TQyFieldType;
using TKind = TQyRecordMedium::TKind;
constexpr quint8 TextMedia = QyMedia::Node | QyMedia::Ini;

TQyAxis* Axis(QObject* o) { return static_cast<TQyAxis*>(o); }
const TQyAxis* Axis(const QObject* o) { return static_cast<const TQyAxis*>(o); }

// An entry of a group: XML attribute `key` in element `element`, INI key "<iniGroup>.<key>".
TQyRecordEntry Grouped(const QString& element, const QString& iniGroup, const QString& key, T type,
                       const char* property) {
  return QyField(key, type, property).At(element).Ini(iniGroup + '.' + key);
}

TQyRecordEntry Geometry(const QString& key, int (QWidget::*get)() const, void (*set)(QWidget*, int)) {
  return QyField(key, T::Int32, [get](const QObject* o) { return QVariant((Axis(o)->*get)()); },
                 // Far beyond any screen: a document's number must not overflow the widget's rectangle.
                 [set](QObject* o, const QVariant& v) { set(Axis(o), std::clamp(v.toInt(), -100000, 100000)); })
      .At("Properties");
}

// One of the seven label formats of a date-time axis.
TQyRecordEntry TimeFormat(const QString& key, QString TQyAxisTimeFormats::*format) {
  return QyField(key, T::String,
                 [format](const QObject* o) {
                   return QVariant(const_cast<TQyAxis*>(Axis(o))->TimeFormats().*format);
                 },
                 [format](QObject* o, const QVariant& v) { Axis(o)->TimeFormats().*format = v.toString(); })
      .At("DateTimeFormat")
      .Ini("DateTimeFormat." + key);
}
} // namespace

// Reaches what the axis keeps without a property: the partition tables, the data range, the
// zoom stages.
struct TQyAxisRecord {
  static TQyRecordTable Table();
  static TQyRecordEntry Partition(const QString& table, int i, double (TQyAxis::*parts)[3]) {
    const QString key = table + '.' + QString::number(i);
    return QyField(key, T::Double, [parts, i](const QObject* o) { return QVariant((Axis(o)->*parts)[i]); },
                   [parts, i](QObject* o, const QVariant& v) {
                     (Axis(o)->*parts)[i] = v.toDouble();
                     Axis(o)->Modified();
                   })
        .At("TickParts")
        .Only(QyMedia::Stream | QyMedia::Node)
        .InBlock(1);
  }

  // A value written straight into its field, past the setter: the data range has none, automatic
  // tick parts are refused by theirs, and a padding's never goes back to 0; yet a graph read back
  // from its own document must get them all. `take` turns a read value into the stored one, or
  // into none to leave the field as it is.
  static TQyRecordEntry Stored(const QString& group, const QString& key, double TQyAxis::*field,
                               std::optional<double> (*take)(double)) {
    return QyField(key, T::Double, [field](const QObject* o) { return QVariant(Axis(o)->*field); },
                   [field, take](QObject* o, const QVariant& v) {
                     if (const auto x = take(v.toDouble())) Axis(o)->*field = *x;
                   })
        .At(group)
        .Ini(group + '.' + key);
  }
  static std::optional<double> AsIs(double v) { return v; }
  static std::optional<double> AsPart(double v) {
    return std::isfinite(v) ? std::optional(std::fabs(v)) : std::nullopt;
  }
  static std::optional<double> AsPadding(double v) {
    return std::isfinite(v) && v >= 0 ? std::optional(v) : std::nullopt;
  }
  static TQyRecordEntry Part(const QString& key, double TQyAxis::*field) { return Stored("TickParts", key, field, AsPart); }
  static TQyRecordEntry Padding(const QString& key, double TQyAxis::*field) { return Stored("Ends", key, field, AsPadding); }
  static TQyRecordEntry DataEnd(const QString& key, double TQyAxis::*field) { return Stored("Ends", key, field, AsIs); }

  // The stages as two vectors and the current stage: in a stream behind a presence flag, in XML
  // as the elements "Start" and "Stop", in INI as numbered keys.
  static void WriteZoom(const QObject* o, TQyRecordMedium& m) {
    const TQyAxis* a = Axis(o);
    const int n = int(a->FZoomStarts.size());
    if (m.Kind() == TKind::Ini) {
      for (int i = 0; i < n; ++i) {
        m.Write(QString("%1.Zoom.Start").arg(i), T::Double, a->FZoomStarts[size_t(i)]);
        m.Write(QString("%1.Zoom.Stop").arg(i), T::Double, a->FZoomStops[size_t(i)]);
      }
      return m.Write("Zoom.Idx", T::Int32, a->FZoomStage);
    }
    if (m.Kind() == TKind::Stream) m.Write("Zoom", T::Bool, n > 0);
    if (n > 0 || m.Kind() == TKind::Node) {
      const auto starts = ZoomVector(a->FZoomStarts), stops = ZoomVector(a->FZoomStops);
      m.WriteObject("Start", starts.get());
      m.WriteObject("Stop", stops.get());
      m.Write("Idx", T::Int32, a->FZoomStage);
    }
  }

  static void ReadZoom(QObject* o, TQyRecordMedium& m) {
    std::vector<double> starts, stops;
    QVariant stage;
    if (m.Kind() == TKind::Ini) {
      for (int i = 0;; ++i) {
        const QVariant s = m.Read(QString("%1.Zoom.Start").arg(i), T::Double, {});
        const QVariant e = m.Read(QString("%1.Zoom.Stop").arg(i), T::Double, {});
        if (!s.isValid() || !e.isValid()) break;
        starts.push_back(s.toDouble());
        stops.push_back(e.toDouble());
      }
      stage = m.Read("Zoom.Idx", T::Int32, 0);
    } else if (m.Kind() == TKind::Node || m.Read("Zoom", T::Bool, false).toBool()) {
      const auto s = ZoomVector({}), e = ZoomVector({});
      m.ReadObject("Start", s.get());
      m.ReadObject("Stop", e.get());
      stage = m.Read("Idx", T::Int32, 0);
      starts = dynamic_cast<IQyValueList&>(*s).ValueList();
      stops = dynamic_cast<IQyValueList&>(*e).ValueList();
    }
    SetZoom(Axis(o), std::move(starts), std::move(stops), stage.toInt());
  }

  // A data vector of the document, made by class name (vectors live above the axes).
  static std::unique_ptr<QObject> ZoomVector(std::vector<double> values) {
    std::unique_ptr<QObject> v(QyCreateComponent("TQyDoubleVector", nullptr));
    if (auto* list = dynamic_cast<IQyValueList*>(v.get())) list->SetValueList(std::move(values));
    return v;
  }

  static void SetZoom(TQyAxis* a, std::vector<double> starts, std::vector<double> stops, int stage) {
    const size_t n = std::min(starts.size(), stops.size()); // starts and stops stay paired
    starts.resize(n);
    stops.resize(n);
    a->FZoomStarts = std::move(starts);
    a->FZoomStops = std::move(stops);
    a->FZoomStage = n > 0 ? std::clamp(stage, 0, int(n) - 1) : 0;
  }
};

namespace {
// Rubrics: in a stream a count and each text, in XML the element "Captions" with its items, in
// INI "Rubrics.Count" and one key "Captions(i)" each. A bound axis reads its rubrics from its
// model and keeps them.
void WriteRubrics(const QObject* o, TQyRecordMedium& m) {
  QyWriteNumberedTexts(m, "Captions", "Rubrics.Count", Axis(o)->GetRubrics());
}

void ReadRubrics(QObject* o, TQyRecordMedium& m) {
  const QStringList rubrics = QyReadNumberedTexts(m, "Captions", "Rubrics.Count");
  if (!Axis(o)->GetDataSource()) Axis(o)->SetRubrics(rubrics);
}

QVariant RubricsFromDatabase(const QObject* o) {
  return Axis(o)->GetDataSource() != nullptr && !Axis(o)->GetRubricsField().isEmpty();
}

TQyRecordEntry Props(const QString& key, T type, const char* property) {
  return QyField(key, type, property).At("Properties");
}

void SetTop(QWidget* w, int v) { w->move(w->x(), v); }
void SetLeft(QWidget* w, int v) { w->move(v, w->y()); }
void SetWidth(QWidget* w, int v) { w->resize(v, w->height()); }
void SetHeight(QWidget* w, int v) { w->resize(w->width(), v); }
} // namespace

// INI carries fewer keys than stream and XML (no caption text, scaling, partitions or slave
// link): a document keeps that list, and reading leaves what it lacks as it is. XML and INI keep
// the order of their own lists: settings that the stream has elsewhere (the hints, the later
// blocks) stand twice, once for the stream and once for the text media.
TQyRecordTable TQyAxisRecord::Table() {
  return {
    QyField("Name", T::Name, "objectName").Only(QyMedia::Stream | QyMedia::Node),
    Props("Visible", T::Bool, "Visible"),
    Props("Hint", T::String, "toolTip").Only(QyMedia::Stream),
    QyParentShowHintField().Only(QyMedia::Stream),
    QyShowHintField().Only(QyMedia::Stream),
    Props("Position", T::Enum, "Position"),
    Geometry("Top", &QWidget::y, SetTop),
    Geometry("Left", &QWidget::x, SetLeft),
    Props("AutoSize", T::Bool, "AutoSize"),
    Geometry("Width", &QWidget::width, SetWidth),
    Geometry("Height", &QWidget::height, SetHeight),
    Props("Hint", T::String, "toolTip").Only(TextMedia),
    QyParentShowHintField().Only(TextMedia),
    QyShowHintField().Only(TextMedia),
    Props("AxisThicknes", T::Single, "AxisThicknes"),
    Props("MajorTickThicknes", T::Single, "MajorTickThicknes"),
    Props("TickThicknes", T::Single, "TickThicknes"),
    Props("MajorTickLength", T::Single, "MajorTickLength"),
    Props("TickLength", T::Single, "TickLength"),
    Props("AxisColor", T::Color, "ForeColor"),
    Props("MajorTickColor", T::Color, "MajorTickColor"),
    Props("TickColor", T::Color, "TickColor"),
    QyField("Text", T::String, "Caption").At("Caption").Only(QyMedia::Stream | QyMedia::Node),
    Grouped("Caption/Properties", "Caption", "Visible", T::Bool, "CaptionVisible"),
    Grouped("Caption/Properties", "Caption", "HorizontalOnVerticalAxis", T::Bool, "CaptionHorizontalOnVerticalAxis"),
    Grouped("Caption/Properties", "Caption", "Alignment", T::Enum, "CaptionAlignment"),
    Grouped("Caption/Properties", "Caption", "Color", T::Color, "CaptionColor"),
    Grouped("Caption/Properties", "Caption", "DistanceBefore", T::Single, "CaptionDistanceBefore"),
    Grouped("Caption/Properties", "Caption", "DistanceAfter", T::Single, "CaptionDistanceAfter"),
    Grouped("Caption", "Caption", "Font", T::Object, "CaptionFont"),
    Grouped("Scaling", "Scaling", "Type", T::Enum, "Scaling").Only(QyMedia::Stream | QyMedia::Node),
    Grouped("Scaling", "Scaling", "LogToNormalScalingLevel", T::Double, "LogToNormalScalingLevel").Only(QyMedia::Stream | QyMedia::Node),
    Grouped("Scaling", "Scaling", "TicksPointToData", T::Bool, "TicksPointToData").Only(QyMedia::Stream | QyMedia::Node),
    Grouped("Scaling", "Scaling", "Twisted", T::Bool, "Twisted").Only(QyMedia::Stream | QyMedia::Node),
    QyField("NumbersVisible", T::Bool, "NumbersVisible").At("Scaling").Ini("Numbers.Visible"),
    QyField("NumbersColor", T::Color, "NumbersColor").At("Scaling").Ini("Numbers.Color"),
    Grouped("Scaling", "Scaling", "RubricsAngle", T::Single, "RubricsAngle").Only(QyMedia::Stream | QyMedia::Node),
    QyField("MovingSlitWidth", T::Double, "MovingSlitWidth").At("Scaling").Ini("MovingSlit.Width"),
    QyField("MovingSlitIncrement", T::Double, "MovingSlitIncrement").At("Scaling").Ini("MovingSlit.Increment"),
    Grouped("Scaling", "Scaling", "ExtraDigits", T::Int32, "ExtraDigits").Only(QyMedia::Stream | QyMedia::Node),
    Grouped("Scaling", "Scaling", "MaxForExtraExponent", T::Double, "MaxForExtraExponent").Only(QyMedia::Stream | QyMedia::Node),
    Grouped("Scaling", "Scaling", "MinForExtraExponent", T::Double, "MinForExtraExponent").Only(QyMedia::Stream | QyMedia::Node),
    Grouped("TickParts", "TickParts", "Auto", T::Bool, "AutoTickParts"),
    TQyAxisRecord::Part("Label", &TQyAxis::FLabelPart),
    TQyAxisRecord::Part("Major", &TQyAxis::FMajorTickPart),
    TQyAxisRecord::Part("Minor", &TQyAxis::FTickPart),
    Grouped("TickParts", "TickParts", "MajorGridMode", T::Enum, "MajorGridMode").Only(TextMedia),
    QyField("Font", T::Object, "Font").At("TickParts").Ini("Font"),
    Grouped("Ends", "Ends", "Start", T::Double, "Start"),
    Grouped("Ends", "Ends", "Stop", T::Double, "Stop"),
    TQyAxisRecord::Padding("StartPadding", &TQyAxis::FStartPadding).Only(TextMedia),
    TQyAxisRecord::Padding("StopPadding", &TQyAxis::FStopPadding).Only(TextMedia),
    TQyAxisRecord::DataEnd("ValuesStart", &TQyAxis::FDataMin).Only(TextMedia),
    TQyAxisRecord::DataEnd("ValuesStop", &TQyAxis::FDataMax).Only(TextMedia),
    Grouped("Ends", "Ends", "Rounding", T::Enum, "EndRounding"),
    Grouped("Ends", "Ends", "StartEnd", T::Enum, "StartEnd"),
    Grouped("Ends", "Ends", "StopEnd", T::Enum, "StopEnd"),
    QyCustomField("Captions", WriteRubrics, ReadRubrics).At("Rubrics").Only(QyMedia::Node),
    QyField("FromDatabase", T::Bool, RubricsFromDatabase).Only(QyMedia::Stream | QyMedia::Ini).Ini("Rubrics.FromDatabase"),
    Grouped("Rubrics/Database", "Rubrics", "DataSource", T::Reference, "DataSource"),
    Grouped("Rubrics/Database", "Rubrics", "RubricsField", T::String, "RubricsField"),
    QyCustomField("Captions", WriteRubrics, ReadRubrics).At("Rubrics").Only(QyMedia::Stream | QyMedia::Ini),
    TimeFormat("ShortMonth", &TQyAxisTimeFormats::ShortMonth),
    TimeFormat("LongMonth", &TQyAxisTimeFormats::LongMonth),
    TimeFormat("Day", &TQyAxisTimeFormats::Day),
    TimeFormat("DayAndHour", &TQyAxisTimeFormats::DayAndHour),
    TimeFormat("Minute", &TQyAxisTimeFormats::Minute),
    TimeFormat("Second", &TQyAxisTimeFormats::Second),
    TimeFormat("MilliSecond", &TQyAxisTimeFormats::MilliSecond),
    QyField("IsSlave", T::Bool, "IsSlaveAxis").At("SlaveAxis").Only(QyMedia::Stream | QyMedia::Node),
    QyField("MasterAxis", T::Reference, "MasterAxis").At("SlaveAxis").Only(QyMedia::Stream | QyMedia::Node),
    QyField("Offset", T::Double, "SlaveOffset").At("SlaveAxis").Ini("Slave.Offset"),
    QyField("Slope", T::Double, "SlaveSlope").At("SlaveAxis").Ini("Slave.Slope"),
    QyField("Arrow", T::Inline, "ArrowPoint"),
    Grouped("Distance", "Distance", "ValuesAxis", T::Single, "DistanceValuesAxis"),
    Grouped("Distance", "Distance", "AxisLabels", T::Single, "DistanceAxisLabels"),
    Grouped("Distance", "Distance", "AxisExtraExponent", T::Single, "DistanceAxisExtraExponent"),
    QyCustomField("Zoom", TQyAxisRecord::WriteZoom, TQyAxisRecord::ReadZoom).At("Zoom"),
    Grouped("TickParts", "TickParts", "LabelDistanceFactor", T::Single, "LabelDistanceFactor").InBlock(1).Only(QyMedia::Stream | QyMedia::Node),
    TQyAxisRecord::Partition("LabelParts", 0, &TQyAxis::FLabelPartitions),
    TQyAxisRecord::Partition("LabelParts", 1, &TQyAxis::FLabelPartitions),
    TQyAxisRecord::Partition("LabelParts", 2, &TQyAxis::FLabelPartitions),
    TQyAxisRecord::Partition("MajorParts", 0, &TQyAxis::FMajorPartitions),
    TQyAxisRecord::Partition("MajorParts", 1, &TQyAxis::FMajorPartitions),
    TQyAxisRecord::Partition("MajorParts", 2, &TQyAxis::FMajorPartitions),
    TQyAxisRecord::Partition("MinorParts", 0, &TQyAxis::FMinorPartitions),
    TQyAxisRecord::Partition("MinorParts", 1, &TQyAxis::FMinorPartitions),
    TQyAxisRecord::Partition("MinorParts", 2, &TQyAxis::FMinorPartitions),
    Grouped("TickParts", "TickParts", "MajorGridMode", T::Enum, "MajorGridMode").InBlock(2).Only(QyMedia::Stream),
    TQyAxisRecord::DataEnd("ValuesStart", &TQyAxis::FDataMin).InBlock(3).Only(QyMedia::Stream),
    TQyAxisRecord::DataEnd("ValuesStop", &TQyAxis::FDataMax).InBlock(3).Only(QyMedia::Stream),
    TQyAxisRecord::Padding("StartPadding", &TQyAxis::FStartPadding).InBlock(4).Only(QyMedia::Stream),
    TQyAxisRecord::Padding("StopPadding", &TQyAxis::FStopPadding).InBlock(4).Only(QyMedia::Stream),
  };
}

static const TQyRecordRegistration AxisRecord(TQyAxis::staticMetaObject, TQyAxisRecord::Table());

QY_DOCUMENT_MEMBERS_IMPL(TQyAxis)
