#pragma once

#include "store/DeliveryPickTimes.h"
#include "store/Items.h"
#include "store/Picking.h"
#include "store/StoreError.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

class PersistentStoreCoordinator;

/// The unit of work that all screens share: the first change opens a transaction, which `save`
/// commits.
///
/// A fetch sees unsaved changes and returns the rows in insertion order. It returns std::nullopt,
/// not an empty list, if the store cannot be read. A null argument of a fetch of picks matches the
/// rows whose column is NULL.
///
/// A change does not report its failure: the next `save` does, and changes after the failed one are
/// dropped.
class ManagedObjectContext {
 public:
  explicit ManagedObjectContext(std::shared_ptr<PersistentStoreCoordinator> coordinator);
  ~ManagedObjectContext();
  ManagedObjectContext(const ManagedObjectContext &) = delete;
  ManagedObjectContext &operator=(const ManagedObjectContext &) = delete;

  /// Returns false if there is no store, or one without the tables and columns of its version.
  [[nodiscard]] bool isUsable() const { return m_statements != nullptr; }
  /// The reason of the last failure: why the store is not usable, or why a fetch or save failed.
  [[nodiscard]] QString errorString() const { return m_errorString; }
  /// The path of the store's file; empty if no store is open.
  [[nodiscard]] QString storePath() const;

  using Pickings = std::optional<std::vector<Picking>>;

  /// The picks of one order of a delivery.
  [[nodiscard]] Pickings pickingsOfOrder(const QString &doc, const QString &ordernum);
  /// The first article whose item code or barcode is `code`; an empty list if there is none or
  /// `code` is null.
  [[nodiscard]] std::optional<std::vector<Items>> itemsForCode(const QString &code);
  /// Returns true if the catalogue has an article.
  [[nodiscard]] std::optional<bool> hasItems();
  /// The picks of one line: of one item in one box.
  [[nodiscard]] Pickings pickingsOfLine(const QString &doc, const QString &box,
                                        const QString &item);
  /// The picks of a delivery that have not been sent yet.
  [[nodiscard]] Pickings unsentPickings(const QString &doc);
  /// One entry for each delivery and each value of `sent` among its picks.
  [[nodiscard]] std::optional<std::vector<DeliveryPickTimes>> deliveryPickTimes();
  /// The picks of a delivery.
  [[nodiscard]] Pickings pickings(const QString &doc);

  void insert(const Picking &picking);
  void setPickqty(const Picking &picking, std::int32_t pickqty);
  void setSent(const Picking &picking, std::int32_t sent);

  [[nodiscard]] bool hasChanges() const { return m_hasChanges; }
  /// Commits the changes; they are on disk when this returns. Returns std::nullopt on success.
  /// After a failure the changes are still pending.
  [[nodiscard]] std::optional<StoreError> save();
  /// Drops the unsaved changes.
  void rollback();

 private:
  struct Statements;

  template <class Fetch>
  auto fetch(const Fetch &rows) -> std::optional<decltype(rows())>;
  template <class Change>
  void change(const Change &apply);

  std::shared_ptr<PersistentStoreCoordinator> m_coordinator;
  std::unique_ptr<Statements> m_statements;
  bool m_hasChanges = false;
  std::optional<StoreError> m_changeError;
  QString m_errorString;
};
