#include "sending/PickingExport.h"

#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <SQLiteCpp/Database.h>
#include <limits>

namespace {

constexpr auto kCannotSend = "Device is unable to send email in its current state.";

/// 2026-03-02 10:12:05 in Athens.
const QDateTime kPicked({2026, 3, 2}, {8, 12, 5}, QTimeZone::utc());

Picking pickOf(const QString &item, const QDateTime &datepicked = kPicked) {
  return {.barcode = "b" + item,
          .box = "C1",
          .datepicked = datepicked,
          .descr = "Lamp",
          .doc = "4711",
          .item = item,
          .ordernum = "A1",
          .orderqty = 6,
          .pickqty = 4};
}

QByteArray contentOf(const QString &path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A program that is picking delivery 4711, with `picks` in its store.
class ExportProgram : public TestProgram {
 public:
  explicit ExportProgram(const std::vector<Picking> &picks = {}) {
    enterPicking();
    startPicking({{"C1", "A", 6}});
    for (const Picking &pick : picks) {
      context().insert(pick);
    }
    if (context().save()) {
      qFatal("The picks cannot be stored.");
    }
  }

  void sendEmail() { detail().selectedAction("Send Email"); }

  [[nodiscard]] QString path() const {
    return environment.folders.documents() + "/VardexExport.csv";
  }
  [[nodiscard]] QByteArray file() const { return contentOf(path()); }
};

}  // namespace

class PickingExportTest : public QObject {
  Q_OBJECT

 private slots:
  void aPickIsOneLineEndingInACarriageReturn() {
    ExportProgram program({pickOf("A")});
    program.sendEmail();
    QCOMPARE(program.file(), "bA;C1;2026-03-02 10:12:05;Lamp;4711;A;A1;6;4;0\r");
  }

  void picksAreInTheOrderOfTheStore() {
    ExportProgram program({pickOf("B"), pickOf("A")});
    program.sendEmail();
    QCOMPARE(program.file(),
             "bB;C1;2026-03-02 10:12:05;Lamp;4711;B;A1;6;4;0\r"
             "bA;C1;2026-03-02 10:12:05;Lamp;4711;A;A1;6;4;0\r");
  }

  void picksMadeByTheUserAreExported() {
    ExportProgram program;
    program.clock->set(kPicked);
    program.master().tblBoxes->touchRow(0);
    program.enterQuantity(0, "2");
    program.sendEmail();
    QCOMPARE(program.file(), "bA;C1;2026-03-02 10:12:05;Description of A;4711;A;A1;6;2;0\r");
  }

  void onlyUnsentPicksOfThisDeliveryAreExported() {
    Picking sent = pickOf("A");
    sent.sent = 1;
    Picking other = pickOf("B");
    other.doc = "4712";
    ExportProgram program({sent, other, pickOf("C")});
    program.sendEmail();
    QCOMPARE(program.file(), "bC;C1;2026-03-02 10:12:05;Lamp;4711;C;A1;6;4;0\r");
  }

  void everyLineUsesTheUtcOffsetAtTheTimeOfTheExport() {
    // In Athens, the clocks go forward on March 29th.
    const QDateTime winterEvening({2026, 3, 28}, {21, 30}, QTimeZone::utc());
    const QDateTime summerEvening({2026, 3, 29}, {20, 30}, QTimeZone::utc());
    const std::vector<Picking> picks{pickOf("A", winterEvening), pickOf("B", summerEvening)};
    ExportProgram program(picks);
    program.clock->set(winterEvening);
    program.sendEmail();
    QCOMPARE(program.file(),
             "bA;C1;2026-03-28 23:30:00;Lamp;4711;A;A1;6;4;0\r"
             "bB;C1;2026-03-29 22:30:00;Lamp;4711;B;A1;6;4;0\r");
    program.clock->set(summerEvening);
    program.sendEmail();
    QCOMPARE(program.file(),
             "bA;C1;2026-03-29 00:30:00;Lamp;4711;A;A1;6;4;0\r"
             "bB;C1;2026-03-29 23:30:00;Lamp;4711;B;A1;6;4;0\r");
  }

  void aDeviceInAnotherZoneExportsItsLocalTimes() {
    ExportProgram program({pickOf("A")});
    program.clock->setZone(QTimeZone("Asia/Kathmandu"));
    program.sendEmail();
    QCOMPARE(program.file(), "bA;C1;2026-03-02 13:57:05;Lamp;4711;A;A1;6;4;0\r");
  }

  void missingTextsAreNullAndMissingQuantitiesAreZero() {
    ExportProgram program;
    SQLite::Database(program.storePath().toStdString(), SQLite::OPEN_READWRITE)
        .exec("INSERT INTO Picking (doc, sent) VALUES ('4711', 0)");
    program.sendEmail();
    QCOMPARE(program.file(), "(null);(null);(null);(null);4711;(null);(null);0;0;0\r");
  }

  void emptyTextsAreExportedAsEmptyFields() {
    Picking pick = pickOf("A");
    pick.barcode = "";
    pick.box = "";
    pick.descr = "";
    pick.ordernum = "";
    ExportProgram program({pick});
    program.sendEmail();
    QCOMPARE(program.file(), ";;2026-03-02 10:12:05;;4711;A;;6;4;0\r");
  }

  void separatorsInATextAreNotEscaped() {
    Picking pick = pickOf("A");
    pick.descr = "Lamp; \"red\"\r\n%1 %@";
    ExportProgram program({pick});
    program.sendEmail();
    QCOMPARE(program.file(), "bA;C1;2026-03-02 10:12:05;Lamp; \"red\"\r\n%1 %@;4711;A;A1;6;4;0\r");
  }

  void theFileIsUtf8WithoutAByteOrderMark() {
    Picking pick = pickOf("A");
    pick.descr = "Λάμπα 📦";
    ExportProgram program({pick});
    program.sendEmail();
    QCOMPARE(program.file(), "bA;C1;2026-03-02 10:12:05;Λάμπα 📦;4711;A;A1;6;4;0\r");
  }

  void quantitiesAre32BitIntegers() {
    Picking pick = pickOf("A");
    pick.orderqty = std::numeric_limits<std::int32_t>::max();
    pick.pickqty = std::numeric_limits<std::int32_t>::min();
    ExportProgram program({pick});
    program.sendEmail();
    QCOMPARE(program.file(), "bA;C1;2026-03-02 10:12:05;Lamp;4711;A;A1;2147483647;-2147483648;0\r");
  }

  void storedFractionalQuantitiesAreTruncated() {
    ExportProgram program({pickOf("A")});
    SQLite::Database(program.storePath().toStdString(), SQLite::OPEN_READWRITE)
        .exec("UPDATE Picking SET orderqty = 6.9, pickqty = -2.9");
    program.sendEmail();
    QCOMPARE(program.file(), "bA;C1;2026-03-02 10:12:05;Lamp;4711;A;A1;6;-2;0\r");
  }

  void theEmailHasTheFileAttached() {
    ExportProgram program({pickOf("A"), pickOf("B")});
    program.sendEmail();
    QCOMPARE(program.mail->drafts().size(), 1U);
    const MailDraft &draft = program.mail->drafts().front();
    QCOMPARE(draft.subject, "Vardex File 4711");
    QCOMPARE(draft.htmlBody, "Delivery Number = 4711");
    QCOMPARE(draft.attachment, program.file());
    QCOMPARE(draft.attachmentMimeType, "application/csv");
    QCOMPARE(draft.attachmentFileName, "Vardex_4711.csv");
    QVERIFY(program.alertTitles().isEmpty());
  }

  void specialCharactersInTheNumberAppearInTheEmail() {
    const MailDraft draft = exportMail("<b>47&11</b> %1 \"é\"", "", QDateTime());
    QCOMPARE(draft.subject, "Vardex File <b>47&11</b> %1 \"é\"");
    QCOMPARE(draft.htmlBody, "Delivery Number = &lt;b&gt;47&amp;11&lt;/b&gt; %1 &quot;é&quot;");
    QCOMPARE(draft.attachmentFileName, "Vardex_<b>47&11</b> %1 \"é\".csv");
  }

  void theExportIsLogged() {
    ExportProgram program({pickOf("A")});
    QTest::ignoreMessage(QtInfoMsg,
                         "string to write:bA;C1;2026-03-02 10:12:05;Lamp;4711;A;A1;6;4;0\r");
    program.sendEmail();
  }

  void anAlertSaysThatThereIsNothingToExport() {
    ExportProgram program;
    program.sendEmail();
    const AlertView alert = program.topAlert();
    QCOMPARE(alert.title, "No picking to send via email");
    QCOMPARE(alert.message, "");
    QCOMPARE(alert.buttons, QStringList("OK"));
    QCOMPARE(alert.tag, 0);
    QCOMPARE(alert.delegate.get(), static_cast<AlertViewDelegate *>(&program.detail()));
    QVERIFY(!QFile::exists(program.path()));
    QVERIFY(program.mail->drafts().empty());
    program.answerTopAlert(0);
    QVERIFY(program.alertTitles().isEmpty());
  }

  void sentPicksAreNotExportedAgain() {
    ExportProgram program({pickOf("A")});
    program.sendEmail();
    const QByteArray file = program.file();
    program.context().setSent(program.context().pickings("4711")->front(), 1);
    QVERIFY(!program.context().save());
    program.sendEmail();
    QCOMPARE(program.alertTitles(), QStringList("No picking to send via email"));
    QCOMPARE(program.file(), file);
    QCOMPARE(program.mail->drafts().size(), 1U);
  }

  void theExportDoesNotChangeTheStore() {
    ExportProgram program({pickOf("A")});
    program.sendEmail();
    QVERIFY(!program.context().hasChanges());
    const auto rows = program.context().unsentPickings("4711");
    QCOMPARE(rows->size(), 1U);
    QCOMPARE(rows->front().pickqty, 4);
    QCOMPARE(rows->front().datepicked, kPicked);
  }

  void exportingTwiceGivesTheSameFile() {
    ExportProgram program({pickOf("A"), pickOf("B")});
    program.sendEmail();
    const QByteArray first = program.file();
    program.sendEmail();
    QCOMPARE(program.file(), first);
    QCOMPARE(program.mail->drafts().size(), 2U);
  }

  void anExistingFileIsReplacedAtomically() {
    ExportProgram program({pickOf("A")});
    QFile older(program.path());
    QVERIFY(older.open(QIODevice::ReadWrite));
    older.write(QByteArray(10'000, 'x'));
    older.close();
    older.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                         QFile::ReadOther);
    QVERIFY(older.open(QIODevice::ReadOnly));
    program.sendEmail();
    QCOMPARE(program.file(), "bA;C1;2026-03-02 10:12:05;Lamp;4711;A;A1;6;4;0\r");
    // A reader that has opened the old file still reads all of it.
    QCOMPARE(older.readAll(), QByteArray(10'000, 'x'));
    QVERIFY(!(QFile::permissions(program.path()) & (QFile::ReadGroup | QFile::ReadOther)));
    const QDir documents(program.environment.folders.documents());
    QCOMPARE(documents.entryList({"VardexExport*"}, QDir::Files).size(), 1);
  }

  void theFileIsAccessibleToItsOwnerOnly() {
    ExportProgram program({pickOf("A")});
    program.sendEmail();
    constexpr auto kUser = QFile::ReadUser | QFile::WriteUser;
    QCOMPARE(QFile::permissions(program.path()) & ~kUser, QFile::ReadOwner | QFile::WriteOwner);
  }

  void theEmailIsComposedEvenIfTheFileCannotBeWritten() {
    ExportProgram program({pickOf("A")});
    QVERIFY(QDir().mkpath(program.path() + "/in the way"));
    const QString warning = "^Export " + program.path() + " not written: it is ";
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(warning));
    program.sendEmail();
    QCOMPARE(program.mail->drafts().size(), 1U);
    QCOMPARE(program.mail->drafts().front().attachment,
             "bA;C1;2026-03-02 10:12:05;Lamp;4711;A;A1;6;4;0\r");
    QVERIFY(program.alertTitles().isEmpty());
  }

  void withoutAMailProgramTheFileIsKeptAndAWarningIsLogged() {
    ExportProgram program({pickOf("A")});
    program.mail->setCanSendMail(false);
    QTest::ignoreMessage(QtWarningMsg, kCannotSend);
    program.sendEmail();
    QVERIFY(program.mail->drafts().empty());
    QVERIFY(!program.file().isEmpty());
    QVERIFY(program.alertTitles().isEmpty());
  }

  void ifTheEmailIsRejectedTheFileIsKeptAndAWarningIsLogged() {
    ExportProgram program({pickOf("A")});
    program.mail->setAcceptsMail(false);
    QTest::ignoreMessage(QtWarningMsg, kCannotSend);
    program.sendEmail();
    QCOMPARE(program.mail->drafts().size(), 1U);
    QVERIFY(!program.file().isEmpty());
    QVERIFY(program.alertTitles().isEmpty());
  }
};

CARTONPICK_TEST(PickingExportTest);
#include "PickingExport_test.moc"
