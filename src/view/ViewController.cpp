#include "view/ViewController.h"

#include "view/Environment.h"

ViewController::ViewController(const QString &identifier, Environment &environment, QObject *parent)
    : QObject(parent), m_identifier(identifier), m_environment(environment) {}

void ViewController::loadViewIfNeeded() {
  if (m_isLoaded) {
    return;
  }
  m_isLoaded = true;
  viewDidLoad();
  for (ViewController *child : std::as_const(m_children)) {
    child->loadViewIfNeeded();
  }
}

void ViewController::performSegueWithIdentifier(const QString &identifier) {
  const Storyboard &storyboard = m_environment.storyboard;
  if (storyboard.isReturnSegue(identifier)) {
    Segue segue{identifier, presentingViewController()};
    prepareForSegue(segue);
    if (!segue.isHeldBack && segue.destination != nullptr) {
      segue.destination->dismissViewController();
    }
    return;
  }
  Segue segue{identifier, storyboard.instantiateViewController(
                              storyboard.destinationOfSegue(identifier), m_environment, this)};
  if (segue.destination == nullptr) {
    return;
  }
  prepareForSegue(segue);
  presentViewController(segue.destination, PresentationStyle::FullScreen);
}

void ViewController::presentViewController(ViewController *controller, PresentationStyle style,
                                           QObject *popoverSource) {
  if (m_presented != nullptr) {
    if (!controller->m_isKeptAfterDismissal) {
      controller->deleteLater();
    }
    return;
  }
  controller->setParent(this);
  controller->m_isPresented = true;
  controller->loadViewIfNeeded();
  controller->viewWillAppear();
  m_presented = controller;
  m_presentationStyle = style;
  m_popoverSource = popoverSource;
  emit presentedChanged();
}

void ViewController::dismissViewController() {
  if (m_presented != nullptr) {
    endPresentation();
  } else if (ViewController *presenting = presentingViewController()) {
    presenting->endPresentation();
  }
}

void ViewController::endPresentation() {
  ViewController *ended = m_presented;
  m_presented = nullptr;
  m_popoverSource = nullptr;
  ended->m_isPresented = false;
  emit presentedChanged();
  if (!ended->m_isKeptAfterDismissal) {
    ended->deleteLater();
  }
}

ViewController *ViewController::presentingViewController() const {
  const ViewController *controller = this;
  while (controller != nullptr && !controller->m_isPresented) {
    controller = controller->parentViewController();
  }
  return controller == nullptr ? nullptr : qobject_cast<ViewController *>(controller->parent());
}

QString ViewController::presentationStyleName() const {
  switch (m_presentationStyle) {
    case PresentationStyle::FormSheet:
      return QStringLiteral("formSheet");
    case PresentationStyle::Popover:
      return QStringLiteral("popover");
    case PresentationStyle::FullScreen:
      break;
  }
  return QStringLiteral("fullScreen");
}

void ViewController::addChildViewController(ViewController *child) {
  child->setParent(this);
  child->m_isContained = true;
  m_children.append(child);
}

void ViewController::addSubview(ViewController *controller, Flip flip) {
  controller->loadViewIfNeeded();
  controller->viewWillAppear();
  controller->m_superview = this;
  m_overlay = controller;
  emit overlayChanged();
  emit flipped(nullptr, controller, flip == Flip::FromLeft);
}

void ViewController::removeFromSuperview(Flip flip) {
  if (m_superview == nullptr) {
    return;
  }
  ViewController *superview = m_superview;
  m_superview = nullptr;
  superview->m_overlay = nullptr;
  emit superview->overlayChanged();
  emit superview->flipped(this, nullptr, flip == Flip::FromLeft);
}

const ViewController *ViewController::replacement() const {
  return m_presentationStyle == PresentationStyle::FullScreen ? m_presented : nullptr;
}

TextField *ViewController::scanField() const {
  return replacement() != nullptr ? replacement()->scanField() : nullptr;
}

bool ViewController::takesScanIn(const TextField &field) const {
  return replacement() != nullptr ? replacement()->takesScanIn(field) : scanField() != nullptr;
}

void ViewController::noteRefusedScan(const QString &code) {
  for (ViewController *child : std::as_const(m_children)) {
    child->noteRefusedScan(code);
  }
  if (m_presented != nullptr) {
    m_presented->noteRefusedScan(code);
  }
}

void ViewController::setFrame(const QRectF &frame) {
  m_frame = frame;
  emit frameChanged();
}
