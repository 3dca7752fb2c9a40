#pragma once

#include "delivery/BoxState.h"
#include "delivery/CodePositions.h"
#include "delivery/JsonResult.h"
#include "delivery/PickRecords.h"
#include "delivery/ScanMatch.h"
#include "store/ManagedObjectContextHolder.h"

#include <QMultiHash>
#include <QObject>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

class Clock;
struct Delivery;

/// The delivery that is being picked: its boxes and lines, what has been picked of them, and which
/// box is open. All rules about them are here; the screens observe the session and change the
/// lists through it alone.
///
/// A position in the working list or in a box that does not exist throws `std::out_of_range`.
class PickingSession : public QObject, public ManagedObjectContextHolder {
  Q_OBJECT

 public:
  /// `clock` outlives the session.
  explicit PickingSession(const Clock &clock, QObject *parent = nullptr);

  // The delivery.

  /// The last answer of the service; nothing if it could not be read.
  [[nodiscard]] const std::optional<JsonResult> &jsonResult() const { return m_jsonResult; }
  void setJsonResult(const std::optional<JsonResult> &result) { m_jsonResult = result; }

  /// Puts the lists of `delivery` in place of the last ones and restores what was picked of it
  /// before.
  /// @returns false if the store cannot be read: the lists are replaced and nothing is restored
  bool importDelivery(const Delivery &delivery);

  /// The working list; null before the first delivery.
  [[nodiscard]] const std::shared_ptr<PickList> &arrayPick() const { return m_arrayPick; }
  void setArrayPick(std::shared_ptr<PickList> list);
  /// The lines merged by item code; null before the first delivery.
  [[nodiscard]] const std::shared_ptr<ItemLines> &arrayItems() const { return m_arrayItems; }
  /// From now on no line is added to `items`, and no line gets another item code.
  void setArrayItems(std::shared_ptr<ItemLines> items);
  /// The working list, which reads as empty before the first delivery.
  [[nodiscard]] const PickList &pickList() const;

  // The picking.

  /// Starts a picking with no open box. Its delivery number is that of the last answer.
  void start();
  void stop();
  /// The delivery number of the running or last picking; a null string if there is none.
  [[nodiscard]] QString doc() const { return m_doc; }

  // The boxes.

  /// The position of the open box in the working list; -1 if no box is open.
  [[nodiscard]] int curBoxIndex() const { return m_curBoxIndex; }
  /// The entry of the working list that is open; null if none is.
  [[nodiscard]] const PickEntry *openEntry() const;
  /// The lines of the open box; none if no box is open.
  [[nodiscard]] const std::vector<BoxLine> &openBoxLines() const;
  /// The position of the first entry of the working list whose box is `box`, to the letter.
  [[nodiscard]] std::optional<int> boxNamed(const QString &box) const;
  void openBox(int index);
  [[nodiscard]] BoxCounters boxCounters() const { return countersOf(pickList()); }

  // The codes.

  /// Finds the line or article that a scanned code stands for.
  ///
  /// Looks at the open box's lines, then at loose picks, then at the catalogue; the first match
  /// wins. Codes compare exactly, case included.
  ///
  /// @param code  as the scanner sent it, without its Return; may be empty
  /// @returns the match, or std::nullopt if nothing has this code or the store cannot be read
  [[nodiscard]] std::optional<ScanMatch> find(const QString &code);
  /// Adds a loose pick that `find` has returned to the working list.
  void addLoosePick(const LoosePick &loose);

  // The quantities.

  /// Books `currentQty` plus `addQty` as the picked quantity of `line` of the open box: changes the
  /// line, the item lines of its code and the box's total, and writes it to the store. A failed
  /// write ends the process.
  ///
  /// @param isFiltered  a filter shows the line: then the first line of its item in the box takes
  ///                    the quantity as well, and is the one that is written
  void bookQuantity(std::size_t line, bool isFiltered, std::int32_t currentQty,
                    std::int32_t addQty);
  /// Writes `line` of the open box to the store, and says so by `lineSaved`. Nothing is written if
  /// the store cannot be read; a failed write ends the process.
  void recordLine(std::size_t line);
  /// Writes the whole working list to the store, if the picking has a delivery number.
  void recordWorkingList();
  /// Makes `qty` the quantity of the first loose pick with the barcode `code`, if there is one, and
  /// says so by `loosePickBooked`.
  void bookLoosePick(const QString &code, std::int32_t qty);

 signals:
  void started();
  void stopped();
  void boxOpened();
  /// `line` of the box `box` is on disk.
  void lineSaved(const BoxLine &line, const QString &box);
  /// `position` is that of the loose pick in the working list; -1 if there is no such loose pick.
  void loosePickBooked(int position);

 private:
  [[nodiscard]] BoxRecord &openBoxRecord();
  void setOpenBox(int index);

  const Clock &m_clock;
  std::optional<JsonResult> m_jsonResult;
  std::shared_ptr<PickList> m_arrayPick;
  std::shared_ptr<ItemLines> m_arrayItems;
  /// Where the lines of each item code are in `m_arrayItems`.
  QMultiHash<QString, std::size_t> m_itemPositions;
  QString m_doc;
  int m_curBoxIndex = -1;
  /// The codes of the open box; nothing before its first scan.
  std::optional<CodePositions> m_openBoxCodes;
};
