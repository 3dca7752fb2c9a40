#include "view/outlets/CellLabel.h"

#include "support/TestClass.h"

#include <QTest>

class CellLabelTest : public QObject {
  Q_OBJECT

 private slots:
  void qmlCanReadTheTextAndTheColourName() {
    const CellLabel label{QStringLiteral("-4"), Colour::red};
    const QMetaObject &type = CellLabel::staticMetaObject;
    QCOMPARE(type.property(type.indexOfProperty("text")).readOnGadget(&label), "-4");
    QCOMPARE(type.property(type.indexOfProperty("textColor")).readOnGadget(&label), "red");
  }

  void aDefaultLabelIsEmptyAndBlack() {
    const CellLabel label;
    QCOMPARE(label.text, QString());
    QCOMPARE(label.textColorName(), "black");
  }
};

CARTONPICK_TEST(CellLabelTest);
#include "CellLabel_test.moc"
