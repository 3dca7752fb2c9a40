#include "store/delivery_events.h"

#include "store/sql_words.h"

namespace cartonpick::orders {

namespace {

// The time of an event is not before that of the last one, whatever the clock says.
constexpr auto kTouchDelivery =
    "INSERT INTO delivery (number, customer, changed_at, reports) "
    "VALUES (:delivery, '', {now}, 1) "
    "ON CONFLICT (number) DO UPDATE SET changed_at = {later}(delivery.changed_at, {now}), "
    "reports = delivery.reports + 1 RETURNING changed_at, reports";

const std::string kInsertPicked =
    "INSERT INTO picked_line (delivery, order_no, box, item, barcode, quantity, picked_at, "
    "received_at, received_no) VALUES (:delivery, :order, :box, :item, :barcode, :quantity, "
    ":picked, :received, :number) "
    "ON CONFLICT (delivery, order_no, box, item, barcode, quantity, picked_at) "
    "DO UPDATE SET received_at = excluded.received_at, received_no = excluded.received_no WHERE " +
    std::string(kIsUndone);

}  // namespace

DeliveryEvents::DeliveryEvents(soci::session &session, SqlDialect dialect)
    : m_session(session),
      m_touchDelivery((session.prepare << sqlOf(kTouchDelivery, dialect),
                       soci::use(m_picked.delivery), soci::into(m_time), soci::into(m_number))),
      m_insertPicked((session.prepare << kInsertPicked, soci::use(m_picked.delivery),
                      soci::use(m_picked.order), soci::use(m_picked.box), soci::use(m_picked.item),
                      soci::use(m_picked.barcode), soci::use(m_picked.quantity),
                      soci::use(m_picked.pickedAt), soci::use(m_time), soci::use(m_number))) {}

/// Locks the delivery, so that two senders of one wait for each other here and nowhere else. As it
/// always changes a row, its commit waits for a synchronous standby also when all else is there.
void DeliveryEvents::begin(const std::string &delivery) {
  m_picked.delivery = delivery;
  m_touchDelivery.execute();
  // To the end: a statement that waits at a row would keep its view of the database.
  while (m_touchDelivery.fetch()) {
  }
}

void DeliveryEvents::insert(const std::vector<PickReport> &lines) {
  begin(lines.front().delivery);
  for (const PickReport &line : lines) {
    m_picked = line;
    m_insertPicked.execute(true);
  }
}

bool DeliveryEvents::reopen(const std::string &delivery) {
  begin(delivery);
  int reports = 0;
  m_session << "SELECT count(*) FROM picked_line WHERE delivery = :delivery AND NOT " +
                   std::string(kIsUndone),
      soci::use(delivery), soci::into(reports);
  if (reports == 0) {
    return false;
  }
  m_session << "INSERT INTO reopening (delivery, number, reopened_at) "
               "VALUES (:delivery, :number, :time)",
      soci::use(delivery), soci::use(m_number), soci::use(m_time);
  return true;
}

}  // namespace cartonpick::orders
