#include "support/StoredArticles.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

int articleCount(const QString &storePath) {
  SQLite::Database database(storePath.toStdString());
  return database.execAndGet("SELECT count(*) FROM Items").getInt();
}

void addArticle(const QString &storePath, const Items &item) {
  SQLite::Database database(storePath.toStdString(), SQLite::OPEN_READWRITE);
  SQLite::Statement statement(database,
                              "INSERT INTO Items (barcode, item, descr) VALUES (?, ?, ?)");
  int position = 0;
  for (const QString &text : {item.barcode, item.item, item.descr}) {
    ++position;
    if (!text.isNull()) {
      statement.bind(position, text.toStdString());
    }
  }
  statement.exec();
}
