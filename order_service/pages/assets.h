#pragma once

#include "http/http_message.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace cartonpick::orders {

/// A file of the pages that is part of the program.
struct Asset {
  std::string_view name;
  std::string_view contentType;
  std::string_view tag;  ///< another one for other content
  std::string_view content;
};

/// All files of pages/assets.
std::span<const Asset> assets();

/// Where a file is found, by its name.
std::string assetPath(std::string_view name);

/// The file of a GET or HEAD of its path, or 304 if the browser has it already; nothing for any
/// other path.
std::optional<Answer> assetAnswer(const Request &request);

}  // namespace cartonpick::orders
