#pragma once

#include <QString>

namespace SQLite {
class Exception;
}

/// The reason why a save failed.
struct StoreError {
  QString description;
  /// SQLite's result code and extended result code, as "{code = 5; extended code = 261}".
  QString userInfo;
};

StoreError storeErrorOf(const SQLite::Exception &error);
