#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

#include <optional>

/// Whether the system prefers dark screens: what the desktop's settings portal says, or, where it
/// says nothing, what the palette of the platform looks like.
class SystemColourScheme : public QObject {
  Q_OBJECT

 public:
  explicit SystemColourScheme(QDBusConnection bus = QDBusConnection::sessionBus(),
                              QObject *parent = nullptr);

  [[nodiscard]] bool isDark() const { return m_isDark; }

  bool eventFilter(QObject *watched, QEvent *event) override;

 signals:
  void changed();

 private slots:
  void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

 private:
  void ask(QDBusConnection &bus);
  void update();

  /// What the portal prefers; nothing if it has no preference.
  std::optional<bool> m_preference;
  bool m_isDark;
};
