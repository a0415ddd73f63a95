#pragma once
// The ground of every document and of the undo log: component references as dotted names from
// the form down, strings in binary streams, text in INI values, floats in value streams.
#include "QyByteStream.h"
#include <QDomElement>
#include <QIODevice>
#include <QObject>
#include <QString>

// The system's folder for temporary files, ending in a separator.
QString GetTemporaryPath();

// ---- component references ("Form1.Graph1.Axis2")
// Everything before the last ".", or empty without one.
QString OwnerName(const QString& ref);
// Everything after the last ".", or the whole reference without one.
QString ComponentName(const QString& ref);
// The owner named by the reference; the application object when the reference has no owner part.
QObject* RefOwner(const QString& ref);
// The dotted path of component names from the form down; empty for nullptr, for an unnamed
// component, and when the chain up to the form is not all named (it could not be resolved).
QString GetComponentRef(const QObject* component);
// Resolves a reference: the first name among the registered data modules, then among the
// top-level windows (exact, case-sensitive), then down by FindComponent. nullptr if a step fails.
QObject* GetComponentFromRef(const QString& ref);
// Top-level non-visual containers that references may start from (removed when destroyed).
void RegisterDataModule(QObject* module);
void UnregisterDataModule(QObject* module);

// ---- strings in binary streams: signed 32-bit little-endian length, then UTF-8 bytes
void StringToStream(QIODevice* stream, const QByteArray& utf8);
void StringToStream(QIODevice* stream, const QString& text);
QString StringFromStream(QIODevice* stream);
// The same format under the name the captions use.
void EncodeToStream(QIODevice* stream, const QString& text);
QString DecodeFromStream(QIODevice* stream);

// ---- INI values: a carriage return becomes "@\r" (at-sign, backslash, r); line feeds stay
QString EncodeForIni(const QString& text);
QString DecodeFomIni(const QString& text);

// ---- XML: true if a direct child element of `node` has exactly that name.
bool ContainsNode(const QDomElement& node, const QString& name);

// ---- floats in value streams: written as locale-free text, read from text or binary.
void StoreFloatToString(TQyValueWriter& writer, double value);
double GetFloatFromStringOrFloat(TQyValueReader& reader);
