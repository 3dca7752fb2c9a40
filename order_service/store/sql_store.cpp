#include "store/sql_store.h"

#include "store/delivery_insertion.h"
#include "store/delivery_search.h"
#include "store/sql_connection.h"
#include "store/sql_schema.h"
#include "store/sql_words.h"
#include "store/store_error.h"
#include "store/store_file.h"

#include <optional>
#include <random>

namespace cartonpick::orders {

namespace {

/// Neither a server nor memory, nor SQLite's URL of something.
bool isFile(const SqlAddress &address) {
  return address.dialect() == SqlDialect::Sqlite && address.file() != SqlAddress::kInMemory &&
         !address.file().starts_with("file:");
}

/// A number that no delivery has, nor another probe.
std::string uniqueNumber() {
  std::random_device random;
  return "probe " + std::to_string(random()) + ' ' + std::to_string(random());
}

}  // namespace

SqlStore::SqlStore(const SqlAddress &address, const StoreLimits &limits) : m_pool(address, limits) {
  if (isFile(address)) {
    claimStoreFile(address.file());
  }
  m_pool.withoutLimit(StoreUse::Write, [&](SqlConnection &connection) {
    makeSchema(connection.session(), address.dialect());
  });
}

SqlStore::~SqlStore() = default;

Delivery SqlStore::delivery(const std::string &number) const {
  return m_pool.with(StoreUse::Read,
                     [&](SqlConnection &connection) { return connection.delivery(number); });
}

std::vector<Article> SqlStore::catalogue() const {
  return m_pool.with(StoreUse::Read, [](SqlConnection &connection) {
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

std::unique_lock<std::timed_mutex> SqlStore::turnToWrite() const {
  std::unique_lock writing(m_writing, std::defer_lock);
  if (m_pool.address().dialect() == SqlDialect::Sqlite &&
      !writing.try_lock_for(m_pool.limits().lock)) {
    throw StoreUnavailable("the store " + m_pool.address().shown() +
                           " can't be used: other calls write for too long");
  }
  return writing;
}

void SqlStore::probe() const {
  const std::unique_lock writing = turnToWrite();
  m_pool.with(StoreUse::Probe, [](SqlConnection &connection) {
    const std::string number = uniqueNumber();
    const soci::transaction rolledBack(connection.session());
    connection.session() << "INSERT INTO delivery (number, customer, changed_at) "
                            "VALUES (:number, '', '')",
        soci::use(number);
  });
}

void SqlStore::store(const std::vector<PickReport> &lines) {
  const std::unique_lock writing = turnToWrite();
  m_pool.with(StoreUse::Write, [&](SqlConnection &connection) {
    soci::transaction transaction(connection.session());
    connection.events().insert(lines);
    transaction.commit();
  });
}

bool SqlStore::reopen(const std::string &delivery) {
  const std::unique_lock writing = turnToWrite();
  return m_pool.with(StoreUse::Write, [&](SqlConnection &connection) {
    soci::transaction transaction(connection.session());
    const bool isReopened = connection.events().reopen(delivery);
    if (isReopened) {
      transaction.commit();
    }
    return isReopened;
  });
}

std::vector<std::string> SqlStore::reopenings(const std::string &delivery) const {
  return m_pool.with(StoreUse::Read, [&](SqlConnection &connection) {
    std::string time;
    soci::statement select =
        (connection.session().prepare << "SELECT reopened_at FROM reopening "
                                         "WHERE delivery = :delivery ORDER BY number",
         soci::use(delivery), soci::into(time));
    std::vector<std::string> times;
    select.execute();
    while (select.fetch()) {
      times.push_back(time);
    }
    return times;
  });
}

std::vector<Article> SqlStore::unknownArticles(const std::string &delivery) const {
  return m_pool.with(StoreUse::Read, [&](SqlConnection &connection) {
    Article article;
    soci::statement select =
        (connection.session().prepare
             << "SELECT DISTINCT item, barcode FROM picked_line WHERE delivery = :delivery "
                "AND NOT EXISTS (SELECT 1 FROM article WHERE article.item = picked_line.item "
                "AND article.barcode = picked_line.barcode) ORDER BY item, barcode",
         soci::use(delivery), soci::into(article.item), soci::into(article.barcode));
    std::vector<Article> articles;
    select.execute();
    while (select.fetch()) {
      articles.push_back(article);
    }
    return articles;
  });
}

void SqlStore::load(const Deliveries &deliveries) {
  m_pool.withoutLimit(StoreUse::Write, [&](SqlConnection &connection) {
    soci::transaction transaction(connection.session());
    connection.liftLimits();
    insertDeliveries(connection.session(), m_pool.address().dialect(), deliveries);
    transaction.commit();
  });
}

void SqlStore::replace(const Deliveries &deliveries) {
  m_pool.withoutLimit(StoreUse::Write, [&](SqlConnection &connection) {
    soci::transaction transaction(connection.session());
    connection.liftLimits();
    removeDeliveries(connection.session());
    insertDeliveries(connection.session(), m_pool.address().dialect(), deliveries);
    transaction.commit();
  });
}

std::vector<ReceivedReport> SqlStore::picked(const ReportFilter &filter) const {
  return m_pool.with(StoreUse::Read, [&](SqlConnection &connection) {
    ReceivedReport stored;
    PickReport &line = stored.report;
    long long number = 0;
    int isUndone = 0;
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
    select.exchange(soci::into(number));
    select.exchange(soci::into(isUndone));
    select.alloc();
    select.prepare(
        "SELECT delivery, order_no, box, item, barcode, quantity, picked_at, received_at, "
        "received_no, CASE WHEN " +
        std::string(kIsUndone) + " THEN 1 ELSE 0 END FROM picked_line" +
        (where.empty() ? where : " WHERE " + where) +
        " ORDER BY delivery, order_no, box, item, picked_at, received_at, received_no");
    select.define_and_bind();
    select.execute();
    std::vector<ReceivedReport> lines;
    while (select.fetch()) {
      stored.number = number;
      stored.isUndone = isUndone != 0;
      lines.push_back(stored);
    }
    return lines;
  });
}

void SqlStore::updateSearch() const {
  if (!m_pool.with(StoreUse::Read, [](SqlConnection &connection) {
        return hasOutdatedSearchTexts(connection.session());
      })) {
    return;
  }
  std::optional<std::string> last = "";
  while (last) {
    const std::unique_lock writing = turnToWrite();
    last = m_pool.with(StoreUse::Write, [&](SqlConnection &connection) {
      soci::transaction transaction(connection.session());
      auto updated = updateSearchTexts(connection.session(), *last);
      transaction.commit();
      return updated;
    });
  }
}

std::vector<DeliverySummary> SqlStore::summaries(const std::string &search) const {
  if (!search.empty()) {
    updateSearch();
  }
  return m_pool.with(StoreUse::Read, [&](SqlConnection &connection) {
    return selectSummaries(connection.session(), search);
  });
}

}  // namespace cartonpick::orders
