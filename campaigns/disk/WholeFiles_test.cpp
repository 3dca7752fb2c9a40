#include "base/Folders.h"
#include "device/DisplaySettings.h"
#include "sending/PickingExport.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

namespace {

QByteArray bytesOf(const QString &path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void expectWarning(const char *pattern) {
  QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString::fromLatin1(pattern)));
}

/// Limits the size of every file to `bytes` during its lifetime, to simulate a full disk.
class LargestFile {
 public:
  explicit LargestFile(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit limit{bytes, m_before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~LargestFile() {
    setrlimit(RLIMIT_FSIZE, &m_before);
    std::signal(SIGXFSZ, m_handler);
  }
  LargestFile(const LargestFile &) = delete;
  LargestFile &operator=(const LargestFile &) = delete;

 private:
  void (*m_handler)(int);
  rlimit m_before{};
};

}  // namespace

/// Tests that a full disk does not damage the files beside the store.
class WholeFilesTest : public QObject {
  Q_OBJECT

 private slots:
  void anExportIsReplacedAtomically() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C1", "B", 3}});
    program.master().tblBoxes->touchRow(0);
    program.enterQuantity(0, QStringLiteral("5"));
    const QString path =
        program.environment.folders.documents() + QStringLiteral("/VardexExport.csv");
    const auto exportNow = [&] {
      exportPicking(program.environment, program.context(), QStringLiteral("4711"), {});
    };
    exportNow();
    const QByteArray old = bytesOf(path);
    program.enterQuantity(1, QStringLiteral("3"));
    const QByteArray next =
        exportText(*program.context().unsentPickings(QStringLiteral("4711")),
                   QTimeZone(program.environment.clock->localZone().offsetFromUtc(
                       program.environment.clock->now())))
            .toUtf8();
    QVERIFY(!old.isEmpty() && old.size() < next.size());
    for (rlim_t room = 0; room < static_cast<rlim_t>(next.size()); ++room) {
      const LargestFile limit(room);
      expectWarning("^Export .*VardexExport.csv not written: it could not be written to the disk");
      exportNow();
      QCOMPARE(bytesOf(path), old);
    }
    exportNow();
    QCOMPARE(bytesOf(path), next);
    QCOMPARE(QDir(program.environment.folders.documents())
                 .entryList({QStringLiteral("VardexExport.csv?*")}),
             QStringList());
  }

  void displaySettingsAreReplacedAtomically() {
    const QTemporaryDir home;
    const QString path = home.filePath(QStringLiteral("display.ini"));
    DisplaySettings display({home.path()},
                            std::make_unique<SystemColourScheme>(QDBusConnection(QString())));
    display.setTextSize(DisplaySettings::kTextSizes.back());
    display.setMaximized(true);
    const QByteArray old = bytesOf(path);
    QVERIFY(!old.isEmpty());
    for (rlim_t room = 0; room < static_cast<rlim_t>(old.size()); ++room) {
      const LargestFile limit(room);
      expectWarning("^File .*display.ini not written: it could not be written to the disk");
      display.setMaximized(!display.isMaximized());
      QCOMPARE(bytesOf(path), old);
    }
    display.setTheme(DisplaySettings::Theme::Dark);
    QVERIFY(bytesOf(path) != old);
    const DisplaySettings next({home.path()},
                               std::make_unique<SystemColourScheme>(QDBusConnection(QString())));
    QCOMPARE(next.textSize(), display.textSize());
    QVERIFY(next.isDark());
    QCOMPARE(QDir(home.path()).entryList(QDir::Files), QStringList(QStringLiteral("display.ini")));
  }
};

CARTONPICK_TEST(WholeFilesTest);
#include "WholeFiles_test.moc"
