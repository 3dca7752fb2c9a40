#include "service/CatalogueAnswer.h"

#include "service/JsonValues.h"

#include <algorithm>
#include <future>
#include <simdjson.h>
#include <utility>

namespace {

using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::object;

/// Falls back to a deferred call on the same thread if no thread can be created.
constexpr auto kOnAnotherCore = std::launch::async | std::launch::deferred;

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

/// Returns the value of "doc" in the first of `elements`; a null string if there is none.
QString docOf(array elements) {
  element doc;
  const bool hasDoc = elements.at(0)["doc"].get(doc) == simdjson::SUCCESS;
  return hasDoc && !doc.is_array() && !doc.is_object() ? textOf(doc) : QString();
}

}  // namespace

CatalogueAnswer::CatalogueAnswer(QByteArray body)
    : m_body(std::move(body)), m_pieces(jsonTextOf(m_body)) {}

std::optional<CatalogueAnswer> CatalogueAnswer::read(QByteArray body) {
  try {
    CatalogueAnswer answer(std::move(body));
    const std::size_t end = answer.m_pieces.count();
    const std::size_t middle = end / 2;
    auto secondHalf = std::async(kOnAnotherCore, [&] { return answer.count(middle, end); });
    answer.m_articleCount = answer.count(0, middle);
    answer.m_articleCount += secondHalf.get();
    answer.m_jsonResult.doc = docOf(JsonPieces::Reader(answer.m_pieces).read(0));
    return answer;
  } catch (const simdjson::simdjson_error &) {
    return std::nullopt;
  }
}

std::size_t CatalogueAnswer::count(std::size_t begin, std::size_t end) const {
  JsonPieces::Reader pieces(m_pieces);
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
  JsonPieces::Reader pieces(m_pieces);
  const auto readPiece = [&](std::size_t index) {
    std::vector<Article> articles;
    for (const object fields : pieces.read(index)) {
      readArticle(fields, articles.emplace_back());
    }
    return articles;
  };
  auto next = std::async(kOnAnotherCore, readPiece, 0);
  for (std::size_t i = 1; i <= m_pieces.count(); ++i) {
    const std::vector<Article> articles = next.get();
    if (i < m_pieces.count()) {
      next = std::async(kOnAnotherCore, readPiece, i);
    }
    if (!std::all_of(articles.begin(), articles.end(), visit)) {
      return false;
    }
  }
  return true;
}
