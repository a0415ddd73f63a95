// Output to files, printers and the clipboard, checked by reading what was written.
#include "QyExpect.h"
#include "QyPixelProbe.h"
#include "QyTestGraph.h"
#include <QyExceptions.h>
#include <QyGifWriter.h>
#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProcess>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#ifdef QY_HAVE_GIFLIB
#include <gif_lib.h>
#endif

namespace {
constexpr QRgb Blue = 0xFF0000FFu, Green = 0xFF00FF00u;

// A graph whose data-area frame is green, so that the frame's bounds in a picture show where
// the layout put the data area, and whose curve is blue.
struct TFramed : QyTestGraph {
  TFramed() {
    AddSeries({0, 1, 2}, {0, 2, 1}, Blue)->GetLine()->SetWidth(3);
    graph->GetDataAreaFrame()->SetVisible(true);
    graph->GetDataAreaFrame()->SetColor(Green);
    graph->SetSmoothingMode(TQySmoothingMode::None); // lines on whole pixels
  }
  QByteArray Save(TQyImageFileFormat format, bool useColor = true, TQyColor color = 0xFFFFFFFFu, qreal ratio = 1) {
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    graph->SaveImage(&out, format, color, useColor, ratio);
    return out.data();
  }
};

QRect Frame(const QImage& image) { return QyProbe::BoundsOf(image, QColor(Green), 60); }

#ifdef QY_HAVE_GIFLIB
// The first picture of a GIF decoded by giflib, its transparent index made alpha 0.
struct TGif {
  QImage Image;
  int Colours = 0, Transparent = -1;
};
TGif DecodeGif(const QByteArray& data) {
  QBuffer in;
  in.setData(data);
  in.open(QIODevice::ReadOnly);
  int error = 0;
  GifFileType* gif = DGifOpen(&in, [](GifFileType* g, GifByteType* to, int n) {
    return int(static_cast<QBuffer*>(g->UserData)->read(reinterpret_cast<char*>(to), n));
  }, &error);
  TGif out;
  if (!gif) return out;
  if (DGifSlurp(gif) == GIF_OK && gif->ImageCount > 0) {
    GraphicsControlBlock gcb{};
    if (DGifSavedExtensionToGCB(gif, 0, &gcb) == GIF_OK) out.Transparent = gcb.TransparentColor;
    const ColorMapObject* map = gif->SColorMap;
    out.Colours = map->ColorCount;
    const SavedImage& picture = gif->SavedImages[0];
    out.Image = QImage(picture.ImageDesc.Width, picture.ImageDesc.Height, QImage::Format_ARGB32);
    for (int y = 0; y < out.Image.height(); ++y)
      for (int x = 0; x < out.Image.width(); ++x) {
        const int i = picture.RasterBits[y * out.Image.width() + x];
        const GifColorType c = map->Colors[i];
        out.Image.setPixel(x, y, i == out.Transparent ? 0u : qRgb(c.Red, c.Green, c.Blue));
      }
  }
  DGifCloseFile(gif, &error);
  return out;
}
#endif

// Text of a PDF through the system's converter, or a null string when it is not installed.
QString PdfText(const QString& file) {
  const QString tool = QStandardPaths::findExecutable("pdftotext");
  if (tool.isEmpty()) return {};
  QProcess p;
  p.start(tool, {file, "-"});
  p.waitForFinished();
  return QString::fromUtf8(p.readAllStandardOutput());
}
} // namespace

// Every raster format reads back at the picture's size and shows the curve and the frame where
// the PNG does; GIF is decoded by giflib.
TEST(Output, RasterFormatsReadBackWithThePicture) {
  TFramed f;
  const QImage png = QImage::fromData(f.Save(TQyImageFileFormat::PNG));
  ASSERT_EQ(png.size(), QSize(600, 400));
  const QRect frame = Frame(png);
  ASSERT_FALSE(frame.isEmpty());
  struct Row {
    TQyImageFileFormat format;
    int tolerance; // per channel: JPEG is lossy
  };
  for (const Row& r : {Row{TQyImageFileFormat::BMP, 0}, Row{TQyImageFileFormat::JPEG, 40},
                       Row{TQyImageFileFormat::TIFF, 0}, Row{TQyImageFileFormat::GIF, 0}}) {
    SCOPED_TRACE(int(r.format));
    const QByteArray data = f.Save(r.format);
    QImage back = QImage::fromData(data);
#ifdef QY_HAVE_GIFLIB
    if (r.format == TQyImageFileFormat::GIF) back = DecodeGif(data).Image;
#endif
    ASSERT_EQ(back.size(), QSize(600, 400));
    if (r.tolerance == 0) { // JPEG blurs a line of one pixel beyond recognition
      EXPECT_EQ(Frame(back).left(), frame.left());
    }
    EXPECT_TRUE(QyProbe::Any(back, frame, QColor(Blue), 40 + r.tolerance));
  }
  const QImage icon = QImage::fromData(f.Save(TQyImageFileFormat::Icon));
  EXPECT_FALSE(icon.isNull());
}

// With UseColor the ground has the given colour; without it the ground stays transparent where
// the control's background is (PNG keeps alpha, GIF its transparent index).
TEST(Output, UseColorOrATransparentGround) {
  TFramed f;
  const QImage coloured = QImage::fromData(f.Save(TQyImageFileFormat::PNG, true, 0xFFFFFF00u));
  EXPECT_EQ(QyProbe::At(coloured, 1, 1), 0xFFFFFF00u);
  const QImage clear = QImage::fromData(f.Save(TQyImageFileFormat::PNG, false));
  EXPECT_EQ(qAlpha(QyProbe::At(clear, 1, 1)), 0);
  EXPECT_TRUE(QyProbe::Any(clear, Frame(coloured), QColor(Blue), 40));
  f.graph->SetBackColor(0xFF808080u); // an opaque background is painted whatever the ground
  EXPECT_EQ(QyProbe::At(QImage::fromData(f.Save(TQyImageFileFormat::PNG, false)), 1, 1), 0xFF808080u);
#ifdef QY_HAVE_GIFLIB
  f.graph->SetBackColor(0x00FFFFFFu);
  const TGif gif = DecodeGif(f.Save(TQyImageFileFormat::GIF, false));
  EXPECT_GE(gif.Transparent, 0);
  EXPECT_LE(gif.Colours, 256);
  EXPECT_EQ(qAlpha(gif.Image.pixel(1, 1)), 0);
  EXPECT_EQ(Frame(gif.Image).left(), Frame(coloured).left());
#endif
}

// A pixel ratio of 2 or 3 gives the same layout in more pixels: the frame stands at the same
// place in the control's pixels, and a thin line is no more than the ratio thick.
TEST(Output, PixelRatiosKeepTheLayout) {
  TFramed f;
  const QRect frame = Frame(QImage::fromData(f.Save(TQyImageFileFormat::PNG)));
  for (int ratio : {2, 3}) {
    SCOPED_TRACE(ratio);
    const QImage dense = QImage::fromData(f.Save(TQyImageFileFormat::PNG, true, 0xFFFFFFFFu, ratio));
    ASSERT_EQ(dense.size(), QSize(600, 400) * ratio);
    const QRect scaled = Frame(dense);
    EXPECT_NEAR(scaled.left(), frame.left() * ratio, ratio);
    EXPECT_NEAR(scaled.bottom(), frame.bottom() * ratio + ratio - 1, ratio);
    const int y = (scaled.top() + scaled.bottom()) / 2;
    EXPECT_LE(QyProbe::Count(dense, QRect(scaled.left(), y, 3 * ratio, 1), QColor(Green), 60), ratio);
    EXPECT_NEAR(dense.dotsPerMeterX(), f.graph->logicalDpiX() / 0.0254 * ratio, 1);
  }
}

// SVG (and EMF, which writes SVG) and PDF hold the texts of the picture as vector data.
TEST(Output, VectorFormatsHoldTheText) {
  TFramed f;
  const QByteArray svg = f.Save(TQyImageFileFormat::SVG), emf = f.Save(TQyImageFileFormat::EMF);
  EXPECT_TRUE(svg.contains("<svg") && svg.contains("X-Axis") && svg.contains("viewBox=\"0 0 600 400\""));
  EXPECT_EQ(emf, svg);
  QTemporaryDir dir;
  const QString pdf = dir.filePath("graph.pdf");
  f.graph->SaveImage(pdf, TQyImageFileFormat::PDF);
  QFile read(pdf);
  ASSERT_TRUE(read.open(QIODevice::ReadOnly));
  EXPECT_TRUE(read.readAll().startsWith("%PDF"));
  const QString text = PdfText(pdf);
  if (!text.isNull()) {
    EXPECT_TRUE(text.contains("Y-Axis")) << text.toStdString();
  }
}

// EXIF has no writer: a clear error, and no file is made; a folder that does not exist names
// the file in its message; a device that takes nothing fails the writers.
TEST(Output, UnwritableFormatsAndPlacesRaise) {
  TFramed f;
  QBuffer readOnly;
  readOnly.open(QIODevice::ReadOnly);
  for (TQyImageFileFormat format : {TQyImageFileFormat::PNG, TQyImageFileFormat::GIF})
    EXPECT_THROW(f.graph->SaveImage(&readOnly, format), EWriteError) << int(format);
  QTemporaryDir dir;
  const QString exif = dir.filePath("graph.exif");
  EXPECT_EQ(QyMessageOf<EWriteError>([&] { f.graph->SaveImage(exif, TQyImageFileFormat::EXIF); }),
            "There is no writer for images in EXIF format");
  EXPECT_FALSE(QFile::exists(exif));
  const QString nowhere = dir.filePath("no/such/folder.png");
  const QString message = QyMessageOf<EStreamError>([&] { f.graph->SaveImage(nowhere, TQyImageFileFormat::PNG); });
  EXPECT_TRUE(message.startsWith(QString("Cannot create file \"%1\".").arg(nowhere))) << message.toStdString();
}

// Shown scroll bars are left out: the picture loses the vertical bar's strip at the left and
// the horizontal bar's height, and the rest is moved left by the strip.
TEST(Output, ScrollBarsAreCutOff) {
  TFramed f;
  const QRect frame = Frame(QImage::fromData(f.Save(TQyImageFileFormat::PNG)));
  auto* across = new QScrollBar(Qt::Horizontal, f.graph);
  auto* up = new QScrollBar(Qt::Vertical, f.graph);
  across->setGeometry(0, 383, 600, 17);
  up->setGeometry(0, 0, 15, 383);
  up->hide();
  EXPECT_EQ(f.graph->ImageSize(), QSize(600, 383));
  up->show();
  EXPECT_EQ(f.graph->ImageGraphLeft(), 15);
  const QImage cut = QImage::fromData(f.Save(TQyImageFileFormat::PNG));
  ASSERT_EQ(cut.size(), QSize(585, 383));
  EXPECT_EQ(Frame(cut).left(), frame.left() - 15);
}

namespace {
// A master graph with a child graph on its X axis, each 400 x 200: the master's data area is
// blue, the child's green.
struct TCoupled : QyTestGraph {
  TQyGraph2D* child;
  TCoupled() : QyTestGraph(400, 200) {
    AddSeries({0, 10}, {0, 1});
    child = new TQyGraph2D(form.get());
    child->setObjectName("Graph2");
    child->resize(400, 200);
    child->SetPrimaryXAxis(X());
    child->TestPrimaryAxis();
    AddSeries({0, 10}, {1, 0})->SetYAxis(child->GetPrimaryYAxis());
    graph->SetDataAreaColor(Blue);
    child->SetDataAreaColor(Green);
    for (TQyGraph2D* g : {graph, child}) g->SetSmoothingMode(TQySmoothingMode::None);
  }
};
} // namespace

// Asked of either graph, the picture is the whole stack: the child above the master, both with
// their data areas' edges in line; scroll bars of the stack are cut off, but never more than
// the leftmost left axis allows.
TEST(Output, CoupledGraphsComeOutAsOneStack) {
  TCoupled c;
  for (TQyGraph2D* asked : {c.graph, c.child}) {
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    asked->SaveImage(&out, TQyImageFileFormat::PNG);
    const QImage stack = QImage::fromData(out.data());
    ASSERT_EQ(stack.size(), QSize(400, 400));
    const QRect top = QyProbe::BoundsOf(stack, QColor(Green)), bottom = QyProbe::BoundsOf(stack, QColor(Blue));
    EXPECT_LT(top.bottom(), 200);
    EXPECT_GE(bottom.top(), 200);
    EXPECT_NEAR(top.left(), bottom.left(), 1); // an axis line may cover the first column
    EXPECT_EQ(top.right(), bottom.right());
  }
  auto* bar = new QScrollBar(Qt::Horizontal, c.graph);
  bar->setGeometry(0, 180, 400, 20);
  auto* up = new QScrollBar(Qt::Vertical, c.graph);
  up->setGeometry(0, 0, 60, 180);
  EXPECT_EQ(c.child->ImgageGraphHeight(), 380);
  EXPECT_EQ(c.child->ImageGraphLeft(), std::min(60, c.child->GetPrimaryYAxis()->x()));
}

// The bitmap treats the given colour as transparent; the recorded picture has the picture's
// extent and draws it again.
TEST(Output, BitmapAndRecordedPicture) {
  TFramed f;
  const QImage bitmap = f.graph->AsTBitmap(0xFFFF00FFu);
  EXPECT_EQ(qAlpha(QyProbe::At(bitmap, 1, 1)), 0);
  const QRect frame = Frame(bitmap);
  EXPECT_TRUE(QyProbe::Any(bitmap, frame, QColor(Blue), 40));
  const QPicture picture = f.graph->AsTMetafile();
  EXPECT_EQ(picture.boundingRect(), QRect(0, 0, 600, 400));
  QImage replay(600, 400, QImage::Format_ARGB32);
  replay.fill(Qt::white);
  QPainter(&replay).drawPicture(0, 0, picture);
  EXPECT_NEAR(Frame(replay).left(), frame.left(), 1);
}

// Printing keeps the proportions: in a wide rectangle as high as it and centred across, in a
// tall one as wide as it, at its top. Read back from the printer's PDF output.
TEST(Output, PrintKeepsProportionsAsVectorData) {
  const QString render = QStandardPaths::findExecutable("pdftoppm");
  if (render.isEmpty()) GTEST_SKIP() << "pdftoppm is not installed";
  TFramed f;
  f.graph->SetBackColor(0xFFFF0000u); // the whole picture is red
  QTemporaryDir dir;
  struct Row {
    QRectF rect; // in points of the page: 72 per inch
    QRectF expected;
  };
  for (const Row& r : {Row{{36, 36, 450, 100}, {36 + (450 - 150) / 2.0, 36, 150, 100}},
                       Row{{36, 36, 300, 500}, {36, 36, 300, 200}}}) {
    SCOPED_TRACE(r.rect.width());
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(dir.filePath("print.pdf"));
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setFullPage(true);
    const qreal k = printer.resolution() / 72.0;
    f.graph->PrintTo(&printer, QRectF(r.rect.topLeft() * k, r.rect.size() * k));
    ASSERT_EQ(QProcess::execute(render, {"-r", "72", "-png", "-singlefile", dir.filePath("print.pdf"),
                                         dir.filePath("page")}), 0);
    const QImage page(dir.filePath("page.png"));
    const QRect red = QyProbe::BoundsOf(page, Qt::red, 40);
    EXPECT_NEAR(red.left(), r.expected.left(), 1.5);
    EXPECT_NEAR(red.top(), r.expected.top(), 1.5);
    EXPECT_NEAR(red.width(), r.expected.width(), 1.5);
    EXPECT_NEAR(red.height(), r.expected.height(), 1.5);
    EXPECT_TRUE(PdfText(dir.filePath("print.pdf")).contains("X-Axis"));
  }
}

#ifdef QY_HAVE_GIFLIB
// A GIF of at most 256 colours keeps them exactly, with one transparent index; a gradient of
// 65536 colours (red by x, green by y) comes back in 256 colours, as boxes of 16 x 16 whose
// means are at most 8 off in each channel.
TEST(Output, GifKeepsFewColoursAndReducesMany) {
  QImage few(4, 1, QImage::Format_ARGB32);
  const QRgb colours[] = {0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu, 0x00000000u};
  for (int x = 0; x < 4; ++x) few.setPixel(x, 0, colours[x]);
  QImage many(256, 256, QImage::Format_RGB32);
  for (int y = 0; y < 256; ++y)
    for (int x = 0; x < 256; ++x) many.setPixel(x, y, qRgb(x, y, 128));
  for (const QImage& image : {few, many}) {
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    QyWriteGif(image, &out);
    const TGif gif = DecodeGif(out.data());
    ASSERT_EQ(gif.Image.size(), image.size());
    EXPECT_EQ(gif.Transparent >= 0, image.hasAlphaChannel());
    int worst = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) {
        const QRgb a = image.pixel(x, y), b = gif.Image.pixel(x, y);
        worst = std::max({worst, std::abs(qAlpha(a) - qAlpha(b)), std::abs(qRed(a) - qRed(b)),
                          std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
      }
    EXPECT_EQ(worst, image.width() == 4 ? 0 : 8);
  }
  EXPECT_EQ(QyQuantize(many).Palette.size(), 256);
}
#endif

// The preview asks the graph for its page; the clipboard gets a PNG at the screen's pixel ratio
// and the SVG in one entry.
TEST(Output, PreviewAndClipboard) {
  TFramed f;
  QPrintPreviewDialog* preview = f.graph->NewPrintPreview();
  int pages = 0;
  QObject::connect(preview, &QPrintPreviewDialog::paintRequested, [&](QPrinter*) { ++pages; });
  preview->findChild<QPrintPreviewWidget*>()->updatePreview();
  EXPECT_EQ(pages, 1);
  EXPECT_EQ(preview->findChild<QPrintPreviewWidget*>()->pageCount(), 1);
  delete preview;

  f.graph->CopyToClipboard();
  const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
  ASSERT_NE(mime, nullptr);
  const QImage png = QImage::fromData(mime->data("image/png"), "PNG");
  EXPECT_EQ(png.size(), QSize(600, 400) * f.graph->devicePixelRatioF());
  EXPECT_TRUE(mime->data("image/svg+xml").contains("X-Axis"));
}
