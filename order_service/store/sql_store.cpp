#include "store/sql_store.h"

#include "model/utc_time.h"
#include "store/sql_connection.h"
#include "store/sql_schema.h"
#include "store/store_file.h"

#include <stdexcept>
#include <string_view>
#include <utility>

namespace cartonpick::orders {

namespace {

/// As many as there are threads that answer requests, so that no kind of request takes another's.
constexpr std::size_t kMaxConnections = 18;

/// Neither a server nor memory, nor SQLite's URL of something.
bool isFile(const SqlAddress &address) {
  return address.dialect == SqlDialect::Sqlite && address.text != SqlAddress::kInMemory &&
         !address.text.starts_with("file:");
}

/// Every connection would have a memory of its own.
std::size_t maxConnectionsOf(const SqlAddress &address) {
  return address.text == SqlAddress::kInMemory ? 1 : kMaxConnections;
}

/// The first line of the database's message, without what SOCI adds of its own.
std::string reasonOf(const soci::soci_error &error) {
  constexpr std::string_view kNoConnection = "Cannot establish connection to the database.\n";
  std::string message = error.get_error_message();
  if (message.starts_with(kNoConnection)) {
    message.erase(0, kNoConnection.size());
  }
  return message.substr(0, message.find('\n'));
}

[[noreturn]] void fail(const SqlAddress &address, const soci::soci_error &error) {
  throw std::runtime_error("the store " + address.shown() + " can't be used: " + reasonOf(error));
}

void removeEverything(soci::session &session) {
  for (const char *table : {"order_line", "article"}) {
    session << std::string("DELETE FROM ") + table;
  }
}

void replaceLines(soci::session &session, const std::string &delivery,
                  const std::vector<OrderLine> &lines) {
  session << "DELETE FROM order_line WHERE delivery = :delivery", soci::use(delivery);
  int position = 0;
  OrderLine line;
  soci::statement insert =
      (session.prepare << "INSERT INTO order_line (delivery, position, order_no, customer, brand, "
                          "order_date, shipping_date, box, item, barcode, description, quantity) "
                          "VALUES (:delivery, :position, :order, :customer, :brand, :ordered, "
                          ":shipped, :box, :item, :barcode, :description, :quantity)",
       soci::use(delivery), soci::use(position), soci::use(line.order), soci::use(line.customer),
       soci::use(line.brand), soci::use(line.orderDate), soci::use(line.shippingDate),
       soci::use(line.carton), soci::use(line.article.item), soci::use(line.article.barcode),
       soci::use(line.article.description), soci::use(line.quantity));
  for (const OrderLine &next : lines) {
    line = next;
    insert.execute(true);
    ++position;
  }
}

void noteDelivery(soci::session &session, const std::string &delivery, const std::string &customer,
                  const std::string &time) {
  session << "INSERT INTO delivery (number, customer, changed_at) VALUES (:number, :customer, "
             ":now) ON CONFLICT (number) DO UPDATE SET customer = excluded.customer, "
             "changed_at = excluded.changed_at",
      soci::use(delivery), soci::use(customer), soci::use(time);
}

void addArticles(soci::session &session, const std::vector<Article> &articles) {
  Article article;
  soci::statement insert =
      (session.prepare << "INSERT INTO article (barcode, item, description) "
                          "VALUES (:barcode, :item, :description) "
                          "ON CONFLICT DO NOTHING",
       soci::use(article.barcode), soci::use(article.item), soci::use(article.description));
  for (const Article &next : articles) {
    article = next;
    insert.execute(true);
  }
}

}  // namespace

/// A connection that no one else uses meanwhile.
class SqlStore::Lease {
 public:
  explicit Lease(const SqlStore &store) : m_store(store) {
    std::unique_lock lock(store.m_mutex);
    store.m_isIdle.wait(lock, [&] {
      return !store.m_idle.empty() || store.m_connections < store.m_maxConnections;
    });
    if (store.m_idle.empty()) {
      ++store.m_connections;
    } else {
      m_connection = std::move(store.m_idle.back());
      store.m_idle.pop_back();
    }
  }
  ~Lease() {
    const std::lock_guard lock(m_store.m_mutex);
    if (m_connection) {
      m_store.m_idle.push_back(std::move(m_connection));
    } else {
      --m_store.m_connections;
    }
    m_store.m_isIdle.notify_one();
  }
  Lease(const Lease &) = delete;
  Lease &operator=(const Lease &) = delete;

  SqlConnection &connection() {
    if (!m_connection) {
      m_connection = std::make_unique<SqlConnection>(m_store.m_address);
    }
    return *m_connection;
  }
  /// Whether there is a connection, and it is lost: asked after a failure only, as it takes a round
  /// trip.
  bool isLost() const { return m_connection && !m_connection->isAlive(); }
  void drop() { m_connection.reset(); }

 private:
  const SqlStore &m_store;
  std::unique_ptr<SqlConnection> m_connection;
};

/// All work may be done twice: what is stored already changes nothing.
template <class Work>
auto SqlStore::with(const Work &work) const {
  Lease lease(*this);
  try {
    try {
      return work(lease.connection());
    } catch (const soci::soci_error &) {
      if (!lease.isLost()) {
        throw;
      }
      lease.drop();
      return work(lease.connection());
    }
  } catch (const soci::soci_error &error) {
    if (lease.isLost()) {
      lease.drop();
    }
    fail(m_address, error);
  }
}

SqlStore::SqlStore(const SqlAddress &address)
    : m_address(address), m_maxConnections(maxConnectionsOf(address)) {
  if (isFile(address)) {
    claimStoreFile(address.text);
  }
  with([&](SqlConnection &connection) { makeSchema(connection.session(), address.dialect); });
}

SqlStore::~SqlStore() = default;

Delivery SqlStore::delivery(const std::string &number) const {
  return with([&](SqlConnection &connection) { return connection.delivery(number); });
}

std::vector<Article> SqlStore::catalogue() const {
  return with([](SqlConnection &connection) {
    Article article;
    soci::statement select =
        (connection.session().prepare << "SELECT barcode, item, description FROM article "
                                         "ORDER BY position",
         soci::into(article.barcode), soci::into(article.item), soci::into(article.description));
    std::vector<Article> articles;
    select.execute();
    while (select.fetch()) {
      articles.push_back(article);
    }
    return articles;
  });
}

void SqlStore::store(const std::vector<PickReport> &lines) {
  const std::string receivedAt = utcTime();
  std::unique_lock writing(m_writing, std::defer_lock);
  if (m_address.dialect == SqlDialect::Sqlite) {
    writing.lock();
  }
  with([&](SqlConnection &connection) {
    soci::transaction transaction(connection.session());
    connection.insert(lines, receivedAt);
    transaction.commit();
  });
}

void SqlStore::loadInto(SqlConnection &connection, const Deliveries &deliveries) const {
  const std::string time = utcTime();
  for (const auto &[delivery, lines] : deliveries.all()) {
    replaceLines(connection.session(), delivery, lines);
    noteDelivery(connection.session(), delivery, lines.front().customer, time);
  }
  addArticles(connection.session(), deliveries.catalogue());
}

void SqlStore::load(const Deliveries &deliveries) {
  with([&](SqlConnection &connection) {
    soci::transaction transaction(connection.session());
    loadInto(connection, deliveries);
    transaction.commit();
  });
}

void SqlStore::replace(const Deliveries &deliveries) {
  with([&](SqlConnection &connection) {
    soci::transaction transaction(connection.session());
    removeEverything(connection.session());
    loadInto(connection, deliveries);
    transaction.commit();
  });
}

std::vector<ReceivedReport> SqlStore::picked(const ReportFilter &filter) const {
  return with([&](SqlConnection &connection) {
    ReceivedReport stored;
    PickReport &line = stored.report;
    soci::statement select(connection.session());
    // A condition that may be there or not would keep SQLite from using the index.
    std::string where;
    if (filter.delivery) {
      where = "delivery = :delivery";
      select.exchange(soci::use(*filter.delivery));
    }
    if (filter.day) {
      where += std::string(where.empty() ? "" : " AND ") + "substr(picked_at, 1, 10) = :day";
      select.exchange(soci::use(*filter.day));
    }
    select.exchange(soci::into(line.delivery));
    select.exchange(soci::into(line.order));
    select.exchange(soci::into(line.box));
    select.exchange(soci::into(line.item));
    select.exchange(soci::into(line.barcode));
    select.exchange(soci::into(line.quantity));
    select.exchange(soci::into(line.pickedAt));
    select.exchange(soci::into(stored.receivedAt));
    select.alloc();
    select.prepare(
        "SELECT delivery, order_no, box, item, barcode, quantity, picked_at, received_at "
        "FROM picked_line" +
        (where.empty() ? where : " WHERE " + where) +
        " ORDER BY delivery, order_no, box, item, picked_at, received_at");
    select.define_and_bind();
    select.execute();
    std::vector<ReceivedReport> lines;
    while (select.fetch()) {
      lines.push_back(stored);
    }
    return lines;
  });
}

std::vector<DeliverySummary> SqlStore::summaries(const std::string &search) const {
  return with(
      [&](SqlConnection &connection) { return selectSummaries(connection.session(), search); });
}

}  // namespace cartonpick::orders
