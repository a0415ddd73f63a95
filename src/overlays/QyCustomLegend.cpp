// The legend box: its settings, its reactions and its picture.
#include "QyCustomLegend.h"
#include "QyDrawing.h"
#include "QyGDI.h"
#include "QyGraph2D.h"
#include "QyMeasure.h"
#include <QPaintEvent>
#include <QPainter>

TQyCustomLegend::TQyCustomLegend(QWidget* parent) : QWidget(parent) {
  FCaptionColor = ColorToARGB(QStringLiteral("ControlText"));
  FCaptionObject = std::make_unique<TQyRichCaptionObject>([this] { ParseCaption(); }, this);
  FCaptionObject->Alignment = TQyContentAlignment::TopCenter;
  TQyFont* captionFont = FCaptionObject->Font();
  captionFont->SetSize(11);
  captionFont->SetStyle(TQyFontStyle::Bold);
  captionFont->SetUndoCaption(QyRes::LegendCaptionFont);
  FFont = new TQyFont([this] { Modified(); }, this);
  FFont->SetSize(9);
  FFont->SetUndoCaption(QyRes::LegendFont);
  FForeColor = FFont->GetFillColor();
  FBackgroundGradient = new TQyGradientSettings([this] { Modified(); }, this);
  FFrame = new TQyLineSettings([this] { Modified(); }, this);
  FFrame->SetColor(ColorToARGB(QStringLiteral("WindowFrame")));
  setAttribute(Qt::WA_OpaquePaintEvent, false);
}

TQyCustomLegend::~TQyCustomLegend() { FDestroying = true; }

TQyFont* TQyCustomLegend::GetCaptionFont() const { return FCaptionObject->Font(); }

void TQyCustomLegend::SetCaption(TQyRichCaption value) {
  QyAssign(this, FCaption, value, QyRes::LegendCaption, "Caption", [this] {
    FCaptionObject->SetCaption(FCaption);
    ParseCaption();
  });
}

// The items' text colour is the font's: one entry holds both.
void TQyCustomLegend::SetForeColor(TQyColor value) {
  QyAssignGrouped(this, FForeColor, value, QyRes::LegendForeColor, "ForeColor", [this] {
    FFont->SetFillColor(FForeColor);
    Modified();
  });
}

// Records the drop shadow, not itself: undoing a change of the raised border restores the drop
// shadow. This is how the legend has always recorded it, and documents of its history rely on it.
void TQyCustomLegend::SetBorderRaised(bool value) {
  if (value == FBorderRaised) return;
  RecordChange(this, QyRes::LegendBorderRaised, "DropShadow");
  FBorderRaised = value;
  Modified();
  EmitPropertyChanged("BorderRaised");
}

void TQyCustomLegend::SetAutoSize(bool value) {
  QyAssign(this, FAutoSize, value, nullptr, "AutoSize", [this] {
    if (FAutoSize && !FListChanged) Modified();
  });
}

void TQyCustomLegend::SetVisible(bool value) {
  QyAssign(this, FVisible, value, QyRes::LegendVisible, "Visible", [this] {
    QWidget::setVisible(FVisible);
    DoInvalidate();
  });
}

void TQyCustomLegend::ParseCaption() {
  if (!parent()) return;
  FCaptionObject->ParseForSize(nullptr, this);
  Modified();
}

void TQyCustomLegend::Modified() {
  FListChanged = true;
  DoInvalidate();
}

QWidget* TQyCustomLegend::PaintingParent() const {
  return qobject_cast<TQyCustomGraph*>(parentWidget());
}

void TQyCustomLegend::DoInvalidate() {
  if (QWidget* graph = PaintingParent()) graph->update();
  else update();
}

void TQyCustomLegend::PreparePaint() {
  // Text measured for another resolution (a picture for a printer) is measured again.
  if (QyMeasureDpiY(nullptr) != FMeasuredDpi) FListChanged = true;
  if (!FListChanged || FDestroying || !CanRebuild()) return;
  NewList();
  CheckItemHeight();
  SetItemPositions();
  FMeasuredDpi = QyMeasureDpiY(nullptr);
  FListChanged = false;
}

bool TQyCustomLegend::ShadowEffective() const {
  return FDropShadow && (GetAlpha(FBackColor) >= 200 || FBackgroundGradient->GetVisible());
}

// ---- reactions ---------------------------------------------------------------------------------

void TQyCustomLegend::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  if (!FSettingBounds && !FDragging && !FDestroying && parentWidget()) Modified();
}

void TQyCustomLegend::moveEvent(QMoveEvent* e) {
  QWidget::moveEvent(e);
  if (QWidget* graph = PaintingParent()) graph->update();
}

// ---- the picture -------------------------------------------------------------------------------

// A legend on a graph is painted by the graph; on any other parent it paints itself.
void TQyCustomLegend::paintEvent(QPaintEvent*) {
  if (PaintingParent()) return;
  QPainter painter(this);
  PaintGr(&painter);
}

void TQyCustomLegend::PaintPass(TQyPaintPass pass, QPainter* g) {
  if (pass == TQyPaintPass::Legends) PaintGr(g);
}

void TQyCustomLegend::PaintGr(QPainter* g) {
  try {
    PreparePaint();
    SetColors();
    g->save();
    if (auto* graph = qobject_cast<TQyCustomGraph*>(parentWidget())) graph->SetHighQuality(g, true);
    else g->setRenderHint(QPainter::Antialiasing, true);
    PaintBox(g);
    if (FCaptionVisible && !FCaption.isEmpty()) {
      FCaptionObject->FillColorOverride = FCaptionColor;
      FCaptionObject->PaintGr(g);
    }
    PaintItems(g);
    g->restore();
  } catch (const std::exception&) {
    // A picture never raises: what was drawn stays.
  }
}

// Frame, background (gradient or colour), shadow and borders; the frame's middle runs half its
// width inside the client rectangle.
void TQyCustomLegend::PaintBox(QPainter* g) {
  const float w = std::max(1.0f, FFrame->GetWidth());
  const QRectF client(0, 0, width(), height());
  QRectF box(w / 2, w / 2, width() - 1 - w, height() - 1 - w);
  const bool shadow = ShadowEffective();
  if (shadow) box.adjust(0, 0, -5, -4);
  const QBrush brush = FBackgroundGradient->GetVisible() ? FBackgroundGradient->GetBrush(client)
                                                         : QBrush(TQyColorToQColor(FBackColor));
  QPen pen = FFrame->GetPen(client);
  pen.setWidthF(w);
  DrawRoundRect(g, brush, pen, box, FCornerRounding, shadow, FFrame->GetVisible(), FBorderRaised, FBorderLowered);
}

// Each sample clipped to its rectangle, then its text unclipped.
void TQyCustomLegend::PaintItems(QPainter* g) {
  const int n = std::min<int>({ItemCount(), int(FItemRects.size()), FItemCaptions.Count()});
  for (int i = 0; i < n; ++i) {
    if (!ItemShown(i)) continue;
    const TQyLegendItemDrawArgs args{g, QRectF(FItemRects[size_t(i)]), ItemEventIndex(i)};
    g->save();
    g->setClipRect(args.Rect, Qt::IntersectClip);
    if (OnDrawLegendItem) OnDrawLegendItem(ItemObject(i), args);
    else DrawItem(i, args);
    g->restore();
    FItemCaptions[i]->PaintGr(g);
  }
}

void TQyCustomLegend::SetColors() {
  for (int i = 0; i < FItemCaptions.Count() && i < ItemCount(); ++i)
    FItemCaptions[i]->FillColorOverride = ItemTextColor(i);
}
