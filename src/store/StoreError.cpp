#include "store/StoreError.h"

#include <SQLiteCpp/Exception.h>

StoreError storeErrorOf(const SQLite::Exception &error) {
  return {QString::fromUtf8(error.what()), QStringLiteral("{code = %1; extended code = %2}")
                                               .arg(error.getErrorCode())
                                               .arg(error.getExtendedErrorCode())};
}
