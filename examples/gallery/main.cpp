// The gallery: renders every example to build/gallery/*.png without a display, or shows them live
// in a window when a display is there (or with --window).
#include "QyGallery.h"
#include <QApplication>
#include <QDir>
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

int RenderAll(const QString& outDir) {
  QDir().mkpath(outDir);
  int failures = 0;
  for (const auto& page : QyGalleryPages()) {
    std::unique_ptr<QWidget> w(page.build());
    w->resize(page.size);
    w->setAttribute(Qt::WA_DontShowOnScreen);
    w->show();
    QApplication::processEvents();
    const QString path = outDir + "/" + page.name + ".png";
    if (w->grab().save(path)) {
      std::printf("%s\n", qPrintable(QDir(path).absolutePath()));
    } else {
      std::fprintf(stderr, "could not write %s\n", qPrintable(path));
      ++failures;
    }
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
