#include "picking/masterViewController.h"

#include "base/Int32.h"
#include "delivery/Delivery.h"
#include "picking/LookupMessages.h"
#include "picking/PickingAlerts.h"
#include "picking/boxTableViewCell.h"
#include "service/DeliveryAnswer.h"
#include "service/ServiceAddress.h"
#include "view/Environment.h"

#include <utility>

namespace {

constexpr int kBoxListTag = 2;
constexpr std::chrono::seconds kLookupTimeout{60};
const QString kGetOrder = QStringLiteral("getorder");

}  // namespace

masterViewController::masterViewController(PickingSession &session, Environment &environment,
                                           QObject *parent)
    : ViewController(QStringLiteral("masterViewController"), environment, parent),
      m_session(session) {
  txtDeliveryNo->setDelegate(this);
  txtBox->setDelegate(this);
  txtBox->setEnabled(false);
  btnSearch->setTitle(QStringLiteral("Search"));
  btnPicking->setTitle(QStringLiteral("Start Picking"));
  btnPicking->setEnabled(false);
  btnReloadItems->setTitle(QStringLiteral("Reload Items"));
  btnClose->setTitle(QStringLiteral("Close"));
  for (Label *label : {lblLookup, lblPickedDelivery}) {
    label->setHidden(true);
  }
  m_header.hide();
  lblLookup->setText(QStringLiteral("Looking up the delivery …"));
  lblBoxesTotalLabel->setText(QStringLiteral("Boxes"));
  lblBoxesUnopenedLabel->setText(QStringLiteral("Unopened"));
  lblBoxesCompletedLabel->setText(QStringLiteral("Completed"));
  lblBoxesIncompleteLabel->setText(QStringLiteral("Incomplete"));
  for (Label *counter : {lblBoxesTotalValue, lblBoxesUnopenedValue, lblBoxesCompletedValue,
                         lblBoxesIncompleteValue}) {
    counter->setText(QStringLiteral("0"));
  }
  tblBoxes->setTag(kBoxListTag);
  tblBoxes->setEnabled(false);
  for (TableView *table : {tblBoxes, tblOrders, tblStores}) {
    table->setDataSource(this);
  }
}

masterViewController::~masterViewController() {
  environment().wakeLock->release();
  if (m_connection != nullptr) {
    environment().busy.end();
  }
}

void masterViewController::viewDidLoad() {
  m_connectionDict.clear();
  txtDeliveryNo->becomeFirstResponder();
  connect(txtDeliveryNo, &TextField::editingChanged, this, &masterViewController::forgetDelivery);
}

void masterViewController::prepareForSegue(Segue &segue) {
  segue.isHeldBack = true;
  environment().alerts.show(closePickingQuestion([this, self = QPointer<QObject>(this), segue] {
    if (self.isNull() || segue.identifier != QStringLiteral("returnFromPickingToStart")) {
      return;
    }
    if (auto *holder = dynamic_cast<ManagedObjectContextHolder *>(segue.destination)) {
      holder->setManagedObjectContext(managedObjectContext());
    }
    segue.destination->dismissViewController();
  }));
}

void masterViewController::dismissKeyboard() {
  txtDeliveryNo->resignFirstResponder();
}

void masterViewController::showMessage(const QString &title, const QString &message) {
  environment().alerts.show({.title = title, .message = message, .delegate = this});
}

void masterViewController::stopWithMessage(const QString &title, const QString &message) {
  activityIndicator->stopAnimating();
  showMessage(title, message);
}

void masterViewController::btnSearchOrderNoTouched() {
  const QString number = txtDeliveryNo->text();
  if (const auto objection = objectionToNumber(number)) {
    showMessage(objection->title, objection->message);
    return;
  }
  forgetDelivery();
  activityIndicator->startAnimating();
  // The overlay prevents the user from starting a picking, whose lists the answer would replace.
  lblLookup->setHidden(false);
  environment().busy.begin(lblLookup->text());
  tblOrders->setEnabled(true);
  tblStores->setEnabled(true);
  dismissKeyboard();
  m_connection = environment().http->start(
      {.url = ServiceAddress(environment().serviceHost).getorderpercarton(number),
       .timeout = kLookupTimeout},
      this, this);
  // While another lookup is registered, this one still runs, but its answer is not imported.
  if (!m_connectionDict.contains(kGetOrder)) {
    m_connectionDict.insert(kGetOrder, m_connection);
    m_webData = QByteArray();
  }
}

void masterViewController::didReceiveResponse(HttpConnection & /*connection*/) {
  m_webData.truncate(0);
}

void masterViewController::didReceiveData(HttpConnection & /*connection*/, const QByteArray &data) {
  m_webData.append(data);
}

void masterViewController::connectionDidFinishLoading(HttpConnection &connection) {
  lblLookup->setHidden(true);
  environment().busy.end();
  const auto answer = connection.isAnswerWhole() ? parseDeliveryAnswer(m_webData) : std::nullopt;
  m_session.setJsonResult(jsonResultOf(answer));
  if (m_connectionDict.value(kGetOrder) != &connection) {
    return;
  }
  m_connectionDict.remove(kGetOrder);
  if (const auto objection = objectionToAnswer(m_webData, answer)) {
    stopWithMessage(objection->title, objection->message);
  } else {
    m_header.show(*answer);
    importDelivery(*answer);
  }
}

void masterViewController::didFailWithError(HttpConnection & /*connection*/,
                                            const QString &description) {
  lblLookup->setHidden(true);
  environment().busy.end();
  // While the entry "getorder" is kept, later lookups are not registered.
  if (environment().rules.looksUpAfterFailure) {
    m_connectionDict.remove(kGetOrder);
  }
  stopWithMessage(QStringLiteral("Could not get result"),
                  QStringLiteral("Loading failed. Please try again."));
  showMessage(QStringLiteral("error message"), description);
}

void masterViewController::forgetDelivery() {
  if (environment().rules.forgetsLastDelivery) {
    btnPicking->setEnabled(false);
    m_header.hide();
  }
}

void masterViewController::importDelivery(const Delivery &delivery) {
  if (!m_session.importDelivery(delivery)) {
    // The lists lack the earlier picks, so a picking would overwrite those in the store.
    btnPicking->setEnabled(false);
    return;
  }
  btnPicking->setEnabled(true);
  btnPicking->setTitleColor(Colour::blue);
  tblBoxes->setEnabled(false);
  activityIndicator->stopAnimating();
}

void masterViewController::btnReloadItemsTouched() {
  m_catalogueReload = std::make_unique<CatalogueReload>(environment(), *managedObjectContext());
  connect(m_catalogueReload.get(), &CatalogueReload::finished, this,
          &masterViewController::itemsReloaded);
  connect(
      m_catalogueReload.get(), &CatalogueReload::notStored, this,
      [this](const QString &reason) { environment().alerts.show(itemsNotStoredMessage(reason)); });
  m_catalogueReload->start();
}

void masterViewController::itemsReloaded(const std::optional<JsonResult> &result) {
  m_session.setJsonResult(result);
  environment().alerts.show(itemsReloadedMessage(result.has_value(), this));
}

void masterViewController::btnPickingTouched() {
  m_scanStarted = !m_scanStarted;
  if (m_scanStarted) {
    startPicking();
    btnPicking->setTitle(QStringLiteral("Stop Picking"));
    btnPicking->setTitleColor(Colour::red);
  } else {
    stopPicking();
    btnPicking->setTitle(QStringLiteral("Start Picking"));
    btnPicking->setTitleColor(Colour::blue);
  }
}

void masterViewController::startPicking() {
  tblOrders->setEnabled(false);
  tblStores->setEnabled(false);
  tblBoxes->setEnabled(true);
  btnSearch->setEnabled(false);
  txtDeliveryNo->setEnabled(false);
  txtBox->setEnabled(true);
  btnClose->setEnabled(false);
  tblBoxes->reloadData();
  updateBoxOverview();
  environment().wakeLock->acquire();
  m_session.start();
  lblPickedDelivery->setText(QStringLiteral("Delivery ") + deliveryNumberOf(m_session.pickList()));
  lblPickedDelivery->setHidden(false);
  txtBox->becomeFirstResponder();
}

void masterViewController::stopPicking() {
  tblOrders->setEnabled(true);
  tblStores->setEnabled(true);
  tblBoxes->setEnabled(false);
  btnSearch->setEnabled(true);
  txtDeliveryNo->setEnabled(true);
  txtBox->setEnabled(false);
  btnClose->setEnabled(true);
  environment().wakeLock->release();
  m_session.stop();
  lblPickedDelivery->setHidden(true);
  txtDeliveryNo->becomeFirstResponder();
}

TextField *masterViewController::scanField() const {
  return m_scanStarted ? txtBox : txtDeliveryNo;
}

bool masterViewController::textFieldShouldReturn(TextField &field) {
  if (&field != txtBox) {
    return true;
  }
  const auto row = m_session.boxNamed(txtBox->text());
  if (!row) {
    showMessage(QStringLiteral("No Box Found"));
    return true;
  }
  tblBoxes->reloadData();
  didSelectRowAtIndexPath(*tblBoxes, *row);
  tblBoxes->selectRow(*row);
  tblBoxes->paintRow(*row);
  return true;
}

void masterViewController::updateBoxOverview() {
  const BoxCounters counters = m_session.boxCounters();
  lblBoxesTotalValue->setText(QString::number(counters.total));
  lblBoxesUnopenedValue->setText(QString::number(counters.unopened));
  lblBoxesIncompleteValue->setText(QString::number(counters.incomplete));
  lblBoxesCompletedValue->setText(QString::number(counters.completed));
}

int masterViewController::numberOfRowsInSection(const TableView &table, int section) {
  return section == 0 && table.tag() == kBoxListTag ? static_cast<int>(m_session.pickList().size())
                                                    : 0;
}

QVariant masterViewController::cellForRowAtIndexPath(const TableView & /*table*/, int row) {
  const PickList &entries = m_session.pickList();
  // An import does not reload the table, which can still have the rows of a longer list.
  const auto index = static_cast<std::size_t>(row);
  return QVariant::fromValue(index < entries.size() ? boxTableViewCell::ofEntry(entries[index], row)
                                                    : boxTableViewCell());
}

void masterViewController::didSelectRowAtIndexPath(TableView &table, int row) {
  if (table.tag() == kBoxListTag) {
    m_session.openBox(row);
  }
}

void masterViewController::QuantityChangedOnDetailView() {
  tblBoxes->reloadData();
  tblBoxes->paintRow(m_session.curBoxIndex());
  updateBoxOverview();
}

void masterViewController::QuantityChangedOnDetailViewDelegateForPick(
    std::shared_ptr<PickList> list, const QString & /*box*/) {
  m_session.setArrayPick(std::move(list));
  updatePickingStatus();
}

void masterViewController::QtyChangedForBarcode(const QString &code, const QString & /*box*/,
                                                std::int32_t currentQty, std::int32_t addQty) {
  m_session.bookLoosePick(code, wrappingAdd(currentQty, addQty));
  updatePickingStatus();
}
