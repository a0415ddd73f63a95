#include "QyAxis.h"
#include "QyCalendar.h"
#include "QyListLink.h"
#include "QyMath.h"
#include "QyRounding.h"
#include "QyStyles.h"
#include <QEvent>
#include <QResizeEvent>
#include <algorithm>
#include <cmath>

namespace {
// Kept on the parent itself, so that the flag goes with it.
constexpr char LayoutFlag[] = "qyLayoutInProgress";
} // namespace

bool LayoutInProgress(const QObject* parent) { return parent && parent->property(LayoutFlag).toBool(); }

void SetLayoutInProgress(QObject* parent, bool on) {
  if (parent && LayoutInProgress(parent) != on) parent->setProperty(LayoutFlag, on);
}

QObject* TQyAxis::LayoutParent() const {
  return parentWidget() ? static_cast<QObject*>(parentWidget()) : const_cast<TQyAxis*>(this);
}

TQyAxis::TQyAxis(QWidget* parent) : QWidget(parent) {
  auto modified = [this] { Modified(); };
  FCaptionObject = std::make_unique<TQyRichCaptionObject>(modified, this);
  FExtraExponentCaption = std::make_unique<TQyRichCaptionObject>(modified, this);
  FFont = FExtraExponentCaption->Font();
  FFont->SetUndoCaption(QyRes::AxisFont);
  FFont->SetName("Arial");
  FFont->SetSize(12);
  FFont->SetStyle(TQyFontStyle::Bold);
  FFont->SetFillColor(0xFF00008Bu);
  FCaptionFont = FCaptionObject->Font();
  FCaptionFont->SetUndoCaption(QyRes::AxisCaptionFont);
  FCaptionFont->SetName("Times New Roman");
  FCaptionFont->SetSize(14);
  FCaptionFont->SetStyle(TQyFontStyle::Bold);
  FCaptionFont->SetFillColor(FCaptionColor);
  FArrowPoint = new TQyAxisArrowPoint(modified, this);
  FRubricsLink = new TQyListLink(this);
  FRubricsLink->OnDataChange = [this] { DBModified(); };
  FTimeFormats = TQyAxisTimeFormats::FromSettings(DefaultFormatSettings());
  setAttribute(Qt::WA_TransparentForMouseEvents, false);
  resize(400, 20);
}

TQyAxis::~TQyAxis() {
  FDestroying = true;
  const auto series = FSeries; // a series leaves the list as it lets go
  for (const auto& s : series)
    if (s) s->AxisDestroyed(this);
}

IQyAxisHost* TQyAxis::Graph() const { return dynamic_cast<IQyAxisHost*>(parentWidget()); }

QString TQyAxis::ToString() const { return FCaption.isEmpty() ? objectName() : FCaption; }

// ---- mapping ----------------------------------------------------------------------------------

float TQyAxis::NumberToWorld(double value) const {
  const bool forward = GetHorizontal() != FTwisted;
  const float base = GetHorizontal() ? FOriginX : FOriginY;
  double d;
  if (FLogActive)
    d = value > 0 ? (std::log10(value) - FLogStart) / FScale : -100;
  else if (FScaling == TQyAxisScaling::DateTime)
    d = DateTimeSpan(FStart, value) / FScale; // the time of day of negative dates counts forward
  else
    d = (value - FStart) / FScale;
  return TQyLinearMap::Place(d, forward, FAxisLength, base);
}

bool TQyAxis::LinearMap(TQyLinearMap& map) const {
  if (FLogActive || FScaling == TQyAxisScaling::DateTime) return false;
  map = {FStart, FScale, 1.0 / FScale, GetHorizontal() ? FOriginX : FOriginY, FAxisLength,
         GetHorizontal() != FTwisted};
  return true;
}

double TQyAxis::WorldToNumber(float pixel) const {
  const bool forward = GetHorizontal() != FTwisted;
  const float p = pixel - (GetHorizontal() ? FOriginX : FOriginY);
  const double along = forward ? p : FAxisLength - p;
  if (FLogActive) return std::pow(10.0, along * FScale + FLogStart);
  return along * FScale + FStart;
}

// ---- flags ------------------------------------------------------------------------------------

void TQyAxis::Modified() {
  FNeedsCalc = true;
  FEndsRounded = false;
  DoInvalidate();
}

void TQyAxis::DoInvalidate() {
  if (parentWidget()) parentWidget()->update();
}

void TQyAxis::CheckResize() {
  if (LayoutInProgress(LayoutParent())) return;
  if (FStartEnd == TQyAxisEnd::AutoRange) FStart = FLastStart;
  if (FStopEnd == TQyAxisEnd::AutoRange) FStop = FLastStop;
  Modified();
}

void TQyAxis::changeEvent(QEvent* e) {
  QWidget::changeEvent(e);
  if (e->type() == QEvent::ParentChange) {
    if (auto* g = Graph()) {
      if (!UndoRecorder()) SetUndoStack(g->GetUndoStack());
      g->TestPrimaryAxis();
    }
    Modified();
  }
}

// ---- series -----------------------------------------------------------------------------------

void TQyAxis::AddSeries(IQyAxisSeries* series) {
  if (series && !Series().contains(series)) FSeries.append(series);
}

void TQyAxis::RemoveSeries(IQyAxisSeries* series) {
  FSeries.removeIf([series](const auto& s) { return s.data() == series; });
}

QList<IQyAxisSeries*> TQyAxis::Series() const {
  QList<IQyAxisSeries*> out;
  for (const auto& s : FSeries)
    if (s) out.append(s);
  return out;
}

// ---- setters with more to do ------------------------------------------------------------------

void TQyAxis::SetCaption(QString value) {
  while (!value.isEmpty() && value.back().isSpace()) value.chop(1); // trimmed at its right end
  QyAssign(this, FCaption, value, QyRes::AxisCaption, "Caption", [this] {
    FCaptionObject->SetCaption(FCaption);
    Modified();
  });
}

void TQyAxis::SetRubricsAngle(float value) {
  value = float(FitTo360Degrees(value));
  QyAssign(this, FRubricsAngle, value, QyRes::AxisRubricsAngle, "RubricsAngle", [this] {
    const double rad = FRubricsAngle * M_PI / 180.0;
    FSinAngle = float(std::fabs(std::sin(rad)));
    FCosAngle = float(std::fabs(std::cos(rad)));
    Modified();
  });
}

void TQyAxis::SetScaling(TQyAxisScaling value) {
  QyAssign(this, FScaling, value, QyRes::AxisScaling, "Scaling", [this] {
    FLogActive = FScaling == TQyAxisScaling::Log || FScaling == TQyAxisScaling::LogEE;
    if (FScaling >= TQyAxisScaling::Seconds) FAutoTickParts = true;
    if (IQyAxisHost* graph = Graph()) graph->ZoomReset(); // the range is taken anew for the scale
    Modified();
  });
}

void TQyAxis::SetLogToNormalScalingLevel(double value) {
  if (value < 0) value = 0;
  QyAssign(this, FLogToNormalScalingLevel, value, QyRes::AxisLogToNormal,
           "LogToNormalScalingLevel", [this] {
             if (FScaling == TQyAxisScaling::Log || FScaling == TQyAxisScaling::LogEE) Modified();
           });
}

void TQyAxis::SetRubrics(QStringList value) {
  if (GetDataSource()) throw EExternal(QyText(QyRes::AxisRubricsWithDatabase));
  QyAssign(this, FRubrics, value, QyRes::AxisRubrics, "Rubrics", [this] { Modified(); });
}

void TQyAxis::SetPosition(TQyAxisPosition value) {
  QyAssign(this, FPosition, value, QyRes::AxisPosition, "Position", [this] { Modified(); });
}

// Switching the automatic parts off keeps the parts found last; undo brings back those the user
// had set before, in the same entry.
void TQyAxis::SetAutoTickParts(bool value) {
  if (FScaling >= TQyAxisScaling::Seconds) return; // time and rubric scales choose their own parts
  if (value) QyAssign(this, FAutoTickParts, value, QyRes::AxisAutoTickParts, "AutoTickParts", [this] { Modified(); });
  else AssignGroupedWith(FAutoTickParts, value, QyRes::AxisAutoTickParts, "AutoTickParts",
                         {"LabelPart", "MajorTickPart", "TickPart"}, [this] { Modified(); });
}

void TQyAxis::SetLabelDistanceFactor(float value) {
  value = std::clamp(value, 0.1f, 10.0f);
  QyAssign(this, FLabelDistanceFactor, value, QyRes::AxisLabelDistanceFactor,
           "LabelDistanceFactor", [this] { Modified(); });
}

// A part of 0 stays 0: it is the value before the first ranging, which the tick walks read as
// "no partition given" (and which undo must be able to write back).
#define QY_AXIS_PART_SETTER(Name)                                                                  \
  void TQyAxis::Set##Name(double value) {                                                          \
    if (FAutoTickParts || !std::isfinite(value)) return; /* no partition of that width */        \
    value = std::fabs(value);                                                                      \
    QyAssign(this, F##Name, value, QyRes::Axis##Name, #Name, [this] { Modified(); }); \
  }
QY_AXIS_PART_SETTER(LabelPart)
QY_AXIS_PART_SETTER(MajorTickPart)
QY_AXIS_PART_SETTER(TickPart)
#undef QY_AXIS_PART_SETTER

void TQyAxis::SetMajorThickThicknes(float value) {
  QyAssign(this, FMajorTickThicknes, value, QyRes::AxisMajorTickThicknes,
           "MajorTickThicknes", [this] { Modified(); });
}

// A date-time axis keeps its ends inside the calendar that its labels can show.
double TQyAxis::ClampEnd(double value) const {
  if (FScaling != TQyAxisScaling::DateTime) return value;
  return std::clamp(value, MinDateTime, MaxDateTime);
}

void TQyAxis::SetStart(double value) {
  value = ClampEnd(value);
  QyAssign(this, FStart, value, QyRes::AxisStart, "Start", [this] {
    FSetStart = FLastStart = FStart;
    Modified();
  });
}

void TQyAxis::SetStop(double value) {
  value = ClampEnd(value);
  QyAssign(this, FStop, value, QyRes::AxisStop, "Stop", [this] {
    FSetStop = FLastStop = FStop;
    Modified();
  });
}

// Settings that move the ends (end modes, rounding, the moving slit) change them together: one
// undo entry holds the setting and the ends, so that undo brings the old ends back too.
void TQyAxis::PushEndsUncaptioned(std::initializer_list<const char*> names) {
  TQyUndoRecorder* stack = UndoRecorder();
  if (!stack || !stack->IsRecording()) return;
  for (const char* name : names) stack->PushProperty(this, QString(), name);
}

template <class T, class Notify>
void TQyAxis::AssignGroupedWith(T& field, const T& value, const char* caption, const char* name,
                                std::initializer_list<const char*> others, Notify notify) {
  if (QyEqual(field, value)) return;
  TQyUndoGroup group(UndoRecorder(), caption);
  PushEndsUncaptioned(others);
  QyAssign(this, field, value, caption, name, notify);
}

void TQyAxis::SetStartEnd(TQyAxisEnd value) {
  if (value == TQyAxisEnd::MovingSlit) value = TQyAxisEnd::Fixed; // only the stop end moves
  AssignGroupedWith(FStartEnd, value, QyRes::AxisStartEnd, "StartEnd", {"Start", "Stop"}, [this] {
    if (FStartEnd == TQyAxisEnd::AutoRange) RangeModified();
    else Modified();
  });
}

// A moving slit moves by itself: on a graph it turns off zooming and the scroll bar of its
// direction. The entry holds those two settings as well, whatever the new value.
void TQyAxis::SetStopEnd(TQyAxisEnd value) {
  if (QyEqual(FStopEnd, value)) return;
  QObject* zoom = Graph() ? Graph()->ZoomSettings() : nullptr;
  const char* bar = GetHorizontal() ? "HScrollbarVisible" : "VScrollbarVisible";
  TQyUndoGroup group(UndoRecorder(), QyRes::AxisStopEnd);
  TQyUndoRecorder* stack = UndoRecorder();
  if (zoom && stack && stack->IsRecording())
    for (const char* name : {"Auto", bar}) stack->PushProperty(zoom, QString(), name);
  AssignGroupedWith(FStopEnd, value, QyRes::AxisStopEnd, "StopEnd", {"Start", "Stop", "StartEnd"}, [this, zoom, bar] {
    if (FStopEnd == TQyAxisEnd::MovingSlit) {
      FStartEnd = TQyAxisEnd::Fixed;
      if (zoom) zoom->setProperty("Auto", false), zoom->setProperty(bar, false);
    }
    if (FStopEnd == TQyAxisEnd::AutoRange || FStopEnd == TQyAxisEnd::MovingSlit) RangeModified();
    else Modified();
  });
}

void TQyAxis::SetEndRounding(TQyAxisEndRounding value) {
  AssignGroupedWith(FEndRounding, value, QyRes::AxisEndRounding, "EndRounding", {"Start", "Stop"},
                    [this] { Modified(); });
}

// The window of a moving slit is taken anew from the data.
void TQyAxis::SetMovingSlitWidth(double value) {
  AssignGroupedWith(FMovingSlitWidth, value, QyRes::AxisMovingSlitWidth, "MovingSlitWidth", {"Start", "Stop"},
                    [this] { RangeModified(); });
}

void TQyAxis::SetMovingSlitIncrement(double value) {
  AssignGroupedWith(FMovingSlitIncrement, value, QyRes::AxisMovingSlitIncrement, "MovingSlitIncrement",
                    {"Start", "Stop"}, [this] { RangeModified(); });
}

// A padding once set cannot go back to 0 through the property. It widens the data range, so the
// range is taken anew.
void TQyAxis::SetStartPadding(double value) {
  if (value > 0) QyAssign(this, FStartPadding, value, nullptr, "StartPadding", [this] { RangeModified(); });
}

void TQyAxis::SetStopPadding(double value) {
  if (value > 0) QyAssign(this, FStopPadding, value, nullptr, "StopPadding", [this] { RangeModified(); });
}

void TQyAxis::SetMaxForExtraExponent(double value) {
  QyAssign(this, FMaxForExtraExponent, std::fabs(value), QyRes::AxisMaxForExtraExponent,
           "MaxForExtraExponent", [this] { Modified(); });
}

void TQyAxis::SetMinForExtraExponent(double value) {
  QyAssign(this, FMinForExtraExponent, std::fabs(value), QyRes::AxisMinForExtraExponent,
           "MinForExtraExponent", [this] { Modified(); });
}

// The two aliases read the caption distances crosswise by position.
float& TQyAxis::CaptionDistance(bool numbersSide) {
  const bool bottomOrRight = FPosition == TQyAxisPosition::Bottom || FPosition == TQyAxisPosition::Right;
  return numbersSide == bottomOrRight ? FCaptionDistanceBefore : FCaptionDistanceAfter;
}

float TQyAxis::GetDistanceNumbersCaption() const {
  return const_cast<TQyAxis*>(this)->CaptionDistance(true);
}

float TQyAxis::GetDistanceToBorder() const {
  return const_cast<TQyAxis*>(this)->CaptionDistance(false);
}

void TQyAxis::SetDistanceNumbersCaption(float value) {
  QyAssign(this, CaptionDistance(true), value, QyRes::AxisDistanceNumbersCaption,
           "DistanceNumbersCaption", [this] { Modified(); });
}

void TQyAxis::SetDistanceToBorder(float value) {
  QyAssign(this, CaptionDistance(false), value, QyRes::AxisDistanceToBorder,
           "DistanceToBorder", [this] { Modified(); });
}

// A master must be another axis of the same orientation that follows no master itself; taking
// one makes the axis a slave, letting go (nil) makes it free again. Other masters are refused.
void TQyAxis::SetMasterAxis(TQyAxis* value) {
  if (value && (value == this || value->GetHorizontal() != GetHorizontal() || value->FIsSlaveAxis)) return;
  QyAssignGrouped(this, FMasterAxis, value, QyRes::AxisMasterAxis, "MasterAxis", [this] {
    SetIsSlaveAxis(FMasterAxis != nullptr);
    Modified();
  });
}

void TQyAxis::VariablesChanged() {
  if (!FDestroying) Modified(); // the layout parses the caption again
}

void TQyAxis::SetAutoSize(bool value) {
  QyAssign(this, FAutoSize, value, nullptr, "AutoSize", [this] { Modified(); });
}

// The graph's check of its primary axes may change further properties: one entry holds all.
void TQyAxis::SetVisible(bool visible) {
  QyAssignGrouped(this, FVisible, visible, QyRes::AxisVisible, "Visible", [this] {
    QWidget::setVisible(FVisible);
    if (auto* g = Graph()) g->TestPrimaryAxis();
    Modified();
  });
}

void TQyAxis::SetStartStop(double start, double stop) {
  FStart = FLastStart = start;
  FStop = FLastStop = stop;
  // A drag lays out the ticks only (no ranging): the logarithmic mapping follows the ends here.
  if (FLogActive && start > 0 && stop > start) FLogStart = std::log10(start), FLogStop = std::log10(stop);
  Modified();
}
