// libFuzzer entry for every reader of text and bytes: one program, the reader chosen by the
// environment (QY_FUZZ_TARGET=formula ...; the names are the folders of tests/fuzz/corpus). Any EQyException is an answer; a crash, a
// sanitizer report, a hang or another exception is a finding.
#include <QApplication>
#include <QBuffer>
#include <QDomDocument>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QyDateTime.h>
#include <QyExceptions.h>
#include <QyGDI.h>
#include <QyGraph2D.h>
#include <QyIO.h>
#include <QyIniFile.h>
#include <QyParseFkt.h>
#include <QyPieLegend.h>
#include <QyPointSeries.h>
#include <QyPlaceholders.h>
#include <QyRecordMedia.h>
#include <QyRichLabel.h>
#include <QyStringFunctions.h>
#include <QyStyles.h>
#include <QyTextFormat.h>
#include <QyUndoStack.h>
#include <QyVectors.h>
#include <QyXml.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <string>

namespace {

QString Text(const uint8_t* data, size_t size) {
  return QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
}

// Runs `f`; the library's own exceptions are the expected answer to bad input.
void Answer(const std::function<void()>& f) {
  try {
    f();
  } catch (const EQyException&) {
  }
}

// The first bytes as a double (0 when there are too few), the rest as text.
double LeadingDouble(const uint8_t*& data, size_t& size) {
  double v = 0;
  if (size < sizeof v) return v;
  std::memcpy(&v, data, sizeof v);
  data += sizeof v;
  size -= sizeof v;
  return v;
}

void Formula(const uint8_t* data, size_t size) {
  TQyFunctionParser p;
  Answer([&] {
    p.SetExpression(Text(data, size));
    (void)p.GetResult();
  });
}

void Placeholders(const uint8_t* data, size_t size) { Answer([&] { (void)ParseVariables(Text(data, size), nullptr); }); }

void Caption(const uint8_t* data, size_t size) {
  QImage image(64, 32, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  TQyRichCaptionObject caption(nullptr);
  caption.Caption = Text(data, size);
  caption.ParseForSize(&painter, nullptr);
  caption.PaintGr(&painter); // painting never raises
}

void Colour(const uint8_t* data, size_t size) {
  const QString s = Text(data, size);
  Answer([&] { (void)ColorToARGB(s); });
  Answer([&] { (void)RichIDToTQyColor(s); });
}

void Number(const uint8_t* data, size_t size) {
  const QString s = Text(data, size);
  Answer([&] { (void)StrToFloat(s); });
  Answer([&] { (void)StrToInt(s); });
  Answer([&] { (void)DoubleFromStr(s); });
  Answer([&] { (void)StringToDoubleArray(s); });
  Answer([&] { (void)StringToIntegerArray(s); });
  Answer([&] { (void)DoubleFomTimeSpanStr(s); });
  Answer([&] { (void)StrToShiftState(s); });
  (void)DecodeFomIni(s);
  for (auto extract : {+[](QString& t) { (void)ExtractOneInt(t); }, +[](QString& t) { (void)ExtractOneDouble(t); }}) {
    QString rest = s;
    for (int i = 0; i < 64 && !rest.isEmpty(); ++i) {
      const qsizetype before = rest.size();
      try {
        extract(rest);
      } catch (const EQyException&) {
        break;
      }
      if (rest.size() >= before) break; // nothing taken: no progress to be made
    }
  }
}

// Format strings of FormatFloat, FormatDateTime and Format, with a value from the first bytes.
void FormatText(const uint8_t* data, size_t size) {
  const double v = LeadingDouble(data, size);
  const QString f = Text(data, size);
  Answer([&] { (void)FormatFloat(f, v); });
  Answer([&] { (void)FormatDateTime(f, v); });
  Answer([&] { (void)MyDateTimeToString(f, v); });
  Answer([&] { (void)Format(f, {v, qint64(v == v && std::abs(v) < 9e18 ? qint64(v) : 7), f, 42}); });
  Answer([&] { (void)SecondsToString(v, TQySecondsFormatRange(size % 4)); });
  Answer([&] { (void)DoubleToTimeSpanStr(v); });
  Answer([&] { (void)FloatToStrF(v, TFloatFormat(size % 5), int(size % 40) - 5, int(size % 7) - 1); });
  Answer([&] { (void)RealToStrDigits(v, int(size % 30)); });
}

// The objects every document reader below reads into.
struct DocumentTargets {
  TQyGraph2D graph;
  TQyDoubleVector vector;
  TQyLineSettings line{nullptr};
  TQyFont font{nullptr};
  std::vector<QObject*> All() { return {&graph, &vector, &line, &font}; }
};

void Ini(const uint8_t* data, size_t size) {
  TQyIniFile ini;
  ini.SetStrings(Text(data, size).split('\n'));
  DocumentTargets t;
  for (const QString& section : ini.ReadSections())
    for (QObject* o : t.All()) Answer([&] { QyReadFromIni(o, ini, section); });
}

void Xml(const uint8_t* data, size_t size) {
  QDomDocument doc;
  if (!doc.setContent(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)))) return;
  const QDomElement root = doc.documentElement();
  for (const QString& name : {QString("Name"), QString("Color"), QString("Width")}) {
    Answer([&] { (void)AttrString(root, name, {}); });
    Answer([&] { (void)AttrInteger(root, name, 0); });
    Answer([&] { (void)AttrBool(root, name, false); });
    Answer([&] { (void)AttrFloat(root, name, 0); });
    Answer([&] { (void)AttrColor(root, name, 0); });
    (void)ContainsNode(root, name);
  }
  DocumentTargets t;
  for (QObject* o : t.All()) Answer([&] { QyReadFromNode(o, root, true); });
}

// The value stream and the binary documents over it.
void ByteStream(const uint8_t* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  {
    QBuffer b;
    b.setData(bytes);
    b.open(QIODevice::ReadOnly);
    TQyValueReader r(&b);
    Answer([&] {
      for (int i = 0; i < 256 && !b.atEnd(); ++i) {
        switch (r.NextValue()) {
        case TQyValueType::Int32: case TQyValueType::Int64: (void)r.ReadInteger(); break;
        case TQyValueType::Double: (void)r.ReadFloat(); break;
        case TQyValueType::String: (void)GetFloatFromStringOrFloat(r); break;
        case TQyValueType::Binary: (void)r.ReadBinary(); break;
        case TQyValueType::List: r.ReadListBegin(); break;
        default: (void)r.ReadBoolean(); break;
        }
      }
    });
  }
  DocumentTargets t;
  for (QObject* o : t.All()) {
    QBuffer b;
    b.setData(bytes);
    b.open(QIODevice::ReadOnly);
    Answer([&] { QyReadFromStream(o, &b, true); });
  }
  QBuffer b;
  b.setData(bytes);
  b.open(QIODevice::ReadOnly);
  Answer([&] { (void)StringFromStream(&b); });
}

// Graph documents: read into a graph with axes and a series on a form. A read that fails must
// leave the graph's own document as it was; anything else is a finding.
struct GraphForm {
  QWidget form;
  TQyGraph2D* graph = new TQyGraph2D(&form);
  GraphForm() {
    form.setObjectName("Form1");
    graph->setObjectName("Graph1");
    graph->TestPrimaryAxis();
    auto* s = new TQyLineSeries(&form);
    s->setObjectName("Series1");
    auto* y = new TQyDoubleVector(&form);
    y->setObjectName("Vector1");
    y->AddRange(std::vector<double>{1, 3, 2});
    s->SetYData(y);
    s->SetXAxis(graph->GetPrimaryXAxis());
    s->SetYAxis(graph->GetPrimaryYAxis());
  }
  TQyGraph2D* Doc() const { return graph; }
  QByteArray Document() {
    QByteArray bytes;
    QBuffer b(&bytes);
    b.open(QIODevice::WriteOnly);
    graph->WriteTo(&b, true);
    return bytes;
  }
  void Read(const std::function<void()>& read) {
    const QByteArray before = Document();
    try {
      read();
    } catch (const EQyException&) {
      if (Document() != before) abort(); // half-read
    }
  }
};

// The three readers of a document of T's object (Doc()); T::Read runs one read and checks that a
// failed one left the object as it was.
template <class T> void StreamDocument(const uint8_t* data, size_t size) {
  T t;
  QBuffer b;
  b.setData(reinterpret_cast<const char*>(data), qsizetype(size));
  b.open(QIODevice::ReadOnly);
  t.Read([&] { t.Doc()->ReadFrom(&b); });
}

template <class T> void XmlDocument(const uint8_t* data, size_t size) {
  QDomDocument doc;
  if (!doc.setContent(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)))) return;
  T t;
  t.Read([&] { t.Doc()->ReadFrom(doc.documentElement()); });
}

template <class T> void IniDocument(const uint8_t* data, size_t size) {
  TQyIniFile ini;
  ini.SetStrings(Text(data, size).split('\n'));
  T t;
  for (const QString& section : ini.ReadSections()) t.Read([&] { t.Doc()->ReadFrom(ini, section); });
}

// A log of every kind of record, XOR-ed with the input (zeros leave it intact), replayed both
// ways. The logs are files here, so that the input can reach the bytes.
void UndoReplay(const uint8_t* data, size_t size) {
  TQyUndoStack stack;
  stack.SetToMemoryStream(false);
  TQyLineSettings line(nullptr);
  line.SetUndoStack(&stack);
  TQyDoubleVector vector;
  vector.AddRange(std::vector<double>{1, 2, 3});
  line.SetWidth(2);
  line.SetVisible(false);
  line.SetColor(0x80FF0000u);
  stack.StartGroup("Group");
  line.SetDashStyle(QyGDI::TDashStyle::DashStyleDash);
  stack.PushVectorState(&vector, "Data");
  stack.StopGroup();
  {
    QFile log(stack.LogFileNames()[0]);
    if (!log.open(QIODevice::ReadWrite)) return;
    QByteArray bytes = log.readAll();
    if (qsizetype(size) > bytes.size()) bytes.resize(qsizetype(size), '\0');
    for (size_t i = 0; i < size; ++i) bytes[qsizetype(i)] = char(bytes[qsizetype(i)] ^ data[i]);
    log.seek(0);
    log.write(bytes);
  }
  stack.Undo(stack.UndoList().Count() - 1); // failures are dropped there
  Answer([&] { stack.Redo(stack.RedoList().Count() - 1); });
}

// ---- pie chart documents: a reader either takes the whole document or leaves the chart as it
// was; a chart that read one paints.
struct PieTarget {
  QWidget form;
  TQyPieChart* pie = new TQyPieChart(&form);
  PieTarget() {
    form.setObjectName("DocForm");
    pie->setObjectName("Pie1");
    auto* values = new TQyDoubleVector(&form);
    values->setObjectName("Vals");
    values->AddRange(std::vector<double>{3, 1, 4});
    (new TQyFillPalette(&form))->setObjectName("Palette1");
    (new TQyPieLegend(pie))->setObjectName("PieLegend1");
    pie->resize(120, 90);
  }
  TQyPieChart* Doc() const { return pie; }
  QByteArray State() const {
    QBuffer b;
    b.open(QIODevice::WriteOnly);
    pie->WriteTo(&b);
    return b.data();
  }
  void Read(const std::function<void()>& read) {
    const QByteArray before = State();
    try {
      read();
    } catch (const EQyException&) {
      if (State() != before) abort(); // half read
      return;
    }
    pie->resize(120, 90);
    (void)pie->RenderToImage();
  }
};

const std::map<std::string, void (*)(const uint8_t*, size_t)> Targets = {
    {"formula", Formula},       {"placeholders", Placeholders}, {"caption", Caption},
    {"colour", Colour},         {"number", Number},             {"format", FormatText},
    {"ini", Ini},               {"xml", Xml},                   {"bytestream", ByteStream},
    {"undo", UndoReplay},       {"graphstream", StreamDocument<GraphForm>}, {"graphxml", XmlDocument<GraphForm>},
    {"graphini", IniDocument<GraphForm>},   {"piestream", StreamDocument<PieTarget>},
    {"piexml", XmlDocument<PieTarget>},    {"pieini", IniDocument<PieTarget>}};

void (*Target)(const uint8_t*, size_t) = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  static QApplication app(*argc, *argv);
  QApplication::setFont(QFont("DejaVu Sans", 9));
  const auto it = Targets.find(qgetenv("QY_FUZZ_TARGET").toStdString());
  if (it == Targets.end()) {
    fprintf(stderr, "QY_FUZZ_TARGET names no reader\n");
    std::exit(2);
  }
  Target = it->second;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 4096) return -1; // longer inputs find nothing new and slow the run down
  Target(data, size);
  return 0;
}
