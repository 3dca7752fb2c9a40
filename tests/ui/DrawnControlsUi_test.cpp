#include "support/Picture.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QTest>

namespace {

const QList<TestLine> kLines{{"C1", "A", 5}};

/// The colours of the ground and the title of `button`.
QStringList coloursOf(const TestWindow &ui, const QString &button) {
  const Picture picture(ui, button);
  const Picture inner = picture.part(picture.pixels().rect().adjusted(6, 6, -6, -6));
  return {inner.ground(), inner.ink()};
}

const QStringList kDisabled{"#f1f4f8", "#606c78"};
const QStringList kFilledBlue{"#1550b8", "#ffffff"};
const QStringList kFilledRed{"#a81e19", "#ffffff"};
const QStringList kBlueOnWhite{"#ffffff", "#1550b8"};

}  // namespace

/// What buttons and keys look like in the light theme.
class DrawnControlsUiTest : public QObject {
  Q_OBJECT

 private slots:
  void thePickingButtonIsGreyThenBlueThenRed() {
    TestWindow ui;
    ui.enterPicking();
    QTRY_COMPARE(coloursOf(ui, "btnPicking"), kDisabled);
    ui.lookUp(kLines);
    QTRY_COMPARE(coloursOf(ui, "btnPicking"), kFilledBlue);
    ui.touch("btnPicking");
    QTRY_COMPARE(coloursOf(ui, "btnPicking"), kFilledRed);
    ui.touch("btnPicking");
    QTRY_COMPARE(coloursOf(ui, "btnPicking"), kFilledBlue);
  }

  void theOptionsAreBlueOnlyDuringAPicking() {
    TestWindow ui;
    ui.enterPicking();
    QTRY_COMPARE(coloursOf(ui, "btnOptions"), kDisabled);
    ui.lookUp(kLines);
    ui.touch("btnPicking");
    QTRY_COMPARE(coloursOf(ui, "btnOptions"), kBlueOnWhite);
    ui.touch("btnPicking");
    QTRY_COMPARE(coloursOf(ui, "btnOptions"), kDisabled);
  }

  void digitKeysHaveAThickBlackBorderAndTheMinusKeyAThinOne() {
    TestWindow ui;
    ui.openBox(kLines);
    ui.openKeypad();
    ui.settle();
    for (int digit = 0; digit <= 9; ++digit) {
      const Picture key(ui, QStringLiteral("btn%1").arg(digit));
      QCOMPARE(key.topBorder("#131c26"), 3);
    }
    QCOMPARE(Picture(ui, "btnNegative").topBorder("#131c26"), 1);
  }
};

CARTONPICK_WINDOW_TEST(DrawnControlsUiTest);
#include "DrawnControlsUi_test.moc"
