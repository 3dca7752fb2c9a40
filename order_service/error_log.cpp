#include "error_log.h"

#include <ostream>

namespace cartonpick::orders {

void ErrorLog::write(const std::string &text) {
  const std::lock_guard lock(m_mutex);
  const Clock::time_point now = Clock::now();
  std::erase_if(m_written, [&](const auto &written) { return now - written.second >= kRepeat; });
  if (m_written.try_emplace(text, now).second) {
    m_out << "cartonpick-orders: " << text << std::endl;
  }
}

}  // namespace cartonpick::orders
