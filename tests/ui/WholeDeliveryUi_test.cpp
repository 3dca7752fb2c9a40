#include "store/ManagedObjectContext.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"
#include "ui/ScreenKeyboard.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>
#include <QTest>

#include <algorithm>
#include <tuple>

namespace {

const QList<TestLine> kLines{
    {"C1", "85123A", 6, "4000000000013"},  {"C1", "71053", 12, "4000000000020"},
    {"C1", "84406B", 8, "4000000000037"},  {"C1", "84029G", 1, "4000000000044"},
    {"C1", "22752", 144, "4000000000051"}, {"C2", "21730", 3, "4000000000068"},
    {"C2", "22633", 25, "4000000000075"},  {"C2", "22632", 7, "4000000000082"},
    {"C2", "84879", 32, "4000000000099"},  {"C3", "22745", 10, "4000000000105"},
    {"C3", "22748", 9, "4000000000112"},   {"C3", "22749", 2, "4000000000129"}};
const QStringList kBoxes{"C1", "C2", "C3"};

QList<TestLine> linesOf(const QString &box) {
  QList<TestLine> lines;
  std::copy_if(kLines.begin(), kLines.end(), std::back_inserter(lines),
               [&](const TestLine &line) { return line.carton == box; });
  return lines;
}

QString rowOf(const char *table, qsizetype row) {
  return QStringLiteral("%1Row%2").arg(table).arg(row);
}

/// Makes `service` deliver the lines and accept the picking.
void answerAll(LoopbackService &service) {
  service.answerWith([](const LoopbackService::Request &request) {
    return LoopbackService::Answer::http(request.method == "POST" ? "\"0\"" : deliveryJson(kLines));
  });
}

/// Checks that every line is in the store as delivered and picked, and is marked as sent.
void checkStore(TestWindow &ui) {
  const auto rows = ui.store().pickings("4711");
  QCOMPARE(rows->size(), static_cast<std::size_t>(kLines.size()));
  for (qsizetype i = 0; i < kLines.size(); ++i) {
    const Picking &row = rows->at(static_cast<std::size_t>(i));
    const TestLine &line = kLines[i];
    QCOMPARE(QStringList({row.doc, row.ordernum, row.box, row.item, row.barcode, row.descr}),
             QStringList({"4711", "A1", line.carton, line.item, line.barcode,
                          "Description of " + line.item}));
    QCOMPARE(std::tuple(row.orderqty, row.pickqty, row.sent), std::tuple(line.qty, line.qty, 1));
    QCOMPARE(row.datepicked, ui.clock->now());
  }
}

/// Checks that the service received one lookup, and every line once.
void checkRequests(const LoopbackService &service) {
  QCOMPARE(service.requests().size(), 2);
  QVERIFY(service.requests().first().target.endsWith("/getorderpercarton/4711"));
  const LoopbackService::Request &report = service.requests().last();
  QCOMPARE(report.method, "POST");
  QVERIFY(report.target.endsWith("/sendpick"));
  QJsonArray expected;
  for (const TestLine &line : kLines) {
    expected.append(QJsonObject{{"barcode", line.barcode},
                                {"box", line.carton},
                                {"doc", "4711"},
                                {"item", line.item},
                                {"ordernum", "A1"},
                                {"qty", line.qty},
                                {"datepicked", "2026-03-02 10:12:05"},
                                {"sent", 0}});
  }
  QCOMPARE(QJsonDocument::fromJson(report.body).array(), expected);
}

/// Checks that the history lists the delivery as sent.
void checkHistory(const TestWindow &ui) {
  QTRY_COMPARE(ui.column("tblHistoryOverview", "deliveryNo"), QStringList("4711"));
  QCOMPARE(ui.column("tblHistoryOverview", "sent"), QStringList("Yes"));
}

/// Checks that the history's summary shows the totals of the delivery.
void checkSummary(const TestWindow &ui) {
  QTRY_COMPARE(ui.text("lblDelivery"), "Summary for Delivery: 4711");
  QCOMPARE(ui.texts({"txtQtyPicked", "txtQtyOrder", "txtQtyDiff"}),
           QStringList({"259", "259", "0"}));
  QCOMPARE(ui.item("tblPicking")->property("count").toInt(), kLines.size());
}

void checkSaved(const TestWindow &ui, const TestLine &line) {
  QTRY_COMPARE(ui.text("lblSaved"), QStringLiteral("Saved %1 × %2 in box %3, 10:12:05")
                                        .arg(QString::number(line.qty), line.item, line.carton));
  QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtBarcode"));
}

void checkAllBoxesAreComplete(const TestWindow &ui) {
  QTRY_COMPARE(ui.texts({"lblBoxesTotalValue", "lblBoxesUnopenedValue", "lblBoxesCompletedValue",
                         "lblBoxesIncompleteValue"}),
               QStringList({"3", "0", "3", "0"}));
}

void answerByKeys(TestWindow &ui, const QString &title, int button) {
  QTRY_COMPARE(ui.text("alertTitle"), title);
  QTRY_VERIFY(ui.keyboard().startsWith("alertButton"));
  ui.pressByKeys(QStringLiteral("alertButton%1").arg(button));
}

void confirmByKeys(TestWindow &ui, const TestLine &line) {
  QTRY_COMPARE(ui.keyboard(), "txtNewQty");
  QCOMPARE(ui.text("lblItemCode"), line.item);
  ui.type(QString::number(line.qty));
  ui.pressByKeys("btnOK", Qt::Key_Backtab);
  checkSaved(ui, line);
}

/// Picks `box` by typing its name, then item codes and barcodes alternately.
void pickByCodes(TestWindow &ui, const QString &box) {
  ui.tabTo("txtBox", Qt::Key_Backtab);
  ui.press(Qt::Key_A, Qt::ControlModifier);
  ui.type(box);
  ui.press(Qt::Key_Return);
  QTRY_COMPARE(ui.keyboard(), "txtBarcode");
  bool byBarcode = false;
  for (const TestLine &line : linesOf(box)) {
    ui.type(byBarcode ? line.barcode : line.item);
    ui.press(Qt::Key_Return);
    confirmByKeys(ui, line);
    byBarcode = !byBarcode;
  }
}

/// Picks `box`, selecting the box and its lines with the arrow keys.
void pickByArrows(TestWindow &ui, const QString &box) {
  ui.tabTo("tblBoxes", Qt::Key_Backtab);
  for (qsizetype row = 0; row < kBoxes.indexOf(box); ++row) {
    ui.press(Qt::Key_Down);
  }
  ui.press(Qt::Key_Space);
  QTRY_COMPARE(ui.text("lblOpenBox"), box);
  QTRY_COMPARE(ui.keyboard(), "txtBarcode");
  qsizetype row = 0;
  for (const TestLine &line : linesOf(box)) {
    ui.tabTo("tblItems");
    ui.press(Qt::Key_Home);
    while (ui.keyboard() != rowOf("tblItems", row)) {
      ui.press(Qt::Key_Down);
    }
    ui.press(Qt::Key_Space);
    confirmByKeys(ui, line);
    ++row;
  }
}

}  // namespace

/// Picks a delivery of twelve lines in three boxes, from the start screen to the history, by
/// keyboard only and by touch only.
class WholeDeliveryUiTest : public QObject {
  Q_OBJECT

 public:
  static void beforeApplication() { chooseScreenKeyboard(); }

 private slots:
  void aDeliveryCanBePickedByKeyboardOnly() {
    TestWindow ui;
    answerAll(ui.service);
    QTRY_COMPARE(ui.keyboard(), "btnSegueToSplitView");
    ui.press(Qt::Key_Space);
    QTRY_COMPARE(ui.keyboard(), "txtDeliveryNo");
    ui.type("4711");
    ui.pressByKeys("btnSearch");
    QTRY_VERIFY(ui.isEnabled("btnPicking") && !ui.shows("busy"));
    ui.pressByKeys("btnPicking");
    QTRY_COMPARE(ui.keyboard(), "txtBox");

    pickByCodes(ui, "C1");
    pickByArrows(ui, "C2");
    pickByCodes(ui, "C3");
    checkAllBoxesAreComplete(ui);

    ui.pressByKeys("btnOptions");
    QTRY_COMPARE(ui.focusStop(), "tableView");
    ui.press(Qt::Key_Down);
    ui.press(Qt::Key_Down);
    ui.press(Qt::Key_Space);
    answerByKeys(ui, "Picking Completed?", 1);
    answerByKeys(ui, "Picking was sent", 0);
    QTRY_COMPARE(ui.alerts(), QStringList());
    checkStore(ui);
    checkRequests(ui.service);

    ui.pressByKeys("btnPicking");
    ui.pressByKeys("btnClose", Qt::Key_Backtab);
    answerByKeys(ui, "Close Picking", 0);
    QTRY_COMPARE(ui.keyboard(), "btnSegueToSplitView");
    ui.pressByKeys("btnSegueHistory");
    checkHistory(ui);
    ui.pressByKeys("tblHistoryOverview");
    checkSummary(ui);
    QTRY_COMPARE(ui.keyboard(), "btnClose");
    ui.press(Qt::Key_Escape);
    QTRY_COMPARE(ui.focusStop(), "tblHistoryOverview");
    ui.pressByKeys("btnBack");
    QTRY_COMPARE(ui.keyboard(), "btnSegueHistory");
  }

  void aDeliveryCanBePickedByTouchOnly() {
    TestWindow ui({1280, 800}, true);
    answerAll(ui.service);
    ui.touch("btnSegueToSplitView");
    ui.touch("txtDeliveryNo");
    for (const QString key : {"4", "7", "1", "1"}) {
      touchKey(ui, key);
    }
    QTRY_COMPARE(ui.text("txtDeliveryNo"), "4711");
    ui.touch("btnSearch");
    QTRY_VERIFY(ui.isEnabled("btnPicking") && !ui.shows("busy"));
    ui.touch("btnPicking");

    for (qsizetype box = 0; box < kBoxes.size(); ++box) {
      ui.touch(rowOf("tblBoxes", box));
      QTRY_COMPARE(ui.text("lblOpenBox"), kBoxes[box]);
      const QList<TestLine> lines = linesOf(kBoxes[box]);
      for (qsizetype row = 0; row < lines.size(); ++row) {
        ui.touch(rowOf("tblItems", row));
        QTRY_COMPARE(ui.text("lblItemCode"), lines[row].item);
        ui.confirm(QString::number(lines[row].qty));
        checkSaved(ui, lines[row]);
      }
    }
    checkAllBoxesAreComplete(ui);

    ui.touch("btnOptions");
    ui.touch("tableViewRow2");
    ui.touch("alertButton1");
    QTRY_COMPARE(ui.text("alertTitle"), "Picking was sent");
    ui.touch("alertButton0");
    QTRY_COMPARE(ui.alerts(), QStringList());
    checkStore(ui);
    checkRequests(ui.service);

    ui.touch("btnPicking");
    ui.touch("btnClose");
    ui.touch("alertButton0");
    ui.touch("btnSegueHistory");
    checkHistory(ui);
    ui.touch("tblHistoryOverviewRow0");
    checkSummary(ui);
    ui.touch("deliveryDetailsViewController/btnClose");
    QTRY_VERIFY(!ui.shows("lblDelivery"));
    ui.touch("btnBack");
    QTRY_VERIFY(ui.shows("btnSegueToSplitView"));
  }
};

CARTONPICK_WINDOW_TEST(WholeDeliveryUiTest);
#include "WholeDeliveryUi_test.moc"
