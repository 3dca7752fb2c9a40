#pragma once

#include <string>

namespace cartonpick::orders {

/// Creates the SQLite file at `path` with the mode 0600 if it is missing; removes the permissions
/// of all users except its owner and group from an existing one. Throws std::runtime_error if the
/// file, or one that SQLite keeps beside it, is a link or not a regular file.
void claimStoreFile(const std::string &path);

}  // namespace cartonpick::orders
