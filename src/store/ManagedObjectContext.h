#pragma once

#include "store/Items.h"
#include "store/Picking.h"
#include "store/StoreError.h"

#include <QDateTime>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class PersistentStoreCoordinator;

/// One delivery number with one value of `sent`.
struct DeliveryGroup {
  QString doc;
  std::int32_t sent = 0;
};

/// The first and last pick time of a delivery.
struct PickTimes {
  QDateTime mindatepicked;
  QDateTime maxdatepicked;
};

/// A delivery number with one value of `sent`, and the pick times over all picks of the delivery,
/// whatever their `sent`.
struct DeliveryPickTimes {
  DeliveryGroup group;
  PickTimes times;
};

/// The unit of work that all screens share: the first change opens a transaction and `save` commits
/// it. A fetch sees the changes that are not saved yet. Rows come in the order in which they were
/// inserted.
///
/// Every fetch answers nothing at all, which is not the same as no rows, if the store cannot be
/// read. A text that is null asks for the rows that lack it. A change that fails is reported by the
/// `save` that follows it, and no change after it is made.
class ManagedObjectContext {
 public:
  explicit ManagedObjectContext(std::shared_ptr<PersistentStoreCoordinator> coordinator);
  ~ManagedObjectContext();
  ManagedObjectContext(const ManagedObjectContext &) = delete;
  ManagedObjectContext &operator=(const ManagedObjectContext &) = delete;

  /// The file that holds the store; empty if there is none.
  [[nodiscard]] QString storePath() const;

  using Pickings = std::optional<std::vector<Picking>>;

  /// The picks of one order of a delivery.
  [[nodiscard]] Pickings pickingsOfOrder(const QString &doc, const QString &ordernum);
  /// The number of articles in the catalogue.
  [[nodiscard]] std::optional<std::int64_t> countItems();
  /// The articles whose item code or barcode is `code`; only the first is read.
  [[nodiscard]] std::optional<std::vector<Items>> itemsForCode(const QString &code);
  /// The picks of one line.
  [[nodiscard]] Pickings pickingsOfLine(const QString &doc, const QString &box,
                                        const QString &item);
  /// The picks of a delivery that were not sent yet.
  [[nodiscard]] Pickings unsentPickings(const QString &doc);
  /// Every delivery once for each value of `sent` that its picks have.
  [[nodiscard]] std::optional<std::vector<DeliveryGroup>> deliveryGroups();
  /// The pick times over all picks of a delivery.
  [[nodiscard]] std::optional<PickTimes> pickTimes(const QString &doc);
  /// `deliveryGroups`, each with the `pickTimes` of its delivery, in one query.
  [[nodiscard]] std::optional<std::vector<DeliveryPickTimes>> deliveryPickTimes();
  /// The picks of a delivery.
  [[nodiscard]] Pickings pickings(const QString &doc);

  void insert(const Picking &picking);
  void insert(const Items &item);
  void setPickqty(const Picking &picking, std::int32_t pickqty);
  void setSent(const Picking &picking, std::int32_t sent);

  [[nodiscard]] bool hasChanges() const { return m_hasChanges; }
  /// Commits the changes; they are on disk when this returns. Nothing if that went well. After a
  /// failure the changes are still pending.
  [[nodiscard]] std::optional<StoreError> save();

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
};
