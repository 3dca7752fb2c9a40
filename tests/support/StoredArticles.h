#pragma once

#include "store/Items.h"

#include <QString>

/// The catalogue of the store at `storePath`, through a separate connection. Both functions throw
/// SQLite::Exception if the file is no store.

/// Returns the number of saved articles.
int articleCount(const QString &storePath);

/// Adds `item` behind the other articles and saves it. No other connection may be writing.
void addArticle(const QString &storePath, const Items &item);
