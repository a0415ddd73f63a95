#include <QImage>
#include <QPainter>
#include <QyRichLabel.h>
#include <benchmark/benchmark.h>

// A typical axis label: a number with a unit in superscript, measured and drawn into an image.
static void BM_CaptionParseAndPaint(benchmark::State& state) {
  QImage image(400, 200, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  TQyRichCaptionObject caption;
  caption.Caption = "1.5\xC2\xB7" "10\\+-3\\+";
  caption.Alignment = TQyContentAlignment::TopCenter;
  caption.X = 200;
  caption.Y = 100;
  for (auto _ : state) {
    caption.ParseForSize(&painter, nullptr);
    caption.PaintGr(&painter);
  }
  benchmark::DoNotOptimize(image.constBits());
}
BENCHMARK(BM_CaptionParseAndPaint);

// Parsing alone (what an axis does per tick label in its layout pass).
static void BM_CaptionParse(benchmark::State& state) {
  QImage image(16, 16, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  TQyRichCaptionObject caption;
  caption.Caption = "-12.75";
  for (auto _ : state) caption.ParseForSize(&painter, nullptr);
}
BENCHMARK(BM_CaptionParse);
