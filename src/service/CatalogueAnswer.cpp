#include "service/CatalogueAnswer.h"

#include "service/JsonValues.h"

#include <simdjson.h>
#include <string_view>
#include <utility>

namespace {

using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::object;

static_assert(CatalogueAnswer::kSpareBytes >= qsizetype{simdjson::SIMDJSON_PADDING});

/// How long a piece is, at least: it should stay in the processor's cache.
constexpr std::size_t kPieceBytes = 256'000;

/// The position of the quotation mark that ends the string that begins at `begin`.
std::size_t endOfString(std::string_view text, std::size_t begin) {
  std::size_t i = begin + 1;
  while (i < text.size() && text[i] != '"') {
    i += text[i] == '\\' ? 2 : 1;
  }
  return i;
}

/// Commas between elements of the array `text`, at least a piece apart. A text that is not JSON may
/// be cut anywhere.
std::vector<std::size_t> cutsOf(std::string_view text) {
  std::vector<std::size_t> cuts;
  std::size_t begin = 0;
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    switch (text[i]) {
      case '"':
        i = endOfString(text, i);
        break;
      case '[':
      case '{':
        ++depth;
        break;
      case ']':
      case '}':
        --depth;
        break;
      case ',':
        if (depth == 1 && i - begin >= kPieceBytes) {
          cuts.push_back(i);
          begin = i;
        }
        break;
      default:
        break;
    }
  }
  return cuts;
}

/// Reads an array piece by piece. Each piece is made an array of its own by writing brackets over
/// the commas on either side of it. If every such array is valid and, where there are several, has
/// elements, then the whole is valid: so a text that is not JSON fails wherever it was cut.
class PieceReader {
 public:
  /// Behind `body` there must be capacity for the parser to read into.
  PieceReader(QByteArray &body, const std::vector<std::size_t> &cuts)
      : m_text(body.data()), m_size(static_cast<std::size_t>(body.size())), m_cuts(cuts) {}

  [[nodiscard]] std::size_t count() const { return m_cuts.size() + 1; }

  /// The elements of piece `index`, valid until the next call. Throws simdjson_error.
  array read(std::size_t index) {
    const std::size_t begin = index == 0 ? 0 : m_cuts[index - 1];
    const std::size_t end = index == m_cuts.size() ? m_size : m_cuts[index] + 1;
    if (index != 0) {
      m_text[begin] = '[';
    }
    if (index != m_cuts.size()) {
      m_text[end - 1] = ']';
    }
    const array elements = m_parser.parse(m_text + begin, end - begin, false);
    if (elements.size() == 0 && !m_cuts.empty()) {
      throw simdjson::simdjson_error(simdjson::TAPE_ERROR);
    }
    return elements;
  }

 private:
  char *m_text;
  std::size_t m_size;
  const std::vector<std::size_t> &m_cuts;
  simdjson::dom::parser m_parser;
};

void readText(element value, std::string &text) {
  if (value.is_string()) {
    text = value.get_string().value();
  } else {
    text = textOf(value).toStdString();
  }
}

void readArticle(object fields, Article &article) {
  article.barcode.clear();
  article.item.clear();
  article.descr.clear();
  for (const auto [key, value] : fields) {
    if (key == "barcode") {
      readText(value, article.barcode);
    } else if (key == "item") {
      readText(value, article.item);
    } else if (key == "descr") {
      readText(value, article.descr);
    }
  }
}

/// Some services begin their answers with it; JSON does not.
constexpr QByteArrayView kByteOrderMark = "\xEF\xBB\xBF";

/// "doc" of the first of `elements`; a null string if there is none.
QString docOf(array elements) {
  element doc;
  const bool hasDoc = elements.at(0)["doc"].get(doc) == simdjson::SUCCESS;
  return hasDoc && !doc.is_array() && !doc.is_object() ? textOf(doc) : QString();
}

}  // namespace

CatalogueAnswer::CatalogueAnswer(QByteArray body) : m_body(std::move(body)) {
  if (m_body.startsWith(kByteOrderMark)) {
    m_body.remove(0, kByteOrderMark.size());
  }
  m_body.reserve(m_body.size() + kSpareBytes);
  m_cuts = cutsOf({m_body.constData(), static_cast<std::size_t>(m_body.size())});
}

std::optional<CatalogueAnswer> CatalogueAnswer::read(QByteArray body) {
  try {
    CatalogueAnswer answer(std::move(body));
    answer.forEachArticle([&](const Article & /*article*/) {
      ++answer.m_articleCount;
      return true;
    });
    answer.m_jsonResult.doc = docOf(PieceReader(answer.m_body, answer.m_cuts).read(0));
    return answer;
  } catch (const simdjson::simdjson_error &) {
    return std::nullopt;
  }
}

bool CatalogueAnswer::forEachArticle(const std::function<bool(const Article &)> &visit) {
  PieceReader pieces(m_body, m_cuts);
  Article article;
  for (std::size_t i = 0; i < pieces.count(); ++i) {
    for (const object fields : pieces.read(i)) {
      readArticle(fields, article);
      if (!visit(article)) {
        return false;
      }
    }
  }
  return true;
}
