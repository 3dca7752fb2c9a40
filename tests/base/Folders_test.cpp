#include "base/Folders.h"

#include "support/TestClass.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr QFile::Permissions kOwner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
constexpr QFile::Permissions kOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                       QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;

bool isForItsOwnerOnly(const QString &path) {
  const QFile::Permissions permissions = QFile::permissions(path);
  return (permissions & kOwner) == kOwner && !(permissions & kOthers);
}

}  // namespace

class FoldersTest : public QObject {
  Q_OBJECT

 private slots:
  void newFoldersAreAccessibleToTheirOwnerOnly() {
    const QTemporaryDir root;
    const Folders folders{root.filePath(QStringLiteral("a/home"))};
    QVERIFY(folders.create());
    QCOMPARE(folders.documents(), folders.home + QStringLiteral("/Documents"));
    QVERIFY(isForItsOwnerOnly(folders.home));
    QVERIFY(isForItsOwnerOnly(folders.documents()));
  }

  void everyFolderOnTheWayToTheHomeIsCreatedForItsOwnerOnly() {
    const QTemporaryDir root;
    const Folders folders{root.filePath(QStringLiteral("a/b/c"))};
    QVERIFY(folders.create());
    for (const auto *folder : {"a", "a/b", "a/b/c"}) {
      QVERIFY2(isForItsOwnerOnly(root.filePath(QLatin1String(folder))), folder);
    }
  }

  void anExistingDocumentsFolderKeepsItsFilesAndBecomesPrivate() {
    const QTemporaryDir root;
    const Folders folders{root.filePath(QStringLiteral("home"))};
    QVERIFY(QDir().mkpath(folders.documents()));
    const QFile::Permissions permissions = kOwner | QFile::ReadGroup | QFile::ExeGroup;
    QVERIFY(QFile::setPermissions(folders.documents(), permissions));
    QFile file(folders.documents() + QStringLiteral("/kept"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(folders.create());
    QVERIFY(file.exists());
    QVERIFY(isForItsOwnerOnly(folders.documents()));
  }

  void aWorldWritableHomeKeepsItsPermissionsAndCausesAWarning() {
    const QTemporaryDir root;
    const Folders folders{root.path()};
    QVERIFY(QFile::setPermissions(root.path(), kOwner | kOthers));
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable("The folder " + root.path() + " is writable by every user."));
    QVERIFY(folders.create());
    QVERIFY(QFile::permissions(root.path()) & QFile::ReadOther);
    QVERIFY(isForItsOwnerOnly(folders.documents()));
  }

  void aFileInPlaceOfTheDocumentsFolderIsRefused() {
    const QTemporaryDir root;
    const Folders folders{root.path()};
    QFile file(folders.documents());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QTest::ignoreMessage(QtWarningMsg, qPrintable("Folder " + folders.documents() +
                                                  " not used: it is not a folder."));
    QVERIFY(!folders.create());
    QVERIFY(QFileInfo(folders.documents()).isFile());
  }

  void theUsersHomeIsAnAbsolutePath() { QVERIFY(QDir::isAbsolutePath(Folders::ofThisUser().home)); }
};

CARTONPICK_TEST(FoldersTest);
#include "Folders_test.moc"
