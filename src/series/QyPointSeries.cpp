#include "QyPointSeries.h"

TQyPointSeries::TQyPointSeries(QObject* owner) : TQyLineSeries(owner) {
  FPointSymbol->SetVisible(true);
  FOutOfRangePointSymbol->SetVisible(true);
  FPointsStale = true;
}
