#pragma once

#include "store/Picking.h"

#include <QByteArray>
#include <QTimeZone>

#include <vector>

/// The body of a `sendpick` request: a pretty-printed JSON array with one object a row. Pick times
/// are local times of `zone`, "yyyy-MM-dd HH:mm:ss".
///
/// The body is as many bytes long as its text has UTF-16 units. Kept on purpose: text that is not
/// ASCII makes it lose bytes at its end.
QByteArray sendPickBody(const std::vector<Picking> &rows, const QTimeZone &zone);
