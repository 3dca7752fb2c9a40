#pragma once

#include "view/AlertStack.h"
#include "view/outlets/Label.h"
#include "view/outlets/TableView.h"

#include <QStringList>

#include <initializer_list>

/// The cell that `table` shows in `row`.
template <class Cell>
Cell cellAt(const TableView &table, int row) {
  return table.data(table.index(row), TableView::CellRole).value<Cell>();
}

/// The header cell of `table`.
template <class Cell>
Cell headerOf(const TableView &table) {
  return table.header().value<Cell>();
}

inline QStringList textsOf(std::initializer_list<const Label *> labels) {
  QStringList texts;
  for (const Label *label : labels) {
    texts.append(label->text());
  }
  return texts;
}

/// Every alert as "title|message|button|…", oldest first.
inline QStringList textsOf(const AlertStack &alerts) {
  QStringList texts;
  for (const AlertView &alert : alerts.alerts()) {
    texts.append((QStringList{alert.title, alert.message} + alert.buttons).join(u'|'));
  }
  return texts;
}
