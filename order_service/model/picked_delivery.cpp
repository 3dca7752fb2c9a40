#include "model/picked_delivery.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace cartonpick::orders {

namespace {

/// The boxes in the order in which they were first named, likewise their lines.
class Boxes {
 public:
  LineFulfilment &line(const std::string &order, const std::string &box, const std::string &item,
                       const std::string &barcode) {
    const auto [place, isNew] = m_places.try_emplace({order, box, item, barcode});
    if (isNew) {
      const std::size_t boxIndex = indexOf(box);
      std::vector<LineFulfilment> &lines = m_boxes[boxIndex].lines;
      place->second = {boxIndex, lines.size()};
      lines.push_back({.order = order, .box = box, .article = {barcode, item, {}}, .reports = {}});
    }
    return m_boxes[place->second.first].lines[place->second.second];
  }

  std::vector<PickedBox> take() { return std::move(m_boxes); }

 private:
  std::size_t indexOf(const std::string &box) {
    const auto [place, isNew] = m_indexes.try_emplace(box, m_boxes.size());
    if (isNew) {
      m_boxes.push_back({.name = box, .lines = {}});
    }
    return place->second;
  }

  std::vector<PickedBox> m_boxes;
  std::map<std::string, std::size_t> m_indexes;
  /// By order, box, item and barcode: where the box and the line are.
  std::map<std::tuple<std::string, std::string, std::string, std::string>,
           std::pair<std::size_t, std::size_t>>
      m_places;
};

void sortByTime(std::vector<ReceivedReport> &reports) {
  std::stable_sort(reports.begin(), reports.end(),
                   [](const ReceivedReport &a, const ReceivedReport &b) {
                     return std::tie(a.receivedAt, a.report.pickedAt) <
                            std::tie(b.receivedAt, b.report.pickedAt);
                   });
}

DeliveryState stateOf(const std::vector<PickedBox> &boxes, bool isOrdered, bool isSent) {
  DeliveryTraits traits = {.isOrdered = isOrdered, .isSent = isSent};
  for (const PickedBox &box : boxes) {
    for (const LineFulfilment &line : box.lines) {
      traits.isShort |= line.difference() < 0;
      traits.isOver |= line.difference() > 0;
    }
  }
  return stateOf(traits);
}

}  // namespace

PickedDelivery pickedDelivery(const std::vector<OrderLine> &lines,
                              std::vector<ReceivedReport> reports) {
  Boxes boxes;
  for (const OrderLine &ordered : lines) {
    LineFulfilment &line =
        boxes.line(ordered.order, ordered.carton, ordered.article.item, ordered.article.barcode);
    line.article.description = ordered.article.description;
    line.isOrdered = true;
    line.ordered += ordered.quantity;
  }
  sortByTime(reports);
  for (const ReceivedReport &received : reports) {
    boxes
        .line(received.report.order, received.report.box, received.report.item,
              received.report.barcode)
        .reports.push_back(received.report.quantity);
  }
  PickedDelivery delivery;
  delivery.boxes = boxes.take();
  delivery.sentAt = reports.empty() ? std::string() : reports.back().receivedAt;
  delivery.state = stateOf(delivery.boxes, !lines.empty(), !reports.empty());
  return delivery;
}

}  // namespace cartonpick::orders
