#include "view/outlets/TableView.h"

#include <utility>

TableView::TableView(const char *name, QObject *parent) : QAbstractListModel(parent) {
  setObjectName(QString::fromLatin1(name));
}

void TableView::setDataSource(WeakDelegate<TableViewDataSource> dataSource) {
  m_dataSource = dataSource;
  emit changed();
}

void TableView::setEnabled(bool enabled) {
  if (m_enabled == enabled) {
    return;
  }
  m_enabled = enabled;
  emit changed();
}

void TableView::reloadData() {
  m_selectedRow = -1;
  m_paintedRow = -1;
  const int before = m_count;
  const int after = numberOfRows();
  // A model reset would delete every visible row and lose the scroll position.
  if (after > before) {
    beginInsertRows({}, before, after - 1);
    m_count = after;
    endInsertRows();
  } else if (after < before) {
    beginRemoveRows({}, after, before - 1);
    m_count = after;
    endRemoveRows();
  }
  if (!std::exchange(m_isRedrawDue, true)) {
    QMetaObject::invokeMethod(this, &TableView::redrawRows, Qt::QueuedConnection);
  }
  emit selectionChanged();
  emit reloaded();
}

void TableView::redrawRows() {
  m_isRedrawDue = false;
  if (m_count > 0) {
    emit dataChanged(index(0), index(m_count - 1));
  }
}

int TableView::numberOfRows() const {
  return m_dataSource ? m_dataSource->numberOfRowsInSection(*this, 0) : 0;
}

void TableView::selectRow(int row) {
  if (!hasRow(row)) {
    return;
  }
  m_selectedRow = row;
  emit selectionChanged();
  emit scrolledToRow(row);
}

void TableView::paintRow(int row) {
  if (!hasRow(row)) {
    return;
  }
  m_paintedRow = row;
  emit selectionChanged();
}

void TableView::touchRow(int row) {
  if (!m_enabled || !m_allowsSelection || !hasRow(row) || !m_dataSource) {
    return;
  }
  m_selectedRow = row;
  m_paintedRow = -1;
  emit selectionChanged();
  m_dataSource->didSelectRowAtIndexPath(*this, row);
}

int TableView::rowCount(const QModelIndex &parent) const {
  return parent.isValid() ? 0 : m_count;
}

QVariant TableView::data(const QModelIndex &index, int role) const {
  if (role != CellRole || !hasRow(index.row()) || !m_dataSource) {
    return {};
  }
  return m_dataSource->cellForRowAtIndexPath(*this, index.row());
}

QHash<int, QByteArray> TableView::roleNames() const {
  return {{CellRole, "cell"}};
}

QVariant TableView::header() const {
  return m_dataSource ? m_dataSource->viewForHeaderInSection(*this, 0) : QVariant();
}

double TableView::rowHeight() const {
  return m_dataSource ? m_dataSource->heightForRowAtIndexPath(*this, 0) : 0.0;
}

double TableView::headerHeight() const {
  return m_dataSource ? m_dataSource->heightForHeaderInSection(*this, 0) : 0.0;
}
