#include "sending/SendPickBody.h"

#include "delivery/PickingRules.h"

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

}  // namespace

QByteArray sendPickBody(const std::vector<Picking> &rows, const QTimeZone &zone) {
  QJsonArray lines;
  for (const Picking &row : rows) {
    lines.append(objectOf(row, zone));
  }
  return PickingRules::cutReport(QJsonDocument(lines).toJson(QJsonDocument::Indented));
}
