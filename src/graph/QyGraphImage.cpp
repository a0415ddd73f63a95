// Output to files, printers and the clipboard. Every target takes the one picture of the control
// (PaintToImage): raster images through Qt's writers or giflib, SVG and PDF as vector data,
// printing and the clipboard through a recorded picture.
#include "QyAxis.h"
#include "QyExceptions.h"
#include "QyGifWriter.h"
#include "QyGraph2D.h"
#include "QyLocalize.h"
#include <QBuffer>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QImageWriter>
#include <QMetaEnum>
#include <QMimeData>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScrollBar>
#include <QSvgGenerator>
#include <algorithm>
#include <cmath>
#include <functional>

namespace {
using TPaint = std::function<void(QPainter*)>;

QString FormatName(TQyImageFileFormat format) {
  return QMetaEnum::fromType<TQyImageFileFormat>().valueToKey(int(format));
}

// The writer of Qt for a raster format; empty for the formats written otherwise or not at all.
QByteArray QtWriter(TQyImageFileFormat format) {
  switch (format) {
  case TQyImageFileFormat::BMP: return "bmp";
  case TQyImageFileFormat::JPEG: return "jpeg";
  case TQyImageFileFormat::PNG: return "png";
  case TQyImageFileFormat::TIFF: return "tiff";
  case TQyImageFileFormat::Icon: return "ico";
  default: return {};
  }
}

bool IsVector(TQyImageFileFormat f) {
  return f == TQyImageFileFormat::EMF || f == TQyImageFileFormat::SVG || f == TQyImageFileFormat::PDF;
}

// Raises before anything is drawn or a file is made: EXIF has no writer, nor a format whose
// plugin is missing.
void CheckWritable(TQyImageFileFormat format) {
  if (IsVector(format) || format == TQyImageFileFormat::GIF) return;
  const QByteArray writer = QtWriter(format);
  if (writer.isEmpty() || !QImageWriter::supportedImageFormats().contains(writer))
    throw EWriteError(QyFormatMessage(QyRes::ImageNoWriter, {FormatName(format)}));
}

// Vector output at the control's resolution: one unit is one pixel of the control.
void WriteSvg(QIODevice* out, QSize size, int dpi, const TPaint& paint) {
  QSvgGenerator svg;
  svg.setOutputDevice(out);
  svg.setResolution(dpi);
  svg.setSize(size);
  svg.setViewBox(QRect(QPoint(0, 0), size));
  QPainter p(&svg);
  paint(&p);
}

void WritePdf(QIODevice* out, QSize size, int dpi, const TPaint& paint) {
  QPdfWriter pdf(out);
  pdf.setResolution(dpi);
  pdf.setPageSize(QPageSize(QSizeF(size.width() * 72.0 / dpi, size.height() * 72.0 / dpi), QPageSize::Point));
  pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
  QPainter p(&pdf);
  paint(&p);
}

// The picture on `color`, or on a transparent ground. It is laid out as on screen: the image
// keeps the control's resolution while it is painted (fonts resolve for it) and takes `ratio`
// pixels per pixel of the control through its pixel ratio; its file names the resolution the
// pixels have.
QImage Raster(TQyCustomGraph* graph, TQyColor color, bool useColor, qreal ratio) {
  if (!(ratio >= 0.1 && ratio <= 16)) ratio = 1;
  const QSize size = graph->ImageSize();
  QImage image(QSize(int(std::ceil(size.width() * ratio)), int(std::ceil(size.height() * ratio))),
               useColor ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
  if (image.isNull())
    throw EWriteError(QyFormatMessage(QyRes::ImageWriteError, {"image", QString("%1 x %2").arg(size.width()).arg(size.height())}));
  const qreal dpmX = graph->logicalDpiX() / 0.0254, dpmY = graph->logicalDpiY() / 0.0254;
  image.setDotsPerMeterX(int(std::lround(dpmX))); // round-away-ok: metres
  image.setDotsPerMeterY(int(std::lround(dpmY))); // round-away-ok
  image.setDevicePixelRatio(ratio);
  image.fill(useColor ? QColor::fromRgb(color | 0xFF000000u) : QColor(Qt::transparent));
  {
    QPainter p(&image);
    graph->PaintToImage(&p, 0, 0, false);
  }
  image.setDotsPerMeterX(int(std::lround(dpmX * ratio))); // round-away-ok
  image.setDotsPerMeterY(int(std::lround(dpmY * ratio))); // round-away-ok
  return image;
}

void WriteRaster(QIODevice* out, TQyImageFileFormat format, QImage image) {
  if (format == TQyImageFileFormat::GIF) return QyWriteGif(image, out);
  if (format == TQyImageFileFormat::JPEG && image.hasAlphaChannel()) {
    // JPEG has no transparency: the transparent ground becomes white, not black.
    QImage flat(image.size(), QImage::Format_RGB32);
    flat.setDotsPerMeterX(image.dotsPerMeterX());
    flat.setDotsPerMeterY(image.dotsPerMeterY());
    flat.fill(Qt::white);
    QPainter(&flat).drawImage(QPoint(0, 0), image);
    image = flat;
  }
  QImageWriter writer(out, QtWriter(format));
  if (!writer.write(image))
    throw EWriteError(QyFormatMessage(QyRes::ImageWriteError, {FormatName(format), writer.errorString()}));
}

void PaintGround(QPainter* p, QSize size, TQyColor color, bool useColor) {
  if (useColor) p->fillRect(QRect(QPoint(0, 0), size), QColor::fromRgb(color | 0xFF000000u));
}
} // namespace

void TQyCustomGraph::SaveImage(QIODevice* out, TQyImageFileFormat format, TQyColor color, bool useColor, qreal pixelRatio) {
  CheckWritable(format);
  const QSize size = ImageSize();
  const TPaint paint = [&](QPainter* p) {
    PaintGround(p, size, color, useColor);
    PaintToImage(p, 0, 0, true);
  };
  if (format == TQyImageFileFormat::PDF) WritePdf(out, size, logicalDpiX(), paint);
  else if (IsVector(format)) WriteSvg(out, size, logicalDpiX(), paint);
  else WriteRaster(out, format, Raster(this, color, useColor, pixelRatio));
}

// A failed write leaves no file behind.
void TQyCustomGraph::SaveImage(const QString& fileName, TQyImageFileFormat format, TQyColor color, bool useColor,
                               qreal pixelRatio) {
  CheckWritable(format);
  QFile file(fileName);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
    throw EStreamError(QyFormatMessage(QyRes::FileCreateError, {fileName, file.errorString()}));
  try {
    SaveImage(&file, format, color, useColor, pixelRatio);
  } catch (...) {
    file.remove();
    throw;
  }
}

QImage TQyCustomGraph::AsTBitmap(TQyColor color) {
  QImage image = Raster(this, color, true, 1).convertToFormat(QImage::Format_ARGB32);
  const QRgb key = color | 0xFF000000u;
  for (int y = 0; y < image.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x)
      if (line[x] == key) line[x] = 0;
  }
  return image;
}

QPicture TQyCustomGraph::AsTMetafile() {
  QPicture picture;
  {
    QPainter p(&picture);
    PaintToImage(&p, 0, 0, true);
  }
  picture.setBoundingRect(QRect(QPoint(0, 0), ImageSize()));
  return picture;
}

// The picture is recorded at the control's layout and played scaled onto the page, so the page
// shows what the screen does (coupled graphs in line) as vector data. A recorded picture scales
// its text with it, which a painter on the printer itself would not.
void TQyCustomGraph::PrintTo(QPagedPaintDevice* printer, QRectF rect) {
  if (!printer) return;
  if (rect.isEmpty()) rect = QRectF(0, 0, printer->width(), printer->height());
  const QSizeF picture = ImageSize();
  if (picture.isEmpty() || rect.isEmpty()) return;
  const qreal aspect = picture.width() / picture.height();
  // As high as the rectangle and centred across when that is wider than the picture, else as
  // wide as the rectangle; at its top either way.
  QRectF target(rect.left(), rect.top(), rect.height() * aspect, rect.height());
  if (rect.width() / rect.height() >= aspect) target.moveLeft(rect.left() + (rect.width() - target.width()) / 2);
  else target.setSize(QSizeF(rect.width(), rect.width() / aspect));
  const QPicture recorded = AsTMetafile();
  QPainter p(printer);
  p.translate(target.topLeft());
  // A picture plays at the resolution of the device it plays on: that much is taken back.
  p.scale(target.width() / picture.width() * recorded.logicalDpiX() / printer->logicalDpiX(),
          target.height() / picture.height() * recorded.logicalDpiY() / printer->logicalDpiY());
  p.drawPicture(0, 0, recorded);
}

QPrintPreviewDialog* TQyCustomGraph::NewPrintPreview(QWidget* parent) {
  auto* dialog = new QPrintPreviewDialog(parent);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QPrintPreviewDialog::paintRequested, this, [this](QPrinter* printer) { PrintTo(printer); });
  return dialog;
}

void TQyCustomGraph::CopyToClipboard() {
  const QImage image = Raster(this, 0, false, devicePixelRatioF());
  QByteArray png, svg;
  QBuffer pngOut(&png), svgOut(&svg);
  pngOut.open(QIODevice::WriteOnly);
  svgOut.open(QIODevice::WriteOnly);
  image.save(&pngOut, "PNG");
  SaveImage(&svgOut, TQyImageFileFormat::SVG, 0, false);
  auto* mime = new QMimeData;
  mime->setImageData(image);
  mime->setData("image/png", png);
  mime->setData("image/svg+xml", svg);
  QGuiApplication::clipboard()->setMimeData(mime);
}

// ---- the picture of a graph: the coupled graphs stacked, the scroll bars' strips left out

namespace {
// A scroll bar of the graph that is shown. The bars are child widgets of the graph; output
// finds them by their orientation and needs nothing else of the zoom machinery.
const QScrollBar* ShownBar(const QWidget* graph, Qt::Orientation orientation) {
  for (const QObject* c : graph->children())
    if (auto* bar = qobject_cast<const QScrollBar*>(c); bar && bar->orientation() == orientation && !bar->isHidden())
      return bar;
  return nullptr;
}

// The height a graph takes in the stacked picture: without a horizontal bar at its bottom.
int StackHeight(const TQyGraph2D* g) {
  const QScrollBar* bar = ShownBar(g, Qt::Horizontal);
  return g->height() - (bar ? bar->height() : 0);
}

// The master and its children, top to bottom in the picture: the last child on top.
QList<TQyGraph2D*> Stack(TQyGraph2D* master) {
  QList<TQyGraph2D*> stack = master->ChildGraphs();
  std::reverse(stack.begin(), stack.end());
  stack.append(master);
  return stack;
}
} // namespace

int TQyGraph2D::ImageGraphLeft() {
  TQyGraph2D* master = CoupledMaster();
  if (!master) master = this;
  const QList<TQyGraph2D*> stack = Stack(master);
  int left = 0;
  for (TQyGraph2D* g : stack) {
    const QScrollBar* bar = ShownBar(g, Qt::Vertical);
    if (bar && (g != master || !g->isHidden())) left = std::max(left, bar->width());
  }
  // A graph of the stack may have no bar and its left axis in that strip: the cut reaches no
  // further than the leftmost left axis. (Taken as "lowered to": lowering the bar's width by the
  // axis' place would cut nothing where every axis stands right of its bar.)
  if (left > 0 && stack.size() > 1)
    for (TQyGraph2D* g : stack)
      for (TQyAxis* a : g->Axes())
        if (a->parentWidget() == g && a->GetPosition() == TQyAxisPosition::Left && !a->isHidden())
          left = std::min(left, a->x());
  return left;
}

int TQyGraph2D::ImgageGraphHeight() {
  TQyGraph2D* master = CoupledMaster();
  int height = 0;
  for (TQyGraph2D* g : Stack(master ? master : this)) height += StackHeight(g);
  return height;
}

QSize TQyGraph2D::ImageSize() { return {width() - ImageGraphLeft(), ImgageGraphHeight()}; }

// The strip of the vertical bar is cut at the left: the picture moves left by it.
void TQyGraph2D::PaintToImage(QPainter* g, float dx, float dy, bool printing) {
  TQyGraph2D* master = CoupledMaster();
  g->save();
  g->translate(dx - ImageGraphLeft(), dy);
  for (TQyGraph2D* graph : Stack(master ? master : this)) {
    graph->PaintTo(g, graph->size(), printing);
    g->translate(0, StackHeight(graph));
  }
  g->restore();
}

// ---- vector output of one control at another size

void TQyCustomGraph::RenderToSvg(QIODevice* out, QSize size) {
  if (!size.isValid()) size = this->size();
  WriteSvg(out, size, logicalDpiX(), [&](QPainter* p) { PaintTo(p, size, true); });
}

void TQyCustomGraph::RenderToPdf(QIODevice* out, QSize size) {
  if (!size.isValid()) size = this->size();
  WritePdf(out, size, logicalDpiX(), [&](QPainter* p) { PaintTo(p, size, true); });
}
