#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// The state of long-running work: while it is active, an overlay covers all screens, blocks input
/// and shows a title and the progress.
class BusyState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Provided by the window")
  Q_PROPERTY(bool active READ isActive NOTIFY changed)
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QString progressText READ progressText NOTIFY changed)
  Q_PROPERTY(double progress READ progress NOTIFY changed)

 public:
  [[nodiscard]] bool isActive() const { return m_isActive; }
  [[nodiscard]] QString title() const { return m_title; }
  [[nodiscard]] QString progressText() const { return m_progressText; }
  /// From 0 to 1; negative if unknown.
  [[nodiscard]] double progress() const { return m_progress; }

  /// Activates the overlay with unknown progress.
  void begin(const QString &title);
  /// @param text      the progress in words, for example "1.2 of 5.0 MB"
  /// @param progress  from 0 to 1; negative if unknown
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
