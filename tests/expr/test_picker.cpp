// The picker contents of the caption dialogs: trees of dotted names and the function list.
#include "ExprTestUtil.h"

namespace {
class ExprPicker : public ExprForm {
protected:
  void SetUp() override {
    ExprForm::SetUp();
    series = new QObject(graph);
    series->setObjectName("Series1");
    RegisterDoubleVariable(graph, "Width", "", [] { return 1.0; });
    RegisterDoubleVariable(series, "Mean", "", [] { return 1.0; });
    RegisterArrayVariable(series, "Maxima.X", "", [](int) { return 1.0; });
    RegisterStringVariable(series, "Caption", "", [] { return QString(); });
    RegisterStringVariable(graph, "Name", "", [] { return QString(); });
  }
  void TearDown() override {
    RemoveVariablesOfOwner(graph);
    RemoveVariablesOfOwner(series);
  }
  static QStringList Paths(const QStandardItemModel& model) {
    QStringList paths;
    std::function<void(const QStandardItem*)> walk = [&](const QStandardItem* item) {
      for (int r = 0; r < item->rowCount(); ++r) {
        paths.append(RefFromNode(item->child(r)));
        walk(item->child(r));
      }
    };
    walk(model.invisibleRootItem());
    return paths;
  }
  QObject* series = nullptr;
};
} // namespace

TEST_F(ExprPicker, VariablesAndArraysFormOneTree) {
  QStandardItemModel model;
  PopulateTreeWithVariables(model);
  EXPECT_EQ(Paths(model), (QStringList{"Form1", "Form1.Graph1", "Form1.Graph1.Width", "Form1.Graph1.Series1",
                                       "Form1.Graph1.Series1.Mean", "Form1.Graph1.Series1.Maxima",
                                       "Form1.Graph1.Series1.Maxima.X[]"}));
  QStandardItem* x = FindInTree("Form1.Graph1.Series1.Maxima.X(3)", model);
  ASSERT_NE(x, nullptr);
  EXPECT_EQ(x->text(), "X[]");
  EXPECT_EQ(FindInTree("Form1.Graph1.Series1.Mean", model)->text(), "Mean");
  EXPECT_EQ(FindInTree("Form1.Graph1.Nothing", model), nullptr);
  QString ref;
  RefFromNode(x, ref);
  EXPECT_EQ(ref, "Form1.Graph1.Series1.Maxima.X[]");
}

TEST_F(ExprPicker, StringsReplaceTheTree) {
  QStandardItemModel model;
  PopulateTreeWithVariables(model);
  PopulateTreeWithStrings(model);
  EXPECT_EQ(Paths(model), (QStringList{"Form1", "Form1.Graph1", "Form1.Graph1.Series1",
                                       "Form1.Graph1.Series1.Caption", "Form1.Graph1.Name"}));
}

TEST(ExprPickerFunctions, ListsConstantsThenFunctions) {
  QStringList list{"stale"};
  PopulateListWithFunctions(list);
  ASSERT_EQ(list.size(), 3 + 28);
  EXPECT_EQ(list.mid(0, 4), (QStringList{"Pi", "e", "Random", "Abs()"}));
  EXPECT_EQ(list.last(), "Tanh()");
}
