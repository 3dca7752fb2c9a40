#pragma once

#include <QList>
#include <QObject>
#include <QRectF>
#include <QtQml/qqmlregistration.h>

struct Environment;
class TextField;
class ViewController;

/// A transition between two screens, defined in the storyboard.
struct Segue {
  QString identifier;
  ViewController *destination = nullptr;
  /// Set by the source's `prepareForSegue` to stop a return segue; the source can finish it later.
  bool isHeldBack = false;
};

/// The controller of one screen: it holds the screen's state and makes all decisions. The screen
/// itself is a QML file named after the controller's identifier; it draws the outlets and forwards
/// touches and keys.
///
/// A controller is a child of the controller that presents it and is deleted when dismissed, unless
/// `keepAfterDismissal` was called.
class ViewController : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Controllers come from the storyboard")
  Q_PROPERTY(QString identifier READ identifier CONSTANT)
  Q_PROPERTY(ViewController *presented READ presentedViewController NOTIFY presentedChanged)
  Q_PROPERTY(QString presentationStyle READ presentationStyleName NOTIFY presentedChanged)
  Q_PROPERTY(QObject *popoverSource READ popoverSource NOTIFY presentedChanged)
  Q_PROPERTY(ViewController *overlay READ overlay NOTIFY overlayChanged)
  Q_PROPERTY(int flipMilliseconds READ flipMilliseconds CONSTANT)
  Q_PROPERTY(QRectF frame READ frame NOTIFY frameChanged)
  Q_PROPERTY(QSizeF preferredContentSize READ preferredContentSize CONSTANT)

 public:
  enum class PresentationStyle { FullScreen, FormSheet, Popover };
  enum class Flip { FromLeft, FromRight };
  /// The duration of a flip.
  static constexpr int kFlipMilliseconds = 800;

  ViewController(const QString &identifier, Environment &environment, QObject *parent = nullptr);

  /// The name of the screen in the storyboard and of its QML file.
  [[nodiscard]] QString identifier() const { return m_identifier; }

  /// Calls `viewDidLoad` of this controller and its children, once.
  void loadViewIfNeeded();
  virtual void viewDidLoad() {}
  virtual void viewWillAppear() {}
  virtual void prepareForSegue(Segue & /*segue*/) {}

  /// Performs the storyboard's transition `identifier` from this screen. Ignores an unknown one.
  Q_INVOKABLE void performSegueWithIdentifier(const QString &identifier);

  /// Shows `controller` above this screen, which gets no input until `controller` is dismissed.
  /// Takes ownership. If this screen already presents another one, `controller` is not shown, and
  /// is deleted unless `keepAfterDismissal` was called.
  ///
  /// @param popoverSource  the outlet that a popover is anchored to
  void presentViewController(ViewController *controller, PresentationStyle style,
                             QObject *popoverSource = nullptr);
  /// Keeps this controller alive after its dismissal, so it can be presented again.
  void keepAfterDismissal() { m_isKeptAfterDismissal = true; }
  /// Dismisses the presented controller or, if there is none, this one.
  Q_INVOKABLE void dismissViewController();

  [[nodiscard]] ViewController *presentedViewController() const { return m_presented; }
  [[nodiscard]] QString presentationStyleName() const;
  [[nodiscard]] QObject *popoverSource() const { return m_popoverSource; }
  /// The controller that presents this one or the nearest presented container of this one; nullptr
  /// if there is none.
  [[nodiscard]] ViewController *presentingViewController() const;
  /// The controller that contains this one; nullptr if there is none.
  [[nodiscard]] ViewController *parentViewController() const {
    return m_isContained ? qobject_cast<ViewController *>(parent()) : nullptr;
  }
  [[nodiscard]] QList<ViewController *> childViewControllers() const { return m_children; }
  /// Makes this controller the container and owner of `child`.
  void addChildViewController(ViewController *child);

  /// Overlays this controller's view with that of `controller`, with a flip.
  void addSubview(ViewController *controller, Flip flip);
  /// Removes this controller's view from the view that it overlays, with a flip.
  void removeFromSuperview(Flip flip);
  /// The controller whose view overlays this one's; nullptr if there is none.
  [[nodiscard]] ViewController *overlay() const { return m_overlay; }
  [[nodiscard]] int flipMilliseconds() const { return kFlipMilliseconds; }

  /// Returns true if another screen or view is above this one.
  [[nodiscard]] bool isCovered() const { return m_presented != nullptr || m_overlay != nullptr; }

  /// The field for a scan that arrives while another item has the keyboard focus; nullptr if this
  /// screen takes no scan now.
  [[nodiscard]] virtual TextField *scanField() const;
  /// Returns true if `field`, which has the keyboard focus, takes scans now.
  [[nodiscard]] virtual bool takesScanIn(const TextField &field) const;
  /// Notifies this controller, its children and the presented controller that the scan of `code`
  /// was refused.
  virtual void noteRefusedScan(const QString &code);

  /// The position and size of this overlay in the view below it, in points; empty to fill it.
  [[nodiscard]] QRectF frame() const { return m_frame; }
  void setFrame(const QRectF &frame);

  /// The preferred size of a popover or sheet, in points; invalid if there is none.
  [[nodiscard]] QSizeF preferredContentSize() const { return m_preferredContentSize; }
  void setPreferredContentSize(QSizeF size) { m_preferredContentSize = size; }

 signals:
  void presentedChanged();
  void overlayChanged();
  void frameChanged();
  /// Emitted to start a flip from the view `from` to the view `to`; nullptr means this controller's
  /// view.
  void flipped(ViewController *from, ViewController *to, bool fromLeft);

 protected:
  [[nodiscard]] Environment &environment() const { return m_environment; }

 private:
  void endPresentation();
  /// The controller that this one presents in full screen; nullptr if there is none.
  [[nodiscard]] const ViewController *replacement() const;

  QString m_identifier;
  Environment &m_environment;
  bool m_isLoaded = false;
  bool m_isContained = false;
  bool m_isPresented = false;
  bool m_isKeptAfterDismissal = false;
  QList<ViewController *> m_children;
  ViewController *m_presented = nullptr;
  PresentationStyle m_presentationStyle = PresentationStyle::FullScreen;
  QObject *m_popoverSource = nullptr;
  ViewController *m_overlay = nullptr;
  ViewController *m_superview = nullptr;
  QRectF m_frame;
  QSizeF m_preferredContentSize;
};
