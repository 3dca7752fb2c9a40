#include "base/Int32.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr std::int64_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kMax = std::numeric_limits<std::int32_t>::max();

bool isAsciiDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

}  // namespace

std::int32_t intValue(QStringView text) {
  qsizetype i = 0;
  while (i < text.size() && text[i].isSpace()) {
    ++i;
  }
  bool negative = false;
  if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) {
    negative = text[i] == u'-';
    ++i;
  }
  std::int64_t value = 0;
  for (; i < text.size() && isAsciiDigit(text[i]); ++i) {
    value = std::min(value * 10 + (text[i].unicode() - u'0'), kMax + 1);
  }
  return static_cast<std::int32_t>(std::clamp(negative ? -value : value, kMin, kMax));
}

std::int32_t clampToInt32(double value) {
  if (std::isnan(value)) {
    return 0;
  }
  return static_cast<std::int32_t>(
      std::clamp(value, static_cast<double>(kMin), static_cast<double>(kMax)));
}
