// A program outside the tree that uses the installed package.
#include <QApplication>
#include <QyComponent.h>
#include <QyExceptions.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QObject form;
  form.setObjectName("Form1");
  return UniqueName(&form, "Graph") == "Graph1" ? 0 : 1;
}
