#include "sending/PickingSender.h"

#include "base/Utf8.h"
#include "delivery/SaveByRules.h"
#include "sending/SendPickBody.h"
#include "service/ServiceAddress.h"
#include "store/ManagedObjectContext.h"
#include "view/Environment.h"

#include <QMetaObject>
#include <QStringDecoder>

#include <algorithm>

namespace {

constexpr std::chrono::seconds kSendTimeout{120};
constexpr auto kAccepted = R"("0")";
const QString kNoContact = QStringLiteral("Could not contact server");
const QString kNotMarked = QStringLiteral(
    "The tablet could not save that it was sent: %1. The next send reports its lines again.");
/// The maximum number of bytes of an unexpected reply to show: laying out megabytes of text would
/// block the window for minutes.
constexpr qsizetype kShownBytes = 10'000;

/// Decodes `reply`, or the beginning of a long one. Returns an empty string if it is not UTF-8.
QString shownText(const QByteArray &reply) {
  if (reply.size() <= kShownBytes) {
    return utf8Text(reply).value_or(QString());
  }
  QStringDecoder decoder(QStringDecoder::Utf8);
  // A stateful decoder leaves out a character that is cut off at the end.
  const QString beginning = decoder(reply.first(kShownBytes));
  return decoder.hasError() ? QString() : beginning + QStringLiteral(" …");
}

}  // namespace

PickingSender::PickingSender(Environment &environment, ManagedObjectContext &context,
                             WeakDelegate<AlertViewDelegate> alertDelegate)
    : m_environment(environment), m_context(context), m_alertDelegate(alertDelegate) {}

PickingSender::~PickingSender() {
  if (!m_rows.empty()) {
    m_environment.busy.end();
  }
}

void PickingSender::send(const QString &doc) {
  auto rows = m_context.unsentPickings(doc);
  if (!rows || rows->empty()) {
    showMessage(QStringLiteral("No picking to send"));
    return;
  }
  m_rows = std::move(*rows);
  m_environment.busy.begin(QStringLiteral("Sending the picking …"));
  const QByteArray body =
      sendPickBody(m_rows, m_environment.clock->localZone(), m_environment.rules);
  m_environment.http->start({.url = ServiceAddress(m_environment.serviceHost).sendpick(),
                             .method = "POST",
                             .headers = {{"Accept", "application/json"},
                                         {"Content-Type", "application/json"},
                                         {"Data-Type", "json"},
                                         {"Content-Length", QByteArray::number(body.size())}},
                             .body = body,
                             .timeout = kSendTimeout},
                            this, this);
}

void PickingSender::didReceiveResponse(HttpConnection & /*connection*/) {
  m_reply.clear();
}

void PickingSender::didReceiveData(HttpConnection & /*connection*/, const QByteArray &data) {
  // Keeps one byte more than is shown, so that a longer reply is detected.
  m_reply.append(data.first(std::min(data.size(), kShownBytes + 1 - m_reply.size())));
}

void PickingSender::connectionDidFinishLoading(HttpConnection &connection) {
  if (connection.isAnswerWhole() && m_reply == kAccepted) {
    const bool isMarked = markAsSent();
    queueMessage(QStringLiteral("Picking was sent"),
                 isMarked ? QString() : kNotMarked.arg(m_context.errorString()));
  } else {
    queueMessage(kNoContact, shownText(m_reply));
  }
  m_rows.clear();
  m_environment.busy.end();
}

void PickingSender::didFailWithError(HttpConnection & /*connection*/,
                                     const QString & /*description*/) {
  queueMessage(kNoContact, QStringLiteral("No connection could be opened to server"));
  m_rows.clear();
  m_environment.busy.end();
}

bool PickingSender::markAsSent() {
  for (const Picking &row : m_rows) {
    m_context.setSent(row, 1);
  }
  return saveByRules(m_context, m_environment.rules);
}

void PickingSender::showMessage(const QString &title, const QString &message) {
  m_environment.alerts.show({.title = title, .message = message, .delegate = m_alertDelegate});
}

void PickingSender::queueMessage(const QString &title, const QString &message) {
  QMetaObject::invokeMethod(
      this, [this, title, message] { showMessage(title, message); }, Qt::QueuedConnection);
}
