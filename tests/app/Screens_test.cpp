#include "app/Screens.h"

#include "app/startViewController.h"
#include "support/TestClass.h"
#include "support/TestEnvironment.h"
#include "view/Window.h"

#include <QQuickWindow>
#include <QScreen>
#include <QTest>

#include <memory>

namespace {

/// A window with the start screen, which needs no store.
class TestScreens : public TestEnvironment {
 public:
  QQuickWindow &open() {
    m_screens = std::make_unique<Screens>(window);
    return *m_screens->quickWindow();
  }

  startViewController start{environment};
  Window window{start, environment};

 private:
  std::unique_ptr<Screens> m_screens;
};

}  // namespace

/// The window that the screens are drawn in.
class ScreensTest : public QObject {
  Q_OBJECT

 private slots:
  void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("qrc:"))); }

  void theWindowIsInitially1280By800OrAsLargeAsTheScreenAllows() {
    TestScreens test;
    const QQuickWindow &window = test.open();
    QCOMPARE(window.size(), QSize(1280, 800).boundedTo(window.screen()->size()));
    QCOMPARE(window.visibility(), QWindow::Windowed);
  }

  void theWindowSizeIsRemembered() {
    TestScreens test;
    test.open().resize(800, 650);
    QTRY_COMPARE(test.environment.display->windowSize(), QSize(800, 650));
    QCOMPARE(test.open().size(), QSize(800, 650));
  }

  void aMaximizedWindowIsRestoredMaximizedAndKeepsItsNormalSize() {
    TestScreens test;
    test.open().resize(800, 650);
    QTRY_COMPARE(test.environment.display->windowSize(), QSize(800, 650));
    test.open().showMaximized();
    QTRY_VERIFY(test.environment.display->isMaximized());
    QCOMPARE(test.environment.display->windowSize(), QSize(800, 650));
    QCOMPARE(test.open().visibility(), QWindow::Maximized);
  }

  void fullScreenDoesNotChangeTheRememberedWindowSize() {
    TestScreens test;
    test.window.fullScreen = true;
    const QQuickWindow &window = test.open();
    QTRY_COMPARE(window.visibility(), QWindow::FullScreen);
    QCOMPARE(test.environment.display->windowSize(), QSize(1280, 800));
  }
};

CARTONPICK_WINDOW_TEST(ScreensTest);
#include "Screens_test.moc"
