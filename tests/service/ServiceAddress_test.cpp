#include "service/ServiceAddress.h"

#include "device/NetworkHttpClient.h"
#include "support/LoopbackService.h"
#include "support/TestClass.h"

#include <QTest>

namespace {

const QString kHost = QStringLiteral("picking.local:8080");
constexpr const char *kLookup =
    "http://picking.local:8080/qir_pick/servicepick.svc/json/getorderpercarton/";

/// The characters that are escaped, in addition to control characters.
constexpr const char *kEscaped = " \"#%<>[\\]^`{|}";

/// Ignores the events of a connection.
class NullDelegate : public QObject, public HttpConnectionDelegate {
 public:
  void didReceiveResponse(HttpConnection & /*connection*/) override {}
  void didReceiveData(HttpConnection & /*connection*/, const QByteArray & /*data*/) override {}
  void connectionDidFinishLoading(HttpConnection & /*connection*/) override {}
  void didFailWithError(HttpConnection & /*connection*/, const QString & /*text*/) override {}
};

QString everyAsciiCharacter() {
  QString text;
  for (char16_t c = 0; c < 0x80; ++c) {
    text += QChar(c);
  }
  return text;
}

}  // namespace

class ServiceAddressTest : public QObject {
  Q_OBJECT

 private slots:
  void everyCallHasItsUrl() {
    const ServiceAddress address(kHost);
    QCOMPARE(address.getorderpercarton(QStringLiteral("4711")).toEncoded(),
             QByteArray(kLookup) + "4711");
    QCOMPARE(address.getitems().toEncoded(),
             "http://picking.local:8080/qir_pick/servicepick.svc/json/getitems");
    QCOMPARE(address.sendpick().toEncoded(),
             "http://picking.local:8080/qir_pick/servicepick.svc/json/sendpick");
  }

  void thePortIsOptional() {
    QCOMPARE(ServiceAddress(QStringLiteral("10.0.0.7")).getitems().toEncoded(),
             "http://10.0.0.7/qir_pick/servicepick.svc/json/getitems");
  }

  void everyAsciiCharacterIsEscapedOrUnchanged_data() {
    QTest::addColumn<char>("character");
    for (int c = 0; c < 0x80; ++c) {
      QTest::addRow("%02X", c) << static_cast<char>(c);
    }
  }
  void everyAsciiCharacterIsEscapedOrUnchanged() {
    QFETCH(const char, character);
    const bool isControl = character < 0x20 || character == 0x7F;
    const bool isEscaped = isControl || QByteArray(kEscaped).contains(character);
    const QByteArray one(1, character);
    QCOMPARE(addingPercentEscapes(QString::fromLatin1(one)).value(),
             isEscaped ? '%' + one.toHex().toUpper() : one);
  }

  void nonAsciiCharactersAreRejected_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("first non-ASCII character") << QString(QChar(0x80));
    QTest::newRow("umlaut") << QStringLiteral("47ü11");
    QTest::newRow("fullwidth slash") << QStringLiteral("47／11");
    QTest::newRow("emoji") << QStringLiteral("📦");
    QTest::newRow("low byte of an ASCII character") << QString(QChar(0x0141));
  }
  void nonAsciiCharactersAreRejected() {
    QFETCH(const QString, text);
    QVERIFY(!addingPercentEscapes(text).has_value());
    QVERIFY(ServiceAddress(kHost).getorderpercarton(text).isEmpty());
  }

  void aDeliveryNumberCannotLeaveThePathOfItsCall_data() {
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("parent folder") << ".." << true;
    QTest::newRow("current folder") << "." << true;
    QTest::newRow("parent folder first") << "../sendpick" << true;
    QTest::newRow("parent folder in the middle") << "a/../../getitems" << true;
    QTest::newRow("parent folder last") << "a/.." << true;
    QTest::newRow("current folder in the middle") << "a/./b" << true;
    QTest::newRow("parent folder before a query") << "..?a" << true;
    QTest::newRow("dots in a query") << "a?b/../c" << false;
    QTest::newRow("three dots") << "..." << false;
    QTest::newRow("dots in the middle") << "a..b" << false;
    QTest::newRow("dots and a space") << ".. " << false;
    QTest::newRow("escaped dots") << "%2e%2e" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("slashes") << "a//b/" << false;
  }
  void aDeliveryNumberCannotLeaveThePathOfItsCall() {
    QFETCH(const QString, number);
    QFETCH(const bool, isRefused);
    const QUrl url = ServiceAddress(kHost).getorderpercarton(number);
    QCOMPARE(url.isEmpty(), isRefused);
    if (!isRefused) {
      QVERIFY(url.isValid());
      QCOMPARE(url.toEncoded(), kLookup + addingPercentEscapes(number).value());
    }
  }

  void spacesAroundANumberAreSent() {
    QCOMPARE(ServiceAddress(kHost).getorderpercarton(QStringLiteral(" 12 ")).toEncoded(),
             QByteArray(kLookup) + "%2012%20");
  }

  void anEscapedNumberIsEscapedAgain() {
    QCOMPARE(ServiceAddress(kHost).getorderpercarton(QStringLiteral("a%2Fb")).toEncoded(),
             QByteArray(kLookup) + "a%252Fb");
  }

  void everyAsciiCharacterReachesTheService() {
    LoopbackService service;
    NetworkHttpClient client;
    NullDelegate delegate;
    const QString number = everyAsciiCharacter();
    client.start({.url = ServiceAddress(service.host()).getorderpercarton(number)}, &delegate,
                 &delegate);
    QTRY_COMPARE(service.requests().size(), 1);
    QCOMPARE(
        service.requests().front().target,
        "/qir_pick/servicepick.svc/json/getorderpercarton/" + addingPercentEscapes(number).value());
  }

  void anIpv6HostKeepsItsBrackets() {
    QCOMPARE(ServiceAddress(QStringLiteral("[::1]:8080")).getitems().toEncoded(),
             "http://[::1]:8080/qir_pick/servicepick.svc/json/getitems");
  }

  void validHostsAreAccepted_data() {
    QTest::addColumn<QString>("host");
    for (const char *host : {"picking", "picking.local", "picking.local:1", "10.0.0.7:65535",
                             "[::1]", "[fe80::1]:8080", "pick-1.example"}) {
      QTest::newRow(host) << QString(host);
    }
  }
  void validHostsAreAccepted() {
    QFETCH(QString, host);
    QVERIFY(!ServiceAddress::objectionTo(host));
    QCOMPARE(ServiceAddress(host).getitems().toEncoded(),
             "http://" + host.toUtf8() + "/qir_pick/servicepick.svc/json/getitems");
  }

  void invalidHostsAreRejected_data() {
    QTest::addColumn<QString>("host");
    for (const char *host :
         {"http://picking", "https://picking", "picking/",  "picking/json", "bad host",
          "bad host:abc",   "picking:abc",     "picking:",  "picking:0",    "picking:65536",
          "picking:-1",     "127.0.0.1:99999", ":8080",     "::1",          "[::1",
          "user@picking",   "picking?x",       "picking#x", " picking",     "picking\\json",
          "pick%2Fing"}) {
      QTest::newRow(host) << QString(host);
    }
  }
  void invalidHostsAreRejected() {
    QFETCH(QString, host);
    QVERIFY(ServiceAddress::objectionTo(host).has_value());
  }
};

CARTONPICK_TEST(ServiceAddressTest);
#include "ServiceAddress_test.moc"
