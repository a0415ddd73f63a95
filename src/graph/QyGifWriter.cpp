// GIF output: a palette of at most 256 colours by median cut, encoded by giflib.
#include "QyGifWriter.h"
#include "QyExceptions.h"
#include "QyLocalize.h"
#include <QHash>
#include <algorithm>
#include <array>
#include <memory>
#include <vector>
#ifdef QY_HAVE_GIFLIB
#include <gif_lib.h>
#endif

namespace {
struct TColorCount {
  QRgb Color;
  qint64 Count;
};
using TEntries = std::vector<TColorCount>;

int Channel(QRgb c, int k) { return k == 0 ? qRed(c) : k == 1 ? qGreen(c) : qBlue(c); }

// A box of median cut: a range of the colour entries.
struct TBox {
  size_t Begin, End;
  int WidestChannel = 0, Extent = 0;
};

void Measure(const TEntries& e, TBox& box) {
  box.Extent = -1;
  for (int k = 0; k < 3; ++k) {
    const auto [lo, hi] = std::minmax_element(e.begin() + box.Begin, e.begin() + box.End,
                                              [k](auto& a, auto& b) { return Channel(a.Color, k) < Channel(b.Color, k); });
    const int extent = Channel(hi->Color, k) - Channel(lo->Color, k);
    if (extent > box.Extent) box = {box.Begin, box.End, k, extent};
  }
}

// Splits the box with the widest spread of one channel at the weighted median of that channel,
// until there are `count` boxes or every box holds one colour.
std::vector<TBox> MedianCut(TEntries& e, int count) {
  std::vector<TBox> boxes{{0, e.size()}};
  Measure(e, boxes[0]);
  while (int(boxes.size()) < count) {
    auto widest = std::max_element(boxes.begin(), boxes.end(), [](auto& a, auto& b) { return a.Extent < b.Extent; });
    if (widest->Extent <= 0) break;
    TBox box = *widest;
    const int k = box.WidestChannel;
    std::sort(e.begin() + box.Begin, e.begin() + box.End,
              [k](auto& a, auto& b) { return Channel(a.Color, k) < Channel(b.Color, k); });
    qint64 total = 0, seen = 0;
    for (size_t i = box.Begin; i < box.End; ++i) total += e[i].Count;
    size_t cut = box.Begin + 1; // both halves keep at least one colour
    for (size_t i = box.Begin; i + 1 < box.End; ++i) {
      seen += e[i].Count;
      cut = i + 1;
      if (2 * seen >= total) break;
    }
    TBox low{box.Begin, cut}, high{cut, box.End};
    Measure(e, low);
    Measure(e, high);
    *widest = low;
    boxes.push_back(high);
  }
  return boxes;
}

QRgb Mean(const TEntries& e, const TBox& box) {
  std::array<qint64, 3> sum{};
  qint64 n = 0;
  for (size_t i = box.Begin; i < box.End; ++i) {
    for (int k = 0; k < 3; ++k) sum[k] += Channel(e[i].Color, k) * e[i].Count;
    n += e[i].Count;
  }
  auto mean = [&](int k) { return int((sum[k] + n / 2) / n); };
  return qRgb(mean(0), mean(1), mean(2));
}
} // namespace

TQyPalettedImage QyQuantize(const QImage& source) {
  const QImage image = source.convertToFormat(QImage::Format_ARGB32);
  TQyPalettedImage out;
  out.Width = image.width();
  out.Height = image.height();
  // The colours of the covered pixels and how often they occur.
  QHash<QRgb, qint64> histogram;
  bool anyTransparent = false;
  for (int y = 0; y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(line[x]) < 128) anyTransparent = true;
      else ++histogram[line[x] | 0xFF000000u];
    }
  }
  const int colours = anyTransparent ? 255 : 256;
  TEntries entries;
  entries.reserve(histogram.size());
  for (auto it = histogram.cbegin(); it != histogram.cend(); ++it) entries.push_back({it.key(), it.value()});
  // Every colour to the index of its box (a box of one colour when they are few).
  QHash<QRgb, uchar> index;
  for (const TBox& box : entries.empty() ? std::vector<TBox>() : MedianCut(entries, colours)) {
    for (size_t i = box.Begin; i < box.End; ++i) index.insert(entries[i].Color, uchar(out.Palette.size()));
    out.Palette.append(box.End - box.Begin == 1 ? entries[box.Begin].Color : Mean(entries, box));
  }
  if (anyTransparent) {
    out.Transparent = int(out.Palette.size());
    out.Palette.append(qRgba(255, 255, 255, 0));
  }
  out.Indices.resize(qsizetype(out.Width) * out.Height);
  uchar* to = reinterpret_cast<uchar*>(out.Indices.data());
  for (int y = 0; y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x)
      *to++ = qAlpha(line[x]) < 128 ? uchar(out.Transparent) : index.value(line[x] | 0xFF000000u);
  }
  return out;
}

#ifdef QY_HAVE_GIFLIB
namespace {
int WriteToDevice(GifFileType* gif, const GifByteType* data, int length) {
  return int(static_cast<QIODevice*>(gif->UserData)->write(reinterpret_cast<const char*>(data), length));
}

void Check(int result, GifFileType* gif) {
  if (result != GIF_ERROR) return;
  throw EWriteError(QyFormatMessage(QyRes::ImageWriteError, {"GIF", GifErrorString(gif->Error)}));
}

// The colour table of a GIF holds a power of two of entries.
ColorMapObject* ColorMap(const QList<QRgb>& palette) {
  const int size = 1 << std::max(1, GifBitSize(int(palette.size())));
  std::vector<GifColorType> colours(size_t(size), GifColorType{0, 0, 0});
  for (qsizetype i = 0; i < palette.size(); ++i)
    colours[size_t(i)] = {GifByteType(qRed(palette[i])), GifByteType(qGreen(palette[i])), GifByteType(qBlue(palette[i]))};
  return GifMakeMapObject(size, colours.data());
}

void Encode(GifFileType* gif, const TQyPalettedImage& p) {
  EGifSetGifVersion(gif, true);
  std::unique_ptr<ColorMapObject, void (*)(ColorMapObject*)> map(ColorMap(p.Palette), GifFreeMapObject);
  Check(EGifPutScreenDesc(gif, p.Width, p.Height, 8, std::max(0, p.Transparent), map.get()), gif);
  if (p.Transparent >= 0) {
    GraphicsControlBlock gcb{DISPOSAL_UNSPECIFIED, false, 0, p.Transparent};
    GifByteType extension[4];
    const size_t length = EGifGCBToExtension(&gcb, extension);
    Check(EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, int(length), extension), gif);
  }
  Check(EGifPutImageDesc(gif, 0, 0, p.Width, p.Height, false, nullptr), gif);
  std::vector<GifPixelType> line(size_t(p.Width)); // the library masks the line in place
  for (int y = 0; y < p.Height; ++y) {
    const char* row = p.Indices.constData() + qsizetype(y) * p.Width;
    std::copy(row, row + p.Width, line.begin());
    Check(EGifPutLine(gif, line.data(), p.Width), gif);
  }
}
} // namespace

void QyWriteGif(const QImage& image, QIODevice* out) {
  if (image.width() > 0xFFFF || image.height() > 0xFFFF || image.isNull())
    throw EWriteError(QyFormatMessage(QyRes::ImageWriteError, {"GIF", QString("%1 x %2").arg(image.width()).arg(image.height())}));
  const TQyPalettedImage paletted = QyQuantize(image);
  int error = 0;
  GifFileType* gif = EGifOpen(out, WriteToDevice, &error);
  if (!gif) throw EWriteError(QyFormatMessage(QyRes::ImageWriteError, {"GIF", GifErrorString(error)}));
  try {
    Encode(gif, paletted);
  } catch (...) {
    EGifCloseFile(gif, &error);
    throw;
  }
  if (EGifCloseFile(gif, &error) == GIF_ERROR)
    throw EWriteError(QyFormatMessage(QyRes::ImageWriteError, {"GIF", GifErrorString(error)}));
}
#else
void QyWriteGif(const QImage&, QIODevice*) {
  throw EWriteError(QyFormatMessage(QyRes::ImageNoWriter, {"GIF"}));
}
#endif
