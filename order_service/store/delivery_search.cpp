#include "store/delivery_search.h"

#include "store/case_folding.h"

#include <cstddef>
#include <soci/soci.h>
#include <utility>
#include <vector>

namespace cartonpick::orders {

namespace {

constexpr char kSeparator = '\n';

/// The same words as in the index delivery_to_update, so that the databases use it.
constexpr auto kIsOutdated = "(search_text = '' OR search_customer <> customer)";

struct NamedDelivery {
  std::string number;
  std::string customer;
};

/// Returns the folded text as a LIKE pattern that matches it literally.
std::string literally(std::string_view text) {
  std::string pattern;
  for (const char c : caseFolded(text)) {
    if (c == '!' || c == '%' || c == '_') {
      pattern += '!';
    }
    pattern += c;
  }
  return pattern;
}

std::vector<NamedDelivery> selectOutdated(soci::session &session, const std::string &after) {
  constexpr int kMost = 1000;
  NamedDelivery delivery;
  soci::statement select =
      (session.prepare << std::string("SELECT number, customer FROM delivery WHERE ") +
                              kIsOutdated + " AND number > :after ORDER BY number LIMIT " +
                              std::to_string(kMost),
       soci::use(after), soci::into(delivery.number), soci::into(delivery.customer));
  std::vector<NamedDelivery> outdated;
  select.execute();
  while (select.fetch()) {
    outdated.push_back(delivery);
  }
  return outdated;
}

/// A statement for many deliveries, as most of the time for one would be that of the round trip.
std::string updateOf(std::size_t deliveries) {
  std::string values;
  for (std::size_t i = 0; i < deliveries; ++i) {
    const std::string index = std::to_string(i);
    values.append(i == 0 ? "(:number" : ", (:number").append(index);
    values.append(", :customer").append(index).append(", :text").append(index).append(")");
  }
  return "WITH folded (number, customer, text) AS (VALUES " + values +
         ") UPDATE delivery SET search_text = folded.text, search_customer = folded.customer "
         "FROM folded WHERE delivery.number = folded.number";
}

}  // namespace

std::string searchTextOf(std::string_view number, std::string_view customer) {
  return caseFolded(number) + kSeparator + caseFolded(customer);
}

std::string numberPattern(std::string_view search) {
  return literally(search) + '%';
}

std::string customerPattern(std::string_view search) {
  return std::string{'%', kSeparator, '%'} + literally(search) + '%';
}

bool hasOutdatedSearchTexts(soci::session &session) {
  // To count them all lets PostgreSQL use the index though it expects that many are outdated.
  long long count = 0;
  session << std::string("SELECT count(*) FROM delivery WHERE ") + kIsOutdated, soci::into(count);
  return count > 0;
}

std::optional<std::string> updateSearchTexts(soci::session &session, const std::string &after) {
  const std::vector<NamedDelivery> outdated = selectOutdated(session, after);
  if (outdated.empty()) {
    return std::nullopt;
  }
  std::vector<std::string> texts;
  texts.reserve(outdated.size());
  soci::statement update(session);
  for (const NamedDelivery &delivery : outdated) {
    texts.push_back(searchTextOf(delivery.number, delivery.customer));
  }
  for (std::size_t i = 0; i < outdated.size(); ++i) {
    update.exchange(soci::use(outdated[i].number));
    update.exchange(soci::use(outdated[i].customer));
    update.exchange(soci::use(texts[i]));
  }
  update.alloc();
  update.prepare(updateOf(outdated.size()));
  update.define_and_bind();
  update.execute(true);
  return outdated.back().number;
}

}  // namespace cartonpick::orders
