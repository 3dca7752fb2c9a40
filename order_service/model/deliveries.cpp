#include "model/deliveries.h"

#include <set>
#include <utility>

namespace cartonpick::orders {

Deliveries::Deliveries(const std::vector<OrderLine> &lines, std::vector<Article> catalogue)
    : m_catalogue(std::move(catalogue)) {
  std::set<Article> known(m_catalogue.begin(), m_catalogue.end());
  for (const OrderLine &line : lines) {
    m_lines[line.delivery].push_back(line);
    if (known.insert(line.article).second) {
      m_catalogue.push_back(line.article);
    }
  }
}

std::span<const OrderLine> Deliveries::lines(std::string_view delivery) const {
  const auto found = m_lines.find(delivery);
  return found == m_lines.end() ? std::span<const OrderLine>() : found->second;
}

}  // namespace cartonpick::orders
