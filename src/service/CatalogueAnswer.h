#pragma once

#include "delivery/JsonResult.h"
#include "service/JsonPieces.h"
#include "store/CatalogueWriter.h"

#include <QByteArray>

#include <cstddef>
#include <functional>
#include <optional>

/// The answer to a catalogue download. It keeps the received body and parses it in pieces, so that
/// a catalogue of any size needs little memory beyond its body. It uses a second thread: first to
/// check one half of the body, later to parse the next piece while the current one is processed.
class CatalogueAnswer {
 public:
  /// Checks the whole `body`: a JSON array of objects. A missing or null string reads as
  /// std::nullopt, a number as its digits; unknown keys are ignored. Returns std::nullopt if the
  /// body is not UTF-8, not JSON, or has a different structure.
  [[nodiscard]] static std::optional<CatalogueAnswer> read(QByteArray body);

  [[nodiscard]] std::size_t articleCount() const { return m_articleCount; }
  [[nodiscard]] const JsonResult &jsonResult() const { return m_jsonResult; }

  /// Calls `visit` for every article, in order and on the calling thread, until it returns false.
  /// The article is valid only during the call. Returns true if all calls returned true.
  bool forEachArticle(const std::function<bool(const Article &)> &visit) const;

 private:
  explicit CatalogueAnswer(QByteArray body);

  /// Reads the articles in the pieces from `begin` up to `end` (exclusive) and returns their
  /// number. Throws simdjson_error if a piece is invalid.
  [[nodiscard]] std::size_t count(std::size_t begin, std::size_t end) const;

  QByteArray m_body;
  /// Refers to the bytes of `m_body`; moving `m_body` does not move them.
  JsonPieces m_pieces;
  std::size_t m_articleCount = 0;
  JsonResult m_jsonResult;
};
