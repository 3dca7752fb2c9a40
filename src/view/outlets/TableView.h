#pragma once

#include "base/WeakDelegate.h"
#include "view/outlets/Outlet.h"

#include <QAbstractListModel>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

class TableView;

/// Supplies the rows of a table and handles touches on them. All tables have one section.
class TableViewDataSource {
 public:
  virtual ~TableViewDataSource() = default;

  enum class EditingStyle { None, Delete, Insert };

  virtual int numberOfSectionsInTableView(const TableView & /*table*/) { return 1; }
  virtual int numberOfRowsInSection(const TableView &table, int section) = 0;
  /// Returns the cell of `row`: a value of one of the cell types.
  virtual QVariant cellForRowAtIndexPath(const TableView &table, int row) = 0;
  /// Returns the cell above the rows; an invalid QVariant if there is none.
  virtual QVariant viewForHeaderInSection(const TableView & /*table*/, int /*section*/) {
    return {};
  }
  /// Returns the height in points.
  virtual double heightForRowAtIndexPath(const TableView & /*table*/, int /*row*/) { return 44.0; }
  /// Returns the height in points.
  virtual double heightForHeaderInSection(const TableView & /*table*/, int /*section*/) {
    return 0.0;
  }
  virtual void didSelectRowAtIndexPath(TableView &table, int row) = 0;

  // No table of this program can be edited.
  virtual bool canEditRowAtIndexPath(const TableView & /*table*/, int /*row*/) { return false; }
  virtual EditingStyle editingStyleForRowAtIndexPath(const TableView & /*table*/, int /*row*/) {
    return EditingStyle::None;
  }
  virtual void commitEditingStyle(TableView & /*table*/, EditingStyle /*style*/, int /*row*/) {}
  virtual void accessoryButtonTappedForRowWithIndexPath(TableView & /*table*/, int /*row*/) {}
};

/// A table outlet: the list model of the item that draws it. The number of rows changes only on
/// `reloadData`; a cell is requested from the data source only when a visible row needs it.
class TableView : public QAbstractListModel {
  Q_OBJECT
  QML_NAMED_ELEMENT(TableViewOutlet)
  QML_UNCREATABLE("An outlet belongs to its controller")
  Q_PROPERTY(bool enabled READ isEnabled NOTIFY changed)
  Q_PROPERTY(QVariant header READ header NOTIFY changed)
  Q_PROPERTY(double rowHeight READ rowHeight NOTIFY changed)
  Q_PROPERTY(double headerHeight READ headerHeight NOTIFY changed)
  Q_PROPERTY(int selectedRow READ selectedRow NOTIFY selectionChanged)
  Q_PROPERTY(int paintedRow READ paintedRow NOTIFY selectionChanged)

 public:
  enum Role { CellRole = Qt::UserRole };

  TableView(const char *name, QObject *parent);

  /// Distinguishes the tables of one controller.
  [[nodiscard]] int tag() const { return m_tag; }
  void setTag(int tag) { m_tag = tag; }

  void setDataSource(WeakDelegate<TableViewDataSource> dataSource);

  /// Returns true if the table accepts touches.
  [[nodiscard]] bool isEnabled() const { return m_enabled; }
  void setEnabled(bool enabled);
  /// False if a touch on a row does nothing; true by default. Such a table can still be scrolled.
  void setAllowsSelection(bool allows) { m_allowsSelection = allows; }

  /// Updates the number of rows and schedules a redraw of the visible rows, one for all calls until
  /// the event loop runs. Keeps the scroll position; clears the selection and the painted row.
  void reloadData();
  /// Asks the data source for the number of rows on every call.
  [[nodiscard]] int numberOfRows() const;

  /// The selected row; -1 if there is none.
  [[nodiscard]] int selectedRow() const { return m_selectedRow; }
  /// Selects `row` and scrolls it to the middle of the table. Does nothing if there is no such row.
  void selectRow(int row);
  /// The row that is painted as if it were selected, until the next touch or reload; -1 for none.
  [[nodiscard]] int paintedRow() const { return m_paintedRow; }
  /// Paints `row` instead of the previously painted one. Does nothing if there is no such row.
  void paintRow(int row);
  /// Scrolls to the first row.
  void scrollToTop() { emit scrolledToTop(); }

  /// Handles a touch on `row`: selects it and notifies the data source. Does nothing if the table
  /// is disabled or does not allow selection, or if there is no such row.
  Q_INVOKABLE void touchRow(int row);

  [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
  [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
  [[nodiscard]] QVariant header() const;
  [[nodiscard]] double rowHeight() const;
  [[nodiscard]] double headerHeight() const;

 signals:
  void changed();
  void selectionChanged();
  void reloaded();
  void scrolledToRow(int row);
  void scrolledToTop();

 private:
  void redrawRows();
  [[nodiscard]] bool hasRow(int row) const { return row >= 0 && row < m_count; }

  WeakDelegate<TableViewDataSource> m_dataSource;
  int m_tag = 0;
  bool m_enabled = true;
  bool m_allowsSelection = true;
  int m_count = 0;
  bool m_isRedrawDue = false;
  int m_selectedRow = -1;
  int m_paintedRow = -1;
};
