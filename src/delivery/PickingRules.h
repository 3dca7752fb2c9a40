#pragma once

#include <QString>

#include <optional>

/// The rules of a picking that a reader would not expect. A warehouse chooses one of two sets;
/// docs/rules.md explains them to it.
///
/// Every member is false in the standard set and true in the careful one.
struct PickingRules {
  /// The box of a loose pick from the catalogue, regardless of the open box.
  static inline const QString kLooseBox = QStringLiteral("1");

  /// False: the size of a report in bytes is the length of its text in UTF-16 units, so a report
  /// with non-ASCII text loses bytes at its end. True: a report is sent whole.
  bool sendsWholeReports = false;

  /// False: after a failed lookup, further ones are ignored until the master pane is loaded again.
  /// True: they work.
  bool looksUpAfterFailure = false;

  /// False: with another number in the delivery field, or after a lookup that finds nothing, the
  /// last delivery can still be started. True: only a delivery that was found for the number in the
  /// field can be started, and only its header is shown.
  bool forgetsLastDelivery = false;

  /// False: the question before a send names nothing. True: it names the delivery, and the numbers
  /// of its incomplete and unopened boxes.
  bool namesDeliveryBeforeSend = false;

  /// False: a box that is opened under an open summary opens unseen. True: the summary closes.
  bool closesSummaryForBox = false;

  /// False: in the summary of a picking, the picked quantity of an item is the one booked last, in
  /// any box; in the history, a further row of an item adds its picked quantity to the ordered
  /// quantity. True: in both, the picked and the ordered quantity of an item are the sums over its
  /// boxes.
  bool sumsItemsOverBoxes = false;

  /// False: a line that is corrected after it was sent stays marked as sent, so the correction is
  /// never reported. True: it goes with the next send.
  bool resendsCorrections = false;

  /// False: a quantity that cannot be booked because the store cannot be read is shown, without a
  /// message. True: it is not shown, and an alert says that it is not saved.
  bool refusesUnsavedQuantities = false;

  /// False: a failed save, on a full disk for example, logs one line and ends the process. True:
  /// its changes are taken back, and an alert says why, and what is not saved. The next save tries
  /// again.
  bool survivesFailedSaves = false;

  /// False: if the store cannot be used at the start, there is no message, and lookups do not end.
  /// True: the start screen says so, with the reason, and disables the picking.
  bool reportsUnusableStore = false;

  /// False: if a box has two lines of an item, a scan goes to the first one, and the quantity
  /// booked last on either is stored. True: a scan goes to the first one that is not full, and the
  /// sum of both is stored; after a restart it fills them from the first on.
  bool sumsEqualLines = false;

  /// False: for a scanned article that is not in the open box, the keypad opens on the last line
  /// of the box and books there, and the article becomes an entry of the working list. True: the
  /// keypad opens for the article, which becomes a line of the open box, ordered 0.
  bool addsForeignLines = false;

  /// False: an import restores the picks of the first order number, and only in the first four
  /// lines of a box. True: it restores all picks in all lines, and the lines of articles that were
  /// not ordered.
  bool restoresAllLines = false;

  /// False: the keys of the keypad enter any number of digits, and nothing can be deleted. True:
  /// at most five digits, which can be deleted, and a question before more than ordered is booked.
  bool guardsQuantities = false;

  bool operator==(const PickingRules &other) const = default;

  static PickingRules standard() { return {}; }
  static PickingRules careful() {
    return {.sendsWholeReports = true,
            .looksUpAfterFailure = true,
            .forgetsLastDelivery = true,
            .namesDeliveryBeforeSend = true,
            .closesSummaryForBox = true,
            .sumsItemsOverBoxes = true,
            .resendsCorrections = true,
            .refusesUnsavedQuantities = true,
            .survivesFailedSaves = true,
            .reportsUnusableStore = true,
            .sumsEqualLines = true,
            .addsForeignLines = true,
            .restoresAllLines = true,
            .guardsQuantities = true};
  }

  /// Returns the set with this name, "standard" or "careful"; std::nullopt for any other name.
  static std::optional<PickingRules> named(const QString &name) {
    if (name == QStringLiteral("standard")) {
      return standard();
    }
    return name == QStringLiteral("careful") ? std::optional(careful()) : std::nullopt;
  }
};
