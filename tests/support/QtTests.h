// Several Qt Test classes in one program. A source names each of its classes with SKARN_QTEST(Class), in a line of its
// own; the program runs the class that its first argument names, and takes Qt Test's options behind it.
#pragma once

#include <QObject>
#include <memory>

namespace skarn::test {

struct TestClass {
  std::unique_ptr<QObject> (*make)();
  void (*initMain)();
};

// Adds a class to those that the program knows. Before main.
bool addTest(const char* name, TestClass test);

// Before the application is made, for a class that has a public static initMain.
template <typename Class>
void initMainOf() {
  if constexpr (requires { Class::initMain(); }) Class::initMain();
}

}  // namespace skarn::test

#define SKARN_QTEST(Class)                                                    \
  [[maybe_unused]] static const bool is##Class##Added = skarn::test::addTest( \
      #Class, {[] { return std::unique_ptr<QObject>(std::make_unique<Class>()); }, &skarn::test::initMainOf<Class>});
