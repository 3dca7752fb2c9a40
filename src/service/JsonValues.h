#pragma once

#include "delivery/Quantity.h"

#include <QByteArray>
#include <QString>

#include <simdjson.h>
#include <string_view>

/// The JSON text that `body` holds: all of it but the mark of UTF-8 that some services put before
/// it.
std::string_view jsonTextOf(const QByteArray &body);

/// A value of an answer as a text: null reads as empty, numbers and booleans as their text.
/// Throws simdjson_error for an array or an object.
QString textOf(simdjson::dom::element value);

/// A value of an answer as a quantity: null reads as 0, a text as the number that it begins with.
/// Keeps the delivered form. Throws simdjson_error for an array or an object.
Quantity quantityOf(simdjson::dom::element value);
