#include "view/ViewController.h"

#include "support/TestClass.h"
#include "support/TestEnvironment.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

/// Records its events.
class Screen : public ViewController {
 public:
  using ViewController::ViewController;

  void viewDidLoad() override { m_events.append(QStringLiteral("loaded")); }
  void viewWillAppear() override { m_events.append(QStringLiteral("appears")); }
  void prepareForSegue(Segue &segue) override {
    m_events.append(segue.identifier);
    m_destination = segue.destination;
    segue.isHeldBack = m_holdsBack;
  }

  void noteRefusedScan(const QString &code) override {
    m_events.append(QStringLiteral("refused ") + code);
    ViewController::noteRefusedScan(code);
  }

  void holdBack() { m_holdsBack = true; }
  [[nodiscard]] QString events() const { return m_events.join(u' '); }
  [[nodiscard]] ViewController *destination() const { return m_destination; }

 private:
  QStringList m_events;
  QPointer<ViewController> m_destination;
  bool m_holdsBack = false;
};

/// A start screen, and a storyboard with segues to "history" and back.
struct TestScreens {
  TestScreens() {
    Storyboard &storyboard = test.environment.storyboard;
    storyboard.addScene(QStringLiteral("history"), [](Environment &environment, QObject *owner) {
      return new Screen(QStringLiteral("history"), environment, owner);
    });
    storyboard.addSegue(QStringLiteral("segueHistory"), QStringLiteral("history"));
    storyboard.addReturnSegue(QStringLiteral("returnToStart"));
  }

  Screen *make(const char *identifier) {
    return new Screen(QString::fromLatin1(identifier), test.environment, &start);
  }

  Screen *openHistory() {
    start.performSegueWithIdentifier(QStringLiteral("segueHistory"));
    return dynamic_cast<Screen *>(start.presentedViewController());
  }

  TestEnvironment test;
  Screen start{QStringLiteral("start"), test.environment};
};

using Style = ViewController::PresentationStyle;
using Flip = ViewController::Flip;

}  // namespace

class ViewControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void aViewIsLoadedOnceWithItsChildren() {
    TestScreens screens;
    auto *child = screens.make("child");
    screens.start.addChildViewController(child);
    screens.start.loadViewIfNeeded();
    screens.start.loadViewIfNeeded();
    QCOMPARE(screens.start.events(), "loaded");
    QCOMPARE(child->events(), "loaded");
    QCOMPARE(child->parentViewController(), &screens.start);
    QCOMPARE(screens.start.childViewControllers(), QList<ViewController *>({child}));
  }

  void aSegueIsPreparedBeforeItsScreenIsLoadedAndPresented() {
    TestScreens screens;
    const QSignalSpy presented(&screens.start, &ViewController::presentedChanged);
    Screen *history = screens.openHistory();
    QVERIFY(history != nullptr);
    QCOMPARE(screens.start.events(), "segueHistory");
    QCOMPARE(screens.start.destination(), history);
    QCOMPARE(history->events(), "loaded appears");
    QCOMPARE(history->presentingViewController(), &screens.start);
    QCOMPARE(screens.start.presentationStyleName(), "fullScreen");
    QCOMPARE(presented.size(), 1);
  }

  void anUnknownSegueIsIgnored() {
    TestScreens screens;
    screens.start.performSegueWithIdentifier(QStringLiteral("segueNowhere"));
    QCOMPARE(screens.start.events(), "");
    QCOMPARE(screens.start.presentedViewController(), nullptr);
  }

  void aReturnSegueGoesBackToThePresentingScreen() {
    TestScreens screens;
    const QPointer<Screen> history = screens.openHistory();
    history->performSegueWithIdentifier(QStringLiteral("returnToStart"));
    QCOMPARE(history->events(), "loaded appears returnToStart");
    QCOMPARE(history->destination(), &screens.start);
    QCOMPARE(screens.start.presentedViewController(), nullptr);
    QTRY_VERIFY(history.isNull());
  }

  void aReturnSegueThatIsHeldBackDismissesNothing() {
    TestScreens screens;
    Screen *history = screens.openHistory();
    history->holdBack();
    history->performSegueWithIdentifier(QStringLiteral("returnToStart"));
    QCOMPARE(screens.start.presentedViewController(), history);
  }

  void aReturnSegueFromTheFirstScreenHasNoDestination() {
    TestScreens screens;
    screens.start.performSegueWithIdentifier(QStringLiteral("returnToStart"));
    QCOMPARE(screens.start.events(), "returnToStart");
    QCOMPARE(screens.start.destination(), nullptr);
  }

  void aReturnSegueOfAChildDismissesItsContainer() {
    TestScreens screens;
    auto *container = screens.make("container");
    auto *child = screens.make("child");
    container->addChildViewController(child);
    screens.start.presentViewController(container, Style::FullScreen);
    QCOMPARE(child->presentingViewController(), &screens.start);
    child->performSegueWithIdentifier(QStringLiteral("returnToStart"));
    QCOMPARE(screens.start.presentedViewController(), nullptr);
  }

  void aPresentationHasItsStyle() {
    TestScreens screens;
    screens.start.presentViewController(screens.make("sheet"), Style::FormSheet);
    QCOMPARE(screens.start.presentationStyleName(), "formSheet");
    screens.start.dismissViewController();
    screens.start.presentViewController(screens.make("popover"), Style::Popover);
    QCOMPARE(screens.start.presentationStyleName(), "popover");
  }

  void aPopoverKeepsItsSourceUntilItIsDismissed() {
    TestScreens screens;
    QObject outlet;
    screens.start.presentViewController(screens.make("popover"), Style::Popover, &outlet);
    QCOMPARE(screens.start.popoverSource(), &outlet);
    QObject another;
    screens.start.presentViewController(screens.make("refused"), Style::Popover, &another);
    QCOMPARE(screens.start.popoverSource(), &outlet);
    screens.start.dismissViewController();
    QCOMPARE(screens.start.popoverSource(), nullptr);
  }

  void aScreenCanDismissItself() {
    TestScreens screens;
    const QPointer<Screen> sheet = screens.make("sheet");
    screens.start.presentViewController(sheet, Style::FormSheet);
    const QSignalSpy presented(&screens.start, &ViewController::presentedChanged);
    sheet->dismissViewController();
    QCOMPARE(screens.start.presentedViewController(), nullptr);
    QCOMPARE(sheet->presentingViewController(), nullptr);
    QCOMPARE(presented.size(), 1);
    QTRY_VERIFY(sheet.isNull());
  }

  void dismissingAPresentingScreenFirstDismissesItsPresentation() {
    TestScreens screens;
    auto *sheet = screens.make("sheet");
    auto *popover = screens.make("popover");
    screens.start.presentViewController(sheet, Style::FormSheet);
    sheet->presentViewController(popover, Style::Popover);
    sheet->dismissViewController();
    QCOMPARE(sheet->presentedViewController(), nullptr);
    QCOMPARE(screens.start.presentedViewController(), sheet);
  }

  void dismissingWithoutAPresentationDoesNothing() {
    TestScreens screens;
    const QSignalSpy presented(&screens.start, &ViewController::presentedChanged);
    screens.start.dismissViewController();
    QCOMPARE(presented.size(), 0);
  }

  void aKeptScreenCanBePresentedAgain() {
    TestScreens screens;
    const QPointer<Screen> menu = screens.make("menu");
    menu->keepAfterDismissal();
    screens.start.presentViewController(menu, Style::Popover);
    screens.start.dismissViewController();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!menu.isNull());
    screens.start.presentViewController(menu, Style::Popover);
    QCOMPARE(menu->events(), "loaded appears appears");
  }

  void anOverlayFlipsInAndOut() {
    TestScreens screens;
    auto *summary = screens.make("summary");
    const QSignalSpy overlaid(&screens.start, &ViewController::overlayChanged);
    const QSignalSpy flipped(&screens.start, &ViewController::flipped);
    screens.start.addSubview(summary, Flip::FromLeft);
    QCOMPARE(screens.start.overlay(), summary);
    QCOMPARE(summary->events(), "loaded appears");
    QCOMPARE(flipped.at(0).at(0).value<ViewController *>(), nullptr);
    QCOMPARE(flipped.at(0).at(1).value<ViewController *>(), summary);
    QCOMPARE(flipped.at(0).at(2), true);
    summary->removeFromSuperview(Flip::FromRight);
    QCOMPARE(screens.start.overlay(), nullptr);
    QCOMPARE(overlaid.size(), 2);
    QCOMPARE(flipped.at(1).at(0).value<ViewController *>(), summary);
    QCOMPARE(flipped.at(1).at(1).value<ViewController *>(), nullptr);
    QCOMPARE(flipped.at(1).at(2), false);
  }

  void removingAnOverlayTwiceFlipsOnce() {
    TestScreens screens;
    auto *summary = screens.make("summary");
    screens.start.addSubview(summary, Flip::FromLeft);
    const QSignalSpy flipped(&screens.start, &ViewController::flipped);
    summary->removeFromSuperview(Flip::FromRight);
    summary->removeFromSuperview(Flip::FromRight);
    QCOMPARE(flipped.size(), 1);
  }

  void settingTheFrameIsSignalled() {
    TestScreens screens;
    const QSignalSpy frameChanged(&screens.start, &ViewController::frameChanged);
    QVERIFY(screens.start.frame().isEmpty());
    screens.start.setFrame({10, 20, 300, 400});
    QCOMPARE(screens.start.frame(), QRectF(10, 20, 300, 400));
    QCOMPARE(frameChanged.size(), 1);
  }

  void thePreferredSizeCanBeSet() {
    TestScreens screens;
    QVERIFY(!screens.start.preferredContentSize().isValid());
    screens.start.setPreferredContentSize({320, 200});
    QCOMPARE(screens.start.preferredContentSize(), QSizeF(320, 200));
  }

  void aRefusedScanIsPassedToChildrenAndPresentedScreens() {
    TestScreens screens;
    Screen *child = screens.make("child");
    screens.start.addChildViewController(child);
    const Screen *history = screens.openHistory();
    screens.start.noteRefusedScan(QStringLiteral("77"));
    for (const Screen *screen : {const_cast<const Screen *>(child), history}) {
      QVERIFY2(screen->events().endsWith(QStringLiteral("refused 77")),
               qUtf8Printable(screen->events()));
    }
  }
};

CARTONPICK_TEST(ViewControllerTest);
#include "ViewController_test.moc"
