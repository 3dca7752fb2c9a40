#include "app/store/SaveOrAbort.h"

#include "app/store/ManagedObjectContext.h"

#include <QDebug>

#include <cstdlib>

void saveOrAbort(ManagedObjectContext &context) {
  if (!context.hasChanges()) {
    return;
  }
  if (const auto error = context.save()) {
    qCritical("Unresolved error %s, %s", qUtf8Printable(error->description),
              qUtf8Printable(error->userInfo));
    std::abort();
  }
}
