#pragma once

#include "delivery/Delivery.h"
#include "delivery/JsonResult.h"

#include <QByteArray>

#include <optional>

/// What is kept of `answer`, if it could be read.
std::optional<JsonResult> jsonResultOf(const std::optional<Delivery> &answer);

/// Reads the body of an answer to a lookup: a JSON array of objects. A missing or null text reads
/// as empty, a missing quantity as 0, a number where a text is expected as its text and a text
/// where a number is expected as its number. Nothing if the body is not UTF-8, not JSON, or JSON of
/// another shape.
std::optional<Delivery> parseDeliveryAnswer(const QByteArray &body);
