// The process-wide registers: replacing and removing entries, qualified names, values of other
// objects inside formulas, and the dependants that are told to parse again.
#include "ExprTestUtil.h"
#include <memory>

namespace {
// A form holding one offering object ("Series1") that keeps a dependants list, and cleans the
// global registers after each test.
class ExprRegisters : public testing::Test {
protected:
  void SetUp() override {
    form.setObjectName("Form1");
    series = new QObject(&form);
    series->setObjectName("Series1");
    dependants = std::make_unique<TQyVariableObjects>(series);
  }
  void TearDown() override {
    RemoveVariablesOfOwner(series);
    RemoveVariablesOfOwner(other);
  }
  QWidget form;
  QObject* series = nullptr;
  QObject* other = nullptr;
  std::unique_ptr<TQyVariableObjects> dependants;
};
} // namespace

TEST(ExprFunctionRegister, HoldsTheBuiltInsInOrderAndReplacesByName) {
  ASSERT_EQ(GlobalFunctionList.size(), 28);
  EXPECT_EQ(GlobalFunctionList.first().Name, "Abs");
  EXPECT_EQ(GlobalFunctionList[18].Name, "Lg");
  EXPECT_EQ(GlobalFunctionList[18].Func, GlobalFunctionList[17].Func); // Lg is Lg10
  EXPECT_EQ(GlobalFunctionList[20].Help, GlobalFunctionList[11].Help); // RadToDeg shares the help of DegToRad
  EXPECT_EQ(GlobalFunctionList.last().Name, "Tanh");
  EXPECT_EQ(GlobalFunctionList[7].Help, "The smallest integer greater than or equal to its argument");

  TQyFunctionsList list;
  AddFunctionToList("MyF", "one", [](double x) { return x; }, list);
  AddFunctionToList("MYf", "two", [](double x) { return -x; }, list); // same name regardless of case
  AddFunctionToList("MyG", "three", [](double x) { return x; }, list);
  AddFunctionToList("myH", "four", [](double x) { return x; }, list);
  ASSERT_EQ(list.size(), 3);
  EXPECT_EQ(list[0].Name, "MYf");
  EXPECT_EQ(list[0].Func(2), -2);
  RemoveFromFunctionsList("My", list); // the prefix is case-sensitive
  ASSERT_EQ(list.size(), 2);
  EXPECT_EQ(list[0].Name + list[1].Name, "MYfmyH");
}

TEST_F(ExprRegisters, SameOwnerAndNameReplacesOtherOwnerAdds) {
  other = new QObject(&form);
  other->setObjectName("Series2");
  RegisterDoubleVariable(series, "Mean", "first", [] { return 1.0; });
  RegisterDoubleVariable(series, "MEAN", "second", [] { return 2.0; });
  RegisterDoubleVariable(other, "Mean", "third", [] { return 3.0; });
  ASSERT_EQ(GlobalVariableList.size(), 2);
  EXPECT_EQ(GlobalVariableList[0].Help, "second");
  EXPECT_EQ(GlobalVariableList[0].QualifiedName() + " " + GlobalVariableList[1].QualifiedName(),
            "Form1.Series1.MEAN Form1.Series2.Mean");
  EXPECT_EQ(Eval("form1.series1.mean*10+Form1.Series2.Mean"), 23);
  EXPECT_EQ(ParseFailure<EMathError>("Mean"), ParseError("MEAN")); // only the qualified name counts
}

TEST_F(ExprRegisters, RemovingAnOwnerKeepsTheOthersInOrder) {
  other = new QObject(&form);
  other->setObjectName("Other");
  RegisterDoubleVariable(series, "A", "", [] { return 1.0; });
  RegisterDoubleVariable(other, "B", "", [] { return 2.0; });
  RegisterDoubleVariable(series, "C", "", [] { return 3.0; });
  RegisterDoubleVariable(other, "D", "", [] { return 4.0; });
  RegisterStringVariable(series, "Name", "", [this] { return series->objectName(); });
  RegisterArrayVariable(series, "Data", "", [](int i) { return double(i); });
  RemoveVariablesOfOwner(series);
  ASSERT_EQ(GlobalVariableList.size(), 2);
  EXPECT_EQ(GlobalVariableList[0].Name + GlobalVariableList[1].Name, "BD");
  EXPECT_TRUE(GlobalStringList.isEmpty());
  EXPECT_TRUE(GlobalArrayList.isEmpty());
}

TEST_F(ExprRegisters, ArraysRoundTheirIndexHalfToEven) {
  QList<int> asked;
  RegisterArrayVariable(series, "Data", "", [&asked](int i) {
    asked.append(i);
    return 10.0 * i;
  });
  EXPECT_EQ(Eval("Form1.Series1.Data(2.5)+Form1.Series1.Data[3.5]"), 20 + 40);
  EXPECT_EQ(asked, (QList<int>{2, 4}));
  // The argument runs to the last character, which is dropped unseen.
  EXPECT_EQ(ParseFailure<EMathError>("Form1.Series1.Data(1)2"), ParseError("1)"));
}

TEST_F(ExprRegisters, UsersBecomeDependantsOfOwnersThatKeepThem) {
  RegisterDoubleVariable(series, "Mean", "", [] { return 5.0; });
  CaptionUser user;
  TQyFunctionParser p(&user);
  p.SetExpression("Form1.Series1.Mean+1");
  p.SetExpression("Form1.Series1.Mean*2"); // once only
  EXPECT_EQ(p.Result(), 10);
  ASSERT_EQ(dependants->Count(), 1);
  dependants->Update();
  EXPECT_EQ(user.Updates, 1);

  // An owner without a dependants list keeps none.
  other = new QObject(&form);
  other->setObjectName("Plain");
  RegisterDoubleVariable(other, "V", "", [] { return 1.0; });
  TQyFunctionParser q(&user);
  q.SetExpression("Form1.Plain.V");
  EXPECT_EQ(VariableObjectsOf(other), nullptr);
}

TEST_F(ExprRegisters, FreedDependantsAndOwnersDropOut) {
  RegisterDoubleVariable(series, "Mean", "", [] { return 5.0; });
  auto* user = new CaptionUser;
  CaptionUser survivor;
  dependants->Add(user);
  dependants->Add(&survivor);
  delete user;
  EXPECT_EQ(dependants->Count(), 1);
  dependants->Update();
  EXPECT_EQ(survivor.Updates, 1);
  // An owner that died without removing its entries is no longer found.
  auto* mortal = new QObject(&form);
  mortal->setObjectName("Mortal");
  RegisterDoubleVariable(mortal, "V", "", [mortal] { return mortal->objectName().size() * 1.0; });
  EXPECT_EQ(Eval("Form1.Mortal.V"), 6);
  delete mortal;
  EXPECT_EQ(ParseFailure<EMathError>("Form1.Mortal.V"), ParseError("FORM1.MORTAL.V"));
}

TEST_F(ExprRegisters, QualifiedNamesFollowRenames) {
  RegisterDoubleVariable(series, "Mean", "", [] { return 5.0; });
  series->setObjectName("Renamed");
  EXPECT_EQ(GlobalVariableList[0].QualifiedName(), "Form1.Renamed.Mean");
  EXPECT_EQ(Eval("Form1.Renamed.Mean"), 5);
}
