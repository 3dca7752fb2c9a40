#pragma once

#include "app/Screens.h"
#include "app/vekAppDelegate.h"
#include "support/LoopbackService.h"
#include "support/TestEnvironment.h"
#include "support/TestProgram.h"

#include <QColor>
#include <QList>
#include <QPoint>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>

#include <memory>

class ManagedObjectContext;
class QQuickItem;
class QQuickWindow;

/// The program in its window, with a real store in a temporary folder and a real HTTP service on
/// loopback. Tests send touch, mouse and key events and read the items in the window.
///
/// Items are found by name; "a/b" is the item b inside the item a. If several items have a name,
/// the topmost visible one is used. Functions that touch an item wait until it is visible and does
/// not move, and fail the test on a timeout; functions that read an item return its current state.
///
/// Every warning or critical message from the program fails the test.
class TestWindow : public TestEnvironment {
 public:
  /// The on-screen keyboard requires `QT_IM_MODULE` to be set.
  explicit TestWindow(QSize size = {1280, 800}, bool onScreenKeyboard = false,
                      const PickingRules &rules = {});
  ~TestWindow();
  TestWindow(const TestWindow &) = delete;
  TestWindow &operator=(const TestWindow &) = delete;

  LoopbackService service;

  [[nodiscard]] QQuickWindow &window() const { return *m_screens->quickWindow(); }
  [[nodiscard]] ManagedObjectContext &store() const { return *m_delegate->managedObjectContext(); }
  /// Restarts the program on the same store.
  void restart();

  // Input.
  void touch(const QString &name);
  void click(const QString &name);
  /// Touches the window at `place`, whether or not an item is there.
  void touchAt(QPoint place);
  /// Touches the window at `place` without a change of the clock, so a part that has just changed
  /// refuses the touch.
  void tapAt(QPoint place);
  /// Waits until the item `name` is visible and does not move, advances the clock until it takes
  /// touches, and returns its centre.
  QPoint reach(const QString &name);
  /// Advances the clock until the whole window takes touches. `touch()`, `touchAt()` and `click()`
  /// do so themselves.
  void passQuietTime();
  /// Types `text` at a person's speed, and waits until all keys have been delivered.
  void type(const QString &text);
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Presses `tab` until `name`, or a row of the list `name`, has the focus.
  void tabTo(const QString &name, Qt::Key tab = Qt::Key_Tab);
  /// Moves the focus to `name` with `tab` and presses Space.
  void pressByKeys(const QString &name, Qt::Key tab = Qt::Key_Tab);
  /// Sends the keys of `code` and Return without a pause, like a scanner in keyboard mode.
  void scan(const QString &code);
  /// Sends `keys` without a pause, as part of a scan; '\r' is Return.
  void scanPart(const QString &keys);
  /// Commits `text` to the focused item through the input method.
  void commitByInputMethod(const QString &text);

  /// Activates another window, and then this one again.
  void switchToAnotherWindowAndBack();

  /// Waits until everything that has changed is drawn.
  void drawChanges() const;
  /// Waits until nothing in the window moves.
  void settle() const;

  // Output.
  /// Returns nullptr if no visible item has that name.
  [[nodiscard]] QQuickItem *item(const QString &name) const;
  [[nodiscard]] bool shows(const QString &name) const { return item(name) != nullptr; }
  /// Returns a null string if no visible item has that name.
  [[nodiscard]] QString text(const QString &name) const;
  [[nodiscard]] QStringList texts(const QStringList &names) const;
  [[nodiscard]] bool isEnabled(const QString &name) const;
  [[nodiscard]] QColor colour(const QString &name) const;
  /// The theme's foreground and background colour named `colourName`.
  [[nodiscard]] QColor ink(const QString &colourName) const;
  [[nodiscard]] QColor ground(const QString &colourName) const;
  /// The text of the label `column` in each row of `table`.
  [[nodiscard]] QStringList column(const QString &table, const QString &column) const;
  /// Every alert as "title|message|button|…", the topmost last.
  [[nodiscard]] QStringList alerts() const;
  /// The names of all text fields that have the focus.
  [[nodiscard]] QStringList fieldsWithKeyboard() const;
  /// The name of the focused item.
  [[nodiscard]] QString keyboard() const;
  /// Like `keyboard()`, but returns the name of the list if a row has the focus.
  [[nodiscard]] QString focusStop() const;
  /// All visible items in `root`, or in the whole window, the topmost last.
  [[nodiscard]] QList<QQuickItem *> visibleItems(QQuickItem *root = nullptr) const;
  /// The visible part of `item`, in window coordinates.
  [[nodiscard]] static QRectF visiblePart(QQuickItem *item);

  // Workflows.
  /// Opens the picking screen from the start screen.
  void enterPicking();
  /// Looks up a delivery of `lines`, with the number of the first line.
  void lookUp(const QList<TestLine> &lines);
  /// Opens the picking screen, looks up a delivery of `lines` and starts picking it.
  void startPicking(const QList<TestLine> &lines);
  /// Does the same as startPicking(), and opens the box in `row`.
  void openBox(const QList<TestLine> &lines, int row = 0);
  /// Opens the keypad on `row` of the pick table.
  void openKeypad(int row = 0);
  /// Enters `quantity` with the keypad's keys and touches OK.
  void confirm(const QString &quantity);

 private:
  void launch();
  void close();
  [[nodiscard]] QVariantMap themeColours(const QString &property) const;

  QSize m_size;
  bool m_onScreenKeyboard;
  std::unique_ptr<vekAppDelegate> m_delegate;
  std::unique_ptr<Screens> m_screens;
};
