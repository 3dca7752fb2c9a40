#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>

/// One item line of one box of one delivery that has been picked at least once. A text that the
/// row lacks is a null string.
struct Picking {
  /// The row's place in the store; 0 for a row that is not stored yet.
  std::int64_t rowId = 0;
  QString barcode = {};
  QString box = {};
  /// When the line was first recorded, in UTC; invalid if the row lacks it.
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
