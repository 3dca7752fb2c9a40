#pragma once

#include "base/WeakDelegate.h"
#include "picking/ActionPickerDelegate.h"
#include "view/ViewController.h"
#include "view/outlets/TableView.h"

#include <QStringList>

/// The list of actions on a picking.
class actionPickerViewController : public ViewController, public TableViewDataSource {
  Q_OBJECT
  QML_NAMED_ELEMENT(ActionPickerViewController)
  QML_UNCREATABLE("Controllers come from the storyboard")
  OUTLET(TableView, tableView)

 public:
  explicit actionPickerViewController(Environment &environment, QObject *parent = nullptr);

  /// The titles of the actions, one per row.
  [[nodiscard]] QStringList actionNames() const { return m_actionNames; }
  void setActionNames(const QStringList &names);
  void setDelegate(WeakDelegate<ActionPickerDelegate> delegate) { m_delegate = delegate; }

  int numberOfRowsInSection(const TableView &table, int section) override;
  /// The cell is the title.
  QVariant cellForRowAtIndexPath(const TableView &table, int row) override;
  void didSelectRowAtIndexPath(TableView &table, int row) override;

 private:
  QStringList m_actionNames;
  WeakDelegate<ActionPickerDelegate> m_delegate;
};
