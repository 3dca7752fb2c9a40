#include "device/DesktopMailComposer.h"

#include "support/TestClass.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {

void writeFile(const QString &path, const QByteArray &content) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  QCOMPARE(file.write(content), content.size());
}

QByteArray contentOf(const QString &path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A desktop whose only registered programs are those that a test installs. Create it before Qt
/// reads the desktop's folders.
class Desktop {
 public:
  Desktop() {
    for (const char *folder : {"config", "etc", "data/applications", "share/mime"}) {
      QDir().mkpath(path(folder));
    }
    qputenv("XDG_CONFIG_HOME", path("config").toUtf8());
    qputenv("XDG_CONFIG_DIRS", path("etc").toUtf8());
    qputenv("XDG_DATA_HOME", path("data").toUtf8());
    qputenv("XDG_DATA_DIRS", path("share").toUtf8());
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    // As on any desktop, a plain-text program can open mail files too.
    writeFile(path("share/mime/subclasses"), "message/rfc822 text/plain\n");
  }

  /// Registers the program `name` for files of `type`. The program copies the file that it is
  /// given, records its argument and ends.
  void install(const QString &name, const QByteArray &type, const QByteArray &moreEntries = {}) {
    const QByteArray script = path(name + ".sh").toUtf8();
    const QByteArray out = path(name).toUtf8();
    writeFile(script, "#!/bin/sh\nset -e\ncat \"$1\" > '" + out + ".file'\nprintf %s \"$1\" > '" +
                          out + ".part'\nmv '" + out + ".part' '" + out + ".argument'\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    writeFile(path("data/applications/" + name + ".desktop"),
              "[Desktop Entry]\nType=Application\nName=" + name.toUtf8() + "\nExec=" + script +
                  " %f\nMimeType=" + type + ";\n" + moreEntries);
    m_programs[type].append(name.toUtf8() + ".desktop;");
    writeRegister();
  }

  /// Makes `name` the user's default for mail files. This setting is in the same folder as the list
  /// of installed programs, so a reader that has noticed a change of the list has noticed the
  /// setting too.
  void choose(const QString &name) {
    writeFile(path("data/applications/mimeapps.list"),
              "[Default Applications]\nmessage/rfc822=" + name.toUtf8() + ".desktop\n");
  }

  void uninstall(const QByteArray &type) {
    m_programs.remove(type);
    writeRegister();
  }

  void uninstallAll() {
    QFile::remove(path("data/applications/mimeapps.list"));
    m_programs.clear();
    writeRegister();
    QDir root(m_root.path());
    const QStringList kept = root.entryList({"*.file", "*.argument"}, QDir::Files);
    for (const QString &name : kept) {
      root.remove(name);
    }
  }

  [[nodiscard]] bool wasStarted(const QString &name) const {
    return QFile::exists(path(name + ".argument"));
  }
  /// Returns the argument that the program `name` was started with.
  [[nodiscard]] QString argumentOf(const QString &name) const {
    return QString::fromUtf8(contentOf(path(name + ".argument")));
  }
  /// Returns the contents of the file that the program `name` was started with.
  [[nodiscard]] QByteArray fileOf(const QString &name) const {
    return contentOf(path(name + ".file"));
  }

 private:
  [[nodiscard]] QString path(const QString &name) const { return m_root.filePath(name); }

  void writeRegister() {
    QByteArray lines = "[MIME Cache]\n";
    for (auto type = m_programs.cbegin(); type != m_programs.cend(); ++type) {
      lines += type.key() + '=' + type.value() + '\n';
    }
    writeFile(path("data/applications/mimeinfo.cache"), lines);
  }

  QTemporaryDir m_root;
  QMap<QByteArray, QByteArray> m_programs;
};

constexpr auto kMail = "message/rfc822";
constexpr auto kText = "text/plain";

MailDraft draft(const QString &subject = "Vardex File 4711") {
  return {.subject = subject,
          .htmlBody = "Delivery Number = 4711",
          .attachment = "b1;C1;\r",
          .attachmentMimeType = "application/csv",
          .attachmentFileName = "Vardex_4711.csv"};
}

}  // namespace

class DesktopMailComposerTest : public QObject {
  Q_OBJECT

 private slots:
  // Programs are installed and removed while the composer exists; it notices with a delay.
  void init() {
    m_desktop.uninstallAll();
    m_home = std::make_unique<QTemporaryDir>();
    m_composer = std::make_unique<DesktopMailComposer>(Folders{m_home->path()});
    QTRY_VERIFY(!m_composer->canSendMail());
  }

  void withoutAMailProgramNoMailCanBeSent() {
    QVERIFY(!m_composer->canSendMail());
    QVERIFY(!m_composer->compose(draft()));
    QCOMPARE(drafts(), QStringList());
  }

  void theMailProgramReceivesTheDraft() {
    m_desktop.install("mailer", kMail);
    QTRY_VERIFY(m_composer->canSendMail());
    QVERIFY(m_composer->compose(draft()));
    QTRY_VERIFY(m_desktop.wasStarted("mailer"));
    QCOMPARE(drafts().size(), 1);
    QCOMPARE(m_desktop.argumentOf("mailer"), draftPath());
    QCOMPARE(m_desktop.fileOf("mailer"), contentOf(draftPath()));
    QVERIFY(m_desktop.fileOf("mailer").startsWith("X-Unsent: 1\r\n"));
    QVERIFY(m_desktop.fileOf("mailer").contains("\r\nSubject: Vardex File 4711\r\n"));
  }

  void theDraftIsAccessibleToItsOwnerOnly() {
    m_desktop.install("mailer", kMail);
    QTRY_VERIFY(m_composer->canSendMail());
    QVERIFY(m_composer->compose(draft()));
    constexpr auto kOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                             QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QVERIFY(!(QFile::permissions(draftPath()) & (kOthers | QFile::ExeOwner)));
    QVERIFY(!(QFile::permissions(m_home->filePath("Drafts")) & kOthers));
    QTRY_VERIFY(m_desktop.wasStarted("mailer"));
  }

  void aNewDraftReplacesThePreviousOne() {
    m_desktop.install("mailer", kMail);
    QTRY_VERIFY(m_composer->canSendMail());
    QVERIFY(m_composer->compose(draft("First")));
    QTRY_COMPARE(m_desktop.argumentOf("mailer"), draftPath());
    QVERIFY(m_composer->compose(draft("Second")));
    QTRY_COMPARE(m_desktop.argumentOf("mailer"), draftPath());
    QCOMPARE(drafts().size(), 1);
    QVERIFY(contentOf(draftPath()).contains("\r\nSubject: Second\r\n"));
  }

  void noShellInterpretsThePathOfTheDraft() {
    const QTemporaryDir folder;
    const QString home = folder.filePath("a '\"$(touch pwned); %f é");
    QVERIFY(QDir().mkpath(home));
    m_desktop.install("mailer", kMail);
    DesktopMailComposer composer(Folders{home});
    QTRY_VERIFY(composer.canSendMail());
    QVERIFY(composer.compose(draft()));
    QTRY_VERIFY(m_desktop.wasStarted("mailer"));
    QVERIFY(m_desktop.argumentOf("mailer").startsWith(home + "/Drafts/"));
    QVERIFY(!QFile::exists("pwned"));
  }

  void theUsersDefaultMailProgramIsUsed() {
    m_desktop.choose("chosen");
    m_desktop.install("first", kMail);
    m_desktop.install("chosen", kMail);
    m_desktop.install("last", kMail);
    QTRY_VERIFY(m_composer->canSendMail());
    QVERIFY(m_composer->compose(draft()));
    QTRY_VERIFY(m_desktop.wasStarted("chosen"));
    QVERIFY(!m_desktop.wasStarted("first"));
    QVERIFY(!m_desktop.wasStarted("last"));
  }

  void aTextEditorIsNotAMailProgram() {
    m_desktop.choose("editor");
    m_desktop.install("editor", kText);
    m_desktop.install("mailer", kMail);
    QTRY_VERIFY(m_composer->canSendMail());
    QVERIFY(m_composer->compose(draft()));
    QTRY_VERIFY(m_desktop.wasStarted("mailer"));
    m_desktop.uninstall(kMail);
    QTRY_VERIFY(!m_composer->canSendMail());
    QVERIFY(!m_composer->compose(draft()));
    QVERIFY(!m_desktop.wasStarted("editor"));
  }

  void aProgramThatCannotStartLeavesNoDraft() {
    m_desktop.install("mailer", kMail, "Path=/nonexistent\n");
    QTRY_VERIFY(m_composer->canSendMail());
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression("^The mail program cannot be started: .*nonexistent"));
    QVERIFY(!m_composer->compose(draft()));
    QCOMPARE(drafts(), QStringList());
  }

  void noProgramIsStartedIfTheDraftCannotBeWritten() {
    m_desktop.install("mailer", kMail);
    writeFile(m_home->filePath("Drafts"), "in the way");
    QTRY_VERIFY(m_composer->canSendMail());
    QVERIFY(!m_composer->compose(draft()));
    QVERIFY(!m_desktop.wasStarted("mailer"));
  }

 private:
  [[nodiscard]] QStringList drafts() const {
    return QDir(m_home->filePath("Drafts")).entryList(QDir::Files);
  }
  [[nodiscard]] QString draftPath() const {
    return m_home->filePath("Drafts/" + drafts().value(0));
  }

  Desktop m_desktop;
  std::unique_ptr<QTemporaryDir> m_home;
  std::unique_ptr<DesktopMailComposer> m_composer;
};

CARTONPICK_TEST(DesktopMailComposerTest);
#include "DesktopMailComposer_test.moc"
