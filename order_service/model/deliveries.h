#pragma once

#include "model/order_line.h"

#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cartonpick::orders {

/// The deliveries to pick and the article catalogue, which includes every article of theirs.
class Deliveries {
 public:
  /// Articles of the lines that the catalogue lacks are added to its end.
  Deliveries(const std::vector<OrderLine> &lines, std::vector<Article> catalogue);

  using Lines = std::map<std::string, std::vector<OrderLine>, std::less<>>;

  /// Returns the delivery's lines in the given order; none for an unknown number. Numbers are
  /// compared byte by byte.
  std::span<const OrderLine> lines(std::string_view delivery) const;

  /// The lines by delivery, none without lines.
  const Lines &all() const { return m_lines; }

  const std::vector<Article> &catalogue() const { return m_catalogue; }

 private:
  Lines m_lines;
  std::vector<Article> m_catalogue;
};

}  // namespace cartonpick::orders
