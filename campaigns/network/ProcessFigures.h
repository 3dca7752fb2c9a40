#pragma once

#include <QStringList>

/// What this process has open at the moment: files, sockets, pipes. Not so a database's main file,
/// of which SQLite keeps descriptors for its next connection; what is left of a connection shows by
/// its log.
QStringList openDescriptors();
/// The number of threads in which Qt's network runs. A reply that is pending has one.
qsizetype networkThreads();
/// The most memory that was in use since `forgetPeakMemory`, in bytes.
qint64 peakMemory();
void forgetPeakMemory();
