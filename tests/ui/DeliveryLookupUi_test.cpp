#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QTest>

namespace {

/// Opens the picking screen from the start screen and searches for `number`.
void search(TestWindow &ui, const QString &number) {
  ui.enterPicking();
  ui.type(number);
  ui.touch("btnSearch");
}

}  // namespace

/// The lookup of a delivery: the import, and every failure with its alert.
class DeliveryLookupUiTest : public QObject {
  Q_OBJECT

 private slots:
  void aFoundDeliveryIsShown() {
    TestWindow ui;
    ui.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    search(ui, "4711");
    QTRY_VERIFY(ui.isEnabled("btnPicking"));
    QCOMPARE(ui.texts({"lblCustomerName", "lblBrand", "lblCreationDate", "lblShipmentDate"}),
             QStringList({"Customer: Corner Shop", "Brand: Hearth", "Date Created: 25/03/2026",
                          "Date Shipped: 01/04/2026"}));
    QCOMPARE(ui.alerts(), QStringList());
    QCOMPARE(ui.service.requests().size(), 1);
    QVERIFY(ui.service.requests().first().target.endsWith("/getorderpercarton/4711"));
  }

  void nothingCanBeTouchedDuringALookup() {
    TestWindow ui;
    ui.service.answerWith([](const auto &) { return LoopbackService::Answer::silence(); });
    search(ui, "4711");
    QTRY_COMPARE(ui.service.silentConnections(), 1);
    QTRY_COMPARE(ui.text("busyTitle"), "Looking up the delivery …");
    ui.touch("btnClose");
    ui.touch("btnSearch");
    QCOMPARE(ui.alerts(), QStringList());
    ui.service.answerSilentConnection(LoopbackService::Answer::http("[]"));
    QTRY_VERIFY(!ui.shows("busy"));
    QCOMPARE(ui.service.requests().size(), 1);
  }

  void returnInTheDeliveryNumberFieldStartsNoLookup() {
    TestWindow ui;
    ui.enterPicking();
    ui.scan("4711");
    QCOMPARE(ui.text("txtDeliveryNo"), "4711");
    ui.touch("txtDeliveryNo");
    QVERIFY(!ui.shows("busy"));
    QCOMPARE(ui.service.requests().size(), 0);
    QCOMPARE(ui.fieldsWithKeyboard(), QStringList("txtDeliveryNo"));
  }

  void anInvalidDeliveryNumberIsRefused_data() {
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("alert");
    QTest::newRow("empty") << QString()
                           << "Please fill in data first|Delivery number is missing.|OK";
    QTest::newRow("spaces") << "  "
                            << "Please fill in data first|Delivery number is missing.|OK";
    QTest::newRow("one character")
        << "4"
        << "Please fill in additional data|Delivery number should be at least 2 characters.|OK";
  }

  void anInvalidDeliveryNumberIsRefused() {
    QFETCH(const QString, number);
    QFETCH(const QString, alert);
    TestWindow ui;
    search(ui, number);
    QTRY_COMPARE(ui.alerts(), QStringList(alert));
    QCOMPARE(ui.service.requests().size(), 0);
    ui.touch("alertButton0");
    QTRY_COMPARE(ui.alerts(), QStringList());
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtDeliveryNo"));
    QCOMPARE(ui.text("txtDeliveryNo"), number);
  }

  void anAnswerWithoutADeliveryShowsAnAlert_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("alert");
    QTest::newRow("already sent")
        << QByteArray("\"This picking has already been sent to the server\"")
        << "This picking has already been sent to the server|You cannot proceed as this order has "
           "already been picked|OK";
    QTest::newRow("not JSON")
        << QByteArray("<html>")
        << "Could not fetch order details|Loading failed. Please try again.|OK";
    QTest::newRow("an object")
        << QByteArray("{}") << "Could not fetch order details|Loading failed. Please try again.|OK";
    QTest::newRow("nothing found")
        << QByteArray("[]")
        << "No order found|Please try again using different search criteria.|OK";
  }

  void anAnswerWithoutADeliveryShowsAnAlert() {
    QFETCH(const QByteArray, body);
    QFETCH(const QString, alert);
    TestWindow ui;
    ui.service.answerWith(body);
    search(ui, "4711");
    QTRY_COMPARE(ui.alerts(), QStringList(alert));
    QVERIFY(!ui.shows("busy"));
    ui.touch("alertButton0");
    QTRY_COMPARE(ui.alerts(), QStringList());
    QVERIFY(!ui.isEnabled("btnPicking"));
    ui.touch("txtDeliveryNo");
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtDeliveryNo"));
  }

  void aFailedConnectionShowsTwoAlertsWithTheLatestOnTop() {
    TestWindow ui;
    ui.environment.serviceHost = LoopbackService::unreachableHost();
    search(ui, "4711");
    QTRY_COMPARE(ui.alerts().size(), 2);
    const QString first = "Could not get result|Loading failed. Please try again.|OK";
    QCOMPARE(ui.alerts().first(), first);
    QVERIFY(ui.alerts().last().startsWith("error message|"));
    ui.touch("alertButton0");
    QTRY_COMPARE(ui.alerts(), QStringList(first));
    ui.touch("alertButton0");
    QTRY_COMPARE(ui.alerts(), QStringList());
  }

  void escapeAnswersTheTopmostAlert() {
    TestWindow ui;
    ui.environment.serviceHost = LoopbackService::unreachableHost();
    search(ui, "4711");
    QTRY_COMPARE(ui.alerts().size(), 2);
    ui.press(Qt::Key_Escape);
    QTRY_COMPARE(ui.alerts().size(), 1);
    QVERIFY(ui.alerts().first().startsWith("Could not get result|"));
    QTRY_COMPARE(ui.keyboard(), "alertButton0");
    ui.press(Qt::Key_Escape);
    QTRY_COMPARE(ui.alerts(), QStringList());
  }

  void aScanDoesNotAnswerAnAlert() {
    TestWindow ui;
    search(ui, "4");
    QTRY_COMPARE(ui.alerts().size(), 1);
    ui.scan("5012345678900");
    QCOMPARE(ui.alerts().size(), 1);
    QCOMPARE(ui.text("txtDeliveryNo"), "4");
  }

  void spaceAnswersTheAlert() {
    TestWindow ui;
    search(ui, "4");
    QTRY_COMPARE(ui.keyboard(), "alertButton0");
    ui.press(Qt::Key_Space);
    QTRY_COMPARE(ui.alerts(), QStringList());
    QTRY_COMPARE(ui.fieldsWithKeyboard(), QStringList("txtDeliveryNo"));
  }

  void afterAFailureThePreviousDeliveryIsStillShown() {
    TestWindow ui;
    ui.enterPicking();
    ui.lookUp({{"C1", "A", 5}});
    ui.service.answerWith("[]");
    ui.touch("btnSearch");
    ui.touch("alertButton0");
    QTRY_COMPARE(ui.alerts(), QStringList());
    QCOMPARE(ui.text("lblCustomerName"), "Customer: Corner Shop");
    QVERIFY(ui.isEnabled("btnPicking"));
  }
};

CARTONPICK_WINDOW_TEST(DeliveryLookupUiTest);
#include "DeliveryLookupUi_test.moc"
