#include "StoreExercise.h"

#include "Property.h"
#include "store/CatalogueWriter.h"
#include "store/ManagedObjectContext.h"
#include "store/PersistentStoreCoordinator.h"

#include <QDir>
#include <QFileInfo>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>
#include <string>

namespace {

using Migration = PersistentStoreCoordinator::Migration;

int s_logLines = 0;

void countLogLine(QtMsgType /*type*/, const QMessageLogContext & /*context*/,
                  const QString & /*text*/) {
  ++s_logLines;
}

/// Set by the SQL function "run", which every connection has. No file must be able to call it.
bool s_hasRun = false;

void run(sqlite3_context *context, int /*count*/, sqlite3_value ** /*values*/) {
  s_hasRun = true;
  sqlite3_result_int(context, 1);
}

int addFunction(sqlite3 *database, char ** /*error*/, const void * /*routines*/) {
  return sqlite3_create_function(database, "run", -1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                 run, nullptr, nullptr);
}

/// Counts log lines and adds the function "run" to every new connection.
void installHooks() {
  static const bool isInstalled = [] {
    qInstallMessageHandler(countLogLine);
    // SQLite's API requires this cast.
    return sqlite3_auto_extension(reinterpret_cast<void (*)()>(addFunction)) == SQLITE_OK;
  }();
  require(isInstalled, "the hooks are installed");
  s_hasRun = false;
  s_logLines = 0;
}

/// Returns the result of a fetch. If it failed, requires that it or something earlier was logged.
template <class Fetch>
auto answerOf(const Fetch &fetch) {
  const int before = s_logLines;
  auto answer = fetch();
  require(answer.has_value() || s_logLines > before || before > 0, "a failed fetch is logged");
  return answer;
}

void fetchEverything(ManagedObjectContext &context) {
  const auto deliveries = answerOf([&] { return context.deliveryPickTimes(); });
  QString doc = QStringLiteral("4711");
  if (deliveries && !deliveries->empty()) {
    doc = deliveries->front().doc;
  }
  answerOf([&] { return context.unsentPickings(doc); });
  const auto picks = answerOf([&] { return context.pickings(doc); });
  if (picks && !picks->empty()) {
    const Picking &pick = picks->front();
    answerOf([&] { return context.pickingsOfOrder(pick.doc, pick.ordernum); });
    answerOf([&] { return context.pickingsOfLine(pick.doc, pick.box, pick.item); });
    answerOf([&] { return context.itemsForCode(pick.item); });
  }
}

int changesOf(const PersistentStoreCoordinator &coordinator) {
  return sqlite3_total_changes(coordinator.database()->getHandle());
}

/// Inserts and updates a pick, and requires that each change affects one row. Returns false if a
/// save fails, which would end the program.
bool changePicks(ManagedObjectContext &context, const PersistentStoreCoordinator &coordinator) {
  constexpr std::int32_t kPicked = 3;
  const QString doc = QStringLiteral("a delivery of our own");
  const int before = changesOf(coordinator);
  context.insert(Picking{.box = QStringLiteral("C1"), .doc = doc, .item = QStringLiteral("A")});
  if (context.save()) {
    return false;
  }
  require(changesOf(coordinator) == before + 1, "an insertion is one row");
  const auto picks = context.pickings(doc);
  if (!picks || picks->empty()) {
    return true;
  }
  context.setPickqty(picks->back(), kPicked);
  if (context.save()) {
    return false;
  }
  require(changesOf(coordinator) == before + 2, "a new quantity is one row");
  return true;
}

/// Returns a digest of the picks, read without indexes; an empty string if they cannot be read.
std::string picksIn(const PersistentStoreCoordinator &coordinator) {
  try {
    return coordinator.database()
        ->execAndGet(
            "SELECT count(*) || ' ' || total(rowid) || ' ' || total(pickqty) "
            "FROM Picking NOT INDEXED")
        .getString();
  } catch (const SQLite::Exception &) {
    return {};
  }
}

void replaceCatalogue(const PersistentStoreCoordinator &coordinator, const QString &path) {
  const std::string before = picksIn(coordinator);
  CatalogueWriter writer(path);
  writer.insert({"b1", "A", "One"});
  writer.insert({"b2", "B", "Two"});
  if (!writer.save()) {
    require(picksIn(coordinator) == before, "a new catalogue changes no pick");
  }
}

void checkFolder(const QString &path) {
  const QFileInfo store(path);
  for (const QString &name : store.dir().entryList(QDir::Files)) {
    require(name.startsWith(store.fileName()), "no other file is created beside the store");
  }
}

}  // namespace

void exerciseStore(const QString &path) {
  static const auto kModel =
      std::make_shared<const ManagedObjectModel>(ManagedObjectModel::bundledUrl());
  installHooks();
  const auto coordinator = std::make_shared<PersistentStoreCoordinator>(kModel);
  const bool isOpen = coordinator->addPersistentStore(path, Migration::Refuse) ||
                      coordinator->addPersistentStore(path, Migration::Automatic);
  require(isOpen == coordinator->hasStore(), "there is a store exactly if it was opened");
  require(isOpen || s_logLines > 0, "a rejected file is logged");
  {
    ManagedObjectContext context(coordinator);
    const int before = isOpen ? changesOf(*coordinator) : 0;
    fetchEverything(context);
    require(!isOpen || changesOf(*coordinator) == before, "a fetch changes nothing");
    if (isOpen && changePicks(context, *coordinator)) {
      replaceCatalogue(*coordinator, path);
      fetchEverything(context);
    }
  }
  require(!s_hasRun, "no function call of a file is executed");
  checkFolder(path);
}
