#pragma once

#include "delivery/PickingSession.h"
#include "device/HttpClient.h"
#include "picking/DeliveryLabels.h"
#include "picking/QuantityChangedOnDetailViewDelegate.h"
#include "service/CatalogueReload.h"
#include "store/ManagedObjectContextHolder.h"
#include "view/AlertStack.h"
#include "view/ViewController.h"
#include "view/outlets/ActivityIndicator.h"
#include "view/outlets/Button.h"
#include "view/outlets/Label.h"
#include "view/outlets/TableView.h"
#include "view/outlets/TextField.h"

#include <QHash>
#include <QPointer>

#include <memory>
#include <optional>

struct Delivery;

/// The left pane of the picking screen: looks up a delivery, lists and opens its boxes, starts and
/// stops the picking, and reloads the catalogue.
class masterViewController : public ViewController,
                             public ManagedObjectContextHolder,
                             public TextFieldDelegate,
                             public AlertViewDelegate,
                             public TableViewDataSource,
                             public HttpConnectionDelegate,
                             public QuantityChangedOnDetailViewDelegate {
  Q_OBJECT
  QML_NAMED_ELEMENT(MasterViewController)
  QML_UNCREATABLE("Controllers come from the storyboard")
  OUTLET(TextField, txtDeliveryNo)
  OUTLET(TextField, txtBox)
  OUTLET(Button, btnSearch)
  OUTLET(Button, btnPicking)
  OUTLET(Button, btnReloadItems)
  OUTLET(Button, btnClose)
  OUTLET(Label, lblCustomerName)
  OUTLET(Label, lblBrand)
  OUTLET(Label, lblCreationDate)
  OUTLET(Label, lblShipmentDate)
  OUTLET(Label, lblLookup)
  OUTLET(Label, lblPickedDelivery)
  OUTLET(Label, lblBox)
  OUTLET(Label, lblBoxesTotalLabel)
  OUTLET(Label, lblBoxesUnopenedLabel)
  OUTLET(Label, lblBoxesCompletedLabel)
  OUTLET(Label, lblBoxesIncompleteLabel)
  OUTLET(Label, lblBoxesTotalValue)
  OUTLET(Label, lblBoxesUnopenedValue)
  OUTLET(Label, lblBoxesCompletedValue)
  OUTLET(Label, lblBoxesIncompleteValue)
  OUTLET(TableView, tblBoxes)
  OUTLET(TableView, tblOrders)
  OUTLET(TableView, tblStores)
  OUTLET(ActivityIndicator, activityIndicator)

 public:
  /// `session` must outlive the pane.
  masterViewController(PickingSession &session, Environment &environment,
                       QObject *parent = nullptr);
  ~masterViewController() override;
  masterViewController(const masterViewController &) = delete;
  masterViewController &operator=(const masterViewController &) = delete;

  void setManagedObjectContext(ManagedObjectContext *context) override {
    ManagedObjectContextHolder::setManagedObjectContext(context);
    m_session.setManagedObjectContext(context);
  }
  void viewDidLoad() override;
  void prepareForSegue(Segue &segue) override;
  void dismissKeyboard();

  // The delivery.
  Q_INVOKABLE void btnSearchOrderNoTouched();
  void didReceiveResponse(HttpConnection &connection) override;
  void didReceiveData(HttpConnection &connection, const QByteArray &data) override;
  void connectionDidFinishLoading(HttpConnection &connection) override;
  void didFailWithError(HttpConnection &connection, const QString &description) override;

  // The catalogue.
  Q_INVOKABLE void btnReloadItemsTouched();

  // The picking.
  [[nodiscard]] bool scanStarted() const { return m_scanStarted; }
  Q_INVOKABLE void btnPickingTouched();
  void startPicking();
  void stopPicking();
  bool textFieldShouldReturn(TextField &field) override;
  [[nodiscard]] TextField *scanField() const override;

  // The boxes.
  void updateBoxOverview();
  int numberOfRowsInSection(const TableView &table, int section) override;
  QVariant cellForRowAtIndexPath(const TableView &table, int row) override;
  void didSelectRowAtIndexPath(TableView &table, int row) override;
  void QuantityChangedOnDetailView() override;
  void QuantityChangedOnDetailViewDelegateForPick(std::shared_ptr<PickList> list,
                                                  const QString &box) override;

  // The rest of the pane's interface. The program itself does not call these functions.

  /// Books `currentQty` plus `addQty` for the first loose pick with the barcode `code`; `box` is
  /// ignored.
  void QtyChangedForBarcode(const QString &code, const QString &box, std::int32_t currentQty,
                            std::int32_t addQty);
  void updateItems() {}
  void updatePickingStatus() { updateItems(); }
  void updateItemBoxComparison() { updateItems(); }
  void onLongPress() {}
  void btnAddBoxTouched() {}
  void txtBoxTextChanged() {}
  void btnSendDataTouched() {}
  void btnTotalsTouched() {}
  [[nodiscard]] bool orderExists(const QString & /*order*/) const { return true; }

  /// The registered requests by name. Under the standard rules, the entry of a failed request is
  /// kept.
  [[nodiscard]] const QHash<QString, QPointer<HttpConnection>> &connectionDict() const {
    return m_connectionDict;
  }
  /// The data of the service's last answer; std::nullopt if it could not be read.
  [[nodiscard]] const std::optional<JsonResult> &jsonResult() const {
    return m_session.jsonResult();
  }

 private:
  void showMessage(const QString &title, const QString &message = {});
  void stopWithMessage(const QString &title, const QString &message);
  /// Withdraws the delivery found last from the picker, under the careful rules.
  void forgetDelivery();
  void importDelivery(const Delivery &delivery);
  void itemsReloaded(const std::optional<JsonResult> &result);

  PickingSession &m_session;
  DeliveryLabels m_header{*lblCustomerName, *lblBrand, *lblCreationDate, *lblShipmentDate};
  QPointer<HttpConnection> m_connection;
  QHash<QString, QPointer<HttpConnection>> m_connectionDict;
  QByteArray m_webData;
  std::unique_ptr<CatalogueReload> m_catalogueReload;
  bool m_scanStarted = false;
};
