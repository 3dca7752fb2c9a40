#pragma once

#include "model/deliveries.h"
#include "model/input_error.h"
#include "model/pick_report.h"

#include <nlohmann/json.hpp>
#include <string>

namespace cartonpick::orders {

inline const std::string kJsonType = "application/json";

/// Two deliveries, "D1" of two lines and "D 2/ß" of one, and a catalogue of four articles.
Deliveries sampleDeliveries();

/// A line of the delivery "D1".
OrderLine orderLine();

/// An order line as the service answers it.
nlohmann::json orderLineJson();

/// The lines of a correct report about delivery "D1", as many as asked for.
nlohmann::json pickingJson(int lines = 1);

/// The fact that the only line of pickingJson() reports.
PickReport pickReport();

/// The text of the InputError that `call` throws; "nothing thrown" without one.
template <class Call>
std::string errorOf(Call call) {
  try {
    call();
  } catch (const InputError &error) {
    return error.what();
  }
  return "nothing thrown";
}

}  // namespace cartonpick::orders
