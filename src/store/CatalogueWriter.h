#pragma once

#include "store/StoreError.h"

#include <memory>
#include <optional>
#include <string>

/// One article of the catalogue. The texts are UTF-8; a text that the article does not have is
/// stored as NULL.
struct Article {
  std::optional<std::string> barcode;
  std::optional<std::string> item;
  std::optional<std::string> descr;
};

/// Replaces the whole catalogue in one transaction.
///
/// The writer has a separate database connection, so it can run on a worker thread. Create, use and
/// destroy it on the same thread; no other connection must write to the store during that time.
///
/// `save` reports the first error of any call. Without a successful `save` the catalogue stays
/// unchanged.
class CatalogueWriter {
 public:
  /// @param storePath  the SQLite file, which must exist
  explicit CatalogueWriter(const QString &storePath);
  ~CatalogueWriter();
  CatalogueWriter(const CatalogueWriter &) = delete;
  CatalogueWriter &operator=(const CatalogueWriter &) = delete;

  /// Adds `article` to the new catalogue.
  void insert(const Article &article);
  /// Replaces all stored articles by the inserted ones; they are on disk when this returns. Call it
  /// once, last. Returns std::nullopt on success. Fails if the current thread's interruption is
  /// requested.
  [[nodiscard]] std::optional<StoreError> save();

 private:
  struct Replacement;

  std::unique_ptr<Replacement> m_replacement;
  std::optional<StoreError> m_error;
};
