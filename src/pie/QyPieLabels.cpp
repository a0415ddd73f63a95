#include "QyPieLabels.h"
#include "QyDrawing.h"
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {
constexpr double DegToRad = M_PI / 180.0;
constexpr double GoldenSection = 0.6180339;
// A box is pushed at most this many steps (a hundred radii): every setting ends.
constexpr int MaxPushSteps = 100000;
} // namespace

QPointF QyInsideLabelPosition(double mid, bool donut, double holePercent) {
  const double f = donut ? 0.01 * holePercent : 0.0;
  const double r = GoldenSection * (1 - f) + f;
  return QPointF(r * std::cos(mid * DegToRad), r * std::sin(mid * DegToRad));
}

float QyAlignedLabelAngle(double mid) {
  mid = QyFitTo360Degrees(mid);
  return float(mid <= 90 || mid >= 270 ? -mid : -mid + 180);
}

QPointF QyPushOutOfPie(double mid, double hw, double hh, double d) {
  mid = QyFitTo360Degrees(mid);
  const double c = std::cos(mid * DegToRad), s = std::sin(mid * DegToRad), limit = d + 1;
  const int quadrant = QyPieQuadrant(mid);
  // The corner that faces the centre, and whether the box still straddles the vertical axis
  // within the circle's height. Every quadrant tests that corner crossing the vertical axis (the
  // third one too: its corner lies right of the axis then).
  auto goOn = [&](double x, double y) {
    double cx = 0, cy = 0;
    bool straddles = false;
    switch (quadrant) {
    case 1: cx = x - hw, cy = y - hh, straddles = cx < 0 && cy <= limit; break;
    case 2: cx = x + hw, cy = y - hh, straddles = cx > 0 && cy < limit; break;
    case 3: cx = x + hw, cy = y + hh, straddles = cx > 0 && -cy <= limit; break;
    default: cx = x - hw, cy = y + hh, straddles = cx < 0 && -cy <= limit; break;
    }
    return cx * cx + cy * cy < limit * limit || straddles;
  };
  double r = limit;
  for (int n = 0; n < MaxPushSteps; ++n) {
    r = 0.001 * n + limit;
    if (!goOn(r * c, r * s)) break;
  }
  return QPointF(r * c, r * s);
}

TQyPieCallout QyPlaceCallout(double start, double sweep, double hw, double hh, double d, double wall,
                             QPointF shift) {
  const double mid = QyFitTo360Degrees(start + sweep / 2);
  const double c = std::cos(mid * DegToRad), s = std::sin(mid * DegToRad);
  // In the lower half the rim is lowered by the wall of a 3D pie.
  const QPointF lower(0, QyPieQuadrant(mid) <= 2 ? wall : 0.0);
  TQyPieCallout callout;
  callout.Position = QyPushOutOfPie(mid, hw, hh, d) + lower + shift;
  callout.Rim = QPointF(c, s) + lower + shift;
  callout.Bend = callout.Position;
  callout.Rect = QSizeF(2 * (hw + d), 2 * (hh + d));
  callout.Box = QSizeF(2 * hw, 2 * hh);
  return callout;
}

namespace {
// The overlap test takes the centres as top left corners: slightly shifted, but the same for all.
bool Overlap(const TQyPieCallout& a, const TQyPieCallout& b) {
  return RectanglesOverlaping(QRectF(a.Position, a.Rect), QRectF(b.Position, b.Rect));
}

void MoveDown(std::vector<TQyPieCallout>& c) {
  for (size_t i = 0; i < c.size(); ++i)
    for (size_t j = 0; j < c.size(); ++j) {
      if (j == i || !(c[j].Position.y() > 0) || c[j].Position.y() < c[i].Position.y() || !Overlap(c[i], c[j])) continue;
      c[j].Position.setY(c[i].Position.y() + c[i].Rect.height());
      c[j].Overlapped = true;
    }
}

void MoveUp(std::vector<TQyPieCallout>& c) {
  for (size_t i = c.size(); i-- > 0;)
    for (size_t j = c.size(); j-- > 0;) {
      if (j == i || !(c[j].Position.y() < 0) || c[j].Position.y() > c[i].Position.y() || !Overlap(c[i], c[j])) continue;
      c[j].Position.setY(c[i].Position.y() - c[i].Rect.height());
      c[j].Overlapped = true;
    }
}
} // namespace

void QyMoveCalloutsApart(std::vector<TQyPieCallout>& callouts) {
  MoveDown(callouts);
  MoveDown(callouts);
  MoveUp(callouts);
  MoveUp(callouts);
}

TQyPieExtents QyCalloutExtents(const std::vector<TQyPieCallout>& callouts) {
  double minX = 0, maxX = 0, minY = 0, maxY = 0;
  for (const TQyPieCallout& c : callouts) {
    // The circle belongs to the picture anyway: only what lies beyond it counts.
    minX = std::min(minX, c.Position.x() - c.Box.width() / 2 + 1);
    maxX = std::max(maxX, c.Position.x() + c.Box.width() / 2 - 1);
    minY = std::min(minY, c.Position.y() - c.Box.height() / 2 + 1);
    maxY = std::max(maxY, c.Position.y() + c.Box.height() / 2 - 1);
  }
  return {-minY * 0.5, maxY * 0.5, -minX * 0.5, maxX * 0.5};
}

// ---- the chart's labels

namespace {
bool CalloutBoxShown(const TQyPieChart& chart) {
  return chart.GetCalloutFrame()->GetVisible() || chart.GetCalloutRaised() || chart.GetCalloutLowered() ||
         chart.GetCalloutGradient()->GetVisible() || GetAlpha(chart.GetCalloutBackColor()) != 0;
}
} // namespace

TQyRichCaptionObject* TQyPieChart::AddLabel(int s, float fontSize) {
  auto* label = FLabelObjects.Add(std::make_unique<TQyRichCaptionObject>());
  label->Font()->Assign(*GetCaptionFont());
  label->Font()->SetSize(fontSize);
  label->Font()->SetFillColor(FLabelColor);
  label->Alignment = TQyContentAlignment::MiddleCenter;
  label->SetCaption(GetSegmentCaption(FSegmentIndices[size_t(s)], FLabelFrom, FLabelFormat));
  label->ParseForSize(nullptr, nullptr);
  return label;
}

// Labels are placed in the unit space; callouts take part in the fit with their boxes.
TQyPieExtents TQyPieChart::CalculateLabels(double e) {
  if (FLabelPosition == TQyPieLabelPosition::Invisible) return {};
  const float F = std::max(1.0f, float(0.01 * FLabelSize * LayoutSize().width()));
  const bool callouts = FLabelPosition == TQyPieLabelPosition::Callouts;
  const double pad = CalloutBoxShown(*this) ? 0.0002 * FCalloutSpaceToBorder * FLabelSize : 0.0;
  const double d = 0.0002 * FCalloutDistanceToPie * FLabelSize;
  const double wall = IsThreeD() ? 2 * 0.01 * FThreeDPieHeight / e : 0.0;
  for (size_t s = 0; s < FSweeps.size(); ++s) {
    TQyRichCaptionObject* label = AddLabel(int(s), F);
    const double mid = FStarts[s] + FSweeps[s] / 2.0;
    if (!callouts) {
      const QPointF p = QyInsideLabelPosition(mid, IsDonut(), FDonutHoleSize) + FExplodeOffsets[s];
      label->X = float(p.x()), label->Y = float(p.y());
      label->Angle = FLabelPosition == TQyPieLabelPosition::InsideAligned ? QyAlignedLabelAngle(mid) : 0.0f;
      continue;
    }
    const double hw = 0.01 * (label->Width() / F) * FLabelSize + pad;
    const double hh = pad / e + 0.01 * (label->Height() / F) * FLabelSize / e;
    FCallouts.push_back(QyPlaceCallout(FStarts[s], FSweeps[s], hw, hh, d, wall, FExplodeOffsets[s]));
  }
  if (!callouts) return {};
  QyMoveCalloutsApart(FCallouts);
  for (size_t s = 0; s < FCallouts.size(); ++s)
    FLabelObjects[int(s)]->X = float(FCallouts[s].Position.x()), FLabelObjects[int(s)]->Y = float(FCallouts[s].Position.y());
  return QyCalloutExtents(FCallouts);
}

// From the unit space to pixels, and the labels measured again in their final size.
void TQyPieChart::MapLabels(double pw, double ph) {
  auto map = [&](QPointF u) {
    return QPointF(pw * 0.5 + u.x() * pw * 0.5 + FPieRect.x(), ph * 0.5 + u.y() * ph * 0.5 + FPieRect.y());
  };
  FLabelFontSize = float(0.01 * pw * FLabelSize);
  for (int s = 0; s < FLabelObjects.Count(); ++s) {
    TQyRichCaptionObject* label = FLabelObjects[s];
    const QPointF p = map(QPointF(label->X, label->Y));
    label->X = float(p.x()), label->Y = float(p.y());
    label->Font()->SetSize(std::max(FLabelFontSize, 0.1f));
    label->ParseForSize(nullptr, nullptr);
  }
  const double p = FLabelFontSize * FCalloutSpaceToBorder * 0.02;
  for (size_t s = 0; s < FCallouts.size(); ++s) {
    TQyPieCallout& c = FCallouts[s];
    c.Rim = map(c.Rim), c.Bend = map(c.Bend), c.Position = map(c.Position);
    c.Rect = QSizeF(c.Rect.width() * pw * 0.5, c.Rect.height() * ph * 0.5);
    c.Box = QSizeF(FLabelObjects[int(s)]->Width() + p, FLabelObjects[int(s)]->Height() + p);
  }
}

// Arrows lie below all boxes, and all boxes below all texts.
void TQyPieChart::PaintLabels(QPainter* g) {
  if (FLabelPosition == TQyPieLabelPosition::Invisible) return;
  if (!FCalloutArrow->GetVisible()) FCalloutArrowVisibleMode = TQyCalloutArrowVisibleMode::None; // lastingly
  if (!FCallouts.empty()) PaintCallouts(g);
  for (int s = 0; s < FLabelObjects.Count(); ++s) FLabelObjects[s]->PaintGr(g);
}

void TQyPieChart::PaintCallouts(QPainter* g) {
  const QRectF client(QPointF(0, 0), QSizeF(LayoutSize()));
  auto box = [](const TQyPieCallout& c) {
    return QRectF(c.Position.x() - c.Box.width() / 2, c.Position.y() - c.Box.height() / 2, c.Box.width(), c.Box.height());
  };
  if (FCalloutArrowVisibleMode != TQyCalloutArrowVisibleMode::None) {
    const QPen pen = FCalloutArrow->GetPen(client);
    for (const TQyPieCallout& c : FCallouts) {
      if (FCalloutArrowVisibleMode == TQyCalloutArrowVisibleMode::VisibleIfOverlapped && !c.Overlapped) continue;
      g->save();
      if (GetAlpha(FCalloutBackColor) != 255) { // the arrow must not shine through the box
        QPainterPath outside;
        outside.addRect(client.adjusted(-client.width(), -client.height(), client.width(), client.height()));
        QPainterPath inside;
        inside.addRect(box(c));
        g->setClipPath(outside.subtracted(inside), Qt::IntersectClip);
      }
      g->setPen(pen);
      g->drawLine(c.Bend, c.Position);
      DrawArrowLine(g, pen, c.Bend, c.Rim, ArrowPointCap(*FCalloutArrow), FCalloutArrow->GetInnerLength());
      g->restore();
    }
  }
  const bool shadow = FCalloutShadow && !(GetAlpha(FCalloutBackColor) < 200 && !FCalloutGradient->GetVisible());
  const float radius = FLabelFontSize * FCalloutRounding * 0.02f;
  for (const TQyPieCallout& c : FCallouts) {
    const QRectF r = box(c);
    const QBrush brush = FCalloutGradient->GetVisible() ? FCalloutGradient->GetBrush(r) : QBrush(TQyColorToQColor(FCalloutBackColor));
    DrawRoundRect(g, brush, FCalloutFrame->GetPen(r), r, radius, shadow, FCalloutFrame->GetVisible(), FCalloutRaised,
                  FCalloutLowered);
  }
}
