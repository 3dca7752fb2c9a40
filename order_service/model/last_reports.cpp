#include "model/last_reports.h"

#include <cstddef>
#include <map>
#include <string>
#include <tuple>

namespace cartonpick::orders {

std::vector<ReceivedReport> lastReports(const std::vector<ReceivedReport> &reports) {
  using Place = std::tuple<std::string, std::string, std::string, std::string, std::string>;
  std::map<Place, std::size_t> indexes;
  std::vector<ReceivedReport> last;
  for (const ReceivedReport &received : reports) {
    if (received.isUndone) {
      continue;
    }
    const PickReport &report = received.report;
    const auto [index, isNew] = indexes.try_emplace(
        {report.delivery, report.order, report.box, report.item, report.barcode}, last.size());
    if (isNew) {
      last.push_back(received);
    } else if (wasReceivedBefore(last[index->second], received)) {
      last[index->second] = received;
    }
  }
  return last;
}

}  // namespace cartonpick::orders
