#pragma once

#include "delivery/Delivery.h"
#include "delivery/JsonResult.h"

#include <QByteArray>

#include <optional>

/// Returns the data to keep from `answer`; std::nullopt if the answer could not be parsed.
std::optional<JsonResult> jsonResultOf(const std::optional<Delivery> &answer);

/// Parses the answer to a lookup: a JSON array of objects. A missing or null string reads as an
/// empty one, a missing or null quantity as 0; numbers and strings are converted to each other as
/// needed. Returns std::nullopt if the body is not UTF-8, not JSON, or has a different structure.
std::optional<Delivery> parseDeliveryAnswer(const QByteArray &body);
