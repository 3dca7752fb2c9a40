#include "store/sql_connection.h"

#include <soci/postgresql/soci-postgresql.h>
#include <soci/sqlite3/soci-sqlite3.h>
#include <utility>

namespace cartonpick::orders {

namespace {

/// In seconds.
constexpr auto kSqliteOptions = "timeout=5 db=";
constexpr auto kPostgresOptions =
    "connect_timeout=5&tcp_user_timeout=10000&keepalives_idle=5&application_name=cartonpick-orders"
    "&options=-c%20client_min_messages%3Dwarning"
    // An instance that hangs with a delivery in its hands does not keep it from the others.
    "%20-c%20idle_in_transaction_session_timeout%3D20s%20-c%20lock_timeout%3D30s";

/// SOCI reads a value in quotes up to the next quote.
std::string quoted(const std::string &file) {
  if (file.find('"') != std::string::npos) {
    throw soci::soci_error("a file name with a quotation mark can't be used");
  }
  return '"' + file + '"';
}

soci::connection_parameters parametersOf(const SqlAddress &address) {
  if (address.dialect == SqlDialect::Postgres) {
    const char separator = address.text.find('?') == std::string::npos ? '?' : '&';
    return {soci::postgresql, address.text + separator + kPostgresOptions};
  }
  return {soci::sqlite3, kSqliteOptions + quoted(address.text)};
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

struct SqlConnection::Statements {
  explicit Statements(soci::session &session)
      : selectLines(
            // The databases count what was sent once, not for every line.
            (session.prepare << "SELECT customer, brand, order_date, shipping_date, delivery, "
                                "order_no, barcode, item, description, quantity, box, "
                                "(SELECT count(*) FROM (SELECT 1 FROM picked_line "
                                "WHERE delivery = :sent LIMIT 1) AS sent) "
                                "FROM order_line WHERE delivery = :delivery ORDER BY position",
             soci::use(delivery), soci::use(delivery), soci::into(line.customer),
             soci::into(line.brand), soci::into(line.orderDate), soci::into(line.shippingDate),
             soci::into(line.delivery), soci::into(line.order), soci::into(line.article.barcode),
             soci::into(line.article.item), soci::into(line.article.description),
             soci::into(line.quantity), soci::into(line.carton), soci::into(sent))),
        touchDelivery(
            (session.prepare << "UPDATE delivery SET changed_at = :now WHERE number = :delivery",
             soci::use(receivedAt), soci::use(delivery))),
        insertPicked((session.prepare
                          << "INSERT INTO picked_line (delivery, order_no, box, item, barcode, "
                             "quantity, picked_at, received_at) VALUES (:delivery, :order, "
                             ":box, :item, :barcode, :quantity, :picked, :received) "
                             "ON CONFLICT DO NOTHING",
                      soci::use(picked.delivery), soci::use(picked.order), soci::use(picked.box),
                      soci::use(picked.item), soci::use(picked.barcode), soci::use(picked.quantity),
                      soci::use(picked.pickedAt), soci::use(receivedAt))) {}

  // What the statements take and give.
  std::string delivery;
  OrderLine line;
  int sent = 0;
  PickReport picked;
  std::string receivedAt;

  soci::statement selectLines;
  soci::statement touchDelivery;
  soci::statement insertPicked;
};

SqlConnection::SqlConnection(const SqlAddress &address) : m_session(parametersOf(address)) {
  if (address.dialect == SqlDialect::Sqlite) {
    switchToLog(m_session);
    m_session << "PRAGMA synchronous = FULL";
  }
}

SqlConnection::~SqlConnection() = default;

SqlConnection::Statements &SqlConnection::statements() {
  if (!m_statements) {
    m_statements = std::make_unique<Statements>(m_session);
  }
  return *m_statements;
}

Delivery SqlConnection::delivery(const std::string &number) {
  Delivery found;
  statements().delivery = number;
  statements().selectLines.execute();
  // To the end: a statement that waits at a row would keep its view of the database.
  while (statements().selectLines.fetch()) {
    found.lines.push_back(statements().line);
    found.isSent = statements().sent != 0;
  }
  return found;
}

void SqlConnection::insert(const std::vector<PickReport> &lines, const std::string &receivedAt) {
  statements().receivedAt = receivedAt;
  statements().delivery = lines.front().delivery;
  // First, so that two senders of one delivery wait for each other here and nowhere else.
  statements().touchDelivery.execute(true);
  for (const PickReport &line : lines) {
    statements().picked = line;
    statements().insertPicked.execute(true);
  }
}

}  // namespace cartonpick::orders
