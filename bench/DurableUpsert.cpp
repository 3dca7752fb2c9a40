#include "DurableUpsert.h"

#include <QSqlError>

#include <stdexcept>

namespace {

const QString kConnection = QStringLiteral("upsert");
constexpr auto kOneRowALine = "CREATE UNIQUE INDEX Picking_line ON Picking (doc, box, item)";
constexpr auto kUpsert =
    "INSERT INTO Picking (barcode, box, datepicked, descr, doc, item, ordernum, orderqty, pickqty, "
    "sent) VALUES ('b', 'C1', 1770000000000, 'A description', '4711', ?1, 'A1', 6, ?2, 0) "
    "ON CONFLICT (doc, box, item) DO UPDATE SET pickqty = excluded.pickqty";

const BenchStore &withOneRowALine(const BenchStore &store) {
  BareSqlite(store.path()).run(kOneRowALine);
  return store;
}

}  // namespace

BareUpsert::BareUpsert()
    : m_database(withOneRowALine(m_store).path()), m_upsert(m_database, kUpsert) {}

void BareUpsert::operator()(const std::string &item, int quantity) {
  m_upsert.bind(1, item);
  m_upsert.bind(2, std::int64_t{quantity});
  m_upsert.step();
  m_upsert.reset();
}

QtUpsert::QtUpsert()
    : m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), kConnection)) {
  m_database.setDatabaseName(withOneRowALine(m_store).path());
  if (!m_database.open()) {
    throw std::runtime_error("Qt cannot open the store");
  }
  m_upsert = QSqlQuery(m_database);
  m_upsert.exec(QStringLiteral("PRAGMA synchronous = FULL"));
  m_upsert.prepare(QLatin1String(kUpsert));
}

QtUpsert::~QtUpsert() {
  m_upsert = QSqlQuery();
  m_database = QSqlDatabase();
  QSqlDatabase::removeDatabase(kConnection);
}

void QtUpsert::operator()(const std::string &item, int quantity) {
  m_upsert.bindValue(0, QString::fromStdString(item));
  m_upsert.bindValue(1, quantity);
  if (!m_upsert.exec()) {
    throw std::runtime_error(m_upsert.lastError().text().toStdString());
  }
}
