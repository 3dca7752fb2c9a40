#include "store/SaveOrAbort.h"

#include "store/ManagedObjectContext.h"

#include <QDebug>

#include <cstdlib>

void saveOrAbort(ManagedObjectContext &context) {
  if (const auto error = context.save()) {
    abortAfter(*error);
  }
}

void abortAfter(const StoreError &error) {
  qCritical("Unresolved error %s, %s", qUtf8Printable(error.description),
            qUtf8Printable(error.userInfo));
  std::abort();
}
