// Zoom history and scroll mapping of an axis. Stage 0 is the unzoomed range; back and redo run
// round the stages as a ring.
#include "QyAxis.h"
#include "QyRounding.h"
#include <algorithm>
#include <cmath>

void TQyAxis::ZoomClearBuffer() {
  FZoomStarts.clear();
  FZoomStops.clear();
  FZoomStage = 0;
}

void TQyAxis::ZoomIn(double start, double stop) {
  if (FZoomStarts.empty()) {
    FZoomStarts.push_back(FStart);
    FZoomStops.push_back(FStop);
    FZoomStage = 0;
  }
  if (start >= FDataMin && start <= FDataMax) FStart = FLastStart = start;
  if (stop >= FDataMin && stop <= FDataMax) FStop = FLastStop = stop;
  ++FZoomStage;
  // A new zoom after going back drops the stages ahead of it from the starts only, two at a time;
  // the stops keep theirs. So it stands: the two lists need not pair up after that, and a stage
  // reads its stop by its own index (the stops list is never the shorter one).
  while (int(FZoomStarts.size()) > FZoomStage) {
    const auto at = FZoomStarts.begin() + FZoomStage;
    FZoomStarts.erase(at, at + std::min<std::ptrdiff_t>(2, FZoomStarts.end() - at));
  }
  FZoomStarts.push_back(FStart);
  FZoomStops.push_back(FStop);
  Modified();
}

void TQyAxis::ReadZoomStage() {
  FStart = FLastStart = FZoomStarts[FZoomStage];
  FStop = FLastStop = FZoomStops[FZoomStage];
  Modified();
}

void TQyAxis::ZoomToStage(int stage) {
  if (stage < 0 || stage >= GetZoomBufferSize()) return;
  FZoomStage = stage;
  ReadZoomStage();
}

void TQyAxis::ZoomBack() {
  if (!GetCanZoomBack()) return;
  if (--FZoomStage < 0) FZoomStage = GetZoomBufferSize() - 1;
  ReadZoomStage();
}

void TQyAxis::RedoZoom() {
  if (!GetCanZoomBack()) return;
  if (++FZoomStage >= GetZoomBufferSize()) FZoomStage = 0;
  ReadZoomStage();
}

double TQyAxis::GetScrollStart() const { return FZoomStarts.empty() ? FStart : FZoomStarts.front(); }

double TQyAxis::GetScrollStop() const { return FZoomStops.empty() ? FStop : FZoomStops.front(); }

namespace {
// The scroll length of the unzoomed range (in decades on a log axis), or of the range itself.
double ScrollTotal(double s0, double s1, double start, double stop, bool log) {
  auto len = [log](double a, double b) { return log ? std::log10(b) - std::log10(a) : b - a; };
  const double total = len(s0, s1);
  return total > 0 && std::isfinite(total) ? total : len(start, stop);
}
} // namespace

int TQyAxis::ScrollRangeSize(double start, double stop) const {
  const double total = ScrollTotal(GetScrollStart(), GetScrollStop(), FStart, FStop, FLogActive);
  const double len = FLogActive ? std::log10(stop) - std::log10(start) : stop - start;
  const double r = 10000 * len / total;
  if (!std::isfinite(r)) return r > 0 ? 10000 : 0;
  return int(std::clamp<std::int64_t>(Round(r), 0, 10000));
}

int TQyAxis::ScrollPosition(double value) const {
  const double s0 = GetScrollStart();
  const double total = ScrollTotal(s0, GetScrollStop(), FStart, FStop, FLogActive);
  const double d = FLogActive ? std::log10(value) - std::log10(s0) : value - s0;
  const double r = 10000 * d / total;
  if (!std::isfinite(r)) return 0;
  return int(std::clamp<double>(double(Round(r)), -2e9, 2e9)); // the caller clamps to its bar
}
