// Another user has planted a link in place of one of the program's files. The code that reads or
// writes the file refuses it and logs a line. OwnFiles_test covers the other kinds of planted
// files.

#include "store/CatalogueWriter.h"
#include "store/PersistentStoreCoordinator.h"
#include "store/StoreLock.h"
#include "support/TestClass.h"
#include "support/TestEnvironment.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

void write(const QString &path, const QByteArray &content) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  QCOMPARE(file.write(content), content.size());
}

QByteArray contentOf(const QString &path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(nothing)");
}

/// Another user's folder that contains a file to which the program's user has access.
class Intruder {
 public:
  Intruder() { write(victim(), kSecret); }

  /// Plants a symbolic link to the file at `path`.
  void plantLink(const QString &path) const { QVERIFY(QFile::link(victim(), path)); }

  /// Returns true if the file is unchanged and nothing was created next to it.
  [[nodiscard]] bool hasGainedNothing() const {
    return contentOf(victim()) == kSecret &&
           QDir(m_folder.path()).entryList(QDir::Files) == QStringList("victim");
  }

 private:
  static constexpr auto kSecret = "what the user keeps elsewhere";

  [[nodiscard]] QString victim() const { return m_folder.filePath("victim"); }

  QTemporaryDir m_folder;
};

void expectWarning(const QString &pattern) {
  QTest::ignoreMessage(QtWarningMsg, QRegularExpression(pattern));
}

Picking pickOf4711() {
  return {.barcode = "b",
          .box = "C1",
          .datepicked = QDateTime::currentDateTimeUtc(),
          .descr = "Lamp",
          .doc = "4711",
          .item = "A",
          .ordernum = "A1",
          .orderqty = 6,
          .pickqty = 4};
}

}  // namespace

class IntruderFilesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QTest::failOnWarning(QRegularExpression(".*")); }

  void theStoreIsNotOpenedThroughALink() {
    for (const QString file : {"", "-wal", "-shm", "-journal"}) {
      const Intruder intruder;
      TestEnvironment home;
      intruder.plantLink(home.storePath() + file);
      // Once without and once with migration.
      expectWarning("^Store .*QIR_Pick.sqlite not opened: QIR_Pick.sqlite" + file + ": it ");
      expectWarning("^Store .*QIR_Pick.sqlite not opened: QIR_Pick.sqlite" + file + ": it ");
      vekAppDelegate delegate(home.environment);
      QVERIFY(!delegate.persistentStoreCoordinator()->hasStore());
      QVERIFY(intruder.hasGainedNothing());
    }
  }

  void theCatalogueIsNotWrittenThroughALink() {
    const Intruder intruder;
    const TestEnvironment home;
    intruder.plantLink(home.storePath());
    CatalogueWriter writer(home.storePath());
    QVERIFY(writer.save().has_value());
    QVERIFY(intruder.hasGainedNothing());
  }

  void theStoreOpensInALinkedHome() {
    const QTemporaryDir disk;
    const QTemporaryDir root;
    const QString home = root.filePath("home");
    QVERIFY(QFile::link(disk.path(), home));
    TestEnvironment environment;
    environment.environment.folders = {home};
    QVERIFY(environment.environment.folders.create());
    vekAppDelegate delegate(environment.environment);
    ManagedObjectContext *context = delegate.managedObjectContext();
    context->insert(pickOf4711());
    QVERIFY(!context->save());
    CatalogueWriter writer(context->storePath());
    QVERIFY(!writer.save());
    QVERIFY(QFile::exists(disk.filePath("Documents/QIR_Pick.sqlite")));
  }

  void theLockIsNotTakenThroughALink() {
    const Intruder intruder;
    const TestEnvironment home;
    intruder.plantLink(home.environment.folders.documents() + "/QIR_Pick.lock");
    expectWarning("^Lock .*QIR_Pick.lock not used: it ");
    StoreLock lock(home.environment.folders);
    QVERIFY(!lock.acquire());
    QVERIFY(!lock.isHeldByAnother());
    QVERIFY(intruder.hasGainedNothing());
  }

  void theExportIsNotWrittenThroughALinkButTheEmailIsStillComposed() {
    const Intruder intruder;
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 6}});
    program.context().insert(pickOf4711());
    QVERIFY(!program.context().save());
    intruder.plantLink(program.environment.folders.documents() + "/VardexExport.csv");
    expectWarning("^Export .*VardexExport.csv not written: it ");
    program.detail().selectedAction("Send Email");
    QVERIFY(intruder.hasGainedNothing());
    QCOMPARE(program.mail->drafts().size(), 1U);
    QVERIFY(program.mail->drafts().front().attachment.startsWith("b;C1;"));
  }

  void theDisplaySettingsAreNotStoredThroughALink() {
    const Intruder intruder;
    const QTemporaryDir home;
    intruder.plantLink(home.filePath("display.ini"));
    expectWarning("^File .*display.ini not used: it ");
    DisplaySettings settings(Folders{home.path()},
                             std::make_unique<SystemColourScheme>(QDBusConnection(QString())));
    expectWarning("^File .*display.ini not written: it ");
    settings.setTheme(DisplaySettings::Theme::Dark);
    QVERIFY(settings.isDark());
    QVERIFY(intruder.hasGainedNothing());
  }

  void theDisplaySettingsIgnoreAPlantedLockFile() {
    const QTemporaryDir home;
    write(home.filePath("display.ini"), "[General]\ntheme=dark\n");
    // QSettings would wait for a new lock file of this name, and remove an old one.
    const QString lock = home.filePath("display.ini.lock");
    write(lock, "planted");
    QFile file(lock);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(
        file.setFileTime(QDateTime::currentDateTime().addDays(-1), QFile::FileModificationTime));
    file.close();
    const Folders folders{home.path()};
    const auto system = [] {
      return std::make_unique<SystemColourScheme>(QDBusConnection(QString()));
    };
    DisplaySettings settings(folders, system());
    QVERIFY(settings.isDark());
    settings.setTextSize(150);
    QCOMPARE(DisplaySettings(folders, system()).textSize(), 150);
    QVERIFY(DisplaySettings(folders, system()).isDark());
    QCOMPARE(contentOf(lock), "planted");
  }
};

CARTONPICK_TEST(IntruderFilesTest);
#include "IntruderFiles_test.moc"
