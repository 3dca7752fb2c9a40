#pragma once

#include "service/DeliveryAnswer.h"
#include "service/JsonPieces.h"
#include "store/CatalogueWriter.h"

#include <QByteArray>

#include <cstddef>
#include <functional>
#include <optional>

/// The answer to the catalogue download. Keeps the body as it came and reads it piece by piece, so
/// that a catalogue of any size takes little memory beyond its body. It reads on two cores: both
/// halves when it is checked, and later the next piece while the last one is used.
class CatalogueAnswer {
 public:
  /// Checks the whole of `body`: a JSON array of objects. In each a missing or null text reads as
  /// empty and a number as its text; keys of no meaning are passed over. Nothing if the body is not
  /// UTF-8, not JSON, or JSON of another shape.
  [[nodiscard]] static std::optional<CatalogueAnswer> read(QByteArray body);

  [[nodiscard]] std::size_t articleCount() const { return m_articleCount; }
  [[nodiscard]] const JsonResult &jsonResult() const { return m_jsonResult; }

  /// Hands every article to `visit`, in the order of the answer and on this thread, until that
  /// returns false. An article lives as long as the call. True if it was every article.
  bool forEachArticle(const std::function<bool(const Article &)> &visit) const;

 private:
  explicit CatalogueAnswer(QByteArray body);

  /// The number of articles in the pieces from `begin` up to `end`, each of which was read. Throws
  /// simdjson_error.
  [[nodiscard]] std::size_t count(std::size_t begin, std::size_t end) const;

  QByteArray m_body;
  /// Of the bytes of `m_body`, which stay where they are when that is moved.
  JsonPieces m_pieces;
  std::size_t m_articleCount = 0;
  JsonResult m_jsonResult;
};
