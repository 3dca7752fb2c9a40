#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace cartonpick::orders {

/// Parses strict JSON (RFC 8259, UTF-8) in which no object names a member twice.
/// Throws InputError that calls the text by `name`: "the body is not JSON: ...".
nlohmann::json parseJson(std::string_view text, const std::string &name);

}  // namespace cartonpick::orders
