#include "QyStyles.h"
#include "QyDrawing.h"
#include <QMetaProperty>

// ---- TQyStyleObject

TQyStyleObject::TQyStyleObject(ModifiedCallback modifiedCallback, QObject* parent)
    : QObject(parent), FModifiedCallback(std::move(modifiedCallback)) {}

TQyStyleObject::~TQyStyleObject() { FDestroying = true; }

void TQyStyleObject::Modified() {
  if (FModifiedCallback) FModifiedCallback();
}

namespace {
// Nested settings are read-only object properties.
TQyStyleObject* NestedSettings(const QObject& owner, const QMetaProperty& p) {
  if (!(p.metaType().flags() & QMetaType::PointerToQObject)) return nullptr;
  return qobject_cast<TQyStyleObject*>(p.read(&owner).value<QObject*>());
}
} // namespace

TQyUndoRecorder* TQyStyleObject::UndoRecorder() const {
  if (FUndoRecorder) return FUndoRecorder.data();
  const TQyRecording* owner = QyRecordingOwner(this);
  return owner ? owner->UndoRecorder() : nullptr;
}

void TQyStyleObject::RecordChange(QObject* self, const char* caption, const char* propertyName) {
  auto* owner = qobject_cast<TQyStyleObject*>(parent());
  if (owner && owner->RecordWhole()) return;
  TQyRecording::RecordChange(self, caption, propertyName);
}

void TQyStyleObject::AssignPublished(const QObject& source) {
  const QMetaObject* meta = metaObject();
  const QMetaObject* sourceMeta = source.metaObject();
  for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
    const QMetaProperty p = meta->property(i);
    const int at = sourceMeta->indexOfProperty(p.name());
    if (at < 0) continue; // a property the source does not have keeps its value
    if (p.isWritable()) {
      p.write(this, sourceMeta->property(at).read(&source));
    } else if (TQyStyleObject* nested = NestedSettings(*this, p)) {
      if (const TQyStyleObject* from = NestedSettings(source, sourceMeta->property(at)))
        nested->AssignPublished(*from);
    }
  }
}

// ---- TQyGradientSettings

TQyGradientSettings::TQyGradientSettings(ModifiedCallback modifiedCallback, QObject* parent)
    : TQyStyleObject(std::move(modifiedCallback), parent) {}

QBrush TQyGradientSettings::GetBrush(const QRectF& r, float angle) const {
  const QPointF center(FRadialCenterX, FRadialCenterY);
  switch (FStyle) {
  case TQyGradientStyle::Radial: return RadialBrush(r, center, FFirstColor, FMiddleColor, FLastColor);
  case TQyGradientStyle::Elliptical:
    return EllipticalBrush(r, center, FFirstColor, FMiddleColor, FLastColor);
  case TQyGradientStyle::Linear: break;
  }
  return LinearBrush(r, FLinearAngle + angle, FLinearCenter, FFirstColor, FMiddleColor, FLastColor);
}

// ---- Lines

TQySimpleLineSettings::TQySimpleLineSettings(ModifiedCallback modifiedCallback, QObject* parent)
    : TQyStyleObject(std::move(modifiedCallback), parent) {
  FGradient = new TQyGradientSettings([this] { Modified(); }, this);
}

TQyPen TQySimpleLineSettings::GetPen(const QRectF& area, float angle) const {
  TQyPen pen = FGradient->GetVisible() ? TQyPen(FGradient->GetBrush(area, angle), 1.0f)
                                       : TQyPen(FColor, 1.0f);
  pen.Set_Width(FWidth);
  pen.Set_DashStyle(FDashStyle);
  return pen;
}

TQyLineSettings::TQyLineSettings(ModifiedCallback modifiedCallback, QObject* parent)
    : TQySimpleLineSettings(std::move(modifiedCallback), parent) {}

TQyArrowSettings::TQyArrowSettings(ModifiedCallback modifiedCallback, QObject* parent)
    : TQyLineSettings(std::move(modifiedCallback), parent) {}

// ---- Areas, symbols, axis arrows

TQyAreaSettings::TQyAreaSettings(ModifiedCallback modifiedCallback, QObject* parent)
    : TQyStyleObject(std::move(modifiedCallback), parent) {
  FGradient = new TQyGradientSettings([this] { Modified(); }, this);
}

QBrush TQyAreaSettings::GetBrush(const QRectF& r) const {
  if (FGradient->GetVisible()) return FGradient->GetBrush(r, 0.0f);
  return GetAreaBrush(FAreaStyle, FForeColor, FBackColor);
}

TQyPointSymbolSettings::TQyPointSymbolSettings(ModifiedCallback modifiedCallback, QObject* parent)
    : TQyStyleObject(std::move(modifiedCallback), parent) {}

TQyAxisArrowPoint::TQyAxisArrowPoint(ModifiedCallback modifiedCallback, QObject* parent)
    : TQyStyleObject(std::move(modifiedCallback), parent) {}

// ---- Arrowheads

QPainterPath ArrowPointCap(float pointLength, float innerLength, float pointHeight) {
  QPainterPath path;
  path.setFillRule(Qt::OddEvenFill);
  path.moveTo(pointHeight, -pointLength);
  path.lineTo(0, 0);
  path.lineTo(-pointHeight, -pointLength);
  path.lineTo(0, -innerLength);
  path.closeSubpath();
  return path;
}

QPainterPath ArrowPointCap(const TQyAxisArrowPoint& point) {
  return ArrowPointCap(point.GetPointLength(), point.GetInnerLength(), point.GetPointHeight());
}

QPainterPath ArrowPointCap(const TQyArrowSettings& arrow) {
  return ArrowPointCap(arrow.GetPointLength(), arrow.GetInnerLength(), arrow.GetPointHeight());
}
