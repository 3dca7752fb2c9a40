#include "disk/PickingRun.h"

#include "app/splitViewController.h"
#include "app/startViewController.h"
#include "picking/PickingActions.h"
#include "picking/changeQuantityViewController.h"
#include "picking/detailViewController.h"
#include "picking/masterViewController.h"
#include "store/PersistentStoreCoordinator.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <SQLiteCpp/Database.h>
#include <unistd.h>

namespace {

constexpr int kPatienceMilliseconds = 60'000;
constexpr int kArticlesPerCatalogue = 150;

const QString kDelivery = QStringLiteral("4711");
const QString kFirstBox = QStringLiteral("C1");
const QString kSecondBox = QStringLiteral("C2");

/// Returns catalogue `number`. Each is larger than the one before.
QByteArray catalogueJson(int number) {
  QJsonArray articles;
  for (int i = 0; i < number * kArticlesPerCatalogue; ++i) {
    const QString item = QStringLiteral("G%1-%2").arg(number).arg(i);
    articles.append(QJsonObject{{QStringLiteral("item"), item},
                                {QStringLiteral("barcode"), u'b' + item},
                                {QStringLiteral("descr"), QStringLiteral("Article ") + item}});
  }
  return QJsonDocument(articles).toJson(QJsonDocument::Compact);
}

QByteArray theDelivery() {
  return deliveryJson({{kFirstBox, QStringLiteral("A"), 5},
                       {kFirstBox, QStringLiteral("B"), 3},
                       {kFirstBox, QStringLiteral("C"), 2},
                       {kFirstBox, QStringLiteral("D"), 9},
                       {kSecondBox, QStringLiteral("A"), 4},
                       {kSecondBox, QStringLiteral("E"), 1},
                       {kSecondBox, QStringLiteral("F"), 7}});
}

}  // namespace

PickingRun::PickingRun(const QString &home) : m_delegate(environment) {
  environment.folders = {home};
  if (!environment.folders.create()) {
    qFatal("The folder %s cannot be created.", qUtf8Printable(home));
  }
  environment.serviceHost = m_service.host();
  m_service.answerWith(
      [this](const LoopbackService::Request &request) { return answerTo(request); });
  m_delegate.didFinishLaunchingWithOptions();
  start().performSegueWithIdentifier(QStringLiteral("segueToSplitView"));
}

void PickingRun::setPagesBetweenCheckpoints(int pages) {
  const auto store = m_delegate.persistentStoreCoordinator();
  if (store->hasStore()) {
    store->database()->exec("PRAGMA wal_autocheckpoint = " + std::to_string(pages));
  }
}

void PickingRun::forgetToSynchronise() {
  m_delegate.persistentStoreCoordinator()->database()->exec("PRAGMA synchronous = OFF");
}

void PickingRun::work() {
  loadCatalogue();
  lookUp();
  beginPicking();
  pick(kFirstBox, 0, QStringLiteral("5"));
  pick(kFirstBox, 1, QStringLiteral("3"));
  pick(kFirstBox, 2, QStringLiteral("2"));
  pick(kSecondBox, 0, QStringLiteral("4"));
  pick(kSecondBox, 1, QStringLiteral("1"));
  pick(kFirstBox, 0, QStringLiteral("-2"));
  pick(kSecondBox, 0, QStringLiteral("3"));
  endPicking();
  lookUp();
  beginPicking();
  pick(kFirstBox, 3, QStringLiteral("6"));
  pick(kFirstBox, 1, QStringLiteral("1"));
  loadCatalogue();
  exportByMail();
  sendPicking();
  pick(kFirstBox, 2, QStringLiteral("1"));
  pick(kSecondBox, 2, QStringLiteral("2"));
}

void PickingRun::say(const QString &line) {
  // Written without buffering, because the process can end at any time.
  const QByteArray bytes = line.toUtf8() + '\n';
  if (::write(STDOUT_FILENO, bytes.data(), static_cast<std::size_t>(bytes.size())) !=
      bytes.size()) {
    qFatal("The local service cannot listen.");
  }
}

LoopbackService::Answer PickingRun::answerTo(const LoopbackService::Request &request) const {
  if (request.method == "POST") {
    return LoopbackService::Answer::http(R"("0")");
  }
  return LoopbackService::Answer::http(
      request.target.contains("getitems") ? catalogueJson(m_catalogue) : theDelivery());
}

startViewController &PickingRun::start() const {
  return *qobject_cast<startViewController *>(m_delegate.window()->rootViewController());
}

masterViewController &PickingRun::master() const {
  const auto *split = qobject_cast<splitViewController *>(start().presentedViewController());
  return *qobject_cast<masterViewController *>(split->master());
}

detailViewController &PickingRun::detail() const {
  const auto *split = qobject_cast<splitViewController *>(start().presentedViewController());
  return *qobject_cast<detailViewController *>(split->detail());
}

changeQuantityViewController *PickingRun::keypad() const {
  return qobject_cast<changeQuantityViewController *>(detail().presentedViewController());
}

void PickingRun::waitUntilIdle() {
  QEventLoop wait;
  QObject::connect(&environment.busy, &BusyState::changed, &wait, [&] {
    if (!environment.busy.isActive()) {
      wait.quit();
    }
  });
  QTimer::singleShot(kPatienceMilliseconds, &wait, [&] {
    qFatal("It takes too long: %s", qUtf8Printable(environment.busy.title()));
  });
  if (environment.busy.isActive()) {
    wait.exec();
  }
  // Alerts are shown after the event that ends the wait.
  QCoreApplication::processEvents();
}

QString PickingRun::answerAlerts() {
  QString title;
  while (environment.alerts.count() > 0) {
    title = topAlert().title;
    answerTopAlert(0);
  }
  return title;
}

void PickingRun::loadCatalogue() {
  ++m_catalogue;
  say(QStringLiteral("try catalogue %1").arg(m_catalogue));
  master().btnReloadItemsTouched();
  waitUntilIdle();
  say(answerAlerts() == QStringLiteral("Saved") ? QStringLiteral("done")
                                                : QStringLiteral("not done"));
}

void PickingRun::lookUp() {
  master().txtDeliveryNo->edit(kDelivery);
  master().btnSearchOrderNoTouched();
  waitUntilIdle();
  answerAlerts();
}

void PickingRun::beginPicking() {
  if (master().btnPicking->isEnabled()) {
    master().btnPickingTouched();
  }
}

void PickingRun::endPicking() {
  if (!master().btnClose->isEnabled()) {
    master().btnPickingTouched();
  }
}

void PickingRun::pick(const QString &box, int row, const QString &quantity) {
  if (!master().txtBox->isEnabled()) {
    return;
  }
  master().txtBox->edit(box);
  master().txtBox->pressReturn();
  detail().tblItems->touchRow(row);
  auto *keys = keypad();
  if (keys == nullptr) {
    qFatal("The keypad does not open.");
  }
  keys->txtNewQty->edit(quantity);
  say(QStringLiteral("screen %1 %2 %3")
          .arg(box, keys->lblItemCode->text(), keys->lblCurrentQty->text()));
  say(QStringLiteral("try quantity %1 %2 %3")
          .arg(box, keys->lblItemCode->text(), keys->lblTotalQty->text()));
  detail().lblSaved->setText(QString());
  keys->btnOKTouched();
  say(detail().lblSaved->text().isEmpty() ? QStringLiteral("not done")
                                          : QStringLiteral("done ") + detail().lblSaved->text());
  QCoreApplication::processEvents();
}

void PickingRun::exportByMail() {
  detail().selectedAction(kSendEmail);
  answerAlerts();
}

void PickingRun::sendPicking() {
  detail().selectedAction(kCompleteAndSend);
  say(QStringLiteral("try send"));
  constexpr int kYes = 1;
  answerTopAlert(kYes);
  waitUntilIdle();
  say(answerAlerts() == QStringLiteral("Picking was sent") ? QStringLiteral("done")
                                                           : QStringLiteral("not done"));
}
