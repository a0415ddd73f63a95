#pragma once
// Fill palettes: reusable lists of fills (colour, second colour, pattern) that the segments of a
// pie take in turn. A palette may serve several charts; each change makes them repaint.
#include "QyGDI.h"
#include "QyLocalize.h"
#include "QyProperty.h"
#include "QyStyles.h"
#include <QList>
#include <QRectF>

class QPainter;

// One fill: a solid colour, or a hatch pattern in ForeColor on BackColor.
class TQyFillSettings : public TQyStyleObject {
  Q_OBJECT
  QY_PROPERTY(TQyColor, ForeColor, QyRes::StyleAreaForeColor, Modified()) = 0xFFD3D3D3; // LightGray
  QY_PROPERTY(TQyColor, BackColor, QyRes::StyleAreaBackColor, Modified()) = 0xFFFFFFFF;
  QY_PROPERTY(QyStyles::TQyAreaStyle, AreaStyle, QyRes::StyleAreaStyle, Modified()) =
      QyStyles::TQyAreaStyle::Total;

public:
  explicit TQyFillSettings(ModifiedCallback modifiedCallback = {}, QObject* parent = nullptr);
  void Assign(const TQyFillSettings& source) { AssignPublished(source); }
  bool Solid() const { return FAreaStyle == QyStyles::TQyAreaStyle::Total; }
  QBrush GetBrush() const;
  // A legend sample: the rectangle filled, with a thin outline.
  void DrawListItem(QPainter* painter, const QRectF& rect) const;
};

class TQyFillPalette : public QObject, public TQyRecording {
  Q_OBJECT
  QY_RECORDING_SIGNAL(TQyFillPalette)

public:
  explicit TQyFillPalette(QObject* owner = nullptr);
  ~TQyFillPalette() override;

  int GetCount() const { return int(FItems.size()); }
  // Raise ERangeError "i=%d index out of range" for an index outside the list.
  TQyFillSettings* GetItem(int i) const;
  void SetItem(int i, const TQyFillSettings& fill); // copies the settings into item i
  TQyFillSettings* Add();
  TQyFillSettings* Insert(int i);
  void Delete(int i);
  void Move(int from, int to);
  void Clear();
  void Assign(const TQyFillPalette& source);
  // Eight fills: CornflowerBlue, Maroon, LemonChiffon, PaleTurquoise, Sienna, Coral, SteelBlue,
  // Lavender (any fills before are dropped).
  void FillDefaults();
  // The charts that use this palette repaint.
  void InvalidateControls() { Q_EMIT Changed(); }
  void SetUndoStack(TQyUndoRecorder* stack) { SetUndoRecorder(stack); }

Q_SIGNALS:
  void Changed();

private:
  void CheckIndex(int i, int count) const;
  QList<TQyFillSettings*> FItems;
};
