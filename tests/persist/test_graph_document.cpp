// Graph documents: the whole graph with its children through stream, XML and INI, the chained
// blocks of its record, and reading that fails without a trace.
#include <QyExceptions.h>
#include <QyGraph2D.h>
#include <QyIniFile.h>
#include <QyArrowMarker.h>
#include <QyBars.h>
#include <QyLegend.h>
#include <QyMarkers.h>
#include <QyMovingAverage.h>
#include <QyPointSeries.h>
#include <QyUndoStack.h>
#include <QyVectors.h>
#include <QBuffer>
#include <QDomDocument>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>

namespace {

enum class TMedium { Stream, Xml, Ini };

// A form "Form1" with a graph "Graph1", as documents name them.
struct Form {
  std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
  TQyGraph2D* graph = new TQyGraph2D(form.get());
  Form() {
    form->setObjectName("Form1");
    graph->setObjectName("Graph1");
    graph->resize(420, 300);
  }
  QImage Render() const { return graph->RenderToImage(graph->size(), false); }
};

TQyDoubleVector* NewVector(QObject* owner, const QString& name, std::vector<double> values) {
  auto* v = new TQyDoubleVector(owner);
  v->setObjectName(name);
  v->SetValues(std::move(values));
  return v;
}

// Three axes (one a slave of the X axis), a line series with gaps and extreme values, a legend,
// text beyond Latin-1, and settings away from their defaults.
void MakeRich(Form& f) {
  TQyGraph2D* g = f.graph;
  g->TestPrimaryAxis();
  auto* slave = new TQyAxis(g);
  slave->setObjectName("Axis3");
  slave->SetPosition(TQyAxisPosition::Top);
  slave->SetIsSlaveAxis(true);
  slave->SetMasterAxis(g->GetPrimaryXAxis());
  slave->SetSlaveSlope(2.5);
  slave->SetCaption(QString::fromUtf8("Größe µ² – 測定"));
  g->GetPrimaryYAxis()->SetCaption(QString::fromUtf8("Spannung\r\nin V"));
  auto* s = new TQyLineSeries(f.form.get());
  s->setObjectName("Series1");
  s->SetXData(NewVector(f.form.get(), "VectorX", {0, 1, 2, 3, 4, 5}));
  s->SetYData(NewVector(f.form.get(), "VectorY", {1, std::nan(""), 3, 1e308, -1e308, 2}));
  s->SetXAxis(g->GetPrimaryXAxis());
  s->SetYAxis(g->GetPrimaryYAxis());
  s->SetCaption(QString::fromUtf8("Messreihe ä"));
  s->GetLine()->SetColor(0xFF2060C0u);
  s->GetLine()->SetWidth(3);
  // A series of each further kind: bars, error bars, a calculated curve.
  const auto hang = [&](TQyLineSeries* series, const char* name, TQyCustomDoubleVector* x, TQyCustomDoubleVector* y) {
    series->setObjectName(name);
    series->SetXData(x);
    series->SetYData(y);
    series->SetXAxis(g->GetPrimaryXAxis());
    series->SetYAxis(g->GetPrimaryYAxis());
  };
  auto* barsX = NewVector(f.form.get(), "BarsX", {0.5, 1.5, 2.5});
  hang(new TQyBars(f.form.get()), "Bars1", barsX, NewVector(f.form.get(), "BarsY", {0.5, 2, -0.5}));
  auto* errors = new TQyPointWithErrorSeries(f.form.get());
  hang(errors, "Errors1", barsX, NewVector(f.form.get(), "ErrorsY", {3, 2.5, 3.5}));
  errors->SetDeltaYPlus(NewVector(f.form.get(), "ErrorsDelta", {0.25, 0.5, 0.125}));
  auto* average = new TQyMovingAverage(f.form.get());
  hang(average, "Average1", s->GetXData(), s->GetYData());
  average->SetN(3);
  g->GetPrimaryYAxis()->SetStartEnd(TQyAxisEnd::Fixed);
  g->GetPrimaryYAxis()->SetStopEnd(TQyAxisEnd::Fixed);
  g->GetPrimaryYAxis()->SetStart(-1);
  g->GetPrimaryYAxis()->SetStop(4);
  auto* legend = new TQyLegend(g);
  legend->setObjectName("Legend1");
  legend->SetGraph(g);
  legend->SetPosition(TQyLegendPosition::RightCenterOfGraph);
  // One marker of each kind: a stream names none of their classes.
  const auto place = [g](TQyMovable* m, const char* name, double x, double y) {
    m->setObjectName(name);
    if (!qobject_cast<TQyHorizontalMarker*>(m)) m->SetXAxis(g->GetPrimaryXAxis()), m->SetX(x);
    if (!qobject_cast<TQyVerticalMarker*>(m)) m->SetYAxis(g->GetPrimaryYAxis()), m->SetY(y);
    m->show();
  };
  place(new TQyVerticalMarker(g), "Marker1", 1.5, 0);
  place(new TQyHorizontalMarker(g), "Marker2", 0, 2.5);
  place(new TQyCrossHair(g), "Marker3", 3.5, 0.5);
  place(new TQyLabelWithArrowMarker(g), "Marker4", 2.5, 3.5);
  g->SetCaption(QString::fromUtf8("Übersicht\r\nzweite Zeile"));
  g->SetCaptionVisible(true);
  g->SetCaptionColor(0xFF800000u);
  g->SetDataAreaColor(0xFFF0F0E0u);
  g->SetDistanceBorderAxisLeft(7);
  g->GetMajorGridHorizontal()->SetVisible(true);
  g->GetMajorGridVertical()->SetVisible(true);
  g->GetDataAreaFrame()->SetVisible(true);
  g->GetZoom()->SetBufferType(TQyZoomBufferType::AsCircularBuffer);
  g->GetZoom()->SetStartPanning(QyShift::ssCtrl | QyShift::ssRight);
  g->GetZoom()->SetBackOnRightBottomLeftTopFrame(true);
}

// The document of `g` in `medium`, and reading it back.
struct Document {
  QByteArray bytes;
  QDomDocument xml;
  TQyIniFile ini;
};

Document Write(TQyGraph2D* g, TMedium medium) {
  Document d;
  if (medium == TMedium::Stream) {
    QBuffer b(&d.bytes);
    b.open(QIODevice::WriteOnly);
    g->WriteTo(&b, true);
  } else if (medium == TMedium::Xml) {
    QDomElement root = d.xml.createElement("Graph");
    d.xml.appendChild(root);
    g->WriteTo(root);
  } else {
    g->WriteTo(d.ini, "Graph");
  }
  return d;
}

void Read(TQyGraph2D* g, TMedium medium, Document& d) {
  if (medium == TMedium::Stream) {
    QBuffer b(&d.bytes);
    b.open(QIODevice::ReadOnly);
    g->ReadFrom(&b);
  } else if (medium == TMedium::Xml) {
    g->ReadFrom(d.xml.documentElement());
  } else {
    g->ReadFrom(d.ini, "Graph");
  }
}

QByteArray StreamOf(TQyGraph2D* g) { return Write(g, TMedium::Stream).bytes; }

// Bytes as hex lines of 16, so that a difference shows where it is.
std::string HexLines(const QByteArray& bytes) {
  std::string out;
  for (qsizetype i = 0; i < bytes.size(); i += 16)
    out += QString::number(i, 16).rightJustified(5, '0').toStdString() + " " + bytes.mid(i, 16).toHex(' ').toStdString() + "\n";
  return out;
}

class GraphDocument : public testing::TestWithParam<TMedium> {};

// Written, then read into an empty graph of the same name: the same picture, the same model. INI
// leaves out settings of the axes that stream and XML carry (their caption, scaling, slave link),
// so it is read back over the graph it came from, after its carried settings were disturbed.
TEST_P(GraphDocument, RoundTripKeepsModelAndPicture) {
  auto original = std::make_unique<Form>();
  MakeRich(*original);
  const QImage before = original->Render();
  const QByteArray model = StreamOf(original->graph);
  Document d = Write(original->graph, GetParam());

  std::unique_ptr<Form> target;
  if (GetParam() == TMedium::Ini) {
    target = std::move(original);
    target->graph->SetCaption("other");
    target->graph->SetDataAreaColor(0xFF000000u);
    target->graph->GetPrimaryYAxis()->SetStop(99);
    target->graph->GetZoom()->SetStartPanning(QyShift::ssAlt);
  } else {
    original.reset();
    target = std::make_unique<Form>();
  }
  Read(target->graph, GetParam(), d);
  const QImage after = target->Render(); // the record holds what a picture computes, too
  EXPECT_EQ(HexLines(StreamOf(target->graph)), HexLines(model));
  EXPECT_EQ(after, before);
}

INSTANTIATE_TEST_SUITE_P(Media, GraphDocument, testing::Values(TMedium::Stream, TMedium::Xml, TMedium::Ini));

// A stream cut after any chained block of the graph loads the blocks before it and keeps the
// defaults of the rest. The tail of the record, from the spec's widths: block 1 = flag + two
// gradients of 31 bytes, blocks 2 and 3 = flag + 1 byte, block 4 = flag + a line of 43 bytes,
// block 5 = flag + 1 byte, then the final 0.
TEST(GraphDocumentBlocks, StreamEndingEarlyKeepsDefaults) {
  const int tail[] = {114, 51, 49, 47, 3, 1}; // bytes from the end after block 0 .. 5
  for (int blocks = 0; blocks <= 5; ++blocks) {
    QByteArray cut;
    {
      Form f;
      f.graph->GetBackgroundGradient()->SetVisible(true);
      f.graph->GetZoom()->SetBufferType(TQyZoomBufferType::AsCircularBuffer);
      f.graph->SetCaptionVisible(true);
      f.graph->GetDataAreaFrame()->SetVisible(true);
      f.graph->GetZoom()->SetBackOnRightBottomLeftTopFrame(true);
      cut = StreamOf(f.graph);
    }
    cut = cut.left(cut.size() - tail[blocks]) + '\0';
    Form f;
    QBuffer b(&cut);
    b.open(QIODevice::ReadOnly);
    f.graph->ReadFrom(&b);
    EXPECT_EQ(b.pos(), cut.size()) << blocks;
    EXPECT_EQ(f.graph->GetBackgroundGradient()->GetVisible(), blocks >= 1) << blocks;
    EXPECT_EQ(f.graph->GetZoom()->GetBufferType() == TQyZoomBufferType::AsCircularBuffer, blocks >= 2) << blocks;
    EXPECT_EQ(f.graph->GetCaptionVisible(), blocks >= 3) << blocks;
    EXPECT_EQ(f.graph->GetDataAreaFrame()->GetVisible(), blocks >= 4) << blocks;
    EXPECT_EQ(f.graph->GetZoom()->GetBackOnRightBottomLeftTopFrame(), blocks >= 5) << blocks;
  }
}

// Broken documents raise the read error and leave the graph, its children and its undo history
// as they were.
TEST(GraphDocumentFailure, BrokenDocumentsLeaveTheGraphAsItWas) {
  QByteArray good;
  {
    Form source;
    MakeRich(source);
    good = StreamOf(source.graph);
  }
  Form f;
  f.graph->TestPrimaryAxis();
  TQyUndoStack stack;
  f.graph->SetUndoStack(&stack);
  f.graph->SetCaption("kept");
  const int undo = stack.UndoCount();
  const QByteArray before = StreamOf(f.graph);
  const qsizetype children = f.form->findChildren<QObject*>().size();

  const auto expectUnchanged = [&](QByteArray bytes, const std::string& what) {
    QBuffer b(&bytes);
    b.open(QIODevice::ReadOnly);
    EXPECT_THROW(f.graph->ReadFrom(&b), EReadError) << what;
    EXPECT_EQ(StreamOf(f.graph), before) << what;
    EXPECT_EQ(f.form->findChildren<QObject*>().size(), children) << what;
    EXPECT_EQ(stack.UndoCount(), undo) << what;
  };
  for (qsizetype n = 0; n < good.size() - 1; n += 1 + good.size() / 97)
    expectUnchanged(good.left(n), "cut at " + std::to_string(n));

  // The axes' count stands after the reference and the vectors.
  const qsizetype refEnd = 4 + qsizetype(strlen("Form1.Graph1"));
  QByteArray huge = good.left(refEnd) + QByteArray::fromHex("00FFFFFF7F") + good.mid(refEnd + 5);
  expectUnchanged(huge, "count 2^31 - 1 of axes");
  QByteArray wrongClass = good;
  wrongClass.replace(QByteArray("\x0d\0\0\0TQyLineSeries", 17), QByteArray("\x0a\0\0\0TQyGraph2D", 14));
  ASSERT_NE(wrongClass, good);
  expectUnchanged(wrongClass, "a graph in the list of series");

  // A good document reads and records nothing, on the graph's stack nor on a series' own.
  TQyUndoStack own;
  auto* series = new TQyLineSeries(f.form.get());
  series->setObjectName("Series1");
  series->SetUndoStack(&own);
  QBuffer b(&good);
  b.open(QIODevice::ReadOnly);
  f.graph->ReadFrom(&b);
  EXPECT_EQ(stack.UndoCount(), undo);
  EXPECT_EQ(own.UndoCount(), 0);
  EXPECT_EQ(series->GetCaption(), QString::fromUtf8("Messreihe ä"));
  // A series the read made joined the graph's stack: a later edit of it records.
  f.form->findChild<TQyLineSeries*>("Errors1")->SetCaption("edited");
  EXPECT_EQ(stack.UndoCount(), undo + 1);
}

// Text documents: a line feed inside an INI caption stays in its entry; a number in the wrong form
// is a read error, not a 0.
TEST(GraphDocumentText, IniLineBreaksAndWrongTypes) {
  Form f;
  f.graph->SetCaption("one\ntwo\r\nthree");
  TQyIniFile ini;
  f.graph->WriteTo(ini, "G");
  TQyIniFile reread;
  reread.SetStrings(ini.GetStrings());
  EXPECT_EQ(reread.ReadString("G", "Caption", {}), QString("one@\\ntwo@\\r@\\nthree"));
  Form g;
  g.graph->ReadFrom(reread, "G");
  EXPECT_EQ(g.graph->CaptionAsString(), f.graph->CaptionAsString());

  reread.WriteString("G", "Top", "abc");
  EXPECT_THROW(g.graph->ReadFrom(reread, "G"), EReadError);
}

} // namespace

namespace {

// The graph of tests/persist/gen_graph_documents.py, whose documents that script writes from the
// published layouts: its own settings, two vectors, an axis and a line series on them.
void MakeScripted(Form& f) {
  TQyGraph2D* g = f.graph;
  g->SetCaption(QString::fromUtf8("Übersicht µ"));
  g->SetCaptionVisible(true);
  g->SetCaptionColor(0xFF800000u);
  g->GetCaptionFont()->SetName("DejaVu Sans");
  g->GetCaptionFont()->SetSize(10.5f);
  g->GetCaptionFont()->SetStyle(TQyFontStyle::Bold);
  g->GetCaptionFont()->SetFillColor(0xFF112233u);
  g->SetDataAreaColor(0xFFF0F0E0u);
  g->SetDistanceBorderAxisLeft(7);

  const auto vector = [&](const char* name, std::vector<double> values) {
    auto* v = new TQyDoubleVector(f.form.get());
    v->setObjectName(name);
    v->AddRange(values);
    return v;
  };
  TQyDoubleVector* x = vector("VectorX", {-2.5, 0, 0.1, 3, 4.75});
  TQyDoubleVector* y = vector("VectorY", {1, -0.5, 2.25, 1e20, 3});
  y->AddOutlier(3);
  auto* axis = new TQyAxis(g);
  axis->setObjectName("Axis1");
  axis->SetCaption(QString::fromUtf8("Länge µm"));
  axis->SetForeColor(0xFF2E8B57u);
  axis->SetAxisThicknes(2.5f);
  axis->SetStart(-2.5);
  axis->SetStop(12.75);
  auto* s = new TQyLineSeries(f.form.get());
  s->setObjectName("Series1");
  s->SetCaption(QString::fromUtf8("Messreihe Ω"));
  s->GetLine()->SetColor(0xFF1E90FFu);
  s->PointSymbol()->SetVisible(true);
  s->PointSymbol()->SetPointSymbol(TQyPointSymbol::Diamond);
  s->PointSymbol()->SetBorderColor(0xFF000080u);
  s->PointSymbol()->SetFillColor(0x80FFD700u);
  s->OutOfRangePointSymbol()->SetPointSymbol(TQyPointSymbol::Diamond); // the default look counts series
  s->SetXData(x);
  s->SetYData(y);
  s->SetXAxis(axis);
  s->SetYAxis(axis);
}

// Elements in document order with their attributes sorted (the DOM keeps no attribute order) and
// the text of leaves.
std::string Canonical(const QDomElement& e) {
  QStringList attributes;
  const QDomNamedNodeMap map = e.attributes();
  for (int i = 0; i < map.count(); ++i) attributes << map.item(i).nodeName() + "=\"" + map.item(i).nodeValue() + '"';
  attributes.sort();
  std::string out = "<" + e.tagName().toStdString() + " " + attributes.join(' ').toStdString() + ">";
  if (e.firstChildElement().isNull()) out += e.text().toStdString();
  out += "\n";
  for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement()) out += Canonical(c);
  return out + "</" + e.tagName().toStdString() + ">\n";
}

QByteArray Expected(const char* name) {
  QFile file(QString(QY_TESTS_DIR) + "/persist/graph_documents/" + name);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
  return file.readAll();
}

// The document of the graph in one medium as comparable text: stream as hex lines, INI as the
// file's text, XML in canonical form.
std::string Comparable(TQyGraph2D* g, TMedium medium) {
  if (medium == TMedium::Stream) return HexLines(Write(g, TMedium::Stream).bytes);
  if (medium == TMedium::Xml) return Canonical(Write(g, TMedium::Xml).xml.documentElement());
  QTemporaryDir dir;
  TQyIniFile file(dir.filePath("graph.ini"));
  g->WriteTo(file, "Graph");
  file.UpdateFile();
  QFile written(file.FileName());
  EXPECT_TRUE(written.open(QIODevice::ReadOnly));
  return written.readAll().toStdString();
}

// The expected file of a medium, and its document to read.
std::string ExpectedText(TMedium medium, Document& d) {
  if (medium == TMedium::Stream) {
    d.bytes = Expected("graph.qyg");
    return HexLines(d.bytes);
  }
  if (medium == TMedium::Xml) {
    EXPECT_TRUE(d.xml.setContent(Expected("graph.xml")));
    return Canonical(d.xml.documentElement());
  }
  const QByteArray text = Expected("graph.ini");
  d.ini.SetStrings(QString::fromUtf8(text).split('\n'));
  return text.toStdString();
}

class GraphDocumentLayout : public testing::TestWithParam<TMedium> {};

// Written as the script expects; and the expected document, read into a fresh graph, is written
// again as it was (INI leaves out what the axis does not keep there, so each medium checks itself).
TEST_P(GraphDocumentLayout, ByteForByteAndBack) {
  Document expected;
  const std::string text = ExpectedText(GetParam(), expected);
  {
    Form f;
    MakeScripted(f);
    EXPECT_EQ(Comparable(f.graph, GetParam()), text);
  } // references name "Form1": one at a time
  Form fresh;
  Read(fresh.graph, GetParam(), expected);
  EXPECT_EQ(Comparable(fresh.graph, GetParam()), text);
}

INSTANTIATE_TEST_SUITE_P(Media, GraphDocumentLayout, testing::Values(TMedium::Stream, TMedium::Xml, TMedium::Ini));

} // namespace

namespace {

// An axis' data extents start at +/- the largest double, which 15 digits of text round beyond
// ("1.79769313486232E308"): the text media read that back as the largest double.
TEST(GraphDocumentText, LargestDoubleInFifteenDigitsReadsBack) {
  for (TMedium m : {TMedium::Xml, TMedium::Ini}) {
    Form f;
    f.graph->TestPrimaryAxis();
    Document d = Write(f.graph, m);
    const QString text = m == TMedium::Xml ? d.xml.toString() : d.ini.GetStrings().join('\n');
    EXPECT_TRUE(text.contains("-1.79769313486232E308")) << int(m);
    const QByteArray model = StreamOf(f.graph);
    Form g;
    EXPECT_NO_THROW(Read(g.graph, m, d)) << int(m);
    if (m == TMedium::Xml) EXPECT_EQ(StreamOf(g.graph), model); // INI lacks the axes' captions
  }
}

} // namespace
