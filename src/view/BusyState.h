#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// Long work that the user has to wait for: while it is under way a scrim keeps fingers off
/// everything, and says what is going on.
class BusyState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("There is one, the window's")
  Q_PROPERTY(bool active READ isActive NOTIFY changed)
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QString progressText READ progressText NOTIFY changed)
  Q_PROPERTY(double progress READ progress NOTIFY changed)

 public:
  [[nodiscard]] bool isActive() const { return m_isActive; }
  [[nodiscard]] QString title() const { return m_title; }
  [[nodiscard]] QString progressText() const { return m_progressText; }
  /// Between 0 and 1; negative while the end cannot be foreseen.
  [[nodiscard]] double progress() const { return m_progress; }

  void begin(const QString &title);
  void setProgress(const QString &text, double progress);
  void end();

 signals:
  void changed();

 private:
  bool m_isActive = false;
  QString m_title;
  QString m_progressText;
  double m_progress = -1.0;
};
