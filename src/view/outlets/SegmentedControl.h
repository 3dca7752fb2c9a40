#pragma once

#include "view/outlets/Outlet.h"

#include <QStringList>

/// A row of segments, one of which is selected.
class SegmentedControl : public Outlet {
  Q_OBJECT
  QML_NAMED_ELEMENT(SegmentedControlOutlet)
  QML_UNCREATABLE("An outlet belongs to its controller")
  Q_PROPERTY(QStringList titles READ titles NOTIFY changed)
  Q_PROPERTY(int selectedSegmentIndex READ selectedSegmentIndex NOTIFY changed)

 public:
  using Outlet::Outlet;

  [[nodiscard]] QStringList titles() const { return m_titles; }
  void setTitles(const QStringList &titles) { change(m_titles, titles); }

  [[nodiscard]] int selectedSegmentIndex() const { return m_selectedSegmentIndex; }
  /// Selects segment `index` without emitting `valueChanged`.
  void setSelectedSegmentIndex(int index) { change(m_selectedSegmentIndex, index); }

  /// Handles a touch on segment `index`: selects it and emits `valueChanged` if it was not
  /// selected.
  Q_INVOKABLE void touchSegment(int index) {
    if (index != m_selectedSegmentIndex) {
      setSelectedSegmentIndex(index);
      emit valueChanged();
    }
  }

 signals:
  void valueChanged();

 private:
  QStringList m_titles;
  int m_selectedSegmentIndex = 0;
};
