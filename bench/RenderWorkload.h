#pragma once
// The workload and the reporting shared by the render benchmark and its comparison program, so
// that both draw the same data and print the same phases.
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QSize>
#include <QString>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/resource.h>
#include <vector>

// The standard splitmix64 finaliser of state 12345 + i: uniform noise that any program can
// reproduce at any index without a sequence.
inline std::uint64_t QySplitMix64(std::uint64_t state) {
  std::uint64_t z = state + 0x9E3779B97F4A7C15ull;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
  return z ^ (z >> 31);
}

inline double QyBenchSignal(int i) {
  const double u = double(QySplitMix64(12345u + std::uint64_t(i)) >> 11) * 0x1.0p-53;
  return std::sin(i / 1000.0) * 1000.0 + (u - 0.5) * 200.0;
}

// N W H AA MODE [zoom] [save=FILE]. Parsing also sets the headless platform unless one is set.
struct TQyBenchArgs {
  int N = 0, W = 0, H = 0;
  bool AA = true, Scatter = false, Zoom = false;
  QString Save;
  QSize Size() const { return {W, H}; }
  bool Parse(int argc, char** argv) {
    if (argc >= 6) {
      N = std::atoi(argv[1]), W = std::atoi(argv[2]), H = std::atoi(argv[3]);
      AA = std::atoi(argv[4]) != 0;
      Scatter = std::strcmp(argv[5], "scatter") == 0;
      for (int k = 6; k < argc; ++k) {
        if (std::strcmp(argv[k], "zoom") == 0) Zoom = true;
        else if (std::strncmp(argv[k], "save=", 5) == 0) Save = QString::fromLocal8Bit(argv[k] + 5);
        else N = -1;
      }
      if (N >= 0 && W >= 1 && H >= 1 && (Scatter || std::strcmp(argv[5], "line") == 0)) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        return true;
      }
    }
    std::fprintf(stderr, "usage: %s N W H AA MODE [zoom] [save=FILE]   (AA 0/1, MODE line|scatter)\n",
                 argv[0]);
    return false;
  }
};

// Draws one line of text in the application's default font, as any window of an application
// has done before its first chart: the process's first text (font database, shaper, glyph cache:
// about 30 ms here) is Qt's start-up, not a chart's first picture. Both programs call it in setup.
inline void QyWarmUpText() {
  QImage image(200, 40, QImage::Format_ARGB32_Premultiplied);
  QPainter p(&image);
  p.drawText(QPoint(2, 20), QStringLiteral("0.25 -1000 x y"));
}

struct TQyBenchClock {
  QElapsedTimer T;
  TQyBenchClock() { T.start(); }
  void Restart() { T.restart(); }
  double Ms() const { return T.nsecsElapsed() / 1e6; }
  void Print(const char* name) const { std::printf("%s %.3f\n", name, Ms()); }
};

inline void QyPrintMedian(const char* name, std::vector<double> times) {
  std::sort(times.begin(), times.end());
  const size_t n = times.size();
  std::printf("%s %.3f\n", name, n % 2 ? times[n / 2] : (times[n / 2 - 1] + times[n / 2]) / 2);
}

inline void QyPrintPeakRss() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("peak_rss_kb %ld\n", usage.ru_maxrss);
  std::fflush(stdout);
}
