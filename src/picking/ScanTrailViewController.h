#pragma once

#include "picking/ScanTrail.h"
#include "view/ViewController.h"
#include "view/outlets/TableView.h"

/// The screen with the outcomes of the last scans, newest first.
class ScanTrailViewController : public ViewController, public TableViewDataSource {
  Q_OBJECT
  QML_NAMED_ELEMENT(ScanTrailViewController)
  QML_UNCREATABLE("Controllers come from the storyboard")
  OUTLET(TableView, tblScans)

 public:
  /// `scans` must outlive the controller.
  ScanTrailViewController(const ScanTrail &scans, Environment &environment,
                          QObject *parent = nullptr);

  int numberOfRowsInSection(const TableView &table, int section) override;
  QVariant cellForRowAtIndexPath(const TableView &table, int row) override;
  void didSelectRowAtIndexPath(TableView & /*table*/, int /*row*/) override {}

 private:
  const ScanTrail &m_trail;
};
