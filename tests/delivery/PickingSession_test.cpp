#include "delivery/PickingSession.h"

#include "delivery/Delivery.h"
#include "delivery/PickingRules.h"
#include "store/TemporaryStore.h"
#include "support/StoredArticles.h"
#include "support/TestClass.h"
#include "support/TestEnvironment.h"

#include <QSignalSpy>
#include <QTest>

namespace {

OrderLine lineOf(const QString &carton, const QString &item, int qty) {
  return {QStringLiteral("4711"), QStringLiteral("A1"), item, u'b' + item, {}, carton, qty};
}

/// A session with a delivery of two boxes, on a store in a temporary folder.
struct TestSession {
  TestSession() {
    session.setManagedObjectContext(&context);
    session.setJsonResult(JsonResult{QStringLiteral("4711")});
    isImported = session.importDelivery(delivery);
  }

  /// Starts a picking and opens its first box.
  void openFirstBox() {
    session.start();
    session.openBox(0);
  }
  /// Stores `pick` with a quantity of 7.
  void addPick(Picking pick) {
    pick.pickqty = 7;
    context.insert(pick);
    QVERIFY(!context.save());
  }
  [[nodiscard]] BoxRecord box(std::size_t index) const {
    return std::get<BoxRecord>(session.pickList().at(index));
  }
  /// Returns "box item pick" for each stored pick of the delivery.
  [[nodiscard]] QStringList stored() {
    QStringList rows;
    const auto picks = context.pickings(QStringLiteral("4711"));
    for (const Picking &pick : picks.value_or(std::vector<Picking>())) {
      rows << QStringLiteral("%1 %2 %3").arg(pick.box, pick.item).arg(pick.pickqty);
    }
    return rows;
  }

  const Delivery delivery{{},
                          {},
                          {},
                          {},
                          {lineOf(QStringLiteral("C1"), QStringLiteral("A"), 5),
                           lineOf(QStringLiteral("C1"), QStringLiteral("B"), 2),
                           lineOf(QStringLiteral("C1"), QStringLiteral("A"), 3),
                           lineOf(QStringLiteral("C2"), QStringLiteral("A"), 4)}};
  TemporaryStore store;
  ManagedObjectContext context{store.open()};
  TestClock clock;
  PickingSession session{clock};
  bool isImported = false;
};

}  // namespace

class PickingSessionTest : public QObject {
  Q_OBJECT

 private slots:
  void withoutADeliveryTheListsAreEmptyAndNoBoxIsOpen() {
    const TestClock clock;
    const PickingSession session(clock);
    QVERIFY(session.pickList().empty());
    QVERIFY(session.openBoxLines().empty());
    QCOMPARE(session.curBoxIndex(), -1);
    QCOMPARE(session.openEntry(), nullptr);
    QCOMPARE(session.boxCounters().total, 0U);
  }

  void anImportBuildsBothListsAndWritesNothing() {
    TestSession test;
    QVERIFY(test.isImported);
    QCOMPARE(test.session.arrayItems()->size(), 2U);
    QCOMPARE(test.session.pickList().size(), 2U);
    QVERIFY(!test.context.hasChanges());
    QCOMPARE(test.stored(), QStringList());
  }

  void aSecondImportReplacesBothListsAndRestoresPickedQuantities() {
    TestSession test;
    test.openFirstBox();
    test.session.bookQuantity(1, false, 0, 2);
    const auto boxes = test.session.arrayPick();
    const auto items = test.session.arrayItems();
    QVERIFY(test.session.importDelivery(test.delivery));
    QVERIFY(test.session.arrayPick() != boxes);
    QVERIFY(test.session.arrayItems() != items);
    QCOMPARE(test.session.pickList().size(), 2U);
    QCOMPARE(test.session.arrayItems()->size(), 2U);
    QCOMPARE(test.box(0).boxitems.at(1).pickqty.value(), 2);
    QCOMPARE(test.box(0).boxpickqty, 2);
    QCOMPARE(test.session.arrayItems()->at(1).pickqty.value(), 2);
  }

  void onlyPicksOfTheFirstLinesOrderAreRestoredWhetherSentOrNot() {
    TestSession test;
    test.addPick({.box = "C1", .doc = "4711", .item = "A", .ordernum = "A1", .sent = 1});
    test.addPick({.box = "C2", .doc = "4711", .item = "A", .ordernum = "A2"});
    test.addPick({.box = "C1", .doc = "4712", .item = "B", .ordernum = "A1"});
    Delivery delivery = test.delivery;
    delivery.lines.back().ordernum = QStringLiteral("A2");
    QVERIFY(test.session.importDelivery(delivery));
    QCOMPARE(test.box(0).boxitems.at(0).pickqty.value(), 7);
    QCOMPARE(test.box(0).boxpickqty, 7);
    QCOMPARE(test.box(1).boxpickqty, 0);
  }

  void anImportThatCannotReadTheStoreFailsAndReplacesTheLists() {
    TestSession test;
    test.openFirstBox();
    test.session.bookQuantity(0, false, 0, 5);
    test.store.connect().exec("ALTER TABLE Picking RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    QVERIFY(!test.session.importDelivery(test.delivery));
    QCOMPARE(test.box(0).boxpickqty, 0);
  }

  void aPickingStartsWithTheLastDeliveryNumberAndNoOpenBox() {
    TestSession test;
    const QSignalSpy started(&test.session, &PickingSession::started);
    test.session.openBox(1);
    test.session.start();
    QCOMPARE(started.count(), 1);
    QCOMPARE(test.session.doc(), "4711");
    QCOMPARE(test.session.curBoxIndex(), -1);
  }

  void aCatalogueLoadedAfterTheLookupLeavesThePickingWithoutADeliveryNumber() {
    TestSession test;
    test.session.setJsonResult(JsonResult{});
    test.session.start();
    QVERIFY(test.session.doc().isNull());
  }

  void aStoppedPickingKeepsItsListsAndDeliveryNumber() {
    TestSession test;
    test.openFirstBox();
    const QSignalSpy stopped(&test.session, &PickingSession::stopped);
    test.session.stop();
    QCOMPARE(stopped.count(), 1);
    QCOMPARE(test.session.curBoxIndex(), -1);
    QCOMPARE(test.session.doc(), "4711");
    QCOMPARE(test.session.pickList().size(), 2U);
  }

  void aBoxIsFoundByItsExactName() {
    TestSession test;
    test.session.addLoosePick({.box = QStringLiteral("1")});
    QCOMPARE(test.session.boxNamed(QStringLiteral("C2")), std::optional(1));
    QCOMPARE(test.session.boxNamed(QStringLiteral("1")), std::optional(2));
    QVERIFY(!test.session.boxNamed(QStringLiteral("c2")));
    QVERIFY(!test.session.boxNamed(QStringLiteral(" C2")));
  }

  void aCodeIsLookedUpInTheBoxThenTheLoosePicksThenTheCatalogue() {
    TestSession test;
    test.openFirstBox();
    const QString foreign = QStringLiteral("X");
    QVERIFY(!test.session.find(foreign));
    addArticle(test.store.path(), {QStringLiteral("bX"), foreign, QStringLiteral("MUG")});
    const auto article = test.session.find(foreign);
    QCOMPARE(std::get<LoosePick>(*article).box, PickingRules::kLooseBox);
    test.session.addLoosePick({.box = QStringLiteral("7"), .item = foreign});
    QCOMPARE(std::get<LoosePick>(*test.session.find(foreign)).box, "7");
    QCOMPARE(std::get<std::size_t>(*test.session.find(QStringLiteral("bB"))), 1U);
  }

  void openingAnotherBoxChangesWhichCodesAreFound() {
    TestSession test;
    test.openFirstBox();
    QVERIFY(test.session.find(QStringLiteral("B")));
    test.session.openBox(1);
    QVERIFY(!test.session.find(QStringLiteral("B")));
  }

  void aBookedQuantityUpdatesTheLineTheItemTheTotalAndTheStore() {
    TestSession test;
    test.openFirstBox();
    const QSignalSpy saved(&test.session, &PickingSession::lineSaved);
    test.session.bookQuantity(0, false, 1, 4);
    QCOMPARE(test.box(0).boxitems.at(0).pickqty.value(), 5);
    QCOMPARE(test.box(0).boxitems.at(2).pickqty.value(), 0);
    QCOMPARE(test.box(0).boxpickqty, 4);
    QCOMPARE(test.session.arrayItems()->at(0).pickqty.value(), 5);
    QCOMPARE(test.stored(), QStringList("C1 A 5"));
    QCOMPARE(saved.count(), 1);
  }

  void withAFilterTheFirstLineOfTheItemGetsTheQuantityToo() {
    TestSession test;
    test.openFirstBox();
    test.session.bookQuantity(2, true, 0, 3);
    QCOMPARE(test.box(0).boxitems.at(0).pickqty.value(), 3);
    QCOMPARE(test.box(0).boxitems.at(2).pickqty.value(), 3);
    QCOMPARE(test.box(0).boxpickqty, 3);
    QCOMPARE(test.stored(), QStringList("C1 A 3"));
  }

  void aLineThatCannotBeStoredIsNotReportedAsSaved() {
    TestSession test;
    test.openFirstBox();
    const QSignalSpy saved(&test.session, &PickingSession::lineSaved);
    test.store.connect().exec("ALTER TABLE Picking RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    test.session.bookQuantity(0, false, 0, 5);
    QCOMPARE(test.box(0).boxitems.at(0).pickqty.value(), 5);
    QCOMPARE(saved.count(), 0);
  }

  void aQuantityIsBookedToTheFirstLoosePickWithTheBarcode() {
    TestSession test;
    test.session.addLoosePick({.barcode = QStringLiteral("77")});
    test.session.addLoosePick({.barcode = QStringLiteral("77")});
    const QSignalSpy booked(&test.session, &PickingSession::loosePickBooked);
    test.session.bookLoosePick(QStringLiteral("77"), 4);
    test.session.bookLoosePick(QStringLiteral("78"), 9);
    QCOMPARE(std::get<LoosePick>(test.session.pickList().at(2)).qty, 4);
    QCOMPARE(std::get<LoosePick>(test.session.pickList().at(3)).qty, 0);
    QCOMPARE(booked.at(0).at(0).toInt(), 2);
    QCOMPARE(booked.at(1).at(0).toInt(), -1);
  }

  void aPositionAfterTheLastBoxHasNoOpenEntry() {
    TestSession test;
    test.session.start();
    test.session.openBox(2);
    QCOMPARE(test.session.openEntry(), nullptr);
    QVERIFY(test.session.openBoxLines().empty());
  }

  void afterANewListOnlyItsCodesAreFound() {
    TestSession test;
    test.openFirstBox();
    QVERIFY(test.session.find(QStringLiteral("B")));
    test.session.setArrayPick(std::make_shared<PickList>(
        PickList{BoxRecord{.box = QStringLiteral("C1"), .boxitems = {{.item = "Z"}}}}));
    QVERIFY(!test.session.find(QStringLiteral("B")));
    QVERIFY(test.session.find(QStringLiteral("Z")));
  }

  void aBookingAfterASmallerImportChangesItsItemLine() {
    TestSession test;
    Delivery onlyB = test.delivery;
    onlyB.lines = {lineOf(QStringLiteral("C1"), QStringLiteral("B"), 2)};
    QVERIFY(test.session.importDelivery(onlyB));
    test.openFirstBox();
    test.session.bookQuantity(0, false, 0, 2);
    QCOMPARE(test.session.arrayItems()->size(), 1U);
    QCOMPARE(test.session.arrayItems()->at(0).pickqty.value(), 2);
  }
};

CARTONPICK_TEST(PickingSessionTest);
#include "PickingSession_test.moc"
