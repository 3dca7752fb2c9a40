#include "pages/login_session.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <random>
#include <span>
#include <stdexcept>

namespace cartonpick::orders {

namespace {

constexpr char kSeparator = '-';

std::string inHex(std::span<const unsigned char> bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const unsigned char byte : bytes) {
    text += {kDigits[byte / 16], kDigits[byte % 16]};
  }
  return text;
}

std::string signatureOf(std::string_view text, const std::string &token) {
  std::array<unsigned char, EVP_MAX_MD_SIZE> bytes{};
  unsigned size = 0;
  const std::basic_string<unsigned char> message(text.begin(), text.end());
  if (HMAC(EVP_sha256(), token.data(), static_cast<int>(token.size()), message.data(),
           message.size(), bytes.data(), &size) == nullptr) {
    throw std::runtime_error("a session can't be signed");
  }
  return inHex({bytes.data(), size});
}

std::int64_t secondsOf(LoginSession::Clock::time_point time) {
  return std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch()).count();
}

/// Two sessions of one second differ.
std::string nonce() {
  std::random_device random;
  return std::to_string(random()) + std::to_string(random());
}

}  // namespace

std::string LoginSession::begin(const std::string &token, Clock::time_point now) {
  const std::string text = std::to_string(secondsOf(now + kDuration)) + kSeparator + nonce();
  return text + kSeparator + signatureOf(text, token);
}

bool LoginSession::isValid(std::string_view text, const std::string &token, Clock::time_point now) {
  const auto signature = text.rfind(kSeparator);
  if (signature == std::string_view::npos ||
      !areEqual(text.substr(signature + 1), signatureOf(text.substr(0, signature), token))) {
    return false;
  }
  std::int64_t end = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + signature, end);
  return error == std::errc() && *rest == kSeparator && secondsOf(now) < end;
}

bool areEqual(std::string_view a, std::string_view b) {
  unsigned difference = a.size() == b.size() ? 0 : 1;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    difference |= static_cast<unsigned char>(a[i]) ^ static_cast<unsigned char>(b[i]);
  }
  return difference == 0;
}

}  // namespace cartonpick::orders
