#include "store/ManagedObjectContext.h"

#include "base/Utf8.h"
#include "store/PersistentStoreCoordinator.h"

#include <QDebug>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>
#include <utility>

namespace {

#define PICKING_COLUMNS \
  "rowid, barcode, box, datepicked, descr, doc, item, ordernum, orderqty, pickqty, sent "

const StoreError kNoStore{QStringLiteral("There is no store."), QStringLiteral("{}")};

void bindText(SQLite::Statement &statement, int position, const QString &text) {
  if (text.isNull()) {
    statement.bind(position);
  } else {
    statement.bind(position, text.toStdString());
  }
}

void bindTime(SQLite::Statement &statement, int position, const QDateTime &time) {
  if (time.isValid()) {
    statement.bind(position, static_cast<std::int64_t>(time.toMSecsSinceEpoch()));
  } else {
    statement.bind(position);
  }
}

QString textAt(SQLite::Statement &statement, int column) {
  const SQLite::Column value = statement.getColumn(column);
  if (value.isNull()) {
    return {};
  }
  // getText() must come first: it converts a value of another type, whose size then changes.
  const char *text = value.getText();
  return textOfUtf8({text, static_cast<std::size_t>(value.getBytes())});
}

QDateTime timeAt(SQLite::Statement &statement, int column) {
  const SQLite::Column value = statement.getColumn(column);
  return value.isNull() ? QDateTime() : QDateTime::fromMSecsSinceEpoch(value.getInt64(), Qt::UTC);
}

std::int32_t numberAt(SQLite::Statement &statement, int column) {
  return statement.getColumn(column).getInt();
}

Picking pickingAt(SQLite::Statement &row) {
  return {row.getColumn(0).getInt64(),
          textAt(row, 1),
          textAt(row, 2),
          timeAt(row, 3),
          textAt(row, 4),
          textAt(row, 5),
          textAt(row, 6),
          textAt(row, 7),
          numberAt(row, 8),
          numberAt(row, 9),
          numberAt(row, 10)};
}

/// Runs `statement` with the bound texts `arguments` and reads every row with `read`.
template <class Read, class... Texts>
auto rowsOf(SQLite::Statement &statement, const Read &read, const Texts &...arguments) {
  std::vector<decltype(read(statement))> rows;
  // reset() would report the failure of the previous fetch again.
  statement.tryReset();
  int position = 0;
  (bindText(statement, ++position, arguments), ...);
  while (statement.executeStep()) {
    rows.push_back(read(statement));
  }
  return rows;
}

}  // namespace

struct ManagedObjectContext::Statements {
  explicit Statements(SQLite::Database &database)
      : begin(database, "BEGIN IMMEDIATE"),
        commit(database, "COMMIT"),
        pickingsOfOrder(database, "SELECT " PICKING_COLUMNS
                                  "FROM Picking WHERE doc IS ? AND ordernum IS ? ORDER BY rowid"),
        // With OR on the two columns, SQLite would read more than the first entry of each index.
        itemsForCode(database,
                     "SELECT barcode, item, descr FROM Items WHERE rowid = (SELECT min(first) FROM "
                     "(SELECT min(rowid) AS first FROM Items WHERE item = ?1 UNION ALL "
                     "SELECT min(rowid) FROM Items WHERE barcode = ?1))"),
        hasItems(database, "SELECT EXISTS (SELECT * FROM Items)"),
        pickingsOfLine(database, "SELECT " PICKING_COLUMNS
                                 "FROM Picking WHERE doc IS ? AND box IS ? AND item IS ? "
                                 "ORDER BY rowid"),
        unsentPickings(database, "SELECT " PICKING_COLUMNS
                                 "FROM Picking WHERE doc IS ? AND sent = 0 ORDER BY rowid"),
        deliveryPickTimes(database,
                          "SELECT doc, sent, min(datepicked), max(datepicked) FROM Picking "
                          "GROUP BY doc, sent ORDER BY doc"),
        pickings(database, "SELECT " PICKING_COLUMNS "FROM Picking WHERE doc IS ? ORDER BY rowid"),
        insertPicking(database,
                      "INSERT INTO Picking (barcode, box, datepicked, descr, doc, item, ordernum, "
                      "orderqty, pickqty, sent) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
        setPickqty(database, "UPDATE Picking SET pickqty = ? WHERE rowid = ?"),
        setSent(database, "UPDATE Picking SET sent = ? WHERE rowid = ?") {}

  SQLite::Statement begin;
  SQLite::Statement commit;
  SQLite::Statement pickingsOfOrder;
  SQLite::Statement itemsForCode;
  SQLite::Statement hasItems;
  SQLite::Statement pickingsOfLine;
  SQLite::Statement unsentPickings;
  SQLite::Statement deliveryPickTimes;
  SQLite::Statement pickings;
  SQLite::Statement insertPicking;
  SQLite::Statement setPickqty;
  SQLite::Statement setSent;
};

ManagedObjectContext::ManagedObjectContext(std::shared_ptr<PersistentStoreCoordinator> coordinator)
    : m_coordinator(std::move(coordinator)) {
  if (!m_coordinator->hasStore()) {
    m_errorString = m_coordinator->errorString();
    return;
  }
  try {
    m_statements = std::make_unique<Statements>(*m_coordinator->database());
  } catch (const SQLite::Exception &error) {
    m_errorString = QString::fromUtf8(error.what());
    qWarning("The store lacks tables or columns of its version: %s", error.what());
  }
}

ManagedObjectContext::~ManagedObjectContext() = default;

QString ManagedObjectContext::storePath() const {
  return m_coordinator->hasStore()
             ? QString::fromStdString(m_coordinator->database()->getFilename())
             : QString();
}

template <class Fetch>
auto ManagedObjectContext::fetch(const Fetch &rows) -> std::optional<decltype(rows())> {
  if (!m_statements) {
    return std::nullopt;
  }
  try {
    return rows();
  } catch (const SQLite::Exception &error) {
    qWarning("Fetch failed: %s", error.what());
    m_errorString = QString::fromUtf8(error.what());
    return std::nullopt;
  }
}

template <class Change>
void ManagedObjectContext::change(const Change &apply) {
  const bool isFirst = !std::exchange(m_hasChanges, true);
  if (!m_statements) {
    m_changeError = kNoStore;
  }
  // A failure may have ended the transaction; a further change would then commit immediately.
  if (m_changeError) {
    return;
  }
  try {
    if (isFirst) {
      m_statements->begin.exec();
      m_statements->begin.reset();
    }
    apply();
  } catch (const SQLite::Exception &error) {
    m_changeError = storeErrorOf(error);
  }
}

ManagedObjectContext::Pickings ManagedObjectContext::pickingsOfOrder(const QString &doc,
                                                                     const QString &ordernum) {
  return fetch([&] { return rowsOf(m_statements->pickingsOfOrder, pickingAt, doc, ordernum); });
}

std::optional<std::vector<Items>> ManagedObjectContext::itemsForCode(const QString &code) {
  return fetch([&] {
    return rowsOf(
        m_statements->itemsForCode,
        [](SQLite::Statement &row) {
          return Items{textAt(row, 0), textAt(row, 1), textAt(row, 2)};
        },
        code);
  });
}

std::optional<bool> ManagedObjectContext::hasItems() {
  return fetch([&] {
    const auto count = [](SQLite::Statement &row) { return numberAt(row, 0); };
    return rowsOf(m_statements->hasItems, count).front() > 0;
  });
}

ManagedObjectContext::Pickings ManagedObjectContext::pickingsOfLine(const QString &doc,
                                                                    const QString &box,
                                                                    const QString &item) {
  return fetch([&] { return rowsOf(m_statements->pickingsOfLine, pickingAt, doc, box, item); });
}

ManagedObjectContext::Pickings ManagedObjectContext::unsentPickings(const QString &doc) {
  return fetch([&] { return rowsOf(m_statements->unsentPickings, pickingAt, doc); });
}

std::optional<std::vector<DeliveryPickTimes>> ManagedObjectContext::deliveryPickTimes() {
  auto groups = fetch([&] {
    return rowsOf(m_statements->deliveryPickTimes, [](SQLite::Statement &row) {
      return DeliveryPickTimes{textAt(row, 0), numberAt(row, 1), {timeAt(row, 2), timeAt(row, 3)}};
    });
  });
  if (groups) {
    widenToDeliveries(*groups);
  }
  return groups;
}

ManagedObjectContext::Pickings ManagedObjectContext::pickings(const QString &doc) {
  return fetch([&] { return rowsOf(m_statements->pickings, pickingAt, doc); });
}

void ManagedObjectContext::insert(const Picking &picking) {
  change([&] {
    SQLite::Statement &statement = m_statements->insertPicking;
    bindText(statement, 1, picking.barcode);
    bindText(statement, 2, picking.box);
    bindTime(statement, 3, picking.datepicked);
    bindText(statement, 4, picking.descr);
    bindText(statement, 5, picking.doc);
    bindText(statement, 6, picking.item);
    bindText(statement, 7, picking.ordernum);
    statement.bind(8, picking.orderqty);
    statement.bind(9, picking.pickqty);
    statement.bind(10, picking.sent);
    statement.exec();
    statement.reset();
  });
}

void ManagedObjectContext::setPickqty(const Picking &picking, std::int32_t pickqty) {
  change([&] {
    SQLite::Statement &statement = m_statements->setPickqty;
    statement.bind(1, pickqty);
    statement.bind(2, picking.rowId);
    statement.exec();
    statement.reset();
  });
}

void ManagedObjectContext::setSent(const Picking &picking, std::int32_t sent) {
  change([&] {
    SQLite::Statement &statement = m_statements->setSent;
    statement.bind(1, sent);
    statement.bind(2, picking.rowId);
    statement.exec();
    statement.reset();
  });
}

std::optional<StoreError> ManagedObjectContext::save() {
  if (!m_hasChanges) {
    return std::nullopt;
  }
  std::optional<StoreError> failure = m_changeError;
  if (!failure) {
    try {
      m_statements->commit.exec();
      m_statements->commit.reset();
      m_hasChanges = false;
      return std::nullopt;
    } catch (const SQLite::Exception &error) {
      failure = storeErrorOf(error);
    }
  }
  m_errorString = failure->description;
  return failure;
}

void ManagedObjectContext::rollback() {
  m_hasChanges = false;
  m_changeError.reset();
  if (!m_statements) {
    return;
  }
  // A statement that failed is not reset yet.
  for (SQLite::Statement *statement :
       {&m_statements->begin, &m_statements->insertPicking, &m_statements->setPickqty,
        &m_statements->setSent, &m_statements->commit}) {
    statement->tryReset();
  }
  // Fails if the failed change has ended the transaction already.
  m_coordinator->database()->tryExec("ROLLBACK");
}
