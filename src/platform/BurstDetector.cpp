#include "platform/BurstDetector.h"

#include <utility>

bool BurstDetector::type(const QString &text, std::uint64_t time) {
  const bool goesOn = isInTime(time);
  if (!goesOn) {
    m_code.clear();
  }
  m_code += text;
  m_lastTime = time;
  return goesOn;
}

std::optional<QString> BurstDetector::pressReturn(std::uint64_t time) {
  const QString code = std::exchange(m_code, QString());
  if (!isInTime(time) || code.size() < kShortestCode) {
    return std::nullopt;
  }
  return code;
}

bool BurstDetector::isInTime(std::uint64_t time) const {
  return time >= m_lastTime && time - m_lastTime <= kLongestGap;
}
