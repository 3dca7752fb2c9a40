// Somebody else has put something in the place of what the program keeps: it is neither written
// through nor read, and the log says so.

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

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// What an intruder leaves in the place of a file, and what must come of it.
enum class Trap { Link, LinkToNothing, HardLink, Pipe, Folder, OthersFile };

constexpr uid_t kNobody = 65534;

void write(const QString &path, const QByteArray &content) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  QCOMPARE(file.write(content), content.size());
}

QByteArray contentOf(const QString &path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(nothing)");
}

/// A place that the intruder rules.
class Intruder {
 public:
  Intruder() { write(victim(), kSecret); }

  void lay(Trap trap, const QString &path) const {
    const QByteArray name = QFile::encodeName(path);
    switch (trap) {
      case Trap::Link:
        QVERIFY(QFile::link(victim(), path));
        break;
      case Trap::LinkToNothing:
        QVERIFY(QFile::link(nothing(), path));
        break;
      case Trap::HardLink:
        QCOMPARE(::link(QFile::encodeName(victim()).constData(), name.constData()), 0);
        break;
      case Trap::Pipe:
        QCOMPARE(::mkfifo(name.constData(), 0600), 0);
        break;
      case Trap::Folder:
        QVERIFY(QDir().mkdir(path));
        break;
      case Trap::OthersFile:
        write(path, kSecret);
        if (::chown(name.constData(), kNobody, kNobody) != 0) {
          QSKIP("Only root can give a file to another user.");
        }
        break;
    }
  }

  /// Nothing of the user's came to harm outside the home, and nothing was made there.
  [[nodiscard]] bool hasGainedNothing() const {
    return contentOf(victim()) == kSecret && !QFile::exists(nothing());
  }

  [[nodiscard]] QString folder() const { return m_folder.path(); }

 private:
  static constexpr auto kSecret = "what the user keeps elsewhere";

  [[nodiscard]] QString victim() const { return m_folder.filePath("victim"); }
  [[nodiscard]] QString nothing() const { return m_folder.filePath("nothing"); }

  QTemporaryDir m_folder;
};

void addTraps() {
  QTest::addColumn<Trap>("trap");
  QTest::newRow("a symbolic link") << Trap::Link;
  QTest::newRow("a symbolic link to nothing") << Trap::LinkToNothing;
  QTest::newRow("a hard link") << Trap::HardLink;
  QTest::newRow("a pipe") << Trap::Pipe;
  QTest::newRow("a folder") << Trap::Folder;
  QTest::newRow("another user's file") << Trap::OthersFile;
}

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

  void noStoreIsOpenedThroughATrap_data() { addTraps(); }
  void noStoreIsOpenedThroughATrap() {
    QFETCH(const Trap, trap);
    for (const QString file : {"", "-wal", "-shm", "-journal"}) {
      const Intruder intruder;
      TestEnvironment home;
      intruder.lay(trap, home.storePath() + file);
      // As it is, and with migration.
      expectWarning("^Store .*QIR_Pick.sqlite not opened: QIR_Pick.sqlite" + file + ": it ");
      expectWarning("^Store .*QIR_Pick.sqlite not opened: QIR_Pick.sqlite" + file + ": it ");
      vekAppDelegate delegate(home.environment);
      QVERIFY(!delegate.persistentStoreCoordinator()->hasStore());
      QVERIFY(intruder.hasGainedNothing());
    }
  }

  void noCatalogueIsWrittenThroughALink() {
    const Intruder intruder;
    const TestEnvironment home;
    intruder.lay(Trap::Link, home.storePath());
    CatalogueWriter writer(home.storePath());
    QVERIFY(writer.save().has_value());
    QVERIFY(intruder.hasGainedNothing());
  }

  void theStoreOpensWhereTheHomeIsALinkOfItsAdministrator() {
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

  void noLockIsTakenThroughATrap_data() { addTraps(); }
  void noLockIsTakenThroughATrap() {
    QFETCH(const Trap, trap);
    const Intruder intruder;
    const TestEnvironment home;
    intruder.lay(trap, home.environment.folders.documents() + "/QIR_Pick.lock");
    expectWarning("^Lock .*QIR_Pick.lock not used: it ");
    StoreLock lock(home.environment.folders);
    QVERIFY(!lock.acquire());
    QVERIFY(!lock.isHeldByAnother());
    QVERIFY(intruder.hasGainedNothing());
  }

  void noExportIsWrittenThroughATrapAndTheMailGoesOutAllTheSame_data() { addTraps(); }
  void noExportIsWrittenThroughATrapAndTheMailGoesOutAllTheSame() {
    QFETCH(const Trap, trap);
    const Intruder intruder;
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 6}});
    program.context().insert(pickOf4711());
    QVERIFY(!program.context().save());
    intruder.lay(trap, program.environment.folders.documents() + "/VardexExport.csv");
    expectWarning("^Export .*VardexExport.csv not written: it ");
    program.detail().selectedAction("Send Email");
    QVERIFY(intruder.hasGainedNothing());
    QCOMPARE(program.mail->drafts().size(), 1U);
    QVERIFY(program.mail->drafts().front().attachment.startsWith("b;C1;"));
  }

  void noLooksAreRememberedThroughATrap_data() { addTraps(); }
  void noLooksAreRememberedThroughATrap() {
    QFETCH(const Trap, trap);
    const Intruder intruder;
    const QTemporaryDir home;
    intruder.lay(trap, home.filePath("display.ini"));
    expectWarning("^File .*display.ini not used: it ");
    DisplaySettings settings(Folders{home.path()},
                             std::make_unique<SystemColourScheme>(QDBusConnection(QString())));
    expectWarning("^File .*display.ini not written: it ");
    settings.setTheme(DisplaySettings::Theme::Dark);
    QVERIFY(settings.isDark());
    QVERIFY(intruder.hasGainedNothing());
  }

  void noFolderOfDocumentsIsUsedThatIsALink() {
    const Intruder intruder;
    const QTemporaryDir home;
    QVERIFY(QFile::link(intruder.folder(), home.filePath("Documents")));
    expectWarning("^Folder .*Documents not used: it is a symbolic link");
    QVERIFY(!Folders{home.path()}.create());
  }

  void aHomeThatEverybodyMayWriteToIsToldOf() {
    const QTemporaryDir home;
    QCOMPARE(::chmod(QFile::encodeName(home.path()).constData(), 0777), 0);
    expectWarning("^Everybody may write to the folder ");
    QVERIFY(Folders{home.path()}.create());
  }
};

CARTONPICK_TEST(IntruderFilesTest);
#include "IntruderFiles_test.moc"
