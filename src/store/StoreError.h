#pragma once

#include <QString>

namespace SQLite {
class Exception;
}

/// Why a save failed.
struct StoreError {
  QString description;
  /// SQLite's result codes.
  QString userInfo;
};

StoreError storeErrorOf(const SQLite::Exception &error);
