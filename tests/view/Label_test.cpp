#include "view/outlets/Label.h"

#include "support/TestClass.h"

#include <QSignalSpy>
#include <QTest>

class LabelTest : public QObject {
  Q_OBJECT

 private slots:
  void aNewLabelIsEmptyBlackAndVisible() {
    const Label label("lblBrand", nullptr);
    QCOMPARE(label.objectName(), "lblBrand");
    QCOMPARE(label.text(), QString());
    QCOMPARE(label.textColorName(), "black");
    QVERIFY(!label.isHidden());
  }

  void changesAreSignalled() {
    Label label("lblBrand", nullptr);
    const QSignalSpy changed(&label, &Label::changed);
    label.setText(QStringLiteral("Brand: Hearth"));
    QCOMPARE(changed.size(), 1);
    label.setTextColor(Colour::red);
    QCOMPARE(changed.size(), 2);
    label.setHidden(true);
    QCOMPARE(changed.size(), 3);
    QCOMPARE(label.property("text"), "Brand: Hearth");
    QCOMPARE(label.property("textColor"), "red");
    QCOMPARE(label.property("hidden"), true);
  }

  void settingTheSameValueIsNotSignalled() {
    Label label("lblBrand", nullptr);
    label.setText(QStringLiteral("7"));
    const QSignalSpy changed(&label, &Label::changed);
    label.setText(QStringLiteral("7"));
    label.setTextColor(Colour::black);
    label.setHidden(false);
    QCOMPARE(changed.size(), 0);
  }
};

CARTONPICK_TEST(LabelTest);
#include "Label_test.moc"
