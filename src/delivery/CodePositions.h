#pragma once

#include "delivery/PickRecords.h"

#include <QHash>
#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

/// A hash index over a list of lines: the first position of each barcode and item code.
class CodePositions {
 public:
  explicit CodePositions(const std::vector<BoxLine> &lines);

  /// Returns the position of the first line whose barcode or item code equals `code`
  /// (case-sensitive).
  [[nodiscard]] std::optional<std::size_t> find(const QString &code) const;

 private:
  QHash<QString, std::size_t> m_positions;
};
