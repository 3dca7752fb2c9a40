#pragma once

#include <QString>

/// What is kept of the last answer of the service, whichever call it answered.
///
/// A picking takes its delivery number from here. So a catalogue that is loaded between a lookup
/// and the start of the picking leaves the picking without a number, until the next lookup.
struct JsonResult {
  /// "doc" of element 0 of the answer; a null string if it has none.
  QString doc;
};
