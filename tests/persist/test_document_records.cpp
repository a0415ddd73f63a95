// Documents of bars, markers and pie charts: the stream bytes against files written from the
// layouts by tests/persist/gen_expected_streams.py, round trips through the three media compared
// by picture, early-ended streams, late references, and a pie chart that refuses bad documents.
#include "QyTestGraph.h"
#include <QyArrowMarker.h>
#include <QyBars.h>
#include <QyClassRegistry.h>
#include <QyExceptions.h>
#include <QyMarkers.h>
#include <QyPieChart.h>
#include <QyPieLegend.h>
#include <QyRecordMedia.h>
#include <QBuffer>
#include <QDomDocument>
#include <QFile>
#include <gtest/gtest.h>
#include <cmath>
#include <functional>
#include <limits>

namespace {

QByteArray Expected(const char* name) {
  QFile f(QString(QY_TESTS_DIR) + "/persist/expected/" + name);
  EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << name;
  return f.readAll();
}

QByteArray StreamOf(const QObject* o) {
  QByteArray bytes;
  QBuffer b(&bytes);
  b.open(QIODevice::WriteOnly);
  QyWriteToStream(o, &b);
  return bytes;
}

// A font away from its defaults, as the expected files give it.
void SetFont(TQyFont* f, const char* name, float size, TQyFontStyles style) {
  f->SetName(name);
  f->SetSize(size);
  f->SetStyle(style);
  f->SetRenderingHint(TQyTextRenderingHint::AntiAlias);
}

// The form every document of these tests lives on, so references resolve by name.
struct DocForm {
  QWidget form;
  TQyAxis* axis = new TQyAxis(&form);
  TQyDoubleVector* values = new TQyDoubleVector(&form);
  TQyFillPalette* palette = new TQyFillPalette(&form);
  DocForm() {
    form.setObjectName("DocForm");
    axis->setObjectName("YAxis1");
    values->setObjectName("Vals");
    palette->setObjectName("Palette1");
    values->AddRange(std::vector<double>{3, 1, 4, 1, 5});
  }
};

// ---- the pie chart of the expected stream ----------------------------------------------------

TQyPieChart* MakePie(DocForm& d) {
  auto* p = new TQyPieChart(&d.form);
  p->setObjectName("Pie1");
  auto* legend = new TQyPieLegend(p);
  legend->setObjectName("PieLegend1");
  p->setGeometry(6, 5, 300, 200);
  p->SetValues(d.values);
  p->SetCaptions({"Nord", "Süd"});
  p->SetBackColor(0xFFFFFFF0);
  p->SetDistanceAtTop(1);
  p->SetDistanceAtBottom(2);
  p->SetDistanceAtLeft(3);
  p->SetDistanceAtRight(4);
  p->SetCaption("Anteile ö");
  p->SetCaptionVisible(true);
  p->SetCaptionAlignment(TAlignment::LeftJustify);
  p->SetCaptionColor(0xFF800000);
  p->SetCaptionDistanceBefore(2.5f);
  p->SetCaptionDistanceAfter(3.5f);
  p->SetPieChartType(TQyPieChartType::ThreeDDonut);
  p->SetOutliersVisible(true);
  p->SetOrderAscending(true);
  p->SetStartAngle(30);
  p->SetTotalAngle(270);
  p->SetThreeDElevation(40);
  p->SetThreeDPieHeight(20);
  p->SetDonutHoleSize(50);
  p->SetDropShadow(false);
  p->GetSegmentBorder()->SetVisible(true);
  p->GetSegmentBorder()->SetColor(0xFF000000);
  p->GetSegmentBorder()->SetWidth(2);
  p->GetSegmentBorder()->SetDashStyle(QyGDI::TDashStyle::DashStyleSolid);
  p->SetLabelFrom(TQyLabelStyle::Percent);
  p->SetLabelPosition(TQyPieLabelPosition::Callouts);
  p->SetLabelFormat("%.1f");
  SetFont(p->GetCaptionFont(), "Courier", 9, TQyFontStyle::Bold);
  p->SetLabelSize(5); // after the font, whose size scales it
  p->SetLabelColor(0xFF0000FF);
  p->SetCalloutRounding(20);
  p->SetCalloutDistanceToPie(5);
  p->SetCalloutSpaceToBorder(15);
  p->SetCalloutArrowVisibleMode(TQyCalloutArrowVisibleMode::AllVisible);
  p->SetCalloutBackColor(0xFFFFFFE0);
  p->SetCalloutRaised(true);
  p->SetCalloutShadow(true);
  TQyArrowSettings* arrow = p->GetCalloutArrow();
  arrow->SetVisible(true);
  arrow->SetColor(0xFF404040);
  arrow->SetWidth(1);
  arrow->SetDashStyle(QyGDI::TDashStyle::DashStyleSolid);
  arrow->SetPointLength(12);
  arrow->SetInnerLength(4);
  arrow->SetPointHeight(6);
  p->GetCalloutFrame()->SetVisible(true);
  p->GetCalloutFrame()->SetColor(0xFF808080);
  p->GetCalloutFrame()->SetWidth(1);
  p->GetCalloutFrame()->SetDashStyle(QyGDI::TDashStyle::DashStyleSolid);
  d.palette->Clear();
  TQyFillSettings* solid = d.palette->Add();
  solid->SetForeColor(0xFFFF0000);
  solid->SetBackColor(0xFFFFFFFF);
  solid->SetAreaStyle(TQyAreaStyle::Total);
  TQyFillSettings* cross = d.palette->Add();
  cross->SetForeColor(0xFF00FF00);
  cross->SetBackColor(0xFF000000);
  cross->SetAreaStyle(TQyAreaStyle::Cross);
  p->SetSegmentSettingsPalette(d.palette);
  return p;
}

// ---- the markers -------------------------------------------------------------------------------

// The movable's settings of the expected horizontal marker.
void SetMovable(TQyMovable* m) {
  m->setToolTip("Zeile ä");
  m->SetClipToData(false);
  m->SetMouseDrag(false);
  m->SetStartMovingKeys(QyShift::ssCtrl | QyShift::ssRight);
  m->SetForeColor(0xFF102030);
  m->GetLine()->SetColor(0xFFFF0000);
  m->GetLine()->SetWidth(3);
  m->GetLine()->SetDashStyle(QyGDI::TDashStyle::DashStyleDash);
  SetFont(m->GetFont(), "Courier", 11.5f, TQyFontStyle::Italic);
  m->SetCaption("Grenze ü");
  m->SetCaptionVisible(true);
  m->SetCaptionDeltaX(-3);
  m->SetCaptionDeltaY(4);
  m->SetCaptionBackColor(0xC0FFFFE0);
  m->GetCaptionBackFrame()->SetVisible(true);
  m->GetCaptionBackFrame()->SetColor(0xFF0000FF);
  m->GetCaptionBackFrame()->SetWidth(2);
  m->GetCaptionBackFrame()->SetDashStyle(QyGDI::TDashStyle::DashStyleSolid);
  m->SetCaptionBackRaised(true);
  m->SetCaptionBackShadow(true);
  m->SetCaptionBackSpaceToBorder(20);
  m->SetCaptionBackRounding(10);
}

TQyHorizontalMarker* MakeHorizontal(DocForm& d) {
  auto* m = new TQyHorizontalMarker(&d.form);
  m->setObjectName("HMarker1");
  SetMovable(m);
  m->SetYAxis(d.axis);
  m->SetY(2.5);
  m->SetCaptionPosition(TQyContentAlignment::BottomCenter);
  return m;
}

TQyBars* MakeBars(QObject* owner) {
  auto* b = new TQyBars(owner);
  b->setObjectName("Bars1");
  b->SetCaption("Größe");
  b->SetVisible(false);
  b->SetIncludeInLegend(false);
  b->SetAutoUpdate(false);
  b->SetLayer(3);
  b->GetLine()->SetVisible(true);
  b->GetLine()->SetColor(0xFF112233);
  b->GetLine()->SetWidth(1.5f);
  b->GetLine()->SetDashStyle(QyGDI::TDashStyle::DashStyleDot);
  b->GetArea()->SetVisible(true);
  b->GetArea()->SetForeColor(0xFF445566);
  b->GetArea()->SetBackColor(0x80778899);
  b->GetArea()->SetAreaStyle(TQyAreaStyle::Cross);
  struct Sym {
    TQyPointSymbolSettings* s;
    bool visible;
    float size, width;
    TQyColor border, fill;
    TQyPointSymbol kind;
  } symbols[] = {{b->PointSymbol(), true, 7, 1, 0xFF000001, 0xFF000002, TQyPointSymbol::Diamond},
                 {b->OutOfRangePointSymbol(), false, 5, 2, 0xFF000003, 0xFF000004, TQyPointSymbol::Delta}};
  for (const Sym& s : symbols) {
    s.s->SetVisible(s.visible);
    s.s->SetSize(s.size);
    s.s->SetBorderLineWidth(s.width);
    s.s->SetBorderColor(s.border);
    s.s->SetFillColor(s.fill);
    s.s->SetPointSymbol(s.kind);
  }
  b->SetOverlayStyle(TQyBarsOverlayStyle::Stack);
  b->SetBarsHorizontal(true);
  b->SetDepth3D(12.5);
  b->SetClassesDistance(0.25);
  SetFont(b->GetFont(), "Courier", 12.5f, TQyFontStyle::Bold | TQyFontStyle::Underline);
  b->GetFont()->SetDrawEffects(TQyCharDrawEffect::Outline);
  b->SetLabelSize(15); // after the font, whose size scales it
  b->SetLabelVertical(true);
  b->SetLabelColor(0xFF0000FF); // the font's fill
  b->SetLabelPosition(TQyBarLabelPosition::InTop);
  b->SetLabelFrom(TQyLabelStyle::CaptionAndValue);
  b->SetLabelFormat("%.1f €");
  b->SetCaptions({"A", "Ü"});
  b->SetBarStyle(TQyBarStyle::Cylinder);
  return b;
}

TEST(DocumentRecords, StreamsByteForByte) {
  DocForm d;
  const struct {
    const char* file;
    QObject* object;
  } cases[] = {
      {"bars.bin", MakeBars(nullptr)},
      {"horizontal_marker.bin", MakeHorizontal(d)},
      {"pie.bin", MakePie(d)},
  };
  for (const auto& c : cases) {
    const QByteArray expected = Expected(c.file), written = StreamOf(c.object);
    qsizetype at = 0;
    while (at < written.size() && at < expected.size() && written[at] == expected[at]) ++at;
    EXPECT_EQ(written.size(), expected.size()) << c.file;
    EXPECT_EQ(written.mid(at, 16).toHex(' ').toStdString(), expected.mid(at, 16).toHex(' ').toStdString())
        << c.file << " differs at byte " << at;
    if (!c.object->parent()) delete c.object;
  }
}

// ---- round trips through the three media -------------------------------------------------------

enum class Medium { Stream, Node, Ini };

// Writes `from` into one medium and reads it into `into`, references bound at the end.
void Copy(Medium medium, const QObject* from, QObject* into) {
  if (medium == Medium::Stream) {
    QByteArray bytes = StreamOf(from);
    QBuffer b(&bytes);
    b.open(QIODevice::ReadOnly);
    QyReadFromStream(into, &b);
    EXPECT_TRUE(b.atEnd()) << "the whole record is read";
  } else if (medium == Medium::Node) {
    QDomDocument doc;
    QDomElement e = doc.createElement("Object");
    doc.appendChild(e);
    QyWriteToNode(from, e);
    QDomDocument text;
    ASSERT_TRUE(text.setContent(doc.toString()));
    QyReadFromNode(into, text.documentElement());
  } else {
    TQyIniFile ini;
    QyWriteToIni(from, ini, "Section");
    TQyIniFile text;
    text.SetStrings(ini.GetStrings());
    QyReadFromIni(into, text, "Section");
  }
}

const Medium AllMedia[] = {Medium::Stream, Medium::Node, Medium::Ini};

// A marker of each kind, with values away from the defaults, on a graph with a series.
struct MarkerCase {
  const char* name;
  std::function<TQyMovable*(QyTestGraph&)> make;
};

template <class M> M* OnGraph(QyTestGraph& g, const char* name) {
  auto* m = new M(g.graph);
  m->setObjectName(name);
  SetMovable(m);
  m->SetClipToData(true);
  m->SetSnappedSeries(g.graph->RelatedSeries().value(0));
  return m;
}

const MarkerCase MarkerCases[] = {
    {"horizontal",
     [](QyTestGraph& g) -> TQyMovable* {
       auto* m = OnGraph<TQyHorizontalMarker>(g, "H1");
       m->SetYAxis(g.Y());
       m->SetY(-1.7976931348623157e308); // the lowest double: off the plot, not drawn
       m->SetCaptionPosition(TQyContentAlignment::MiddleLeft);
       return m;
     }},
    {"vertical",
     [](QyTestGraph& g) -> TQyMovable* {
       auto* m = OnGraph<TQyVerticalMarker>(g, "V1");
       m->SetXAxis(g.X());
       m->SetX(3.25);
       m->SetCaptionPosition(TQyContentAlignment::TopLeft);
       return m;
     }},
    {"cross hair",
     [](QyTestGraph& g) -> TQyMovable* {
       auto* m = OnGraph<TQyCrossHair>(g, "C1");
       m->SetXAxis(g.X());
       m->SetYAxis(g.Y());
       m->SetX(7.5);
       m->SetY(std::nan(""));
       m->SetCaptionPosition(TQyXHairCaptionPosition::LeftBottom);
       m->SetHorizontalCursor(-7);
       return m;
     }},
    {"arrow",
     [](QyTestGraph& g) -> TQyMovable* {
       auto* m = OnGraph<TQyLabelWithArrowMarker>(g, "A1");
       m->SetXAxis(g.X());
       m->SetYAxis(g.Y());
       m->SetX(5);
       m->SetY(40);
       m->SetArrowDeltaX(-30);
       m->SetArrowDeltaY(25);
       m->SetBentLength(12);
       m->SetDraggingOptions(QyArrowMarker::ArrowEnd);
       m->SetHoverGrips(false);
       m->GetArrow()->SetPointLength(14);
       m->GetArrow()->SetColor(0xFF00A000);
       return m;
     }},
};

// The record of each marker read into a fresh one of its class gives the same picture.
TEST(DocumentRecords, MarkersComeBackInEveryMedium) {
  for (const MarkerCase& c : MarkerCases) {
    for (Medium medium : AllMedia) {
      QyTestGraph g(300, 200);
      QyTestGraph::Fix(g.X(), 0, 10);
      QyTestGraph::Fix(g.Y(), 0, 100);
      g.AddSeries({1, 4, 8}, {10, 60, 30});
      TQyMovable* original = c.make(g);
      const QImage before = g.Render();
      auto* copy = static_cast<TQyMovable*>(QyCreateComponent(original->metaObject()->className(), g.graph));
      ASSERT_NE(copy, nullptr) << c.name;
      copy->setObjectName(original->objectName());
      Copy(medium, original, copy);
      delete original;
      EXPECT_TRUE(g.Render() == before) << c.name << " medium " << int(medium);
      EXPECT_EQ(copy->property("SnappedSeries").value<TQySeries*>(), g.graph->RelatedSeries().value(0)) << c.name;
    }
  }
}

// The chart's record read into a fresh chart on the same form gives the same picture.
TEST(DocumentRecords, PieChartComesBackInEveryMedium) {
  for (Medium medium : AllMedia) {
    DocForm d;
    TQyPieChart* pie = MakePie(d);
    delete pie->findChild<TQyPieLegend*>(); // legends come back by name only: the next test
    const QImage before = pie->RenderToImage();
    auto* copy = new TQyPieChart(&d.form);
    copy->setGeometry(pie->geometry());
    ASSERT_FALSE(copy->RenderToImage() == before) << "the settings show in the picture";
    copy->setGeometry(0, 0, 10, 10);
    Copy(medium, pie, copy);
    pie->setObjectName("Gone");
    copy->setObjectName("Pie1");
    EXPECT_EQ(copy->GetCaptions(), pie->GetCaptions()) << int(medium);
    EXPECT_EQ(copy->GetSegmentSettingsPalette(), d.palette) << int(medium);
    EXPECT_TRUE(copy->RenderToImage() == before) << int(medium);
  }
}

TEST(DocumentRecords, PieLegendComesBackInEveryMedium) {
  for (Medium medium : AllMedia) {
    DocForm d;
    TQyPieChart* pie = MakePie(d);
    auto* legend = pie->findChild<TQyPieLegend*>();
    legend->SetPosition(TQyPieLegendPosition::LeftBottom);
    legend->SetLabelsFrom(TQyLabelStyle::CaptionAndPercent);
    legend->SetLabelFormat("%.2f ‰");
    legend->SetDistanceToPie(17);
    legend->SetCaption("Legende ß");
    legend->SetCaptionVisible(true);
    const QImage before = pie->RenderToImage();
    auto* copy = new TQyPieLegend(pie);
    Copy(medium, legend, copy);
    delete legend;
    EXPECT_EQ(copy->GetPieChart(), pie);
    EXPECT_TRUE(pie->RenderToImage() == before) << int(medium);
  }
}

// ---- streams of older writers, references read before their target ----------------------------

// A stream whose records closed after their first block: later blocks keep the reader's values,
// and what a class adds after its base's record is read all the same.
TEST(DocumentRecords, StreamEndedAfterTheFirstBlockKeepsLaterValues) {
  DocForm d;
  QByteArray pieBytes = Expected("pie_first_block.bin"), markerBytes = Expected("horizontal_marker_first_block.bin");
  auto* pie = new TQyPieChart(&d.form);
  QBuffer pb(&pieBytes);
  pb.open(QIODevice::ReadOnly);
  pie->ReadFrom(&pb);
  EXPECT_EQ(pie->GetCaption(), "Anteile ö");
  EXPECT_EQ(pie->GetDistanceAtRight(), 4.0f);
  EXPECT_EQ(pie->GetPieChartType(), TQyPieChartType::FlatPie);
  EXPECT_EQ(pie->GetLabelPosition(), TQyPieLabelPosition::Invisible);
  EXPECT_EQ(pie->GetSegmentSettingsPalette(), nullptr);

  auto* marker = new TQyHorizontalMarker(&d.form);
  QBuffer mb(&markerBytes);
  mb.open(QIODevice::ReadOnly);
  marker->ReadFrom(&mb);
  EXPECT_TRUE(mb.atEnd());
  EXPECT_EQ(marker->GetForeColor(), 0xFF102030u);
  EXPECT_EQ(marker->GetCaption(), QString()) << "the caption stands in the second block";
  EXPECT_EQ(marker->GetYAxis(), d.axis);
  EXPECT_EQ(marker->GetY(), 2.5);
  EXPECT_EQ(marker->GetCaptionPosition(), TQyContentAlignment::BottomCenter);
}

// The marker's axis is created after the record was read: it is bound, and the value lands on
// it, once the document is complete.
TEST(DocumentRecords, ReferencesBindAfterTheWholeDocument) {
  DocForm d;
  TQyHorizontalMarker* original = MakeHorizontal(d);
  QByteArray bytes = StreamOf(original);
  delete original;
  delete d.axis;
  auto* copy = new TQyHorizontalMarker(&d.form);
  QBuffer b(&bytes);
  b.open(QIODevice::ReadOnly);
  TQyStreamMedium m(&b, false);
  QyReadRecord(copy, m);
  EXPECT_EQ(copy->GetYAxis(), nullptr);
  auto* late = new TQyAxis(&d.form);
  late->setObjectName("YAxis1");
  m.Bind();
  EXPECT_EQ(copy->GetYAxis(), late);
  EXPECT_EQ(copy->GetY(), 2.5);
}

// ---- bad documents -----------------------------------------------------------------------------

// A pie document that fails to read leaves the chart as it was.
TEST(DocumentRecords, PieChartRefusesBadDocumentsWhole) {
  DocForm d;
  TQyPieChart* pie = MakePie(d);
  const QByteArray good = StreamOf(pie);
  QDomDocument doc;
  QDomElement root = doc.createElement("Pie");
  doc.appendChild(root);
  pie->WriteTo(root);
  root.firstChildElement("PieDonut").setAttribute("StartAngle", "zwölf");
  TQyIniFile ini;
  pie->WriteTo(ini, "Pie");
  ini.WriteString("Pie", "Callouts.Rounding", "1e999x");

  auto* other = new TQyPieChart(&d.form);
  other->SetCaption("Unverändert");
  other->SetPieChartType(TQyPieChartType::FlatDonut);
  const QByteArray before = StreamOf(other);
  const struct {
    const char* name;
    std::function<void()> read;
  } cases[] = {
      {"stream cut inside the labels", [&] {
         QByteArray cut = good.left(good.size() - 120);
         QBuffer b(&cut);
         b.open(QIODevice::ReadOnly);
         other->ReadFrom(&b);
       }},
      {"stream with an unknown further block", [&] {
         QByteArray more = good.left(good.size() - 1) + '\1';
         QBuffer b(&more);
         b.open(QIODevice::ReadOnly);
         other->ReadFrom(&b);
       }},
      {"XML with a word for a number", [&] { other->ReadFrom(root); }},
      {"INI with a bad number", [&] { other->ReadFrom(ini, "Pie"); }},
      {"missing file", [&] { other->ReadFrom(QString("/nonexistent/pie.bin")); }},
  };
  for (const auto& c : cases) {
    EXPECT_THROW(c.read(), EQyException) << c.name;
    EXPECT_EQ(StreamOf(other).toHex(' '), before.toHex(' ')) << c.name << ": the chart is as it was";
  }
}

// Bars of a document without data write -1 for their captions and keep the reader's list; XML
// does not read back a list of one caption (kept as it stands).
TEST(DocumentRecords, BarsCaptionsFollowTheDocumentsData) {
  std::unique_ptr<TQyBars> written(MakeBars(nullptr));
  QByteArray bytes;
  {
    QBuffer b(&bytes);
    b.open(QIODevice::WriteOnly);
    TQyStreamMedium m(&b, true);
    m.WithData = false;
    QyWriteRecord(written.get(), m);
  }
  TQyBars reader(nullptr);
  reader.SetCaptions({"x", "y", "z"});
  QBuffer b(&bytes);
  b.open(QIODevice::ReadOnly);
  QyReadFromStream(&reader, &b);
  EXPECT_TRUE(b.atEnd());
  EXPECT_EQ(reader.GetCaptions(), QStringList({"x", "y", "z"}));
  EXPECT_EQ(reader.GetBarStyle(), TQyBarStyle::Cylinder);

  written->SetCaptions({"one"});
  Copy(Medium::Node, written.get(), &reader);
  EXPECT_EQ(reader.GetCaptions(), QStringList({"x", "y", "z"}));
  Copy(Medium::Ini, written.get(), &reader);
  EXPECT_EQ(reader.GetCaptions(), QStringList({"one"}));

  // Text documents without the lists keep the reader's lists.
  DocForm d;
  TQyPieChart* pie = MakePie(d);
  const TQyIniFile ini;
  QDomDocument doc;
  const QDomElement empty = doc.createElement("Pie");
  QyReadFromIni(&reader, ini, "Section");
  pie->ReadFrom(ini, "Section");
  pie->ReadFrom(empty);
  EXPECT_EQ(reader.GetCaptions(), QStringList({"one"}));
  EXPECT_EQ(pie->GetCaptions(), QStringList({"Nord", "Süd"}));
}

} // namespace
