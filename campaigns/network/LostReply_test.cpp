#include "network/CallingTablet.h"
#include "network/CuttingProxy.h"
#include "network/OrderService.h"
#include "support/TestClass.h"

#include <QTest>

#include <SQLiteCpp/Database.h>
#include <memory>
#include <string>

// The program sends a picking to the real order service over a connection that is cut within the
// reply, after the service has stored the picking, or within the request, before that. Each time
// the tablet reports the failure and keeps the picking. After it is sent again, the service has it
// exactly once.
//
// With CARTONPICK_FAULTS=long, the connection is cut at every byte in turn, otherwise at every
// seventh.

class LostReplyTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    m_service = std::make_unique<OrderService>(CARTONPICK_ORDERS);
    m_proxy = std::make_unique<CuttingProxy>(m_service->host());
    m_tablet = std::make_unique<CallingTablet>();
    m_tablet->makeReady(Call::Send);
    m_tablet->environment.serviceHost = m_proxy->host();
    pickAgain();
    send("Picking was sent||OK");
    QCOMPARE(m_service->storedLines(), m_picks);
    m_requestSize = m_proxy->requestSize();
    m_answerSize = m_proxy->answerSize();
    QVERIFY(m_requestSize > 0 && m_answerSize > 0);
  }

  void cleanupTestCase() {
    m_tablet.reset();
    qInfo("%lld pickings were cut off, and each was stored once.", m_picks - 1);
  }

  void aPickingWhoseReplyIsLostIsStoredOnce() {
    for (qsizetype size = 0; size < m_answerSize && !QTest::currentTestFailed(); size += step()) {
      loseThenSendAgain(CuttingProxy::kWhole, size, true);
    }
  }

  void aPickingWhoseRequestIsLostIsStoredOnce() {
    for (qsizetype size = 0; size < m_requestSize && !QTest::currentTestFailed(); size += step()) {
      loseThenSendAgain(size, CuttingProxy::kWhole, false);
    }
  }

 private:
  static qsizetype step() {
    constexpr qsizetype kSome = 7;
    return qEnvironmentVariable("CARTONPICK_FAULTS") == u"long" ? 1 : kSome;
  }

  /// Changes the quantity, so that the service stores a new line.
  void pickAgain() {
    ++m_picks;
    SQLite::Database(m_tablet->storePath().toStdString(), SQLite::OPEN_READWRITE)
        .exec("UPDATE Picking SET sent = 0, pickqty = " + std::to_string(m_picks));
  }

  /// Sends over a connection that is cut after these numbers of bytes, then over an intact one.
  /// `isStored` is true if the service stores the picking the first time.
  void loseThenSendAgain(qsizetype request, qsizetype answer, bool isStored) {
    pickAgain();
    m_proxy->cut(request, answer);
    send("Could not contact server|");
    QCOMPARE(m_tablet->stored().first(), pick(0));
    QCOMPARE(m_service->storedLines(), isStored ? m_picks : m_picks - 1);
    m_proxy->cut(CuttingProxy::kWhole, CuttingProxy::kWhole);
    send("Picking was sent||OK");
    QCOMPARE(m_tablet->stored().first(), pick(1));
    QCOMPARE(m_service->storedLines(), m_picks);
  }

  [[nodiscard]] QString pick(int sent) const {
    return QStringLiteral("4711 C1 A %1 %2").arg(m_picks).arg(sent);
  }

  /// Sends the picking, and answers the only alert, which must begin with `alert`.
  void send(const QString &alert) {
    m_tablet->make(Call::Send);
    m_tablet->waitForEnd();
    waitUntil([&] { return m_tablet->alerts().size() == 1; }, "there is no message");
    QVERIFY2(m_tablet->alerts().first().startsWith(alert), qPrintable(m_tablet->alerts().first()));
    m_tablet->answerAlerts();
  }

  std::unique_ptr<OrderService> m_service;
  std::unique_ptr<CuttingProxy> m_proxy;
  std::unique_ptr<CallingTablet> m_tablet;
  qsizetype m_picks = 0;
  qsizetype m_requestSize = 0;
  qsizetype m_answerSize = 0;
};

CARTONPICK_WINDOW_TEST(LostReplyTest);
#include "LostReply_test.moc"
