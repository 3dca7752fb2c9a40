#include "sending/PickingSender.h"

#include "device/NetworkHttpClient.h"
#include "sending/SendPickBody.h"
#include "support/FullDisk.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTest>

#include <SQLiteCpp/Database.h>
#include <chrono>
#include <memory>
#include <utility>

namespace {

using Answer = LoopbackService::Answer;

const QString kDoc = QStringLiteral("4711");
const QByteArray kAccepted = R"("0")";
const QString kSent = QStringLiteral("Picking was sent||OK");
const QString kNothing = QStringLiteral("No picking to send||OK");
const QString kUnreachable =
    QStringLiteral("Could not contact server|No connection could be opened to server|OK");

/// The real client, which keeps the time-out of the last request.
class TimeoutRecorder : public HttpClient {
 public:
  HttpConnection *start(const HttpRequest &request, WeakDelegate<HttpConnectionDelegate> delegate,
                        QObject *owner) override {
    timeout = request.timeout;
    return m_client.start(request, std::move(delegate), owner);
  }

  std::chrono::milliseconds timeout{};

 private:
  NetworkHttpClient m_client;
};

/// The delegate of the sender's alerts.
class AlertDelegate : public QObject, public AlertViewDelegate {};

/// A program with picks to send.
class PickedProgram : public TestProgram {
 public:
  explicit PickedProgram(const PickingRules &rules = {}) : TestProgram(rules) {
    add(QStringLiteral("C1"), QStringLiteral("A"), 3);
    add(QStringLiteral("C2"), QStringLiteral("A"), 0);
    add(QStringLiteral("C2"), QStringLiteral("B"), 7);
    service.answerWith(kAccepted);
  }

  void add(const QString &box, const QString &item, int pickqty, int sent = 0,
           const QString &doc = kDoc) {
    context().insert(Picking{.barcode = u'b' + item,
                             .box = box,
                             .datepicked = clock->now(),
                             .descr = QStringLiteral("HEART"),
                             .doc = doc,
                             .item = item,
                             .ordernum = QStringLiteral("A1"),
                             .orderqty = 9,
                             .pickqty = pickqty,
                             .sent = sent});
    QVERIFY(!context().save());
  }

  void send(const QString &doc = kDoc) {
    sender = std::make_unique<PickingSender>(environment, context(), &alertDelegate);
    sender->send(doc);
  }

  /// Sends and waits for the alert.
  void sendAll() {
    const int before = environment.alerts.count();
    send();
    QTRY_COMPARE(environment.alerts.count(), before + 1);
  }

  /// Returns the `sent` flag of each row of the delivery `doc`.
  QList<int> sentFlags(const QString &doc = kDoc) {
    QList<int> flags;
    const auto rows = context().pickings(doc);
    for (const Picking &row : *rows) {
      flags << row.sent;
    }
    return flags;
  }

  [[nodiscard]] QJsonArray sentElements() const {
    return QJsonDocument::fromJson(service.requests().last().body).array();
  }

  AlertDelegate alertDelegate;
  std::unique_ptr<PickingSender> sender;
};

}  // namespace

class PickingSenderTest : public QObject {
  Q_OBJECT

 private slots:
  void aDeliveryWithoutPicksHasNothingToSend_data() {
    QTest::addColumn<QString>("doc");
    QTest::newRow("unknown") << QStringLiteral("0815");
    QTest::newRow("no delivery") << QString();
  }
  void aDeliveryWithoutPicksHasNothingToSend() {
    QFETCH(QString, doc);
    PickedProgram program;
    program.send(doc);
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kNothing));
    QVERIFY(!program.environment.busy.isActive());
    QVERIFY(program.service.requests().isEmpty());
  }

  void aSentDeliveryHasNothingToSend() {
    PickedProgram program;
    program.sendAll();
    program.answerTopAlert(0);
    program.sendAll();
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kNothing));
    QCOMPARE(program.service.requests().size(), 1);
  }

  void anUnreadableStoreHasNothingToSend() {
    PickedProgram program;
    SQLite::Database(program.storePath().toStdString(), SQLite::OPEN_READWRITE)
        .exec("ALTER TABLE Picking RENAME TO Lost");
    QTest::ignoreMessage(QtWarningMsg, "Fetch failed: no such table: Picking");
    program.send();
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kNothing));
  }

  void theRequestPostsJson() {
    PickedProgram program;
    program.sendAll();
    const LoopbackService::Request &request = program.service.requests().at(0);
    QCOMPARE(request.method, "POST");
    QCOMPARE(request.target, "/qir_pick/servicepick.svc/json/sendpick");
    QCOMPARE(request.headers.value("accept"), "application/json");
    QCOMPARE(request.headers.value("content-type"), "application/json");
    QCOMPARE(request.headers.value("data-type"), "json");
    QCOMPARE(request.headers.value("content-length"), QByteArray::number(request.body.size()));
  }

  void aSendWaitsTwoMinutesForTheService() {
    PickedProgram program;
    auto recorder = std::make_unique<TimeoutRecorder>();
    const TimeoutRecorder &client = *recorder;
    program.environment.http = std::move(recorder);
    program.sendAll();
    QVERIFY(client.timeout == std::chrono::minutes(2));
  }

  void allBoxesAreSentInOneRequest() {
    PickedProgram program;
    const auto rows = program.context().unsentPickings(kDoc);
    program.sendAll();
    QCOMPARE(program.service.requests().size(), 1);
    QCOMPARE(program.service.requests().at(0).body,
             sendPickBody(*rows, program.clock->localZone()));
    QStringList lines;
    for (const auto element : program.sentElements()) {
      lines << QStringLiteral("%1 %2 %3")
                   .arg(element[u"box"].toString(), element[u"item"].toString())
                   .arg(element[u"qty"].toInt(-1));
    }
    QCOMPARE(lines, QStringList({"C1 A 3", "C2 A 0", "C2 B 7"}));
  }

  void pickTimesAreInTheDevicesCurrentTimeZone() {
    PickedProgram program;
    program.clock->set(QDateTime(QDate(2026, 3, 29), QTime(1, 30), QTimeZone::utc()));
    program.add(QStringLiteral("C3"), QStringLiteral("C"), 1);
    program.clock->setZone(QTimeZone("America/New_York"));
    program.sendAll();
    QCOMPARE(program.sentElements().first()[u"datepicked"].toString(), "2026-03-02 03:12:05");
    QCOMPARE(program.sentElements().last()[u"datepicked"].toString(), "2026-03-28 21:30:00");
  }

  void aBodyWithNonAsciiTextIsTruncated() {
    PickedProgram program;
    program.add(QStringLiteral("C3"), QStringLiteral("ΑΒΓ"), 1);
    program.sendAll();
    const LoopbackService::Request &request = program.service.requests().at(0);
    // The body loses a byte for each of the two-byte letters: three in the item code, three in the
    // barcode.
    QVERIFY(request.body.endsWith("\"sent\": 0\n  "));
    QCOMPARE(request.headers.value("content-length"), QByteArray::number(request.body.size()));
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kSent));
  }

  void anAcceptedPickingIsMarkedAsSent_data() {
    QTest::addColumn<int>("status");
    QTest::newRow("200") << 200;
    QTest::newRow("302") << 302;
    QTest::newRow("401") << 401;
    QTest::newRow("404") << 404;
    QTest::newRow("407") << 407;
    QTest::newRow("500") << 500;
    QTest::newRow("503") << 503;
  }
  void anAcceptedPickingIsMarkedAsSent() {
    QFETCH(int, status);
    PickedProgram program;
    program.service.answerWith(kAccepted, status);
    program.sendAll();
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kSent));
    QCOMPARE(program.sentFlags(), QList<int>({1, 1, 1}));
    QVERIFY(!program.context().hasChanges());
  }

  void anyOtherReplyIsShownUnchanged_data() {
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QByteArray &reply) {
      QTest::newRow(name) << reply << QString::fromUtf8(reply);
    };
    row("without quotes", "0");
    row("a trailing line break", "\"0\"\n");
    row("a leading space", " \"0\"");
    row("a trailing space", "\"0\" ");
    row("another digit", "\"1\"");
    row("two digits", "\"00\"");
    row("empty quotes", "\"\"");
    row("empty", "");
    row("a trailing null byte", QByteArray("\"0\"\0", 4));
    row("an array", "[\"0\"]");
    row("an HTML page", "<html>Κλειστό</html>");
    row("10,000 bytes", QByteArray(10'000, 'x'));
    QTest::newRow("not UTF-8") << QByteArray("\xFF\"0\"") << QString();
  }
  void anyOtherReplyIsShownUnchanged() {
    QFETCH(QByteArray, reply);
    QFETCH(QString, message);
    for (const int status : {200, 500}) {
      PickedProgram program;
      program.service.answerWith(reply, status);
      program.sendAll();
      QCOMPARE(program.topAlert().title, "Could not contact server");
      QCOMPARE(program.topAlert().message, message);
      QCOMPARE(program.topAlert().buttons, QStringList("OK"));
      QCOMPARE(program.sentFlags(), QList<int>({0, 0, 0}));
    }
  }

  void onlyTheBeginningOfALongReplyIsShown_data() {
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("message");
    QTest::newRow("one byte too long")
        << QByteArray(10'001, 'x') << QString(10'000, u'x') + QStringLiteral(" …");
    QTest::newRow("a megabyte") << QByteArray(1'000'000, 'x')
                                << QString(10'000, u'x') + QStringLiteral(" …");
    QTest::newRow("cut within a character")
        << "x" + QByteArray("Κ").repeated(6'000) << u'x' + QString(4'999, u'Κ') + " …";
    QTest::newRow("accepted, followed by spaces")
        << "\"0\"" + QByteArray(10'000, ' ') << "\"0\"" + QString(9'997, u' ') + " …";
    QTest::newRow("not UTF-8") << QByteArray(20'000, '\x80') << QString();
  }
  void onlyTheBeginningOfALongReplyIsShown() {
    QFETCH(QByteArray, reply);
    QFETCH(QString, message);
    PickedProgram program;
    program.service.answerWith(reply);
    program.sendAll();
    QCOMPARE(program.topAlert().title, "Could not contact server");
    QCOMPARE(program.topAlert().message, message);
    QCOMPARE(program.sentFlags(), QList<int>({0, 0, 0}));
  }

  void aReplyWithAByteOrderMarkIsNotAccepted() {
    PickedProgram program;
    program.service.answerWith("\xEF\xBB\xBF" + kAccepted);
    program.sendAll();
    QCOMPARE(program.topAlert().title, "Could not contact server");
    QCOMPARE(program.sentFlags(), QList<int>({0, 0, 0}));
  }

  void aTruncatedReplyIsNotAccepted() {
    PickedProgram program;
    program.service.answerWith(
        [](const auto & /*request*/) { return Answer::cutShort(kAccepted, 10); });
    program.sendAll();
    QCOMPARE(program.topAlert().title, "Could not contact server");
    QCOMPARE(program.sentFlags(), QList<int>({0, 0, 0}));
  }

  void withoutAReplyNothingIsMarkedAsSent_data() {
    QTest::addColumn<bool>("isReachable");
    QTest::newRow("the service is unreachable") << false;
    QTest::newRow("the connection is dropped") << true;
  }
  void withoutAReplyNothingIsMarkedAsSent() {
    QFETCH(bool, isReachable);
    PickedProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::none(); });
    if (!isReachable) {
      program.environment.serviceHost = LoopbackService::unreachableHost();
    }
    program.sendAll();
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kUnreachable));
    QCOMPARE(program.sentFlags(), QList<int>({0, 0, 0}));
    QVERIFY(!program.context().hasChanges());
    QVERIFY(!program.environment.busy.isActive());
  }

  void aDroppedRequestIsNotRetried() {
    PickedProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::none(); });
    program.sendAll();
    QCOMPARE(program.service.requests().size(), 1);
  }

  void afterAFailureThePickingCanBeSentAgain() {
    PickedProgram program;
    program.service.answerWith("busy");
    program.sendAll();
    program.answerTopAlert(0);
    program.service.answerWith(kAccepted);
    program.sendAll();
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kSent));
    QCOMPARE(program.sentElements().size(), 3);
    QCOMPARE(program.sentFlags(), QList<int>({1, 1, 1}));
  }

  void aSecondSendIgnoresTheReplyToTheFirst() {
    PickedProgram program;
    program.service.answerWith("busy");
    program.sendAll();
    program.answerTopAlert(0);
    program.service.answerWith(kAccepted);
    program.sender->send(kDoc);
    QTRY_COMPARE(textsOf(program.environment.alerts), QStringList(kSent));
    QCOMPARE(program.sentFlags(), QList<int>({1, 1, 1}));
  }

  void onlyUnsentRowsOfTheDeliveryAreSentAndMarked() {
    PickedProgram program;
    program.add(QStringLiteral("C1"), QStringLiteral("S"), 1, 1);
    program.add(QStringLiteral("C1"), QStringLiteral("O"), 1, 0, QStringLiteral("0815"));
    program.sendAll();
    QCOMPARE(program.sentElements().size(), 3);
    QCOMPARE(program.sentFlags(), QList<int>({1, 1, 1, 1}));
    QCOMPARE(program.sentFlags(QStringLiteral("0815")), QList<int>({0}));
  }

  void picksAddedAfterASendAreSentByTheNextOne() {
    PickedProgram program;
    program.sendAll();
    program.add(QStringLiteral("C9"), QStringLiteral("Z"), 1);
    program.sendAll();
    QCOMPARE(program.sentElements().size(), 1);
    QCOMPARE(program.sentElements().at(0)[u"item"].toString(), "Z");
  }

  void aRowAddedAfterTheRequestIsNotMarkedAsSent() {
    PickedProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::silence(); });
    program.send();
    QTRY_COMPARE(program.service.requests().size(), 1);
    program.add(QStringLiteral("C9"), QStringLiteral("Z"), 1);
    program.service.answerSilentConnection(Answer::http(kAccepted));
    QTRY_COMPARE(textsOf(program.environment.alerts), QStringList(kSent));
    QCOMPARE(program.sentFlags(), QList<int>({1, 1, 1, 0}));
  }

  void theProgramIsBusyUntilTheReply() {
    PickedProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::silence(); });
    program.send();
    QVERIFY(program.environment.busy.isActive());
    QVERIFY(!program.environment.busy.title().isEmpty());
    QTRY_COMPARE(program.service.requests().size(), 1);
    QVERIFY(program.environment.busy.isActive());
    QCOMPARE(program.environment.alerts.count(), 0);
    program.service.answerSilentConnection(Answer::http(kAccepted));
    QTRY_VERIFY(!program.environment.busy.isActive());
  }

  void theAlertIsShownAfterTheBusyStateHasEnded_data() {
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("accepted") << kAccepted;
    QTest::newRow("refused") << QByteArray("no");
  }
  void theAlertIsShownAfterTheBusyStateHasEnded() {
    QFETCH(QByteArray, reply);
    PickedProgram program;
    program.service.answerWith(reply);
    QStringList seen;
    QList<int> flags;
    QObject::connect(&program.environment.busy, &BusyState::changed, this, [&] {
      if (!program.environment.busy.isActive()) {
        seen << QString::number(program.environment.alerts.count());
        flags = program.sentFlags();
      }
    });
    program.sendAll();
    QCOMPARE(seen, QStringList("0"));
    QCOMPARE(flags, program.sentFlags());
    disconnect(&program.environment.busy, nullptr, this, nullptr);
  }

  void alertsHaveNoTagAndTheGivenDelegate() {
    PickedProgram program;
    program.send(QStringLiteral("0815"));
    program.sendAll();
    for (const AlertView &alert : program.environment.alerts.alerts()) {
      QCOMPARE(alert.tag, 0);
      QCOMPARE(alert.delegate.get(), static_cast<AlertViewDelegate *>(&program.alertDelegate));
    }
    QCOMPARE(program.environment.alerts.count(), 2);
  }

  void underTheCarefulRulesPicksThatCannotBeMarkedAsSentAreSentAgain() {
    PickedProgram program(PickingRules::careful());
    {
      const FullDisk disk;
      QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^Not saved: disk I/O error"));
      program.sendAll();
    }
    QCOMPARE(textsOf(program.environment.alerts),
             QStringList("Picking was sent|The tablet could not save that it was sent: disk I/O "
                         "error. The next send reports its lines again.|OK"));
    QCOMPARE(program.sentFlags(), QList<int>({0, 0, 0}));
    program.answerTopAlert(0);
    program.sendAll();
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kSent));
    QCOMPARE(program.sentFlags(), QList<int>({1, 1, 1}));
    QCOMPARE(program.service.requests().at(0).body, program.service.requests().at(1).body);
  }

  void destroyingTheSenderAbortsTheSend() {
    PickedProgram program;
    program.service.answerWith([](const auto & /*request*/) { return Answer::silence(); });
    program.send();
    program.sender.reset();
    QVERIFY(!program.environment.busy.isActive());
    QCOMPARE(program.sentFlags(), QList<int>({0, 0, 0}));
  }

  void destroyingAFinishedSenderDoesNotEndAnotherBusyState_data() {
    QTest::addColumn<bool>("hasReply");
    QTest::newRow("with a reply") << true;
    QTest::newRow("without a reply") << false;
  }
  void destroyingAFinishedSenderDoesNotEndAnotherBusyState() {
    QFETCH(const bool, hasReply);
    PickedProgram program;
    if (!hasReply) {
      program.environment.serviceHost = LoopbackService::unreachableHost();
    }
    program.sendAll();
    program.environment.busy.begin(QStringLiteral("Another"));
    program.sender.reset();
    QVERIFY(program.environment.busy.isActive());
  }
};

CARTONPICK_TEST(PickingSenderTest);
#include "PickingSender_test.moc"
