#pragma once

#include "base/WeakDelegate.h"

#include <QAbstractListModel>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <vector>

class AlertViewDelegate;

/// A message or question that has to be answered before anything else can be done.
struct AlertView {
  QString title = {};
  QString message = {};
  QStringList buttons = {QStringLiteral("OK")};
  /// The button that the Escape key stands for.
  int cancelButtonIndex = 0;
  /// Tells a delegate's alerts apart.
  int tag = 0;
  WeakDelegate<AlertViewDelegate> delegate = {};
  /// What to do with the answer, for alerts whose buttons carry their own actions.
  std::function<void(int buttonIndex)> action = {};
};

/// Learns how an alert was answered.
class AlertViewDelegate {
 public:
  virtual ~AlertViewDelegate() = default;
  virtual void clickedButtonAtIndex(const AlertView & /*alert*/, int /*buttonIndex*/) {}
};

/// The alerts that wait for an answer, in the order in which they were shown; all are on screen,
/// the last one on top.
class AlertStack : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("There is one, the window's")
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  enum Role { TitleRole = Qt::UserRole, MessageRole, ButtonsRole, CancelButtonRole };

  void show(const AlertView &alert);
  /// The button `buttonIndex` of the alert at `row` was touched.
  Q_INVOKABLE void answer(int row, int buttonIndex);

  [[nodiscard]] int count() const { return static_cast<int>(m_alerts.size()); }
  [[nodiscard]] const std::vector<AlertView> &alerts() const { return m_alerts; }

  [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
  [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

 signals:
  void countChanged();

 private:
  std::vector<AlertView> m_alerts;
};
