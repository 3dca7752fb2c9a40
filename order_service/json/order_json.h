#pragma once

#include "model/order_line.h"

#include <array>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace cartonpick::orders {

/// The members of an order line, in the order in which they are written.
inline constexpr std::array<std::string_view, 11> kOrderLineMembers = {
    "cusname", "brand",   "cdate", "date", "doc",   "ordernum",
    "item",    "barcode", "descr", "qty",  "carton"};

/// Return a JSON array of the elements, whose texts are UTF-8.
std::string toJson(const std::vector<OrderLine> &lines);
std::string toJson(const std::vector<Article> &articles);

/// Throw InputError when the value is not an object of exactly the right members, when a date is
/// none or when the quantity is below 0.
OrderLine orderLineFromJson(const nlohmann::json &value);
Article articleFromJson(const nlohmann::json &value);

}  // namespace cartonpick::orders
