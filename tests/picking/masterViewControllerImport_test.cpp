#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QTest>

#include <SQLiteCpp/Database.h>
#include <limits>

namespace {

/// A pick of an earlier visit.
Picking earlierPick(const QString &box, const QString &item, int pickqty,
                    const QString &ordernum = QStringLiteral("A1"),
                    const QString &doc = QStringLiteral("4711")) {
  return {.barcode = u'b' + item,
          .box = box,
          .datepicked = QDateTime(QDate(2026, 3, 1), QTime(9, 0), QTimeZone::utc()),
          .descr = QStringLiteral("Description of ") + item,
          .doc = doc,
          .item = item,
          .ordernum = ordernum,
          .orderqty = 9,
          .pickqty = pickqty};
}

/// "box pick/order: item pick/order, …" for each box.
QStringList boxesOf(const TestProgram &program) {
  QStringList boxes;
  for (const PickEntry &entry : program.session().pickList()) {
    QStringList lines;
    for (const BoxLine &line : boxitemsOf(entry)) {
      lines << QStringLiteral("%1 %2/%3").arg(line.item, line.pickqty.text(), line.orderqty.text());
    }
    boxes << QStringLiteral("%1 %2/%3: %4")
                 .arg(boxOf(entry), QString::number(boxpickqtyOf(entry)),
                      QString::number(boxorderqtyOf(entry)), lines.join(QStringLiteral(", ")));
  }
  return boxes;
}

/// "item pick/order" for each item line.
QStringList itemsOf(const TestProgram &program) {
  QStringList items;
  for (const BoxLine &line : *program.detail().arrayItems()) {
    items << QStringLiteral("%1 %2/%3").arg(line.item, line.pickqty.text(), line.orderqty.text());
  }
  return items;
}

/// "key=value" for each text of `line`.
QStringList textsOf(const BoxLine &line) {
  return {line.barcode, line.datepicked, line.descr, line.doc, line.item, line.ordernum};
}

}  // namespace

/// What the answer to a lookup becomes.
class masterViewControllerImportTest : public QObject {
  Q_OBJECT

 private slots:
  void theHeaderShowsTheDelivery() {
    TestProgram program;
    importLines(program, {{"C1", "A", 5}});
    const masterViewController &master = program.master();
    QCOMPARE(::textsOf({master.lblCustomerName, master.lblBrand, master.lblCreationDate,
                        master.lblShipmentDate}),
             QStringList({"Customer: Corner Shop", "Brand: Hearth", "Date Created: 25/03/2026",
                          "Date Shipped: 01/04/2026"}));
    for (const Label *label : {master.lblCustomerName, master.lblBrand, master.lblCreationDate,
                               master.lblShipmentDate}) {
      QVERIFY(!label->isHidden());
    }
  }

  void theHeaderIsThatOfTheFirstElement() {
    TestProgram program;
    importBody(program,
               R"([{"cusname":"First","brand":"One","cdate":"12/31/2025","date":"01/02/2026"},
                            {"cusname":"Second","brand":"Two","cdate":"01/01/2020","date":""}])");
    const masterViewController &master = program.master();
    QCOMPARE(::textsOf({master.lblCustomerName, master.lblBrand, master.lblCreationDate,
                        master.lblShipmentDate}),
             QStringList({"Customer: First", "Brand: One", "Date Created: 31/12/2025",
                          "Date Shipped: 02/01/2026"}));
  }

  void aDateInAnotherFormIsShownAsDelivered() {
    TestProgram program;
    importBody(program, R"([{"cdate":"25.03.2026","date":null}])");
    QCOMPARE(program.master().lblCreationDate->text(), "Date Created: 25.03.2026");
    QCOMPARE(program.master().lblShipmentDate->text(), "Date Shipped: ");
  }

  void aLineCarriesWhatWasDelivered() {
    TestProgram program;
    importLines(program, {{"C1", "A", 5, QStringLiteral("29001")}});
    const QStringList expected{"29001", "01/01/2001", "Description of A", "4711", "A", "A1"};
    QCOMPARE(textsOf(lineOf(program, 0, 0)), expected);
    QCOMPARE(textsOf(program.detail().arrayItems()->at(0)), expected);
    QCOMPARE(itemsOf(program), QStringList("A 0/5"));
    QCOMPARE(boxesOf(program), QStringList("C1 0/5: A 0/5"));
  }

  void anItemInTwoCartonsIsOneItemLineAndTwoBoxes() {
    TestProgram program;
    importLines(program, {{"C1", "A", 5}, {"C2", "A", 2}});
    QCOMPARE(itemsOf(program), QStringList("A 0/7"));
    QCOMPARE(boxesOf(program), QStringList({"C1 0/5: A 0/5", "C2 0/2: A 0/2"}));
  }

  void anItemTwiceInOneCartonIsOneItemLineAndTwoBoxLines() {
    TestProgram program;
    importLines(program, {{"C1", "A", 5}, {"C1", "A", 2}});
    QCOMPARE(itemsOf(program), QStringList("A 0/7"));
    QCOMPARE(boxesOf(program), QStringList("C1 0/7: A 0/5, A 0/2"));
  }

  void anItemLineKeepsWhatItsFirstLineSays() {
    TestProgram program;
    importLines(
        program,
        {{"C1", "A", 5, QStringLiteral("first"), QStringLiteral("4711"), QStringLiteral("A1")},
         {"C1", "A", 2, QStringLiteral("second"), QStringLiteral("4712"), QStringLiteral("A2")}});
    QCOMPARE(textsOf(program.detail().arrayItems()->at(0)),
             QStringList({"first", "01/01/2001", "Description of A", "4711", "A", "A1"}));
  }

  void boxesStandInTheOrderOfTheirFirstLines() {
    TestProgram program;
    importLines(program, {{"C9", "A", 1}, {"C1", "B", 2}, {"C9", "C", 3}, {"C5", "A", 4}});
    QCOMPARE(boxesOf(program),
             QStringList({"C9 0/4: A 0/1, C 0/3", "C1 0/2: B 0/2", "C5 0/4: A 0/4"}));
    QCOMPARE(itemsOf(program), QStringList({"A 0/5", "B 0/2", "C 0/3"}));
  }

  void cartonsAndItemsAreToldApartToTheLetter() {
    TestProgram program;
    importLines(program, {{"C1", "A", 1}, {"c1", "a", 2}, {" C1", "A ", 3}});
    QCOMPARE(boxesOf(program), QStringList({"C1 0/1: A 0/1", "c1 0/2: a 0/2", " C1 0/3: A  0/3"}));
    QCOMPARE(itemsOf(program), QStringList({"A 0/1", "a 0/2", "A  0/3"}));
  }

  void quantitiesMayBeTextsAndStayAsDelivered() {
    TestProgram program;
    importBody(program, R"([{"carton":"C1","item":"A","qty":" 7 pieces"},
                            {"carton":"C1","item":"B","qty":2.5},{"carton":"C1","item":"C"}])");
    QCOMPARE(boxesOf(program), QStringList("C1 0/9: A 0/ 7 pieces, B 0/2.5, C 0/0"));
    QCOMPARE(itemsOf(program), QStringList({"A 0/ 7 pieces", "B 0/2.5", "C 0/0"}));
  }

  void sumsWrapAroundAtTheEndOfTheRange() {
    TestProgram program;
    importLines(program, {{"C1", "A", std::numeric_limits<int>::max()}, {"C1", "A", 1}});
    QCOMPARE(itemsOf(program), QStringList("A 0/-2147483648"));
    QCOMPARE(boxorderqtyOf(program.detail().arrayPick()->at(0)), std::numeric_limits<int>::min());
  }

  void anImportMakesThePickingReady() {
    TestProgram program;
    program.enterPicking();
    program.master().btnPicking->setTitleColor(Colour::red);
    program.master().tblBoxes->setEnabled(true);
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.lookUp(QStringLiteral("4711"));
    QVERIFY(program.master().btnPicking->isEnabled());
    QCOMPARE(program.master().btnPicking->titleColor(), Colour::blue);
    QVERIFY(!program.master().tblBoxes->isEnabled());
    QVERIFY(!program.environment.busy.isActive());
    QCOMPARE(program.master().jsonResult()->doc, "4711");
  }

  void anImportReloadsNoTable() {
    TestProgram program;
    importLines(program, {{"C1", "A", 5}});
    QCOMPARE(program.master().tblBoxes->numberOfRows(), 1);
    QCOMPARE(program.master().tblBoxes->rowCount(), 0);
    QCOMPARE(program.master().lblBoxesTotalValue->text(), "0");
    QCOMPARE(program.detail().tblItems->rowCount(), 0);
  }

  void anImportStoresNothing() {
    TestProgram program;
    importLines(program, {{"C1", "A", 5}});
    QVERIFY(!program.context().hasChanges());
    QVERIFY(program.context().pickings(QStringLiteral("4711"))->empty());
  }

  void earlierPicksComeBack() {
    TestProgram program;
    store(program, {earlierPick(QStringLiteral("C1"), QStringLiteral("B"), 2)});
    importLines(program, {{"C1", "A", 5}, {"C1", "B", 3}, {"C2", "B", 4}});
    QCOMPARE(boxesOf(program), QStringList({"C1 2/8: A 0/5, B 2/3", "C2 0/4: B 0/4"}));
    QCOMPARE(itemsOf(program), QStringList({"A 0/5", "B 2/7"}));
  }

  void anItemLineShowsTheLastPickWhileBoxesShowTheirOwn() {
    TestProgram program;
    store(program, {earlierPick(QStringLiteral("C1"), QStringLiteral("A"), 2),
                    earlierPick(QStringLiteral("C2"), QStringLiteral("A"), 3)});
    importLines(program, {{"C1", "A", 5}, {"C2", "A", 5}});
    QCOMPARE(boxesOf(program), QStringList({"C1 2/5: A 2/5", "C2 3/5: A 3/5"}));
    QCOMPARE(itemsOf(program), QStringList("A 3/10"));
  }

  void aBoxBeyondItsFourthLineComesBackUnpicked() {
    TestProgram program;
    store(program, {earlierPick(QStringLiteral("C1"), QStringLiteral("D"), 4),
                    earlierPick(QStringLiteral("C1"), QStringLiteral("E"), 5)});
    importLines(program, {{"C1", "A", 9},
                          {"C1", "B", 9},
                          {"C1", "C", 9},
                          {"C1", "D", 9},
                          {"C1", "E", 9},
                          {"C1", "F", 9}});
    QCOMPARE(boxesOf(program), QStringList("C1 9/54: A 0/9, B 0/9, C 0/9, D 4/9, E 0/9, F 0/9"));
    QCOMPARE(itemsOf(program).at(4), "E 5/9");
  }

  void aPickOfAnItemThatTheBoxLacksCountsForTheBoxAlone() {
    TestProgram program;
    store(program, {earlierPick(QStringLiteral("C1"), QStringLiteral("X"), 4)});
    importLines(program, {{"C1", "A", 9}});
    QCOMPARE(boxesOf(program), QStringList("C1 4/9: A 0/9"));
    QCOMPARE(itemsOf(program), QStringList("A 0/9"));
  }

  void aPickOfABoxThatIsGoneCountsForTheItemAlone() {
    TestProgram program;
    store(program, {earlierPick(QStringLiteral("C7"), QStringLiteral("A"), 4)});
    importLines(program, {{"C1", "A", 9}});
    QCOMPARE(boxesOf(program), QStringList("C1 0/9: A 0/9"));
    QCOMPARE(itemsOf(program), QStringList("A 4/9"));
  }

  void ofTwoLinesOfAnItemTheFirstTakesThePick() {
    TestProgram program;
    store(program, {earlierPick(QStringLiteral("C1"), QStringLiteral("A"), 4)});
    importLines(program, {{"C1", "A", 5}, {"C1", "A", 2}});
    QCOMPARE(boxesOf(program), QStringList("C1 4/7: A 4/5, A 0/2"));
  }

  void onlyThePicksOfTheFirstOrderNumberComeBack() {
    TestProgram program;
    const QString second = QStringLiteral("A2");
    store(program, {earlierPick(QStringLiteral("C1"), QStringLiteral("A"), 1),
                    earlierPick(QStringLiteral("C1"), QStringLiteral("B"), 2, second)});
    importLines(program, {{"C1", "A", 5}, {"C1", "B", 5, {}, QStringLiteral("4711"), second}});
    QCOMPARE(boxesOf(program), QStringList("C1 1/10: A 1/5, B 0/5"));
    QCOMPARE(itemsOf(program), QStringList({"A 1/5", "B 0/5"}));
  }

  void picksOfAnotherDeliveryDoNotComeBack() {
    TestProgram program;
    store(program, {earlierPick(QStringLiteral("C1"), QStringLiteral("A"), 1, QStringLiteral("A1"),
                                QStringLiteral("4712"))});
    importLines(program, {{"C1", "A", 5}});
    QCOMPARE(boxesOf(program), QStringList("C1 0/5: A 0/5"));
  }

  void sentPicksComeBackToo() {
    TestProgram program;
    Picking sent = earlierPick(QStringLiteral("C1"), QStringLiteral("A"), 1);
    sent.sent = 1;
    store(program, {sent});
    importLines(program, {{"C1", "A", 5}});
    QCOMPARE(boxesOf(program), QStringList("C1 1/5: A 1/5"));
  }

  void searchingAgainRebuildsTheListsWithoutDuplicates() {
    TestProgram program;
    importLines(program, {{"C1", "A", 5}, {"C2", "B", 2}});
    const auto boxesBefore = program.detail().arrayPick();
    const auto itemsBefore = program.detail().arrayItems();
    store(program, {earlierPick(QStringLiteral("C2"), QStringLiteral("B"), 1)});
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(boxesOf(program), QStringList({"C1 0/5: A 0/5", "C2 1/2: B 1/2"}));
    QCOMPARE(itemsOf(program), QStringList({"A 0/5", "B 1/2"}));
    QVERIFY(program.detail().arrayPick() != boxesBefore);
    QVERIFY(program.detail().arrayItems() != itemsBefore);
  }

  void whatWasPickedComesBackInTheNextVisit() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}});
    program.master().tblBoxes->touchRow(0);
    program.enterQuantity(0, QStringLiteral("3"));
    program.master().btnPickingTouched();
    program.master().performSegueWithIdentifier(QStringLiteral("returnFromPickingToStart"));
    program.answerTopAlert(0);
    importLines(program, {{"C1", "A", 5}});
    QCOMPARE(boxesOf(program), QStringList("C1 3/5: A 3/5"));
  }

  void whereTheStoreCannotBeReadThePickingIsNotReady() {
    TestProgram program;
    program.enterPicking();
    SQLite::Database(program.storePath().toStdString(), SQLite::OPEN_READWRITE)
        .exec("ALTER TABLE Picking RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.master().txtDeliveryNo->edit(QStringLiteral("4711"));
    program.master().btnSearchOrderNoTouched();
    QTRY_VERIFY(program.detail().arrayPick() != nullptr);
    QCOMPARE(boxesOf(program), QStringList("C1 0/5: A 0/5"));
    QCOMPARE(itemsOf(program), QStringList("A 0/5"));
    QVERIFY(!program.master().lblCustomerName->isHidden());
    QVERIFY(program.master().activityIndicator->isAnimating());
    QVERIFY(!program.master().btnPicking->isEnabled());
    QVERIFY(program.master().connectionDict().isEmpty());
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(!program.environment.busy.isActive());
  }

  void aPickingThatWasReadyIsNotOnceTheStoreCannotBeRead() {
    TestProgram program;
    importLines(program, {{"C1", "A", 5}});
    QVERIFY(program.master().btnPicking->isEnabled());
    SQLite::Database(program.storePath().toStdString(), SQLite::OPEN_READWRITE)
        .exec("ALTER TABLE Picking RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    program.master().btnSearchOrderNoTouched();
    QTRY_VERIFY(!program.environment.busy.isActive());
    QVERIFY(!program.master().btnPicking->isEnabled());
  }

 private:
  static void importBody(TestProgram &program, const QByteArray &body) {
    program.enterPicking();
    program.service.answerWith(body);
    program.lookUp(QStringLiteral("4711"));
  }

  static void importLines(TestProgram &program, const QList<TestLine> &lines) {
    importBody(program, deliveryJson(lines));
  }

  static void store(TestProgram &program, const std::vector<Picking> &picks) {
    for (const Picking &pick : picks) {
      program.context().insert(pick);
    }
    QVERIFY(!program.context().save());
  }

  static const BoxLine &lineOf(const TestProgram &program, std::size_t box, std::size_t line) {
    return boxitemsOf(program.detail().arrayPick()->at(box)).at(line);
  }
};

CARTONPICK_TEST(masterViewControllerImportTest);
#include "masterViewControllerImport_test.moc"
