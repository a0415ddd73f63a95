#pragma once
// Documents of the style objects and fonts: the free functions over their records. In XML each
// object is a child element `name` of `node`; in INI its keys are `prefix` + "." + field.
#include "QyIniFile.h"
#include <QDomElement>
#include <QIODevice>
#include <QString>

class TQyStyleObject;
class TQyFont;

void ToStream(QIODevice* stream, const TQyStyleObject& settings);
void FromStream(QIODevice* stream, TQyStyleObject& settings);
void ToNode(QDomElement& node, const TQyStyleObject& settings, const QString& name = QStringLiteral("Line"));
void FromNode(const QDomElement& node, TQyStyleObject& settings, const QString& name = QStringLiteral("Line"));
void ToIni(TQyIniFile& ini, const QString& section, const QString& prefix, const TQyStyleObject& settings);
void FromIni(const TQyIniFile& ini, const QString& section, const QString& prefix, TQyStyleObject& settings);

void ToStream(QIODevice* stream, const TQyFont& font);
void FromStream(QIODevice* stream, TQyFont& font);
void ToNode(QDomElement& node, const TQyFont& font, const QString& name = QStringLiteral("Font"));
void FromNode(const QDomElement& node, TQyFont& font, const QString& name = QStringLiteral("Font"));
void ToIni(TQyIniFile& ini, const QString& section, const QString& prefix, const TQyFont& font);
void FromIni(const TQyIniFile& ini, const QString& section, const QString& prefix, TQyFont& font);
