#pragma once

#include "store/sql_address.h"

#include <soci/soci.h>
#include <string>

namespace cartonpick::orders {

/// Where the two databases' statements differ in words.
struct SqlWords {
  std::string text;           ///< the type of a text, which is compared byte by byte
  std::string number;         ///< the type of a number of 64 bits
  std::string counter;        ///< the type of a column that numbers its rows
  std::string tableOfItsKey;  ///< what follows a table that is its primary key's index
  std::string now;            ///< the database's time, UTC, yyyy-MM-dd HH:mm:ss.zzzzzz
  std::string later;          ///< the function of the later one of two times
};

const SqlWords &sqlWords(SqlDialect dialect);

/// The statement with the words in place of their names in braces: {text}, {now} and so on.
std::string sqlOf(std::string statement, SqlDialect dialect);

/// Gives SQLite the function that its {now} calls.
void addClock(soci::session &session);

/// The condition that a later reopening of its delivery undid a row of picked_line.
inline constexpr auto kIsUndone =
    "EXISTS (SELECT 1 FROM reopening WHERE reopening.delivery = picked_line.delivery AND "
    "(picked_line.received_at, picked_line.received_no) <= "
    "(reopening.reopened_at, reopening.number))";

}  // namespace cartonpick::orders
