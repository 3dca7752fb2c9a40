#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

/// Whether the system prefers dark screens: what the desktop's settings portal says, or, where
/// there is none, what the palette of the platform looks like.
class SystemColourScheme : public QObject {
  Q_OBJECT

 public:
  explicit SystemColourScheme(QDBusConnection bus = QDBusConnection::sessionBus(),
                              QObject *parent = nullptr);

  [[nodiscard]] bool isDark() const { return m_isDark; }

 signals:
  void changed();

 private slots:
  void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

 private:
  void ask(QDBusConnection &bus);
  void setDark(bool isDark);

  bool m_isDark;
};
