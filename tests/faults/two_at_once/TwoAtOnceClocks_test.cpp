// The clock is set back, or the tablet carried into another zone, while a delivery is picked: what
// was picked when stays as it was noted, and history, mail and report show it by their rules.

#include "history/HistoryViewController.h"
#include "history/PickHistoryCell.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

QDateTime utc(int month, int day, int hour, int minute = 0) {
  return QDateTime({2026, month, day}, {hour, minute}, QTimeZone::utc());
}

/// A program that picks delivery after delivery, each of two lines, while its clock runs oddly.
class OddClockRun : public TestProgram {
 public:
  OddClockRun() { enterPicking(); }

  void pick(const QString &doc) {
    if (master().btnPicking->title() == "Stop Picking") {
      master().btnPickingTouched();
    }
    startPicking({{"C1", "A", 6, {}, doc}, {"C1", "B", 6, {}, doc}});
    master().tblBoxes->touchRow(0);
  }
  void enterAt(const QDateTime &time, int row) {
    clock->set(time);
    enterQuantity(row, "2");
  }

  /// "doc start end" for each row of the history.
  QStringList history() {
    HistoryViewController history(environment);
    history.setManagedObjectContext(&context());
    history.loadViewIfNeeded();
    QStringList rows;
    for (int row = 0; row < history.tblHistoryOverview->rowCount(); ++row) {
      const auto cell = cellAt<PickHistoryCell>(*history.tblHistoryOverview, row);
      rows << cell.deliveryNo.text + ' ' + cell.dateCreated.text + ' ' + cell.dateClosed.text;
    }
    return rows;
  }

  /// The pick times in the report to the service.
  QStringList sentTimes() {
    service.answerWith("\"0\"");
    detail().selectedAction("Complete and Send");
    answerTopAlert(1);
    if (!QTest::qWaitFor([&] { return topAlert().title == "Picking was sent"; })) {
      return {};
    }
    QStringList times;
    for (const QJsonValue line : QJsonDocument::fromJson(service.requests().last().body).array()) {
      times << line["datepicked"].toString();
    }
    return times;
  }

  /// The pick times in the mailed export.
  QStringList mailedTimes() {
    detail().selectedAction("Send Email");
    QStringList times;
    for (const QByteArray &line : mail->drafts().back().attachment.split('\r')) {
      times << QString::fromUtf8(line).section(';', 2, 2);
    }
    times.removeLast();
    return times;
  }
};

}  // namespace

class TwoAtOnceClocksTest : public QObject {
  Q_OBJECT

 private slots:
  void aClockThatIsSetBackMakesNoTimeEndBeforeItBegins() {
    OddClockRun run;
    run.pick("4711");
    run.enterAt(utc(3, 2, 10), 0);
    run.enterAt(utc(3, 2, 9), 1);
    QCOMPARE(run.history(), QStringList("4711 02/03/2026 11:00 02/03/2026 12:00"));
    QCOMPARE(run.mailedTimes(), QStringList({"2026-03-02 12:00:00", "2026-03-02 11:00:00"}));
    QCOMPARE(run.sentTimes(), QStringList({"2026-03-02 12:00:00", "2026-03-02 11:00:00"}));
  }

  void aCorrectionAfterTheClockWasSetKeepsTheFirstTime() {
    OddClockRun run;
    run.pick("4711");
    run.enterAt(utc(3, 2, 10), 0);
    run.enterAt(utc(3, 1, 10), 0);
    run.enterAt(utc(4, 1, 10), 0);
    QCOMPARE(run.history(), QStringList("4711 02/03/2026 12:00 02/03/2026 12:00"));
    const auto rows = run.context().pickings("4711");
    QCOMPARE(rows->size(), 1U);
    QCOMPARE(rows->front().pickqty, 6);
    QCOMPARE(rows->front().datepicked, utc(3, 2, 10));
  }

  void theHistoryIsInTheOrderOfTheClockWhateverWasPickedFirst() {
    OddClockRun run;
    run.pick("4711");
    run.enterAt(utc(3, 2, 10), 0);
    run.pick("4712");
    run.enterAt(utc(3, 2, 9), 0);
    QCOMPARE(run.history(), QStringList({"4712 02/03/2026 11:00 02/03/2026 11:00",
                                         "4711 02/03/2026 12:00 02/03/2026 12:00"}));
  }

  void aZoneThatChangesMovesWhatIsShownAndNotWhatIsKept() {
    OddClockRun run;
    run.pick("4711");
    run.enterAt(utc(3, 2, 10), 0);
    run.clock->setZone(QTimeZone("America/New_York"));
    run.enterAt(utc(3, 2, 11), 1);
    QCOMPARE(run.history(), QStringList("4711 02/03/2026 05:00 02/03/2026 06:00"));
    QCOMPARE(run.mailedTimes(), QStringList({"2026-03-02 05:00:00", "2026-03-02 06:00:00"}));
    QCOMPARE(run.sentTimes(), QStringList({"2026-03-02 05:00:00", "2026-03-02 06:00:00"}));
    run.clock->setZone(QTimeZone("Asia/Tokyo"));
    QCOMPARE(run.history(), QStringList("4711 02/03/2026 19:00 02/03/2026 20:00"));
    QCOMPARE(run.context().pickings("4711")->front().datepicked, utc(3, 2, 10));
  }

  void theHourThatComesTwiceKeepsItsOrder() {
    OddClockRun run;
    run.clock->setZone(QTimeZone("Europe/Athens"));
    // 03:40 in summer time, then 03:20 in winter time.
    run.pick("4711");
    run.enterAt(utc(10, 25, 0, 40), 0);
    run.pick("4712");
    run.enterAt(utc(10, 25, 1, 20), 0);
    QCOMPARE(run.history(), QStringList({"4711 25/10/2026 03:40 25/10/2026 03:40",
                                         "4712 25/10/2026 03:20 25/10/2026 03:20"}));
    QCOMPARE(run.sentTimes(), QStringList("2026-10-25 03:20:00"));
  }

  void theReportHasTheZonesTimesAndTheMailThoseOfTodaysOffset() {
    OddClockRun run;
    run.pick("4711");
    run.enterAt(utc(3, 28, 22), 0);
    run.enterAt(utc(3, 29, 10), 1);
    QCOMPARE(run.mailedTimes(), QStringList({"2026-03-29 01:00:00", "2026-03-29 13:00:00"}));
    QCOMPARE(run.sentTimes(), QStringList({"2026-03-29 00:00:00", "2026-03-29 13:00:00"}));
  }
};

CARTONPICK_TEST(TwoAtOnceClocksTest);
#include "TwoAtOnceClocks_test.moc"
