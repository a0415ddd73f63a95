#include "QyPlaceholders.h"
#include "QyComponent.h"
#include "QyExceptions.h"
#include "QyLocalize.h"
#include "QyParseFkt.h"
#include "QyTextFormat.h"

namespace {
// String values may hold placeholders themselves; the names being resolved are kept so that a
// string that refers to itself, directly or around a circle, is refused instead of recursing
// without end.
QStringList& NamesInResolution() {
  static QStringList names;
  return names;
}
constexpr int MaxStringNesting = 64;

class ResolutionGuard {
public:
  explicit ResolutionGuard(const QString& upper, const QString& name) {
    QStringList& names = NamesInResolution();
    if (names.contains(upper) || names.size() >= MaxStringNesting)
      throw EMathError(QyFormatMessage(QyRes::ExprParsingError, {name}));
    names.append(upper);
  }
  ~ResolutionGuard() { NamesInResolution().removeLast(); }
  ResolutionGuard(const ResolutionGuard&) = delete;
  ResolutionGuard& operator=(const ResolutionGuard&) = delete;
};

bool ResolveString(const QString& name, const QString& upper, QObject* owner, QString& result) {
  for (const TQyStringGetterRec& r : GlobalStringList) {
    if (r.IsOrphan() || r.QualifiedName().toUpper() != upper) continue;
    RegisterDependant(r.Owner.data(), owner);
    const TQyStringGetter getter = r.Getter; // the getter may change the register
    ResolutionGuard guard(upper, name);
    result = ParseVariables(getter(), owner);
    return true;
  }
  return false;
}

QString ResolveNumber(QString upper, QObject* owner) {
  QString format;
  if (const qsizetype semicolon = upper.indexOf(';'); semicolon >= 0) {
    format = upper.mid(semicolon + 1);
    upper.truncate(semicolon);
  }
  TQyFunctionParser parser(owner);
  parser.SetExpression(upper);
  return FormatFloat(format, parser.GetResult());
}
} // namespace

QString FindTheVar(const QString& name, QObject* owner) {
  const QString upper = name.toUpper();
  QString result;
  if (ResolveString(name, upper, owner, result)) return result;
  return ResolveNumber(upper, owner);
}

void FindTheVar(const QString& name, QObject* owner, QString& result) {
  result = "...";
  result = FindTheVar(name, owner);
}

// One pass from left to right: doubled marks become single literal marks, and each placeholder
// is replaced by its value. Values are not scanned again (they are resolved already, and an
// escaped mark inside one must stay literal), and a value that resolved to nothing does not hide
// a placeholder right behind it. The closing mark is the first "%>" behind the opening one; an
// opening without a closing mark gives an empty name, which the parser refuses.
QString ParseVariables(const QString& s, QObject* owner) {
  if (!s.contains("<%") && !s.contains("%>%>")) return s;
  QyCompleteConstruction(); // every object has published its values before names are looked up
  QString result;
  result.reserve(s.size());
  for (qsizetype i = 0; i < s.size();) {
    const QStringView rest = QStringView(s).mid(i);
    if (rest.startsWith(u"<%<%") || rest.startsWith(u"%>%>")) {
      result += rest.first(2);
      i += 4;
    } else if (rest.startsWith(u"<%")) {
      const qsizetype q = s.indexOf("%>", i + 2);
      result += FindTheVar(q < 0 ? QString() : s.mid(i + 2, q - i - 2), owner);
      i = q < 0 ? s.size() : q + 2;
    } else {
      result += s[i++];
    }
  }
  return result;
}

void ParseVariables(const QString& s, QObject* owner, QString& result) { result = ParseVariables(s, owner); }
