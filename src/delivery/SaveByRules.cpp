#include "delivery/SaveByRules.h"

#include "store/ManagedObjectContext.h"
#include "store/SaveOrAbort.h"

#include <QDebug>

bool saveByRules(ManagedObjectContext &context, const PickingRules &rules) {
  if (!rules.survivesFailedSaves) {
    saveOrAbort(context);
    return true;
  }
  const auto error = context.save();
  if (error) {
    qWarning("Not saved: %s, %s", qUtf8Printable(error->description),
             qUtf8Printable(error->userInfo));
    context.rollback();
  }
  return !error;
}
