#pragma once

#include "app/store/CatalogueWriter.h"
#include "service/DeliveryAnswer.h"

#include <QByteArray>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

/// The answer to the catalogue download. Keeps the body as it came and reads it piece by piece, so
/// that a catalogue of any size takes little memory beyond its body.
class CatalogueAnswer {
 public:
  /// A body with as many bytes of capacity to spare is not copied.
  static constexpr qsizetype kSpareBytes = 64;

  /// Checks the whole of `body`: a JSON array of objects. In each a missing or null text reads as
  /// empty and a number as its text; keys of no meaning are passed over. Nothing if the body is not
  /// UTF-8, not JSON, or JSON of another shape.
  [[nodiscard]] static std::optional<CatalogueAnswer> read(QByteArray body);

  [[nodiscard]] std::size_t articleCount() const { return m_articleCount; }
  [[nodiscard]] const JsonResult &jsonResult() const { return m_jsonResult; }

  /// Hands every article to `visit`, in the order of the answer, until that returns false. An
  /// article lives as long as the call. True if it was every article.
  bool forEachArticle(const std::function<bool(const Article &)> &visit);

 private:
  explicit CatalogueAnswer(QByteArray body);

  QByteArray m_body;
  /// Where the commas are between the pieces that the array is read in.
  std::vector<std::size_t> m_cuts;
  std::size_t m_articleCount = 0;
  JsonResult m_jsonResult;
};
