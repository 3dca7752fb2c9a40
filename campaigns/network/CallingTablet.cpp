#include "network/CallingTablet.h"

#include "network/ProcessFigures.h"
#include "picking/detailViewController.h"
#include "picking/masterViewController.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QQuickItem>
#include <QTest>
#include <QTimer>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <chrono>
#include <memory>

namespace {

using namespace std::chrono_literals;

const QList<TestLine> kDelivery{{"C1", "A", 5}, {"C1", "B", 2}, {"C2", "A", 7}};

}  // namespace

QString nameOf(Call call) {
  switch (call) {
    case Call::Lookup:
      return QStringLiteral("getorderpercarton");
    case Call::Catalogue:
      return QStringLiteral("getitems");
    case Call::Send:
      return QStringLiteral("sendpick");
  }
  return {};
}

void waitUntil(const std::function<bool()> &condition, const char *what) {
  QDeadlineTimer deadline(1min);
  // The condition can become true without an event.
  QTimer tick;
  tick.start(2ms);
  while (!condition() && !deadline.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  QVERIFY2(!deadline.hasExpired(), what);
}

CallingTablet::CallingTablet() {
  auto client = std::make_unique<ShortTimeoutHttpClient>();
  m_client = client.get();
  environment.http = std::move(client);
}

QByteArray CallingTablet::goodBody(Call call) {
  switch (call) {
    case Call::Lookup:
      return R"([{"cusname":"Next","doc":"4711","ordernum":"A1","carton":"N","item":"N","qty":1}])";
    case Call::Catalogue:
      return R"([{"barcode":"nb","item":"N","descr":"New"},{"item":"O"}])";
    case Call::Send:
      return R"("0")";
  }
  return {};
}

QStringList CallingTablet::storedBefore() {
  return {"4711 C1 A 3 0", "A bA HEART", "B bB LAMP"};
}

QStringList CallingTablet::deliveryBefore() {
  return {"Customer: Corner Shop",
          "Brand: Hearth",
          "Date Created: 25/03/2026",
          "Date Shipped: 01/04/2026",
          "C1 A 5 3",
          "C1 B 2 0",
          "C2 A 7 0",
          "A 12 3",
          "B 2 0"};
}

void CallingTablet::makeReady(Call call) {
  prepareStore();
  const auto *master = controller<masterViewController>("masterViewController");
  // After a lookup without an answer, the pane ignores further lookups.
  if (master != nullptr && !master->connectionDict().isEmpty()) {
    leavePicking();
  }
  if (!shows("btnPicking")) {
    enterPicking();
  }
  if (text("lblCustomerName") != u"Customer: Corner Shop") {
    letPickingRun(false);
    lookUp(kDelivery);
  }
  letPickingRun(call == Call::Send);
}

/// Fills the store with one unsent pick and two articles.
void CallingTablet::prepareStore() const {
  if (stored() == storedBefore()) {
    return;
  }
  SQLite::Database store(storePath().toStdString(), SQLite::OPEN_READWRITE);
  SQLite::Transaction transaction(store);
  store.exec("DELETE FROM Picking; DELETE FROM Items");
  store.exec(
      "INSERT INTO Picking (barcode, box, datepicked, descr, doc, item, ordernum, orderqty, "
      "pickqty, sent) VALUES ('bA', 'C1', 1772431925000, 'HEART', '4711', 'A', 'A1', 5, 3, 0)");
  store.exec("INSERT INTO Items (barcode, item, descr) VALUES ('bA', 'A', 'HEART')");
  store.exec("INSERT INTO Items (barcode, item, descr) VALUES ('bB', 'B', 'LAMP')");
  transaction.commit();
  QCOMPARE(stored(), storedBefore());
}

void CallingTablet::letPickingRun(bool runs) {
  if ((text("btnPicking") == u"Stop Picking") != runs) {
    touch("btnPicking");
  }
}

void CallingTablet::make(Call call) {
  switch (call) {
    case Call::Lookup:
      touch("btnSearch");
      break;
    case Call::Catalogue:
      touch("btnReloadItems");
      break;
    case Call::Send:
      touch("btnOptions");
      touch("tableViewRow2");
      touch("alertButton1");
      waitUntil([this] { return alerts().isEmpty() || environment.busy.isActive(); }, "no send");
      break;
  }
}

void CallingTablet::waitForEnd() {
  waitUntil([this] { return !environment.busy.isActive() && !m_client->isBusy(); },
            "the call does not end");
  waitUntil([] { return networkThreads() == 0; }, "something of the call is left");
}

void CallingTablet::answerAlerts() {
  while (environment.alerts.count() > 0) {
    const int before = environment.alerts.count();
    touch("alertButton0");
    waitUntil([&] { return environment.alerts.count() < before; }, "an alert stays");
  }
  waitUntil([this] { return alerts().isEmpty(); }, "an alert stays");
}

void CallingTablet::leavePicking() {
  letPickingRun(false);
  touch("btnClose");
  answerAlerts();
  waitUntil([this] { return shows("btnSegueToSplitView"); }, "the picking does not close");
}

void CallingTablet::touchField() {
  const QString field = text("btnPicking") == u"Stop Picking" ? "txtBox" : "txtDeliveryNo";
  touch(field);
  waitUntil([&] { return fieldsWithKeyboard() == QStringList(field); }, "the field is not taken");
}

QStringList CallingTablet::stored() const {
  QStringList rows;
  SQLite::Database store(storePath().toStdString(), SQLite::OPEN_READONLY);
  for (const char *query :
       {"SELECT doc || ' ' || box || ' ' || item || ' ' || pickqty || ' ' || sent FROM Picking",
        "SELECT item || ' ' || ifnull(barcode, '-') || ' ' || ifnull(descr, '-') FROM Items "
        "ORDER BY rowid"}) {
    SQLite::Statement select(store, query);
    while (select.executeStep()) {
      rows.append(QString::fromStdString(select.getColumn(0)));
    }
  }
  return rows;
}

QStringList CallingTablet::delivery() const {
  QStringList lines = texts({"lblCustomerName", "lblBrand", "lblCreationDate", "lblShipmentDate"});
  const auto *detail = controller<detailViewController>("detailViewController");
  for (const PickEntry &box : *detail->arrayPick()) {
    for (const BoxLine &line : boxitemsOf(box)) {
      lines.append(
          QStringList{boxOf(box), line.item, line.orderqty.text(), line.pickqty.text()}.join(u' '));
    }
  }
  for (const BoxLine &line : *detail->arrayItems()) {
    lines.append(QStringList{line.item, line.orderqty.text(), line.pickqty.text()}.join(u' '));
  }
  return lines;
}

template <class Controller>
Controller *CallingTablet::controller(const char *name) const {
  const QQuickItem *screen = item(name);
  return screen == nullptr
             ? nullptr
             : qobject_cast<Controller *>(screen->property("controller").value<QObject *>());
}
