#include "support/QtTests.h"

#include <QApplication>
#include <QTest>
#include <cstdio>
#include <map>
#include <string>

namespace skarn::test {

namespace {

std::map<std::string, TestClass>& tests() {
  static std::map<std::string, TestClass> all;
  return all;
}

int listTests() {
  for (const auto& [name, test] : tests()) std::puts(name.c_str());
  return 2;
}

}  // namespace

bool addTest(const char* name, TestClass test) {
  return tests().emplace(name, test).second;
}

}  // namespace skarn::test

int main(int count, char** arguments) {
  using namespace skarn::test;
  const auto test = count > 1 ? tests().find(arguments[1]) : tests().end();
  if (test == tests().end()) return listTests();
  // What follows the name is for Qt Test.
  arguments[1] = arguments[0];
  test->second.initMain();
  QApplication application(count, arguments);
  QApplication::setAttribute(Qt::AA_Use96Dpi);
  return QTest::qExec(test->second.make().get(), count - 1, arguments + 1);
}
