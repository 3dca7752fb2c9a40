#include "sending/PickingExport.h"

#include "base/OwnFiles.h"
#include "store/ManagedObjectContext.h"
#include "view/Environment.h"

#include <QDebug>
#include <QStringList>

#include <utility>

namespace {

const QString kNull = QStringLiteral("(null)");

QString shown(const QString &text) {
  return text.isNull() ? kNull : text;
}

QString shown(const QDateTime &time, const QTimeZone &zone) {
  return time.isValid() ? time.toTimeZone(zone).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))
                        : kNull;
}

QString exportLine(const Picking &row, const QTimeZone &zone) {
  const QStringList fields{shown(row.barcode),
                           shown(row.box),
                           shown(row.datepicked, zone),
                           shown(row.descr),
                           shown(row.doc),
                           shown(row.item),
                           shown(row.ordernum),
                           QString::number(row.orderqty),
                           QString::number(row.pickqty),
                           QString::number(row.sent)};
  return fields.join(u';') + u'\r';
}

/// Returns a zone with the local zone's current UTC offset and without daylight saving time.
QTimeZone fixedZone(const Clock &clock) {
  return QTimeZone(clock.localZone().offsetFromUtc(clock.now()));
}

/// Writes the export file. A failure is only logged, because the email contains the text too.
void writeExportFile(const QString &path, const QString &text) {
  const QString failure = replaceFile(path, text.toUtf8());
  if (!failure.isEmpty()) {
    qWarning("Export %s not written: %s.", qUtf8Printable(path), qUtf8Printable(failure));
  }
}

}  // namespace

QString exportText(const std::vector<Picking> &rows, const QTimeZone &zone) {
  QString text;
  for (const Picking &row : rows) {
    text += exportLine(row, zone);
  }
  return text;
}

MailDraft exportMail(const QString &doc, const QString &text, const QDateTime &date) {
  return {.subject = QStringLiteral("Vardex File ") + doc,
          .htmlBody = QStringLiteral("Delivery Number = ") + doc.toHtmlEscaped(),
          .attachment = text.toUtf8(),
          .attachmentMimeType = QStringLiteral("application/csv"),
          .attachmentFileName = QStringLiteral("Vardex_%1.csv").arg(doc),
          .date = date};
}

void exportPicking(Environment &environment, ManagedObjectContext &context, const QString &doc,
                   WeakDelegate<AlertViewDelegate> alertDelegate) {
  const auto rows = context.unsentPickings(doc);
  if (!rows || rows->empty()) {
    environment.alerts.show({.title = QStringLiteral("No picking to send via email"),
                             .delegate = std::move(alertDelegate)});
    return;
  }
  const QString text = exportText(*rows, fixedZone(*environment.clock));
  qInfo().noquote() << QStringLiteral("string to write:") + text;
  writeExportFile(environment.folders.documents() + QStringLiteral("/VardexExport.csv"), text);
  const QDateTime date = environment.clock->now().toTimeZone(environment.clock->localZone());
  const bool isHandedOver = environment.mail->canSendMail() &&
                            environment.mail->compose(exportMail(rows->front().doc, text, date));
  if (!isHandedOver) {
    qWarning("Device is unable to send email in its current state.");
  }
}
