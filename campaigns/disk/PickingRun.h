#pragma once

#include "app/vekAppDelegate.h"
#include "store/Picking.h"
#include "support/LoopbackService.h"
#include "support/TestEnvironment.h"

#include <QString>

class changeQuantityViewController;
class detailViewController;
class masterViewController;
class startViewController;

/// The whole program without its window, on the home folder that it is given, and a picker who
/// works through one fixed picking: catalogue, lookup, quantities, corrections, a second lookup,
/// another catalogue, an export, a send, and quantities after it. The picker does what the screen
/// allows, and says in a line on standard output what is tried and what the screen says of it.
class PickingRun : public TestEnvironment {
 public:
  explicit PickingRun(const QString &home);

  /// Lets the log of the store go into its file whenever it has so many pages.
  void setPagesBetweenCheckpoints(int pages);
  /// Makes the store's commits return before they are on disk.
  void forgetToSynchronise();

  void work();

  /// Says a line to whoever looks on.
  static void say(const QString &line);

 private:
  [[nodiscard]] LoopbackService::Answer answerTo(const LoopbackService::Request &request) const;
  [[nodiscard]] startViewController &start() const;
  [[nodiscard]] masterViewController &master() const;
  [[nodiscard]] detailViewController &detail() const;
  [[nodiscard]] changeQuantityViewController *keypad() const;

  void loadCatalogue();
  void lookUp();
  void beginPicking();
  void endPicking();
  void pick(const QString &box, int row, const QString &quantity);
  void exportByMail();
  void sendPicking();
  /// Waits until fingers are let on again.
  void waitUntilIdle();
  /// Answers every alert, and returns the title of the last.
  QString answerAlerts();

  LoopbackService m_service;
  vekAppDelegate m_delegate;
  int m_catalogue = 0;
};
