#pragma once

#include "app/splitViewController.h"
#include "app/startViewController.h"
#include "app/vekAppDelegate.h"
#include "picking/changeQuantityViewController.h"
#include "picking/detailViewController.h"
#include "picking/masterViewController.h"
#include "store/ManagedObjectContext.h"
#include "support/LoopbackService.h"
#include "support/TestEnvironment.h"

#include <QByteArray>
#include <QList>
#include <QString>

/// An order line of a test delivery.
struct TestLine {
  QString carton;
  QString item;
  int qty = 0;
  QString barcode = {};
  QString doc = QStringLiteral("4711");
  QString ordernum = QStringLiteral("A1");
};

/// Returns the service's answer for a delivery of `lines`. A line without a barcode gets "b"
/// followed by the item code.
QByteArray deliveryJson(const QList<TestLine> &lines);

/// The whole program without its window: real controllers, a real store in a temporary folder, a
/// real HTTP service on loopback.
class TestProgram : public TestEnvironment {
 public:
  explicit TestProgram(const PickingRules &rules = {});

  LoopbackService service;
  vekAppDelegate delegate;

  [[nodiscard]] startViewController &start() const;
  /// Opens the picking screen from the start screen.
  void enterPicking();
  [[nodiscard]] splitViewController &split() const;
  [[nodiscard]] masterViewController &master() const;
  [[nodiscard]] detailViewController &detail() const;
  /// The session that both panes observe.
  [[nodiscard]] PickingSession &session() const;
  /// Starts the picking again, with the delivery number `doc`, and opens its first box.
  void restartPickingAs(const QString &doc) const;
  /// Returns the keypad, or nullptr while it is closed.
  [[nodiscard]] changeQuantityViewController *keypad() const;
  [[nodiscard]] ManagedObjectContext &context() { return *delegate.managedObjectContext(); }

  /// Looks up `number` and waits until the lookup ends with an import or an alert.
  void lookUp(const QString &number);
  /// Looks up a delivery of `lines`, with the number of the first line, and starts its picking.
  void startPicking(const QList<TestLine> &lines);
  /// Opens the keypad on `row`, enters `quantity` and touches OK.
  void enterQuantity(int row, const QString &quantity);
  /// Scans `code`: types it into the scan field and presses Return.
  void scan(const QString &code);
};
