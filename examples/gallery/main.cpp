// The gallery: renders every example to build/gallery/*.png without a display, or shows them live
// in a window when a display is there (or with --window).
#include "QyGallery.h"
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QThread>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <QTabWidget>
#include <QTimer>
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

  QTabWidget tabs;
  for (const auto& page : QyGalleryPages()) tabs.addTab(page.build(), page.title);
  tabs.resize(1000, 700);
  tabs.setWindowTitle("QyCharts gallery");
  tabs.show();
  return app.exec();
}
