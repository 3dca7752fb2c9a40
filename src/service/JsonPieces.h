#pragma once

#include <simdjson.h>
#include <string>
#include <string_view>
#include <vector>

/// The text of a large JSON array, cut between elements into pieces that stay in the processor's
/// cache while they are parsed. Several readers may read it at the same time.
class JsonPieces {
 public:
  /// How long a piece is, at least: it should stay in the processor's cache.
  static constexpr std::size_t kPieceBytes = 256'000;

  /// `text` outlives this object and its readers.
  explicit JsonPieces(std::string_view text, std::size_t pieceBytes = kPieceBytes);

  [[nodiscard]] std::size_t count() const { return m_cuts.size() + 1; }

  /// Reads each piece as an array of its own: brackets take the places of the commas on either side
  /// of it. If every such array is valid, then the whole is: a text that is not JSON fails wherever
  /// it was cut.
  class Reader {
   public:
    explicit Reader(const JsonPieces &pieces) : m_pieces(pieces) {}

    /// The elements of piece `index`, valid until the next call. Throws simdjson_error.
    simdjson::dom::array read(std::size_t index);

   private:
    const JsonPieces &m_pieces;
    std::string m_text;
    simdjson::dom::parser m_parser;
  };

 private:
  std::string_view m_text;
  /// Where the commas are between the pieces.
  std::vector<std::size_t> m_cuts;
};
