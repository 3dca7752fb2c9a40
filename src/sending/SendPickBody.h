#pragma once

#include "store/Picking.h"

#include <QByteArray>
#include <QTimeZone>

#include <vector>

/// The body of a `sendpick` request: a pretty-printed JSON array with one object a row. Pick times
/// are local times of `zone`, "yyyy-MM-dd HH:mm:ss". The length is that of
/// PickingRules::cutReport.
QByteArray sendPickBody(const std::vector<Picking> &rows, const QTimeZone &zone);
