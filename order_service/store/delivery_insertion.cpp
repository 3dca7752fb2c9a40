#include "store/delivery_insertion.h"

#include "store/delivery_search.h"
#include "store/sql_words.h"

#include <soci/soci.h>
#include <string>
#include <vector>

namespace cartonpick::orders {

namespace {

void replaceLines(soci::session &session, const std::string &delivery,
                  const std::vector<OrderLine> &lines) {
  session << "DELETE FROM order_line WHERE delivery = :delivery", soci::use(delivery);
  int position = 0;
  OrderLine line;
  soci::statement insert =
      (session.prepare << "INSERT INTO order_line (delivery, position, order_no, customer, brand, "
                          "order_date, shipping_date, box, item, barcode, description, quantity) "
                          "VALUES (:delivery, :position, :order, :customer, :brand, :ordered, "
                          ":shipped, :box, :item, :barcode, :description, :quantity)",
       soci::use(delivery), soci::use(position), soci::use(line.order), soci::use(line.customer),
       soci::use(line.brand), soci::use(line.orderDate), soci::use(line.shippingDate),
       soci::use(line.carton), soci::use(line.article.item), soci::use(line.article.barcode),
       soci::use(line.article.description), soci::use(line.quantity));
  for (const OrderLine &next : lines) {
    line = next;
    insert.execute(true);
    ++position;
  }
}

struct DeliveryNote {
  std::string number;
  std::string customer;
  std::string time;
};

void noteDelivery(soci::session &session, SqlDialect dialect, const DeliveryNote &note) {
  const std::string text = searchTextOf(note.number, note.customer);
  session << sqlOf(
      "INSERT INTO delivery (number, customer, changed_at, search_text, search_customer) "
      "VALUES (:number, :customer, :now, :text, :customer_of_text) "
      "ON CONFLICT (number) DO UPDATE SET customer = excluded.customer, "
      "search_text = excluded.search_text, search_customer = excluded.search_customer, "
      "changed_at = {later}(delivery.changed_at, excluded.changed_at)",
      dialect),
      soci::use(note.number), soci::use(note.customer), soci::use(note.time), soci::use(text),
      soci::use(note.customer);
}

void addArticles(soci::session &session, const std::vector<Article> &articles) {
  Article article;
  soci::statement insert =
      (session.prepare << "INSERT INTO article (barcode, item, description) "
                          "VALUES (:barcode, :item, :description) "
                          "ON CONFLICT DO NOTHING",
       soci::use(article.barcode), soci::use(article.item), soci::use(article.description));
  for (const Article &next : articles) {
    article = next;
    insert.execute(true);
  }
}

}  // namespace

void insertDeliveries(soci::session &session, SqlDialect dialect, const Deliveries &deliveries) {
  std::string time;
  session << "SELECT " + sqlWords(dialect).now, soci::into(time);
  for (const auto &[delivery, lines] : deliveries.all()) {
    replaceLines(session, delivery, lines);
    noteDelivery(session, dialect, {delivery, lines.front().customer, time});
  }
  addArticles(session, deliveries.catalogue());
}

void removeDeliveries(soci::session &session) {
  for (const char *table : {"order_line", "article"}) {
    session << std::string("DELETE FROM ") + table;
  }
}

}  // namespace cartonpick::orders
