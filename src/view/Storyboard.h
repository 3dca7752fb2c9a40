#pragma once

#include "view/ViewController.h"

#include <QHash>
#include <QString>

#include <functional>

/// The screens and the transitions between them, by name.
class Storyboard {
 public:
  /// Makes the controllers of one screen; they belong to `owner`.
  using Scene = std::function<ViewController *(Environment &environment, QObject *owner)>;

  void addScene(const QString &identifier, Scene scene);
  /// A transition to a new screen.
  void addSegue(const QString &identifier, const QString &sceneIdentifier);
  /// A transition back to the screen that presented the source.
  void addReturnSegue(const QString &identifier);

  /// A new controller for the screen `identifier`, or nothing if there is no such screen.
  ViewController *instantiateViewController(const QString &identifier, Environment &environment,
                                            QObject *owner) const;
  /// The screen that the transition `identifier` leads to; empty if it leads to none.
  [[nodiscard]] QString destinationOfSegue(const QString &identifier) const;
  [[nodiscard]] bool isReturnSegue(const QString &identifier) const;

 private:
  QHash<QString, Scene> m_scenes;
  QHash<QString, QString> m_segues;
};
