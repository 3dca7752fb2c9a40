#include "service/CatalogueReload.h"

#include "service/CatalogueAnswer.h"
#include "service/ServiceAddress.h"
#include "store/ManagedObjectContext.h"
#include "store/SaveOrAbort.h"
#include "view/Environment.h"

#include <QLocale>
#include <QMetaObject>

#include <algorithm>
#include <utility>

namespace {

constexpr std::chrono::seconds kDownloadTimeout{150};
constexpr std::size_t kArticlesBetweenReports = 10'000;

QString megabytes(qint64 bytes) {
  constexpr double kMegabyte = 1e6;
  return QString::number(static_cast<double>(bytes) / kMegabyte, 'f', 1);
}

QString grouped(std::size_t number) {
  return QLocale(QLocale::English).toString(static_cast<qulonglong>(number));
}

}  // namespace

CatalogueReload::CatalogueReload(Environment &environment, ManagedObjectContext &context)
    : m_environment(environment), m_context(context) {}

CatalogueReload::~CatalogueReload() {
  if (m_worker) {
    m_worker->requestInterruption();
    m_worker->wait();
  }
  if (m_isRunning) {
    m_environment.busy.end();
  }
}

void CatalogueReload::start() {
  m_isRunning = true;
  m_environment.busy.begin(QStringLiteral("Loading the articles …"));
  m_environment.http->start(
      {.url = ServiceAddress(m_environment.serviceHost).getitems(), .timeout = kDownloadTimeout},
      this, this);
}

void CatalogueReload::didReceiveResponse(HttpConnection &connection) {
  m_body.clear();
  const qint64 expected =
      std::clamp(connection.announcedBytes(), qint64{0}, HttpConnection::kMaxAnswerBytes);
  m_body.reserve(expected);
}

void CatalogueReload::didReceiveData(HttpConnection &connection, const QByteArray &data) {
  m_body.append(data);
  showReceived(connection.announcedBytes());
}

void CatalogueReload::connectionDidFinishLoading(HttpConnection &connection) {
  if (!connection.isAnswerWhole()) {
    finish(std::nullopt);
    return;
  }
  // An open transaction would block the worker's connection.
  saveOrAbort(m_context);
  const bool hasItems = m_context.hasItems().value_or(false);
  m_worker.reset(QThread::create(
      [this, body = std::exchange(m_body, {}), storePath = m_context.storePath(),
       hasItems]() mutable { readAndStore(std::move(body), storePath, hasItems); }));
  m_worker->start();
}

void CatalogueReload::didFailWithError(HttpConnection & /*connection*/,
                                       const QString & /*description*/) {
  finish(std::nullopt);
}

void CatalogueReload::readAndStore(QByteArray body, const QString &storePath, bool hasItems) {
  auto answer = CatalogueAnswer::read(std::move(body));
  // Without articles in both there is nothing to change, and the store need not be usable.
  const bool changesItems = answer && (answer->articleCount() > 0 || hasItems);
  const auto error = changesItems ? store(*answer, storePath) : std::nullopt;
  const auto result = answer ? std::optional(answer->jsonResult()) : std::nullopt;
  QMetaObject::invokeMethod(this, [this, error, result] {
    if (!error) {
      finish(result);
    } else if (m_environment.rules.survivesFailedSaves) {
      m_isRunning = false;
      emit notStored(error->description);
      m_environment.busy.end();
    } else {
      abortAfter(*error);
    }
  });
}

std::optional<StoreError> CatalogueReload::store(CatalogueAnswer &answer,
                                                 const QString &storePath) {
  CatalogueWriter writer(storePath);
  std::size_t stored = 0;
  const std::size_t all = answer.articleCount();
  const auto report = [&] {
    QMetaObject::invokeMethod(this, [this, stored, all] { showStored(stored, all); });
  };
  report();
  const bool isComplete = answer.forEachArticle([&](const Article &article) {
    writer.insert(article);
    ++stored;
    if (stored % kArticlesBetweenReports == 0) {
      report();
    }
    return !QThread::currentThread()->isInterruptionRequested();
  });
  report();
  return isComplete ? writer.save() : std::nullopt;
}

void CatalogueReload::showReceived(qint64 announced) {
  const qint64 received = m_body.size();
  if (announced > 0) {
    m_environment.busy.setProgress(
        QStringLiteral("%1 of %2 MB").arg(megabytes(received), megabytes(announced)),
        std::min(1.0, static_cast<double>(received) / static_cast<double>(announced)));
  } else {
    m_environment.busy.setProgress(QStringLiteral("%1 MB").arg(megabytes(received)), -1.0);
  }
}

void CatalogueReload::showStored(std::size_t stored, std::size_t all) {
  m_environment.busy.setProgress(
      QStringLiteral("%1 of %2 articles").arg(grouped(stored), grouped(all)),
      all == 0 ? 1.0 : static_cast<double>(stored) / static_cast<double>(all));
}

void CatalogueReload::finish(const std::optional<JsonResult> &result) {
  m_isRunning = false;
  emit finished(result);
  saveOrAbort(m_context);
  m_environment.busy.end();
}
