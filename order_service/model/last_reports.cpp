#include "model/last_reports.h"

#include <cstddef>
#include <map>
#include <string>
#include <tuple>

namespace cartonpick::orders {

namespace {

bool isLater(const StoredLine &one, const StoredLine &other) {
  return std::tie(one.receivedAt, one.line.pickedAt) >
         std::tie(other.receivedAt, other.line.pickedAt);
}

}  // namespace

std::vector<StoredLine> lastReports(const std::vector<StoredLine> &lines) {
  using Place = std::tuple<std::string, std::string, std::string, std::string, std::string>;
  std::map<Place, std::size_t> indexes;
  std::vector<StoredLine> last;
  for (const StoredLine &stored : lines) {
    const PickedLine &line = stored.line;
    const auto [index, isNew] = indexes.try_emplace(
        {line.delivery, line.order, line.box, line.item, line.barcode}, last.size());
    if (isNew) {
      last.push_back(stored);
    } else if (isLater(stored, last[index->second])) {
      last[index->second] = stored;
    }
  }
  return last;
}

}  // namespace cartonpick::orders
