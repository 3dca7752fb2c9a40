#pragma once

#include "http/http_message.h"
#include "store/sql_store.h"

#include <optional>
#include <string>
#include <string_view>

namespace cartonpick::orders {

/// The supervisor's web pages: the deliveries, each delivery, and its sheet to print. May be called
/// from several threads at once.
class SupervisorPages {
 public:
  /// The store must outlive the pages.
  explicit SupervisorPages(const SqlStore &store) : m_store(store) {}

  /// The page of a GET or HEAD of one of its paths, or the refusal of another method; nothing for
  /// any other path. Throws what the store throws.
  std::optional<Answer> answer(const Request &request) const;

 private:
  Answer list(const std::string &target) const;
  Answer delivery(std::string_view encodedNumber, bool isSheet) const;

  const SqlStore &m_store;
};

}  // namespace cartonpick::orders
