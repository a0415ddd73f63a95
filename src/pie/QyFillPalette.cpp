#include "QyFillPalette.h"
#include "QyClassRegistry.h"
#include "QyExceptions.h"
#include <QPainter>

TQyFillSettings::TQyFillSettings(ModifiedCallback modifiedCallback, QObject* parent)
    : TQyStyleObject(std::move(modifiedCallback), parent) {}

QBrush TQyFillSettings::GetBrush() const { return GetAreaBrush(FAreaStyle, FForeColor, FBackColor); }

void TQyFillSettings::DrawListItem(QPainter* painter, const QRectF& rect) const {
  painter->save();
  painter->fillRect(rect, GetBrush());
  painter->setPen(QPen(Qt::black, 0));
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(rect);
  painter->restore();
}

TQyFillPalette::TQyFillPalette(QObject* owner) : QObject(owner) {}

TQyFillPalette::~TQyFillPalette() { FDestroying = true; }

void TQyFillPalette::CheckIndex(int i, int count) const {
  if (i < 0 || i >= count) QyRaiseIndexError(i);
}

TQyFillSettings* TQyFillPalette::GetItem(int i) const {
  CheckIndex(i, GetCount());
  return FItems[i];
}

void TQyFillPalette::SetItem(int i, const TQyFillSettings& fill) { GetItem(i)->Assign(fill); }

TQyFillSettings* TQyFillPalette::Add() { return Insert(GetCount()); }

TQyFillSettings* TQyFillPalette::Insert(int i) {
  CheckIndex(i, GetCount() + 1);
  auto* item = new TQyFillSettings([this] { InvalidateControls(); }, this);
  FItems.insert(i, item);
  InvalidateControls();
  return item;
}

void TQyFillPalette::Delete(int i) {
  delete GetItem(i);
  FItems.removeAt(i);
  InvalidateControls();
}

void TQyFillPalette::Move(int from, int to) {
  CheckIndex(from, GetCount());
  CheckIndex(to, GetCount());
  FItems.move(from, to);
  InvalidateControls();
}

void TQyFillPalette::Clear() {
  qDeleteAll(FItems);
  FItems.clear();
  InvalidateControls();
}

void TQyFillPalette::Assign(const TQyFillPalette& source) {
  if (&source == this) return;
  const QSignalBlocker quiet(this); // one repaint for the whole copy
  Clear();
  for (const TQyFillSettings* fill : source.FItems) Add()->Assign(*fill);
  blockSignals(false);
  InvalidateControls();
}

void TQyFillPalette::FillDefaults() {
  const QSignalBlocker quiet(this);
  Clear();
  for (const char* name : {"CornflowerBlue", "Maroon", "LemonChiffon", "PaleTurquoise", "Sienna", "Coral",
                           "SteelBlue", "Lavender"})
    Add()->SetForeColor(ColorToARGB(QString::fromLatin1(name)));
  blockSignals(false);
  InvalidateControls();
}

QY_REGISTER_CLASS(TQyFillPalette);
