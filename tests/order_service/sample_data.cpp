#include "sample_data.h"

namespace cartonpick::orders {

namespace {

OrderLine orderLine(const std::string &delivery, const Article &article) {
  return {.customer = "Ann & Söhne",
          .brand = "HEARTHSIDE",
          .orderDate = "01/31/2026",
          .shippingDate = "02/28/2026",
          .delivery = delivery,
          .order = "SO-1",
          .article = article,
          .quantity = 3,
          .carton = "C001"};
}

}  // namespace

OrderLine orderLine() {
  return orderLine("D1", {"5012746100000", "20138A", "WHITE ENAMEL MUG"});
}

Deliveries sampleDeliveries() {
  const Article mug = {"5012746100000", "20138A", "WHITE ENAMEL MUG"};
  const Article bowl = {"5012746100017", "20138B", "CREAM BOWL \"16CM\""};
  const Article jug = {"5012746100024", "20138C", "MILK JUG"};
  const Article neverOrdered = {"5012746100031", "20138D", "TEAPOT"};
  return {{orderLine("D1", mug), orderLine("D1", bowl), orderLine("D 2/ß", jug)},
          {neverOrdered, mug}};
}

nlohmann::json orderLineJson() {
  return {{"cusname", "Ann & Söhne"},
          {"brand", "HEARTHSIDE"},
          {"cdate", "01/31/2026"},
          {"date", "02/28/2026"},
          {"doc", "D1"},
          {"ordernum", "SO-1"},
          {"item", "20138A"},
          {"barcode", "5012746100000"},
          {"descr", "WHITE ENAMEL MUG"},
          {"qty", 3},
          {"carton", "C001"}};
}

nlohmann::json pickingJson(int lines) {
  auto picking = nlohmann::json::array();
  for (int line = 1; line <= lines; ++line) {
    picking.push_back({{"barcode", "5012746100000"},
                       {"box", "C001"},
                       {"doc", "D1"},
                       {"item", "20138A"},
                       {"ordernum", "SO-1"},
                       {"qty", line},
                       {"datepicked", "2026-02-28 23:59:59"},
                       {"sent", 0}});
  }
  return picking;
}

PickReport pickReport() {
  return {.delivery = "D1",
          .order = "SO-1",
          .box = "C001",
          .item = "20138A",
          .barcode = "5012746100000",
          .quantity = 1,
          .pickedAt = "2026-02-28 23:59:59"};
}

}  // namespace cartonpick::orders
