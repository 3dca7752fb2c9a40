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

/// Everything of the picking screen that a lookup may change.
QStringList everythingOf(const TestProgram &program) {
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

/// The search for a delivery, up to its answer.
class masterViewControllerLookupTest : public QObject {
  Q_OBJECT

 private slots:
  void anEntryThatIsTooShortIsRefused_data() {
    const QString missing =
        QStringLiteral("Please fill in data first|Delivery number is missing.|OK");
    const QString tooShort = QStringLiteral(
        "Please fill in additional data|Delivery number should be at least 2 characters.|OK");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("alert");
    QTest::newRow("nothing") << QString() << missing;
    QTest::newRow("blanks") << QStringLiteral("   ") << missing;
    QTest::newRow("blanks and tabs") << QStringLiteral(" \t ") << missing;
    QTest::newRow("no-break blanks") << QStringLiteral("\u00A0\u00A0") << missing;
    QTest::newRow("one character") << QStringLiteral("1") << tooShort;
    QTest::newRow("one character between blanks") << QStringLiteral(" 1\t") << tooShort;
    QTest::newRow("a line break is no blank") << QStringLiteral(" \n ") << tooShort;
  }
  void anEntryThatIsTooShortIsRefused() {
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
    QTest::newRow("blanks around it") << QStringLiteral(" 12 ") << QByteArray("%2012%20");
    QTest::newRow("a blank in it") << QStringLiteral("4 7") << QByteArray("4%207");
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

  void theAnswerMustNotComeFromACache() {
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
    QVERIFY(!program.master().txtDeliveryNo->isFirstResponder());
    QCOMPARE(program.master().connectionDict().keys(), QStringList(QStringLiteral("getorder")));
    QVERIFY(program.master().tblOrders->isEnabled());
    QVERIFY(program.master().tblStores->isEnabled());
  }

  void nothingCanBeTouchedWhileALookupRuns() {
    TestProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::silence(); });
    program.enterPicking();
    search(program, QStringLiteral("4711"));
    QVERIFY(program.environment.busy.isActive());
    QTRY_COMPARE(program.service.requests().size(), 1);
    program.service.answerSilentConnection(Answer::http("[]"));
    QTRY_VERIFY(!program.environment.busy.isActive());
  }

  void everyBadAnswerHasItsMessage_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("alert");
    const QByteArray sent = "This picking has already been sent to the server";
    QTest::newRow("already sent, plain") << sent << 200 << kAlreadySent;
    QTest::newRow("already sent, a JSON text") << '"' + sent + '"' << 200 << kAlreadySent;
    QTest::newRow("already sent, within more text")
        << "Error: " + sent + "." << 500 << kAlreadySent;
    QTest::newRow("already sent, in an array") << "[\"" + sent + "\"]" << 200 << kAlreadySent;
    QTest::newRow("already sent, but not UTF-8") << "\xFF" + sent << 200 << kUnreadable;
    QTest::newRow("already sent, in other letters") << sent.toLower() << 200 << kUnreadable;
    QTest::newRow("no body") << QByteArray() << 200 << kUnreadable;
    QTest::newRow("a page of the server")
        << QByteArray("<html>Not found</html>") << 404 << kUnreadable;
    QTest::newRow("an object") << QByteArray("{}") << 200 << kUnreadable;
    QTest::newRow("a number") << QByteArray("0") << 200 << kUnreadable;
    QTest::newRow("null") << QByteArray("null") << 200 << kUnreadable;
    QTest::newRow("an element that is no object") << QByteArray("[1]") << 200 << kUnreadable;
    QTest::newRow("a text that is an array") << QByteArray(R"([{"doc":[]}])") << 200 << kUnreadable;
    QTest::newRow("half an array") << QByteArray(R"([{"doc":"4711")") << 200 << kUnreadable;
    QTest::newRow("an empty array") << QByteArray("[]") << 200 << kUnknown;
    QTest::newRow("an empty array with an error status") << QByteArray(" [ ] ") << 500 << kUnknown;
  }
  void everyBadAnswerHasItsMessage() {
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

  void afterABadAnswerThePreviousDeliveryStays_data() { everyBadAnswerHasItsMessage_data(); }
  void afterABadAnswerThePreviousDeliveryStays() {
    QFETCH(QByteArray, body);
    QFETCH(int, status);
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5}, {"C2", "B", 2}}));
    program.lookUp(QStringLiteral("4711"));
    const auto boxes = program.detail().arrayPick();
    const auto items = program.detail().arrayItems();
    const QStringList before = everythingOf(program);
    program.service.answerWith(body, status);
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(program.environment.alerts.count(), 1);
    QCOMPARE(program.detail().arrayPick(), boxes);
    QCOMPARE(program.detail().arrayItems(), items);
    QCOMPARE(everythingOf(program), before);
  }

  void anAnswerThatIsCutShortIsLikeOneThatIsNotJson() {
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(
        [](const auto & /*request*/) { return Answer::cutShort("[]", 3000); });
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kUnreadable));
  }

  void aGoodAnswerIsImportedWhateverItsStatus() {
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}), 500);
    program.lookUp(QStringLiteral("4711"));
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(program.detail().arrayPick()->size(), 1U);
  }

  void anAlertOfTheLookupIsDoneWithItsAnswer() {
    TestProgram program;
    program.enterPicking();
    program.lookUp(QStringLiteral("4711"));
    QVERIFY(program.topAlert().delegate);
    const QStringList before = everythingOf(program);
    program.answerTopAlert(0);
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(everythingOf(program), before);
  }

  void aFailedConnectionHasTwoMessages_data() {
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("isReachable");
    QTest::newRow("nothing listens") << QStringLiteral("4711") << false;
    QTest::newRow("the connection is dropped") << QStringLiteral("4711") << true;
    QTest::newRow("the number cannot stand in an address") << QStringLiteral("Δ4711") << true;
    QTest::newRow("the number would lead to another path") << QStringLiteral("../..") << true;
  }
  void aFailedConnectionHasTwoMessages() {
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

  void aFailedConnectionKeepsItsEntryAndThePreviousDelivery() {
    TestProgram program;
    program.enterPicking();
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.lookUp(QStringLiteral("4711"));
    const auto boxes = program.detail().arrayPick();
    const QStringList before = everythingOf(program);
    program.environment.serviceHost = LoopbackService::unreachableHost();
    program.lookUp(QStringLiteral("4711"));
    QVERIFY(program.master().connectionDict().contains(QStringLiteral("getorder")));
    QCOMPARE(program.detail().arrayPick(), boxes);
    QCOMPARE(everythingOf(program), before);
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
    QVERIFY(!program.detail().arrayPick());
    QVERIFY(program.master().lblCustomerName->isHidden());
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(!program.environment.busy.isActive());
  }

  void anIgnoredLookupSaysNothingOfABadAnswerEither() {
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

  void theNextPickingScreenLooksUpAgain() {
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

  void aLookupThatFindsAnotherRegisteredIsNotImported() {
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

  void twoLookupsAtOnceShareTheReceivedData() {
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

  void aNewRegisteredLookupStartsWithoutTheDataOfTheLast() {
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

  void leavingEndsARunningLookup() {
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

  /// Lets one lookup fail and answers its messages.
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
