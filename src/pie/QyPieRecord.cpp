// The document record of a pie chart: one sequence in the order of its XML form (the data, the
// related legends, the control, the border distances, the caption), then chained blocks with the
// pie itself, the labels, the callouts and the palette. A chart reads a document as a whole or
// not at all: a failure puts back what it held before and passes the error on.
#include "QyClassRegistry.h"
#include "QyExceptions.h"
#include "QyLocalize.h"
#include "QyIO.h"
#include "QyPieChart.h"
#include "QyPieLegend.h"
#include "QyRecordMedia.h"
#include <QBuffer>
#include <QFile>

namespace {
using T = TQyFieldType;
using TKind = TQyRecordMedium::TKind;

TQyPieChart* Chart(QObject* o) { return static_cast<TQyPieChart*>(o); }
const TQyPieChart* Chart(const QObject* o) { return static_cast<const TQyPieChart*>(o); }

TQyRecordEntry Field(const QString& element, const QString& key, T type, const char* property, int block) {
  return QyField(key, type, property).At(element).Ini(element + '.' + key).InBlock(block);
}
TQyRecordEntry Props(const QString& key, T type, const char* property) {
  return QyField(key, type, property).At("Properties");
}

// A value of the control that the document keeps for other readers (anchors, alignment, border).
TQyRecordEntry Constant(const QString& key, int value) {
  return QyField(key, T::Enum, [value](const QObject*) { return QVariant(value); }).At("Properties");
}

TQyRecordEntry Geometry(const QString& key, int (QWidget::*get)() const, void (*set)(QWidget*, int)) {
  return QyField(key, T::Int32, [get](const QObject* o) { return QVariant((Chart(o)->*get)()); },
                 [set](QObject* o, const QVariant& v) { set(Chart(o), v.toInt()); })
      .At("Properties");
}

// The values and explosions are vectors named by reference in the element of their name.
TQyRecordEntry Vector(const QString& key, const char* property) {
  return QyField("Name", T::Reference, property).At(key).Ini(key);
}

// Whether a text document holds the list at all: a missing list keeps what the chart has.
bool HasList(TQyRecordMedium& medium, const QString& key) {
  auto& m = static_cast<TQyDocumentMedium&>(medium);
  if (m.Kind() == TKind::Ini) return m.Read(key + ".Count", T::Int32, {}).isValid();
  if (!m.EnterElement(key)) return false;
  m.Leave();
  return true;
}

void WriteCaptions(const QObject* o, TQyRecordMedium& m) {
  QyWriteNumberedTexts(m, "Captions", "Captions.Count", Chart(o)->GetCaptions());
}
void ReadCaptions(QObject* o, TQyRecordMedium& m) {
  if (HasList(m, "Captions")) Chart(o)->SetCaptions(QyReadNumberedTexts(m, "Captions", "Captions.Count"));
}

// The legends that lay themselves out on this chart, by name; reading hands them the chart.
QList<TQyPieLegend*> RelatedLegends(const TQyPieChart* chart) {
  QList<TQyPieLegend*> legends;
  for (TQyPieLegend* l : chart->findChildren<TQyPieLegend*>(Qt::FindDirectChildrenOnly))
    if (!l->objectName().isEmpty() && (!l->GetPieChart() || l->GetPieChart() == chart)) legends << l;
  return legends;
}

void WriteLegends(const QObject* o, TQyRecordMedium& m) {
  QStringList names;
  for (TQyPieLegend* l : RelatedLegends(Chart(o))) names << GetComponentRef(l);
  QyWriteNumberedTexts(m, "RelatedLegends", "RelatedLegends.Count", names);
}
void ReadLegends(QObject* o, TQyRecordMedium& m) {
  if (!HasList(m, "RelatedLegends")) return;
  const QStringList names = QyReadNumberedTexts(m, "RelatedLegends", "RelatedLegends.Count");
  static_cast<TQyDocumentMedium&>(m).Defer(o, [o, names] {
    for (const QString& name : names)
      if (auto* legend = qobject_cast<TQyPieLegend*>(GetComponentFromRef(name))) legend->SetPieChart(Chart(o));
  });
}

// The palette: its reference, its count and the fills. XML: element "Palette" with one element
// "Item<i>" per fill; INI: "Palette", "Palette.Count" and "Palette[<i>].ForeColor" ... A reader
// binds the palette and gives it the document's fills.
struct TFill {
  QVariant Fore, Back, Style;
};

QString ItemKey(TKind kind, int i, const char* field) {
  return kind == TKind::Ini ? QString("Palette[%1].%2").arg(i).arg(field) : QString(field);
}

void WritePalette(const QObject* o, TQyRecordMedium& medium) {
  auto& m = static_cast<TQyDocumentMedium&>(medium);
  const TQyFillPalette* palette = Chart(o)->GetSegmentSettingsPalette();
  const bool ini = m.Kind() == TKind::Ini;
  const int n = palette ? palette->GetCount() : 0;
  m.EnterElement("Palette");
  m.Write(ini ? "Palette" : "Name", T::Reference, GetComponentRef(palette));
  m.Write(ini ? "Palette.Count" : "Count", T::Int32, n);
  for (int i = 0; i < n; ++i) {
    const TQyFillSettings* fill = palette->GetItem(i);
    m.EnterElement(QString("Item%1").arg(i));
    m.Write(ItemKey(m.Kind(), i, "ForeColor"), T::Color, fill->GetForeColor());
    m.Write(ItemKey(m.Kind(), i, "BackColor"), T::Color, fill->GetBackColor());
    m.Write(ItemKey(m.Kind(), i, "AreaStyle"), T::Enum, int(fill->GetAreaStyle()));
    m.Leave();
  }
  m.Leave();
}

void ApplyPalette(TQyPieChart* chart, const QString& ref, const std::vector<TFill>& fills) {
  auto* palette = qobject_cast<TQyFillPalette*>(ref.isEmpty() ? nullptr : GetComponentFromRef(ref));
  if (!palette) return;
  chart->SetSegmentSettingsPalette(palette);
  palette->Clear();
  for (const TFill& f : fills) {
    TQyFillSettings* fill = palette->Add();
    if (f.Fore.isValid()) fill->SetForeColor(f.Fore.toUInt());
    if (f.Back.isValid()) fill->SetBackColor(f.Back.toUInt());
    if (f.Style.isValid()) QySetField(fill, QyField("AreaStyle", T::Enum, "AreaStyle"), f.Style);
  }
  palette->InvalidateControls();
}

void ReadPalette(QObject* o, TQyRecordMedium& medium) {
  auto& m = static_cast<TQyDocumentMedium&>(medium);
  const bool ini = m.Kind() == TKind::Ini;
  if (!m.EnterElement("Palette")) return;
  const QString ref = m.Read(ini ? "Palette" : "Name", T::Reference, QString()).toString();
  const int n = m.Read(ini ? "Palette.Count" : "Count", T::Int32, 0).toInt();
  std::vector<TFill> fills;
  // A count beyond the fills present ends at the first missing one (a stream raises there).
  for (int i = 0; i < n && m.EnterElement(QString("Item%1").arg(i)); ++i) {
    TFill f{m.Read(ItemKey(m.Kind(), i, "ForeColor"), T::Color, {}), m.Read(ItemKey(m.Kind(), i, "BackColor"), T::Color, {}),
            m.Read(ItemKey(m.Kind(), i, "AreaStyle"), T::Enum, {})};
    m.Leave();
    if (!f.Fore.isValid() && !f.Back.isValid() && !f.Style.isValid()) break;
    fills.push_back(f);
  }
  m.Leave();
  m.Defer(o, [o, ref, fills] { ApplyPalette(Chart(o), ref, fills); });
}
} // namespace

QY_REGISTER_RECORD(TQyPieChart, {
    QyField("Name", T::Name, "objectName").Only(QyMedia::Stream | QyMedia::Node),
    Vector("Values", "Values"),
    Vector("ExplodePercent", "ExplodePercent"),
    QyCustomField("Captions", WriteCaptions, ReadCaptions),
    QyCustomField("RelatedLegends", WriteLegends, ReadLegends),
    QyField("Visible", T::Bool, [](const QObject* o) { return QVariant(!Chart(o)->isHidden()); },
            [](QObject* o, const QVariant& v) { Chart(o)->setVisible(v.toBool()); })
        .At("Properties"),
    Constant("Anchors", 3), // left and top
    Constant("Align", 0),
    Geometry("Top", &QWidget::y, [](QWidget* w, int v) { w->move(w->x(), v); }),
    Geometry("Left", &QWidget::x, [](QWidget* w, int v) { w->move(v, w->y()); }),
    Geometry("Width", &QWidget::width, [](QWidget* w, int v) { w->resize(std::max(v, 0), w->height()); }),
    Geometry("Height", &QWidget::height, [](QWidget* w, int v) { w->resize(w->width(), std::max(v, 0)); }),
    Constant("BorderStyle", 0),
    Props("Hint", T::String, "toolTip"),
    QyParentShowHintField(),
    QyShowHintField(),
    Props("BackColor", T::Color, "BackColor"),
    QyField("Gradient", T::Object, "BackgroundGradient").At("Properties").Ini("Gradient"),
    Field("BorderDistances", "Top", T::Single, "DistanceAtTop", 0),
    Field("BorderDistances", "Bottom", T::Single, "DistanceAtBottom", 0),
    Field("BorderDistances", "Left", T::Single, "DistanceAtLeft", 0),
    Field("BorderDistances", "Right", T::Single, "DistanceAtRight", 0),
    QyField("Text", T::String, "Caption").At("Caption").Ini("Caption"),
    Field("Caption/Properties", "Visible", T::Bool, "CaptionVisible", 0).Ini("Caption.Visible"),
    Field("Caption/Properties", "Alignment", T::Enum, "CaptionAlignment", 0).Ini("Caption.Alignment"),
    Field("Caption/Properties", "Color", T::Color, "CaptionColor", 0).Ini("Caption.Color"),
    Field("Caption/Properties", "DistanceBefore", T::Single, "CaptionDistanceBefore", 0).Ini("Caption.DistanceBefore"),
    Field("Caption/Properties", "DistanceAfter", T::Single, "CaptionDistanceAfter", 0).Ini("Caption.DistanceAfter"),
    Field("PieDonut", "ChartType", T::Enum, "PieChartType", 1),
    Field("PieDonut", "AutoUpdate", T::Bool, "AutoUpdate", 1),
    Field("PieDonut", "OutliersVisible", T::Bool, "OutliersVisible", 1),
    Field("PieDonut", "OrderAscending", T::Bool, "OrderAscending", 1),
    Field("PieDonut", "StartAngle", T::Single, "StartAngle", 1),
    Field("PieDonut", "TotalAngle", T::Single, "TotalAngle", 1),
    Field("PieDonut", "Elevation", T::Single, "ThreeDElevation", 1),
    Field("PieDonut", "PieHeight", T::Single, "ThreeDPieHeight", 1),
    Field("PieDonut", "DonutHoleSize", T::Single, "DonutHoleSize", 1),
    Field("PieDonut", "DropShadow", T::Bool, "DropShadow", 1),
    QyField("SegmentBorder", T::Object, "SegmentBorder").At("PieDonut").Ini("PieDonut.SegmentBorder").InBlock(1),
    Field("Labels", "From", T::Enum, "LabelFrom", 2),
    Field("Labels", "Position", T::Enum, "LabelPosition", 2),
    Field("Labels", "Format", T::String, "LabelFormat", 2),
    // After the font, whose size scales the labels' size.
    Field("Labels", "Size", T::Single, "LabelSize", 2).AfterReferences(),
    Field("Labels", "Color", T::Color, "LabelColor", 2),
    // The one font of the chart: its title and, scaled, its labels.
    QyField("Font", T::Object, "Font").At("Labels").Ini("Labels.Font").InBlock(2),
    Field("Callouts", "Rounding", T::Single, "CalloutRounding", 3),
    Field("Callouts", "DistanceToPie", T::Single, "CalloutDistanceToPie", 3),
    Field("Callouts", "SpaceToBorder", T::Single, "CalloutSpaceToBorder", 3),
    Field("Callouts", "ArrowVisibleMode", T::Enum, "CalloutArrowVisibleMode", 3),
    Field("Callouts", "BackColor", T::Color, "CalloutBackColor", 3),
    Field("Callouts", "Raised", T::Bool, "CalloutRaised", 3),
    Field("Callouts", "Lowered", T::Bool, "CalloutLowered", 3),
    Field("Callouts", "Shadow", T::Bool, "CalloutShadow", 3),
    QyField("Arrow", T::Object, "CalloutArrow").At("Callouts").Ini("Callouts.Arrow").InBlock(3),
    QyField("Gradient", T::Object, "CalloutGradient").At("Callouts").Ini("Callouts.Gradient").InBlock(3),
    QyField("Frame", T::Object, "CalloutFrame").At("Callouts").Ini("Callouts.Frame").InBlock(3),
    QyCustomField("Palette", WritePalette, ReadPalette).InBlock(4),
});

// ---- the documents of a chart: read into the chart, and on failure back to what it held

namespace {
template <class Read> void ReadAllOrNothing(TQyPieChart* chart, Read read) {
  QByteArray before;
  {
    QBuffer b(&before);
    b.open(QIODevice::WriteOnly);
    QyWriteToStream(chart, &b);
  }
  const bool updating = chart->GetAutoUpdate();
  try {
    read();
  } catch (...) {
    QBuffer b(&before);
    b.open(QIODevice::ReadOnly);
    QyReadFromStream(chart, &b);
    chart->SetAutoUpdate(updating);
    throw;
  }
}
} // namespace

void TQyPieChart::WriteTo(QIODevice* stream) const { QyWriteToStream(this, stream); }
void TQyPieChart::ReadFrom(QIODevice* stream, bool takeName) {
  ReadAllOrNothing(this, [&] { QyReadFromStream(this, stream, takeName); });
}
void TQyPieChart::WriteTo(QDomElement& node) const { QyWriteToNode(this, node); }
void TQyPieChart::ReadFrom(const QDomElement& node, bool takeName) {
  ReadAllOrNothing(this, [&] { QyReadFromNode(this, node, takeName); });
}
void TQyPieChart::WriteTo(TQyIniFile& ini, const QString& section) const { QyWriteToIni(this, ini, section); }
void TQyPieChart::ReadFrom(const TQyIniFile& ini, const QString& section, bool takeName) {
  ReadAllOrNothing(this, [&] { QyReadFromIni(this, ini, section, {}, takeName); });
}

void TQyPieChart::WriteTo(const QString& fileName) const {
  QFile file(fileName);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
    throw EStreamError(QyFormatMessage(QyRes::FileCreateError, {fileName, file.errorString()}));
  WriteTo(&file);
}

void TQyPieChart::ReadFrom(const QString& fileName) {
  QFile file(fileName);
  if (!file.open(QIODevice::ReadOnly))
    throw EStreamError(QyFormatMessage(QyRes::FileOpenError, {fileName, file.errorString()}));
  ReadFrom(&file);
}
