#pragma once

#include "http/http_message.h"
#include "store/sql_store.h"

#include <optional>
#include <string>
#include <string_view>

namespace cartonpick::orders {

/// The supervisor's web pages: the deliveries, each delivery, which can be reopened, and its sheet
/// to print. May be called from several threads at once.
class SupervisorPages {
 public:
  /// The store must outlive the pages. Deliveries are reopened only if `canReopen`, which is for
  /// pages behind a token: a page from elsewhere could send the form of others.
  explicit SupervisorPages(SqlStore &store, bool canReopen = false)
      : m_store(store), m_canReopen(canReopen) {}

  /// Returns true if a POST to the path reopens a delivery.
  static bool isReopening(std::string_view path);

  /// The page of a GET or HEAD of one of its paths, what a POST that reopens a delivery leads to,
  /// or the refusal of another method; nothing for any other path. Throws what the store throws.
  std::optional<Answer> answer(const Request &request) const;

 private:
  Answer list(const std::string &target) const;
  Answer delivery(std::string_view encodedNumber, bool isSheet) const;

  Answer reopen(std::string_view encodedNumber) const;

  SqlStore &m_store;
  bool m_canReopen;
};

}  // namespace cartonpick::orders
