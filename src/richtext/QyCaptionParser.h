#pragma once
// The mark-up reader of a caption: turns the expanded caption string into runs of uniform look
// and measures them. Used by TQyRichCaptionObject::ParseForSize only.
#include "QyRichLabel.h"

class TQyCaptionParser {
public:
  TQyCaptionParser(TQyRichCaptionObject& target, QPainter* graphics);
  // Reads `text` (line breaks already turned into CR) into the target's runs and sizes.
  void Run(const QString& text);

private:
  struct TStyle {
    QString Family;
    bool Bold = false, Italic = false, Underline = false, StrikeOut = false;
    bool Superscript = false, Subscript = false;
    TQyColor Color = 0;
  };

  // Reads the command after a backslash at `i` (the index of the command letter); returns the
  // index to carry on from.
  int Command(const QString& s, int i);
  void Toggle(QChar command);
  void Parameter(QChar command, const QString& value);
  void UpdateStyle();
  QFont CurrentFont() const;
  void Flush();
  void NewLine();
  void Finish();

  TQyRichCaptionObject& FTarget;
  QPainter* FGraphics;
  TStyle FStyle;
  QString FPending;       // text of the run being gathered
  float FSize = 10;       // current point size (smaller in scripts)
  float FBaseSize = 10;   // the font's size
  int FLine = 0;
  float FX = 0, FY = 0;   // pen position of the next run
  float FLineHeight = 0;  // H: line spacing of the base font
  float FPad = 0;         // margin added once to each line's width
  float FScriptShift = 0; // spacing change for the first run after a script toggle
};
