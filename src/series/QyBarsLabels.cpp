// Bars: the labels' texts, their font, their place along the bar, and the room that labels and
// depth need beyond the end of the value axis.
#include "QyAxis.h"
#include "QyBars.h"
#include "QyTextFormat.h"
#include "QyVectors.h"
#include <cmath>

void TQyBars::MakeLabels(int) {
  if (FLabelPosition == TQyBarLabelPosition::Invisible) return;
  // A stacked bar with another bar on top keeps its label inside.
  const bool keepInside = FOverlayStyle == TQyBarsOverlayStyle::Stack && !FLastInGroup;
  if (keepInside && FLabelPosition == TQyBarLabelPosition::OnTopOfBar) FLabelPosition = TQyBarLabelPosition::InTop;
  TQyCustomDoubleVector* values = ValueData();
  const double sum = FOutliersVisible ? values->GetSumIncludingOutliers() : values->GetSum();
  const double total = FBarsHorizontal ? TransformX(sum, -1) : TransformY(sum, -1);
  // Percent of the series' total; a total of 0 shows 0 % rather than dividing by it.
  const double percentFactor = total != 0 && std::isfinite(total) ? 100 / total : 0;
  const float size = std::max(0.01f * FNarrowestClass * FLabelSize, 1.0f);
  for (int j = 0; j < FPoints.Count(); ++j) {
    auto label = std::make_unique<TQyRichCaptionObject>();
    label->Font()->Assign(*FFont);
    label->Font()->SetSize(size);
    label->SetCaption(LabelText(FPointIndices[j], percentFactor));
    label->Alignment = TQyContentAlignment::MiddleCenter;
    label->Angle = FLabelVertical ? 90 : 0;
    label->ParseForSize(nullptr, nullptr);
    PlaceLabel(j, *label, keepInside);
    FCaptionObjects.Add(std::move(label));
  }
}

QString TQyBars::LabelText(int index, double percentFactor) {
  double v = 0;
  OwnValue(index, v); // a stacked bar shows its own value
  const QString caption = index < FCaptions.size() ? FCaptions[index] : QString();
  auto percent = [&] {
    QString format = FLabelFormat.isEmpty() ? QStringLiteral("##0.##%") : FLabelFormat;
    if (!format.contains('%')) format += '%'; // a literal: the value is in percent already
    return FormatFloat(format, v * percentFactor);
  };
  auto prefixed = [&](const QString& text) { return caption.isEmpty() ? text : caption + ' ' + text; };
  QString text;
  switch (FLabelFrom) {
  case TQyLabelStyle::Value: text = FmtLab(FLabelFormat, v); break;
  case TQyLabelStyle::CaptionsList: text = caption; break;
  case TQyLabelStyle::Percent: text = percent(); break;
  case TQyLabelStyle::CaptionAndValue: text = prefixed(FmtLab(FLabelFormat, v)); break;
  case TQyLabelStyle::CaptionAndPercent: text = prefixed(percent()); break;
  }
  if (OnGetLabel) {
    TQyGetLabelEventArgs args{text, index};
    OnGetLabel(this, args);
    text = args.Caption;
  }
  return text;
}

// The label's centre along bar j. Positions count from the base towards the value end, whichever
// way the bar runs; a label that does not fit inside its bar goes on top of it, or, when another
// bar stands on it, to its centre.
void TQyBars::PlaceLabel(int j, TQyRichCaptionObject& label, bool keepInside) const {
  const QPointF p = FPoints[j], q = FSecondCorners[j];
  const double w = FLabelVertical ? label.Height() : label.Width();
  const double h = FLabelVertical ? label.Width() : label.Height();
  const bool deep = FBarStyle != TQyBarStyle::Flat;
  double x, y;
  if (!FBarsHorizontal) {
    const double s = p.y() <= q.y() ? 1 : -1; // 1: the value end lies above the base
    x = p.x() + (q.x() - p.x()) / 2;
    auto onTop = [&] {
      y = p.y() - s * 0.5 * h;
      if (s > 0 && FBarStyle == TQyBarStyle::Cuboid) x += 0.5 * FDepth3DX;
      if (s > 0 && deep) y -= FDepth3DY;
    };
    switch (FLabelPosition) {
    case TQyBarLabelPosition::OnBottom: y = q.y() - s * 0.75 * h; break;
    case TQyBarLabelPosition::Centered: y = p.y() + 0.5 * (q.y() - p.y()); break;
    case TQyBarLabelPosition::GoldenCut: y = p.y() + 0.381966 * (q.y() - p.y()); break;
    case TQyBarLabelPosition::ThreeFourth: y = p.y() + 0.25 * (q.y() - p.y()); break;
    case TQyBarLabelPosition::InTop: y = p.y() + s * 0.75 * h; break;
    default: onTop(); break;
    }
    const double lo = std::min(p.y(), q.y()), hi = std::max(p.y(), q.y());
    if (FLabelPosition != TQyBarLabelPosition::OnTopOfBar && (lo + 0.5 * h > y || hi - 0.5 * h < y)) {
      if (keepInside) y = p.y() + 0.5 * (q.y() - p.y());
      else onTop();
    }
    x += FCylinderShift / 2;
  } else {
    const double s = p.x() <= q.x() ? 1 : -1; // 1: the value end lies right of the base
    const double inset = FLabelVertical ? w : 0.5 * (w + h);
    y = p.y() + (q.y() - p.y()) / 2;
    auto onTop = [&] {
      x = q.x() + s * (0.5 * w + (FLabelVertical ? 0 : 0.25 * h));
      if (s > 0 && FBarStyle == TQyBarStyle::Cuboid) y -= 0.5 * FDepth3DY;
      if (s > 0 && deep) x += FDepth3DX;
    };
    switch (FLabelPosition) {
    case TQyBarLabelPosition::OnBottom: x = p.x() + s * inset; break;
    case TQyBarLabelPosition::Centered: x = p.x() + 0.5 * (q.x() - p.x()); break;
    case TQyBarLabelPosition::GoldenCut: x = p.x() + 0.6180339 * (q.x() - p.x()); break;
    case TQyBarLabelPosition::ThreeFourth: x = p.x() + 0.75 * (q.x() - p.x()); break;
    case TQyBarLabelPosition::InTop: x = q.x() - s * inset; break;
    default: onTop(); break;
    }
    const double lo = std::min(p.x(), q.x()), hi = std::max(p.x(), q.x());
    if (FLabelPosition != TQyBarLabelPosition::OnTopOfBar && !(hi - 0.5 * w >= x && lo + 0.5 * w <= x)) {
      if (keepInside) x = p.x() + 0.5 * (q.x() - p.x());
      else onTop();
    }
    y -= FCylinderShift / 2;
  }
  label.X = float(x);
  label.Y = float(y);
}

// Room beyond the top (side 2) or right (side 3) end: the depth of 3D bars less what the axis
// leaves above the data anyway, plus labels standing beyond the end of the values.
float TQyBars::ExtraSpaceAt(int side) {
  const bool top = side == 2;
  if ((side != 2 && side != 3) || FCount < 1 || !FGraph || !FXAxis || !FYAxis) return 0;
  TQyAxis* classAxis = ClassAxis();
  const double a = (classAxis->GetStop() - classAxis->GetStart()) / FCount; // average class width
  const double u = classAxis->Scale();                                      // units per pixel
  if (!(u > 0) || !std::isfinite(a)) return 0;
  double r = 0;
  if (FBarStyle != TQyBarStyle::Flat) {
    // Top divides by the scale and Right multiplies by it: the two sides are kept as they are.
    if (top) {
      r = -(FYAxis->GetTwisted() ? FLimitMinY - FYAxis->GetStart() : FYAxis->GetStop() - FLimitMaxY) / FYAxis->Scale();
      if (FBarsHorizontal) r -= a * FClassesDistance / u * 0.005;
    } else {
      r = -(FXAxis->GetTwisted() ? FLimitMinX - FXAxis->GetStart() : FXAxis->GetStop() - FLimitMaxX) * FXAxis->Scale();
      if (!FBarsHorizontal) r -= a * FClassesDistance / u * 0.005;
    }
    r += (a - 0.01 * FClassesDistance) * FDepth3D * (top ? 0.0026 : 0.0043) / u;
  }
  const bool labelSide = top != FBarsHorizontal;
  if (labelSide && FLabelPosition != TQyBarLabelPosition::Invisible &&
      (FOverlayStyle == TQyBarsOverlayStyle::Shift || FLastInGroup))
    r += LabelExtraSpace(top, a, u);
  return std::isfinite(r) ? float(r) : 0.0f;
}

float TQyBars::LabelExtraSpace(bool top, double a, double u) {
  if (FPointsStale) CalculatePoints();
  TQyAxis* axis = top ? FYAxis : FXAxis;
  const double endValue = axis->GetTwisted() ? (top ? FLimitMinY : FLimitMinX) : (top ? FLimitMaxY : FLimitMaxX);
  const double end = axis->NumberToWorld(endValue);
  const TQyRichCaptionObject* outermost = nullptr;
  double extreme = end;
  for (int j = 0; j < FCaptionObjects.Count() && j < FPoints.Count(); ++j) {
    const TQyRichCaptionObject* l = FCaptionObjects.GetValue(j);
    const double along = FLabelVertical ? (top ? l->Width() : l->Height()) : (top ? l->Height() : l->Width());
    if (top) {
      const double edge = l->Y - along / 2;
      if (edge < FPoints[j].y() && edge < extreme) extreme = edge, outermost = l;
    } else {
      const double edge = l->X + along / 2 + (FLabelVertical ? 0 : 0.25 * l->Height());
      if (edge > FSecondCorners[j].x() && edge > extreme) extreme = edge, outermost = l;
    }
  }
  if (!outermost || !(outermost->Height() > 0)) return 0;
  const double c = 0.013 * FLabelSize * a / u;
  const double ratio = outermost->Width() / outermost->Height();
  if (top) return float(FLabelVertical ? ratio * c : c);
  return float(FLabelVertical ? c : (ratio + 0.25) * c);
}
