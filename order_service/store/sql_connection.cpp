#include "store/sql_connection.h"

#include "store/postgres_socket.h"
#include "store/sql_words.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <soci/postgresql/soci-postgresql.h>
#include <soci/sqlite3/soci-sqlite3.h>

namespace cartonpick::orders {

namespace {

/// The connection parameters that hold where a URL has no others.
const std::map<std::string, std::string> kPostgresDefaults = {
    {"application_name", "cartonpick-orders"},
    {"connect_timeout", "3"},
    {"keepalives_idle", "5"},
    {"tcp_user_timeout", "10000"},
};

/// Settings of the server. An instance that hangs in a transaction does not keep the delivery from
/// the others. To compile a search would take as long as to run it.
std::string postgresSettings(const StoreLimits &limits) {
  return "-c client_min_messages=warning -c jit=off -c idle_in_transaction_session_timeout=20s"
         " -c lock_timeout=" +
         std::to_string(limits.lock.count()) +
         " -c statement_timeout=" + std::to_string(limits.statement.count());
}

/// SOCI reads a value in quotes up to the next quote.
std::string quoted(const std::string &file) {
  if (file.find('"') != std::string::npos) {
    throw soci::soci_error("a file name with a quotation mark can't be used");
  }
  return '"' + file + '"';
}

/// The value as libpq's connection strings have it.
std::string escaped(const std::string &value) {
  std::string text = "'";
  for (const char c : value) {
    text += c == '\'' || c == '\\' ? std::string{'\\', c} : std::string{c};
  }
  return text + '\'';
}

bool hasSeveralHosts(const std::map<std::string, std::string> &parameters) {
  return std::any_of(parameters.begin(), parameters.end(), [](const auto &parameter) {
    return parameter.first.starts_with("host") && parameter.second.find(',') != std::string::npos;
  });
}

/// What the URL says comes last, as the last one of several settings counts.
std::map<std::string, std::string> withDefaults(std::map<std::string, std::string> parameters,
                                                const StoreLimits &limits) {
  std::string &options = parameters["options"];
  options = postgresSettings(limits) + (options.empty() ? "" : ' ' + options);
  parameters.insert(kPostgresDefaults.begin(), kPostgresDefaults.end());
  if (hasSeveralHosts(parameters)) {
    parameters.try_emplace("target_session_attrs", "read-write");
  }
  return parameters;
}

std::string connectionString(const SqlAddress &address, const StoreLimits &limits) {
  std::string text;
  for (const auto &[keyword, value] : withDefaults(address.parameters(), limits)) {
    text += keyword + '=' + escaped(value) + ' ';
  }
  return text;
}

soci::connection_parameters parametersOf(const SqlAddress &address, const StoreLimits &limits) {
  if (address.dialect() == SqlDialect::Postgres) {
    return {soci::postgresql, connectionString(address, limits)};
  }
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(limits.lock);
  return {soci::sqlite3,
          "timeout=" + std::to_string(seconds.count()) + " db=" + quoted(address.file())};
}

/// The file keeps that it has a write-ahead log.
void switchToLog(soci::session &session) {
  try {
    session << "PRAGMA journal_mode = WAL";
  } catch (const soci::soci_error &) {
    // Another one, which opens the new file as well, is doing it; if not, the next statement fails.
  }
}

}  // namespace

/// A statement with what it takes and gives.
struct SqlConnection::Lookup {
  explicit Lookup(soci::session &session)
      : select(
            // The databases count what was sent once, not for every line.
            (session.prepare << "SELECT customer, brand, order_date, shipping_date, delivery, "
                                "order_no, barcode, item, description, quantity, box, "
                                "(SELECT count(*) FROM (SELECT 1 FROM picked_line "
                                "WHERE delivery = :sent AND NOT "
                             << kIsUndone
                             << " LIMIT 1) AS sent) "
                                "FROM order_line WHERE delivery = :delivery ORDER BY position",
             soci::use(delivery), soci::use(delivery), soci::into(line.customer),
             soci::into(line.brand), soci::into(line.orderDate), soci::into(line.shippingDate),
             soci::into(line.delivery), soci::into(line.order), soci::into(line.article.barcode),
             soci::into(line.article.item), soci::into(line.article.description),
             soci::into(line.quantity), soci::into(line.carton), soci::into(sent))) {}

  std::string delivery;
  OrderLine line;
  int sent = 0;
  soci::statement select;
};

SqlConnection::SqlConnection(const SqlAddress &address, const StoreLimits &limits)
    : m_dialect(address.dialect()), m_session(parametersOf(address, limits)) {
  if (address.dialect() == SqlDialect::Postgres) {
    m_socket = std::make_unique<PostgresSocket>(
        static_cast<soci::postgresql_session_backend *>(m_session.get_backend())->conn_);
  } else {
    addClock(m_session);
    switchToLog(m_session);
    m_session << "PRAGMA synchronous = FULL";
  }
}

SqlConnection::~SqlConnection() = default;

void SqlConnection::interrupt() noexcept {
  if (m_socket) {
    m_socket->shutDown();
    m_socket->cancel();
  } else {
    sqlite3_interrupt(static_cast<soci::sqlite3_session_backend *>(m_session.get_backend())->conn_);
  }
}

void SqlConnection::liftLimits() {
  if (m_socket) {
    m_session << "SET LOCAL statement_timeout = 0";
    m_session << "SET LOCAL lock_timeout = '30s'";
  }
}

Delivery SqlConnection::delivery(const std::string &number) {
  if (!m_lookup) {
    m_lookup = std::make_unique<Lookup>(m_session);
  }
  Delivery found;
  m_lookup->delivery = number;
  m_lookup->select.execute();
  // To the end: a statement that waits at a row would keep its view of the database.
  while (m_lookup->select.fetch()) {
    found.lines.push_back(m_lookup->line);
    found.isSent = m_lookup->sent != 0;
  }
  return found;
}

DeliveryEvents &SqlConnection::events() {
  if (!m_events) {
    m_events = std::make_unique<DeliveryEvents>(m_session, m_dialect);
  }
  return *m_events;
}

}  // namespace cartonpick::orders
