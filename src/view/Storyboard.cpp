#include "view/Storyboard.h"

namespace {
/// The destination of a return segue.
const QString kBack = QStringLiteral("<-");
}  // namespace

void Storyboard::addScene(const QString &identifier, Scene scene) {
  m_scenes.insert(identifier, scene);
}

void Storyboard::addSegue(const QString &identifier, const QString &sceneIdentifier) {
  m_segues.insert(identifier, sceneIdentifier);
}

void Storyboard::addReturnSegue(const QString &identifier) {
  m_segues.insert(identifier, kBack);
}

ViewController *Storyboard::instantiateViewController(const QString &identifier,
                                                      Environment &environment,
                                                      QObject *owner) const {
  const auto scene = m_scenes.constFind(identifier);
  return scene == m_scenes.cend() ? nullptr : (*scene)(environment, owner);
}

QString Storyboard::destinationOfSegue(const QString &identifier) const {
  return isReturnSegue(identifier) ? QString() : m_segues.value(identifier);
}

bool Storyboard::isReturnSegue(const QString &identifier) const {
  return m_segues.value(identifier) == kBack;
}
