#include "demo/demo_deliveries.h"

#include "demo/demo_catalogue.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace cartonpick::orders {

namespace {

/// What the lines of one order have in common.
struct Order {
  std::string customer;
  std::string delivery;
  std::string number;
  std::string orderDate = "03/02/2026";
  std::string shippingDate = "03/05/2026";
};

std::string cartonName(std::size_t number) {
  const std::string digits = std::to_string(number);
  return 'C' + std::string(3 - std::min<std::size_t>(digits.size(), 3), '0') + digits;
}

/// Collects order lines. Articles are named by their place in the catalogue, which wraps around.
class DeliveryMaker {
 public:
  explicit DeliveryMaker(std::vector<DemoArticle> catalogue) : m_catalogue(std::move(catalogue)) {}

  void add(const Order &order, std::size_t carton, std::size_t article, std::int32_t quantity) {
    const DemoArticle &ordered = m_catalogue[article % m_catalogue.size()];
    m_lines.push_back({.customer = order.customer,
                       .brand = ordered.brand,
                       .orderDate = order.orderDate,
                       .shippingDate = order.shippingDate,
                       .delivery = order.delivery,
                       .order = order.number,
                       .article = ordered.article,
                       .quantity = quantity,
                       .carton = cartonName(carton)});
  }

  /// Cartons of equally many lines, each line of another article.
  void addCartons(const Order &order, std::size_t cartons, std::size_t linesEach,
                  std::size_t firstArticle) {
    for (std::size_t i = 0; i < cartons * linesEach; ++i) {
      // A prime number, so that the steps meet every article before they come back to the first.
      const std::size_t article = firstArticle + i * 37;
      add(order, i / linesEach + 1, article, static_cast<std::int32_t>(1 + i * 5 % 12));
    }
  }

  Deliveries take() const {
    std::vector<Article> articles;
    for (const DemoArticle &known : m_catalogue) {
      articles.push_back(known.article);
    }
    return {m_lines, std::move(articles)};
  }

 private:
  std::vector<DemoArticle> m_catalogue;
  std::vector<OrderLine> m_lines;
};

void addItemInSeveralCartons(DeliveryMaker &maker) {
  const Order order = {.customer = "Harbour Gifts Ltd", .delivery = "4713", .number = "SO-20613"};
  maker.addCartons(order, 4, 3, 50);
  for (std::size_t carton = 1; carton <= 4; ++carton) {
    maker.add(order, carton, 10, 6);
  }
}

void addItemTwiceInOneCarton(DeliveryMaker &maker) {
  const Order order = {.customer = "Miller's Farm Shop", .delivery = "4714", .number = "SO-20614"};
  maker.addCartons(order, 2, 3, 490);
  maker.add(order, 1, 530, 4);
  maker.add(order, 1, 530, 8);
}

void addSpecialities(DeliveryMaker &maker, std::size_t firstSpeciality) {
  const Order order = {.customer = "Café Größenwahn & Søn, Łódź – Entrée Straße 7",
                       .delivery = "4716",
                       .number = "SO-20616"};
  for (std::size_t i = 0; i < 8; ++i) {
    maker.add(order, i / 4 + 1, firstSpeciality + i, static_cast<std::int32_t>(1 + i));
  }
}

void addSeveralDates(DeliveryMaker &maker) {
  const Order early = {.customer = "The Corner Larder",
                       .delivery = "4717",
                       .number = "SO-20588",
                       .orderDate = "12/29/2025",
                       .shippingDate = "01/07/2026"};
  Order late = early;
  late.number = "SO-20617";
  late.orderDate = "01/05/2026";
  late.shippingDate = "02/28/2026";
  maker.addCartons(early, 2, 2, 120);
  maker.addCartons(late, 2, 2, 300);
}

void addCrowdedCarton(DeliveryMaker &maker) {
  const Order order = {.customer = "Willow & Oak", .delivery = "4718", .number = "SO-20618"};
  maker.addCartons(order, 1, 9, 210);
  maker.add(order, 1, 77, 0);
  maker.add(order, 2, 78, 144);
}

}  // namespace

Deliveries demoDeliveries() {
  const std::vector<DemoArticle> catalogue = demoCatalogue();
  DeliveryMaker maker(catalogue);
  maker.addCartons({.customer = "Rosie's Kitchen", .delivery = "4711", .number = "SO-20611"}, 3, 4,
                   0);
  maker.addCartons({.customer = "Northgate Stores", .delivery = "4712", .number = "SO-20612"}, 40,
                   15, 5);
  addItemInSeveralCartons(maker);
  addItemTwiceInOneCarton(maker);
  maker.addCartons({.customer = "J. Penrose", .delivery = "4715", .number = "SO-20615"}, 1, 1, 42);
  addSpecialities(maker, catalogue.size() - 8);
  addSeveralDates(maker);
  addCrowdedCarton(maker);
  maker.addCartons({.customer = "Quay Street Deli", .delivery = "4719 2B", .number = "SO-20619"}, 2,
                   3, 500);
  return maker.take();
}

}  // namespace cartonpick::orders
