#include "QyParseFkt.h"
#include "QyComponent.h"
#include "QyExceptions.h"
#include "QyExprFunctions.h"
#include "QyLocalize.h"
#include "QyRounding.h"
#include "QyTextFormat.h"
#include <QRandomGenerator>
#include <bit>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

using namespace QyExprFunctions;

// ---- Nodes

TQyNode::~TQyNode() {
  delete NodeTwo;
  // The left spine of an operator chain may be very long: free it in a loop, not recursively.
  TQyNode* n = NodeOne;
  while (n) {
    TQyNode* next = n->NodeOne;
    n->NodeOne = nullptr;
    delete n;
    n = next;
  }
}

void TQyNode::SetNodeOne(TQyNode* node) {
  NodeOne = node;
  if (node) node->Parent = this;
}

void TQyNode::SetNodeTwo(TQyNode* node) {
  NodeTwo = node;
  if (node) node->Parent = this;
}

double TQyNode::GetResult() const {
  // Down the left spine of operators, then back up through Parent applying each operator:
  // left operand first, then the right one, as the operators demand.
  const TQyNode* n = this;
  while (n->Token == TQyArg::TwoPrm) n = n->NodeOne;
  double acc = n->LeafResult();
  while (n != this) {
    n = n->Parent;
    const double right = n->NodeTwo->GetResult();
    const double r = n->ATwoPrmFunction(acc, right);
    if (!std::isfinite(r)) [[unlikely]]
      RaiseFault2(n->ATwoPrmFunction, acc, right);
    acc = r;
  }
  return acc;
}

namespace {
// An array index: rounded half to even, then passed on as a 32-bit integer.
int ArrayIndex(double x) {
  if (!(std::fabs(x) < 9223372036854775808.0)) RaiseBadValue(NAN);
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(Round(x))));
}
double Checked(double v) {
  if (!std::isfinite(v)) [[unlikely]]
    RaiseBadValue(v);
  return v;
}
} // namespace

double TQyNode::LeafResult() const {
  switch (Token) {
  case TQyArg::Constant: return AConstant;
  case TQyArg::Getter: return Checked(AGetter());
  case TQyArg::DoubleArray: return Checked(AArray(ArrayIndex(NodeOne->GetResult())));
  case TQyArg::OnePrm: {
    const double x = NodeOne->GetResult();
    const double r = AOnePrmFunction(x);
    if (!std::isfinite(r)) [[unlikely]]
      RaiseFault1(AOnePrmFunction, x);
    return r;
  }
  case TQyArg::TwoPrm: break;
  }
  return GetResult();
}

// ---- Tree building

namespace {
[[noreturn]] void RaiseParseError(QStringView piece) {
  throw EMathError(QyFormatMessage(QyRes::ExprParsingError, {piece.toString()}));
}

// Positions of one operator class found by the scan, highest first; queried with falling ends.
struct OperatorPositions {
  QList<qsizetype> Positions;
  qsizetype Next = 0;
  qsizetype LastBefore(qsizetype end) {
    while (Next < Positions.size() && Positions[Next] >= end) ++Next;
    return Next < Positions.size() ? Positions[Next] : -1;
  }
};

// The operator scan of one piece, done once: from the end backwards with a bracket depth, an
// operator counts at depth 0, not in first position and not right after "^". Every prefix that
// ends at such an operator has the same operators below that position, so the left operands
// of a chain reuse this scan.
struct OperatorScan {
  OperatorPositions Additive, Multiplicative, Power;
  explicit OperatorScan(QStringView s) {
    int depth = 0;
    for (qsizetype i = s.size() - 1; i >= 0; --i) {
      const QChar c = s[i];
      if (c == ')') ++depth;
      else if (c == '(') --depth;
      else if (depth == 0 && i > 0 && s[i - 1] != '^') {
        if (c == '+' || c == '-') Additive.Positions.append(i);
        else if (c == '*' || c == '/') Multiplicative.Positions.append(i);
        else if (c == '^') Power.Positions.append(i);
      }
    }
  }
};

// "1E-3": a sign after a digit and "E" is taken for the sign of an exponent.
bool IsExponentSign(QStringView s, qsizetype p) {
  return p >= 2 && s[p - 2] >= '0' && s[p - 2] <= '9' && s[p - 1] == 'E';
}

TQyNode* NewOperator(TQyTwoPrmFunction f) {
  auto* n = new TQyNode;
  n->Token = TQyArg::TwoPrm;
  n->ATwoPrmFunction = f;
  return n;
}

TQyNode* NewFunction(TQyOnePrmFunction f) {
  auto* n = new TQyNode;
  n->Token = TQyArg::OnePrm;
  n->AOnePrmFunction = f;
  return n;
}

// Builds trees from upper-case text against the names known when parsing starts.
class TreeBuilder {
public:
  TreeBuilder(const TQyFunctionsList& functions, const TQyDoubleGetterList& variables, QObject* owner)
      : FFunctions(functions), FOwner(owner) {
    QyCompleteConstruction(); // every object has published its values before names are looked up
    Collect(variables, FVariables);
    Collect(GlobalVariableList, FVariables);
    Collect(GlobalArrayList, FArrays);
  }

  TQyNode* Build(QStringView s, int depth);

private:
  template <class Rec> struct Named {
    QString Upper;
    const Rec* Record;
  };
  template <class Rec> static void Collect(const QList<Rec>& list, QList<Named<Rec>>& into) {
    for (const Rec& r : list)
      if (!r.IsOrphan()) into.append({r.QualifiedName().toUpper(), &r});
  }
  template <class Rec> static const Rec* Find(const QList<Named<Rec>>& names, QStringView upper) {
    for (const auto& n : names)
      if (n.Upper == upper) return n.Record;
    return nullptr;
  }

  TQyNode* Operand(QStringView part, QStringView whole, int depth);
  TQyNode* Terminal(QStringView piece, int depth);
  TQyNode* Leaf(QStringView s, int depth);
  TQyNode* Call(QStringView s, qsizetype bracket, int depth);
  const TQyFunctionRec* FindFunction(QStringView upper) const;
  void EnterDependency(const TQyOwnedRec& rec) const { RegisterDependant(rec.Owner.data(), FOwner); }

  const TQyFunctionsList& FFunctions;
  QObject* FOwner;
  QList<Named<TQyDoubleGetterRec>> FVariables;
  QList<Named<TQyDoubleArrayRec>> FArrays;
};

// An operand of `whole`; an empty one is reported with the piece that holds it.
TQyNode* TreeBuilder::Operand(QStringView part, QStringView whole, int depth) {
  if (part.isEmpty()) RaiseParseError(whole);
  return Build(part, depth + 1);
}

// The rules in their order: additive, multiplicative, sign, power, then the leaves. A chain of
// operators is found in a loop (each split leaves its left operand to the next round) and then
// built from the left, so that a failure names the leftmost piece that cannot be read.
TQyNode* TreeBuilder::Build(QStringView s, int depth) {
  if (depth > TQyFunctionParser::MaxNesting) RaiseParseError(s);
  OperatorScan scan(s);
  struct TSplit {
    qsizetype At, End; // the operator in s.first(End)
    TQyTwoPrmFunction Function;
  };
  std::vector<TSplit> splits; // from the right
  QStringView piece = s;
  for (;;) {
    qsizetype p = scan.Additive.LastBefore(piece.size());
    const qsizetype end = piece.size();
    if (p > 0 && !IsExponentSign(piece, p)) splits.push_back({p, end, piece[p] == '+' ? Add : Subtract});
    else if ((p = scan.Multiplicative.LastBefore(end)) > 0)
      splits.push_back({p, end, piece[p] == '*' ? Multiply : Divide});
    else if (piece[0] == '-' || piece[0] == '+') break;
    else if ((p = scan.Power.LastBefore(end)) > 0) splits.push_back({p, end, Power});
    else break;
    piece = piece.first(p); // never empty: operators in first position do not count
  }
  std::unique_ptr<TQyNode> left(Terminal(piece, depth));
  for (auto it = splits.rbegin(); it != splits.rend(); ++it) {
    const QStringView whole = s.first(it->End);
    std::unique_ptr<TQyNode> n(NewOperator(it->Function));
    n->SetNodeOne(left.release());
    n->SetNodeTwo(Operand(whole.mid(it->At + 1), whole, depth));
    left = std::move(n);
  }
  return left.release();
}

// The leftmost operand of a chain: a signed operand or a leaf.
TQyNode* TreeBuilder::Terminal(QStringView piece, int depth) {
  if (piece[0] == '+') return Operand(piece.mid(1), piece, depth);
  if (piece[0] != '-') return Leaf(piece, depth);
  std::unique_ptr<TQyNode> n(NewFunction(Negate));
  n->SetNodeOne(Operand(piece.mid(1), piece, depth));
  return n.release();
}

const TQyFunctionRec* TreeBuilder::FindFunction(QStringView upper) const {
  for (const TQyFunctionsList* list : {&FFunctions, static_cast<const TQyFunctionsList*>(&GlobalFunctionList)})
    for (const TQyFunctionRec& r : *list)
      if (r.Name.toUpper() == upper) return &r;
  return nullptr;
}

// Array element, function call or bracket: the argument runs from the first "(" to the
// character before the last one, which is dropped unseen.
TQyNode* TreeBuilder::Call(QStringView s, qsizetype bracket, int depth) {
  const QStringView name = s.first(bracket);
  const QStringView argument = s.mid(bracket + 1, std::max<qsizetype>(0, s.size() - bracket - 2));
  std::unique_ptr<TQyNode> n;
  if (const TQyDoubleArrayRec* array = Find(FArrays, name)) {
    EnterDependency(*array);
    n.reset(new TQyNode);
    n->Token = TQyArg::DoubleArray;
    n->AArray = array->Getter;
  } else if (name.isEmpty()) {
    n.reset(NewFunction(Identity));
  } else if (const TQyFunctionRec* f = FindFunction(name)) {
    n.reset(NewFunction(f->Func));
  } else {
    return nullptr;
  }
  n->SetNodeOne(Operand(argument, s, depth));
  return n.release();
}

TQyNode* TreeBuilder::Leaf(QStringView s, int depth) {
  if (const qsizetype bracket = s.indexOf('('); bracket >= 0)
    if (TQyNode* n = Call(s, bracket, depth)) return n;
  if (const TQyDoubleGetterRec* v = Find(FVariables, s)) {
    EnterDependency(*v);
    auto* n = new TQyNode;
    n->Token = TQyArg::Getter;
    n->AGetter = v->Getter;
    return n;
  }
  // Numbers are read with the fixed invariant settings: a point, never the machine's locale.
  double value = 0;
  if (TryStrToFloat(s.toString(), value) && std::isfinite(value)) {
    auto* n = new TQyNode;
    n->AConstant = value;
    return n;
  }
  RaiseParseError(s);
}
} // namespace

// ---- The parser

TQyFunctionParser::TQyFunctionParser(QObject* owner) : FOwner(owner) {
  // The process-wide generator is seeded once by the system; nothing to randomize per parser.
  AddVariableToList("Pi", QyText(QyRes::ExprPiHelp), nullptr,
                    [] { return std::bit_cast<double>(std::uint64_t{0x400921FB54442D18}); }, VariablesList);
  AddVariableToList("e", QyText(QyRes::ExprEHelp), nullptr,
                    [] { return std::bit_cast<double>(std::uint64_t{0x4005BF0A8B145774}); }, VariablesList);
  AddVariableToList("Random", QyText(QyRes::ExprRandomHelp), nullptr,
                    [] { return QRandomGenerator::global()->generateDouble(); }, VariablesList);
}

TQyFunctionParser::~TQyFunctionParser() { FreeTree(); }

void TQyFunctionParser::FreeTree() {
  delete FStartNode;
  FStartNode = nullptr;
}

void TQyFunctionParser::SetExpression(const QString& value) {
  if (value == FExpression) return;
  FExpression = value;
  FExpression.remove(' ');
  FExpression.replace('[', '(').replace(']', ')');
  Parse();
}

void TQyFunctionParser::Parse() {
  // Any failure, and a text of blanks only, leave no tree: a tree must never evaluate a formula
  // other than the one the expression shows.
  FreeTree();
  if (FExpression.isEmpty()) return;
  int sum = 0;
  for (QChar c : FExpression) sum += c == '(' ? 1 : c == ')' ? -1 : 0;
  // Only the sum counts, so ")(" passes here. The count is shown as an unsigned 32-bit number.
  if (sum > 0) throw EMathError(QyFormatMessage(QyRes::ExprClosingBracketsMissing, {static_cast<quint32>(sum)}));
  if (sum < 0) throw EMathError(QyFormatMessage(QyRes::ExprOpeningBracketsMissing, {static_cast<quint32>(sum)}));
  BuildTree(FStartNode, FExpression.toUpper());
}

void TQyFunctionParser::BuildTree(TQyNode*& node, const QString& s) {
  TreeBuilder builder(FunctionsList, VariablesList, FOwner);
  node = builder.Build(s, 0);
}

double TQyFunctionParser::GetResult() const {
  if (!FStartNode) throw EExternal(QyText(QyRes::ExprNoValidExpression));
  return FStartNode->GetResult();
}
