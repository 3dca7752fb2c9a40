#include "store/sql_address.h"

#include "model/input_error.h"

#include <algorithm>
#include <libpq-fe.h>
#include <memory>
#include <string_view>

namespace cartonpick::orders {

namespace {

using Options = std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)>;

constexpr std::string_view kScheme = "postgresql://";

bool isPostgres(std::string_view text) {
  return text.starts_with(kScheme) || text.starts_with("postgres://");
}

/// Returns null if the text is neither a URL nor keywords and values.
Options parsed(const std::string &text) {
  return {PQconninfoParse(text.c_str(), nullptr), &PQconninfoFree};
}

[[noreturn]] void refuseUrl() {
  throw InputError(
      "the store's URL is not valid; in its user and password the characters % / : ? @ are "
      "written as %25 %2F %3A %3F %40");
}

/// libpq marks what its users must not show.
bool isSecret(const PQconninfoOption &option) {
  return std::string_view(option.dispchar) == "*";
}

std::vector<std::string> itemsOf(const std::string &list) {
  std::vector<std::string> items(1);
  for (const char c : list) {
    if (c == ',') {
      items.emplace_back();
    } else {
      items.back() += c;
    }
  }
  return items;
}

void replaceAll(std::string &text, const std::string &from, std::string_view to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

/// Hosts with their ports, as a URL has them; one port may be that of all hosts.
std::string hostsAndPorts(const std::string &hosts, const std::string &ports) {
  const std::vector<std::string> portItems = itemsOf(ports);
  std::string text;
  std::size_t index = 0;
  for (const std::string &host : itemsOf(hosts)) {
    const std::string &port = portItems[std::min(index, portItems.size() - 1)];
    text += (index == 0 ? "" : ",") + host + (port.empty() ? "" : ':' + port);
    ++index;
  }
  return text;
}

}  // namespace

SqlAddress::SqlAddress(const std::string &where)
    : m_dialect(isPostgres(where) ? SqlDialect::Postgres : SqlDialect::Sqlite) {
  if (m_dialect == SqlDialect::Postgres) {
    parse(where);
    return;
  }
  const bool isOtherUrl = where.find("://") != std::string::npos && !where.starts_with("file:");
  if (isOtherUrl || (!where.empty() && parsed(where))) {
    throw InputError("the store is neither a file nor a URL that starts with postgresql://");
  }
  m_file = where;
}

void SqlAddress::parse(const std::string &url) {
  const Options options = parsed(url);
  if (!options) {
    refuseUrl();
  }
  for (const PQconninfoOption *option = options.get(); option->keyword != nullptr; ++option) {
    if (option->val != nullptr) {
      m_parameters[option->keyword] = option->val;
      if (isSecret(*option) && *option->val != '\0') {
        m_secrets.emplace_back(option->val);
      }
    }
  }
  // A password with "@" or "/" in it continues where host, port and database are expected. A host
  // that begins with "@" is an abstract socket.
  if (value("host").find('@', 1) != std::string::npos ||
      value("dbname").find('@') != std::string::npos ||
      value("port").find_first_not_of("0123456789,") != std::string::npos) {
    refuseUrl();
  }
}

std::string SqlAddress::value(const std::string &keyword) const {
  const auto found = m_parameters.find(keyword);
  return found == m_parameters.end() ? std::string() : found->second;
}

std::string SqlAddress::shown() const {
  if (m_dialect == SqlDialect::Sqlite) {
    return m_file;
  }
  const std::string hosts = value(m_parameters.contains("host") ? "host" : "hostaddr");
  const bool isFolder = hosts.find('/') != std::string::npos;
  const std::string url = std::string(kScheme) +
                          (isFolder ? std::string() : hostsAndPorts(hosts, value("port"))) + '/' +
                          value("dbname");
  return isFolder ? url + "?host=" + hosts : url;
}

std::string SqlAddress::withoutSecrets(std::string message) const {
  for (const std::string &secret : m_secrets) {
    replaceAll(message, secret, "***");
  }
  return message;
}

}  // namespace cartonpick::orders
