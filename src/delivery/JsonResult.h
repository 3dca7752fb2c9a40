#pragma once

#include <QString>

/// The data kept from the service's last answer, to either a lookup or a catalogue download.
///
/// A picking takes its delivery number from here. If the catalogue is loaded between the lookup and
/// the start of the picking, the picking has no number, because a catalogue has no "doc".
struct JsonResult {
  /// The value of "doc" in element 0 of the answer; a null string if there is none.
  QString doc;
};
