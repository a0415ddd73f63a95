#pragma once
// Documents of the style objects and fonts: the free functions over their records (they take any
// object with a record; style objects and fonts are what they are for). In XML each object is a
// child element `name` of `node` ("Line" unless given; fonts use "Font"); in INI its keys are
// `prefix` + "." + field.
#include "QyIniFile.h"
#include <QDomElement>
#include <QIODevice>
#include <QObject>
#include <QString>

void ToStream(QIODevice* stream, const QObject& settings);
void FromStream(QIODevice* stream, QObject& settings);
void ToNode(QDomElement& node, const QObject& settings, const QString& name = QStringLiteral("Line"));
void FromNode(const QDomElement& node, QObject& settings, const QString& name = QStringLiteral("Line"));
void ToIni(TQyIniFile& ini, const QString& section, const QString& prefix, const QObject& settings);
void FromIni(const TQyIniFile& ini, const QString& section, const QString& prefix, QObject& settings);
