#include "http/client_waits.h"

#include <algorithm>
#include <utility>

namespace cartonpick::orders {

ClientWaits::Wait::Wait(ClientWaits &waits, const boost::asio::ip::address &address, bool isExempt,
                        std::function<void()> drop)
    : m_waits(waits),
      m_entry(waits.m_entries.insert(waits.m_entries.end(), {this, address, std::move(drop)})) {
  const std::size_t count = ++waits.m_counts[address];
  if (!isExempt && count > waits.m_limits.ofOneAddress) {
    waits.dropLongestOf(address);
  }
}

ClientWaits::Wait::~Wait() {
  if (m_isListed) {
    m_waits.remove(m_entry);
  }
}

void ClientWaits::Wait::setBytes(std::size_t bytes) {
  if (!m_isListed) {
    return;
  }
  m_waits.m_bytes += bytes - std::exchange(m_entry->bytes, bytes);
  // The last one may hold as much as a request or an answer takes.
  while (m_waits.m_bytes > m_waits.m_limits.bytes && m_waits.m_entries.size() > 1) {
    m_waits.dropLongest();
  }
}

bool ClientWaits::dropLongest() {
  if (m_entries.empty()) {
    return false;
  }
  drop(m_entries.begin());
  return true;
}

void ClientWaits::remove(Entries::iterator entry) {
  m_bytes -= entry->bytes;
  const auto count = m_counts.find(entry->address);
  if (--count->second == 0) {
    m_counts.erase(count);
  }
  entry->wait->m_isListed = false;
  m_entries.erase(entry);
}

void ClientWaits::drop(Entries::iterator entry) {
  const auto drop = std::move(entry->drop);
  remove(entry);
  drop();
}

void ClientWaits::dropLongestOf(const boost::asio::ip::address &address) {
  const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                  [&](const Entry &one) { return one.address == address; });
  drop(entry);
}

}  // namespace cartonpick::orders
