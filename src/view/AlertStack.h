#pragma once

#include "base/WeakDelegate.h"

#include <QAbstractListModel>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <vector>

class AlertViewDelegate;

/// A modal message or question.
struct AlertView {
  QString title = {};
  QString message = {};
  QStringList buttons = {QStringLiteral("OK")};
  /// The button that the Escape key presses.
  int cancelButtonIndex = 0;
  /// Distinguishes the alerts of one delegate.
  int tag = 0;
  WeakDelegate<AlertViewDelegate> delegate = {};
  /// Called with the pressed button, before the delegate. Optional.
  std::function<void(int buttonIndex)> action = {};
};

/// Receives the answer to an alert.
class AlertViewDelegate {
 public:
  virtual ~AlertViewDelegate() = default;
  virtual void clickedButtonAtIndex(const AlertView & /*alert*/, int /*buttonIndex*/) {}
};

/// The unanswered alerts, as a list model, oldest first. All are on screen, the newest on top.
class AlertStack : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Provided by the window")
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  enum Role { TitleRole = Qt::UserRole, MessageRole, ButtonsRole, CancelButtonRole };

  void show(const AlertView &alert);
  /// Removes the alert at `row` and reports that its button `buttonIndex` was pressed. Does nothing
  /// if there is no such alert or button.
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
