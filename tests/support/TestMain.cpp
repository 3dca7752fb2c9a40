#include "support/TestClass.h"

#include <QGuiApplication>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <vector>

namespace {

std::vector<TestClass> &classes() {
  static std::vector<TestClass> all;
  return all;
}

std::vector<TestChild> &children() {
  static std::vector<TestChild> all;
  return all;
}

int runClass(const TestClass &test, std::vector<char *> arguments) {
  if (test.prepare) {
    test.prepare();
  }
  // Qt Test does not expect the name of the class.
  arguments.erase(arguments.begin() + 1);
  int count = static_cast<int>(arguments.size());
  const std::unique_ptr<QCoreApplication> application =
      test.hasWindows ? std::make_unique<QGuiApplication>(count, arguments.data())
                      : std::make_unique<QCoreApplication>(count, arguments.data());
  return QTest::qExec(test.make().get(), count, arguments.data());
}

int runChild(const TestChild &child, std::span<char *> arguments) {
  int count = static_cast<int>(arguments.size());
  const QCoreApplication application(count, arguments.data());
  return child.run(QCoreApplication::arguments().sliced(2));
}

}  // namespace

TestRegistration::TestRegistration(const TestClass &test) {
  classes().push_back(test);
}

TestRegistration::TestRegistration(const TestChild &child) {
  children().push_back(child);
}

int main(int argc, char *argv[]) {
  const std::span arguments(argv, static_cast<std::size_t>(argc));
  const std::string_view argument = argc > 1 ? arguments[1] : "";
  const auto child = std::find_if(children().begin(), children().end(),
                                  [&](const TestChild &c) { return c.option == argument; });
  if (child != children().end()) {
    return runChild(*child, arguments);
  }
  const auto test = std::find_if(classes().begin(), classes().end(),
                                 [&](const TestClass &c) { return c.name == argument; });
  if (test != classes().end()) {
    return runClass(*test, {arguments.begin(), arguments.end()});
  }
  std::fputs("Usage: CLASS [FUNCTION]..., with one of these classes:\n", stderr);
  for (const TestClass &known : classes()) {
    std::fprintf(stderr, "  %.*s\n", static_cast<int>(known.name.size()), known.name.data());
  }
  return EXIT_FAILURE;
}
