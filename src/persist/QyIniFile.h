#pragma once
// An INI document held in memory: sections and keys keep the order in which they were first
// written, names compare case-insensitively and keep their spelling, values are stored as given
// (no escaping: documents escape line breaks with EncodeForIni). UpdateFile writes it as UTF-8.
#include <QString>
#include <QStringList>
#include <vector>

class TQyIniFile {
public:
  explicit TQyIniFile(const QString& fileName = QString()); // loads the file when it exists
  const QString& FileName() const { return FFileName; }

  QString ReadString(const QString& section, const QString& ident, const QString& def) const;
  void WriteString(const QString& section, const QString& ident, const QString& value);
  int ReadInteger(const QString& section, const QString& ident, int def) const;
  void WriteInteger(const QString& section, const QString& ident, int value);
  bool ReadBool(const QString& section, const QString& ident, bool def) const;
  void WriteBool(const QString& section, const QString& ident, bool value);
  // Floats as locale-free text with a point; an unreadable value gives `def`.
  double ReadFloat(const QString& section, const QString& ident, double def) const;
  void WriteFloat(const QString& section, const QString& ident, double value);

  bool SectionExists(const QString& section) const;
  bool ValueExists(const QString& section, const QString& ident) const;
  QStringList ReadSections() const;
  QStringList ReadSection(const QString& section) const;       // the keys
  QStringList ReadSectionValues(const QString& section) const; // "key=value" lines
  void EraseSection(const QString& section);
  void DeleteKey(const QString& section, const QString& ident);
  void Clear() { FSections.clear(); }

  // The document as lines, and back (comment lines starting with ';' and blank lines are dropped).
  QStringList GetStrings() const;
  void SetStrings(const QStringList& lines);
  // Writes the document to FileName; EStreamError when the file cannot be written.
  void UpdateFile() const;

private:
  struct TKey { QString name, value; };
  struct TSection { QString name; std::vector<TKey> keys; };
  const TSection* Find(const QString& section) const;
  TSection& FindOrAdd(const QString& section);
  static const TKey* FindKey(const TSection& s, const QString& ident);

  QString FFileName;
  std::vector<TSection> FSections;
};
