#include "http/client_address.h"

#include "model/input_error.h"

#include <algorithm>
#include <boost/asio/ip/network_v4.hpp>
#include <boost/asio/ip/network_v6.hpp>
#include <boost/beast/core/string.hpp>
#include <charconv>
#include <optional>
#include <string_view>

namespace cartonpick::orders {

namespace {

namespace ip = boost::asio::ip;

/// An IPv4 address stays one where it is written as an IPv6 address.
ip::address plain(const ip::address &address) {
  return address.is_v6() && address.to_v6().is_v4_mapped()
             ? ip::address(ip::make_address_v4(ip::v4_mapped, address.to_v6()))
             : address;
}

std::string_view trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  return text.substr(0, text.find_last_not_of(" \t") + 1);
}

std::vector<std::string_view> partsOf(std::string_view list, char separator) {
  std::vector<std::string_view> parts;
  while (true) {
    const auto end = std::min(list.find(separator), list.size());
    parts.push_back(trimmed(list.substr(0, end)));
    if (end == list.size()) {
      return parts;
    }
    list.remove_prefix(end + 1);
  }
}

/// The address without quotation marks, brackets and port; nothing if it is none.
std::optional<ip::address> addressOf(std::string_view text) {
  if (text.size() > 1 && text.front() == '"' && text.back() == '"') {
    text = text.substr(1, text.size() - 2);
  }
  if (text.starts_with('[')) {
    text = text.substr(1, text.find(']') - 1);
  } else if (std::count(text.begin(), text.end(), ':') == 1) {
    text = text.substr(0, text.find(':'));
  }
  boost::system::error_code error;
  const ip::address address = ip::make_address(std::string(text), error);
  return error ? std::nullopt : std::optional(plain(address));
}

/// The value of "for" in an element of Forwarded; empty without one.
std::string_view forOf(std::string_view element) {
  constexpr std::string_view kFor = "for=";
  for (const std::string_view pair : partsOf(element, ';')) {
    const auto name = pair.substr(0, kFor.size());
    if (boost::beast::iequals({name.data(), name.size()}, {kFor.data(), kFor.size()})) {
      return pair.substr(kFor.size());
    }
  }
  return {};
}

template <class Network>
bool isIn(const Network &network, const Network &host) {
  return host == network || host.is_subnet_of(network);
}

}  // namespace

TrustedProxies::TrustedProxies(const std::vector<std::string> &networks) {
  std::transform(networks.begin(), networks.end(), std::back_inserter(m_networks), networkOf);
}

TrustedProxies::Network TrustedProxies::networkOf(const std::string &text) {
  constexpr unsigned short kBitsOfV4 = 32;
  constexpr unsigned short kBitsOfV6 = 128;
  const auto slash = text.find('/');
  boost::system::error_code error;
  const ip::address address = ip::make_address(text.substr(0, slash), error);
  const unsigned short bits = address.is_v4() ? kBitsOfV4 : kBitsOfV6;
  unsigned short length = bits;
  const char *const end = text.data() + text.size();
  if (slash != std::string::npos) {
    const auto [rest, bad] = std::from_chars(text.data() + slash + 1, end, length);
    if (bad != std::errc() || rest != end || length > bits) {
      error = boost::asio::error::invalid_argument;
    }
  }
  if (error) {
    throw InputError("\"" + text + "\" is neither an IP address nor a network");
  }
  return {address, length};
}

bool TrustedProxies::contains(const ip::address &address) const {
  constexpr unsigned short kBitsOfV4 = 32;
  constexpr unsigned short kBitsOfV6 = 128;
  const ip::address host = plain(address);
  return std::any_of(m_networks.begin(), m_networks.end(), [&](const Network &network) {
    if (host.is_v4() != network.address.is_v4()) {
      return false;
    }
    return host.is_v4()
               ? isIn(ip::network_v4(network.address.to_v4(), network.prefixLength).canonical(),
                      ip::network_v4(host.to_v4(), kBitsOfV4))
               : isIn(ip::network_v6(network.address.to_v6(), network.prefixLength).canonical(),
                      ip::network_v6(host.to_v6(), kBitsOfV6));
  });
}

std::string TrustedProxies::clientOf(const ip::address &peer,
                                     const ForwardingFields &fields) const {
  ip::address client = plain(peer);
  const bool isContradictory = !fields.forwarded.empty() && !fields.forwardedFor.empty();
  const bool isForwarded = !fields.forwarded.empty() || !fields.forwardedFor.empty();
  if (isContradictory || !isForwarded || !contains(client)) {
    return client.to_string();
  }
  const bool isStandard = !fields.forwarded.empty();
  const auto hops = partsOf(isStandard ? fields.forwarded : fields.forwardedFor, ',');
  for (auto hop = hops.rbegin(); hop != hops.rend() && contains(client); ++hop) {
    const auto address = addressOf(isStandard ? forOf(*hop) : *hop);
    if (!address) {
      break;
    }
    client = *address;
  }
  return client.to_string();
}

}  // namespace cartonpick::orders
