#include "delivery/CodePositions.h"

CodePositions::CodePositions(const std::vector<BoxLine> &lines) {
  m_positions.reserve(2 * static_cast<qsizetype>(lines.size()));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    for (const QString &code : {lines[i].barcode, lines[i].item}) {
      if (!m_positions.contains(code)) {
        m_positions.insert(code, i);
      }
    }
  }
}

std::optional<std::size_t> CodePositions::find(const QString &code) const {
  const auto position = m_positions.constFind(code);
  return position == m_positions.cend() ? std::nullopt : std::optional(*position);
}
