#include "json/strict_object.h"

#include "model/input_error.h"

#include <algorithm>
#include <limits>

namespace cartonpick::orders {

namespace {

std::string inQuotes(std::string_view name) {
  return '"' + std::string(name) + '"';
}

bool fits32Bits(const nlohmann::json &number) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (number.is_number_unsigned()) {
    return number.get<std::uint64_t>() <= static_cast<std::uint64_t>(Limits::max());
  }
  const auto value = number.get<std::int64_t>();
  return value >= Limits::min() && value <= Limits::max();
}

}  // namespace

StrictObject::StrictObject(const nlohmann::json &value, std::span<const std::string_view> names)
    : m_object(value) {
  if (!value.is_object()) {
    throw InputError("not an object");
  }
  for (const std::string_view name : names) {
    if (!value.contains(name)) {
      throw InputError(inQuotes(name) + " is missing");
    }
  }
  for (const auto &member : value.items()) {
    if (std::find(names.begin(), names.end(), member.key()) == names.end()) {
      throw InputError(inQuotes(member.key()) + " is not a known member");
    }
  }
}

std::string StrictObject::text(std::string_view name, std::size_t maxBytes) const {
  const nlohmann::json &value = m_object.at(std::string(name));
  if (!value.is_string()) {
    throw InputError(inQuotes(name) + " is not a string");
  }
  auto text = value.get<std::string>();
  if (text.size() > maxBytes) {
    throw InputError(inQuotes(name) + " is longer than " + std::to_string(maxBytes) + " bytes");
  }
  if (text.find('\0') != std::string::npos) {
    throw InputError(inQuotes(name) + " has the character U+0000");
  }
  return text;
}

std::int32_t StrictObject::integer(std::string_view name) const {
  const nlohmann::json &value = m_object.at(std::string(name));
  if (!value.is_number_integer()) {
    throw InputError(inQuotes(name) + " is not an integer number");
  }
  if (!fits32Bits(value)) {
    throw InputError(inQuotes(name) + " does not fit in 32 bits");
  }
  return value.get<std::int32_t>();
}

}  // namespace cartonpick::orders
