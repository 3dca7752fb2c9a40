#include "store/delivery_summary.h"

#include "store/delivery_search.h"
#include "store/sql_words.h"

#include <soci/soci.h>
#include <string_view>

namespace cartonpick::orders {

namespace {

/// Takes what is to be shown by index first, then adds up only that. What is picked of a line is
/// its fact that was received last.
constexpr std::string_view kSelect = R"(
  WITH shown AS (
    SELECT number, customer, changed_at FROM delivery
    WHERE {search}
      (EXISTS (SELECT 1 FROM order_line WHERE delivery = number)
       OR EXISTS (SELECT 1 FROM picked_line WHERE delivery = number))
    ORDER BY changed_at DESC, number LIMIT {limit}),
  fact AS (
    SELECT delivery, order_no, box, item, barcode, quantity, received_at,
           row_number() OVER (PARTITION BY delivery, order_no, box, item, barcode
                              ORDER BY received_at DESC, received_no DESC,
                                       picked_at DESC) AS age
    FROM picked_line WHERE delivery IN (SELECT number FROM shown) AND NOT {undone}),
  part AS (
    SELECT delivery, order_no, box, item, barcode, quantity AS ordered, 0 AS picked,
           box AS ordered_box, 0 AS is_sent, '' AS received_at
    FROM order_line WHERE delivery IN (SELECT number FROM shown)
    UNION ALL
    SELECT delivery, order_no, box, item, barcode, 0, quantity, NULL, 1, received_at
    FROM fact WHERE age = 1),
  line AS (
    SELECT delivery, sum(ordered) AS ordered, sum(picked) AS picked,
           max(ordered_box) AS ordered_box, max(is_sent) AS is_sent,
           max(received_at) AS received_at
    FROM part GROUP BY delivery, order_no, box, item, barcode),
  total AS (
    SELECT delivery, count(DISTINCT ordered_box) AS boxes, sum(ordered) AS ordered,
           sum(picked) AS picked, max(received_at) AS sent_at, max(is_sent) AS is_sent,
           max(CASE WHEN picked < ordered THEN 1 ELSE 0 END) AS is_short,
           max(CASE WHEN picked > ordered THEN 1 ELSE 0 END) AS is_over
    FROM line GROUP BY delivery)
  SELECT number, customer, boxes, CAST(ordered AS BIGINT), CAST(picked AS BIGINT), sent_at,
         is_sent, is_short, is_over
  FROM shown JOIN total ON total.delivery = number
  ORDER BY changed_at DESC, number)";

std::string replaced(std::string text, std::string_view from, std::string_view to) {
  return text.replace(text.find(from), from.size(), to);
}

std::string selectOf(bool isSearch) {
  const std::string condition = isSearch ? std::string(kIsFound) + " AND" : "";
  const std::string select = replaced(std::string(kSelect), "{search}", condition);
  return replaced(replaced(select, "{undone}", kIsUndone), "{limit}",
                  std::to_string(kMaxSummaries));
}

}  // namespace

std::vector<DeliverySummary> selectSummaries(soci::session &session, const std::string &search) {
  const std::string number = numberPattern(search);
  const std::string customer = customerPattern(search);
  DeliverySummary summary;
  long long ordered = 0;
  long long picked = 0;
  int isSent = 0;
  int isShort = 0;
  int isOver = 0;
  soci::statement select(session);
  if (!search.empty()) {
    select.exchange(soci::use(number));
    select.exchange(soci::use(customer));
  }
  select.exchange(soci::into(summary.number));
  select.exchange(soci::into(summary.customer));
  select.exchange(soci::into(summary.boxes));
  select.exchange(soci::into(ordered));
  select.exchange(soci::into(picked));
  select.exchange(soci::into(summary.sentAt));
  select.exchange(soci::into(isSent));
  select.exchange(soci::into(isShort));
  select.exchange(soci::into(isOver));
  select.alloc();
  select.prepare(selectOf(!search.empty()));
  select.define_and_bind();
  select.execute();
  std::vector<DeliverySummary> summaries;
  while (select.fetch()) {
    summary.ordered = ordered;
    summary.picked = picked;
    summary.state = stateOf({.isOrdered = summary.boxes > 0,
                             .isSent = isSent != 0,
                             .isShort = isShort != 0,
                             .isOver = isOver != 0});
    summaries.push_back(summary);
  }
  return summaries;
}

}  // namespace cartonpick::orders
