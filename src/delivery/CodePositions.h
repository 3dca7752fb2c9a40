#pragma once

#include "delivery/PickRecords.h"

#include <QHash>
#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

/// Where each barcode and each item code first stands in a list of lines, found as fast in a long
/// list as in a short one.
class CodePositions {
 public:
  explicit CodePositions(const std::vector<BoxLine> &lines);

  /// The position of the first line whose barcode or item code is `code`, to the letter.
  [[nodiscard]] std::optional<std::size_t> find(const QString &code) const;

 private:
  QHash<QString, std::size_t> m_positions;
};
