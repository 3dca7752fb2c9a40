#pragma once

#include "delivery/PickingRules.h"

class ManagedObjectContext;

/// Saves `context` if it has changes. If that fails, it aborts the process as `saveOrAbort` does;
/// or, if `rules` survive failed saves, drops the changes and returns false.
bool saveByRules(ManagedObjectContext &context, const PickingRules &rules);
