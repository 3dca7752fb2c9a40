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

/// The program in its window, over a real store in a temporary folder and a real HTTP service on
/// loopback, used as a person uses it: by finger, mouse and keyboard. What it shows is read off the
/// items in the window.
///
/// An item is found by name; "a/b" is the item b inside the item a. Of several items of a name the
/// topmost visible one is meant. A hand waits until the item that it is to touch is there and
/// stands still, and fails the test if that does not happen; an eye sees what is there now.
///
/// Every warning and critical message of the program fails the test.
class TestWindow : public TestEnvironment {
 public:
  /// With an on-screen keyboard only if `QT_IM_MODULE` asks Qt for one.
  explicit TestWindow(QSize size = {1280, 800}, bool onScreenKeyboard = false);
  ~TestWindow();
  TestWindow(const TestWindow &) = delete;
  TestWindow &operator=(const TestWindow &) = delete;

  LoopbackService service;

  [[nodiscard]] QQuickWindow &window() const { return *m_screens->quickWindow(); }
  [[nodiscard]] ManagedObjectContext &store() const { return *m_delegate->managedObjectContext(); }
  /// Ends the program and starts it again on the same store.
  void restart();

  // Hands.
  void touch(const QString &name);
  void click(const QString &name);
  /// Touches the window at a place that need not show any item.
  void touchAt(QPoint place);
  /// Types `text` key by key, as slowly as a person does, and waits until it is taken.
  void type(const QString &text);
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Presses Tab, or Shift+Tab, until `name`, or a row of the list `name`, has the keyboard.
  void tabTo(const QString &name, Qt::Key tab = Qt::Key_Tab);
  /// Presses `name` by keys alone.
  void use(const QString &name, Qt::Key tab = Qt::Key_Tab);
  /// What a scanner in keyboard mode does: all keys of `code` and Return, without a pause.
  void scan(const QString &code);
  /// The same for a part of what a scanner sends; '\r' stands for Return.
  void scanPart(const QString &keys);
  /// Commits `text` by input method to the item that has the keyboard.
  void commitByInputMethod(const QString &text);

  /// Another window takes the keyboard, and gives it back.
  void lendTheKeyboard();

  /// Waits until nothing in the window moves.
  void settle() const;

  // Eyes.
  /// Nothing if no visible item has that name.
  [[nodiscard]] QQuickItem *item(const QString &name) const;
  [[nodiscard]] bool shows(const QString &name) const { return item(name) != nullptr; }
  /// Null if there is no such item.
  [[nodiscard]] QString text(const QString &name) const;
  [[nodiscard]] QStringList texts(const QStringList &names) const;
  [[nodiscard]] bool isEnabled(const QString &name) const;
  [[nodiscard]] QColor colour(const QString &name) const;
  /// What the theme makes of a colour name, as ink and as ground.
  [[nodiscard]] QColor ink(const QString &colourName) const;
  [[nodiscard]] QColor ground(const QString &colourName) const;
  /// The texts that the rows of `table` show in the label `column`.
  [[nodiscard]] QStringList column(const QString &table, const QString &column) const;
  /// Every alert as "title|message|button|…", the topmost last.
  [[nodiscard]] QStringList alerts() const;
  /// The names of all fields that take what is typed.
  [[nodiscard]] QStringList fieldsWithKeyboard() const;
  /// The name of the item that has the keyboard.
  [[nodiscard]] QString keyboard() const;
  /// The same, but the name of the list if it is a row.
  [[nodiscard]] QString stop() const;
  /// All visible items in `root`, or in the whole window, the topmost last.
  [[nodiscard]] QList<QQuickItem *> visibleItems(QQuickItem *root = nullptr) const;
  /// The part of `item` that can be seen, in the window.
  [[nodiscard]] static QRectF visiblePart(QQuickItem *item);

  // Ways.
  /// From the start screen to the picking screen.
  void enterPicking();
  /// Looks up a delivery of `lines`, whose number is that of the first.
  void lookUp(const QList<TestLine> &lines);
  /// From the start screen to the running picking of a delivery of `lines`.
  void startPicking(const QList<TestLine> &lines);
  /// ... and to its open box `row`.
  void openBox(const QList<TestLine> &lines, int row = 0);
  /// Opens the keypad on `row` of the pick table.
  void openKeypad(int row = 0);
  /// Enters `quantity` on the keypad, with its keys, and touches OK.
  void confirm(const QString &quantity);

 private:
  void launch();
  void shut();
  /// Waits for the item `name` to be there and to stand still, for a hand to use it.
  QPoint reach(const QString &name);
  [[nodiscard]] QVariantMap themeColours(const QString &property) const;

  QSize m_size;
  bool m_onScreenKeyboard;
  std::unique_ptr<vekAppDelegate> m_delegate;
  std::unique_ptr<Screens> m_screens;
};
