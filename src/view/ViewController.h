#pragma once

#include <QList>
#include <QObject>
#include <QRectF>
#include <QtQml/qqmlregistration.h>

struct Environment;
class TextField;
class ViewController;

/// A transition between two screens, named in the storyboard.
struct Segue {
  QString identifier;
  ViewController *source = nullptr;
  ViewController *destination = nullptr;
  /// Set by a source that carries out, or gives up, the transition itself later.
  bool isHeldBack = false;
};

/// The controller of one screen: holds the screen's whole state and decides everything. The screen
/// itself, a QML file with the controller's identifier for its name, draws outlets and forwards
/// touches and keys.
///
/// A controller belongs to the controller that shows it and goes when it is dismissed, unless it is
/// kept.
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
  /// How long a flip takes.
  static constexpr int kFlipMilliseconds = 800;

  ViewController(const QString &identifier, Environment &environment, QObject *parent = nullptr);

  /// The name by which the storyboard knows the screen.
  [[nodiscard]] QString identifier() const { return m_identifier; }

  /// Runs `viewDidLoad` the first time it is called.
  void loadViewIfNeeded();
  virtual void viewDidLoad() {}
  virtual void viewWillAppear() {}
  virtual void prepareForSegue(Segue & /*segue*/) {}

  /// Takes the transition `identifier` of the storyboard from here; an unknown one is ignored.
  Q_INVOKABLE void performSegueWithIdentifier(const QString &identifier);

  /// Shows `controller` above this one, which takes no input until `controller` is dismissed. While
  /// another one is shown there, `controller` is not. A popover is anchored to the whole of the
  /// outlet `popoverSource`.
  void presentViewController(ViewController *controller, PresentationStyle style,
                             QObject *popoverSource = nullptr);
  /// For a controller that its presenter presents again and again: dismissal does not delete it.
  void keepAfterDismissal() { m_isKeptAfterDismissal = true; }
  /// Ends what this controller presents or, if it presents nothing, its own presentation.
  Q_INVOKABLE void dismissViewController();

  [[nodiscard]] ViewController *presentedViewController() const { return m_presented; }
  [[nodiscard]] PresentationStyle presentationStyle() const { return m_presentationStyle; }
  [[nodiscard]] QString presentationStyleName() const;
  [[nodiscard]] QObject *popoverSource() const { return m_popoverSource; }
  /// The controller that presented this one, or one of this one's parents.
  [[nodiscard]] ViewController *presentingViewController() const;
  /// The controller that contains this one.
  [[nodiscard]] ViewController *parentViewController() const {
    return m_isContained ? qobject_cast<ViewController *>(parent()) : nullptr;
  }
  [[nodiscard]] QList<ViewController *> childViewControllers() const { return m_children; }
  void addChildViewController(ViewController *child);

  /// Lays `controller`'s view over this one's, with a flip.
  void addSubview(ViewController *controller, Flip flip);
  /// Takes this controller's view from the view that it is laid over, with a flip.
  void removeFromSuperview(Flip flip);
  /// The controller whose view is laid over this one's, if any.
  [[nodiscard]] ViewController *overlay() const { return m_overlay; }
  [[nodiscard]] int flipMilliseconds() const { return kFlipMilliseconds; }

  /// Whether another screen or view lies over this one.
  [[nodiscard]] bool isCovered() const { return m_presented != nullptr || m_overlay != nullptr; }

  /// The field that a scan goes to which comes while another item has the keyboard; null where a
  /// scan does not belong.
  [[nodiscard]] virtual TextField *scanField() const;
  /// Learns that the scan of `code` was refused, as do the controllers that this one contains and
  /// presents.
  virtual void noteRefusedScan(const QString &code);

  /// Where the view is to stand in the view that it is laid over, in points; empty: all of it.
  [[nodiscard]] QRectF frame() const { return m_frame; }
  void setFrame(const QRectF &frame);

  /// The size that a popover or a sheet should have, in points; invalid if it does not matter.
  [[nodiscard]] QSizeF preferredContentSize() const { return m_preferredContentSize; }
  void setPreferredContentSize(QSizeF size) { m_preferredContentSize = size; }

 signals:
  void presentedChanged();
  void overlayChanged();
  void frameChanged();
  /// A flip begins: the view `to` turns up where `from` was; nothing stands for this
  /// controller's own view.
  void flipped(ViewController *from, ViewController *to, bool fromLeft);

 protected:
  [[nodiscard]] Environment &environment() const { return m_environment; }

 private:
  void endPresentation();

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
