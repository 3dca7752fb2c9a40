#pragma once

#include "store/StoreError.h"

#include <memory>
#include <optional>
#include <string>

/// One article of the catalogue, its texts in UTF-8.
struct Article {
  std::string barcode;
  std::string item;
  std::string descr;
};

/// Replaces the whole catalogue in one transaction. It has a connection of its own, so that a
/// thread of its own can do the work: a writer is made, used and destroyed on one thread, and
/// nothing else writes to the store meanwhile.
///
/// What fails is reported by `save`. Without a save, however its end comes, the catalogue stays as
/// it was.
class CatalogueWriter {
 public:
  /// `storePath` is the store's file.
  explicit CatalogueWriter(const QString &storePath);
  ~CatalogueWriter();
  CatalogueWriter(const CatalogueWriter &) = delete;
  CatalogueWriter &operator=(const CatalogueWriter &) = delete;

  void insert(const Article &article);
  /// Puts the articles inserted so far in place of all that were there; they are on disk when this
  /// returns. Nothing if that went well. Fails if the interruption of its thread is requested. To
  /// be called once, as the last.
  [[nodiscard]] std::optional<StoreError> save();

 private:
  struct Replacement;

  std::unique_ptr<Replacement> m_replacement;
  std::optional<StoreError> m_error;
};
