#include "view/AlertStack.h"

void AlertStack::show(const AlertView &alert) {
  beginInsertRows({}, count(), count());
  m_alerts.push_back(alert);
  endInsertRows();
  emit countChanged();
}

void AlertStack::answer(int row, int buttonIndex) {
  if (row < 0 || row >= count()) {
    return;
  }
  const AlertView alert = m_alerts[static_cast<std::size_t>(row)];
  if (buttonIndex < 0 || buttonIndex >= alert.buttons.size()) {
    return;
  }
  beginRemoveRows({}, row, row);
  m_alerts.erase(m_alerts.begin() + row);
  endRemoveRows();
  emit countChanged();
  if (alert.action) {
    alert.action(buttonIndex);
  }
  if (alert.delegate) {
    alert.delegate->clickedButtonAtIndex(alert, buttonIndex);
  }
}

int AlertStack::rowCount(const QModelIndex &parent) const {
  return parent.isValid() ? 0 : count();
}

QVariant AlertStack::data(const QModelIndex &index, int role) const {
  if (!index.isValid() || index.row() >= count()) {
    return {};
  }
  const AlertView &alert = m_alerts[static_cast<std::size_t>(index.row())];
  switch (role) {
    case TitleRole:
      return alert.title;
    case MessageRole:
      return alert.message;
    case ButtonsRole:
      return alert.buttons;
    case CancelButtonRole:
      return alert.cancelButtonIndex;
    default:
      return {};
  }
}

QHash<int, QByteArray> AlertStack::roleNames() const {
  return {{TitleRole, "title"},
          {MessageRole, "message"},
          {ButtonsRole, "buttons"},
          {CancelButtonRole, "cancelButtonIndex"}};
}
