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

/// Sends what was picked of one delivery to the service and, if the service accepts it, marks it as
/// sent. Nothing else can be touched meanwhile.
class PickingSender : public QObject, public HttpConnectionDelegate {
  Q_OBJECT

 public:
  /// `alertDelegate` is the delegate of all messages.
  PickingSender(Environment &environment, ManagedObjectContext &context,
                WeakDelegate<AlertViewDelegate> alertDelegate);
  ~PickingSender() override;
  PickingSender(const PickingSender &) = delete;
  PickingSender &operator=(const PickingSender &) = delete;

  /// Sends every unsent pick of the delivery `doc` in one request.
  void send(const QString &doc);

  void didReceiveResponse(HttpConnection &connection) override;
  void didReceiveData(HttpConnection &connection, const QByteArray &data) override;
  void connectionDidFinishLoading(HttpConnection &connection) override;
  void didFailWithError(HttpConnection &connection, const QString &description) override;

 private:
  void showMessage(const QString &title, const QString &message = {});
  /// Shows the message after the current event.
  void queueMessage(const QString &title, const QString &message = {});
  void markAsSent();

  Environment &m_environment;
  ManagedObjectContext &m_context;
  WeakDelegate<AlertViewDelegate> m_alertDelegate;
  std::vector<Picking> m_rows;
  QByteArray m_reply;
};
