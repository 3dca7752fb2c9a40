#pragma once

#include <string>

namespace cartonpick::orders {

/// Makes the SQLite file at `path`, if it is missing, its owner's alone, and keeps everybody but
/// its owner and group from one that is there. Throws std::runtime_error if somebody has put
/// something else in its place, or in that of a file which SQLite keeps beside it: a link, or what
/// is not a regular file.
void claimStoreFile(const std::string &path);

}  // namespace cartonpick::orders
