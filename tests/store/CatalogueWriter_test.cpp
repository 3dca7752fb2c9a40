#include "store/CatalogueWriter.h"

#include "support/StoredArticles.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QTest>
#include <QThread>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <memory>

namespace {

void storeArticles(TestProgram &program, const std::vector<Article> &articles) {
  CatalogueWriter writer(program.storePath());
  for (const Article &article : articles) {
    writer.insert(article);
  }
  QVERIFY(!writer.save());
}

/// Returns the values in column `column` of the rows that `sql` finds in the store.
QStringList queried(const TestProgram &program, const char *sql, int column = 0) {
  const SQLite::Database database(program.storePath().toStdString());
  SQLite::Statement statement(database, sql);
  QStringList texts;
  while (statement.executeStep()) {
    texts.append(QString::fromStdString(statement.getColumn(column).getString()));
  }
  return texts;
}

constexpr auto kIndexes =
    "SELECT sql FROM sqlite_master WHERE type = 'index' AND tbl_name = 'Items' ORDER BY name";

}  // namespace

class CatalogueWriterTest : public QObject {
  Q_OBJECT

 private slots:
  void aSaveReplacesTheCatalogue() {
    TestProgram program;
    storeArticles(program, {{"b1", "A", "One"}, {"b2", "B", "Two"}});
    storeArticles(program, {{"b3", "C", "Three"}});
    QCOMPARE(articleCount(program.storePath()), 1);
    QVERIFY(program.context().itemsForCode("A")->empty());
    const auto found = program.context().itemsForCode("b3");
    QCOMPARE(found->size(), 1U);
    QCOMPARE(found->front().item, "C");
    QCOMPARE(found->front().descr, "Three");
  }

  void aMissingTextIsStoredAsNull() {
    TestProgram program;
    storeArticles(program, {{"b1", "A", "One"}, {{}, "B", {}}, {"b3", {}, ""}});
    QCOMPARE(queried(program, "SELECT quote(barcode) || quote(item) || quote(descr) FROM Items"),
             QStringList({"'b1''A''One'", "NULL'B'NULL", "'b3'NULL''"}));
  }

  void withoutASaveTheCatalogueIsUnchanged() {
    TestProgram program;
    storeArticles(program, {{"b1", "A", "One"}});
    {
      CatalogueWriter writer(program.storePath());
      writer.insert({"b2", "B", "Two"});
    }
    QCOMPARE(articleCount(program.storePath()), 1);
    QCOMPARE(program.context().itemsForCode("A")->size(), 1U);
  }

  void theOldCatalogueIsVisibleUntilTheSave() {
    TestProgram program;
    storeArticles(program, {{"b1", "A", "One"}});
    CatalogueWriter writer(program.storePath());
    writer.insert({"b2", "B", "Two"});
    QCOMPARE(program.context().itemsForCode("A")->size(), 1U);
    QVERIFY(program.context().itemsForCode("B")->empty());
    QVERIFY(!writer.save());
    QVERIFY(program.context().itemsForCode("A")->empty());
    QCOMPARE(program.context().itemsForCode("B")->size(), 1U);
  }

  void theContextCanSaveBeforeAndAfterTheWriter() {
    TestProgram program;
    program.context().insert(Picking{.doc = "1"});
    QVERIFY(!program.context().save());
    storeArticles(program, {{"b1", "A", "One"}});
    program.context().insert(Picking{.doc = "1"});
    QVERIFY(!program.context().save());
    QCOMPARE(program.context().pickings("1")->size(), 2U);
  }

  void theIndexesExistAfterASaveAndServeLookups() {
    TestProgram program;
    const QStringList before = queried(program, kIndexes);
    QCOMPARE(before.size(), 2);
    storeArticles(program, {{"same", "A", "One"}, {"b2", "same", "Two"}});
    QCOMPARE(queried(program, kIndexes), before);
    for (const char *query :
         {"EXPLAIN QUERY PLAN SELECT min(rowid) FROM Items WHERE item = 'x'",
          "EXPLAIN QUERY PLAN SELECT min(rowid) FROM Items WHERE barcode = 'x'"}) {
      constexpr int kDetail = 3;
      const QStringList plan = queried(program, query, kDetail);
      QVERIFY2(plan.join(u' ').contains("USING COVERING INDEX Items_"),
               qPrintable(plan.join(u' ')));
    }
    QCOMPARE(program.context().itemsForCode("same")->front().descr, "One");
  }

  void theWriteAheadLogIsTruncatedAfterASave() {
    TestProgram program;
    storeArticles(program, std::vector<Article>(10000, {"b", "A", "One"}));
    QCOMPARE(QFileInfo(program.storePath() + "-wal").size(), 0);
    QCOMPARE(articleCount(program.storePath()), 10000);
  }

  void textsAreStoredUnchanged() {
    TestProgram program;
    const QStringList texts{
        "'; DROP TABLE Items; --",     "\"", "100%", "😀 Ωμέγα", QString(10000, u'q'),
        QString::fromUtf16(u"a\0b", 3)};
    for (const QString &text : texts) {
      storeArticles(program, {{text.toStdString(), text.toStdString(), text.toStdString()}});
      const auto found = program.context().itemsForCode(text);
      QCOMPARE(found->size(), 1U);
      QCOMPARE(found->front().barcode, text);
      QCOMPARE(found->front().item, text);
      QCOMPARE(found->front().descr, text);
    }
  }

  void aSaveStopsWhenItsThreadIsInterrupted() {
    TestProgram program;
    storeArticles(program, {{"b1", "A", "One"}});
    std::optional<StoreError> error;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
      CatalogueWriter writer(program.storePath());
      for (int i = 0; i < 100000; ++i) {
        writer.insert({"b2", "B", "Two"});
      }
      QThread::currentThread()->requestInterruption();
      error = writer.save();
    }));
    thread->start();
    thread->wait();
    QVERIFY(error);
    QCOMPARE(articleCount(program.storePath()), 1);
    QCOMPARE(program.context().itemsForCode("A")->size(), 1U);
  }

  void codeInAnIndexDoesNotRun_data() {
    QTest::addColumn<QByteArray>("sql");
    QTest::newRow("in its name") << QByteArray(
        R"(CREATE INDEX "i""; DELETE FROM Picking; --" ON Items (descr))");
    QTest::newRow("in its definition") << QByteArray(
        "PRAGMA writable_schema = ON; UPDATE sqlite_master SET sql = sql || '; DELETE FROM "
        "Picking' WHERE name = 'Items_item'");
  }

  void codeInAnIndexDoesNotRun() {
    QFETCH(const QByteArray, sql);
    TestProgram program;
    program.context().insert(Picking{.doc = "1"});
    QVERIFY(!program.context().save());
    SQLite::Database(program.storePath().toStdString(), SQLite::OPEN_READWRITE)
        .exec(sql.toStdString());
    storeArticles(program, {{"b1", "A", "One"}});
    QCOMPARE(program.context().pickings("1")->size(), 1U);
    QCOMPARE(program.context().itemsForCode("A")->size(), 1U);
  }

  void aStoreWhoseIndexSqlNamesAnotherIndexIsNotChanged() {
    TestProgram program;
    storeArticles(program, {{"b1", "A", "One"}});
    SQLite::Database(program.storePath().toStdString(), SQLite::OPEN_READWRITE)
        .exec(
            "PRAGMA writable_schema = ON; UPDATE sqlite_master SET sql = "
            "replace(sql, 'Items_item', 'Items_iTEM') WHERE name = 'Items_item'");
    const QStringList before = queried(program, kIndexes);
    CatalogueWriter writer(program.storePath());
    writer.insert({"b2", "B", "Two"});
    const auto error = writer.save();
    QVERIFY(error);
    QVERIFY2(error->description.contains("another name than its SQL"),
             qPrintable(error->description));
    QCOMPARE(queried(program, kIndexes), before);
    QCOMPARE(program.context().itemsForCode("A")->size(), 1U);
  }

  void aStoreWhoseIndexSqlNamesAnotherTableIsRefused() {
    TestProgram program;
    storeArticles(program, {{"b1", "A", "One"}});
    SQLite::Database(program.storePath().toStdString(), SQLite::OPEN_READWRITE)
        .exec(
            "PRAGMA writable_schema = ON; UPDATE sqlite_master SET sql = "
            "'CREATE INDEX Items_item ON Picking (item)' WHERE name = 'Items_item'");
    CatalogueWriter writer(program.storePath());
    writer.insert({"b2", "B", "Two"});
    QVERIFY(writer.save());
  }

  void savingReportsFailures() {
    for (const QString &path : {QString(), QStringLiteral("/no/such/store.sqlite")}) {
      CatalogueWriter writer(path);
      writer.insert({"b", "A", "One"});
      const auto error = writer.save();
      QVERIFY(error);
      QVERIFY(!error->description.isEmpty());
      QVERIFY(error->userInfo.contains("code"));
    }
  }
};

CARTONPICK_TEST(CatalogueWriterTest);
#include "CatalogueWriter_test.moc"
