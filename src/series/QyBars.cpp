// Bars: the shared settings, the count, the coordinates (stacked sums), the range pass and the
// captions read from a column of a data model.
#include "QyBars.h"
#include "QyAxis.h"
#include "QyExceptions.h"
#include "QyTextFormat.h"
#include "QyVectors.h"
#include <QScopedValueRollback>
#include <cmath>

namespace {
constexpr double MaxDouble = 1.7976931348623157e308;

bool Logarithmic(const TQyAxis* axis) {
  return axis->LogActive() || axis->GetScaling() == TQyAxisScaling::Log ||
         axis->GetScaling() == TQyAxisScaling::LogEE;
}
} // namespace

TQyBars::TQyBars(QObject* owner) : TQyLineSeries(owner) {
  FLine->SetColor(0xFF0000FF);      // blue
  FArea->SetForeColor(0xFF000080);  // navy
  FArea->SetVisible(true);
  FFont = new TQyFont([this] { FontModified(); }, this);
  {
    const QScopedValueRollback<bool> quiet(FCalculating, true); // the defaults rescale nothing
    FFont->SetSize(12);
    FFont->SetStyle(TQyFontStyle::Bold);
    FFont->SetFillColor(0xFFFF0000);
  }
  FFont->SetUndoCaption(QyRes::BarsFont);
  FLabelFontReferenceSize = FFont->GetSize();
  FCaptionLink = new TQyListLink(this);
  FCaptionLink->OnDataChange = [this] { DBChanged(); };
}

TQyBars::~TQyBars() {
  FDestroying = true;
  for (const QPointer<TQyCustomDoubleVector>& v : FListenedVectors)
    if (v) v->RemoveListener(this);
}

// ---- settings shared by all bars of a graph ----------------------------------------------------

QList<TQyBars*> TQyBars::GraphBars() const {
  if (!FGraph) return {const_cast<TQyBars*>(this)};
  QList<TQyBars*> bars;
  for (TQySeries* s : FGraph->RelatedSeries())
    if (auto* b = qobject_cast<TQyBars*>(s)) bars << b;
  return bars;
}

bool TQyBars::SameGroup(const TQyBars* other) const {
  return other->FBarsHorizontal == FBarsHorizontal && other->ClassAxis() == ClassAxis();
}

// Undo records the value here only: replaying it through this setter writes all bars again.
template <class T>
void TQyBars::SetShared(T TQyBars::*field, T value, const char* caption, const char* name) {
  QyAssign(this, this->*field, value, caption, name, [&] {
    for (TQyBars* b : GraphBars())
      if (b != this) {
        b->*field = value;
        b->PointsModified();
      }
    RangesModified();
  });
}

void TQyBars::SetBarStyle(TQyBarStyle value) { SetShared(&TQyBars::FBarStyle, value, QyRes::BarsStyle, "BarStyle"); }
void TQyBars::SetDepth3D(double value) { SetShared(&TQyBars::FDepth3D, value, QyRes::BarsDepth3D, "Depth3D"); }

void TQyBars::SetClassesDistance(double value) {
  SetShared(&TQyBars::FClassesDistance, value, QyRes::BarsClassesDistance, "ClassesDistance");
}

void TQyBars::SetOverlayStyle(TQyBarsOverlayStyle value) {
  SetShared(&TQyBars::FOverlayStyle, value, QyRes::BarsOverlayStyle, "OverlayStyle");
  for (TQyBars* b : GraphBars()) b->RangesModified(); // stacked sums change every extent
  if (FGraph) FGraph->Modified();
}

// Every bar series turns: its value and class vectors change places.
void TQyBars::SetBarsHorizontal(bool value) {
  QyAssign(this, FBarsHorizontal, value, QyRes::BarsHorizontal, "BarsHorizontal", [&] {
    for (TQyBars* b : GraphBars()) {
      b->FBarsHorizontal = value;
      b->SwapDataVecs();
      b->RangesModified();
    }
    LegendsModified();
    if (FGraph) FGraph->Modified();
  });
}

// ---- labels' settings --------------------------------------------------------------------------

void TQyBars::LabelModified() {
  if (FCalculating || FLabelPosition == TQyBarLabelPosition::Invisible) return;
  if (FLabelPosition == TQyBarLabelPosition::OnTopOfBar) RangesModified(); // they take room at the end
  else PointsModified();
}

void TQyBars::SetLabelColor(TQyColor value) {
  if (value == GetLabelColor()) return;
  RecordChange(this, QyRes::BarsLabelColor, "LabelColor");
  FFont->SetUndoCaption(nullptr); // recorded here, not as a change of the whole font
  FFont->SetFillColor(value);     // FontModified passes it on to the labels
  FFont->SetUndoCaption(QyRes::BarsFont);
  EmitPropertyChanged("LabelColor");
}

void TQyBars::SetFont(const TQyFont& font) { FFont->Assign(font); }

// A change of the font: a new size scales LabelSize alike (the labels' size follows the classes),
// a new colour reaches the labels at once.
void TQyBars::FontModified() {
  if (FCalculating) return;
  const float size = FFont->GetSize();
  if (size != FLabelFontReferenceSize && FLabelFontReferenceSize > 0 && size > 0)
    FLabelSize = size / FLabelFontReferenceSize * FLabelSize;
  FLabelFontReferenceSize = size;
  for (int j = 0; j < FCaptionObjects.Count(); ++j)
    FCaptionObjects.GetValue(j)->Font()->SetFillColor(FFont->GetFillColor());
  if (FLabelPosition != TQyBarLabelPosition::Invisible) Invalidate();
  LabelModified();
}

void TQyBars::SetCaptions(QStringList value) {
  if (FFromDatabase && !value.isEmpty()) throw EQyException(QyText(QyRes::BarsCaptionsWithDatabase));
  QyAssign(this, FCaptions, value, QyRes::BarsCaptions, "Captions", [this] { LabelModified(); });
}

// ---- captions from a data model ---------------------------------------------------------------

void TQyBars::SetDataSource(QAbstractItemModel* source) {
  FCaptionLink->SetDataSource(source);
  FFromDatabase = source != nullptr;
  if (source) DBModified();
}

void TQyBars::SetCaptionsField(QString field) {
  FCaptionLink->SetFieldName(field);
  if (FFromDatabase) DBModified();
}

void TQyBars::DBChanged() {
  if (!FDestroying && FFromDatabase && !FUpdatingFromDatabase && FCaptionLink->DataSource()) DBModified();
}

void TQyBars::DBModified() {
  FDatabaseChanged = true;
  LabelModified();
}

// Reads the captions column at the next calculation of the labels.
void TQyBars::UpdateDB() {
  if (!FFromDatabase || !FDatabaseChanged || FUpdatingFromDatabase) return;
  QAbstractItemModel* model = FCaptionLink->DataSource();
  const int column = FCaptionLink->FieldColumn();
  if (!model || FCaptionLink->FieldName().isEmpty() || column < 0) {
    FFromDatabase = model != nullptr && !FCaptionLink->FieldName().isEmpty(); // a column may come later
    FDatabaseChanged = false;
    return;
  }
  const QScopedValueRollback<bool> reading(FUpdatingFromDatabase, true);
  const int rows = FCaptionLink->FetchAll();
  FCaptions.clear();
  FCaptions.reserve(rows);
  for (int r = 0; r < rows; ++r) {
    const QVariant v = model->data(model->index(r, column));
    FCaptions << (v.isNull() ? QString() : v.toString()); // a null gives an empty caption
  }
  FDatabaseChanged = false;
}

// ---- count and coordinates --------------------------------------------------------------------

int TQyBars::GetCount() {
  FMinimumCount = 1;
  if (!FXData || !FYData) return 0;
  TQyCustomDoubleVector* values = ValueData();
  TQyCustomDoubleVector* classes = ClassData();
  int n = values->GetCount();
  // A class vector holds the boundaries: one more than the classes.
  if (!IsIndexer(classes) && classes->GetCount() <= n) n = classes->GetCount() - 1;
  if (!FOutliersVisible)
    while (n > 0 && values->IsOutlier(n - 1)) --n;
  if (n < 1) return std::max(n, 0);
  const QList<TQyBars*> bars = GraphBars();
  const int own = bars.indexOf(this);
  FStackedBelow.clear();
  if (FOverlayStyle == TQyBarsOverlayStyle::Stack)
    for (int i = 0; i < own; ++i)
      if (bars[i]->FOverlayStyle == TQyBarsOverlayStyle::Stack && SameGroup(bars[i])) FStackedBelow << bars[i];
  ListenToLowerVectors();
  FLastInGroup = true;
  for (int i = own + 1; i < bars.size(); ++i)
    if (SameGroup(bars[i])) FLastInGroup = false;
  return n;
}

// A change of the data below reaches a stacked series through the vectors it stands on.
void TQyBars::ListenToLowerVectors() {
  for (const QPointer<TQyBars>& below : FStackedBelow) {
    TQyCustomDoubleVector* v = below ? below->ValueData() : nullptr;
    if (!v || v == FXData || v == FYData || FListenedVectors.contains(v)) continue;
    v->AddListener(this);
    FListenedVectors << v;
  }
}

void TQyBars::VectorDestroyed(TQyCustomDoubleVector* vector) {
  FListenedVectors.removeAll(vector);
  TQyLineSeries::VectorDestroyed(vector);
}

// A series' indexer stands in for its missing vector (values 0, 1, 2, ...).
bool TQyBars::IsIndexer(const TQyCustomDoubleVector* v) const { return v == FDataIndexer; }

bool TQyBars::OwnValue(int i, double& value) {
  TQyCustomDoubleVector* v = ValueData();
  if (!v || i < 0 || i >= v->GetCount() || (!IsIndexer(v) && !HasValuesAt(i))) return false;
  value = FBarsHorizontal ? TransformX(v->GetValue(i), i) : TransformY(v->GetValue(i), i);
  return true;
}

// The value end of bar i: its own value, on top of the values of the series below when stacked.
double TQyBars::ValueAt(int i) {
  double sum = 0, v;
  if (FOverlayStyle == TQyBarsOverlayStyle::Stack)
    for (const QPointer<TQyBars>& below : FStackedBelow)
      if (below && below->OwnValue(i, v)) sum += v;
  return OwnValue(i, v) ? sum + v : sum;
}

double TQyBars::ClassBoundary(int i) {
  TQyCustomDoubleVector* v = ClassData();
  if (!v || i < 0 || (!IsIndexer(v) && (i >= v->GetCount() || !HasValuesAt(i)))) return 0;
  return FBarsHorizontal ? TransformY(v->GetValue(i), i) : TransformX(v->GetValue(i), i);
}

double TQyBars::Get_X(int i) { return FBarsHorizontal ? ValueAt(i) : ClassBoundary(i); }
double TQyBars::Get_Y(int i) { return FBarsHorizontal ? ClassBoundary(i) : ValueAt(i); }

QString TQyBars::FmtLab(const QString& format, double value) {
  return format.isEmpty() ? FloatToStr(value) : FormatFloat(format, value);
}

// ---- range pass -------------------------------------------------------------------------------

// The extent covers every class boundary and every value end (stacked sums included); the value
// axis always shows 0, where the bars stand, unless it is logarithmic.
void TQyBars::Calculate() {
  if (!FXData || !FYData || !FXAxis || !FYAxis) return;
  TQyCustomDoubleVector* values = ValueData();
  TQyCustomDoubleVector* classes = ClassData();
  const bool grown = values->GetCount() > FLastCount && (IsIndexer(classes) || classes->GetCount() > FLastCount + 1);
  if (!grown && FLastCount > 0) return;
  FCount = GetCount();
  if (FCount > FLastCount) {
    double c0 = MaxDouble, c1 = -MaxDouble, v0 = MaxDouble, v1 = -MaxDouble;
    const bool logValues = Logarithmic(ValueAxis());
    for (int i = 0; i <= FCount; ++i) {
      const double c = ClassBoundary(i);
      if (!std::isfinite(c) || (!IsIndexer(classes) && !HasValuesAt(i))) continue;
      c0 = std::min(c0, c), c1 = std::max(c1, c);
    }
    for (int i = 0; i < FCount; ++i) {
      const double v = ValueAt(i);
      if (!std::isfinite(v) || (logValues && v <= 0) || (!IsIndexer(values) && !HasValuesAt(i))) continue;
      v0 = std::min(v0, v), v1 = std::max(v1, v);
    }
    if (!logValues && v0 <= v1) v0 = std::min(v0, 0.0), v1 = std::max(v1, 0.0);
    double& x0 = FLimitMinX; double& x1 = FLimitMaxX;
    double& y0 = FLimitMinY; double& y1 = FLimitMaxY;
    const double nx0 = FBarsHorizontal ? v0 : c0, nx1 = FBarsHorizontal ? v1 : c1;
    const double ny0 = FBarsHorizontal ? c0 : v0, ny1 = FBarsHorizontal ? c1 : v1;
    if (nx0 != x0 || nx1 != x1) {
      x0 = nx0, x1 = nx1;
      FXAxis->RangeModified();
    }
    if (ny0 != y0 || ny1 != y1) {
      y0 = ny0, y1 = ny1;
      FYAxis->RangeModified();
    }
  }
  CheckLinkedMarkers();
  FPointsStale = true;
  Invalidate();
  FLastCount = FCount;
  VariableObjects.Update();
}
