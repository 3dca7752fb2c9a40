#pragma once

#include "store/Picking.h"

#include <QByteArray>
#include <QTimeZone>

#include <vector>

/// Returns the body of a `sendpick` request: an indented JSON array with one object per row, cut by
/// `PickingRules::cutReport`. Pick times are local times in `zone`, "yyyy-MM-dd HH:mm:ss".
QByteArray sendPickBody(const std::vector<Picking> &rows, const QTimeZone &zone);
