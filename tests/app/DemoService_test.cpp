#include "app/DemoService.h"

#include "support/TestClass.h"

#include <QTcpSocket>
#include <QTest>

namespace {

bool answers(const QString &host) {
  QTcpSocket socket;
  socket.connectToHost(host.section(u':', 0, 0), host.section(u':', 1).toUShort());
  return socket.waitForConnected();
}

}  // namespace

class DemoServiceTest : public QObject {
  Q_OBJECT

 private slots:
  void listensOnLoopbackAfterStart() {
    DemoService service(CARTONPICK_ORDERS);
    const QString host = service.start();
    QVERIFY(host.startsWith("127.0.0.1:"));
    QVERIFY(answers(host));
  }

  void stopsOnDestruction() {
    QString host;
    {
      DemoService service(CARTONPICK_ORDERS);
      host = service.start();
    }
    QVERIFY(!answers(host));
  }

  void aServiceThatCannotStartHasNoHost() {
    DemoService service("/no/such/program");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("did not start"));
    QCOMPARE(service.start(), QString());
  }
};

CARTONPICK_TEST(DemoServiceTest);
#include "DemoService_test.moc"
