#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>

/// A line (one item in one box of one delivery) that has been picked at least once. A NULL column
/// is a null string.
struct Picking {
  /// The row ID; 0 for a row that is not stored yet.
  std::int64_t rowId = 0;
  QString barcode = {};
  QString box = {};
  /// The time of the first pick, in UTC; invalid if NULL.
  QDateTime datepicked = {};
  QString descr = {};
  QString doc = {};
  QString item = {};
  QString ordernum = {};
  std::int32_t orderqty = 0;
  std::int32_t pickqty = 0;
  /// 0: not yet sent to the service; 1: sent.
  std::int32_t sent = 0;
};
