#include "ProgramWork.h"

#include "delivery/DeliveryImport.h"
#include "delivery/ScanMatch.h"
#include "service/CatalogueAnswer.h"
#include "service/DeliveryAnswer.h"
#include "store/CatalogueWriter.h"
#include "store/ManagedObjectContext.h"

#include <stdexcept>

namespace program {

void storeCatalogue(const QByteArray &body, const QString &path) {
  const auto answer = CatalogueAnswer::read(body);
  CatalogueWriter writer(path);
  answer.value().forEachArticle([&](const Article &article) {
    writer.insert(article);
    return true;
  });
  if (writer.save()) {
    throw std::runtime_error("the catalogue is not stored");
  }
}

Delivery importDelivery(const QByteArray &body, ManagedObjectContext &context) {
  const auto answer = parseDeliveryAnswer(body);
  Delivery delivery{itemLinesOf(answer.value()), boxesOf(answer.value())};
  const auto picks = context.pickingsOfOrder(QStringLiteral("4711"), QStringLiteral("A1"));
  restoreBoxes(picks.value(), delivery.boxes);
  restoreItemLines(picks.value(), delivery.items);
  return delivery;
}

std::optional<Items> scan(const CodePositions &lines, ManagedObjectContext &context,
                          const QString &code) {
  return lines.find(code) ? std::nullopt : articleWithCode(context, code);
}

}  // namespace program
