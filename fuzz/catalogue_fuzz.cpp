// Parses arbitrary answers to a catalogue download. All counted articles must be visited, the
// result must not depend on where the body is cut into pieces, and the texts must be those that the
// parser for deliveries reads.

#include "FuzzInput.h"
#include "Property.h"
#include "service/CatalogueAnswer.h"
#include "service/DeliveryAnswer.h"
#include "service/JsonPieces.h"

#include <algorithm>

namespace {

using Articles = std::vector<Article>;

bool areEqual(const Article &a, const Article &b) {
  return a.barcode == b.barcode && a.item == b.item && a.descr == b.descr;
}

bool areEqual(const std::optional<Articles> &a, const std::optional<Articles> &b) {
  if (!a || !b) {
    return !a && !b;
  }
  return std::equal(a->begin(), a->end(), b->begin(), b->end(),
                    [](const Article &x, const Article &y) { return areEqual(x, y); });
}

std::optional<Articles> articlesOf(const QByteArray &body) {
  const auto answer = CatalogueAnswer::read(body);
  if (!answer) {
    return std::nullopt;
  }
  Articles articles;
  const bool isAll = answer->forEachArticle([&](const Article &article) {
    articles.push_back(article);
    return true;
  });
  require(isAll, "every article is visited");
  require(articles.size() == answer->articleCount(), "the number of articles is the counted one");
  return articles;
}

void checkStopping(const QByteArray &body, std::size_t count) {
  const auto answer = CatalogueAnswer::read(body);
  std::size_t seen = 0;
  const bool isAll = answer->forEachArticle([&](const Article &) { return ++seen < count; });
  require(!isAll && seen == count, "no article is visited after the visitor has stopped");
}

/// Compares the articles with the result of the parser for deliveries.
void checkAgainstDelivery(const QByteArray &body, const std::optional<Articles> &articles) {
  const auto delivery = parseDeliveryAnswer(body);
  if (!delivery) {
    return;
  }
  require(articles && articles->size() == delivery->lines.size(),
          "a valid delivery is a valid catalogue");
  for (std::size_t i = 0; i < articles->size(); ++i) {
    const Article &article = (*articles)[i];
    const OrderLine &line = delivery->lines[i];
    require(article.item.value_or("") == line.item.toStdString() &&
                article.barcode.value_or("") == line.barcode.toStdString() &&
                article.descr.value_or("") == line.descr.toStdString(),
            "an article has the texts of the line");
  }
}

/// Prepends white space, so that the body is cut at its first comma.
QByteArray cutAtFirstComma(const QByteArray &body) {
  return QByteArray(static_cast<qsizetype>(JsonPieces::kPieceBytes), ' ') + body;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  FuzzInput input(data, size);
  const std::uint8_t choice = input.byte();
  const QByteArray body = QByteArray::fromStdString(input.rest());
  const auto articles = articlesOf(body);
  checkAgainstDelivery(body, articles);
  // Every call starts threads, which is slow.
  constexpr std::uint8_t kSometimes = 8;
  if (articles && !articles->empty() && choice % kSometimes == 1) {
    checkStopping(body, 1 + (choice / kSometimes) % articles->size());
  }
  // Parsing the white space is slow.
  constexpr std::uint8_t kRarely = 0xFF;
  if (choice == kRarely && !body.startsWith("\xEF\xBB\xBF")) {
    require(areEqual(articlesOf(cutAtFirstComma(body)), articles),
            "a body in pieces reads as the whole body");
  }
  return 0;
}
