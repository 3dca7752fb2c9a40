#pragma once

#include "delivery/PickingRules.h"
#include "store/Picking.h"

#include <QByteArray>
#include <QTimeZone>

#include <vector>

/// Returns the body of a `sendpick` request: an indented JSON array with one object per row, cut
/// unless `rules` send whole reports. Pick times are local times of `zone` in the form "yyyy-MM-dd
/// HH:mm:ss".
QByteArray sendPickBody(const std::vector<Picking> &rows, const QTimeZone &zone,
                        const PickingRules &rules = {});
