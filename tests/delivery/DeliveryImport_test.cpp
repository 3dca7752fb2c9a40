#include "delivery/DeliveryImport.h"

#include "support/TestClass.h"

#include <QTest>

#include <limits>

namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

OrderLine lineOf(const char *carton, const char *item, Quantity qty = 1) {
  return {.doc = QStringLiteral("4711"),
          .ordernum = QStringLiteral("A1"),
          .item = QString::fromUtf8(item),
          .barcode = u'b' + QString::fromUtf8(item),
          .descr = QStringLiteral("Description of ") + QString::fromUtf8(item),
          .carton = QString::fromUtf8(carton),
          .qty = qty};
}

Delivery deliveryOf(const std::vector<OrderLine> &lines) {
  Delivery delivery;
  delivery.lines = lines;
  return delivery;
}

Picking pickOf(const char *box, const char *item, std::int32_t pickqty) {
  return {.box = QString::fromUtf8(box), .item = QString::fromUtf8(item), .pickqty = pickqty};
}

/// Returns "item picked/ordered" for each line.
QString textOf(const std::vector<BoxLine> &lines) {
  QStringList texts;
  for (const BoxLine &line : lines) {
    texts.append(
        QStringLiteral("%1 %2/%3").arg(line.item, line.pickqty.text(), line.orderqty.text()));
  }
  return texts.join(QStringLiteral(", "));
}

/// Returns "box picked/ordered: lines" for each box.
QStringList textsOf(const PickList &boxes) {
  QStringList texts;
  for (const PickEntry &box : boxes) {
    texts.append(QStringLiteral("%1 %2/%3: %4")
                     .arg(boxOf(box), QString::number(boxpickqtyOf(box)),
                          QString::number(boxorderqtyOf(box)), textOf(boxitemsOf(box))));
  }
  return texts;
}

PickList restored(PickList boxes, const std::vector<Picking> &picks) {
  restoreBoxes(picks, boxes);
  return boxes;
}

ItemLines restored(ItemLines items, const std::vector<Picking> &picks) {
  restoreItemLines(picks, items);
  return items;
}

}  // namespace

class DeliveryImportTest : public QObject {
  Q_OBJECT

 private slots:
  void aLineHasTheDeliveredValues() {
    const auto answer = deliveryOf({lineOf("C1", "A", Quantity::delivered(QStringLiteral("05")))});
    for (const BoxLine &line :
         {itemLinesOf(answer).front(), boxitemsOf(boxesOf(answer).front()).front()}) {
      QCOMPARE(line.barcode, "bA");
      QCOMPARE(line.datepicked, "01/01/2001");
      QCOMPARE(line.descr, "Description of A");
      QCOMPARE(line.doc, "4711");
      QCOMPARE(line.item, "A");
      QCOMPARE(line.ordernum, "A1");
      QCOMPARE(line.orderqty.text(), "05");
      QCOMPARE(line.orderqty.value(), 5);
      QCOMPARE(line.pickqty.value(), 0);
    }
  }

  void anAnswerWithoutLinesGivesEmptyLists() {
    QVERIFY(itemLinesOf(deliveryOf({})).empty());
    QVERIFY(boxesOf(deliveryOf({})).empty());
  }

  void anItemInTwoCartonsIsOneItemLineAndALineInEachBox() {
    const auto answer = deliveryOf({lineOf("C1", "A", 2), lineOf("C2", "A", 3)});
    QCOMPARE(textOf(itemLinesOf(answer)), "A 0/5");
    QCOMPARE(textsOf(boxesOf(answer)), QStringList({"C1 0/2: A 0/2", "C2 0/3: A 0/3"}));
  }

  void anItemTwiceInACartonIsOneItemLineAndTwoLinesInTheBox() {
    const auto answer = deliveryOf({lineOf("C1", "A", 2), lineOf("C1", "A", 3)});
    QCOMPARE(textOf(itemLinesOf(answer)), "A 0/5");
    QCOMPARE(textsOf(boxesOf(answer)), QStringList("C1 0/5: A 0/2, A 0/3"));
  }

  void itemsAndBoxesAreInTheOrderOfTheirFirstLines() {
    const auto answer =
        deliveryOf({lineOf("C2", "B"), lineOf("C1", "C"), lineOf("C2", "A"), lineOf("C1", "B")});
    QCOMPARE(textOf(itemLinesOf(answer)), "B 0/2, C 0/1, A 0/1");
    QCOMPARE(textsOf(boxesOf(answer)),
             QStringList({"C2 0/2: B 0/1, A 0/1", "C1 0/2: C 0/1, B 0/1"}));
  }

  void aMergedItemLineHasTheTextsOfItsFirstLine() {
    OrderLine second = lineOf("C2", "A", 3);
    second.barcode = QStringLiteral("other");
    second.descr = QStringLiteral("other");
    second.doc = QStringLiteral("other");
    second.ordernum = QStringLiteral("other");
    const BoxLine line = itemLinesOf(deliveryOf({lineOf("C1", "A", 2), second})).front();
    QCOMPARE(line.barcode, "bA");
    QCOMPARE(line.descr, "Description of A");
    QCOMPARE(line.doc, "4711");
    QCOMPARE(line.ordernum, "A1");
  }

  void aSumIsShownAsANumber() {
    const auto answer =
        deliveryOf({lineOf("C1", "A", Quantity::delivered(QStringLiteral("2.5"))),
                    lineOf("C1", "A", Quantity::delivered(QStringLiteral("1 piece")))});
    QCOMPARE(textOf(itemLinesOf(answer)), "A 0/3");
    QCOMPARE(textsOf(boxesOf(answer)), QStringList("C1 0/3: A 0/2.5, A 0/1 piece"));
  }

  void sumsWrapAround() {
    const auto answer = deliveryOf({lineOf("C1", "A", kMax), lineOf("C1", "A", 1)});
    QCOMPARE(itemLinesOf(answer).front().orderqty.value(), kMin);
    QCOMPARE(boxorderqtyOf(boxesOf(answer).front()), kMin);
    QCOMPARE(
        boxpickqtyOf(
            restored(boxesOf(answer), {pickOf("C1", "A", kMax), pickOf("C1", "A", 1)}).front()),
        kMin);
  }

  void codesAreComparedExactly() {
    const auto answer = deliveryOf({lineOf("c1", "a"), lineOf("C1", "A"), lineOf("C1 ", "A ")});
    QCOMPARE(itemLinesOf(answer).size(), 3U);
    QCOMPARE(boxesOf(answer).size(), 3U);
  }

  void emptyCodesAreTreatedLikeAnyOtherCode() {
    const auto answer = deliveryOf({lineOf("", "", 2), lineOf("", "", 3)});
    QCOMPARE(textOf(itemLinesOf(answer)), " 0/5");
    QCOMPARE(textsOf(boxesOf(answer)), QStringList(" 0/5:  0/2,  0/3"));
  }

  void anEarlierPickIsRestored() {
    const auto answer = deliveryOf({lineOf("C1", "A", 5), lineOf("C1", "B", 5)});
    const std::vector<Picking> picks{pickOf("C1", "B", 4)};
    QCOMPARE(textsOf(restored(boxesOf(answer), picks)), QStringList("C1 4/10: A 0/5, B 4/5"));
    QCOMPARE(textOf(restored(itemLinesOf(answer), picks)), "A 0/5, B 4/5");
  }

  void onlyTheFirstFourLinesOfABoxAreRestored() {
    const auto answer = deliveryOf({lineOf("C1", "A"), lineOf("C1", "B"), lineOf("C1", "C"),
                                    lineOf("C1", "D"), lineOf("C1", "E"), lineOf("C1", "F")});
    QCOMPARE(textsOf(restored(boxesOf(answer), {pickOf("C1", "D", 2), pickOf("C1", "E", 3)})),
             QStringList("C1 5/6: A 0/1, B 0/1, C 0/1, D 2/1, E 0/1, F 0/1"));
  }

  void allItemLinesAreRestored() {
    const auto answer = deliveryOf({lineOf("C1", "A"), lineOf("C1", "B"), lineOf("C1", "C"),
                                    lineOf("C1", "D"), lineOf("C1", "E")});
    QCOMPARE(textOf(restored(itemLinesOf(answer), {pickOf("C1", "E", 3)})),
             "A 0/1, B 0/1, C 0/1, D 0/1, E 3/1");
  }

  void aPickOfAnItemMissingFromTheBoxCountsOnlyForTheBox() {
    const auto answer = deliveryOf({lineOf("C1", "A")});
    const std::vector<Picking> picks{pickOf("C1", "X", 4)};
    QCOMPARE(textsOf(restored(boxesOf(answer), picks)), QStringList("C1 4/1: A 0/1"));
    QCOMPARE(textOf(restored(itemLinesOf(answer), picks)), "A 0/1");
  }

  void aPickFromABoxMissingFromTheDeliveryCountsOnlyForTheItem() {
    const auto answer = deliveryOf({lineOf("C1", "A")});
    const std::vector<Picking> picks{pickOf("C9", "A", 4)};
    QCOMPARE(textsOf(restored(boxesOf(answer), picks)), QStringList("C1 0/1: A 0/1"));
    QCOMPARE(textOf(restored(itemLinesOf(answer), picks)), "A 4/1");
  }

  void theFirstOfTwoLinesOfTheSameItemInABoxIsRestored() {
    const auto answer = deliveryOf({lineOf("C1", "A", 2), lineOf("C1", "A", 3)});
    QCOMPARE(textsOf(restored(boxesOf(answer), {pickOf("C1", "A", 2)})),
             QStringList("C1 2/5: A 2/2, A 0/3"));
  }

  void anItemPickedFromTwoBoxesHasItsLastPick() {
    const auto answer = deliveryOf({lineOf("C1", "A", 2), lineOf("C2", "A", 3)});
    const std::vector<Picking> picks{pickOf("C1", "A", 2), pickOf("C2", "A", 3)};
    QCOMPARE(textsOf(restored(boxesOf(answer), picks)),
             QStringList({"C1 2/2: A 2/2", "C2 3/3: A 3/3"}));
    QCOMPARE(textOf(restored(itemLinesOf(answer), picks)), "A 3/5");
    const std::vector<Picking> reversed{picks.rbegin(), picks.rend()};
    QCOMPARE(textOf(restored(itemLinesOf(answer), reversed)), "A 2/5");
  }

  void twoPicksOfALineAddUpInTheBoxButTheLineHasOnlyTheLast() {
    const auto answer = deliveryOf({lineOf("C1", "A", 5)});
    QCOMPARE(textsOf(restored(boxesOf(answer), {pickOf("C1", "A", 2), pickOf("C1", "A", 3)})),
             QStringList("C1 5/5: A 3/5"));
  }

  void aPickWithoutABoxOrItemMatchesEmptyCodes() {
    const auto answer = deliveryOf({lineOf("", "", 2)});
    QCOMPARE(textsOf(restored(boxesOf(answer), {Picking{.pickqty = 1}})),
             QStringList(" 1/2:  1/2"));
  }

  void aLargeDeliveryIsImportedCompletely() {
    constexpr int kLines = 50'000;
    std::vector<OrderLine> lines;
    for (int i = 0; i < kLines; ++i) {
      lines.push_back(
          lineOf(QByteArray::number(i / 5).constData(), QByteArray::number(i).constData()));
    }
    const auto answer = deliveryOf(lines);
    QCOMPARE(itemLinesOf(answer).size(), std::size_t{kLines});
    QCOMPARE(boxesOf(answer).size(), std::size_t{kLines / 5});
  }

  void loosePicksAreNotRestored() {
    PickList list = boxesOf(deliveryOf({lineOf("C1", "A")}));
    list.emplace_back(
        LoosePick{.box = QStringLiteral("C1"), .item = QStringLiteral("A"), .qty = 9});
    restoreBoxes({pickOf("C1", "A", 4)}, list);
    QCOMPARE(textsOf(list).front(), "C1 4/1: A 4/1");
    QCOMPARE(std::get<LoosePick>(list.back()).qty, 9);
  }

  void aHeaderDateIsShownDayFirst_data() {
    QTest::addColumn<QString>("delivered");
    QTest::addColumn<QString>("shown");
    QTest::newRow("date") << "03/25/2015"
                          << "25/03/2015";
    QTest::newRow("first day") << "01/01/2026"
                               << "01/01/2026";
    QTest::newRow("leap day") << "02/29/2024"
                              << "29/02/2024";
    QTest::newRow("not a leap day") << "02/29/2023"
                                    << "02/29/2023";
    QTest::newRow("no such month") << "13/01/2026"
                                   << "13/01/2026";
    QTest::newRow("other format") << "2026-03-25"
                                  << "2026-03-25";
    QTest::newRow("short year") << "03/25/26"
                                << "03/25/26";
    QTest::newRow("one digit") << "3/25/2026"
                               << "3/25/2026";
    QTest::newRow("with a time") << "03/25/2026 10:00"
                                 << "03/25/2026 10:00";
    QTest::newRow("trailing space") << "03/25/2026 "
                                    << "03/25/2026 ";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("words") << "tomorrow"
                           << "tomorrow";
  }
  void aHeaderDateIsShownDayFirst() {
    QFETCH(const QString, delivered);
    QFETCH(const QString, shown);
    QCOMPARE(headerDate(delivered), shown);
  }

  void underTheCarefulRulesAllLinesOfABoxAreRestored() {
    PickList list = boxesOf(deliveryOf({lineOf("C1", "A"), lineOf("C1", "B"), lineOf("C1", "C"),
                                        lineOf("C1", "D"), lineOf("C1", "E"), lineOf("C1", "F")}));
    restoreBoxes({pickOf("C1", "A", 4), pickOf("C1", "F", 3)}, list, PickingRules::careful());
    QCOMPARE(textsOf(list), QStringList("C1 7/6: A 4/1, B 0/1, C 0/1, D 0/1, E 0/1, F 3/1"));
  }

  void underTheCarefulRulesAPickFillsTheLinesOfItsItemFromTheFirstOn_data() {
    QTest::addColumn<int>("pickqty");
    QTest::addColumn<QString>("box");
    QTest::newRow("less than the first") << 5 << "C1 5/11: A 5/6, B 0/1, A 0/4";
    QTest::newRow("more than the first") << 8 << "C1 8/11: A 6/6, B 0/1, A 2/4";
    QTest::newRow("all") << 10 << "C1 10/11: A 6/6, B 0/1, A 4/4";
    QTest::newRow("more than all") << 12 << "C1 12/11: A 6/6, B 0/1, A 6/4";
  }
  void underTheCarefulRulesAPickFillsTheLinesOfItsItemFromTheFirstOn() {
    QFETCH(int, pickqty);
    PickList list =
        boxesOf(deliveryOf({lineOf("C1", "A", 6), lineOf("C1", "B"), lineOf("C1", "A", 4)}));
    restoreBoxes({pickOf("C1", "A", pickqty)}, list, PickingRules::careful());
    QTEST(textsOf(list).front(), "box");
  }

  void underTheCarefulRulesAPickThatWasNotOrderedBecomesALineAndAnItem() {
    const auto delivery = deliveryOf({lineOf("C1", "A", 6), lineOf("C2", "A", 4)});
    PickList list = boxesOf(delivery);
    ItemLines items = itemLinesOf(delivery);
    const std::vector<Picking> picks{pickOf("C1", "A", 5), pickOf("C1", "X", 2),
                                     pickOf("C2", "X", 1), pickOf("C2", "A", 4)};
    restoreBoxes(picks, list, PickingRules::careful());
    restoreItemLines(picks, items, PickingRules::careful());
    QCOMPARE(textsOf(list), QStringList({"C1 7/6: A 5/6, X 2/0", "C2 5/4: A 4/4, X 1/0"}));
    QCOMPARE(textOf(items), "A 9/10, X 3/0");
  }
};

CARTONPICK_TEST(DeliveryImportTest);
#include "DeliveryImport_test.moc"
