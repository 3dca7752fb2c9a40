#pragma once

#include <simdjson.h>
#include <string>
#include <string_view>
#include <vector>

/// A large JSON array, cut between elements into pieces that fit into the processor's cache.
/// Several readers can read it concurrently.
class JsonPieces {
 public:
  /// The minimum size of a piece: about what fits into the processor's cache.
  static constexpr std::size_t kPieceBytes = 256'000;

  /// `text` must outlive this object and its readers.
  explicit JsonPieces(std::string_view text, std::size_t pieceBytes = kPieceBytes);

  [[nodiscard]] std::size_t count() const { return m_cuts.size() + 1; }

  /// Parses each piece as a separate array, with brackets in place of the commas around it. The
  /// whole text is valid if and only if every piece is, wherever it was cut.
  class Reader {
   public:
    explicit Reader(const JsonPieces &pieces) : m_pieces(pieces) {}

    /// Returns the elements of piece `index`, valid until the next call. In an element, a value
    /// that simdjson cannot read reads as an empty object. Throws
    /// simdjson_error if the piece is invalid.
    simdjson::dom::array read(std::size_t index);

   private:
    simdjson::simdjson_result<simdjson::dom::element> parse();

    const JsonPieces &m_pieces;
    std::string m_text;
    simdjson::dom::parser m_parser;
  };

 private:
  std::string_view m_text;
  /// The positions of the commas between the pieces.
  std::vector<std::size_t> m_cuts;
};
