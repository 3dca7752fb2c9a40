#include "device/DesktopWakeLock.h"

#include "support/SessionBus.h"
#include "support/TestClass.h"

#include <QSet>
#include <QTest>

/// The D-Bus service of a desktop that keeps the screen on.
class ScreenSaver : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

 public:
  explicit ScreenSaver(QDBusConnection bus) {
    if (!bus.registerObject(QStringLiteral("/org/freedesktop/ScreenSaver"), this,
                            QDBusConnection::ExportAllSlots) ||
        !bus.registerService(QStringLiteral("org.freedesktop.ScreenSaver"))) {
      qFatal("The desktop cannot be reached.");
    }
  }

  QSet<uint> inhibitions;
  uint requestCount = 0;
  QString reason;

 public slots:
  uint Inhibit(const QString &application, const QString &why) {
    // Cookies are unique across desktops: a release sent to a desktop that has exited may still
    // reach the next one.
    static uint s_cookie = 0;
    reason = application + QStringLiteral(": ") + why;
    ++requestCount;
    inhibitions.insert(++s_cookie);
    return s_cookie;
  }
  void UnInhibit(uint cookie) { inhibitions.remove(cookie); }
};

class DesktopWakeLockTest : public QObject {
  Q_OBJECT

 private slots:
  void theScreenStaysOnUntilTheLockIsReleased() {
    SessionBus bus;
    const ScreenSaver desktop(bus.connect());
    DesktopWakeLock lock(bus.connect());
    lock.acquire();
    QTRY_COMPARE(desktop.inhibitions.size(), 1);
    QCOMPARE(desktop.reason, QStringLiteral("CartonPick: A picking is in progress"));
    lock.release();
    QTRY_VERIFY(desktop.inhibitions.isEmpty());
  }

  void aRestartedDesktopIsAskedAgain() {
    SessionBus bus;
    DesktopWakeLock lock(bus.connect());
    lock.acquire();
    for (int i = 0; i < 2; ++i) {
      QDBusConnection connection = bus.connect();
      const ScreenSaver desktop(connection);
      QTRY_COMPARE(desktop.inhibitions.size(), 1);
      QVERIFY(connection.unregisterService(QStringLiteral("org.freedesktop.ScreenSaver")));
      connection.unregisterObject(QStringLiteral("/org/freedesktop/ScreenSaver"));
    }
    lock.release();
    QDBusConnection connection = bus.connect();
    const ScreenSaver desktop(connection);
    // Requests are answered in order.
    DesktopWakeLock other(bus.connect());
    other.acquire();
    QTRY_COMPARE(desktop.inhibitions.size(), 1);
    QCOMPARE(desktop.requestCount, 1U);
  }

  void aHeldLockIsNotRequestedAgain() {
    SessionBus bus;
    const ScreenSaver desktop(bus.connect());
    DesktopWakeLock lock(bus.connect());
    lock.acquire();
    lock.acquire();
    QTRY_COMPARE(desktop.inhibitions.size(), 1);
    lock.acquire();
    lock.release();
    QTRY_VERIFY(desktop.inhibitions.isEmpty());
    QCOMPARE(desktop.requestCount, 1U);
  }

  void aLockReleasedBeforeTheDesktopAnswersIsNotHeld() {
    SessionBus bus;
    const ScreenSaver desktop(bus.connect());
    DesktopWakeLock lock(bus.connect());
    lock.acquire();
    lock.release();
    QTRY_COMPARE(desktop.requestCount, 1U);
    QTRY_VERIFY(desktop.inhibitions.isEmpty());
  }

  void aReleasedLockCanBeAcquiredAgain() {
    SessionBus bus;
    const ScreenSaver desktop(bus.connect());
    DesktopWakeLock lock(bus.connect());
    lock.acquire();
    QTRY_COMPARE(desktop.inhibitions.size(), 1);
    lock.release();
    QTRY_VERIFY(desktop.inhibitions.isEmpty());
    lock.acquire();
    QTRY_COMPARE(desktop.inhibitions.size(), 1);
    QCOMPARE(desktop.requestCount, 2U);
  }
};

CARTONPICK_TEST(DesktopWakeLockTest);
#include "DesktopWakeLock_test.moc"
