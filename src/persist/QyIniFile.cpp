#include "QyIniFile.h"
#include "QyExceptions.h"
#include "QyLocalize.h"
#include "QyStringFunctions.h"
#include <QFile>
#include <QSaveFile>
#include <algorithm>

static bool SameName(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

TQyIniFile::TQyIniFile(const QString& fileName) : FFileName(fileName) {
  QFile f(fileName);
  if (!fileName.isEmpty() && f.open(QIODevice::ReadOnly))
    SetStrings(QString::fromUtf8(f.readAll()).split('\n'));
}

const TQyIniFile::TSection* TQyIniFile::Find(const QString& section) const {
  auto it = std::find_if(FSections.begin(), FSections.end(),
                         [&](const TSection& s) { return SameName(s.name, section); });
  return it == FSections.end() ? nullptr : &*it;
}

TQyIniFile::TSection& TQyIniFile::FindOrAdd(const QString& section) {
  if (const TSection* s = Find(section)) return const_cast<TSection&>(*s);
  return FSections.emplace_back(TSection{section, {}});
}

const TQyIniFile::TKey* TQyIniFile::FindKey(const TSection& s, const QString& ident) {
  auto it = std::find_if(s.keys.begin(), s.keys.end(), [&](const TKey& k) { return SameName(k.name, ident); });
  return it == s.keys.end() ? nullptr : &*it;
}

QString TQyIniFile::ReadString(const QString& section, const QString& ident, const QString& def) const {
  const TSection* s = Find(section);
  const TKey* k = s ? FindKey(*s, ident) : nullptr;
  return k ? k->value : def;
}

void TQyIniFile::WriteString(const QString& section, const QString& ident, const QString& value) {
  TSection& s = FindOrAdd(section);
  if (const TKey* k = FindKey(s, ident))
    const_cast<TKey*>(k)->value = value;
  else
    s.keys.push_back({ident, value});
}

int TQyIniFile::ReadInteger(const QString& section, const QString& ident, int def) const {
  int v = def;
  return TryStrToInt(ReadString(section, ident, QString()), v) ? v : def;
}

void TQyIniFile::WriteInteger(const QString& section, const QString& ident, int value) {
  WriteString(section, ident, IntToStr(value));
}

bool TQyIniFile::ReadBool(const QString& section, const QString& ident, bool def) const {
  return ReadInteger(section, ident, def ? 1 : 0) != 0;
}

void TQyIniFile::WriteBool(const QString& section, const QString& ident, bool value) {
  WriteString(section, ident, value ? QStringLiteral("1") : QStringLiteral("0"));
}

double TQyIniFile::ReadFloat(const QString& section, const QString& ident, double def) const {
  const QString text = ReadString(section, ident, QString());
  if (text.isEmpty()) return def;
  try {
    return DoubleFromStr(text);
  } catch (const EConvertError&) {
    return def;
  }
}

void TQyIniFile::WriteFloat(const QString& section, const QString& ident, double value) {
  WriteString(section, ident, DoubleToStr(value));
}

bool TQyIniFile::SectionExists(const QString& section) const { return Find(section) != nullptr; }

bool TQyIniFile::ValueExists(const QString& section, const QString& ident) const {
  const TSection* s = Find(section);
  return s && FindKey(*s, ident);
}

QStringList TQyIniFile::ReadSections() const {
  QStringList result;
  for (const TSection& s : FSections) result << s.name;
  return result;
}

QStringList TQyIniFile::ReadSection(const QString& section) const {
  QStringList result;
  if (const TSection* s = Find(section))
    for (const TKey& k : s->keys) result << k.name;
  return result;
}

QStringList TQyIniFile::ReadSectionValues(const QString& section) const {
  QStringList result;
  if (const TSection* s = Find(section))
    for (const TKey& k : s->keys) result << k.name + '=' + k.value;
  return result;
}

void TQyIniFile::EraseSection(const QString& section) {
  std::erase_if(FSections, [&](const TSection& s) { return SameName(s.name, section); });
}

void TQyIniFile::DeleteKey(const QString& section, const QString& ident) {
  if (const TSection* s = Find(section))
    std::erase_if(const_cast<TSection*>(s)->keys, [&](const TKey& k) { return SameName(k.name, ident); });
}

QStringList TQyIniFile::GetStrings() const {
  QStringList lines;
  for (const TSection& s : FSections) {
    lines << '[' + s.name + ']';
    for (const TKey& k : s.keys) lines << k.name + '=' + k.value;
    lines << QString();
  }
  return lines;
}

void TQyIniFile::SetStrings(const QStringList& lines) {
  FSections.clear();
  TSection* current = nullptr;
  for (const QString& raw : lines) {
    const QString line = raw.trimmed();
    if (line.isEmpty() || line.startsWith(';')) continue;
    if (line.startsWith('[') && line.endsWith(']')) {
      current = &FindOrAdd(line.mid(1, line.size() - 2).trimmed());
      continue;
    }
    if (!current) continue; // keys before the first section belong nowhere
    const qsizetype eq = line.indexOf('=');
    const QString name = (eq < 0 ? line : line.left(eq)).trimmed();
    const QString value = eq < 0 ? QString() : line.mid(eq + 1);
    if (!FindKey(*current, name)) current->keys.push_back({name, value});
  }
}

void TQyIniFile::UpdateFile() const {
  QSaveFile f(FFileName);
  const QByteArray text = GetStrings().join('\n').toUtf8();
  if (!f.open(QIODevice::WriteOnly) || f.write(text) != text.size() || !f.commit())
    throw EStreamError(QyFormatMessage(QyRes::FileCreateError, {FFileName, f.errorString()}));
}
