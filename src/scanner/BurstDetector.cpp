#include "scanner/BurstDetector.h"

#include <utility>

bool BurstDetector::type(const QString &text, std::uint64_t time) {
  const std::optional<std::uint64_t> gap = sinceLastKey(time);
  const bool goesOn = !m_code.isEmpty() && gap && *gap <= longestGap();
  if (!goesOn) {
    m_code.clear();
    m_isAfterPause = !gap || *gap >= kPause;
  }
  m_code += text;
  m_lastTime = time;
  return goesOn;
}

std::optional<Burst> BurstDetector::pressReturn(std::uint64_t time) {
  const std::optional<std::uint64_t> gap = sinceLastKey(time);
  const bool isInTime = gap && *gap <= longestGap();
  const QString code = std::exchange(m_code, QString());
  m_lastTime.reset();
  if (!isInTime || code.size() < kShortestCode) {
    return std::nullopt;
  }
  return Burst{code, m_isAfterPause};
}

std::optional<std::uint64_t> BurstDetector::sinceLastKey(std::uint64_t time) const {
  return m_lastTime && time >= *m_lastTime ? std::optional(time - *m_lastTime) : std::nullopt;
}
