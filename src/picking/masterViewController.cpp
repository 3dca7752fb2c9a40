#include "picking/masterViewController.h"

#include "base/Int32.h"
#include "base/Utf8.h"
#include "delivery/BoxState.h"
#include "delivery/DeliveryImport.h"
#include "picking/boxTableViewCell.h"
#include "picking/detailViewController.h"
#include "service/ServiceAddress.h"
#include "store/ManagedObjectContext.h"
#include "view/Environment.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int kBoxListTag = 2;
constexpr std::chrono::seconds kLookupTimeout{60};
const QString kGetOrder = QStringLiteral("getorder");
const QString kAlreadySent = QStringLiteral("This picking has already been sent to the server");

bool isBlank(QChar c) {
  return c == u'\t' || c.category() == QChar::Separator_Space;
}

QStringView trimmedOfBlanks(QStringView text) {
  while (!text.isEmpty() && isBlank(text.front())) {
    text = text.sliced(1);
  }
  while (!text.isEmpty() && isBlank(text.back())) {
    text.chop(1);
  }
  return text;
}

bool saysAlreadySent(const QByteArray &body) {
  // Of a body that does not, however large it is, no text is made.
  return body.contains(kAlreadySent.toUtf8()) && utf8Text(body);
}

}  // namespace

masterViewController::masterViewController(Environment &environment, QObject *parent)
    : ViewController(QStringLiteral("masterViewController"), environment, parent) {
  txtDeliveryNo->setDelegate(this);
  txtBox->setDelegate(this);
  txtBox->setEnabled(false);
  btnSearch->setTitle(QStringLiteral("Search"));
  btnPicking->setTitle(QStringLiteral("Start Picking"));
  btnPicking->setEnabled(false);
  btnReloadItems->setTitle(QStringLiteral("Reload Items"));
  btnClose->setTitle(QStringLiteral("Close"));
  for (Label *header : {lblCustomerName, lblBrand, lblCreationDate, lblShipmentDate}) {
    header->setHidden(true);
  }
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
  const ViewController *split = parentViewController()->parentViewController();
  m_dvc = qobject_cast<detailViewController *>(split->childViewControllers().at(1));
}

void masterViewController::prepareForSegue(Segue &segue) {
  segue.isHeldBack = true;
  environment().alerts.show(
      {.title = QStringLiteral("Close Picking"),
       .message = QStringLiteral("Are you sure you want to leave picking?"),
       .buttons = {QStringLiteral("OK"), QStringLiteral("Cancel")},
       .cancelButtonIndex = 1,
       .action = [this, self = QPointer<QObject>(this), segue](int buttonIndex) {
         const bool isConfirmed = buttonIndex == 0;
         if (self.isNull() || !isConfirmed ||
             segue.identifier != QStringLiteral("returnFromPickingToStart")) {
           return;
         }
         if (auto *holder = dynamic_cast<ManagedObjectContextHolder *>(segue.destination)) {
           holder->setManagedObjectContext(managedObjectContext());
         }
         segue.destination->dismissViewController();
       }});
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
  const QStringView trimmed = trimmedOfBlanks(number);
  if (trimmed.isEmpty()) {
    showMessage(QStringLiteral("Please fill in data first"),
                QStringLiteral("Delivery number is missing."));
    return;
  }
  if (trimmed.size() < 2) {
    showMessage(QStringLiteral("Please fill in additional data"),
                QStringLiteral("Delivery number should be at least 2 characters."));
    return;
  }
  activityIndicator->startAnimating();
  // Nothing can be touched meanwhile: the lists must not be replaced under a running picking.
  environment().busy.begin(QStringLiteral("Looking up the delivery …"));
  tblOrders->setEnabled(true);
  tblStores->setEnabled(true);
  dismissKeyboard();
  m_connection = environment().http->start(
      {.url = ServiceAddress(environment().serviceHost).getorderpercarton(number),
       .timeout = kLookupTimeout},
      this, this);
  // A lookup that finds another one registered runs on, but its answer is not imported.
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
  environment().busy.end();
  const auto answer = connection.isAnswerWhole() ? parseDeliveryAnswer(m_webData) : std::nullopt;
  m_jsonResult = jsonResultOf(answer);
  if (m_connectionDict.value(kGetOrder) != &connection) {
    return;
  }
  m_connectionDict.remove(kGetOrder);
  if (saysAlreadySent(m_webData)) {
    stopWithMessage(kAlreadySent,
                    QStringLiteral("You cannot proceed as this order has already been picked"));
  } else if (!answer) {
    stopWithMessage(QStringLiteral("Could not fetch order details"),
                    QStringLiteral("Loading failed. Please try again."));
  } else if (answer->lines.empty()) {
    stopWithMessage(QStringLiteral("No order found"),
                    QStringLiteral("Please try again using different search criteria."));
  } else {
    showHeader(*answer);
    importDelivery(*answer);
  }
}

void masterViewController::didFailWithError(HttpConnection & /*connection*/,
                                            const QString &description) {
  environment().busy.end();
  // The entry "getorder" stays, on purpose: until this pane is loaded again, later lookups run
  // unregistered.
  stopWithMessage(QStringLiteral("Could not get result"),
                  QStringLiteral("Loading failed. Please try again."));
  showMessage(QStringLiteral("error message"), description);
}

void masterViewController::showHeader(const DeliveryAnswer &answer) {
  lblCustomerName->setText(QStringLiteral("Customer: ") + answer.cusname);
  lblBrand->setText(QStringLiteral("Brand: ") + answer.brand);
  lblCreationDate->setText(QStringLiteral("Date Created: ") + headerDate(answer.cdate));
  lblShipmentDate->setText(QStringLiteral("Date Shipped: ") + headerDate(answer.date));
  for (Label *header : {lblCustomerName, lblBrand, lblCreationDate, lblShipmentDate}) {
    header->setHidden(false);
  }
}

void masterViewController::importDelivery(const DeliveryAnswer &answer) {
  const auto items = std::make_shared<ItemLines>(itemLinesOf(answer));
  const auto boxes = std::make_shared<PickList>(boxesOf(answer));
  m_dvc->setArrayItems(items);
  m_dvc->setArrayPick(boxes);
  if (managedObjectContext() == nullptr) {
    return;
  }
  const OrderLine &first = answer.lines.front();
  const auto picks = managedObjectContext()->pickingsOfOrder(first.doc, first.ordernum);
  if (!picks) {
    // What was picked before is not in the lists: a picking of them would write over it.
    btnPicking->setEnabled(false);
    return;
  }
  restoreBoxes(*picks, *boxes);
  restoreItemLines(*picks, *items);
  btnPicking->setEnabled(true);
  btnPicking->setTitleColor(Colour::blue);
  tblBoxes->setEnabled(false);
  activityIndicator->stopAnimating();
}

void masterViewController::btnReloadItemsTouched() {
  m_catalogueReload = std::make_unique<CatalogueReload>(environment(), *managedObjectContext());
  connect(m_catalogueReload.get(), &CatalogueReload::finished, this,
          &masterViewController::itemsReloaded);
  m_catalogueReload->start();
}

void masterViewController::itemsReloaded(const std::optional<JsonResult> &result) {
  m_jsonResult = result;
  if (result) {
    environment().alerts.show(
        {.title = QStringLiteral("Saved"), .message = QStringLiteral("Items have been loaded")});
  } else {
    showMessage(QStringLiteral("Could not contact server"),
                QStringLiteral("No connection could be opened to server"));
  }
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
  environment().scans.clear();
  environment().wakeLock->acquire();
  m_dvc->enableScanning();
  m_dvc->setDoc(m_jsonResult ? m_jsonResult->doc : QString());
  m_dvc->setCurBoxIndex(-1);
  m_dvc->setDelegate(this);
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
  m_dvc->clearTotals();
  m_dvc->setCurBoxIndex(-1);
  m_dvc->tblItems->reloadData();
  m_dvc->disableScanning();
  txtDeliveryNo->becomeFirstResponder();
}

TextField *masterViewController::scanField() const {
  return m_scanStarted ? txtBox : txtDeliveryNo;
}

bool masterViewController::textFieldShouldReturn(TextField &field) {
  if (&field != txtBox) {
    return true;
  }
  const PickList &boxes = m_dvc->pickList();
  const auto entry = std::find_if(boxes.begin(), boxes.end(), [&](const PickEntry &candidate) {
    return boxOf(candidate) == txtBox->text();
  });
  if (entry == boxes.end()) {
    showMessage(QStringLiteral("No Box Found"));
    return true;
  }
  const int row = static_cast<int>(entry - boxes.begin());
  tblBoxes->reloadData();
  didSelectRowAtIndexPath(*tblBoxes, row);
  tblBoxes->selectRow(row);
  tblBoxes->setCellBackground(row, Colour::blue);
  return true;
}

void masterViewController::updateBoxOverview() {
  int unopened = 0;
  int completed = 0;
  int incomplete = 0;
  for (const PickEntry &entry : m_dvc->pickList()) {
    switch (boxStateOf(boxpickqtyOf(entry), boxorderqtyOf(entry))) {
      case BoxState::Unopened:
        ++unopened;
        break;
      case BoxState::Completed:
        ++completed;
        break;
      case BoxState::Incomplete:
        ++incomplete;
        break;
    }
  }
  lblBoxesTotalValue->setText(QString::number(m_dvc->pickList().size()));
  lblBoxesUnopenedValue->setText(QString::number(unopened));
  lblBoxesIncompleteValue->setText(QString::number(incomplete));
  lblBoxesCompletedValue->setText(QString::number(completed));
}

int masterViewController::numberOfRowsInSection(const TableView &table, int section) {
  return section == 0 && table.tag() == kBoxListTag && m_dvc != nullptr
             ? static_cast<int>(m_dvc->pickList().size())
             : 0;
}

QVariant masterViewController::cellForRowAtIndexPath(const TableView & /*table*/, int row) {
  const PickList &entries = m_dvc->pickList();
  // An import reloads no table, so that this one may still have the rows of a longer list.
  if (static_cast<std::size_t>(row) >= entries.size()) {
    return QVariant::fromValue(boxTableViewCell());
  }
  const PickEntry &entry = entries.at(static_cast<std::size_t>(row));
  const std::int32_t pick = boxpickqtyOf(entry);
  const std::int32_t order = boxorderqtyOf(entry);
  const BoxState state = boxStateOf(pick, order);
  boxTableViewCell cell;
  cell.lblBox.text = boxOf(entry);
  cell.lblPickQty.text = QString::number(pick);
  cell.lblOrderQty.text = QString::number(order);
  // Kept on purpose: the shade in which other tables alternate is set, and never seen.
  cell.backgroundColor = row % 2 == 0 ? Colour::lightGrey : Colour::clear;
  cell.backgroundColor = colourOf(state);
  cell.state = wordFor(state);
  return QVariant::fromValue(cell);
}

void masterViewController::didSelectRowAtIndexPath(TableView &table, int row) {
  if (table.tag() == kBoxListTag) {
    openBox(row);
  }
}

void masterViewController::openBox(int row) {
  const PickEntry &entry = m_dvc->pickList().at(static_cast<std::size_t>(row));
  m_dvc->setCurBoxIndex(row);
  m_dvc->tblItems->reloadData();
  const std::int32_t pick = boxpickqtyOf(entry);
  const std::int32_t order = boxorderqtyOf(entry);
  m_dvc->lblTotalPick->setText(QString::number(pick));
  m_dvc->lblTotalOrder->setText(QString::number(order));
  m_dvc->lblTotalDiff->setText(QString::number(wrappingSubtract(pick, order)));
  m_dvc->txtBarcode->becomeFirstResponder();
}

void masterViewController::QuantityChangedOnDetailView() {
  tblBoxes->reloadData();
  updateBoxOverview();
}

void masterViewController::QuantityChangedOnDetailViewDelegateForPick(
    std::shared_ptr<PickList> list, const QString & /*box*/) {
  m_dvc->setArrayPick(std::move(list));
  updatePickingStatus();
}

void masterViewController::QtyChangedForBarcode(const QString &code, const QString & /*box*/,
                                                std::int32_t currentQty, std::int32_t addQty) {
  const std::shared_ptr<PickList> list = m_dvc->arrayPick();
  int row = -1;
  for (std::size_t i = 0; list && row < 0 && i < list->size(); ++i) {
    auto *loose = std::get_if<LoosePick>(&list->at(i));
    if (loose != nullptr && loose->barcode == code) {
      loose->qty = wrappingAdd(currentQty, addQty);
      row = static_cast<int>(i);
    }
  }
  m_dvc->tblItems->reloadData();
  m_dvc->tblItems->selectRow(row);
  m_dvc->tblItems->setCellBackground(row, Colour::blue);
  updatePickingStatus();
}
