#pragma once
// The formula parser: one line of text such as "2*Sin(X)+A" becomes a tree of nodes that is
// evaluated to a double as often as needed. There is no tokenizer: the text is cut at the last
// operator outside brackets, weakest operators first, so the grammar has its own rules
// (-2^2 = -4, 2^3^2 = 64, "2*-3" is an error, "1E-3" is a number). Names are not case-sensitive.
// This header is the whole expression unit: parser, registers, placeholders and pickers.
#include "QyPlaceholders.h"
#include "QyRegisters.h"
#include "QyVariablePicker.h"
#include <QObject>
#include <QString>

enum class TQyArg { Constant, Getter, DoubleArray, OnePrm, TwoPrm };

// One node of a parsed formula. A node owns its children. Evaluation allocates nothing and
// recurses only into brackets, function arguments and right operands: a long chain of operators
// forms a left spine that is walked in a loop (through Parent), however long it is.
class TQyNode {
public:
  TQyArg Token = TQyArg::Constant;
  double AConstant = 0;
  TQyDoubleGetter AGetter;
  TQyArrayValGetter AArray;
  TQyOnePrmFunction AOnePrmFunction = nullptr;
  TQyTwoPrmFunction ATwoPrmFunction = nullptr;
  TQyNode* NodeOne = nullptr; // argument, array index or left operand
  TQyNode* NodeTwo = nullptr; // right operand
  TQyNode* Parent = nullptr;  // the node whose NodeOne or NodeTwo this is

  TQyNode() = default;
  ~TQyNode();
  TQyNode(const TQyNode&) = delete;
  TQyNode& operator=(const TQyNode&) = delete;

  // Links children and their Parent.
  void SetNodeOne(TQyNode* node);
  void SetNodeTwo(TQyNode* node);

  // The value; a non-finite intermediate raises EZeroDivide, EInvalidOp or EOverflow.
  double GetResult() const;

private:
  double LeafResult() const; // every kind but TwoPrm
};

class TQyFunctionParser {
public:
  // `owner` is the object that holds the expression; it becomes a dependant of every variable
  // owner the formula uses.
  explicit TQyFunctionParser(QObject* owner = nullptr);
  ~TQyFunctionParser();
  TQyFunctionParser(const TQyFunctionParser&) = delete;
  TQyFunctionParser& operator=(const TQyFunctionParser&) = delete;

  // The text after clean-up: blanks removed, square brackets turned round.
  const QString& Expression() const { return FExpression; }
  // Parses at once; raises EMathError on bad text (the tree is then empty).
  void SetExpression(const QString& value);
  // Evaluates the tree; EExternal "No valid expression defined" without one.
  double GetResult() const;
  double Result() const { return GetResult(); }

  QObject* Owner() const { return FOwner; }
  void SetOwner(QObject* owner) { FOwner = owner; }
  const TQyNode* StartNode() const { return FStartNode; }

  // Functions and variables private to this parser, searched before the global registers.
  // The variables hold "Pi", "e" and "Random" from the start.
  TQyFunctionsList FunctionsList;
  TQyDoubleGetterList VariablesList;

  // Nesting of brackets, functions and signs beyond this depth is refused as a parsing error.
  static constexpr int MaxNesting = 256;

private:
  void Parse();
  void BuildTree(TQyNode*& node, const QString& s);
  void FreeTree();

  QString FExpression;
  TQyNode* FStartNode = nullptr;
  QObject* FOwner = nullptr;
};
