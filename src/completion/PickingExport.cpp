#include "completion/PickingExport.h"

#include "app/store/ManagedObjectContext.h"
#include "platform/Environment.h"

#include <QDebug>
#include <QFile>
#include <QSaveFile>
#include <QStringList>

namespace {

QString plain(const QString &text) {
  return text.isNull() ? QStringLiteral("(null)") : text;
}

QString exportLine(const Picking &row, const QTimeZone &zone) {
  const QString datepicked =
      row.datepicked.toTimeZone(zone).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  const QStringList fields{plain(row.barcode),
                           plain(row.box),
                           row.datepicked.isValid() ? datepicked : QStringLiteral("(null)"),
                           plain(row.descr),
                           plain(row.doc),
                           plain(row.item),
                           plain(row.ordernum),
                           QString::number(row.orderqty),
                           QString::number(row.pickqty),
                           QString::number(row.sent)};
  return fields.join(u';') + u'\r';
}

/// The zone of the device's offset of this moment; it knows no daylight-saving change.
QTimeZone fixedZone(const Clock &clock) {
  return QTimeZone(clock.localZone().offsetFromUtc(clock.now()));
}

/// A failure is not reported: the mail carries the text all the same.
void writeExportFile(const QString &path, const QString &text) {
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly)) {
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(text.toUtf8());
    file.commit();
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

MailDraft exportMail(const QString &doc, const QString &text) {
  return {.subject = QStringLiteral("Vardex File ") + doc,
          .htmlBody = QStringLiteral("Delivery Number = ") + doc,
          .attachment = text.toUtf8(),
          .attachmentMimeType = QStringLiteral("application/csv"),
          .attachmentFileName = QStringLiteral("Vardex_%1.csv").arg(doc)};
}

void exportPicking(Environment &environment, ManagedObjectContext &context, const QString &doc,
                   WeakDelegate<AlertViewDelegate> alertDelegate) {
  const auto rows = context.unsentPickings(doc);
  if (!rows || rows->empty()) {
    environment.alerts.show(
        {.title = QStringLiteral("No picking to send via email"), .delegate = alertDelegate});
    return;
  }
  const QString text = exportText(*rows, fixedZone(*environment.clock));
  qInfo("string to write:%s", qUtf8Printable(text));
  writeExportFile(environment.folders.documents() + QStringLiteral("/VardexExport.csv"), text);
  if (!environment.mail->canSendMail() ||
      !environment.mail->compose(exportMail(rows->front().doc, text))) {
    qWarning("Device is unable to send email in its current state.");
  }
}
