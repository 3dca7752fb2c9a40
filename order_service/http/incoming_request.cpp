#include "http/incoming_request.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>

namespace cartonpick::orders {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kHeadEnd = "\r\n\r\n";

/// A sender that is refused reads the answer once all that it announced is gone; up to here.
constexpr std::size_t kMaxSkipped = 4 * IncomingRequest::kMaxBodyBytes;

/// Chunks of one byte take six.
constexpr std::size_t kMaxChunkedBytes = 6 * IncomingRequest::kMaxBodyBytes;

bool areEqualWords(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
    return std::tolower(x) == std::tolower(y);
  });
}

std::string_view trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  return text.substr(0, text.find_last_not_of(" \t") + 1);
}

/// The value of the first field of that name in a head; nothing without one.
std::optional<std::string_view> fieldOf(std::string_view head, std::string_view name) {
  while (!head.empty()) {
    const std::string_view line = head.substr(0, head.find(kLineEnd));
    const auto colon = line.find(':');
    if (colon != std::string_view::npos && areEqualWords(line.substr(0, colon), name)) {
      return trimmed(line.substr(colon + 1));
    }
    head.remove_prefix(std::min(line.size() + kLineEnd.size(), head.size()));
  }
  return std::nullopt;
}

/// The number that the text begins with, in that base; nothing if it is none, or too large.
std::optional<std::size_t> numberOf(std::string_view text, int base) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  return error == std::errc() ? std::optional(number) : std::nullopt;
}

}  // namespace

void IncomingRequest::append(std::string_view bytes) {
  if (m_bodyBegin != 0 && m_bodyBytes > kMaxBodyBytes) {
    m_skipped += bytes.size();
  } else {
    m_bytes += bytes;
  }
  if (m_bodyBegin == 0) {
    readHead();
  }
  look();
}

void IncomingRequest::readHead() {
  const auto end = m_bytes.find(kHeadEnd);
  if (end == std::string::npos) {
    return;
  }
  m_bodyBegin = end + kHeadEnd.size();
  m_chunk = m_bodyBegin;
  const std::string_view head = std::string_view(m_bytes).substr(0, end);
  const auto coding = fieldOf(head, "Transfer-Encoding");
  m_isChunked = coding && areEqualWords(*coding, "chunked");
  m_bodyBytes =
      m_isChunked ? 0 : numberOf(fieldOf(head, "Content-Length").value_or("0"), 10).value_or(0);
  if (m_bodyBytes > kMaxBodyBytes) {
    m_skipped = m_bytes.size() - m_bodyBegin;
    m_bytes.resize(m_bodyBegin);
  }
}

void IncomingRequest::skipChunks() {
  const std::string_view bytes = m_bytes;
  while (!m_isWhole) {
    const auto line = bytes.find(kLineEnd, m_chunk);
    if (line == std::string_view::npos) {
      return;
    }
    const auto size = numberOf(bytes.substr(m_chunk, line - m_chunk), 16);
    if (!size || *size > kMaxBodyBytes) {
      m_isWhole = true;
    } else if (*size == 0) {
      // Fields may follow; an empty line ends them.
      m_isWhole = bytes.find(kHeadEnd, line) != std::string_view::npos;
      return;
    } else if (const auto next = line + 2 * kLineEnd.size() + *size; next <= bytes.size()) {
      m_chunk = next;
    } else {
      return;
    }
  }
}

void IncomingRequest::look() {
  if (m_bodyBegin == 0) {
    m_isWhole = m_bytes.size() > kMaxHeadBytes;
  } else if (m_isChunked) {
    skipChunks();
    m_isWhole = m_isWhole || m_bytes.size() - m_bodyBegin > kMaxChunkedBytes;
  } else {
    const std::size_t arrived = m_bytes.size() - m_bodyBegin + m_skipped;
    m_isWhole = arrived >= std::min(m_bodyBytes, kMaxSkipped);
  }
}

}  // namespace cartonpick::orders
