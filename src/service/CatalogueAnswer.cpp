#include "service/CatalogueAnswer.h"

#include "service/JsonValues.h"

#include <algorithm>
#include <future>
#include <simdjson.h>
#include <string>
#include <utility>

namespace {

using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::object;

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

/// Reads an array piece by piece. Each piece is made an array of its own: brackets take the places
/// of the commas on either side of it. If every such array is valid and, where there are several,
/// has elements, then the whole is valid: so a text that is not JSON fails wherever it was cut.
class PieceReader {
 public:
  PieceReader(std::string_view text, const std::vector<std::size_t> &cuts)
      : m_text(text), m_cuts(cuts) {}

  /// The elements of piece `index`, valid until the next call. Throws simdjson_error.
  array read(std::size_t index) {
    const std::size_t begin = index == 0 ? 0 : m_cuts[index - 1];
    const std::size_t end = index == m_cuts.size() ? m_text.size() : m_cuts[index] + 1;
    m_piece.reserve(end - begin + simdjson::SIMDJSON_PADDING);
    m_piece = m_text.substr(begin, end - begin);
    if (index != 0) {
      m_piece.front() = '[';
    }
    if (index != m_cuts.size()) {
      m_piece.back() = ']';
    }
    const array elements = m_parser.parse(m_piece.data(), m_piece.size(), false);
    if (elements.size() == 0 && !m_cuts.empty()) {
      throw simdjson::simdjson_error(simdjson::TAPE_ERROR);
    }
    return elements;
  }

 private:
  std::string_view m_text;
  const std::vector<std::size_t> &m_cuts;
  std::string m_piece;
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
  m_cuts = cutsOf(text());
}

std::optional<CatalogueAnswer> CatalogueAnswer::read(QByteArray body) {
  try {
    CatalogueAnswer answer(std::move(body));
    const std::size_t middle = answer.pieceCount() / 2;
    auto secondHalf =
        std::async(std::launch::async, [&] { return answer.count(middle, answer.pieceCount()); });
    answer.m_articleCount = answer.count(0, middle);
    answer.m_articleCount += secondHalf.get();
    answer.m_jsonResult.doc = docOf(PieceReader(answer.text(), answer.m_cuts).read(0));
    return answer;
  } catch (const simdjson::simdjson_error &) {
    return std::nullopt;
  }
}

std::string_view CatalogueAnswer::text() const {
  return {m_body.constData(), static_cast<std::size_t>(m_body.size())};
}

std::size_t CatalogueAnswer::count(std::size_t begin, std::size_t end) const {
  PieceReader pieces(text(), m_cuts);
  Article article;
  std::size_t count = 0;
  for (std::size_t i = begin; i < end; ++i) {
    for (const object fields : pieces.read(i)) {
      readArticle(fields, article);
      ++count;
    }
  }
  return count;
}

bool CatalogueAnswer::forEachArticle(const std::function<bool(const Article &)> &visit) const {
  PieceReader pieces(text(), m_cuts);
  const auto readPiece = [&](std::size_t index) {
    std::vector<Article> articles;
    for (const object fields : pieces.read(index)) {
      readArticle(fields, articles.emplace_back());
    }
    return articles;
  };
  auto next = std::async(std::launch::async, readPiece, 0);
  for (std::size_t i = 1; i <= pieceCount(); ++i) {
    const std::vector<Article> articles = next.get();
    if (i < pieceCount()) {
      next = std::async(std::launch::async, readPiece, i);
    }
    if (!std::all_of(articles.begin(), articles.end(), visit)) {
      return false;
    }
  }
  return true;
}
