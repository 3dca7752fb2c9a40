// The answer to the catalogue download: the articles that are counted are those that are handed
// out, in their order, wherever the body is cut into pieces; and they read as the lines of a
// delivery do.

#include "FuzzInput.h"
#include "Property.h"
#include "service/CatalogueAnswer.h"
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
  require(isAll, "every article is handed out");
  require(articles.size() == answer->articleCount(), "the articles are as many as were counted");
  return articles;
}

void checkStopping(const QByteArray &body, std::size_t count) {
  const auto answer = CatalogueAnswer::read(body);
  std::size_t seen = 0;
  const bool isAll = answer->forEachArticle([&](const Article &) { return ++seen < count; });
  require(!isAll && seen == count, "nothing is handed out after a refusal");
}

/// The same texts, read by the other reader.
void checkAgainstDelivery(const QByteArray &body, const std::optional<Articles> &articles) {
  const auto delivery = parseDeliveryAnswer(body);
  if (!delivery) {
    return;
  }
  require(articles && articles->size() == delivery->lines.size(),
          "what reads as a delivery reads as a catalogue");
  for (std::size_t i = 0; i < articles->size(); ++i) {
    const Article &article = (*articles)[i];
    const OrderLine &line = delivery->lines[i];
    require(article.item == line.item.toStdString() &&
                article.barcode == line.barcode.toStdString() &&
                article.descr == line.descr.toStdString(),
            "an article's texts read as a line's");
  }
}

/// White space so long that the body is cut at its first comma.
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
  // Every reading starts threads, which takes its time.
  constexpr std::uint8_t kSometimes = 8;
  if (articles && !articles->empty() && choice % kSometimes == 1) {
    checkStopping(body, 1 + (choice / kSometimes) % articles->size());
  }
  // Takes its time: the white space is read, too.
  constexpr std::uint8_t kRarely = 0xFF;
  if (choice == kRarely && !body.startsWith("\xEF\xBB\xBF")) {
    require(areEqual(articlesOf(cutAtFirstComma(body)), articles),
            "a body in pieces reads as the whole body");
  }
  return 0;
}
