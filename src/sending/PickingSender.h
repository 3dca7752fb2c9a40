#pragma once

#include "base/WeakDelegate.h"
#include "device/HttpClient.h"
#include "store/Picking.h"
#include "view/AlertStack.h"

#include <QByteArray>
#include <QObject>

#include <vector>

class ManagedObjectContext;
struct Environment;

/// Sends the picks of a delivery to the service, behind the busy overlay, and marks them as sent if
/// the service accepts them.
class PickingSender : public QObject, public HttpConnectionDelegate {
  Q_OBJECT

 public:
  /// @param alertDelegate  the delegate for all alerts
  PickingSender(Environment &environment, ManagedObjectContext &context,
                WeakDelegate<AlertViewDelegate> alertDelegate);
  ~PickingSender() override;
  PickingSender(const PickingSender &) = delete;
  PickingSender &operator=(const PickingSender &) = delete;

  /// Sends all unsent picks of the delivery `doc` in one request. An alert reports the result. If
  /// the save of the sent marks fails, it aborts the process; or, if the rules survive failed
  /// saves, an alert says that the picks will be sent again.
  void send(const QString &doc);

  void didReceiveResponse(HttpConnection &connection) override;
  void didReceiveData(HttpConnection &connection, const QByteArray &data) override;
  void connectionDidFinishLoading(HttpConnection &connection) override;
  void didFailWithError(HttpConnection &connection, const QString &description) override;

 private:
  void showMessage(const QString &title, const QString &message = {});
  /// Shows the message after the current event has been handled.
  void queueMessage(const QString &title, const QString &message = {});
  /// Returns false if `saveByRules` does.
  bool markAsSent();

  Environment &m_environment;
  ManagedObjectContext &m_context;
  WeakDelegate<AlertViewDelegate> m_alertDelegate;
  std::vector<Picking> m_rows;
  QByteArray m_reply;
};
