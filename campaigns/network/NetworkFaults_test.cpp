#include "network/CallingTablet.h"
#include "network/FaultyService.h"
#include "network/ProcessFigures.h"
#include "support/TestClass.h"

#include <QPointer>
#include <QQuickWindow>
#include <QRandomGenerator>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <algorithm>
#include <memory>
#include <optional>

// Tests the program in its window, with its real network client, against a service that misbehaves
// in many ways. After every fault, the test checks the message, the lists and the store, that no
// connection, network thread or descriptor is left, and that the window accepts touches.
//
// With CARTONPICK_FAULTS=long, the test injects 3,000 faults in random order with the seed
// CARTONPICK_SEED, and cuts compressed and chunked answers at every byte. Otherwise it injects
// fewer.

namespace {

using namespace std::chrono_literals;
using Answer = LoopbackService::Answer;

constexpr auto kShortTimeout = 100ms;
constexpr qint64 kMebibyte = 1024LL * 1024;
#ifdef __SANITIZE_ADDRESS__
constexpr qint64 kSlack = 500 * kMebibyte;
#else
constexpr qint64 kSlack = 100 * kMebibyte;
#endif

const Fault kNoFault{"no fault", [](const QByteArray &body) { return Answer{wholeAnswer(body)}; }};
const QString kUnreachable = QStringLiteral("No connection could be opened to server");

/// Returns an alert as "title|message|button".
QString alert(const QString &title, const QString &message) {
  return title + u'|' + message + QStringLiteral("|OK");
}

/// Returns the expected alerts, the topmost last. A string that ends in '|' matches any alert that
/// starts with it.
QStringList promisedAlerts(Call call, Ending ending, const Fault &fault, const QByteArray &body) {
  const QString noContact = "Could not contact server";
  const bool isTaken = ending == Ending::Taken;
  const bool isAnswered = ending != Ending::None;
  switch (call) {
    case Call::Lookup:
      if (isTaken) {
        return {};
      }
      if (isAnswered) {
        return {alert("Could not fetch order details", "Loading failed. Please try again.")};
      }
      return {alert("Could not get result", "Loading failed. Please try again."),
              fault.ending == Ending::None && fault.isSilent
                  ? alert("error message", "The request timed out.")
                  : QString("error message|")};
    case Call::Catalogue:
      return {isTaken ? alert("Saved", "Items have been loaded") : alert(noContact, kUnreachable)};
    case Call::Send:
      if (isTaken) {
        return {alert("Picking was sent", "")};
      }
      if (isAnswered) {
        return {fault.arrives ? alert(noContact, fault.arrives(body)) : noContact + u'|'};
      }
      return {alert(noContact, kUnreachable)};
  }
  return {};
}

bool areTheSame(const QStringList &alerts, const QStringList &promised) {
  return std::equal(alerts.begin(), alerts.end(), promised.begin(), promised.end(),
                    [](const QString &shown, const QString &text) {
                      return shown == text || (text.endsWith(u'|') && shown.startsWith(text));
                    });
}

bool areAsPromised(const QStringList &alerts, Call call, const Fault &fault,
                   const QByteArray &body) {
  const auto isIt = [&](Ending ending) {
    return areTheSame(alerts, promisedAlerts(call, ending, fault, body));
  };
  return fault.ending == Ending::NotTaken ? isIt(Ending::Unreadable) || isIt(Ending::None)
                                          : isIt(fault.ending);
}

/// The tablet's store and screen after a call. A call whose answer is not accepted changes neither.
struct Kept {
  QStringList stored = CallingTablet::storedBefore();
  QStringList delivery = CallingTablet::deliveryBefore();
};

Kept promisedKept(Call call, Ending ending) {
  Kept kept;
  if (ending != Ending::Taken) {
    return kept;
  }
  switch (call) {
    case Call::Lookup:
      kept.delivery = {
          "Customer: Next", "Brand: ", "Date Created: ", "Date Shipped: ", "N N 1 0", "N 1 0"};
      break;
    case Call::Catalogue:
      kept.stored = {"4711 C1 A 3 0", "N nb New", "O - -"};
      break;
    case Call::Send:
      kept.stored[0] = "4711 C1 A 3 1";
      break;
  }
  return kept;
}

bool isLong() {
  return qEnvironmentVariable("CARTONPICK_FAULTS") == u"long";
}

}  // namespace

class NetworkFaultsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QVERIFY(m_elsewhere.listen(QHostAddress::LocalHost));
    connect(&m_elsewhere, &QTcpServer::newConnection, this, [this] { ++m_strays; });
  }

  void init() {
    if (m_tablet) {
      return;
    }
    m_tablet = std::make_unique<CallingTablet>();
    m_descriptors.reset();
    // Some descriptors are opened only when they are first needed.
    for (const Call call : kCalls) {
      meet(call, kNoFault);
    }
    m_descriptors = openDescriptors().size();
  }

  void cleanup() {
    // A failed test must not affect the next one.
    if (QTest::currentTestFailed()) {
      m_tablet.reset();
    }
  }

  void cleanupTestCase() {
    m_tablet.reset();
    qInfo("%d calls were met by a fault.", m_faults);
  }

  void everyCallHasItsTimeout() {
    const std::array expected{60s, 150s, 120s};
    for (const Call call : kCalls) {
      meet(call, kNoFault);
      QCOMPARE(m_tablet->client().askedTimeout(), expected[static_cast<std::size_t>(call)]);
    }
  }

  void anUnreachableServiceIsReported_data() { addCalls(); }
  void anUnreachableServiceIsReported() {
    QFETCH(const Call, call);
    meet(call, {"refused", [](const QByteArray &) { return Answer::none(); }, Ending::None},
         LoopbackService::unreachableHost());
  }

  void everyFaultHasItsExpectedOutcome_data() {
    QTest::addColumn<Call>("call");
    QTest::addColumn<Fault>("fault");
    for (const Call call : kCalls) {
      for (const Fault &fault : everyFault(elsewhere())) {
        QTest::addRow("%s, %s", qPrintable(nameOf(call)), fault.name.constData()) << call << fault;
      }
    }
  }
  void everyFaultHasItsExpectedOutcome() {
    QFETCH(const Call, call);
    QFETCH(const Fault, fault);
    meet(call, fault);
    QCOMPARE(m_strays, 0);
  }

  void aTruncatedAnswerChangesNothing_data() { addCalls(); }
  void aTruncatedAnswerChangesNothing() {
    QFETCH(const Call, call);
    const QByteArray bytes = wholeAnswer(CallingTablet::goodBody(call));
    const qsizetype head = bytes.indexOf("\r\n\r\n") + 4;
    for (qsizetype size = 0; size < bytes.size() && !QTest::currentTestFailed(); ++size) {
      meet(call, {"cut after " + QByteArray::number(size) + " bytes",
                  [&](const QByteArray &) { return Answer{bytes.first(size)}; },
                  size < head ? Ending::None : Ending::Unreadable,
                  [&](const QByteArray &body) { return body.first(size - head); }});
    }
  }

  void aTruncatedChunkedOrCompressedAnswerIsAcceptedInFullOrNotAtAll_data() {
    QTest::addColumn<Call>("call");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qsizetype>("tooFew");
    QTest::addColumn<qsizetype>("enough");
    // The end of the compressed data, the checksum and the size, which follow the body.
    constexpr qsizetype kAfterBody = 9;
    for (const Call call : kCalls) {
      const QByteArray body = CallingTablet::goodBody(call);
      const QByteArray chunked = chunkedAnswer(body);
      // Between these sizes the body is complete but its end is not, so both outcomes are correct.
      const qsizetype end = chunked.indexOf("\r\n0\r\n");
      QTest::addRow("%s, chunked", qPrintable(nameOf(call)))
          << call << chunked << end - 1 << end + 6;
      const QByteArray packed = packedAnswer(body);
      QTest::addRow("%s, packed", qPrintable(nameOf(call)))
          << call << packed << packed.size() - kAfterBody - 1 << packed.size();
    }
  }
  void aTruncatedChunkedOrCompressedAnswerIsAcceptedInFullOrNotAtAll() {
    constexpr qsizetype kSome = 23;
    QFETCH(const Call, call);
    QFETCH(const QByteArray, bytes);
    QFETCH(const qsizetype, tooFew);
    QFETCH(const qsizetype, enough);
    const qsizetype step = isLong() ? 1 : kSome;
    for (qsizetype size = bytes.size() % step; size <= bytes.size(); size += step) {
      Fault fault{"cut after " + QByteArray::number(size) + " bytes",
                  [&](const QByteArray &) { return Answer{bytes.first(size)}; }};
      if (size <= tooFew) {
        // If the connection ends within a chunk's length field, the client might not notice it.
        fault.ending = Ending::NotTaken;
        fault.arrives = nullptr;
        fault.isSilent = true;
      }
      if (size <= tooFew || size >= enough) {
        meet(call, fault);
      }
      if (QTest::currentTestFailed()) {
        return;
      }
    }
  }

  void faultsInRandomOrderHaveTheirExpectedOutcomes_data() {
    QTest::addColumn<quint32>("seed");
    const int rounds = isLong() ? 30 : 1;
    const int seed = qEnvironmentVariableIntValue("CARTONPICK_SEED");
    for (int round = 0; round < rounds; ++round) {
      QTest::addRow("seed %d", seed + round) << static_cast<quint32>(seed + round);
    }
  }
  void faultsInRandomOrderHaveTheirExpectedOutcomes() {
    QFETCH(const quint32, seed);
    const int count = isLong() ? 100 : 12;
    QRandomGenerator random(seed);
    const auto anyOf = [&](const auto &choices) {
      return choices[random.bounded(static_cast<quint32>(choices.size()))];
    };
    const std::vector<Fault> faults = everyFault(elsewhere());
    for (int i = 0; i < count && !QTest::currentTestFailed(); ++i) {
      const Call call = anyOf(kCalls);
      meet(call, anyOf(faults));
    }
  }

  void framesAreRenderedDuringACall_data() { addCalls(); }
  void framesAreRenderedDuringACall() {
    constexpr int kSome = 10;
    QFETCH(const Call, call);
    m_tablet->makeReady(call);
    m_tablet->service.answerWith([](const auto &) { return Answer::silence(); });
    int frames = 0;
    const auto counting =
        connect(&m_tablet->window(), &QQuickWindow::frameSwapped, this, [&frames] { ++frames; });
    m_tablet->make(call);
    waitUntil([&] { return m_tablet->shows("busyTitle"); }, "the busy screen is not shown");
    frames = 0;
    waitUntil([&] { return frames >= kSome; }, "the window does not render");
    disconnect(counting);
    m_tablet->service.answerSilentConnection(Answer::http("refused"));
    m_tablet->waitForEnd();
    m_tablet->answerAlerts();
  }

  void anAnswerOf300MebibytesIsCutOff_data() { addCalls(); }
  void anAnswerOf300MebibytesIsCutOff() {
    constexpr qint64 kSize = 300 * kMebibyte;
    // The answer up to its limit, other buffers, and a sanitizer's additional memory.
    constexpr qint64 kAtMost = HttpConnection::kMaxAnswerBytes + kSlack;
    QFETCH(const Call, call);
    m_tablet->makeReady(call);
    forgetPeakMemory();
    const qint64 before = peakMemory();
    meet(call,
         {"300 MiB", [](const QByteArray &) { return flood("HTTP/1.1 200 OK\r\n\r\n", kSize); },
          Ending::Unreadable, [](const QByteArray &) { return QByteArray(10'000, ' ') + " …"; }});
    qInfo("%lld MiB", (peakMemory() - before) / kMebibyte);
    QVERIFY(peakMemory() - before < kAtMost);
  }

  void anExtraAnswerIsNotUsedForTheNextCall() {
    m_tablet->makeReady(Call::Catalogue);
    QPointer<QTcpSocket> first;
    m_tablet->service.answerWith([&](const auto &) {
      Answer answer{wholeAnswer(CallingTablet::goodBody(Call::Catalogue))};
      answer.stream = [&](QTcpSocket &socket) { first = &socket; };
      return answer;
    });
    m_tablet->make(Call::Catalogue);
    waitUntil([&] { return m_tablet->alerts().size() == 1; }, "the call does not end");
    if (first) {
      first->write(wholeAnswer("\"0\""));
    }
    m_tablet->answerAlerts();
    meet(Call::Send,
         {"refused", [](const QByteArray &) { return Answer::http("refused"); }, Ending::Unreadable,
          [](const QByteArray &) { return QByteArray("refused"); }});
  }

 private:
  static void addCalls() {
    QTest::addColumn<Call>("call");
    for (const Call call : kCalls) {
      QTest::newRow(qPrintable(nameOf(call))) << call;
    }
  }

  [[nodiscard]] QString elsewhere() const {
    return QStringLiteral("127.0.0.1:%1").arg(m_elsewhere.serverPort());
  }

  /// Makes `call` to a service with `fault`, and checks the expected outcome.
  void meet(Call call, const Fault &fault, const QString &host = {}) {
    m_tablet->makeReady(call);
    const QByteArray body = CallingTablet::goodBody(call);
    m_tablet->service.answerWith([&](const auto & /*request*/) { return fault.answer(body); });
    m_tablet->client().setTimeout(fault.isSilent ? std::optional(kShortTimeout) : std::nullopt);
    m_tablet->environment.serviceHost = host.isEmpty() ? m_tablet->service.host() : host;
    const qsizetype requests = m_tablet->service.requests().size();

    m_tablet->make(call);
    m_tablet->waitForEnd();
    if (QTest::currentTestFailed()) {
      return;
    }

    waitUntil([&] { return areAsPromised(m_tablet->alerts(), call, fault, body); }, fault.name);
    if (QTest::currentTestFailed()) {
      qInfo() << "It says:" << m_tablet->alerts().join(u'\n').left(1000);
      return;
    }
    const Kept kept = promisedKept(call, fault.ending);
    QCOMPARE(m_tablet->stored(), kept.stored);
    QCOMPARE(m_tablet->delivery(), kept.delivery);
    if (call == Call::Send) {
      // A send is never repeated. With a short timeout, the request might not even arrive.
      QVERIFY(m_tablet->service.requests().size() - requests <= 1);
    }
    m_tablet->answerAlerts();
    m_tablet->touchField();
    m_tablet->client().setTimeout(std::nullopt);
    m_tablet->environment.serviceHost = m_tablet->service.host();
    waitUntil([this] { return !m_descriptors || openDescriptors().size() == m_descriptors; },
              "a descriptor is left open");
    ++m_faults;
  }

  std::unique_ptr<CallingTablet> m_tablet;
  QTcpServer m_elsewhere;
  std::optional<qsizetype> m_descriptors;
  int m_strays = 0;
  int m_faults = 0;
};

CARTONPICK_WINDOW_TEST(NetworkFaultsTest);
#include "NetworkFaults_test.moc"
