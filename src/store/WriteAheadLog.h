#pragma once

namespace SQLite {
class Database;
}

/// Writes what can be read of the log of `database` once more, byte for byte, and brings it to
/// disk. Throws SQLite::Exception.
///
/// After a synchronisation that failed, the system may go on showing what never reached the disk,
/// and not try again. What is stored on top of that is lost with it, when the power goes.
void bringLogToDisk(SQLite::Database &database);
