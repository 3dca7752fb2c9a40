#pragma once

#include <QStringList>

/// Returns the open files, sockets and pipes of this process. A database's main file is left out,
/// because SQLite keeps its descriptor for the next connection; an open connection is still
/// visible by its write-ahead log.
QStringList openDescriptors();
/// Returns the number of Qt's network threads. Every pending reply has one.
qsizetype networkThreads();
/// Returns the peak memory use in bytes since the last call of forgetPeakMemory().
qint64 peakMemory();
void forgetPeakMemory();
