#pragma once

#include "picking/ScanTrail.h"
#include "view/ViewController.h"
#include "view/outlets/Button.h"
#include "view/outlets/Label.h"
#include "view/outlets/SegmentedControl.h"
#include "view/outlets/TableView.h"
#include "view/outlets/TextField.h"

#include <QTimer>

/// Shows all components of the screens, in all their states, on one page. Helps with designing them
/// and with checking theme changes.
class GalleryViewController : public ViewController, public TableViewDataSource {
  Q_OBJECT
  QML_NAMED_ELEMENT(GalleryViewController)
  QML_UNCREATABLE("Controllers come from the storyboard")
  OUTLET(Button, btnPlain)
  OUTLET(Button, btnWarning)
  OUTLET(Button, btnDisabled)
  OUTLET(Button, btnDigit)
  OUTLET(Button, btnNegative)
  OUTLET(TextField, txtEmpty)
  OUTLET(TextField, txtFilled)
  OUTLET(TextField, txtDisabled)
  OUTLET(SegmentedControl, segmFilter)
  OUTLET(Label, lblReady)
  OUTLET(Label, lblNotReady)
  OUTLET(Label, lblSaved)
  OUTLET(Label, lblBox)
  OUTLET(Label, lblPicked)
  OUTLET(Label, lblOrdered)
  OUTLET(Label, lblDifference)
  OUTLET(TableView, tblBoxes)
  OUTLET(TableView, tblPicks)

 public:
  explicit GalleryViewController(Environment &environment, QObject *parent = nullptr);

  void viewDidLoad() override;

  Q_INVOKABLE void showAlert();
  Q_INVOKABLE void showQuestion();
  Q_INVOKABLE void showSheet();
  Q_INVOKABLE void showPopover();
  /// Shows the progress of work that takes about three seconds.
  Q_INVOKABLE void showProgress();

  int numberOfRowsInSection(const TableView &table, int section) override;
  QVariant cellForRowAtIndexPath(const TableView &table, int row) override;
  QVariant viewForHeaderInSection(const TableView &table, int section) override;
  void didSelectRowAtIndexPath(TableView & /*table*/, int /*row*/) override {}

 private:
  void makeProgress();

  ScanTrail m_scans;
  QTimer m_work;
  int m_percent = 0;
};
