// The gallery: renders every example to build/gallery/*.png without a display, or shows them live
// in a window when a display is there (or with --window), with the output of the graphs at hand.
#include "QyGallery.h"
#include <QApplication>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPdfWriter>
#include <QPointer>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QStatusBar>
#include <QSvgGenerator>
#include <QTabWidget>
#include <QThread>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>
#include <QyExceptions.h>
#include <QyIniFile.h>
#include <QyGraph2D.h>
#include <algorithm>
#include <cstdio>

std::vector<QyGalleryPage>& QyGalleryPages() {
  static std::vector<QyGalleryPage> pages;
  return pages;
}

namespace {
bool HasDisplay() {
  return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// The same page as vector graphics: the widgets paint through the very same path, and graphs lay
// themselves out for the device they are rendered to.
void RenderVector(QWidget& w, const QString& base) {
  QSvgGenerator svg;
  svg.setFileName(base + ".svg");
  svg.setSize(w.size());
  svg.setViewBox(QRect(QPoint(0, 0), w.size()));
  {
    QPainter p(&svg);
    w.render(&p);
  }
  // One unit of the page is one pixel of the screen, so the page shows what the PNG shows.
  QPdfWriter pdf(base + ".pdf");
  const qreal inch = w.logicalDpiX();
  pdf.setResolution(int(inch));
  pdf.setPageSize(QPageSize(QSizeF(w.width() * 72 / inch, w.height() * 72 / inch), QPageSize::Point));
  pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
  QPainter p(&pdf);
  w.render(&p);
}

int RenderAll(const QString& outDir) {
  QDir().mkpath(outDir);
  int failures = 0;
  for (const auto& page : QyGalleryPages()) {
    std::unique_ptr<QWidget> w(page.build());
    w->resize(page.size);
    w->setAttribute(Qt::WA_DontShowOnScreen);
    w->show();
    QElapsedTimer running; // live pages run a while first
    running.start();
    do {
      QApplication::processEvents();
      if (page.settleMs > 0) QThread::msleep(5);
    } while (running.elapsed() < page.settleMs);
    const QString base = outDir + "/" + page.name;
    if (!w->grab().save(base + ".png")) {
      std::fprintf(stderr, "could not write %s.png\n", qPrintable(base));
      ++failures;
      continue;
    }
    RenderVector(*w, base);
    std::printf("%s.png (.svg, .pdf)\n", qPrintable(QDir(base).absolutePath()));
  }
  return failures == 0 ? 0 : 1;
}

// One file type of Save as...: the format and the pixels per pixel of the screen.
struct TSaveFormat {
  QString filter;
  TQyImageFileFormat format;
  qreal ratio = 1;
};

const QList<TSaveFormat>& SaveFormats() {
  static const QList<TSaveFormat> formats{
      {"PNG image (*.png)", TQyImageFileFormat::PNG},
      {"PNG image at twice the resolution (*.png)", TQyImageFileFormat::PNG, 2},
      {"JPEG image (*.jpg)", TQyImageFileFormat::JPEG},
      {"BMP image (*.bmp)", TQyImageFileFormat::BMP},
      {"GIF image (*.gif)", TQyImageFileFormat::GIF},
      {"TIFF image (*.tif)", TQyImageFileFormat::TIFF},
      {"Icon (*.ico)", TQyImageFileFormat::Icon},
      {"SVG drawing (*.svg)", TQyImageFileFormat::SVG},
      {"PDF document (*.pdf)", TQyImageFileFormat::PDF},
      {"EMF: vector drawing, written as SVG (*.svg)", TQyImageFileFormat::EMF},
  };
  return formats;
}

// The live window: each page in a tab under its line of what to try, and the output of the graph
// last clicked on the page (or its first graph): Save as..., Copy, Print... and a print preview.
class TGalleryWindow : public QMainWindow {
public:
  TGalleryWindow() {
    setWindowTitle("QyCharts gallery");
    setCentralWidget(FTabs);
    for (const auto& page : QyGalleryPages()) {
      auto* tab = new QWidget;
      auto* layout = new QVBoxLayout(tab);
      layout->setContentsMargins(0, 0, 0, 0);
      layout->setSpacing(0);
      auto* hint = new QLabel(page.hint);
      hint->setContentsMargins(8, 4, 8, 4);
      hint->setStyleSheet("color: #345; background: #eef3f8;");
      layout->addWidget(hint);
      layout->addWidget(page.build(), 1);
      FTabs->addTab(tab, page.title);
    }
    QMenu* file = menuBar()->addMenu("&File");
    QToolBar* tools = addToolBar("Output");
    auto add = [&](const QString& text, QKeySequence keys, void (TGalleryWindow::*slot)()) {
      QAction* a = file->addAction(text, keys, this, slot);
      tools->addAction(a);
      FOutputActions.append(a);
    };
    add("&Open document...", QKeySequence::Open, &TGalleryWindow::OpenDocument);
    add("Save &document...", QKeySequence::Save, &TGalleryWindow::SaveDocument);
    add("&Save as...", QKeySequence::SaveAs, &TGalleryWindow::SaveAs);
    add("&Copy", QKeySequence::Copy, &TGalleryWindow::Copy);
    add("&Print...", QKeySequence::Print, &TGalleryWindow::Print);
    add("Print pre&view...", QKeySequence(), &TGalleryWindow::Preview);
    file->addSeparator();
    file->addAction("&Quit", QKeySequence::Quit, this, &QWidget::close);
    connect(FTabs, &QTabWidget::currentChanged, this, &TGalleryWindow::EnableOutput);
    qApp->installEventFilter(this);
    EnableOutput();
    resize(1100, 760);
  }

protected:
  // The graph last pressed on is the one the actions work on.
  bool eventFilter(QObject* watched, QEvent* e) override {
    if (e->type() == QEvent::MouseButtonPress)
      for (QObject* o = watched; o; o = o->parent())
        if (auto* g = qobject_cast<TQyGraph2D*>(o)) {
          FTouched = g;
          break;
        }
    return false;
  }

private:
  TQyGraph2D* Graph() const {
    QWidget* page = FTabs->currentWidget();
    if (!page) return nullptr;
    if (FTouched && page->isAncestorOf(FTouched)) return FTouched;
    return page->findChild<TQyGraph2D*>();
  }

  void EnableOutput() {
    for (QAction* a : FOutputActions) a->setEnabled(Graph() != nullptr);
  }

  void SaveAs() {
    TQyGraph2D* graph = Graph();
    if (!graph) return;
    QStringList filters;
    for (const TSaveFormat& f : SaveFormats()) filters << f.filter;
    QString chosen;
    const QString name = QFileDialog::getSaveFileName(this, "Save as", "graph.png", filters.join(";;"), &chosen);
    if (name.isEmpty()) return;
    const TSaveFormat& f = SaveFormats()[std::max(0, int(filters.indexOf(chosen)))];
    try {
      graph->SaveImage(name, f.format, 0xFFFFFFFFu, true, f.ratio);
      statusBar()->showMessage("Saved " + name, 4000);
    } catch (const EQyException& e) {
      QMessageBox::warning(this, "Save as", e.Message());
    }
  }

  // Documents of the graph: a stream (.qyg, with its data), XML (.xml) or INI (.ini) by extension.
  static constexpr const char* DocumentFilter = "Graph documents (*.qyg *.xml *.ini)";
  static constexpr const char* Section = "Graph";

  void SaveDocument() {
    TQyGraph2D* graph = Graph();
    const QString name = graph ? QFileDialog::getSaveFileName(this, "Save document", "graph.qyg", DocumentFilter) : QString();
    if (name.isEmpty()) return;
    try {
      if (name.endsWith(".xml", Qt::CaseInsensitive)) {
        QDomDocument doc;
        QDomElement root = doc.createElement(Section);
        doc.appendChild(root);
        graph->WriteTo(root);
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly)) throw EStreamError(file.errorString());
        file.write(doc.toByteArray(1));
      } else if (name.endsWith(".ini", Qt::CaseInsensitive)) {
        TQyIniFile ini(name);
        ini.Clear();
        graph->WriteTo(ini, Section);
        ini.UpdateFile();
      } else {
        graph->WriteTo(name, true);
      }
      statusBar()->showMessage("Saved " + name, 4000);
    } catch (const EQyException& e) {
      QMessageBox::warning(this, "Save document", e.Message());
    }
  }

  void OpenDocument() {
    TQyGraph2D* graph = Graph();
    const QString name = graph ? QFileDialog::getOpenFileName(this, "Open document", {}, DocumentFilter) : QString();
    if (name.isEmpty()) return;
    try {
      if (name.endsWith(".xml", Qt::CaseInsensitive)) {
        QFile file(name);
        QDomDocument doc;
        if (!file.open(QIODevice::ReadOnly) || !doc.setContent(&file)) throw EReadError(file.errorString());
        graph->ReadFrom(doc.documentElement());
      } else if (name.endsWith(".ini", Qt::CaseInsensitive)) {
        graph->ReadFrom(TQyIniFile(name), Section);
      } else {
        graph->ReadFrom(name);
      }
      statusBar()->showMessage("Opened " + name, 4000);
    } catch (const EQyException& e) {
      QMessageBox::warning(this, "Open document", e.Message());
    }
  }

  void Copy() {
    if (TQyGraph2D* graph = Graph()) {
      graph->CopyToClipboard();
      statusBar()->showMessage("Copied as a PNG image and an SVG drawing", 4000);
    }
  }

  void Print() {
    TQyGraph2D* graph = Graph();
    if (!graph) return;
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted) graph->PrintTo(&printer);
  }

  void Preview() {
    if (TQyGraph2D* graph = Graph()) graph->NewPrintPreview(this)->exec();
  }

  QTabWidget* FTabs = new QTabWidget;
  QPointer<TQyGraph2D> FTouched;
  QList<QAction*> FOutputActions;
};
} // namespace

int main(int argc, char** argv) {
  const bool window = std::any_of(argv + 1, argv + argc, [](const char* a) {
    return QString(a) == "--window";
  });
  if (!window && !HasDisplay() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
    qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  std::sort(QyGalleryPages().begin(), QyGalleryPages().end(),
            [](const auto& a, const auto& b) { return a.name < b.name; });
  QString outDir = QY_GALLERY_OUT;
  for (int i = 1; i + 1 < argc; ++i)
    if (QString(argv[i]) == "--out") outDir = argv[i + 1];
  if (!window && (!HasDisplay() || QGuiApplication::platformName() == "offscreen"))
    return RenderAll(outDir);

  TGalleryWindow gallery;
  gallery.show();
  return app.exec();
}
