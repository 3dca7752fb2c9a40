#pragma once

namespace SQLite {
class Database;
}

/// Reads the write-ahead log of `database`, writes the same bytes back and syncs the file. Does
/// nothing if there is no log. Throws SQLite::Exception on an I/O error.
///
/// After a failed fsync the kernel can mark the pages clean: reads return the data, but it never
/// reaches the disk, and a later fsync succeeds. A power loss would lose that data and every
/// transaction that builds on it. Writing the pages again makes them dirty.
void bringLogToDisk(SQLite::Database &database);
