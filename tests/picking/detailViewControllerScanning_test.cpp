#include "summary/deliveryDetailsViewController.h"
#include "support/StoredArticles.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QSignalSpy>
#include <QTest>

#include <SQLiteCpp/Database.h>

namespace {

const QList<TestLine> kDelivery{{"C1", "A", 5, "29001"},
                                {"C1", "B", 2, "29002"},
                                {"C1", "C", 1, "29003"},
                                {"C2", "D", 4, "29004"}};

const QString kTimeFormat = QStringLiteral("yyyy-MM-dd HH:mm:ss");

QString unknown(const QString &code) {
  return QStringLiteral("Unknown Item|Item ") + code + QStringLiteral(" not found!|OK");
}

LoosePick loosePick() {
  return {.barcode = QStringLiteral("29007"),
          .box = QStringLiteral("7"),
          .datepicked = QDateTime(QDate(2026, 1, 1), QTime(0, 0), QTimeZone::utc()),
          .descr = QStringLiteral("METAL LANTERN"),
          .doc = QStringLiteral("0815"),
          .item = QStringLiteral("X"),
          .ordernum = QStringLiteral("A9"),
          .qty = 4,
          .sent = 1};
}

/// Returns the values of the nine keys of the loose pick at `index`.
QStringList loosePickAt(const TestProgram &program, std::size_t index) {
  const auto &pick = std::get<LoosePick>(program.detail().arrayPick()->at(index));
  return {pick.barcode,
          pick.box,
          pick.datepicked.toString(kTimeFormat),
          pick.descr,
          pick.doc,
          pick.item,
          pick.ordernum,
          QString::number(pick.qty),
          QString::number(pick.sent)};
}

/// A program that is picking the delivery, with the box at index `box` open.
class OpenBox : public TestProgram {
 public:
  explicit OpenBox(int box = 0) {
    enterPicking();
    startPicking(kDelivery);
    master().tblBoxes->touchRow(box);
  }

  /// Adds an article to the catalogue.
  void addArticle(const QString &barcode, const QString &item, const QString &descr) const {
    ::addArticle(storePath(), {barcode, item, descr});
  }

  void changeStore(const char *statement) const {
    SQLite::Database(storePath().toStdString(), SQLite::OPEN_READWRITE).exec(statement);
  }

  [[nodiscard]] std::size_t entries() const { return detail().arrayPick()->size(); }
};

}  // namespace

/// The handling of scanned codes.
class detailViewControllerScanningTest : public QObject {
  Q_OBJECT

 private slots:
  void withoutAnOpenBoxAScanStaysInTheField() {
    TestProgram program;
    program.enterPicking();
    program.startPicking(kDelivery);
    QVERIFY(program.detail().txtBarcode->takesScans());
    program.scan(QStringLiteral("29001"));
    QCOMPARE(program.detail().txtBarcode->text(), "29001");
    QVERIFY(!program.detail().textFieldShouldReturn(*program.detail().txtBarcode));
    QCOMPARE(program.keypad(), nullptr);
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(program.sounds->played().empty());
    QCOMPARE(program.detail().arrayPick()->size(), 2U);
  }

  void theSignAsksToCloseWhatCoversThePane() {
    TestProgram program;
    program.enterPicking();
    program.startPicking(kDelivery);
    detailViewController &detail = program.detail();
    const auto sign = [&] { return detail.lblScanState->text(); };
    detail.scanStateTouched();
    QCOMPARE(sign(), "Close this first");
    detail.dismissViewController();
    QCOMPARE(sign(), "Open a box first");
    program.master().tblBoxes->touchRow(0);
    QCOMPARE(sign(), "Ready to scan");
    detail.btnOptionsTouched();
    QCOMPARE(sign(), "Close this first");
    QCOMPARE(detail.lblScanState->textColor(), Colour::grey);
    detail.dismissViewController();
    QCOMPARE(sign(), "Ready to scan");
    QCOMPARE(detail.lblScanState->textColor(), Colour::green);
    detail.showDeliveryDetailsViewController();
    QCOMPARE(sign(), "Close this first");
    detail.deliveryDetailsVC()->btnCloseTouched();
    QCOMPARE(sign(), "Ready to scan");
    detail.tblItems->touchRow(0);
    QCOMPARE(sign(), "Close this first");
    program.keypad()->btnCancelTouched();
    QCOMPARE(sign(), "Ready to scan");
  }

  void theSignDrawsAttentionOnlyWithoutAnOpenBox() {
    TestProgram program;
    program.enterPicking();
    program.startPicking(kDelivery);
    const QSignalSpy attention(program.detail().lblScanState, &Label::attentionDrawn);
    QCOMPARE(program.detail().lblScanState->text(), "Open a box first");
    program.scan(QStringLiteral("29001"));
    QCOMPARE(attention.count(), 1);
    program.master().tblBoxes->touchRow(0);
    program.scan(QStringLiteral("29001"));
    QCOMPARE(attention.count(), 1);
  }

  void aScanSwitchesTheFilterToAllLines() {
    TestProgram program;
    program.enterPicking();
    program.startPicking(kDelivery);
    program.detail().segmentedControl->touchSegment(2);
    program.scan(QStringLiteral("29001"));
    QCOMPARE(program.detail().segmentedControl->selectedSegmentIndex(), 0);
  }

  void returnInAnotherFieldScansNothing() {
    OpenBox program;
    program.detail().txtBarcode->edit(QStringLiteral("29001"));
    QVERIFY(program.detail().textFieldShouldReturn(*program.detail().txtQuantity));
    QCOMPARE(program.keypad(), nullptr);
    QCOMPARE(program.detail().txtBarcode->text(), "29001");
    program.master().btnPickingTouched();
    QVERIFY(!program.detail().textFieldShouldReturn(*program.detail().txtQuantity));
  }

  void theCodeOfALineOpensTheKeypadForThatLine_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("row");
    QTest::newRow("a barcode") << QStringLiteral("29002") << 1;
    QTest::newRow("an item code") << QStringLiteral("B") << 1;
    QTest::newRow("the first line") << QStringLiteral("A") << 0;
    QTest::newRow("the last line") << QStringLiteral("29003") << 2;
  }
  void theCodeOfALineOpensTheKeypadForThatLine() {
    QFETCH(QString, code);
    QFETCH(int, row);
    OpenBox program;
    program.detail().txtBarcode->edit(code);
    QVERIFY(program.detail().textFieldShouldReturn(*program.detail().txtBarcode));
    QVERIFY(program.keypad() != nullptr);
    QCOMPARE(program.keypad()->row(), row);
    QCOMPARE(program.detail().txtBarcode->text(), QString());
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(program.sounds->played().empty());
    QCOMPARE(program.entries(), 2U);
  }

  void theFirstLineWithTheBarcodeOrItemCodeWins_data() {
    QTest::addColumn<QList<TestLine>>("lines");
    QTest::newRow("as an item code") << QList<TestLine>{{"C1", "77", 1, "1"}, {"C1", "2", 1, "77"}};
    QTest::newRow("as a barcode") << QList<TestLine>{{"C1", "2", 1, "77"}, {"C1", "77", 1, "1"}};
    QTest::newRow("two equal lines") << QList<TestLine>{{"C1", "77", 1, "1"}, {"C1", "77", 1, "1"}};
  }
  void theFirstLineWithTheBarcodeOrItemCodeWins() {
    QFETCH(QList<TestLine>, lines);
    TestProgram program;
    program.enterPicking();
    program.startPicking(lines);
    program.master().tblBoxes->touchRow(0);
    program.scan(QStringLiteral("77"));
    QCOMPARE(program.keypad()->row(), 0);
  }

  void codesAreComparedExactly_data() {
    QTest::addColumn<QString>("code");
    QTest::newRow("leading space") << QStringLiteral(" 29001");
    QTest::newRow("trailing space") << QStringLiteral("29001 ");
    QTest::newRow("other case") << QStringLiteral("a");
    QTest::newRow("prefix") << QStringLiteral("2900");
    QTest::newRow("a line of another box") << QStringLiteral("29004");
    QTest::newRow("quotes and percent signs") << QStringLiteral("'; DROP TABLE Items; -- %1 %2");
    QTest::newRow("beyond the Basic Multilingual Plane") << QStringLiteral("\U0001F4E6");
    QTest::newRow("empty") << QString();
  }
  void codesAreComparedExactly() {
    QFETCH(QString, code);
    OpenBox program;
    program.detail().txtBarcode->edit(code);
    QVERIFY(!program.detail().textFieldShouldReturn(*program.detail().txtBarcode));
    QCOMPARE(textsOf(program.environment.alerts), QStringList(unknown(code)));
    QCOMPARE(program.keypad(), nullptr);
  }

  void anUnknownCodePlaysTheErrorToneAndChangesNothing() {
    OpenBox program;
    program.scan(QStringLiteral("00000"));
    QCOMPARE(program.sounds->played(), std::vector<int>{1005});
    QVERIFY(!program.topAlert().delegate);
    QCOMPARE(program.detail().txtBarcode->text(), QString());
    QCOMPARE(program.entries(), 2U);
    QVERIFY(!program.context().hasChanges());
    QVERIFY(program.context().pickings(QStringLiteral("4711"))->empty());
    program.answerTopAlert(0);
    QCOMPARE(program.environment.alerts.count(), 0);
  }

  void anUnknownCodeUnderAFilterDoesNotReloadTheTable() {
    OpenBox program;
    program.enterQuantity(0, QStringLiteral("5"));
    program.detail().segmentedControl->touchSegment(1);
    QCoreApplication::processEvents();
    const QSignalSpy redrawn(program.detail().tblItems, &TableView::dataChanged);
    program.scan(QStringLiteral("00000"));
    QCoreApplication::processEvents();
    QCOMPARE(program.detail().segmentedControl->selectedSegmentIndex(), 0);
    QCOMPARE(program.detail().tblItems->rowCount(), 2);
    QCOMPARE(redrawn.size(), 0);
  }

  void aScanUsesTheRowsOfTheUnfilteredList() {
    OpenBox program;
    program.enterQuantity(0, QStringLiteral("5"));
    program.detail().segmentedControl->touchSegment(1);
    QCOMPARE(program.detail().tblItems->rowCount(), 2);
    program.scan(QStringLiteral("29003"));
    QCOMPARE(program.detail().segmentedControl->selectedSegmentIndex(), 0);
    QCOMPARE(program.detail().tblItems->rowCount(), 3);
    QCOMPARE(program.keypad()->row(), 2);
    QCOMPARE(program.keypad()->lblItemCode->text(), "C");
  }

  void scanningALoosePickAgainAppendsACopy_data() {
    QTest::addColumn<QString>("code");
    QTest::newRow("its barcode") << QStringLiteral("29007");
    QTest::newRow("its item code") << QStringLiteral("X");
  }
  void scanningALoosePickAgainAppendsACopy() {
    QFETCH(QString, code);
    OpenBox program;
    program.detail().arrayPick()->emplace_back(loosePick());
    program.scan(code);
    QCOMPARE(program.entries(), 4U);
    QCOMPARE(loosePickAt(program, 3), QStringList({"29007", "7", "2026-03-02 08:12:05",
                                                   "METAL LANTERN", "0815", "X", "A9", "0", "0"}));
    QCOMPARE(loosePickAt(program, 2).last(2), QStringList({"4", "1"}));
    QCOMPARE(program.keypad()->row(), 2);
    QCOMPARE(program.detail().txtBarcode->text(), QString());
    QVERIFY(program.sounds->played().empty());
  }

  void theFirstOfSeveralLoosePicksIsCopied() {
    OpenBox program;
    LoosePick first = loosePick();
    first.box = QStringLiteral("first");
    program.detail().arrayPick()->emplace_back(first);
    program.detail().arrayPick()->emplace_back(loosePick());
    program.scan(QStringLiteral("X"));
    QCOMPARE(loosePickAt(program, 4).at(1), "first");
  }

  void aLineOfTheOpenBoxTakesPrecedenceOverALoosePick() {
    OpenBox program;
    LoosePick loose = loosePick();
    loose.item = QStringLiteral("B");
    program.detail().arrayPick()->emplace_back(loose);
    program.scan(QStringLiteral("B"));
    QCOMPARE(program.keypad()->row(), 1);
    QCOMPARE(program.entries(), 3U);
  }

  void aCatalogueCodeBecomesALoosePick_data() {
    QTest::addColumn<QString>("code");
    QTest::newRow("its barcode") << QStringLiteral("29009");
    QTest::newRow("its item code") << QStringLiteral("Y");
  }
  void aCatalogueCodeBecomesALoosePick() {
    QFETCH(QString, code);
    OpenBox program;
    program.addArticle(QStringLiteral("29009"), QStringLiteral("Y"), QStringLiteral("CREAM MUG"));
    program.restartPickingAs(QStringLiteral("the pane's"));
    program.scan(code);
    QCOMPARE(program.entries(), 3U);
    QCOMPARE(loosePickAt(program, 2), QStringList({"29009", "1", "2026-03-02 08:12:05", "CREAM MUG",
                                                   "the pane's", "Y", "", "0", "0"}));
    QCOMPARE(program.keypad()->row(), 2);
    QCOMPARE(program.detail().txtBarcode->text(), QString());
    QVERIFY(program.sounds->played().empty());
    QVERIFY(!program.context().hasChanges());
  }

  void aCatalogueCodeGetsTheOrderNumberOfTheFirstEntry() {
    OpenBox program;
    program.addArticle(QStringLiteral("29009"), QStringLiteral("Y"), QStringLiteral("CREAM MUG"));
    program.detail().arrayPick()->insert(program.detail().arrayPick()->begin(), loosePick());
    program.session().openBox(1);
    program.scan(QStringLiteral("Y"));
    QCOMPARE(loosePickAt(program, 3).at(6), "A9");
  }

  void theFirstStoredOfTwoArticlesWithTheSameCodeIsUsed() {
    OpenBox program;
    program.addArticle(QStringLiteral("29009"), QStringLiteral("Y"), QStringLiteral("FIRST"));
    program.addArticle(QStringLiteral("29009"), QStringLiteral("Y"), QStringLiteral("SECOND"));
    program.scan(QStringLiteral("29009"));
    QCOMPARE(loosePickAt(program, 2).at(3), "FIRST");
  }

  void aCodeScannedTwiceIsReadFromTheCatalogueOnce() {
    OpenBox program;
    program.addArticle(QStringLiteral("29009"), QStringLiteral("Y"), QStringLiteral("CREAM MUG"));
    program.scan(QStringLiteral("29009"));
    program.keypad()->btnCancelTouched();
    program.changeStore("DELETE FROM Items");
    program.clock->set(program.clock->now().addSecs(60));
    program.scan(QStringLiteral("29009"));
    QCOMPARE(program.entries(), 4U);
    QCOMPARE(loosePickAt(program, 3).at(1), "1");
    QCOMPARE(loosePickAt(program, 3).at(2), "2026-03-02 08:13:05");
    QCOMPARE(loosePickAt(program, 2).at(2), "2026-03-02 08:12:05");
    QCOMPARE(program.environment.alerts.count(), 0);
  }

  void theQuantityOfALoosePickIsBookedToTheLastLine() {
    OpenBox program;
    program.addArticle(QStringLiteral("29009"), QStringLiteral("Y"), QStringLiteral("CREAM MUG"));
    program.scan(QStringLiteral("29009"));
    QCOMPARE(program.keypad()->lblItemCode->text(), "C");
    program.keypad()->txtNewQty->edit(QStringLiteral("6"));
    program.keypad()->btnOKTouched();
    const auto rows = program.context().pickings(QStringLiteral("4711"));
    QCOMPARE(rows->size(), 1U);
    QCOMPARE(rows->front().item, "C");
    QCOMPARE(rows->front().pickqty, 6);
  }

  void aScannedLoosePickHasNoRow() {
    OpenBox program;
    program.detail().arrayPick()->emplace_back(loosePick());
    program.scan(QStringLiteral("X"));
    QCOMPARE(program.detail().tblItems->rowCount(), 3);
  }

  void withAnUnreadableCatalogueACodeIsUnknown() {
    OpenBox program;
    program.changeStore("ALTER TABLE Items RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Items");
    program.scan(QStringLiteral("29009"));
    QCOMPARE(textsOf(program.environment.alerts), QStringList(unknown(QStringLiteral("29009"))));
    QCOMPARE(program.sounds->played(), std::vector<int>{1005});
  }

  void anEmptyFieldFindsNoArticleWithoutABarcode() {
    OpenBox program;
    program.addArticle(QString(), QStringLiteral("Y"), QStringLiteral("CREAM MUG"));
    program.scan(QStringLiteral("Y"));
    program.keypad()->btnCancelTouched();
    QVERIFY(std::get<LoosePick>(program.detail().arrayPick()->at(2)).barcode.isNull());
    program.detail().txtBarcode->pressReturn();
    QCOMPARE(textsOf(program.environment.alerts), QStringList(unknown(QString())));
    QCOMPARE(program.keypad(), nullptr);
    QCOMPARE(program.entries(), 3U);
  }

  void anEmptyFieldFindsAnArticleWithAnEmptyBarcode() {
    OpenBox program;
    program.addArticle(QStringLiteral(""), QStringLiteral("Y"), QStringLiteral("CREAM MUG"));
    program.detail().txtBarcode->pressReturn();
    QCOMPARE(program.entries(), 3U);
    QCOMPARE(loosePickAt(program, 2).at(5), "Y");
    program.keypad()->btnCancelTouched();
    program.detail().txtBarcode->pressReturn();
    QCOMPARE(program.entries(), 4U);
  }

  void aScanOpensNoKeypadInALoosePickOpenedAsABox() {
    OpenBox program;
    program.detail().arrayPick()->emplace_back(loosePick());
    program.master().txtBox->edit(QStringLiteral("7"));
    program.master().txtBox->pressReturn();
    program.scan(QStringLiteral("X"));
    QCOMPARE(program.keypad(), nullptr);
    QCOMPARE(program.sounds->played(), std::vector<int>{1005});
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(program.entries(), 4U);
    QCOMPARE(program.detail().txtBarcode->text(), QString());
  }

  void aScanOpensNoKeypadInABoxWithoutLines() {
    OpenBox program;
    program.detail().arrayPick()->emplace_back(BoxRecord{QStringLiteral("C3"), 0, 0, {}});
    program.addArticle(QStringLiteral("29009"), QStringLiteral("Y"), QStringLiteral("CREAM MUG"));
    program.master().txtBox->edit(QStringLiteral("C3"));
    program.master().txtBox->pressReturn();
    program.scan(QStringLiteral("Y"));
    QCOMPARE(program.keypad(), nullptr);
    QCOMPARE(program.sounds->played(), std::vector<int>{1005});
  }

  void theNextImportRemovesTheLoosePicks() {
    OpenBox program;
    program.detail().arrayPick()->emplace_back(loosePick());
    program.master().btnPickingTouched();
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(program.entries(), 2U);
  }

  void aRefusedScanIsAddedToTheTrailWithItsTime() {
    const OpenBox program;
    program.delegate.window()->refuseScan(QStringLiteral("77"));
    const Scan scan = program.detail().scanTrail().scans().front();
    QCOMPARE(scan.code, "77");
    QCOMPARE(scan.outcome, ScanOutcome::Refused);
    QCOMPARE(scan.time, QTime(10, 12, 5));
  }
};

CARTONPICK_TEST(detailViewControllerScanningTest);
#include "detailViewControllerScanning_test.moc"
