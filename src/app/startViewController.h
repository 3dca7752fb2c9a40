#pragma once

#include "store/ManagedObjectContextHolder.h"
#include "view/ViewController.h"
#include "view/outlets/Button.h"
#include "view/outlets/Label.h"

/// The start screen, which leads to picking, the history, the demo and the display settings.
class startViewController : public ViewController, public ManagedObjectContextHolder {
  Q_OBJECT
  QML_NAMED_ELEMENT(StartViewController)
  QML_UNCREATABLE("Controllers come from the storyboard")
  OUTLET(Label, lblServiceHost)
  OUTLET(Label, lblRules)
  OUTLET(Label, lblStore)
  OUTLET(Button, btnPicking)
  OUTLET(Button, btnDemo)
  OUTLET(Button, btnDisplay)

 public:
  explicit startViewController(Environment &environment, QObject *parent = nullptr);

  /// Call it after `setManagedObjectContext`.
  void viewDidLoad() override;
  void prepareForSegue(Segue &segue) override;

  Q_INVOKABLE void btnDemoTouched() { emit demoRequested(); }
  Q_INVOKABLE void btnDisplayTouched();

 signals:
  /// Emitted when the user chooses to restart with the demo deliveries.
  void demoRequested();

 private:
  /// Disables the picking if the careful rules are in use and the store cannot be used.
  void showStore();
};
