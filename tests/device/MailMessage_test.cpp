#include "device/MailMessage.h"

#include "support/TestClass.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

namespace {

/// A Python script that reads an email and prints its contents as JSON.
constexpr auto kReadMail = R"(
import base64, email, email.policy, json, sys
mail = email.message_from_binary_file(sys.stdin.buffer, policy=email.policy.default)
body, attachment = mail.iter_parts()
print(json.dumps({
    "fields": mail.keys(),
    "recipients": mail["To"],
    "date": mail["Date"].datetime.isoformat(),
    "unsent": mail["X-Unsent"],
    "subject": str(mail["Subject"]),
    "type": mail.get_content_type(),
    "bodyType": body.get_content_type(),
    "body": body.get_content(),
    "attachmentType": attachment.get_content_type(),
    "disposition": attachment.get_content_disposition(),
    "fileName": attachment.get_filename(),
    "plainName": attachment["Content-Type"].params.get("name"),
    "attachment": base64.b64encode(attachment.get_payload(decode=True)).decode(),
    "defects": [str(defect) for part in mail.walk()
                for defects in [part.defects] + [value.defects for value in part.values()]
                for defect in defects],
}))
)";

/// Runs `program` with `input` and returns its output, empty if it fails.
QByteArray outputOf(const QString &program, const QStringList &arguments, const QByteArray &input) {
  QProcess process;
  process.start(program, arguments);
  process.write(input);
  process.closeWriteChannel();
  const bool isDone = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
                      process.exitCode() == 0;
  if (!isDone) {
    qWarning() << program << process.errorString() << process.readAllStandardError();
  }
  return isDone ? process.readAllStandardOutput() : QByteArray();
}

/// Returns the email as Python's email library reads it.
QJsonObject readByPython(const QByteArray &mail) {
  const QByteArray json = outputOf(QStringLiteral("/usr/bin/python3"), {"-c", kReadMail}, mail);
  return QJsonDocument::fromJson(json).object();
}

void writeFile(const QString &path, const QByteArray &content) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  QCOMPARE(file.write(content), content.size());
  QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

/// Opens `draft` in mutt, addresses it and sends it. Returns the email that mutt passes to
/// sendmail.
QByteArray sentByMutt(const QByteArray &draft) {
  const QTemporaryDir folder;
  writeFile(folder.filePath("draft.eml"), draft);
  writeFile(folder.filePath("sendmail"),
            "#!/bin/sh\ncat > '" + folder.filePath("sent").toUtf8() + "'\n");
  writeFile(folder.filePath("muttrc"), "set copy=no\nset from=picker@example.org\nset sendmail=\"" +
                                           folder.filePath("sendmail").toUtf8() + "\"\n");
  outputOf(QStringLiteral("mutt"),
           {"-n", "-F", folder.filePath("muttrc"), "-H", folder.filePath("draft.eml"),
            "office@example.org"},
           {});
  QFile sent(folder.filePath("sent"));
  return sent.open(QIODevice::ReadOnly) ? sent.readAll() : QByteArray();
}

const QByteArray kAttachment = "b1;C1;2026-03-02 10:12:05;Λάμπα;4711;A;A1;6;6;0\r\xFF";

MailDraft draftFor(const QString &number) {
  return {.subject = "Vardex File " + number,
          .htmlBody = "Delivery Number = " + number.toHtmlEscaped(),
          .attachment = kAttachment,
          .attachmentMimeType = "application/csv",
          .attachmentFileName = "Vardex_" + number + ".csv",
          .date = QDateTime({2026, 3, 2}, {10, 12, 5}, QTimeZone("Europe/Athens"))};
}

QByteArray mailFor(const QString &number) {
  return mailMessageOf(draftFor(number));
}

void checkLines(QByteArray mail) {
  QVERIFY(mail.endsWith("\r\n"));
  mail.chop(2);
  for (const QByteArray &line : mail.replace("\r\n", "\n").split('\n')) {
    QVERIFY2(line.size() <= 78, line);
    // A folded field may continue after a tab.
    const QByteArray text = line.startsWith('\t') ? line.sliced(1) : line;
    QVERIFY2(std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; }),
             line);
  }
}

void addNumbers() {
  QTest::addColumn<QString>("number");
  QTest::addColumn<QString>("inSubject");
  QTest::addColumn<QString>("inFileName");
  const auto add = [](const char *name, const QString &number, const QString &inSubject,
                      const QString &inFileName) {
    QTest::newRow(name) << number << inSubject << inFileName;
  };
  const auto addUnchanged = [&add](const char *name, const QString &number) {
    add(name, number, number, number);
  };
  addUnchanged("plain", "4711");
  addUnchanged("spaces", "  47  11  ");
  addUnchanged("quotes and parameter separators", R"("4'7";1*1,)");
  addUnchanged("markup", "<b>4711<br>&amp;<script>");
  addUnchanged("percent signs", "100%41%0A%");
  addUnchanged("an encoded word", "=?UTF-8?B?QUJD?=");
  addUnchanged("the start of an encoded word", "=?x");
  addUnchanged("spaces between letters", "4  7");
  addUnchanged("non-ASCII letters between spaces", " é  é ");
  addUnchanged("Greek", "Παραλαβή");
  addUnchanged("emoji", "📦👩‍🔧4711");
  const auto addLong = [&add](const char *name, const QString &number) {
    add(name, number, number, number.left(35) + u'…' + number.right(38));
  };
  addLong("500 letters", QStringLiteral("x").repeated(500));
  addLong("500 Greek letters", QStringLiteral("ω").repeated(500));
  addLong("500 emoji", "x" + QStringLiteral("📦").repeated(500));
  add("header injection", "4711\r\nBcc: thief@example.org\r\n\r\n<p>",  //
      "4711  Bcc: thief@example.org    <p>", "4711__Bcc: thief@example.org____<p>");
  add("a lone carriage return", "47\r11", "47 11", "47_11");
  add("other control characters", "4\t7\x1B[31m\x7F", "4 7 [31m ", "4_7_[31m_");
  add("line separators", "4\u20287\u2029", "4 7 ", "4_7_");
  add("a path", "../../etc/passwd", "../../etc/passwd", ".._.._etc_passwd");
  add("another path", R"(..\C:\4711)", R"(..\C:\4711)", ".._C:_4711");
}

}  // namespace

class MailMessageTest : public QObject {
  Q_OBJECT

 private slots:
  void isAnUnsentEmailWithoutRecipients() {
    const QJsonObject mail = readByPython(mailFor("4711"));
    QCOMPARE(mail["fields"].toArray(),
             QJsonArray({"X-Unsent", "Date", "Subject", "MIME-Version", "Content-Type"}));
    QCOMPARE(mail["unsent"].toString(), "1");
    QVERIFY(mail["recipients"].isNull());
    QCOMPARE(mail["date"].toString(), "2026-03-02T10:12:05+02:00");
    QCOMPARE(mail["type"].toString(), "multipart/mixed");
    QCOMPARE(mail["bodyType"].toString(), "text/html");
    QCOMPARE(mail["attachmentType"].toString(), "application/csv");
    QCOMPARE(mail["disposition"].toString(), "attachment");
    QCOMPARE(mail["plainName"].toString(), "Vardex_4711.csv");
  }

  void linesAreShortAsciiAndEndInCrLf_data() { addNumbers(); }
  void linesAreShortAsciiAndEndInCrLf() {
    QFETCH(QString, number);
    checkLines(mailFor(number));
  }

  void linesAreShortForNumbersOfAnyLength() {
    for (int length = 0; length <= 100; ++length) {
      checkLines(mailFor(QString(length, 'x')));
      checkLines(mailFor(QString(length, ';')));
      checkLines(mailFor(';' + QString(length, 'x')));
      checkLines(mailFor("x " + QString(length, 'x')));
    }
  }

  void pythonReadsTheEmailBack_data() { addNumbers(); }
  void pythonReadsTheEmailBack() {
    QFETCH(QString, number);
    QFETCH(QString, inSubject);
    QFETCH(QString, inFileName);
    const QJsonObject mail = readByPython(mailFor(number));
    QCOMPARE(mail["defects"].toArray(), QJsonArray());
    QCOMPARE(mail["fields"].toArray(),
             QJsonArray({"X-Unsent", "Date", "Subject", "MIME-Version", "Content-Type"}));
    QCOMPARE(mail["subject"].toString(), "Vardex File " + inSubject);
    QCOMPARE(mail["body"].toString(), "Delivery Number = " + number.toHtmlEscaped());
    QCOMPARE(mail["fileName"].toString(), "Vardex_" + inFileName + ".csv");
    QCOMPARE(mail["attachment"].toString().toLatin1(), kAttachment.toBase64());
  }

  void muttOpensAndSendsTheEmail_data() { addNumbers(); }
  void muttOpensAndSendsTheEmail() {
    QFETCH(QString, number);
    QFETCH(QString, inSubject);
    QFETCH(QString, inFileName);
    const QJsonObject mail = readByPython(sentByMutt(mailFor(number)));
    QCOMPARE(mail["recipients"].toString(), "office@example.org");
    QVERIFY(!mail["fields"].toArray().contains("Bcc"));
    QCOMPARE(mail["subject"].toString(), "Vardex File " + inSubject);
    QCOMPARE(mail["bodyType"].toString(), "text/html");
    // HTML does not distinguish kinds of white space, and mutt reformats it.
    QCOMPARE(mail["body"].toString().simplified(),
             ("Delivery Number = " + number.toHtmlEscaped()).simplified());
    QCOMPARE(mail["attachmentType"].toString(), "application/csv");
    QCOMPARE(mail["fileName"].toString(), "Vardex_" + inFileName + ".csv");
    QCOMPARE(mail["attachment"].toString().toLatin1(), kAttachment.toBase64());
  }

  void anEmptyAttachmentIsKept() {
    MailDraft draft = draftFor("4711");
    draft.attachment.clear();
    const QJsonObject mail = readByPython(mailMessageOf(draft));
    QCOMPARE(mail["fileName"].toString(), "Vardex_4711.csv");
    QCOMPARE(mail["attachment"].toString(), "");
  }

  void aLargeAttachmentIsComplete() {
    MailDraft draft = draftFor("4711");
    draft.attachment = QByteArray(kAttachment).repeated(20'000);
    const QJsonObject mail = readByPython(mailMessageOf(draft));
    QCOMPARE(QByteArray::fromBase64(mail["attachment"].toString().toLatin1()), draft.attachment);
  }
};

CARTONPICK_TEST(MailMessageTest);
#include "MailMessage_test.moc"
