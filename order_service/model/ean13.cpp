#include "model/ean13.h"

namespace cartonpick::orders {

char ean13CheckDigit(std::string_view digits) {
  int sum = 0;
  int weight = 1;
  for (const char digit : digits) {
    sum += weight * (digit - '0');
    weight = 4 - weight;  // 1, 3, 1, 3, ...
  }
  return static_cast<char>('0' + (10 - sum % 10) % 10);
}

std::string ean13(std::string_view digits) {
  return std::string(digits) + ean13CheckDigit(digits);
}

}  // namespace cartonpick::orders
