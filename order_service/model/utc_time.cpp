#include "model/utc_time.h"

#include <chrono>
#include <ctime>
#include <iomanip>
#include <sstream>

namespace cartonpick::orders {

std::string utcTime() {
  using std::chrono::microseconds;
  const auto time = std::chrono::system_clock::now();
  const std::time_t second = std::chrono::system_clock::to_time_t(time);
  const auto fraction =
      std::chrono::duration_cast<microseconds>(time.time_since_epoch()) % std::chrono::seconds(1);
  std::tm parts{};
  ::gmtime_r(&second, &parts);
  std::ostringstream text;
  text << std::put_time(&parts, "%F %T.") << std::setw(6) << std::setfill('0') << fraction.count();
  return text.str();
}

}  // namespace cartonpick::orders
