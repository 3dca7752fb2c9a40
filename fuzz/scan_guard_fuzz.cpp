// Sends keys at arbitrary times, touches, alerts and focus changes to the scan guard. Every typed
// character must arrive once and in order: at the focused item, in the field that takes scans, or
// in a refused scan.

#include "FuzzInput.h"
#include "Property.h"
#include "scanner/ScanGuard.h"
#include "view/Environment.h"
#include "view/ViewController.h"
#include "view/Window.h"
#include "view/outlets/TextField.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVariant>
#include <QWindow>

#include <algorithm>
#include <array>
#include <functional>

namespace {

class SilentSoundPlayer : public SoundPlayer {
 public:
  void playSystemSound(int /*identifier*/) override {}
};

/// Records all characters in the order of their arrival.
class Arrivals : public QObject, public TextFieldDelegate {
 public:
  /// Adds characters that arrived as keys at the focused item, which can be the field.
  void addTyped(const QString &text, bool isInField) {
    m_text += text;
    m_inField = isInField ? m_inField + text.size() : 0;
  }
  /// Adds a whole code. If the field lost the focus during the code, its beginning has already
  /// arrived there and is not added again.
  void addCode(const QString &code) {
    qsizetype known = std::min(m_inField, code.size());
    while (known > 0 && !m_text.endsWith(code.first(known))) {
      --known;
    }
    m_text += code.sliced(known);
    m_inField = 0;
  }
  [[nodiscard]] const QString &text() const { return m_text; }

  bool textFieldShouldReturn(TextField &field) override {
    onReturn(field.text());
    return true;
  }

  /// Called with the text of a field when Return is pressed in it.
  std::function<void(const QString &)> onReturn;

 private:
  QString m_text;
  /// The number of characters at the end of `m_text` that were typed into the field.
  qsizetype m_inField = 0;
};

/// A screen that has only the field that takes scans.
class FieldScreen : public ViewController {
 public:
  explicit FieldScreen(Environment &environment)
      : ViewController(QStringLiteral("FieldScreen"), environment) {}

  TextField *const field = new TextField("txtScan", this);
  bool takesScans = true;

  [[nodiscard]] TextField *scanField() const override { return takesScans ? field : nullptr; }
  void noteRefusedScan(const QString &code) override { onRefusal(code); }

  std::function<void(const QString &)> onRefusal;
};

/// A window with a settable focus, which forwards keys to the field as a screen does.
class KeyWindow : public QWindow {
 public:
  explicit KeyWindow(Arrivals &arrivals) : m_arrivals(arrivals) {}

  void setFocused(TextField *field) {
    m_item.setProperty("outlet", QVariant::fromValue(field));
    m_field = field;
  }
  /// Returns true while the field handles the Return key.
  [[nodiscard]] bool isReturning() const { return m_isReturning; }
  [[nodiscard]] QObject *focusObject() const override { return const_cast<QObject *>(&m_item); }

 protected:
  void keyPressEvent(QKeyEvent *event) override {
    if (event->key() == Qt::Key_Return) {
      if (m_field != nullptr) {
        m_isReturning = true;
        m_field->pressReturn();
        m_isReturning = false;
      }
      return;
    }
    if (!event->text().isEmpty() && event->text().front().isPrint()) {
      m_arrivals.addTyped(event->text(), m_field != nullptr);
      if (m_field != nullptr) {
        m_field->edit(m_field->text() + event->text());
      }
    }
  }

 private:
  Arrivals &m_arrivals;
  QObject m_item;
  TextField *m_field = nullptr;
  bool m_isReturning = false;
};

/// A window with its scan guard, and the actions of a user.
class GuardedWindow {
 public:
  GuardedWindow() {
    m_environment.clock = std::make_unique<SystemClock>();
    m_environment.sounds = std::make_unique<SilentSoundPlayer>();
    m_screen.field->setDelegate(&m_arrivals);
    m_screen.onRefusal = [this](const QString &code) { m_arrivals.addCode(code); };
    // Characters typed into the field are already recorded; a code set by the guard is not.
    m_arrivals.onReturn = [this](const QString &code) {
      if (!m_window.isReturning()) {
        m_arrivals.addCode(code);
      }
    };
  }

  void type(std::uint64_t time) {
    // Every character is different.
    constexpr char16_t kFirst = 0x4E00;
    const QString text(QChar(static_cast<char16_t>(kFirst + m_typed.size())));
    m_typed += text;
    send(Qt::Key_unknown, text, time);
  }
  void pressReturn(std::uint64_t time) { send(Qt::Key_Return, QStringLiteral("\r"), time); }
  void pressOther(int key, std::uint64_t time) { send(key, QString(), time); }
  void touch() {
    const QPointF place;
    QMouseEvent press(QEvent::MouseButtonPress, place, place, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &press);
  }
  void pressByScreenReader() { m_state.press(); }
  /// Makes the guard's timer expire until no keys are held.
  void wait() {
    while (m_guard.isHolding()) {
      QTimerEvent event(0);
      QCoreApplication::sendEvent(&m_guard, &event);
    }
  }
  void moveKeyboard(bool toField) { m_window.setFocused(toField ? m_screen.field : nullptr); }
  void cover(bool isCovered) { m_screen.takesScans = !isCovered; }

  [[nodiscard]] qsizetype typed() const { return m_typed.size(); }
  void check() const {
    require(m_typed.startsWith(m_arrivals.text()), "characters arrive once and in order");
    require(m_guard.isHolding() || m_arrivals.text() == m_typed, "without held keys all arrived");
  }

 private:
  void send(int key, const QString &text, std::uint64_t time) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, key, Qt::NoModifier, text);
      event.setTimestamp(time);
      QCoreApplication::sendEvent(&m_window, &event);
    }
  }

  Environment m_environment;
  Arrivals m_arrivals;
  FieldScreen m_screen{m_environment};
  Window m_state{m_screen, m_environment};
  KeyWindow m_window{m_arrivals};
  ScanGuard m_guard{m_window, m_state};
  QString m_typed;
};

void startApplication() {
  static int count = 1;
  static std::array<char, 5> name = {"fuzz"};
  static std::array<char *, 2> arguments = {name.data(), nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // Never deleted: at exit its destructor would run after those of static objects that it uses.
  [[maybe_unused]] static const auto &kApplication = *new QGuiApplication(count, arguments.data());
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  startApplication();
  constexpr std::array<std::uint64_t, 8> kGaps = {0, 3, 20, 35, 36, 250, 251, 1000};
  constexpr std::array kOtherKeys = {Qt::Key_Shift, Qt::Key_Tab, Qt::Key_Escape, Qt::Key_F1};
  constexpr qsizetype kMaxTyped = 2000;
  FuzzInput input(data, size);
  GuardedWindow window;
  std::uint64_t time = 10'000;
  while (!input.isEmpty() && window.typed() < kMaxTyped) {
    time += input.oneOf(kGaps);
    switch (input.below(16)) {
      case 0:
        window.touch();
        break;
      case 1:
        window.pressByScreenReader();
        break;
      case 2:
        window.moveKeyboard(input.below(2) == 0);
        break;
      case 3:
        window.cover(input.below(2) == 0);
        break;
      case 4:
        window.wait();
        break;
      case 5:
        window.pressOther(input.oneOf(kOtherKeys), time);
        break;
      case 6:
      case 7:
        window.pressReturn(time);
        break;
      default:
        window.type(time);
    }
    window.check();
  }
  window.wait();
  window.check();
  return 0;
}
