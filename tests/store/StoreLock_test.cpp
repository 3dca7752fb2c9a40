#include "store/StoreLock.h"

#include "support/TestClass.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <memory>

namespace {

constexpr auto kHoldLock = "--hold-lock";

/// A home whose documents folder exists.
struct TestFolders {
  TestFolders() { m_isCreated = folders.create(); }
  [[nodiscard]] bool isCreated() const { return m_isCreated; }

  QTemporaryDir home;
  Folders folders{home.path()};

 private:
  bool m_isCreated = false;
};

/// Acquires the lock, prints whether it succeeded, and holds the lock until standard input ends.
int holdLock(const QStringList &arguments) {
  StoreLock lock(Folders{arguments.at(0)});
  std::puts(lock.acquire() ? "held" : "refused");
  std::fflush(stdout);
  while (std::getchar() != EOF) {
  }
  return EXIT_SUCCESS;
}

/// Another process that tries to acquire the lock.
class OtherProcess {
 public:
  explicit OtherProcess(const QString &home) {
    m_process.start(QCoreApplication::applicationFilePath(), {kHoldLock, home});
  }
  ~OtherProcess() { terminate(); }
  OtherProcess(const OtherProcess &) = delete;
  OtherProcess &operator=(const OtherProcess &) = delete;

  /// Returns "held" or "refused".
  QByteArray result() {
    m_process.waitForReadyRead();
    return m_process.readLine().trimmed();
  }
  void terminate() {
    m_process.kill();
    m_process.waitForFinished();
  }

 private:
  QProcess m_process;
};

}  // namespace

class StoreLockTest : public QObject {
  Q_OBJECT

 private slots:
  void aSecondLockIsRefused() {
    const TestFolders test;
    QVERIFY(test.isCreated());
    StoreLock first(test.folders);
    QVERIFY(first.acquire());
    StoreLock second(test.folders);
    QVERIFY(!second.acquire());
  }

  void aSecondProcessIsRefused() {
    const TestFolders test;
    StoreLock lock(test.folders);
    QVERIFY(lock.acquire());
    QCOMPARE(OtherProcess(test.home.path()).result(), "refused");
  }

  void aLockIsReleasedOnDestruction() {
    const TestFolders test;
    auto first = std::make_unique<StoreLock>(test.folders);
    QVERIFY(first->acquire());
    first.reset();
    StoreLock second(test.folders);
    QVERIFY(second.acquire());
  }

  void theLockOfAKilledProcessIsReleased() {
    const TestFolders test;
    OtherProcess other(test.home.path());
    QCOMPARE(other.result(), "held");
    StoreLock lock(test.folders);
    QVERIFY(!lock.acquire());
    other.terminate();
    QVERIFY(lock.acquire());
  }

  void storesInOtherFoldersAreNotLocked() {
    const TestFolders one;
    const TestFolders other;
    StoreLock first(one.folders);
    StoreLock second(other.folders);
    QVERIFY(first.acquire());
    QVERIFY(second.acquire());
  }

  void aMissingFolderCannotBeLocked() {
    const QTemporaryDir home;
    StoreLock lock(Folders{home.path()});
    QVERIFY(!lock.acquire());
  }
};

CARTONPICK_TEST(StoreLockTest);
CARTONPICK_TEST_CHILD(kHoldLock, holdLock);
#include "StoreLock_test.moc"
