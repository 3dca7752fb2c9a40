#include "support/Picture.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QAnimationDriver>
#include <QColor>
#include <QTest>
#include <QVariantAnimation>

namespace {

const QString kClose = QStringLiteral("deliveryDetailsViewController/btnClose");

/// The clock of all animations. Only the test moves it.
class AnimationClock : public QAnimationDriver {
 public:
  AnimationClock() {
    install();
    // Without a running animation, Qt would use the system's time until the next one starts.
    m_endless.setStartValue(0);
    m_endless.setEndValue(1);
    m_endless.setLoopCount(-1);
    m_endless.start();
  }
  ~AnimationClock() override {
    m_endless.stop();
    uninstall();
  }
  AnimationClock(const AnimationClock &) = delete;
  AnimationClock &operator=(const AnimationClock &) = delete;

  [[nodiscard]] qint64 elapsed() const override { return m_milliseconds; }
  void moveTo(qint64 milliseconds) {
    m_milliseconds = milliseconds;
    advance();
  }

 private:
  qint64 m_milliseconds = 0;
  QVariantAnimation m_endless;
};

/// A window with an open box, whose animations are at the time of the test's clock.
class FlippingWindow : public TestWindow {
 public:
  FlippingWindow() { openBox({{"C1", "A", 5}}); }

  void openSummary() {
    touch(QStringLiteral("btnOptions"));
    touch(QStringLiteral("tableViewRow0"));
    m_start = m_clock.elapsed();
  }
  void closeSummary() {
    touch(kClose);
    m_start = m_clock.elapsed();
  }
  /// The window `milliseconds` after the start of the flip.
  QImage frameAt(int milliseconds) {
    m_clock.moveTo(m_start + milliseconds);
    return Picture(*this).pixels();
  }

 private:
  AnimationClock m_clock;
  qint64 m_start = 0;
};

/// The height of the dark header of the pick table at `x`.
int headerHeight(const QImage &frame, int x) {
  QList<int> dark;
  for (int y = 0; y < frame.height(); ++y) {
    if (frame.pixelColor(x, y) == QColor("#35424f")) {
      dark.append(y);
    }
  }
  return dark.isEmpty() ? 0 : dark.last() - dark.first() + 1;
}

/// The side of the turned detail pane that is nearer to the user, and so drawn larger.
QString nearSide(const QImage &frame) {
  QList<int> heights;
  // Right of the master pane.
  for (int x = 440; x < frame.width(); ++x) {
    if (const int height = headerHeight(frame, x); height > 0) {
      heights.append(height);
    }
  }
  const int left = heights.value(heights.size() / 10);
  const int right = heights.value(heights.size() * 9 / 10);
  return left > right ? QStringLiteral("left") : left < right ? QStringLiteral("right") : "none";
}

}  // namespace

/// The flip that lays a summary over a screen and takes it away.
class FlipUiTest : public QObject {
  Q_OBJECT

 private slots:
  void aSummaryFlipsInFromTheLeft() {
    FlippingWindow ui;
    ui.openSummary();
    QCOMPARE(nearSide(ui.frameAt(0)), "none");
    QCOMPARE(nearSide(ui.frameAt(200)), "left");
    QCOMPARE(nearSide(ui.frameAt(600)), "right");
    QCOMPARE(nearSide(ui.frameAt(800)), "none");
  }

  void aSummaryFlipsOutFromTheRight() {
    FlippingWindow ui;
    ui.openSummary();
    ui.frameAt(800);
    ui.closeSummary();
    QCOMPARE(nearSide(ui.frameAt(200)), "right");
    QCOMPARE(nearSide(ui.frameAt(600)), "left");
    QCOMPARE(nearSide(ui.frameAt(800)), "none");
  }

  void aFlipTakesEightTenthsOfASecond() {
    FlippingWindow ui;
    ui.openSummary();
    ui.frameAt(799);
    QVERIFY(!ui.isEnabled(kClose));
    ui.frameAt(800);
    QVERIFY(ui.isEnabled(kClose));
    ui.closeSummary();
    ui.frameAt(799);
    QVERIFY(!ui.isEnabled("txtBarcode"));
    ui.frameAt(800);
    QVERIFY(ui.isEnabled("txtBarcode"));
  }

  void theSummaryAppearsHalfwayThroughTheFlip() {
    FlippingWindow ui;
    ui.openSummary();
    ui.frameAt(399);
    QVERIFY(!ui.shows(kClose));
    ui.frameAt(400);
    QVERIFY(ui.shows(kClose));
  }

  void everyFrameOfAFlipIsDifferent() {
    FlippingWindow ui;
    ui.openSummary();
    QList<QImage> frames;
    for (const int time : {0, 100, 200, 300, 500, 600, 700, 800}) {
      const QImage frame = ui.frameAt(time);
      QVERIFY2(!frames.contains(frame), qPrintable(QString::number(time)));
      frames.append(frame);
    }
  }
};

CARTONPICK_WINDOW_TEST(FlipUiTest);
#include "FlipUi_test.moc"
