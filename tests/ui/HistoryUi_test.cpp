#include "store/ManagedObjectContext.h"
#include "support/Picture.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QTest>

namespace {

const QString kSummary = QStringLiteral("deliveryDetailsViewController");

/// Stores two deliveries, of which the later one is sent.
void storePickings(TestWindow &ui) {
  const QDateTime morning(QDate(2026, 3, 2), QTime(6, 0), QTimeZone::utc());
  Picking first{.barcode = "bA",
                .box = "C1",
                .datepicked = morning,
                .descr = "Lantern",
                .doc = "4711",
                .item = "A",
                .ordernum = "A1",
                .orderqty = 5,
                .pickqty = 3};
  Picking last = first;
  last.item = "B";
  last.datepicked = morning.addSecs(3600);
  Picking sent = first;
  sent.doc = "4712";
  sent.datepicked = morning.addDays(1);
  sent.sent = 1;
  for (const Picking &picking : {sent, first, last}) {
    ui.store().insert(picking);
  }
  QVERIFY(!ui.store().save().has_value());
}

}  // namespace

/// The list of earlier pickings.
class HistoryUiTest : public QObject {
  Q_OBJECT

 private slots:
  void anEmptyStoreShowsAnEmptyList() {
    TestWindow ui;
    ui.touch("btnSegueHistory");
    QTRY_VERIFY(ui.shows("HistoryViewController"));
    QVERIFY(!ui.shows("tblHistoryOverviewRow0"));
    QTRY_COMPARE(ui.keyboard(), "btnBack");
  }

  void deliveriesAreListedWithTheLatestLast() {
    TestWindow ui;
    storePickings(ui);
    ui.touch("btnSegueHistory");
    QTRY_COMPARE(ui.column("tblHistoryOverview", "deliveryNo"), QStringList({"4711", "4712"}));
    QTRY_COMPARE(ui.column("tblHistoryOverview", "sent"), QStringList({"No", "Yes"}));
    QTRY_COMPARE(ui.column("tblHistoryOverview", "dateCreated"),
                 QStringList({"02/03/2026 08:00", "03/03/2026 08:00"}));
    QTRY_COMPARE(ui.column("tblHistoryOverview", "dateClosed"),
                 QStringList({"02/03/2026 09:00", "03/03/2026 08:00"}));
  }

  void touchingARowShowsTheSummaryOfItsDelivery() {
    TestWindow ui;
    storePickings(ui);
    ui.touch("btnSegueHistory");
    ui.touch("tblHistoryOverviewRow0");
    QTRY_COMPARE(ui.text("lblDelivery"), "Summary for Delivery: 4711");
    QTRY_COMPARE(ui.column("tblPicking", "item"), QStringList({"A", "B"}));
    QCOMPARE(ui.texts({"txtQtyPicked", "txtQtyOrder", "txtQtyDiff"}),
             QStringList({"6", "10", "-4"}));
    ui.touch(kSummary + "/btnClose");
    QTRY_VERIFY(!ui.shows(kSummary));
    QVERIFY(ui.shows("tblHistoryOverviewRow0"));
  }

  void theSummaryIsDrawnInItsFrame() {
    const QRect frame(310, 17, 675, 600);
    TestWindow ui({1280, 800});
    storePickings(ui);
    ui.touch("btnSegueHistory");
    ui.touch("tblHistoryOverviewRow0");
    QTRY_VERIFY(ui.isEnabled("tblPickingRow0"));
    const Picture window(ui);
    // Below the header of the history, which has the colour of the summary's edge.
    const QRect left(frame.left(), 200, 1, 400);
    const QRect right(frame.right(), 200, 1, 400);
    const QRect top(frame.left() + 10, frame.top(), 600, 1);
    const QRect bottom(frame.left() + 10, frame.bottom(), 600, 1);
    for (const QRect &edge : {left, right, top, bottom}) {
      QCOMPARE(window.part(edge).ground(), "#35424f");
    }
    for (const QRect &outside : {left.translated(-1, 0), right.translated(1, 0),
                                 top.translated(0, -1), bottom.translated(0, 1)}) {
      QVERIFY(window.part(outside).ground() != "#35424f");
    }
  }

  void anotherDeliveryCanBeChosenBesideTheOpenSummary() {
    TestWindow ui({1280, 800});
    storePickings(ui);
    ui.touch("btnSegueHistory");
    ui.touch("tblHistoryOverviewRow0");
    QTRY_VERIFY(ui.isEnabled("tblPickingRow0"));
    const QRectF other = TestWindow::visiblePart(ui.item("tblHistoryOverviewRow1"));
    ui.touchAt(QPoint(100, qRound(other.center().y())));
    QTRY_COMPARE(ui.text("lblDelivery"), "Summary for Delivery: 4712");
    QTRY_COMPARE(ui.column("tblPicking", "item"), QStringList("A"));
    QTRY_VERIFY(ui.isEnabled(kSummary + "/btnClose"));
    QCOMPARE(ui.text("lblDelivery"), "Summary for Delivery: 4712");
  }

  void afterOneDeliveryAnotherCanBeOpened() {
    TestWindow ui;
    storePickings(ui);
    ui.touch("btnSegueHistory");
    ui.touch("tblHistoryOverviewRow0");
    QTRY_COMPARE(ui.text("lblDelivery"), "Summary for Delivery: 4711");
    ui.touch(kSummary + "/btnClose");
    QTRY_VERIFY(!ui.shows(kSummary));
    ui.touch("tblHistoryOverviewRow1");
    QTRY_COMPARE(ui.text("lblDelivery"), "Summary for Delivery: 4712");
  }

  void theBackButtonWorksAfterTheSummaryIsClosed() {
    TestWindow ui;
    storePickings(ui);
    ui.touch("btnSegueHistory");
    ui.touch("tblHistoryOverviewRow1");
    QTRY_VERIFY(ui.shows(kSummary));
    ui.touch(kSummary + "/btnClose");
    QTRY_VERIFY(!ui.shows(kSummary));
    ui.touch("btnBack");
    QTRY_COMPARE(ui.keyboard(), "btnSegueToSplitView");
  }

  void aNewPickingAppearsInTheHistory() {
    TestWindow ui;
    ui.openBox({{"C1", "A", 5}});
    ui.openKeypad();
    ui.confirm("5");
    ui.touch("btnPicking");
    ui.touch("btnClose");
    ui.touch("alertButton0");
    ui.touch("btnSegueHistory");
    QTRY_COMPARE(ui.column("tblHistoryOverview", "deliveryNo"), QStringList("4711"));
    QTRY_COMPARE(ui.column("tblHistoryOverview", "dateCreated"), QStringList("02/03/2026 10:12"));
  }
};

CARTONPICK_WINDOW_TEST(HistoryUiTest);
#include "HistoryUi_test.moc"
