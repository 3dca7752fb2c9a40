#include "files/csv_records.h"

#include "model/input_error.h"

#include <algorithm>
#include <csv.h>
#include <new>
#include <utility>

namespace cartonpick::orders {

namespace {

/// The parser of the CSV library, fed line by line so that records can tell where they started.
class CsvParser {
 public:
  CsvParser() {
    if (csv_init(&m_parser, CSV_STRICT | CSV_STRICT_FINI) != 0) {
      throw std::bad_alloc();
    }
    // By default blanks around a field are dropped, which RFC 4180 forbids.
    csv_set_space_func(&m_parser, [](unsigned char) { return 0; });
  }
  CsvParser(const CsvParser &) = delete;
  CsvParser &operator=(const CsvParser &) = delete;
  ~CsvParser() { csv_free(&m_parser); }

  void feedLine(std::string_view line) {
    ++m_line;
    const bool isEmpty = line.find_first_not_of("\r\n") == std::string_view::npos;
    if (!m_isInRecord && !isEmpty) {
      m_record.line = m_line;
      m_isInRecord = true;
    }
    if (csv_parse(&m_parser, line.data(), line.size(), onField, onRecord, this) != line.size()) {
      throw InputError("line " + std::to_string(m_line) + ": a quote is in the wrong place");
    }
  }

  std::vector<CsvRecord> finish() {
    if (csv_fini(&m_parser, onField, onRecord, this) != 0) {
      throw InputError("line " + std::to_string(m_record.line) + ": a quoted field has no end");
    }
    return std::move(m_records);
  }

 private:
  static void onField(void *text, std::size_t size, void *self) {
    static_cast<CsvParser *>(self)->m_record.fields.emplace_back(static_cast<const char *>(text),
                                                                 size);
  }

  static void onRecord(int /*terminator*/, void *self) {
    auto *parser = static_cast<CsvParser *>(self);
    parser->m_records.push_back(std::exchange(parser->m_record, {}));
    parser->m_isInRecord = false;
  }

  csv_parser m_parser{};
  std::size_t m_line = 0;
  bool m_isInRecord = false;
  CsvRecord m_record;
  std::vector<CsvRecord> m_records;
};

/// The first line of a text with its end, which is CR, LF or both.
std::string_view firstLine(std::string_view text) {
  const std::size_t end = std::min(text.find_first_of("\r\n"), text.size() - 1);
  return text.substr(0, end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
}

}  // namespace

std::vector<CsvRecord> readCsvRecords(std::string_view text) {
  CsvParser parser;
  while (!text.empty()) {
    const std::string_view line = firstLine(text);
    parser.feedLine(line);
    text.remove_prefix(line.size());
  }
  return parser.finish();
}

}  // namespace cartonpick::orders
