#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

#include <optional>

/// The system's colour scheme, dark or light: the preference in the desktop's settings portal or,
/// if there is none, the scheme of the platform's palette.
class SystemColourScheme : public QObject {
  Q_OBJECT

 public:
  explicit SystemColourScheme(QDBusConnection bus = QDBusConnection::sessionBus());

  [[nodiscard]] bool isDark() const { return m_isDark; }

  bool eventFilter(QObject *watched, QEvent *event) override;

 signals:
  void changed();

 private slots:
  void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

 private:
  void ask(QDBusConnection &bus);
  void update();

  /// True if the portal prefers dark; std::nullopt if it has no preference.
  std::optional<bool> m_preference;
  bool m_isDark;
};
