#pragma once

#include <QString>

/// The data kept of the service's last answer, to any call.
///
/// A picking takes its delivery number from here. If the catalogue is loaded between the lookup and
/// the start of the picking, the picking therefore has no number.
struct JsonResult {
  /// The value of "doc" in element 0 of the answer; a null string if there is none.
  QString doc;
};
