#pragma once

#include "store/Items.h"

#include <QString>

// Access to the catalogue of the store at `storePath` through a separate connection. Both functions
// throw SQLite::Exception if the file is not a store.

/// Returns the number of saved articles.
int articleCount(const QString &storePath);

/// Adds `item` after the other articles and commits. No other connection must be writing.
void addArticle(const QString &storePath, const Items &item);
