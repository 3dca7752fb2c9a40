#pragma once

#include "delivery/BoxState.h"
#include "delivery/CodePositions.h"
#include "delivery/JsonResult.h"
#include "delivery/PickRecords.h"
#include "delivery/PickingRules.h"
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

/// The delivery being picked: its boxes and lines, their picked quantities, and the open box. The
/// session applies all rules about them; the screens observe it and change the lists only through
/// it.
///
/// `bookQuantity` and `recordLine` throw std::out_of_range if there is no such line.
class PickingSession : public QObject, public ManagedObjectContextHolder {
  Q_OBJECT

 public:
  /// `clock` must outlive the session.
  explicit PickingSession(const Clock &clock, const PickingRules &rules = {},
                          QObject *parent = nullptr);

  // The delivery.

  /// The data of the service's last answer; std::nullopt if there is none or it could not be read.
  [[nodiscard]] const std::optional<JsonResult> &jsonResult() const { return m_jsonResult; }
  void setJsonResult(const std::optional<JsonResult> &result) { m_jsonResult = result; }

  /// Replaces the lists with those of `delivery`, which must have lines, and restores its earlier
  /// picks. Returns false if the store cannot be read; the lists are then replaced, but no picks
  /// are restored.
  bool importDelivery(const Delivery &delivery);

  /// The working list; null before the first delivery.
  [[nodiscard]] const std::shared_ptr<PickList> &arrayPick() const { return m_arrayPick; }
  void setArrayPick(std::shared_ptr<PickList> list);
  /// The lines merged by item code; null before the first delivery.
  [[nodiscard]] const std::shared_ptr<ItemLines> &arrayItems() const { return m_arrayItems; }
  /// Replaces the lines merged by item code. Afterwards the caller must not add lines or change
  /// item codes.
  void setArrayItems(std::shared_ptr<ItemLines> items);
  /// The working list; empty before the first delivery.
  [[nodiscard]] const PickList &pickList() const;

  // The picking.

  /// Starts a picking with no open box and the delivery number of the service's last answer.
  void start();
  void stop();
  /// The delivery number of the running or last picking; a null string if there is none.
  [[nodiscard]] QString doc() const { return m_doc; }

  // The boxes.

  /// The position of the open box in the working list; -1 if no box is open.
  [[nodiscard]] int curBoxIndex() const { return m_curBoxIndex; }
  /// The open entry of the working list; nullptr if there is none.
  [[nodiscard]] const PickEntry *openEntry() const;
  /// The lines of the open box; empty if no box is open.
  [[nodiscard]] const std::vector<BoxLine> &openBoxLines() const;
  /// The position of the first entry of the working list whose box name equals `box`
  /// (case-sensitive).
  [[nodiscard]] std::optional<int> boxNamed(const QString &box) const;
  void openBox(int index);
  [[nodiscard]] BoxCounters boxCounters() const { return countersOf(pickList()); }

  // The codes.

  /// Finds the line or article that a scanned code stands for.
  ///
  /// Looks at the open box's lines, then at loose picks, then at the catalogue; the first match
  /// wins. Codes compare exactly, case included. An article of the catalogue is a foreign line if
  /// the rules add such lines, otherwise a loose pick.
  ///
  /// @param code  as the scanner sent it, without its Return; may be empty
  /// @returns the match, or std::nullopt if nothing has this code or the store cannot be read
  [[nodiscard]] std::optional<ScanMatch> find(const QString &code);
  /// Adds a loose pick that `find` has returned to the working list.
  void addLoosePick(const LoosePick &loose);

  // The quantities.

  /// Books `currentQty` plus `addQty` as the picked quantity of line number `line` of the open box:
  /// saves the line and emits `lineSaved`, and updates the line, the item lines of its code and the
  /// box total. If the line is not saved and the rules refuse such quantities, it changes nothing,
  /// emits `lineNotSaved` and returns false. Otherwise a failed save aborts the process.
  ///
  /// @param isFiltered  true if the line is shown by a filter: unless the rules sum equal lines,
  /// the
  ///                    first line of the same item in the box then gets the quantity as well, and
  ///                    is saved instead
  bool bookQuantity(std::size_t line, bool isFiltered, std::int32_t currentQty,
                    std::int32_t addQty);
  /// Adds a foreign line that `find` has returned to the open box, and books `qty` as its picked
  /// quantity, as `bookQuantity` does. Returns false if it changes nothing.
  bool bookForeignLine(const BoxLine &line, std::int32_t qty);
  /// Saves line number `line` of the open box and emits `lineSaved`. Does nothing if `recordPick`
  /// returns false.
  void recordLine(std::size_t line);
  /// Saves the whole working list, if the picking has a delivery number. A failed save aborts the
  /// process.
  void recordWorkingList();
  /// Sets the quantity of the first loose pick with the barcode `code`, if there is one, to `qty`.
  /// Emits `loosePickBooked` in either case.
  void bookLoosePick(const QString &code, std::int32_t qty);

 signals:
  void started();
  void stopped();
  void boxOpened();
  /// `line` of the box `box` is on disk.
  void lineSaved(const BoxLine &line, const QString &box);
  /// `line` of the box `box` could not be saved for this reason. The lists are unchanged.
  void lineNotSaved(const BoxLine &line, const QString &box, const QString &reason);
  /// `position` is the loose pick's position in the working list; -1 if there is no such loose
  /// pick.
  void loosePickBooked(int position);

 private:
  [[nodiscard]] BoxRecord &openBoxRecord();
  void setOpenBox(int index);
  /// The line of the open box for which the keypad opens after a scan of the code of line number
  /// `line`.
  [[nodiscard]] std::size_t lineForScan(std::size_t line) const;
  /// Returns the line of `article` in the open box, or a foreign line; std::nullopt if the box has
  /// no lines.
  [[nodiscard]] std::optional<ScanMatch> lineOfArticle(const Items &article) const;
  /// Returns what to store when the picked quantity of line number `line` of the open box becomes
  /// `pickqty`: the line, or the sum of the lines of its item, if the rules sum equal lines.
  [[nodiscard]] BoxLine lineToStore(std::size_t line, std::int32_t pickqty) const;
  /// Updates the item lines of the item of `line`, whose picked quantity becomes `pickqty`.
  void changeItemLines(const BoxLine &line, std::int32_t pickqty);

  const Clock &m_clock;
  PickingRules m_rules;
  std::optional<JsonResult> m_jsonResult;
  std::shared_ptr<PickList> m_arrayPick;
  std::shared_ptr<ItemLines> m_arrayItems;
  /// The positions in `m_arrayItems` of each item code.
  QMultiHash<QString, std::size_t> m_itemPositions;
  QString m_doc;
  int m_curBoxIndex = -1;
  /// The code index of the open box; created on its first scan.
  std::optional<CodePositions> m_openBoxCodes;
};
