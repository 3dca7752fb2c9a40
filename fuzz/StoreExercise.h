#pragma once

#include <QString>

/// Opens the file at `path` as the program does, asks it everything that the program asks, and
/// changes it as the program does. Whatever is in the file, nothing of it runs: it is refused with
/// a line in the log, or its fetches answer nothing, or it is a store like any other.
void exerciseStore(const QString &path);
