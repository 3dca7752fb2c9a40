#include "view/outlets/Button.h"

#include "support/TestClass.h"

#include <QSignalSpy>
#include <QTest>

class ButtonTest : public QObject {
  Q_OBJECT

 private slots:
  void aNewButtonIsBlueAndEnabled() {
    const Button button("btnPicking", nullptr);
    QCOMPARE(button.objectName(), "btnPicking");
    QCOMPARE(button.titleColorName(), "blue");
    QVERIFY(button.isEnabled());
    QCOMPARE(button.borderWidth(), 0.0);
  }

  void changesAreSignalled() {
    Button button("btnPicking", nullptr);
    const QSignalSpy changed(&button, &Button::changed);
    button.setTitle(QStringLiteral("Stop Picking"));
    QCOMPARE(changed.size(), 1);
    button.setTitleColor(Colour::red);
    QCOMPARE(changed.size(), 2);
    button.setEnabled(false);
    QCOMPARE(changed.size(), 3);
    button.setBorderWidth(1.0);
    QCOMPARE(changed.size(), 4);
    QCOMPARE(button.property("title"), "Stop Picking");
    QCOMPARE(button.property("titleColor"), "red");
    QCOMPARE(button.property("enabled"), false);
    QCOMPARE(button.property("borderWidth"), 1.0);
  }

  void settingTheSameValueIsNotSignalled() {
    Button button("btnPicking", nullptr);
    const QSignalSpy changed(&button, &Button::changed);
    button.setTitle({});
    button.setTitleColor(Colour::blue);
    button.setEnabled(true);
    QCOMPARE(changed.size(), 0);
  }
};

CARTONPICK_TEST(ButtonTest);
#include "Button_test.moc"
