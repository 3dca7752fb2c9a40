#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QPointer>
#include <QTest>

namespace {

using Answer = LoopbackService::Answer;

const QString kAlreadySent = QStringLiteral(
    "This picking has already been sent to the server|"
    "You cannot proceed as this order has already been picked|OK");
const QString kUnreadable =
    QStringLiteral("Could not fetch order details|Loading failed. Please try again.|OK");
const QString kUnknown =
    QStringLiteral("No order found|Please try again using different search criteria.|OK");
const QString kFailed = QStringLiteral("Could not get result|Loading failed. Please try again.|OK");

/// Returns the texts and states of the picking screen that a lookup can change.
QStringList stateOf(const TestProgram &program) {
  const masterViewController &master = program.master();
  QStringList all = textsOf(
      {master.lblCustomerName, master.lblBrand, master.lblCreationDate, master.lblShipmentDate});
  for (const Label *label :
       {master.lblCustomerName, master.lblBrand, master.lblCreationDate, master.lblShipmentDate}) {
    all << (label->isHidden() ? QStringLiteral("hidden") : QStringLiteral("shown"));
  }
  all << (master.btnPicking->isEnabled() ? QStringLiteral("ready") : QStringLiteral("not ready"))
      << master.txtDeliveryNo->text();
  return all;
}

/// Types `number` and touches the search button.
void search(const TestProgram &program, const QString &number) {
  program.master().txtDeliveryNo->edit(number);
  program.master().btnSearchOrderNoTouched();
}

}  // namespace

/// The lookup of a delivery, up to its answer.
class masterViewControllerLookupTest : public QObject {
  Q_OBJECT

 private slots:
  void aTooShortEntryIsRefused_data() {
    const QString missing =
        QStringLiteral("Please fill in data first|Delivery number is missing.|OK");
    const QString tooShort = QStringLiteral(
        "Please fill in additional data|Delivery number should be at least 2 characters.|OK");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("alert");
    QTest::newRow("empty") << QString() << missing;
    QTest::newRow("spaces") << QStringLiteral("   ") << missing;
    QTest::newRow("spaces and tabs") << QStringLiteral(" \t ") << missing;
    QTest::newRow("no-break spaces") << QStringLiteral("\u00A0\u00A0") << missing;
    QTest::newRow("one character") << QStringLiteral("1") << tooShort;
    QTest::newRow("one character between spaces") << QStringLiteral(" 1\t") << tooShort;
    QTest::newRow("a line break is not a space") << QStringLiteral(" \n ") << tooShort;
  }
  void aTooShortEntryIsRefused() {
    QFETCH(QString, entry);
    QFETCH(QString, alert);
    TestProgram program;
    program.enterPicking();
    search(program, entry);
    QCOMPARE(textsOf(program.environment.alerts), QStringList(alert));
    QVERIFY(!program.master().activityIndicator->isAnimating());
    QVERIFY(program.master().connectionDict().isEmpty());
    QVERIFY(program.master().txtDeliveryNo->isFirstResponder());
  }

  void theNumberIsSentAsTyped_data() {
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QByteArray>("target");
    QTest::newRow("digits") << QStringLiteral("4711") << QByteArray("4711");
    QTest::newRow("two characters") << QStringLiteral("12") << QByteArray("12");
    QTest::newRow("surrounding spaces") << QStringLiteral(" 12 ") << QByteArray("%2012%20");
    QTest::newRow("a space in the middle") << QStringLiteral("4 7") << QByteArray("4%207");
    QTest::newRow("a percent sign") << QStringLiteral("5%41") << QByteArray("5%2541");
    QTest::newRow("a hash") << QStringLiteral("A#1") << QByteArray("A%231");
  }
  void theNumberIsSentAsTyped() {
    QFETCH(QString, entry);
    QFETCH(QByteArray, target);
    TestProgram program;
    program.enterPicking();
    program.lookUp(entry);
    QCOMPARE(program.service.requests().size(), 1);
    QCOMPARE(program.service.requests().at(0).method, "GET");
    QCOMPARE(program.service.requests().at(0).target,
             "/qir_pick/servicepick.svc/json/getorderpercarton/" + target);
  }

  void theRequestForbidsCachedAnswers() {
    TestProgram program;
    program.enterPicking();
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(program.service.requests().at(0).headers.value("cache-control"), "no-cache");
  }

  void theReturnKeyStartsNoLookup() {
    TestProgram program;
    program.enterPicking();
    program.master().txtDeliveryNo->edit(QStringLiteral("4711"));
    program.master().txtDeliveryNo->pressReturn();
    QVERIFY(!program.master().activityIndicator->isAnimating());
    QVERIFY(program.master().connectionDict().isEmpty());
    QVERIFY(program.master().textFieldShouldReturn(*program.master().txtDeliveryNo));
  }

  void aRunningLookupIsRegisteredAndShown() {
    TestProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::silence(); });
    program.enterPicking();
    program.master().tblOrders->setEnabled(false);
    program.master().tblStores->setEnabled(false);
    search(program, QStringLiteral("4711"));
    QVERIFY(program.master().activityIndicator->isAnimating());
    QVERIFY(!program.master().lblLookup->isHidden());
    QVERIFY(!program.master().txtDeliveryNo->isFirstResponder());
    QCOMPARE(program.master().connectionDict().keys(), QStringList(QStringLiteral("getorder")));
    QVERIFY(program.master().tblOrders->isEnabled());
    QVERIFY(program.master().tblStores->isEnabled());
  }

  void theProgramIsBusyDuringALookup() {
    TestProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::silence(); });
    program.enterPicking();
    search(program, QStringLiteral("4711"));
    QVERIFY(program.environment.busy.isActive());
    QTRY_COMPARE(program.service.requests().size(), 1);
    program.service.answerSilentConnection(Answer::http("[]"));
    QTRY_VERIFY(!program.environment.busy.isActive());
  }

  void everyInvalidAnswerShowsItsAlert_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("alert");
    const QByteArray sent = "This picking has already been sent to the server";
    QTest::newRow("already sent, plain") << sent << 200 << kAlreadySent;
    QTest::newRow("already sent, as a JSON string") << '"' + sent + '"' << 200 << kAlreadySent;
    QTest::newRow("already sent, inside a longer text")
        << "Error: " + sent + "." << 500 << kAlreadySent;
    QTest::newRow("already sent, in an array") << "[\"" + sent + "\"]" << 200 << kAlreadySent;
    QTest::newRow("already sent, as the description in a delivery")
        << deliveryJson({{"C1", "A", 5}}).replace("Description of A", sent) << 200 << kAlreadySent;
    QTest::newRow("already sent, but not UTF-8") << "\xFF" + sent << 200 << kUnreadable;
    QTest::newRow("already sent, in lower case") << sent.toLower() << 200 << kUnreadable;
    QTest::newRow("no body") << QByteArray() << 200 << kUnreadable;
    QTest::newRow("an HTML page") << QByteArray("<html>Not found</html>") << 404 << kUnreadable;
    QTest::newRow("an object") << QByteArray("{}") << 200 << kUnreadable;
    QTest::newRow("a number") << QByteArray("0") << 200 << kUnreadable;
    QTest::newRow("null") << QByteArray("null") << 200 << kUnreadable;
    QTest::newRow("an element that is not an object") << QByteArray("[1]") << 200 << kUnreadable;
    QTest::newRow("an array instead of a text")
        << QByteArray(R"([{"doc":[]}])") << 200 << kUnreadable;
    QTest::newRow("a truncated array") << QByteArray(R"([{"doc":"4711")") << 200 << kUnreadable;
    QTest::newRow("an empty array") << QByteArray("[]") << 200 << kUnknown;
    QTest::newRow("an empty array with an error status") << QByteArray(" [ ] ") << 500 << kUnknown;
  }
  void everyInvalidAnswerShowsItsAlert() {
    QFETCH(QByteArray, body);
    QFETCH(int, status);
    QFETCH(QString, alert);
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(body, status);
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(textsOf(program.environment.alerts), QStringList(alert));
    QVERIFY(program.master().connectionDict().isEmpty());
    QVERIFY(!program.environment.busy.isActive());
    QVERIFY(!program.master().btnPicking->isEnabled());
  }

  void anInvalidAnswerKeepsThePreviousDelivery_data() { everyInvalidAnswerShowsItsAlert_data(); }
  void anInvalidAnswerKeepsThePreviousDelivery() {
    QFETCH(QByteArray, body);
    QFETCH(int, status);
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5}, {"C2", "B", 2}}));
    program.lookUp(QStringLiteral("4711"));
    const auto boxes = program.detail().arrayPick();
    const auto items = program.detail().arrayItems();
    const QStringList before = stateOf(program);
    program.service.answerWith(body, status);
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(program.environment.alerts.count(), 1);
    QCOMPARE(program.detail().arrayPick(), boxes);
    QCOMPARE(program.detail().arrayItems(), items);
    QCOMPARE(stateOf(program), before);
  }

  void aTruncatedAnswerIsHandledLikeInvalidJson() {
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(
        [](const auto & /*request*/) { return Answer::cutShort("[]", 3000); });
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kUnreadable));
  }

  void aValidAnswerIsImportedWithAnyStatus() {
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}), 500);
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(program.detail().arrayPick()->size(), 1U);
  }

  void answeringALookupAlertChangesNothing() {
    TestProgram program;
    program.enterPicking();
    program.lookUp(QStringLiteral("4711"));
    QVERIFY(program.topAlert().delegate);
    const QStringList before = stateOf(program);
    program.answerTopAlert(0);
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(stateOf(program), before);
  }

  void aFailedConnectionShowsTwoAlerts_data() {
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("isReachable");
    QTest::newRow("the service is unreachable") << QStringLiteral("4711") << false;
    QTest::newRow("the connection is dropped") << QStringLiteral("4711") << true;
    QTest::newRow("the number cannot be part of a URL") << QStringLiteral("Δ4711") << true;
    QTest::newRow("the number would lead to another path") << QStringLiteral("../..") << true;
  }
  void aFailedConnectionShowsTwoAlerts() {
    QFETCH(QString, number);
    QFETCH(bool, isReachable);
    TestProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::none(); });
    if (!isReachable) {
      program.environment.serviceHost = LoopbackService::unreachableHost();
    }
    program.enterPicking();
    program.lookUp(number);
    const QStringList alerts = textsOf(program.environment.alerts);
    QCOMPARE(alerts.size(), 2);
    QCOMPARE(alerts.at(0), kFailed);
    QCOMPARE(alerts.at(1).section(u'|', 0, 0), "error message");
    QVERIFY(!alerts.at(1).section(u'|', 1, 1).isEmpty());
    QCOMPARE(alerts.at(1).section(u'|', 2), "OK");
    QVERIFY(!program.environment.busy.isActive());
  }

  void aFailedConnectionStaysRegisteredAndKeepsThePreviousDelivery() {
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.lookUp(QStringLiteral("4711"));
    const auto boxes = program.detail().arrayPick();
    const QStringList before = stateOf(program);
    program.environment.serviceHost = LoopbackService::unreachableHost();
    program.lookUp(QStringLiteral("4711"));
    QVERIFY(program.master().connectionDict().contains(QStringLiteral("getorder")));
    QCOMPARE(program.detail().arrayPick(), boxes);
    QCOMPARE(stateOf(program), before);
    QCOMPARE(program.master().jsonResult()->doc, "4711");
  }

  void afterAFailedConnectionLaterLookupsAreIgnored() {
    TestProgram program;
    program.enterPicking();
    failOnce(program);
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    search(program, QStringLiteral("4711"));
    QTRY_VERIFY(program.master().jsonResult());
    QCOMPARE(program.master().jsonResult()->doc, "4711");
    QVERIFY(program.master().activityIndicator->isAnimating());
    QVERIFY(program.master().lblLookup->isHidden());
    QVERIFY(!program.detail().arrayPick());
    QVERIFY(program.master().lblCustomerName->isHidden());
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(!program.environment.busy.isActive());
  }

  void underTheCarefulRulesALookupAfterAFailedConnectionWorks() {
    TestProgram program(PickingRules::careful());
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.enterPicking();
    failOnce(program);
    QVERIFY(program.master().connectionDict().isEmpty());
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(program.detail().arrayPick()->size(), 1U);
    QVERIFY(program.master().btnPicking->isEnabled());
  }

  void anIgnoredLookupShowsNoAlertForAnInvalidAnswer() {
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.lookUp(QStringLiteral("4711"));
    failOnce(program);
    program.service.answerWith("<html>");
    search(program, QStringLiteral("4711"));
    QTRY_VERIFY(!program.master().jsonResult());
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(program.master().activityIndicator->isAnimating());
  }

  void anIgnoredLookupThatFailsShowsTwoAlertsAndStopsTheIndicator() {
    TestProgram program;
    program.enterPicking();
    failOnce(program);
    program.service.answerWith([](const auto & /*request*/) { return Answer::none(); });
    search(program, QStringLiteral("4711"));
    QVERIFY(program.master().activityIndicator->isAnimating());
    QTRY_COMPARE(program.environment.alerts.count(), 2);
    QCOMPARE(program.alertTitles(), QStringList({"Could not get result", "error message"}));
    QVERIFY(!program.master().activityIndicator->isAnimating());
  }

  void aNewPickingScreenCanLookUpAgain() {
    TestProgram program;
    program.enterPicking();
    failOnce(program);
    program.master().performSegueWithIdentifier(QStringLiteral("returnFromPickingToStart"));
    program.answerTopAlert(0);
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(program.detail().arrayPick()->size(), 1U);
  }

  void aLookupIsNotImportedWhileAnotherIsRegistered() {
    TestProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::silence(); });
    program.enterPicking();
    search(program, QStringLiteral("1111"));
    QTRY_COMPARE(program.service.requests().size(), 1);
    const QPointer<HttpConnection> first = registered(program);
    program.service.answerWith(deliveryJson({{"C2", "B", 2, {}, QStringLiteral("2222")}}));
    search(program, QStringLiteral("2222"));
    QCOMPARE(registered(program), first);
    QTRY_VERIFY(program.master().jsonResult());
    QCOMPARE(program.master().jsonResult()->doc, "2222");
    QVERIFY(!program.detail().arrayPick());
    QVERIFY(program.master().activityIndicator->isAnimating());
    program.service.answerSilentConnection(
        Answer::http(deliveryJson({{"C1", "A", 5, {}, QStringLiteral("1111")}})));
    QTRY_VERIFY(program.detail().arrayPick() != nullptr);
    QCOMPARE(boxOf(program.detail().arrayPick()->at(0)), "C1");
    QCOMPARE(program.master().jsonResult()->doc, "1111");
    QVERIFY(!program.master().activityIndicator->isAnimating());
    QVERIFY(program.master().connectionDict().isEmpty());
  }

  void concurrentLookupsShareOneReceiveBuffer() {
    TestProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::silence(); });
    program.enterPicking();
    search(program, QStringLiteral("1111"));
    QTRY_COMPARE(program.service.requests().size(), 1);
    const QByteArray whole = Answer::http(deliveryJson({{"C1", "A", 5}})).bytes;
    program.service.answerSilentConnection({whole.chopped(20), false});
    QTRY_VERIFY(registered(program)->announcedBytes() > 0);
    program.service.answerWith(deliveryJson({{"C2", "B", 2, {}, QStringLiteral("2222")}}));
    search(program, QStringLiteral("2222"));
    QTRY_VERIFY(program.master().jsonResult());
    program.service.answerSilentConnection({whole.last(20), true});
    QTRY_COMPARE(textsOf(program.environment.alerts), QStringList(kUnreadable));
    QVERIFY(!program.master().jsonResult());
    QVERIFY(!program.detail().arrayPick());
  }

  void aNewlyRegisteredLookupStartsWithoutEarlierData() {
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.lookUp(QStringLiteral("4711"));
    program.service.answerWith(deliveryJson({{"C2", "B", 2}}));
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(program.detail().arrayPick()->size(), 1U);
    QCOMPARE(boxOf(program.detail().arrayPick()->at(0)), "C2");
  }

  void aRegisteredLookupStartsWithAnEmptyBuffer() {
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.lookUp(QStringLiteral("4711"));
    program.service.answerWith([](const auto & /*request*/) { return Answer::silence(); });
    search(program, QStringLiteral("4711"));
    program.master().connectionDidFinishLoading(*registered(program));
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kUnreadable));
  }

  void anIgnoredLookupKeepsTheDataOfTheRegisteredOne() {
    TestProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::silence(); });
    program.enterPicking();
    search(program, QStringLiteral("1111"));
    HttpConnection &first = *registered(program);
    const QByteArray body = deliveryJson({{"C1", "A", 5}});
    program.master().didReceiveData(first, body.chopped(20));
    search(program, QStringLiteral("2222"));
    program.master().didReceiveData(first, body.last(20));
    program.master().connectionDidFinishLoading(first);
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(program.detail().arrayPick()->size(), 1U);
  }

  void leavingThePickingScreenAbortsARunningLookup() {
    TestProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::silence(); });
    program.enterPicking();
    const QPointer<masterViewController> master = &program.master();
    search(program, QStringLiteral("4711"));
    QTRY_COMPARE(program.service.requests().size(), 1);
    master->performSegueWithIdentifier(QStringLiteral("returnFromPickingToStart"));
    program.answerTopAlert(0);
    QTRY_VERIFY(master.isNull());
    QVERIFY(!program.environment.busy.isActive());
    QCOMPARE(program.environment.alerts.count(), 0);
  }

 private:
  static HttpConnection *registered(const TestProgram &program) {
    return program.master().connectionDict().value(QStringLiteral("getorder"));
  }

  /// Makes one lookup fail and answers its alerts.
  static void failOnce(TestProgram &program) {
    program.environment.serviceHost = LoopbackService::unreachableHost();
    program.lookUp(QStringLiteral("4711"));
    program.answerTopAlert(0);
    program.answerTopAlert(0);
    program.environment.serviceHost = program.service.host();
  }
};

CARTONPICK_TEST(masterViewControllerLookupTest);
#include "masterViewControllerLookup_test.moc"
