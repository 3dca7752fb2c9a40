#include "files/delivery_file.h"

#include "files/csv_deliveries.h"
#include "files/json_deliveries.h"
#include "model/input_error.h"

#include <fstream>
#include <sstream>
#include <string>
#include <utility>

namespace cartonpick::orders {

namespace {

std::string readText(const std::filesystem::path &file) {
  // Reading a folder would not fail before the first byte is asked for.
  std::ifstream stream(file, std::ios::binary);
  if (!stream || std::filesystem::is_directory(file)) {
    throw InputError("the file can't be read");
  }
  std::ostringstream text;
  text << stream.rdbuf();
  return std::move(text).str();
}

bool isCsv(const std::filesystem::path &file) {
  const std::string extension = file.extension();
  return extension == ".csv" || extension == ".CSV";
}

}  // namespace

Deliveries readDeliveryFile(const std::filesystem::path &file) {
  return readAt(file.string(), [&] {
    const std::string text = readText(file);
    return isCsv(file) ? deliveriesFromCsv(text) : deliveriesFromJson(text);
  });
}

}  // namespace cartonpick::orders
