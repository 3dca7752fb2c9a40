#include "http/client_address.h"

#include "model/input_error.h"

#include <gtest/gtest.h>

namespace cartonpick::orders {

namespace {

boost::asio::ip::address address(const std::string &text) {
  return boost::asio::ip::make_address(text);
}

ForwardingFields forwardedFor(const std::string &list) {
  return {.forwarded = {}, .forwardedFor = list, .requestId = {}};
}

ForwardingFields forwarded(const std::string &list) {
  return {.forwarded = list, .forwardedFor = {}, .requestId = {}};
}

}  // namespace

TEST(TrustedProxies, AreAddressesAndNetworks) {
  const TrustedProxies proxies({"10.0.0.7", "192.168.0.0/16", "fd00::/8"});
  for (const std::string trusted :
       {"10.0.0.7", "192.168.0.0", "192.168.255.255", "fd12::1", "::ffff:10.0.0.7"}) {
    EXPECT_TRUE(proxies.contains(address(trusted))) << trusted;
  }
  for (const std::string other : {"10.0.0.8", "192.169.0.0", "fe80::1", "::1", "127.0.0.1"}) {
    EXPECT_FALSE(proxies.contains(address(other))) << other;
  }
}

TEST(TrustedProxies, MustBeAddresses) {
  for (const std::string wrong :
       {"", "proxy.example", "10.0.0.0/33", "10.0.0.0/", "10.0.0.0/x", "10.0.0.0/8/8", "::1/129"}) {
    EXPECT_THROW(TrustedProxies({wrong}), InputError) << wrong;
  }
}

TEST(TrustedProxies, NameTheClient) {
  const TrustedProxies proxies({"10.0.0.7", "10.0.0.8"});
  const auto client = [&](const ForwardingFields &fields) {
    return proxies.clientOf(address("10.0.0.7"), fields);
  };
  EXPECT_EQ(client(forwardedFor("1.2.3.4")), "1.2.3.4");
  EXPECT_EQ(client(forwardedFor("9.9.9.9, 1.2.3.4, 10.0.0.8")), "1.2.3.4");
  EXPECT_EQ(client(forwardedFor("1.2.3.4:5678")), "1.2.3.4");
  EXPECT_EQ(client(forwarded("for=9.9.9.9, For=\"[2001:db8::1]:47\";proto=http")), "2001:db8::1");
  EXPECT_EQ(client({}), "10.0.0.7");
}

TEST(TrustedProxies, IgnoreFieldsThatCannotBeParsed) {
  const TrustedProxies proxies({"10.0.0.7"});
  const auto client = [&](const ForwardingFields &fields) {
    return proxies.clientOf(address("10.0.0.7"), fields);
  };
  EXPECT_EQ(client(forwardedFor("unknown")), "10.0.0.7");
  EXPECT_EQ(client(forwarded("for=_hidden")), "10.0.0.7");
  EXPECT_EQ(client({.forwarded = "for=1.1.1.1", .forwardedFor = "2.2.2.2", .requestId = {}}),
            "10.0.0.7");
}

TEST(TrustedProxies, AreTheOnlyPeersWhoseFieldsCount) {
  EXPECT_EQ(TrustedProxies({"10.0.0.7"}).clientOf(address("1.2.3.4"), forwardedFor("5.6.7.8")),
            "1.2.3.4");
  EXPECT_EQ(TrustedProxies().clientOf(address("127.0.0.1"), forwarded("for=5.6.7.8")), "127.0.0.1");
}

}  // namespace cartonpick::orders
