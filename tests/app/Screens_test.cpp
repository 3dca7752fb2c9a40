#include "app/Screens.h"

#include "app/GalleryViewController.h"
#include "support/TestEnvironment.h"
#include "view/Window.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QTest>

#include <algorithm>

namespace {

/// Whether `item` is, or has in it, an item of that name.
bool contains(const QQuickItem *item, const QString &name) {
  const QList<QQuickItem *> children = item->childItems();
  return item->objectName() == name ||
         std::any_of(children.begin(), children.end(),
                     [&](const QQuickItem *child) { return contains(child, name); });
}

/// A window with a screen that needs no store.
class TestScreens : public TestEnvironment {
 public:
  TestScreens() { gallery.loadViewIfNeeded(); }

  QQuickWindow &open() {
    m_screens = std::make_unique<Screens>(window);
    return *m_screens->quickWindow();
  }

  GalleryViewController gallery{environment};
  Window window{gallery, environment};

 private:
  std::unique_ptr<Screens> m_screens;
};

}  // namespace

/// The window that the screens are drawn in.
class ScreensTest : public QObject {
  Q_OBJECT

 private slots:
  void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("qrc:"))); }

  void theFirstWindowHasTheSizeOfASmallTabletAsFarAsTheScreenHas() {
    TestScreens test;
    const QQuickWindow &window = test.open();
    QCOMPARE(window.size(), QSize(1280, 800).boundedTo(window.screen()->size()));
    QCOMPARE(window.visibility(), QWindow::Windowed);
  }

  void theSizeOfTheWindowIsRemembered() {
    TestScreens test;
    test.open().resize(800, 650);
    QTRY_COMPARE(test.environment.display->windowSize(), QSize(800, 650));
    QCOMPARE(test.open().size(), QSize(800, 650));
  }

  void aMaximizedWindowIsMaximizedAgainAndKeepsTheSizeItHadBefore() {
    TestScreens test;
    test.open().resize(800, 650);
    QTRY_COMPARE(test.environment.display->windowSize(), QSize(800, 650));
    test.open().showMaximized();
    QTRY_VERIFY(test.environment.display->isMaximized());
    QCOMPARE(test.environment.display->windowSize(), QSize(800, 650));
    QCOMPARE(test.open().visibility(), QWindow::Maximized);
  }

  void aWindowForPickingAloneFillsTheScreenAndIsNotRemembered() {
    TestScreens test;
    test.window.fullScreen = true;
    const QQuickWindow &window = test.open();
    QTRY_COMPARE(window.visibility(), QWindow::FullScreen);
    QCOMPARE(test.environment.display->windowSize(), QSize(1280, 800));
  }

  void theGalleryShowsEverythingThatScreensAreMadeOf() {
    TestScreens test;
    QQuickWindow &window = test.open();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (const char *part : {"btnPlain", "txtFilled", "segmFilter", "pill", "lblDifference",
                             "tblBoxesRow2", "tblPicksRow0"}) {
      QVERIFY2(contains(window.contentItem(), QString::fromLatin1(part)), part);
    }
    QVERIFY(!window.grabWindow().isNull());
  }

  void theGalleryShowsWhatLiesAboveAScreen() {
    TestScreens test;
    QQuickWindow &window = test.open();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    test.gallery.showAlert();
    test.gallery.showQuestion();
    QCOMPARE(test.alertTitles(), QStringList({"Unknown Item", "Picking Completed?"}));
    test.answerTopAlert(0);
    test.answerTopAlert(0);
    test.gallery.showSheet();
    QCOMPARE(test.gallery.presentedViewController()->identifier(), "DisplayViewController");
    test.gallery.dismissViewController();
    test.gallery.showPopover();
    QCOMPARE(test.gallery.presentedViewController()->identifier(), "ScanTrailViewController");
    test.gallery.dismissViewController();
    test.gallery.showProgress();
    QVERIFY(test.environment.busy.isActive());
    QTRY_VERIFY(test.environment.busy.progress() > 0.0);
    QTRY_VERIFY(!test.environment.busy.isActive());
  }
};

QTEST_MAIN(ScreensTest)
#include "Screens_test.moc"
