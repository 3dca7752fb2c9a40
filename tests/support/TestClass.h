#pragma once

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <string_view>

/// A test program has the test classes of one folder. It is called with the name of a class, and
/// then with what Qt Test takes: the functions to run, or its options. ctest runs each class in a
/// separate process.

/// A class whose slots are test functions, and what its process needs.
struct TestClass {
  std::string_view name;
  /// Whether there are windows, for which it needs a QGuiApplication.
  bool hasWindows = false;
  /// Runs before the application is made.
  std::function<void()> prepare = {};
  std::function<std::unique_ptr<QObject>()> make = {};
};

/// What a test program does when it is called, with `option` and `arguments`, by one of its tests,
/// which needs another process.
struct TestChild {
  std::string_view option;
  /// Returns the exit code.
  std::function<int(const QStringList &arguments)> run;
};

/// Registers its argument as a part of the program; for static objects alone.
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

// NOLINTBEGIN(cppcoreguidelines-macro-usage): a macro alone knows the name of a class.

/// The class `Class` of this file is a test. Its static function `beforeApplication`, if it has
/// one, runs before the application is made.
#define CARTONPICK_TEST(Class) \
  static const TestRegistration kRegistered##Class(testClass<Class>(#Class, false))

/// The same for a test with windows.
#define CARTONPICK_WINDOW_TEST(Class) \
  static const TestRegistration kRegistered##Class(testClass<Class>(#Class, true))

/// `function`, an int(const QStringList &), runs in place of a test if the program is called with
/// `option`. It is given the arguments that follow and returns the exit code.
#define CARTONPICK_TEST_CHILD(option, function) \
  static const TestRegistration kRegistered##function(TestChild{option, function})

// NOLINTEND(cppcoreguidelines-macro-usage)
