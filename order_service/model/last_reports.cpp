#include "model/last_reports.h"

#include <cstddef>
#include <map>
#include <string>
#include <tuple>

namespace cartonpick::orders {

namespace {

bool isLater(const ReceivedReport &one, const ReceivedReport &other) {
  return std::tie(one.receivedAt, one.report.pickedAt) >
         std::tie(other.receivedAt, other.report.pickedAt);
}

}  // namespace

std::vector<ReceivedReport> lastReports(const std::vector<ReceivedReport> &reports) {
  using Place = std::tuple<std::string, std::string, std::string, std::string, std::string>;
  std::map<Place, std::size_t> indexes;
  std::vector<ReceivedReport> last;
  for (const ReceivedReport &received : reports) {
    const PickReport &report = received.report;
    const auto [index, isNew] = indexes.try_emplace(
        {report.delivery, report.order, report.box, report.item, report.barcode}, last.size());
    if (isNew) {
      last.push_back(received);
    } else if (isLater(received, last[index->second])) {
      last[index->second] = received;
    }
  }
  return last;
}

}  // namespace cartonpick::orders
