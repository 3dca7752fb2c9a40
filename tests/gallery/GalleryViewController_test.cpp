#include "gallery/GalleryViewController.h"

#include "app/Screens.h"
#include "gallery/GalleryScreens.h"
#include "support/TestClass.h"
#include "support/TestEnvironment.h"
#include "view/Window.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>

namespace {

/// Returns true if `item` or one of its descendants is named `name`.
bool contains(const QQuickItem *item, const QString &name) {
  const QList<QQuickItem *> children = item->childItems();
  return item->objectName() == name ||
         std::any_of(children.begin(), children.end(),
                     [&](const QQuickItem *child) { return contains(child, name); });
}

/// The gallery in its window.
class OpenGallery : public TestEnvironment {
 public:
  OpenGallery() {
    prepareGallery(environment);
    gallery.loadViewIfNeeded();
    m_screens = std::make_unique<Screens>(m_window);
  }

  [[nodiscard]] QQuickWindow &quickWindow() const { return *m_screens->quickWindow(); }

  GalleryViewController gallery{environment};

 private:
  Window m_window{gallery, environment};
  std::unique_ptr<Screens> m_screens;
};

}  // namespace

class GalleryViewControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("qrc:"))); }

  void theGalleryShowsEachKindOfComponent() {
    OpenGallery test;
    QQuickWindow &window = test.quickWindow();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (const char *part : {"btnPlain", "txtFilled", "segmFilter", "pill", "lblDifference",
                             "tblBoxesRow2", "tblPicksRow0"}) {
      QVERIFY2(contains(window.contentItem(), QString::fromLatin1(part)), part);
    }
    QVERIFY(!window.grabWindow().isNull());
  }

  void theGalleryShowsEveryOverlay() {
    OpenGallery test;
    QQuickWindow &window = test.quickWindow();
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

CARTONPICK_WINDOW_TEST(GalleryViewControllerTest);
#include "GalleryViewController_test.moc"
