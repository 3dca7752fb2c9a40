#pragma once

#include "delivery/JsonResult.h"
#include "device/HttpClient.h"

#include <QByteArray>
#include <QObject>
#include <QThread>

#include <memory>
#include <optional>

class CatalogueAnswer;
class ManagedObjectContext;
struct Environment;
struct StoreError;

/// Downloads the catalogue and replaces the stored one, behind the busy overlay. The answer is
/// parsed and stored on a worker thread. If the reload is destroyed before that has finished, the
/// stored catalogue stays unchanged.
class CatalogueReload : public QObject, public HttpConnectionDelegate {
  Q_OBJECT

 public:
  CatalogueReload(Environment &environment, ManagedObjectContext &context);
  ~CatalogueReload() override;
  CatalogueReload(const CatalogueReload &) = delete;
  CatalogueReload &operator=(const CatalogueReload &) = delete;

  /// Starts the download. Call it once.
  void start();

  void didReceiveResponse(HttpConnection &connection) override;
  void didReceiveData(HttpConnection &connection, const QByteArray &data) override;
  void connectionDidFinishLoading(HttpConnection &connection) override;
  void didFailWithError(HttpConnection &connection, const QString &description) override;

 signals:
  /// Emitted when the catalogue has been replaced, or without a `result` if the download or the
  /// parsing failed and the catalogue is unchanged.
  void finished(const std::optional<JsonResult> &result);
  /// The catalogue could not be stored for this reason, and is unchanged. Emitted instead of
  /// `finished` if the rules survive failed saves; otherwise the process aborts.
  void notStored(const QString &reason);

 private:
  /// `hasItems`: true if the stored catalogue has an article.
  void readAndStore(QByteArray body, const QString &storePath, bool hasItems);
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
