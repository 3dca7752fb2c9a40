#include "device/NetworkHttpClient.h"

#include "support/LoopbackService.h"
#include "support/TestClass.h"

#include <QEventLoop>
#include <QPointer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace {

using namespace std::chrono_literals;
using Answer = LoopbackService::Answer;
using Request = LoopbackService::Request;

/// Records the callbacks of a connection.
class Listener : public QObject, public HttpConnectionDelegate {
 public:
  void didReceiveResponse(HttpConnection &connection) override {
    m_calls.append(QStringLiteral("response"));
    m_announced = connection.announcedBytes();
  }
  void didReceiveData(HttpConnection & /*connection*/, const QByteArray &data) override {
    if (m_calls.isEmpty() || m_calls.last() != u"data") {
      m_calls.append(QStringLiteral("data"));
    }
    m_received += data.size();
    if (m_keepsData) {
      m_data += data;
    }
  }
  void connectionDidFinishLoading(HttpConnection &connection) override {
    m_calls.append(connection.isAnswerWhole() ? QStringLiteral("whole")
                                              : QStringLiteral("damaged"));
    end();
  }
  void didFailWithError(HttpConnection & /*connection*/, const QString &description) override {
    m_calls.append(QStringLiteral("failed"));
    m_error = description;
    end();
  }

  void whenEnded(const std::function<void()> &action) { m_whenEnded = action; }
  void dropData() { m_keepsData = false; }

  /// Returns the callbacks in order; consecutive pieces of data count once.
  [[nodiscard]] QString calls() const { return m_calls.join(u' '); }
  [[nodiscard]] bool hasEnded() const { return m_hasEnded; }
  [[nodiscard]] const QByteArray &data() const { return m_data; }
  [[nodiscard]] qint64 received() const { return m_received; }
  [[nodiscard]] qint64 announced() const { return m_announced; }
  [[nodiscard]] const QString &error() const { return m_error; }

 private:
  void end() {
    m_hasEnded = true;
    if (m_whenEnded) {
      m_whenEnded();
    }
  }

  QStringList m_calls;
  QByteArray m_data;
  QString m_error;
  std::function<void()> m_whenEnded;
  qint64 m_received = 0;
  qint64 m_announced = -2;
  bool m_keepsData = true;
  bool m_hasEnded = false;
};

/// A client and the service that it connects to.
struct TestConnection {
  [[nodiscard]] QUrl url(const QByteArray &target = "/x") const {
    return QUrl::fromEncoded("http://" + service.host().toLatin1() + target, QUrl::StrictMode);
  }

  void start(const HttpRequest &request) { client.start(request, &listener, &owner); }

  /// Starts `request` and waits until it ends.
  void run(const HttpRequest &request) {
    start(request);
    waitForEnd();
  }
  /// Like `run`, but processes events without pauses between them.
  void runAtOnce(const HttpRequest &request) {
    QEventLoop loop;
    listener.whenEnded([&] { loop.quit(); });
    start(request);
    loop.exec();
  }
  void get() { run({.url = url()}); }
  void waitForEnd() {
    constexpr auto kTimeout = 60s;
    QVERIFY(QTest::qWaitFor([this] { return listener.hasEnded(); },
                            std::chrono::milliseconds(kTimeout).count()));
  }

  void answerWith(const QByteArray &bytes) {
    service.answerWith([bytes](const Request &) { return Answer{bytes}; });
  }

  LoopbackService service;
  NetworkHttpClient client;
  Listener listener;
  QObject owner;
};

HttpRequest post(const QUrl &url, const QByteArray &body) {
  return {.url = url,
          .method = "POST",
          .headers = {{"Content-Type", "application/json"}},
          .body = body};
}

/// The number of repetitions of a test in which the order of Qt's events varies.
constexpr int kRepetitions = 30;

}  // namespace

class NetworkHttpClientTest : public QObject {
  Q_OBJECT

 private slots:
  void anAnswerIsReceivedCompletely() {
    TestConnection connection;
    connection.service.answerWith("[1,2,3]");
    connection.get();
    QCOMPARE(connection.listener.calls(), "response data whole");
    QCOMPARE(connection.listener.data(), "[1,2,3]");
    QCOMPARE(connection.listener.announced(), 7);
    QCOMPARE(connection.service.requests().size(), 1);
    QCOMPARE(connection.service.requests().front().method, "GET");
  }

  void anEmptyAnswerIsComplete() {
    TestConnection connection;
    connection.service.answerWith(QByteArray());
    connection.get();
    QCOMPARE(connection.listener.calls(), "response whole");
    QCOMPARE(connection.listener.announced(), 0);
  }

  void answersOfAnyStatusAreReceived_data() {
    QTest::addColumn<int>("status");
    for (const int status : {200, 201, 400, 401, 403, 404, 405, 407, 409, 410,
                             413, 418, 422, 429, 499, 500, 501, 502, 503, 599}) {
      QTest::addRow("%d", status) << status;
    }
  }
  void answersOfAnyStatusAreReceived() {
    QFETCH(const int, status);
    TestConnection connection;
    connection.service.answerWith("what went wrong", status);
    connection.get();
    QCOMPARE(connection.listener.calls(), "response data whole");
    QCOMPARE(connection.listener.data(), "what went wrong");
  }

  void aTruncatedAnswerIsReportedAsDamaged() {
    TestConnection connection;
    connection.service.answerWith(
        [](const Request &) { return Answer::cutShort("[1,2,3]", 1000); });
    connection.get();
    QCOMPARE(connection.listener.calls(), "response data damaged");
    QCOMPARE(connection.listener.data(), "[1,2,3]");
    QCOMPARE(connection.listener.announced(), 1000);
  }

  void anAnswerTruncatedBeforeItsBodyIsReportedAsDamaged() {
    TestConnection connection;
    connection.service.answerWith([](const Request &) { return Answer::cutShort({}, 1000); });
    connection.get();
    QCOMPARE(connection.listener.calls(), "response damaged");
  }

  void aTruncatedErrorAnswerIsReportedAsDamaged() {
    TestConnection connection;
    connection.answerWith("HTTP/1.1 422 Status\r\nContent-Length: 1000\r\n\r\nwhat");
    connection.get();
    QCOMPARE(connection.listener.calls(), "response data damaged");
  }

  void bytesBeyondTheContentLengthAreIgnored() {
    TestConnection connection;
    connection.answerWith("HTTP/1.1 200 OK\r\nContent-Length: 7\r\n\r\n[1,2,3]garbage");
    connection.get();
    QCOMPARE(connection.listener.calls(), "response data whole");
    QCOMPARE(connection.listener.data(), "[1,2,3]");
  }

  void anAnswerWithoutALengthEndsWithTheConnection() {
    TestConnection connection;
    connection.answerWith("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n[1,2,3]");
    connection.get();
    QCOMPARE(connection.listener.calls(), "response data whole");
    QCOMPARE(connection.listener.data(), "[1,2,3]");
    QCOMPARE(connection.listener.announced(), -1);
  }

  void aChunkedAnswerIsReceivedCompletely() {
    TestConnection connection;
    connection.answerWith(
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\nConnection: close\r\n\r\n"
        "3\r\n[1,\r\n4\r\n2,3]\r\n0\r\n\r\n");
    connection.get();
    QCOMPARE(connection.listener.calls(), "response data whole");
    QCOMPARE(connection.listener.data(), "[1,2,3]");
    QCOMPARE(connection.listener.announced(), -1);
  }

  void truncatedChunksAreReportedAsDamaged_data() {
    QTest::addColumn<QByteArray>("chunks");
    QTest::newRow("within a chunk") << QByteArray("3\r\n[1,\r\n100\r\n2,3]");
    QTest::newRow("between chunks") << QByteArray("3\r\n[1,\r\n4\r\n2,3]\r\n");
    QTest::newRow("within a length") << QByteArray("3\r\n[1,\r\n4");
    QTest::newRow("before the first") << QByteArray();
  }
  void truncatedChunksAreReportedAsDamaged() {
    QFETCH(const QByteArray, chunks);
    TestConnection connection;
    connection.answerWith("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunks);
    connection.get();
    QVERIFY2(connection.listener.calls().endsWith(u"damaged"),
             qPrintable(connection.listener.calls()));
  }

  void anAnswerBeyondTheSizeLimitIsCutOff() {
    constexpr qint64 kBlock = 1024 * 1024;
    TestConnection connection;
    connection.listener.dropData();
    connection.service.answerWith([](const Request &) {
      Answer answer{"HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n"};
      answer.stream = [](QTcpSocket &socket) {
        const auto sendBlock = [&socket] {
          if (socket.bytesToWrite() == 0) {
            socket.write(QByteArray(kBlock, ' '));
          }
        };
        QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, sendBlock);
      };
      return answer;
    });
    connection.get();
    QCOMPARE(connection.listener.calls(), "response data damaged");
    QVERIFY(connection.listener.received() <= HttpConnection::kMaxAnswerBytes);
    QVERIFY(connection.listener.received() > HttpConnection::kMaxAnswerBytes / 2);
  }

  void aGzippedAnswerIsDecompressed() {
    TestConnection connection;
    const QByteArray packed =
        QByteArray::fromBase64("H4sIAAAAAAACA4uuVkrJT1ayUjIxNzRUqo0FAHMnwrkQAAAA");
    connection.service.answerWith([packed](const Request &request) {
      return Answer{
          "HTTP/1.1 200 OK\r\nContent-Encoding: " +
          QByteArray(request.headers.value("accept-encoding").contains("gzip") ? "gzip" : "none") +
          "\r\nContent-Length: " + QByteArray::number(packed.size()) +
          "\r\nConnection: close\r\n\r\n" + packed};
    });
    connection.get();
    QCOMPARE(connection.listener.calls(), "response data whole");
    QCOMPARE(connection.listener.data(), "[{\"doc\":\"4711\"}]");
  }

  void aGzippedAnswerThatCannotBeDecompressedIsReportedAsDamaged() {
    TestConnection connection;
    connection.answerWith(
        "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 11\r\n"
        "Connection: close\r\n\r\nhello world");
    connection.get();
    QVERIFY2(connection.listener.calls().endsWith(u"damaged"),
             qPrintable(connection.listener.calls()));
  }

  void aRefusedConnectionFails() {
    TestConnection connection;
    connection.run(
        {.url = QUrl(QStringLiteral("http://%1/x").arg(LoopbackService::unreachableHost()))});
    QCOMPARE(connection.listener.calls(), "failed");
    QVERIFY(!connection.listener.error().isEmpty());
  }

  void aConnectionThatClosesWithoutAnAnswerFails() {
    TestConnection connection;
    connection.service.answerWith([](const Request &) { return Answer::none(); });
    connection.get();
    QCOMPARE(connection.listener.calls(), "failed");
    QVERIFY(!connection.listener.error().isEmpty());
  }

  void anAnswerThatIsNotHttpFails() {
    TestConnection connection;
    connection.answerWith("220 mail.example.com ready\r\n");
    connection.get();
    QCOMPARE(connection.listener.calls(), "failed");
  }

  void aServiceThatDoesNotAnswerTimesOut() {
    TestConnection connection;
    connection.service.answerWith([](const Request &) { return Answer::silence(); });
    connection.run({.url = connection.url(), .timeout = 200ms});
    QCOMPARE(connection.listener.calls(), "failed");
    QCOMPARE(connection.listener.error(), "The request timed out.");
  }

  void anAnswerThatStallsTimesOut() {
    TestConnection connection;
    connection.service.answerWith([](const Request &) {
      return Answer{"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n[1,", false};
    });
    connection.run({.url = connection.url(), .timeout = 500ms});
    QCOMPARE(connection.listener.calls(), "response data failed");
    QCOMPARE(connection.listener.error(), "The request timed out.");
  }

  void aSlowAnswerDoesNotTimeOutWhileBytesArrive() {
    constexpr int kBytes = 60;
    TestConnection connection;
    connection.service.answerWith([](const Request &) {
      Answer answer{"HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(kBytes) +
                    "\r\n\r\n"};
      answer.stream = [](QTcpSocket &socket) {
        auto *timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket, [&socket] { socket.write("x"); });
        timer->start(50ms);
      };
      return answer;
    });
    connection.run({.url = connection.url(), .timeout = 1500ms});
    QCOMPARE(connection.listener.calls(), "response data whole");
    QCOMPARE(connection.listener.received(), kBytes);
  }

  void aRedirectIsNotFollowed() {
    TestConnection connection;
    connection.answerWith(
        "HTTP/1.1 302 Found\r\nLocation: /elsewhere\r\nContent-Length: 5\r\n"
        "Connection: close\r\n\r\nmoved");
    connection.get();
    QCOMPARE(connection.listener.calls(), "response data whole");
    QCOMPARE(connection.listener.data(), "moved");
    QCOMPARE(connection.service.requests().size(), 1);
  }

  void answersAreNotCached() {
    TestConnection connection;
    connection.answerWith(
        "HTTP/1.1 200 OK\r\nCache-Control: public, max-age=3600\r\nContent-Length: 2\r\n"
        "Connection: close\r\n\r\n[]");
    connection.get();
    Listener again;
    connection.client.start({.url = connection.url()}, &again, &connection.owner);
    QTRY_VERIFY(again.hasEnded());
    QCOMPARE(connection.service.requests().size(), 2);
  }

  void cookiesAreNotSentBack() {
    TestConnection connection;
    connection.answerWith(
        "HTTP/1.1 200 OK\r\nSet-Cookie: session=1\r\nContent-Length: 2\r\n"
        "Connection: close\r\n\r\n[]");
    connection.get();
    Listener again;
    connection.client.start({.url = connection.url()}, &again, &connection.owner);
    QTRY_VERIFY(again.hasEnded());
    QVERIFY(!connection.service.requests().last().headers.contains("cookie"));
  }

  void anInvalidUrlFails_data() {
    QTest::addColumn<QUrl>("url");
    QTest::newRow("empty") << QUrl();
    QTest::newRow("malformed") << QUrl::fromEncoded("http://a b/", QUrl::StrictMode);
    QTest::newRow("no host") << QUrl(QStringLiteral("http:///x"));
    QTest::newRow("unknown scheme") << QUrl(QStringLiteral("gopher://localhost/"));
  }
  void anInvalidUrlFails() {
    QFETCH(const QUrl, url);
    TestConnection connection;
    connection.start({.url = url});
    QCOMPARE(connection.listener.calls(), "");
    connection.waitForEnd();
    QCOMPARE(connection.listener.calls(), "failed");
    QVERIFY(!connection.listener.error().isEmpty());
  }

  void noCallbackRunsBeforeStartReturns() {
    TestConnection connection;
    connection.start({.url = connection.url()});
    QCOMPARE(connection.listener.calls(), "");
    connection.waitForEnd();
    QCOMPARE(connection.listener.calls(), "response data whole");
  }

  void aPostBodyIsSentUnchanged_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("small") << QByteArray("[{\"doc\":\"4711\"}]");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("with a null byte") << QByteArray("a\0b", 3);
    QTest::newRow("large") << QByteArray(1'000'000, 'x');
  }
  void aPostBodyIsSentUnchanged() {
    QFETCH(const QByteArray, body);
    TestConnection connection;
    connection.run(post(connection.url(), body));
    QCOMPARE(connection.listener.calls(), "response data whole");
    const Request request = connection.service.requests().front();
    QCOMPARE(request.method, "POST");
    QCOMPARE(request.body, body);
    QCOMPARE(request.headers.value("content-length"), QByteArray::number(body.size()));
    QCOMPARE(request.headers.value("content-type"), "application/json");
    QVERIFY(!request.headers.contains("transfer-encoding"));
  }

  void aPostIsNotRetriedWhenTheServiceClosesWithoutAnAnswer() {
    TestConnection connection;
    connection.service.answerWith([](const Request &) { return Answer::none(); });
    connection.run(post(connection.url(), "[]"));
    QCOMPARE(connection.listener.calls(), "failed");
    QCOMPARE(connection.service.requests().size(), 1);
  }

  void aPostOnAReusedConnectionIsNotRetried() {
    TestConnection connection;
    connection.service.answerWith([](const Request &request) {
      return request.method == "POST"
                 ? Answer::none()
                 : Answer{"HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n[]", false};
    });
    connection.get();
    Listener posted;
    connection.client.start(post(connection.url(), "[]"), &posted, &connection.owner);
    QTRY_VERIFY(posted.hasEnded());
    QCOMPARE(posted.calls(), "failed");
    QCOMPARE(connection.service.requests().size(), 2);
  }

  void theAnswerToAPostCanEndWithTheConnection() {
    for (int i = 0; i < kRepetitions; ++i) {
      TestConnection connection;
      connection.answerWith("HTTP/1.1 200 OK\r\n\r\n\"0\"");
      connection.runAtOnce(post(connection.url(), "[]"));
      QCOMPARE(connection.listener.calls(), "response data whole");
      QCOMPARE(connection.listener.data(), "\"0\"");
    }
  }

  void aPostAnswerWithTruncatedChunksIsReportedAsDamaged() {
    for (int i = 0; i < kRepetitions; ++i) {
      TestConnection connection;
      connection.answerWith("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\n\"0\"\r\n");
      connection.runAtOnce(post(connection.url(), "[]"));
      QVERIFY2(connection.listener.calls().endsWith(u"damaged"),
               qPrintable(connection.listener.calls()));
    }
  }

  void anUnsolicitedAnswerIsNotUsedForTheNextRequest() {
    TestConnection connection;
    QPointer<QTcpSocket> first;
    connection.service.answerWith([&](const Request &request) {
      if (request.method == "POST") {
        return Answer::http("refused");
      }
      Answer answer{"HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n[]"};
      answer.stream = [&](QTcpSocket &socket) { first = &socket; };
      return answer;
    });
    connection.get();
    if (first) {
      first->write("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\n\"0\"");
      first->flush();
    }
    Listener posted;
    connection.client.start(post(connection.url(), "[]"), &posted, &connection.owner);
    QTRY_VERIFY(posted.hasEnded());
    QCOMPARE(posted.data(), "refused");
  }

  void anErrorAnswerIsWholeOnlyIfAllOfItWasRead() {
    constexpr qsizetype kMoreThanIsBuffered = 4'000'000;
    TestConnection connection;
    connection.service.answerWith(
        [](const Request &) { return Answer::http(QByteArray(kMoreThanIsBuffered, ' '), 401); });
    connection.get();
    QCOMPARE(connection.listener.calls(), connection.listener.received() == kMoreThanIsBuffered
                                              ? "response data whole"
                                              : "response data damaged");
  }

  void theRequestTargetIsSentUnchanged_data() {
    QTest::addColumn<QByteArray>("target");
    for (const char *target :
         {"/", "/a/b", "/a//b", "/a/", "/a%20b", "/a%25b", "/a%252Fb", "/a%2Fb", "/a?b=c", "/a?",
          "/a?b?c/d", "/a%3Fb", "/a%23b", "/a+b", "/a&b=c;d,e:f@g!h$i'j(k)l*m~n_o-p.q",
          "/%22%3C%3E%5B%5C%5D%5E%60%7B%7C%7D", "/%00%01%0A%7F", "/a...", "/..a"}) {
      QTest::newRow(target) << QByteArray(target);
    }
  }
  void theRequestTargetIsSentUnchanged() {
    QFETCH(const QByteArray, target);
    TestConnection connection;
    connection.run({.url = connection.url(target)});
    QCOMPARE(connection.listener.calls(), "response data whole");
    QCOMPARE(connection.service.requests().front().target, target);
  }

  void aConnectionEndsWhenItsOwnerIsDestroyed() {
    TestConnection connection;
    connection.service.answerWith([](const Request &) { return Answer::silence(); });
    auto owner = std::make_unique<QObject>();
    connection.client.start({.url = connection.url()}, &connection.listener, owner.get());
    QTRY_COMPARE(connection.service.silentConnections(), 1);
    owner.reset();
    QTRY_COMPARE(connection.service.silentConnections(), 0);
    QCOMPARE(connection.listener.calls(), "");
  }

  void anUploadEndsWhenItsOwnerIsDestroyed() {
    TestConnection connection;
    auto owner = std::make_unique<QObject>();
    connection.client.start(post(connection.url(), QByteArray(20'000'000, 'x')),
                            &connection.listener, owner.get());
    QCoreApplication::processEvents();
    owner.reset();
    Listener next;
    connection.client.start({.url = connection.url()}, &next, &connection.owner);
    QTRY_COMPARE(next.calls(), "response data whole");
    QCOMPARE(connection.listener.calls(), "");
    QCOMPARE(connection.service.requests().size(), 1);
  }

  void theOwnerCanBeDestroyedInTheFinalCallback() {
    TestConnection connection;
    auto owner = std::make_unique<QObject>();
    connection.listener.whenEnded([&] { owner.reset(); });
    connection.client.start({.url = connection.url()}, &connection.listener, owner.get());
    connection.waitForEnd();
    QCOMPARE(connection.listener.calls(), "response data whole");
  }

  void aConnectionOutlivesItsDelegate() {
    TestConnection connection;
    connection.service.answerWith([](const Request &) { return Answer::silence(); });
    auto listener = std::make_unique<Listener>();
    const QPointer<HttpConnection> running =
        connection.client.start({.url = connection.url()}, listener.get(), &connection.owner);
    QTRY_COMPARE(connection.service.silentConnections(), 1);
    listener.reset();
    connection.service.answerSilentConnection(Answer::http("[]"));
    QTRY_VERIFY(running.isNull());
  }

  void aConnectionIsDeletedAfterItEnds() {
    TestConnection connection;
    const QPointer<HttpConnection> running =
        connection.client.start({.url = connection.url()}, &connection.listener, &connection.owner);
    QVERIFY(!running.isNull());
    QCOMPARE(running->parent(), &connection.owner);
    QTRY_VERIFY(running.isNull());
    QVERIFY(connection.listener.hasEnded());
  }

  void twoConnectionsRunConcurrently() {
    TestConnection connection;
    connection.service.answerWith(
        [](const Request &request) { return Answer::http(request.target); });
    Listener other;
    connection.client.start({.url = connection.url("/other")}, &other, &connection.owner);
    connection.get();
    QTRY_VERIFY(other.hasEnded());
    QCOMPARE(connection.listener.data(), "/x");
    QCOMPARE(other.data(), "/other");
  }
};

CARTONPICK_TEST(NetworkHttpClientTest);
#include "NetworkHttpClient_test.moc"
