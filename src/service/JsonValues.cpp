#include "service/JsonValues.h"

#include "base/Utf8.h"

#include <QLocale>

#include <limits>
#include <utility>

namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

template <class Integer>
Quantity integerOf(Integer value) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (std::in_range<std::int32_t>(value)) {
    return static_cast<std::int32_t>(value);
  }
  return Quantity::delivered(value < 0 ? Limits::min() : Limits::max(), QString::number(value));
}

}  // namespace

std::string_view jsonTextOf(const QByteArray &body) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  std::string_view text(body.constData(), static_cast<std::size_t>(body.size()));
  if (text.substr(0, kMark.size()) == kMark) {
    text.remove_prefix(kMark.size());
  }
  return text;
}

QString textOf(element value) {
  switch (value.type()) {
    case element_type::STRING:
      return textOfUtf8(value.get_string());
    case element_type::INT64:
      return QString::number(std::int64_t{value.get_int64()});
    case element_type::UINT64:
      return QString::number(std::uint64_t{value.get_uint64()});
    case element_type::DOUBLE:
      return QString::number(double{value.get_double()}, 'g', QLocale::FloatingPointShortest);
    case element_type::BOOL:
      return bool{value.get_bool()} ? QStringLiteral("1") : QStringLiteral("0");
    case element_type::NULL_VALUE:
      return QStringLiteral("");
    case element_type::ARRAY:
    case element_type::OBJECT:
      break;
  }
  throw simdjson::simdjson_error(simdjson::INCORRECT_TYPE);
}

Quantity quantityOf(element value) {
  switch (value.type()) {
    case element_type::INT64:
      return integerOf(std::int64_t{value.get_int64()});
    case element_type::UINT64:
      return integerOf(std::uint64_t{value.get_uint64()});
    case element_type::DOUBLE:
      return Quantity::delivered(clampToInt32(value.get_double()), textOf(value));
    case element_type::NULL_VALUE:
      return {};
    default:
      return Quantity::delivered(textOf(value));
  }
}
