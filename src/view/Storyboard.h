#pragma once

#include "view/ViewController.h"

#include <QHash>
#include <QString>

#include <functional>

/// The registry of screens (scenes) and of the transitions between them (segues), by identifier.
class Storyboard {
 public:
  /// Creates the controllers of one screen, as children of `owner`.
  using Scene = std::function<ViewController *(Environment &environment, QObject *owner)>;

  void addScene(const QString &identifier, Scene scene);
  /// Adds a transition to a new screen.
  void addSegue(const QString &identifier, const QString &sceneIdentifier);
  /// Adds a transition back to the screen that presented the source.
  void addReturnSegue(const QString &identifier);

  /// Creates a controller for the screen `identifier`; returns nullptr if there is no such screen.
  ViewController *instantiateViewController(const QString &identifier, Environment &environment,
                                            QObject *owner) const;
  /// The identifier of the screen that the transition `identifier` leads to; empty if it is unknown
  /// or a return segue.
  [[nodiscard]] QString destinationOfSegue(const QString &identifier) const;
  [[nodiscard]] bool isReturnSegue(const QString &identifier) const;

 private:
  QHash<QString, Scene> m_scenes;
  QHash<QString, QString> m_segues;
};
