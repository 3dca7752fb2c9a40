#include "pages/barcodes.h"

#include "model/ean13.h"
#include "pages/html.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <zint.h>

namespace cartonpick::orders {

namespace {

/// A kind of barcode, and the white that it needs at its sides, in modules.
struct Symbology {
  int id;
  std::string_view name;
  int leftQuietZone;
  int rightQuietZone;
};

constexpr Symbology kCode128 = {BARCODE_CODE128, "Code 128", 10, 10};
constexpr Symbology kEan13 = {BARCODE_EANX, "EAN-13", 11, 7};

bool isDark(const zint_symbol &symbol, int module) {
  return ((symbol.encoded_data[0][module / 8] >> (module % 8)) & 1) != 0;
}

/// Every bar as a rectangle of height 1.
std::string barsOf(const zint_symbol &symbol, int left) {
  std::string path;
  int module = 0;
  while (module < symbol.width) {
    int end = module;
    while (end < symbol.width && isDark(symbol, end)) {
      ++end;
    }
    if (end > module) {
      const std::string width = std::to_string(end - module);
      path.append("M").append(std::to_string(left + module)).append(" 0h").append(width);
      path.append("v1h-").append(width).append("z");
    }
    module = std::max(end, module + 1);
  }
  return path;
}

std::string svg(const Symbology &symbology, const std::string &text) {
  const std::unique_ptr<zint_symbol, decltype(&ZBarcode_Delete)> symbol(ZBarcode_Create(),
                                                                        &ZBarcode_Delete);
  symbol->symbology = symbology.id;
  // The library takes bytes that are not signed.
  const std::basic_string<unsigned char> bytes(text.begin(), text.end());
  if (ZBarcode_Encode(symbol.get(), bytes.c_str(), static_cast<int>(bytes.size())) != 0) {
    return {};
  }
  const std::string width =
      std::to_string(symbology.leftQuietZone + symbol->width + symbology.rightQuietZone);
  return R"(<svg class="barcode" role="img" aria-label=")" + std::string(symbology.name) + ' ' +
         // A module is one em wide.
         escaped(text) + "\" width=\"" + width + "em\" viewBox=\"0 0 " + width +
         R"( 1" preserveAspectRatio="none" shape-rendering="crispEdges"><path d=")" +
         barsOf(*symbol, symbology.leftQuietZone) + "\"/></svg>";
}

bool isPrintable(char c) {
  return c >= ' ' && c <= '~';
}

bool isEan13(const std::string &code) {
  return code.size() == 13 && code.find_first_not_of("0123456789") == std::string::npos &&
         ean13(code.substr(0, 12)) == code;
}

}  // namespace

std::string code128(const std::string &text) {
  const bool canHold = !text.empty() && std::all_of(text.begin(), text.end(), isPrintable);
  return canHold ? svg(kCode128, text) : std::string();
}

std::string articleBarcode(const std::string &code) {
  return isEan13(code) ? svg(kEan13, code) : code128(code);
}

}  // namespace cartonpick::orders
