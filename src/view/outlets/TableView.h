#pragma once

#include "base/WeakDelegate.h"
#include "view/Colour.h"
#include "view/outlets/Outlet.h"

#include <QAbstractListModel>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <utility>

class TableView;

/// What a table shows and what a touch on it does. All tables have one section.
class TableViewDataSource {
 public:
  virtual ~TableViewDataSource() = default;

  enum class EditingStyle { None, Delete, Insert };

  virtual int numberOfSectionsInTableView(const TableView & /*table*/) { return 1; }
  virtual int numberOfRowsInSection(const TableView &table, int section) = 0;
  /// The cell of `row`, a value of one of the cell types.
  virtual QVariant cellForRowAtIndexPath(const TableView &table, int row) = 0;
  /// The cell above the rows, or nothing.
  virtual QVariant viewForHeaderInSection(const TableView & /*table*/, int /*section*/) {
    return {};
  }
  /// In points.
  virtual double heightForRowAtIndexPath(const TableView & /*table*/, int /*row*/) { return 44.0; }
  /// In points.
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

/// A table outlet: the list model of the item that draws it. It keeps the number of rows of the
/// last reload and asks its data source for a cell only when a visible row needs one.
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

  /// Tables of one controller are told apart by their tag.
  [[nodiscard]] int tag() const { return m_tag; }
  void setTag(int tag) { m_tag = tag; }

  void setDataSource(WeakDelegate<TableViewDataSource> dataSource);

  /// Whether the table can be touched.
  [[nodiscard]] bool isEnabled() const { return m_enabled; }
  void setEnabled(bool enabled);

  /// Counts the rows anew, and has the visible ones redrawn once the event loop runs, however often
  /// it was called until then. Keeps the scroll position; the selection and the painted row are
  /// gone.
  void reloadData();
  /// Asks the data source, at every call.
  [[nodiscard]] int numberOfRows() const;

  /// The selected row; -1 for none.
  [[nodiscard]] int selectedRow() const { return m_selectedRow; }
  /// Selects `row` and scrolls it to the middle of the table. A row that does not exist selects
  /// nothing.
  void selectRow(int row);
  /// The row that has a background of its own until the next reload; -1 for none.
  [[nodiscard]] int paintedRow() const { return m_paintedRow; }
  [[nodiscard]] Colour paintedColour() const { return m_paintedColour; }
  /// Gives the cell of `row` a background of its own.
  void setCellBackground(int row, Colour colour);
  /// Scrolls to the first row.
  void scrollToTop() { emit scrolledToTop(); }

  /// A touch on `row`.
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
  void scrolledToRow(int row);
  void scrolledToTop();

 private:
  void redrawRows();
  [[nodiscard]] bool hasRow(int row) const { return row >= 0 && row < m_count; }

  WeakDelegate<TableViewDataSource> m_dataSource;
  int m_tag = 0;
  bool m_enabled = true;
  int m_count = 0;
  bool m_isRedrawDue = false;
  int m_selectedRow = -1;
  int m_paintedRow = -1;
  Colour m_paintedColour = Colour::clear;
};
