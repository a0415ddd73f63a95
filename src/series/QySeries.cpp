#include "QySeries.h"
#include "QyAxis.h"
#include "QyRounding.h"
#include "QyStyles.h"
#include "QyVectors.h"
#include <QPainter>
#include <cmath>

namespace {
constexpr double MaxDouble = 1.7976931348623157e308;

// The default look of new series: line colour, symbol, symbol border and fill, in turn.
struct DefaultLook {
  TQyColor line;
  TQyPointSymbol symbol;
  TQyColor border, fill;
};
constexpr DefaultLook DefaultLooks[6] = {
    {0xFFFF0000, TQyPointSymbol::Circle, 0xFF0000FF, 0xFFADD8E6},
    {0xFF008000, TQyPointSymbol::Square, 0xFF8B0000, 0xFFF08080},
    {0xFF0000FF, TQyPointSymbol::Diamond, 0xFF006400, 0xFF90EE90},
    {0xFF800000, TQyPointSymbol::FiveStar, 0xFFD2691E, 0xFFFFFF00},
    {0xFF006400, TQyPointSymbol::Delta, 0xFFA52A2A, 0xFFDEB887},
    {0xFF00008B, TQyPointSymbol::Nabla, 0xFF008B8B, 0xFFE0FFFF},
};
int DefaultLookCounter = 0;
} // namespace

TQySeries::TQySeries(QObject* owner) : QObject(owner) {
  DeferInit(this);
  connect(this, &QObject::objectNameChanged, this, [this] { VariableObjects.Update(); });
  FLimitMinX = FLimitMinY = MaxDouble;
  FLimitMaxX = FLimitMaxY = -MaxDouble;
  FDataIndexer = new TQyIndexer(this);
  // Every series takes the next row of the default looks, whether or not it draws a line.
  if (DefaultLookCounter >= 6) DefaultLookCounter = 0;
  FLookRow = DefaultLookCounter++;
}

TQyLineSeries::TQyLineSeries(QObject* owner) : TQySeries(owner) {
  auto modified = [this] { PointsModified(); TestVisibleChanged(); };
  FLine = new TQyLineSettings(modified, this);
  FArea = new TQyAreaSettings(modified, this);
  FPointSymbol = new TQyPointSymbolSettings(modified, this);
  FOutOfRangePointSymbol = new TQyPointSymbolSettings(modified, this);
  const DefaultLook& look = DefaultLooks[FLookRow];
  FLine->SetColor(look.line);
  for (TQyPointSymbolSettings* s : {FPointSymbol, FOutOfRangePointSymbol}) {
    s->SetPointSymbol(look.symbol);
    s->SetVisible(false);
  }
  FPointSymbol->SetBorderColor(look.border);
  FPointSymbol->SetFillColor(look.fill);
  FOutOfRangePointSymbol->SetBorderColor(0xFF696969);
  FOutOfRangePointSymbol->SetFillColor(0xFFD3D3D3);
}

void TQySeries::AfterConstruction() {
  if (FCaption.isEmpty()) FCaption = metaObject()->className(); // the most derived class
  RegisterVariables();
}

QString TQySeries::GetCaption() const {
  QyEnsureInit(const_cast<TQySeries*>(this));
  return FCaption;
}

TQyPaintPasses TQySeries::PaintPasses() const {
  return QyPass(TQyPaintPass::SeriesLines) | QyPass(TQyPaintPass::SeriesSymbols);
}

void TQySeries::PaintPass(TQyPaintPass pass, QPainter* g) {
  if (pass == TQyPaintPass::SeriesLines) PaintGr(g);
  else if (pass == TQyPaintPass::SeriesSymbols) DrawSymbols(g);
}

void TQySeries::GraphChanged(TQyGraphChange change) {
  if (change == TQyGraphChange::Series) PointsModified();
}

TQySeries::~TQySeries() {
  FDestroying = true;
  DeRegisterVariables();
  LeaveGraph();
  for (TQyCustomDoubleVector* v : {FXData.data(), FYData.data()})
    if (v) v->RemoveListener(this);
}

IQySeriesHost* TQySeries::Graph() const { return FGraph; }

void TQySeries::RegisterVariables() {
  RegisterStringVariable(this, "Name", QyText(QyRes::SeriesVarName), [this] { return objectName(); });
  RegisterStringVariable(this, "Caption", QyText(QyRes::SeriesVarCaption), [this] { return FCaption; });
}

QString TQySeries::ToString() const { return GetCaption().isEmpty() ? objectName() : FCaption; }

// ---- references -------------------------------------------------------------------------------

// One side's axis: record, store, leave the old axis (unless the other side keeps it), rejoin.
void TQySeries::ReplaceAxis(QPointer<TQyAxis>& side, const QPointer<TQyAxis>& other, TQyAxis* axis,
                            const char* caption, const char* name) {
  TQyAxis* old = side;
  QyAssign(this, side, axis, caption, name, [&] {
    if (old && old != other) old->RemoveSeries(this);
    TestAllAssigned();
  });
}

void TQySeries::SetXAxis(TQyAxis* axis) { ReplaceAxis(FXAxis, FYAxis, axis, QyRes::SeriesXAxis, "XAxis"); }
void TQySeries::SetYAxis(TQyAxis* axis) { ReplaceAxis(FYAxis, FXAxis, axis, QyRes::SeriesYAxis, "YAxis"); }

// One side's data: a nil while the indexer stands in changes nothing; otherwise record, store,
// leave the old vector and listen to the new one; a nil beside the indexer clears the indexer too.
void TQySeries::ReplaceData(QPointer<TQyCustomDoubleVector>& side, QPointer<TQyCustomDoubleVector>& other,
                            TQyCustomDoubleVector* vector, const char* caption, const char* name) {
  if (!vector && side == FDataIndexer) return;
  TQyCustomDoubleVector* old = side;
  QyAssign(this, side, vector, caption, name, [&] {
    if (old && old != FDataIndexer) old->RemoveListener(this);
    if (vector) vector->AddListener(this);
    else if (other == FDataIndexer) other = nullptr;
    TestAllAssigned();
  });
}

void TQySeries::SetXData(TQyCustomDoubleVector* vector) {
  ReplaceData(FXData, FYData, vector, QyRes::SeriesXData, "XData");
}

void TQySeries::SetYData(TQyCustomDoubleVector* vector) {
  ReplaceData(FYData, FXData, vector, QyRes::SeriesYData, "YData");
}

void TQySeries::SetMergeLegendItemWith(TQySeries* series) {
  QyAssign(this, FMergeLegendItemWith, series, nullptr, "MergeLegendItemWith", [this] { LegendsModified(); });
}

void TQyLineSeries::SetDrawBandTo(TQySeries* series) {
  if (series == this) series = nullptr;
  QyAssign(this, FDrawBandTo, series, nullptr, "DrawBandTo", [this] { PointsModified(); });
}

void TQyLineSeries::SetRangeFromFunction(TQySeries* series) {
  if (series == this) series = nullptr;
  QyAssign(this, FRangeFromFunction, series, nullptr, "RangeFromFunction", [this] {
    Invalidate();
    LegendsModified();
  });
}

void TQySeries::SetLayer(int layer) {
  QyAssign(this, FLayer, layer, QyRes::SeriesLayer, "Layer", [this] {
    if (FGraph) FGraph->Modified();
  });
}

void TQySeries::SetVisible(bool value) {
  QyAssign(this, FVisible, value, QyRes::SeriesVisible, "Visible", [this] {
    TestVisibleChanged();
    Invalidate();
    LegendsModified();
  });
}

void TQySeries::SetCaption(QString value) {
  while (!value.isEmpty() && value.back().isSpace()) value.chop(1);
  QyAssign(this, FCaption, value, QyRes::SeriesCaption, "Caption", [this] {
    LegendsModified();
    VariableObjects.Update();
  });
}

void TQySeries::SetOutliersVisible(bool value) {
  QyAssign(this, FOutliersVisible, value, QyRes::SeriesOutliersVisible,
           "OutliersVisible", [this] { RangesModified(); });
}

void TQySeries::LeaveGraph() {
  for (TQyAxis* a : {FXAxis.data(), FYAxis.data()})
    if (a) a->RemoveSeries(this);
  if (FGraph) {
    IQySeriesHost* g = FGraph;
    FGraph = nullptr;
    g->UnregisterSeries(this);
    if (!FDestroying && !g->Destroying()) {
      if (TQyAxis* y = g->GetPrimaryYAxis()) y->RangeModified();
      g->SeriesModified();
      g->LegendsModified();
    }
  }
}

void TQySeries::SetDefaultAxis(IQySeriesHost* graph) {
  if (!graph) return;
  SetXAxis(graph->GetPrimaryXAxis());
  SetYAxis(graph->GetPrimaryYAxis());
}

// Joins the series to its graph once both axes and a vector are known.
void TQySeries::TestAllAssigned() {
  if (!FXAxis || !FYAxis || (!FXData && !FYData)) {
    LeaveGraph();
    return;
  }
  auto* graph = dynamic_cast<IQySeriesHost*>(FYAxis->parentWidget());
  if (FGraph && FGraph != graph) {
    FGraph->UnregisterSeries(this);
    FGraph = nullptr;
  }
  if (graph && FGraph != graph) {
    FGraph = graph;
    graph->RegisterSeries(this);
    if (!UndoRecorder()) SetUndoStack(graph->GetUndoStack());
  }
  if (!FGraph || FGraph->Destroying()) return;
  if (!FXData) FXData = FDataIndexer;
  if (!FYData) FYData = FDataIndexer;
  FDataIndexer->SetPartner(FXData == FDataIndexer ? FYData.data() : FXData.data());
  FXAxis->AddSeries(this);
  FYAxis->AddSeries(this);
  RangesModified();
  LegendsModified();
  FGraph->Modified();
}

// ---- what the axes ask ------------------------------------------------------------------------

void TQySeries::DataExtent(bool x, double& lo, double& hi) const {
  lo = x ? FLimitMinX : FLimitMinY;
  hi = x ? FLimitMaxX : FLimitMaxY;
}

double TQySeries::SmallestPositive(bool x, double below) {
  const TQyVectorReadLocks hold(DataVectors()); // a zoom may ask outside a picture
  TQyCustomDoubleVector* data = x ? FXData : FYData;
  const int n = data ? data->Count() : GetCount();
  double best = 0;
  for (int i = 0; i < n; ++i) {
    const double raw = data ? data->GetValue(i) : double(i);
    const double v = x ? TransformX(raw, i) : TransformY(raw, i);
    if (v > 0 && v < below && (best == 0 || v < best)) best = v;
  }
  return best;
}

void TQySeries::AxisDestroyed(TQyAxis* axis) {
  if (FXAxis == axis) SetXAxis(nullptr);
  if (FYAxis == axis) SetYAxis(nullptr);
}

void TQySeries::VectorDestroyed(TQyCustomDoubleVector* vector) {
  if (FXData == vector) SetXData(nullptr);
  if (FYData == vector) SetYData(nullptr);
}

void TQySeries::VectorChanged(TQyCustomDoubleVector* vector, TQyVectorChange change, int index) {
  switch (change) {
  case TQyVectorChange::Appended: Invalidate(); break; // the points go on where they ended
  case TQyVectorChange::Changed: IsFunctionSeries() ? SetLastCount(0) : PointsModified(); break;
  case TQyVectorChange::Reset: SetLastCount(0); Invalidate(); break;
  case TQyVectorChange::Ranges: RangesModified(); break;
  // Markers follow the values of the Y data only.
  case TQyVectorChange::Inserted: if (vector == FYData) ValueInsertedLinkedMarkers(index); break;
  case TQyVectorChange::Deleted: if (vector == FYData) DeleteLinkedMarkers(index); break;
  case TQyVectorChange::Cleared: if (vector == FYData) ClearLinkedMarkers(); break;
  }
}

// ---- counts and transformations ---------------------------------------------------------------

int TQySeries::GetCount() {
  if (!FXData || !FYData) return 0;
  return std::min(FXData->GetCount(), FYData->GetCount());
}

// A single value draws only as a symbol.
int TQyLineSeries::GetCount() {
  FMinimumCount = FPointSymbol->GetVisible() ? 1 : 2;
  return TQySeries::GetCount();
}

double TQySeries::TransformX(double value, int i) {
  return XValueTransformation ? XValueTransformation(this, {value, i}) : value;
}

double TQySeries::TransformY(double value, int i) {
  return YValueTransformation ? YValueTransformation(this, {value, i}) : value;
}

bool TQySeries::HasValuesAt(int i) const {
  if (FOutliersVisible) return true;
  return !(FXData && FXData->IsOutlier(i)) && !(FYData && FYData->IsOutlier(i));
}

bool TQySeries::SeriesVisible() const { return FVisible; }

bool TQyLineSeries::SeriesVisible() const {
  return FVisible && (FLine->GetVisible() || FArea->GetVisible() || FPointSymbol->GetVisible());
}

// ---- range pass -------------------------------------------------------------------------------

// The extent of one vector over the series' indices: from the statistics when the vector is not
// longer than its partner, else by a scan.
void TQySeries::ScanExtent(TQyCustomDoubleVector* v, bool isX, double& lo, double& hi) {
  TQyCustomDoubleVector* other = isX ? FYData : FXData;
  const TQyValueTransformation& transform = isX ? XValueTransformation : YValueTransformation;
  auto tf = [&](double x, int i) { return isX ? TransformX(x, i) : TransformY(x, i); };
  lo = MaxDouble, hi = -MaxDouble;
  const bool finiteStats = v->GetCount() <= other->GetCount();
  if (finiteStats) {
    lo = FOutliersVisible ? v->GetMinimumIncludingOutliers() : v->GetMinimum();
    hi = FOutliersVisible ? v->GetMaximumIncludingOutliers() : v->GetMaximum();
    if (transform && lo <= hi) {
      lo = tf(lo, FOutliersVisible ? v->GetMinimumIdxIncludingOutliers() : v->GetMinimumIdx());
      hi = tf(hi, FOutliersVisible ? v->GetMaximumIdxIncludingOutliers() : v->GetMaximumIdx());
      if (lo > hi) std::swap(lo, hi);
    }
  }
  // A longer vector, or values that the statistics cannot order (NaN, infinities), need a scan.
  if (!finiteStats || !std::isfinite(lo) || !std::isfinite(hi)) {
    lo = MaxDouble, hi = -MaxDouble;
    auto lock = v->ReadLock();
    for (int i = 0; i < FCount; ++i) {
      if (!HasValuesAt(i)) continue;
      const double x = tf(v->GetValue(i), i);
      if (!std::isfinite(x)) continue;
      lo = std::min(lo, x), hi = std::max(hi, x);
    }
  }
  TQyAxis* axis = isX ? FXAxis : FYAxis;
  if (axis->LogActive() || axis->GetScaling() == TQyAxisScaling::Log || axis->GetScaling() == TQyAxisScaling::LogEE) {
    if (lo <= 0) {
      // A logarithmic axis ranges over the positive values only.
      lo = MaxDouble;
      auto lock = v->ReadLock();
      for (int i = 0; i < FCount; ++i) {
        if (!HasValuesAt(i)) continue;
        const double x = tf(v->GetValue(i), i);
        if (x > 0 && x < lo) lo = x;
      }
    }
  }
}

void TQySeries::GetExtent(double& minX, double& maxX, double& minY, double& maxY) {
  ScanExtent(FXData, true, minX, maxX);
  ScanExtent(FYData, false, minY, maxY);
}

void TQySeries::CheckDBVectors() {
  for (TQyCustomDoubleVector* v : {FXData.data(), FYData.data()})
    if (v) v->UpdateDB();
}

void TQySeries::Calculate() {
  if (!FXData || !FYData || !FXAxis || !FYAxis) return;
  if (FXData->GetCount() <= FLastCount && FYData->GetCount() <= FLastCount) return;
  FCount = GetCount();
  if (FLastCount >= FCount || FCount < FMinimumCount) return;
  double x0, x1, y0, y1;
  GetExtent(x0, x1, y0, y1);
  if (x0 != FLimitMinX || x1 != FLimitMaxX) {
    FLimitMinX = x0, FLimitMaxX = x1;
    FXAxis->RangeModified();
  }
  if (y0 != FLimitMinY || y1 != FLimitMaxY) {
    FLimitMinY = y0, FLimitMaxY = y1;
    FYAxis->RangeModified();
  }
  CheckLinkedMarkers();
  FPointsStale = true;
  Invalidate();
  FLastCount = FCount;
  VariableObjects.Update(); // captions that show values of this series follow its data
}

// ---- flags ------------------------------------------------------------------------------------

void TQySeries::PointsModified() {
  FCalculatedCount = 0;
  FPointsStale = true;
  Invalidate();
}

void TQySeries::RangesModified() {
  if (!FXAxis || !FYAxis) return;
  FLimitMinX = FLimitMinY = MaxDouble;
  FLimitMaxX = FLimitMaxY = -MaxDouble;
  FLastCount = 0;
  FCount = 0;
  FCalculatedCount = 0;
  FPointsStale = true;
  FXAxis->RangeModified();
  FYAxis->RangeModified();
}

void TQySeries::SetLastCount(int n) {
  FLastCount = std::min(FLastCount, n);
  FCalculatedCount = std::min(FCalculatedCount, n);
  FPointsStale = true;
}

void TQySeries::Invalidate() {
  if (FGraph) FGraph->Invalidate();
}

void TQySeries::LegendsModified() {
  if (FGraph) FGraph->LegendsModified();
}

void TQyLineSeries::TestVisibleChanged() {
  if (!FGraph) return;
  FPen = FLine->GetPen(DataArea());
  FBrush = FArea->GetBrush(DataArea());
  FSymbolPen = TQyPen(FPointSymbol->GetBorderColor(), FPointSymbol->GetBorderLineWidth());
  FSymbolBrush = QBrush(TQyColorToQColor(FPointSymbol->GetFillColor()));
  FOutOfRangeSymbolPen =
      TQyPen(FOutOfRangePointSymbol->GetBorderColor(), FOutOfRangePointSymbol->GetBorderLineWidth());
  FOutOfRangeSymbolBrush = QBrush(TQyColorToQColor(FOutOfRangePointSymbol->GetFillColor()));
  if (FPointSymbol->GetVisible() && FPointSymbol->GetSize() != FLastSymbolSize) {
    FLastSymbolSize = FPointSymbol->GetSize();
    LegendsModified();
  }
  TQySeries::TestVisibleChanged();
}

void TQySeries::TestVisibleChanged() {
  if (!FGraph) return;
  Invalidate();
  const bool visible = SeriesVisible();
  if (visible != FLastVisible) {
    FLastVisible = visible;
    if (FYAxis && FYAxis->GetCurrentZoomStage() <= 0) {
      if (FXAxis) FXAxis->RangeModified();
      FYAxis->RangeModified();
    }
  }
}

QRectF TQySeries::DataArea() const { return FGraph ? FGraph->DataArea() : QRectF(); }

bool TQyLineSeries::CanDoCanvasDraw() const {
  if (!FGraph || FGraph->RenderingToImage()) return false;
  const TQyColor c = FLine->GetColor();
  return FGraph->NoSmoothing() && FCount > 100 && (c >> 24) == 0xFF &&
         (FLine->GetWidth() <= 1 || FLine->GetDashStyle() == TDashStyle::DashStyleSolid);
}
