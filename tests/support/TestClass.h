#pragma once

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <string_view>

// A test program contains the test classes of one folder. Its first argument is the name of a
// class; Qt Test reads the others: test functions and options. ctest runs each class in a separate
// process.

/// A class whose slots are test functions.
struct TestClass {
  std::string_view name;
  /// True if the tests open windows and therefore need a QGuiApplication.
  bool hasWindows = false;
  /// Runs before the application object is created.
  std::function<void()> prepare = {};
  std::function<std::unique_ptr<QObject>()> make = {};
};

/// A function that runs in a second process of the test program, which a test starts with `option`
/// and `arguments`.
struct TestChild {
  std::string_view option;
  /// Returns the exit code.
  std::function<int(const QStringList &arguments)> run;
};

/// Registers its argument with the test program; only for static objects.
struct TestRegistration {
  explicit TestRegistration(const TestClass &test);
  explicit TestRegistration(const TestChild &child);
};

template <class Class>
TestClass testClass(std::string_view name, bool hasWindows) {
  TestClass test{.name = name, .hasWindows = hasWindows};
  if constexpr (requires { Class::beforeApplication(); }) {
    test.prepare = &Class::beforeApplication;
  }
  test.make = [] { return std::make_unique<Class>(); };
  return test;
}

// NOLINTBEGIN(cppcoreguidelines-macro-usage): only a macro can turn a class into its name.

/// Registers `Class` as a test. Its static function `beforeApplication`, if it has one, runs before
/// the application object is created.
#define CARTONPICK_TEST(Class) \
  static const TestRegistration kRegistered##Class(testClass<Class>(#Class, false))

/// Registers `Class` as a test that opens windows.
#define CARTONPICK_WINDOW_TEST(Class) \
  static const TestRegistration kRegistered##Class(testClass<Class>(#Class, true))

/// Runs `function`, an int(const QStringList &), instead of a test if the program is started with
/// `option`. The function receives the arguments after `option` and returns the exit code.
#define CARTONPICK_TEST_CHILD(option, function) \
  static const TestRegistration kRegistered##function(TestChild{option, function})

// NOLINTEND(cppcoreguidelines-macro-usage)
