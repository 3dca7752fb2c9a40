#pragma once

#include "http/request_head.h"

#include <boost/asio/ip/address.hpp>
#include <string>
#include <vector>

namespace cartonpick::orders {

/// The proxies that are believed when they say for whom they forward.
class TrustedProxies {
 public:
  /// Takes IP addresses, and networks such as 10.0.0.0/24. Throws InputError for anything else.
  explicit TrustedProxies(const std::vector<std::string> &networks = {});

  bool contains(const boost::asio::ip::address &address) const;

  /// Returns the address of the client that a request comes from: of the addresses that
  /// X-Forwarded-For or Forwarded name, the last one that is no trusted proxy's. Returns the peer
  /// itself if it is not trusted, or if the fields cannot be read or contradict each other.
  std::string clientOf(const boost::asio::ip::address &peer, const ForwardingFields &fields) const;

 private:
  struct Network {
    boost::asio::ip::address address;
    unsigned short prefixLength;
  };

  static Network networkOf(const std::string &text);

  std::vector<Network> m_networks;
};

}  // namespace cartonpick::orders
