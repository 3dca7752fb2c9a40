#pragma once

#include <string>
#include <string_view>

/// Returns a copy of the array of objects `text` that contains only values that simdjson can read.
/// In the members of the objects, `{}` replaces each array and object, and each value beyond the
/// limits of simdjson: a number beyond 64 bits or the range of a double, or a text with half a
/// surrogate pair. JSON itself has no such limits, and none for nesting.
///
/// Throws simdjson_error if `text` is not UTF-8, not JSON, or not an array of objects.
std::string readableArray(std::string_view text);
