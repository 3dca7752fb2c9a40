#include "sending/SendPickBody.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QJsonObject objectOf(const Picking &row, const QTimeZone &zone) {
  return {{QStringLiteral("barcode"), row.barcode},
          {QStringLiteral("box"), row.box},
          {QStringLiteral("doc"), row.doc},
          {QStringLiteral("item"), row.item},
          {QStringLiteral("ordernum"), row.ordernum},
          {QStringLiteral("qty"), row.pickqty},
          {QStringLiteral("datepicked"),
           row.datepicked.toTimeZone(zone).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))},
          {QStringLiteral("sent"), row.sent}};
}

/// Cuts `json` to the length of its text in UTF-16 units.
QByteArray cut(const QByteArray &json) {
  return json.first(QString::fromUtf8(json).size());
}

}  // namespace

QByteArray sendPickBody(const std::vector<Picking> &rows, const QTimeZone &zone,
                        const PickingRules &rules) {
  QJsonArray lines;
  for (const Picking &row : rows) {
    lines.append(objectOf(row, zone));
  }
  const QByteArray json = QJsonDocument(lines).toJson(QJsonDocument::Indented);
  return rules.sendsWholeReports ? json : cut(json);
}
