#pragma once

#include "support/TestWindow.h"

#include <QQuickItem>
#include <QTest>

// The on-screen keyboard in the window of a test.

/// Makes Qt load the on-screen keyboard. Call it before the application object is created.
inline void chooseScreenKeyboard() {
  qputenv("QT_IM_MODULE", "qtvirtualkeyboard");
  qputenv("QT_VIRTUALKEYBOARD_DESKTOP_DISABLE", "1");
  // The keyboard works without a dictionary, but warns about it.
  qputenv("QT_LOGGING_RULES", "qt.virtualkeyboard.hunspell=false");
}

inline QQuickItem *screenKeyboard(const TestWindow &ui) {
  return ui.item("onScreenKeyboard");
}

inline bool isScreenKeyboardOpen(const TestWindow &ui) {
  return screenKeyboard(ui)->property("active").toBool();
}

/// Returns the centre of the key whose `property` is `value`.
inline QPoint placeOfKey(TestWindow &ui, const char *property, const QVariant &value) {
  QPoint place;
  const auto find = [&] {
    ui.settle();
    for (QQuickItem *item : ui.visibleItems(screenKeyboard(ui))) {
      if (item->property(property) == value && item->isEnabled()) {
        place = TestWindow::visiblePart(item).center().toPoint();
        return true;
      }
    }
    return false;
  };
  if (!QTest::qWaitFor(find)) {
    QTest::qFail(qPrintable("No key with the value " + value.toString()), __FILE__, __LINE__);
  }
  return place;
}

/// Touches the key that shows `text`.
inline void touchKey(TestWindow &ui, const QString &text) {
  ui.touchAt(placeOfKey(ui, "displayText", text));
}
