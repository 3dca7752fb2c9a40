#pragma once

#include "delivery/Quantity.h"

#include <QByteArray>
#include <QString>

#include <simdjson.h>
#include <string_view>

/// Returns `body` without the UTF-8 byte order mark that some services prepend. The result refers
/// to the bytes of `body`.
std::string_view jsonTextOf(const QByteArray &body);

/// Converts a JSON value to a string: null to an empty one, a number to its digits, a boolean to
/// "1" or "0". Throws simdjson_error for an array or an object.
QString textOf(simdjson::dom::element value);

/// Converts a JSON value to a quantity: null to 0, a string to the number at its beginning. Keeps
/// the received text. Throws simdjson_error for an array or an object.
Quantity quantityOf(simdjson::dom::element value);
