#include "picking/boxOverviewTableViewCell.h"

#include "support/TestClass.h"

#include <QMetaProperty>
#include <QTest>

class boxOverviewTableViewCellTest : public QObject {
  Q_OBJECT

 private slots:
  void hasTheLabelsOfThePickTable() {
    const QMetaObject &meta = boxOverviewTableViewCell::staticMetaObject;
    for (const char *label : {"item", "barcode", "descr", "orderqty", "pickqty", "diffqty"}) {
      QVERIFY2(meta.indexOfProperty(label) >= 0, label);
    }
  }

  void labelsAreEmptyAtFirst() {
    const boxOverviewTableViewCell cell;
    for (const CellLabel *label :
         {&cell.item, &cell.barcode, &cell.descr, &cell.orderqty, &cell.pickqty, &cell.diffqty}) {
      QCOMPARE(label->text, QString());
    }
  }
};

CARTONPICK_TEST(boxOverviewTableViewCellTest);
#include "boxOverviewTableViewCell_test.moc"
