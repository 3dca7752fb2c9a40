// Hostile delivery numbers must not become commands, paths, header fields or markup when they are
// sent by email. A recorder replaces the desktop's mail program.

#include "device/DesktopMailComposer.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

void write(const QString &path, const QByteArray &content) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  QCOMPARE(file.write(content), content.size());
}

/// A desktop with the recorder as its only mail program. Create it before Qt reads the desktop's
/// folders.
class RecordingDesktop {
 public:
  RecordingDesktop() {
    for (const char *folder : {"config", "etc", "data/applications", "share/mime"}) {
      QDir().mkpath(m_root.filePath(folder));
    }
    qputenv("XDG_CONFIG_HOME", m_root.filePath("config").toUtf8());
    qputenv("XDG_CONFIG_DIRS", m_root.filePath("etc").toUtf8());
    qputenv("XDG_DATA_HOME", m_root.filePath("data").toUtf8());
    qputenv("XDG_DATA_DIRS", m_root.filePath("share").toUtf8());
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    write(
        m_root.filePath("data/applications/recorder.desktop"),
        "[Desktop Entry]\nType=Application\nName=Recorder\nExec=/usr/bin/python3 " RECORDING_MAILER
        " " +
            record().toUtf8() + " %f\nMimeType=message/rfc822;\n");
    write(m_root.filePath("data/applications/mimeinfo.cache"),
          "[MIME Cache]\nmessage/rfc822=recorder.desktop;\n");
  }

  /// Returns true if the mail program was started since the last call to takeRecord().
  [[nodiscard]] bool hasRecord() const { return QFile::exists(record()); }
  /// Returns how the mail program was started and what it read, and removes the record.
  [[nodiscard]] QJsonObject takeRecord() const {
    QFile file(record());
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    file.remove();
    return QJsonDocument::fromJson(text).object();
  }

 private:
  [[nodiscard]] QString record() const { return m_root.filePath("record.json"); }

  QTemporaryDir m_root;
};

QStringList filesBelow(const QString &folder) {
  QStringList files;
  QDirIterator walk(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
  while (walk.hasNext()) {
    files.append(QDir(folder).relativeFilePath(walk.next()));
  }
  files.sort();
  return files;
}

/// The program after delivery `number` has been picked. It sends email through the desktop.
class MailProgramRun : public TestProgram {
 public:
  explicit MailProgramRun(const QString &number) {
    environment.mail = std::make_unique<DesktopMailComposer>(environment.folders);
    enterPicking();
    service.answerWith(deliveryJson({{.carton = "C1", .item = "A", .qty = 6, .doc = number}}));
    lookUp("4711");
    master().btnPickingTouched();
    master().tblBoxes->touchRow(0);
    enterQuantity(0, "2");
  }

  [[nodiscard]] const QString &home() const { return environment.folders.home; }
};

QString shownInOneLine(QString text) {
  static const QRegularExpression kBreaks("[\\x00-\\x1f\\x7f-\\x9f\\x{2028}\\x{2029}]",
                                          QRegularExpression::UseUnicodePropertiesOption);
  return text.replace(kBreaks, " ");
}

}  // namespace

class IntruderMailTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    static_cast<void>(m_desktop.takeRecord());
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(m_folder->path()));
  }

  void aHostileDeliveryNumberRemainsPlainText_data() {
    QTest::addColumn<QString>("number");
    const auto add = [](const char *name, const QString &number) { QTest::newRow(name) << number; };
    add("a command", "$(touch pwned)");
    add("a command in quotes", "`touch pwned`'\"; touch pwned; #");
    add("a second command", "4711; touch pwned");
    add("a pipe", "4711 | touch pwned > pwned & ");
    add("a variable", "$HOME ${IFS} %f %u %c");
    add("an option", "--attach=/etc/passwd");
    add("a one-letter option", "-e");
    add("a path to a parent folder", "../../../pwned");
    add("an absolute path", "/etc/passwd");
    add("a Windows path", "..\\..\\C:pwned");
    add("a URL", "file:///etc/passwd?attach=/etc/shadow");
    add("a line break", "4711\ntouch pwned");
    add("a header field", "4711\r\nBcc: thief@example.com\r\n\r\n<b>body</b>");
    add("a folded header field", "4711\r\n\tBcc: thief@example.com");
    add("a Unicode line break", QStringLiteral("4711\u2028Bcc: thief@example.com\u0085x"));
    add("a MIME part", "4711\r\n--=_CartonPick_part\r\nContent-Type: text/html\r\n");
    add("an encoded word", "=?UTF-8?B?QmNjOiB0aGllZg==?=");
    add("an encoded line break", "=?UTF-8?Q?=0D=0ABcc:_thief?=");
    add("an attachment name", "\"; filename=\"pwned.exe");
    add("markup", "<img src=x onerror=alert(1)>&lt;b&gt;");
    add("a NUL", QStringLiteral("4711%1Bcc").arg(QChar(0)));
    add("leading and trailing spaces", "  4711  ");
    add("letters from many scripts", QStringLiteral("Лиферунг 納品書 שלום 🚚"));
    add("a right-to-left override", QStringLiteral("4711\u202efdp.exe"));
    add("a long number", QString(10'000, 'x'));
    add("a long number of multi-byte letters", QStringLiteral("納").repeated(5'000));
  }
  void aHostileDeliveryNumberRemainsPlainText() {
    QFETCH(const QString, number);
    MailProgramRun program(number);
    const QStringList before = filesBelow(program.home());
    program.detail().selectedAction("Send Email");
    QTRY_VERIFY(m_desktop.hasRecord());
    const QJsonObject record = m_desktop.takeRecord();

    // The mail program's argument is the draft, and no other file is new.
    const QStringList drafts = QDir(program.home() + "/Drafts").entryList(QDir::Files);
    QCOMPARE(drafts.size(), 1);
    QVERIFY(QRegularExpression("^Mail-[A-Za-z]{6}\\.eml$").match(drafts.front()).hasMatch());
    QCOMPARE(record["arguments"].toArray(),
             QJsonArray{program.home() + "/Drafts/" + drafts.front()});
    QStringList after = before;
    after << "Documents/VardexExport.csv"
          << "Drafts"
          << "Drafts/" + drafts.front();
    after.sort();
    QCOMPARE(filesBelow(program.home()), after);
    QCOMPARE(filesBelow(m_folder->path()), QStringList());
    const QJsonObject environment = record["environment"].toObject();
    for (const QString &name : environment.keys()) {
      QVERIFY2(!environment[name].toString().contains(number), qPrintable(name));
    }
    checkMail(record["mail"].toObject(), number);
  }

  void draftsAreNeitherWrittenNorRemovedThroughALinkedFolder() {
    const QString kept = m_folder->filePath("kept.eml");
    write(kept, "a mail of the user's");
    MailProgramRun program("4711");
    QVERIFY(QFile::link(m_folder->path(), program.home() + "/Drafts"));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression("^Folder .*Drafts not used: it is a symbolic link"));
    program.detail().selectedAction("Send Email");
    QCOMPARE(filesBelow(m_folder->path()), QStringList{"kept.eml"});
    QVERIFY(!m_desktop.hasRecord());
  }

  void aLinkAmongTheDraftsIsRemovedAndNotFollowed() {
    const QString kept = m_folder->filePath("kept");
    write(kept, "what the user keeps");
    MailProgramRun program("4711");
    const QString drafts = program.home() + "/Drafts";
    QVERIFY(QDir().mkdir(drafts));
    QVERIFY(QFile::link(kept, drafts + "/Mail-trap.eml"));
    program.detail().selectedAction("Send Email");
    QTRY_VERIFY(m_desktop.hasRecord());
    QCOMPARE(QFile(kept).size(), 19);
    QVERIFY(!QFileInfo(drafts + "/Mail-trap.eml").isSymLink());
  }

 private:
  static void checkMail(const QJsonObject &mail, const QString &number) {
    QCOMPARE(mail["defects"].toArray(), QJsonArray());
    QCOMPARE(mail["fields"].toArray(),
             (QJsonArray{"X-Unsent", "Date", "Subject", "MIME-Version", "Content-Type"}));
    QCOMPARE(mail["subject"].toString(), "Vardex File " + shownInOneLine(number));
    const QJsonArray parts = mail["parts"].toArray();
    QCOMPARE(parts.size(), 2);
    const QJsonObject body = parts[0].toObject();
    QCOMPARE(body["type"].toString(), "text/html");
    QCOMPARE(body["text"].toString(), "Delivery Number = " + number.toHtmlEscaped());
    QVERIFY(!body["text"].toString().contains('<'));
    const QJsonObject file = parts[1].toObject();
    QCOMPARE(file["disposition"].toString(), "attachment");
    const QString name = file["name"].toString();
    QVERIFY2(name.startsWith("Vardex_") && name.endsWith(".csv"), qPrintable(name));
    QVERIFY(name.toUtf8().size() <= 255);
    QVERIFY(!name.contains(QRegularExpression("[/\\\\\\x00-\\x1f\\x7f]")));
    QVERIFY(file["text"].toString().startsWith("bA;C1;"));
    for (const QString &line : mail["raw"].toString().split("\r\n")) {
      QVERIFY2(line.size() <= 78 && !line.contains('\r') && !line.contains('\n'), qPrintable(line));
    }
  }

  RecordingDesktop m_desktop;
  std::unique_ptr<QTemporaryDir> m_folder;
};

CARTONPICK_TEST(IntruderMailTest);
#include "IntruderMail_test.moc"
