#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <string_view>

namespace cartonpick::orders {

/// A JSON object that has exactly the members it should have. Refers to the JSON that it is made
/// of, which must outlive it. Every function throws InputError that names the member at fault.
class StrictObject {
 public:
  StrictObject(const nlohmann::json &value, std::span<const std::string_view> names);

  /// How long a text may be: the indexes of a store take no longer ones.
  static constexpr std::size_t kMaxBytes = 255;

  /// The member, which must be a string of at most `maxBytes` and without the character U+0000.
  std::string text(std::string_view name, std::size_t maxBytes = kMaxBytes) const;

  /// The member, which must be an integer number of 32 bits, signed.
  std::int32_t integer(std::string_view name) const;

 private:
  const nlohmann::json &m_object;
};

}  // namespace cartonpick::orders
