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
      lines.push_back({.order = order, .box = box, .article = {barcode, item, {}}});
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
  PickedDelivery delivery;
  bool isSent = false;
  std::stable_sort(reports.begin(), reports.end(), &wasReceivedBefore);
  for (const ReceivedReport &received : reports) {
    LineFulfilment &line = boxes.line(received.report.order, received.report.box,
                                      received.report.item, received.report.barcode);
    (received.isUndone ? line.undone : line.reports).push_back(received.report.quantity);
    if (!received.isUndone) {
      delivery.sentAt = received.receivedAt;
      isSent = true;
    }
  }
  delivery.boxes = boxes.take();
  delivery.state = stateOf(delivery.boxes, !lines.empty(), isSent);
  return delivery;
}

}  // namespace cartonpick::orders
