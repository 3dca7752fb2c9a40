#pragma once

#include <boost/asio/ip/address.hpp>
#include <cstddef>
#include <functional>
#include <list>
#include <map>

namespace cartonpick::orders {

/// The connections that wait for their client: idle ones, those with an incomplete request, and
/// those whose answer the client has not read. If one address has too many, or all hold too many
/// bytes, the connection that has waited longest is dropped. Not thread-safe.
class ClientWaits {
  struct Entry;

 public:
  struct Limits {
    std::size_t ofOneAddress;
    std::size_t bytes;
  };

  /// One connection's wait, from construction to destruction.
  class Wait {
   public:
    /// `drop` is called, once at most, when the connection is to be closed. An address that is
    /// exempt may have any number of connections.
    Wait(ClientWaits &waits, const boost::asio::ip::address &address, bool isExempt,
         std::function<void()> drop);
    Wait(const Wait &) = delete;
    Wait &operator=(const Wait &) = delete;
    ~Wait();

    /// Says how many bytes the connection holds now. May drop this connection, or others.
    void setBytes(std::size_t bytes);

   private:
    friend class ClientWaits;

    ClientWaits &m_waits;
    bool m_isListed = true;
    std::list<Entry>::iterator m_entry;
  };

  explicit ClientWaits(const Limits &limits) : m_limits(limits) {}

  /// Drops the connection that has waited longest. Returns false if none waits.
  bool dropLongest();

 private:
  struct Entry {
    Wait *wait;
    boost::asio::ip::address address;
    std::function<void()> drop;
    std::size_t bytes = 0;
  };
  using Entries = std::list<Entry>;

  void remove(Entries::iterator entry);
  void drop(Entries::iterator entry);
  void dropLongestOf(const boost::asio::ip::address &address);

  Limits m_limits;
  Entries m_entries;  ///< the one that has waited longest first
  std::map<boost::asio::ip::address, std::size_t> m_counts;
  std::size_t m_bytes = 0;
};

}  // namespace cartonpick::orders
