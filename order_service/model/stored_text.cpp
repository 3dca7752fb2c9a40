#include "model/stored_text.h"

#include <simdjson.h>

namespace cartonpick::orders {

bool isStorable(std::string_view text) {
  return simdjson::validate_utf8(text) && text.find('\0') == std::string_view::npos;
}

}  // namespace cartonpick::orders
