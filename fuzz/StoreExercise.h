#pragma once

#include <QString>

/// Opens the file at `path`, runs all fetches and changes the store, as the program does. Whatever
/// the file contains, it must either be rejected with a log line, or behave like a store whose
/// fetches can fail; no code in it must be executed.
void exerciseStore(const QString &path);
