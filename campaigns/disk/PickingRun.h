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

/// Runs the program without its window on a home folder, and performs one fixed picking: catalogue,
/// lookup, quantities, corrections, a second lookup, another catalogue, an export, a send, and more
/// quantities. Does only what the screen allows. Prints a line for each action and for each result
/// on the screen.
class PickingRun : public TestEnvironment {
 public:
  explicit PickingRun(const QString &home);

  /// Makes the store run a checkpoint whenever its write-ahead log has this number of pages.
  void setPagesBetweenCheckpoints(int pages);
  /// Makes the store's commits return before they are on disk.
  void forgetToSynchronise();

  void work();

  /// Prints a line to standard output, without buffering.
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
  /// Waits until the screen accepts touches again.
  void waitUntilIdle();
  /// Answers every alert and returns the title of the last one.
  QString answerAlerts();

  LoopbackService m_service;
  vekAppDelegate m_delegate;
  int m_catalogue = 0;
};
