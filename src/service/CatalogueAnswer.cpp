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

/// Returns the field of an article for the member `key`; nullptr if there is none.
std::optional<std::string> Article::*fieldOf(std::string_view key) {
  if (key == "barcode") {
    return &Article::barcode;
  }
  if (key == "item") {
    return &Article::item;
  }
  return key == "descr" ? &Article::descr : nullptr;
}

std::optional<std::string> optionalTextOf(element value) {
  if (value.is_null()) {
    return std::nullopt;
  }
  if (value.is_string()) {
    return std::string(value.get_string().value());
  }
  return textOf(value).toStdString();
}

Article readArticle(object fields) {
  Article article;
  for (const auto [key, value] : fields) {
    if (const auto field = fieldOf(key); field != nullptr) {
      article.*field = optionalTextOf(value);
    }
  }
  return article;
}

/// Throws simdjson_error if `readArticle` would.
void requireArticle(object fields) {
  for (const auto [key, value] : fields) {
    if (fieldOf(key) != nullptr && (value.is_array() || value.is_object())) {
      throw simdjson::simdjson_error(simdjson::INCORRECT_TYPE);
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
  std::size_t count = 0;
  for (std::size_t i = begin; i < end; ++i) {
    for (const object fields : pieces.read(i)) {
      requireArticle(fields);
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
      articles.push_back(readArticle(fields));
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
