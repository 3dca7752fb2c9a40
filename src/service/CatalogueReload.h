#pragma once

#include "device/HttpClient.h"
#include "service/DeliveryAnswer.h"

#include <QByteArray>
#include <QObject>
#include <QThread>

#include <memory>
#include <optional>

class CatalogueAnswer;
class ManagedObjectContext;
struct Environment;
struct StoreError;

/// Downloads the catalogue and puts it in place of the stored one. Nothing else can be touched
/// meanwhile. The answer is read and stored on a thread of its own; if the reload is destroyed
/// before that has ended, the catalogue stays as it was.
class CatalogueReload : public QObject, public HttpConnectionDelegate {
  Q_OBJECT

 public:
  CatalogueReload(Environment &environment, ManagedObjectContext &context);
  ~CatalogueReload() override;
  CatalogueReload(const CatalogueReload &) = delete;
  CatalogueReload &operator=(const CatalogueReload &) = delete;

  /// To be called once.
  void start();

  void didReceiveResponse(HttpConnection &connection) override;
  void didReceiveData(HttpConnection &connection, const QByteArray &data) override;
  void connectionDidFinishLoading(HttpConnection &connection) override;
  void didFailWithError(HttpConnection &connection, const QString &description) override;

 signals:
  /// The catalogue was replaced; or, if there is no result, there was no answer that could be read
  /// and it is as it was.
  void finished(const std::optional<JsonResult> &result);

 private:
  void readAndStore(QByteArray body, const QString &storePath);
  std::optional<StoreError> store(CatalogueAnswer &answer, const QString &storePath);
  void showReceived(qint64 announced);
  void showStored(std::size_t stored, std::size_t all);
  void finish(const std::optional<JsonResult> &result);

  Environment &m_environment;
  ManagedObjectContext &m_context;
  QByteArray m_body;
  std::unique_ptr<QThread> m_worker;
  bool m_isRunning = false;
};
