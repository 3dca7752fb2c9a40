#include "base/OwnFiles.h"

#include "support/TestClass.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr uid_t kNobody = 65534;

void write(const QString &path, const QByteArray &content) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  QCOMPARE(file.write(content), content.size());
}

mode_t modeOf(const QString &path) {
  struct stat status {};
  return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777U : 0;
}

void chmod(const QString &path, mode_t mode) {
  QCOMPARE(::chmod(QFile::encodeName(path).constData(), mode), 0);
}

}  // namespace

class OwnFilesTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    m_folder = std::make_unique<QTemporaryDir>();
    write(path("victim"), "kept");
    chmod(path("victim"), 0640);
  }

  void aMissingFileIsAcceptedAndNotCreated() {
    QCOMPARE(claimFile(path("x")), QString());
    QVERIFY(!QFile::exists(path("x")));
  }

  void aRegularFileBecomesReadableByItsOwnerOnly() {
    write(path("x"), "kept");
    for (const mode_t mode : {0644U, 0666U, 0777U, 0600U, 0400U, 04755U}) {
      chmod(path("x"), mode);
      QCOMPARE(claimFile(path("x")), QString());
      QCOMPARE(modeOf(path("x")), 0600U);
    }
  }

  void aSymbolicLinkIsRefused() {
    QVERIFY(QFile::link(path("victim"), path("x")));
    QCOMPARE(claimFile(path("x")), QString("it is a symbolic link"));
    QCOMPARE(modeOf(path("victim")), 0640U);
  }

  void aDanglingSymbolicLinkIsRefused() {
    QVERIFY(QFile::link(path("nothing"), path("x")));
    QCOMPARE(claimFile(path("x")), QString("it is a symbolic link"));
    QVERIFY(!QFile::exists(path("nothing")));
  }

  void aHardLinkIsRefused() {
    QCOMPARE(::link(encoded("victim").constData(), encoded("x").constData()), 0);
    QCOMPARE(claimFile(path("x")), QString("it has more than one hard link"));
    QCOMPARE(modeOf(path("victim")), 0640U);
  }

  void pipesFoldersAndDevicesAreRefused() {
    QCOMPARE(::mkfifo(encoded("pipe").constData(), 0600), 0);
    QVERIFY(QDir().mkdir(path("folder")));
    for (const QString &it : {path("pipe"), path("folder"), QStringLiteral("/dev/null")}) {
      QCOMPARE(claimFile(it), QString("it is not a regular file"));
    }
  }

  void anotherUsersFileIsRefused() {
    write(path("x"), "theirs");
    giveAway("x");
    QCOMPARE(claimFile(path("x")), QString("it belongs to another user"));
  }

  void aReplacedFileIsReadableByItsOwnerOnly() {
    const mode_t before = ::umask(0);
    for (const QByteArray content : {"first", "next", ""}) {
      QCOMPARE(replaceFile(path("x"), content), QString());
      QCOMPARE(modeOf(path("x")), 0600U);
      QFile file(path("x"));
      QVERIFY(file.open(QIODevice::ReadOnly));
      QCOMPARE(file.readAll(), content);
    }
    ::umask(before);
  }

  void aSymbolicLinkIsNotReplaced() {
    QVERIFY(QFile::link(path("victim"), path("x")));
    QCOMPARE(replaceFile(path("x"), "new"), QString("it is a symbolic link"));
    QVERIFY(QFileInfo(path("x")).isSymLink());
  }

  void aFileThatCannotBeCreatedIsReported() {
    QVERIFY(!replaceFile(path("missing/x"), "new").isEmpty());
  }

  void aNewFolderIsAccessibleToItsOwnerOnly() {
    const mode_t before = ::umask(0);
    QCOMPARE(claimFolder(path("x")), QString());
    ::umask(before);
    QCOMPARE(modeOf(path("x")), 0700U);
  }

  void theUmaskDoesNotRestrictANewFolder() {
    const mode_t before = ::umask(0777);
    QCOMPARE(claimFolder(path("x")), QString());
    ::umask(before);
    QCOMPARE(modeOf(path("x")), 0700U);
  }

  void anExistingFolderKeepsItsFilesAndBecomesPrivate() {
    QVERIFY(QDir().mkdir(path("x")));
    chmod(path("x"), 0777);
    write(path("x/kept"), "kept");
    QCOMPARE(claimFolder(path("x")), QString());
    QCOMPARE(modeOf(path("x")), 0700U);
    QVERIFY(QFile::exists(path("x/kept")));
  }

  void aLinkToAFolderIsRefused() {
    QVERIFY(QDir().mkdir(path("theirs")));
    chmod(path("theirs"), 0755);
    QVERIFY(QFile::link(path("theirs"), path("x")));
    QCOMPARE(claimFolder(path("x")), QString("it is a symbolic link"));
    QCOMPARE(modeOf(path("theirs")), 0755U);
  }

  void aFileInPlaceOfTheFolderIsRefused() {
    QCOMPARE(claimFolder(path("victim")), QString("it is not a folder"));
    QCOMPARE(modeOf(path("victim")), 0640U);
  }

  void aFolderThatCannotBeCreatedIsRefused() {
    QCOMPARE(claimFolder(path("missing/x")), QString("it cannot be created"));
  }

  void anotherUsersFolderIsRefused() {
    QVERIFY(QDir().mkdir(path("x")));
    giveAway("x");
    QCOMPARE(claimFolder(path("x")), QString("it belongs to another user"));
  }

 private:
  [[nodiscard]] QString path(const QString &name) const { return m_folder->filePath(name); }
  [[nodiscard]] QByteArray encoded(const QString &name) const {
    return QFile::encodeName(path(name));
  }

  void giveAway(const QString &name) const {
    if (::chown(encoded(name).constData(), kNobody, kNobody) != 0) {
      QSKIP("Only root can give a file to another user.");
    }
  }

  std::unique_ptr<QTemporaryDir> m_folder;
};

CARTONPICK_TEST(OwnFilesTest);
#include "OwnFiles_test.moc"
