// The guard of the keys, under keys at any time, touches, alerts and a keyboard that moves: every
// character that is typed arrives once and in its order, be it at the item that has the keyboard,
// in the field that takes scans, or in the trail of what was refused.

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

class Silence : public SoundPlayer {
 public:
  void playSystemSound(int /*identifier*/) override {}
};

/// Where everything arrives, in the order in which it does.
class Arrivals : public QObject, public TextFieldDelegate {
 public:
  /// At an item, which may be the field.
  void addTyped(const QString &text, bool isInField) {
    m_text += text;
    m_inField = isInField ? m_inField + text.size() : 0;
  }
  /// A whole code. If the keyboard left the field while the code was on its way, its beginning has
  /// arrived there; the code takes its place.
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

  /// What a field that is returned holds.
  std::function<void(const QString &)> onReturn;

 private:
  QString m_text;
  /// How many of the last characters were typed into the field.
  qsizetype m_inField = 0;
};

/// A screen of nothing but the field that takes scans.
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

/// A window whose keyboard is where it is told, and which types into the field as a screen would.
class KeyWindow : public QWindow {
 public:
  explicit KeyWindow(Arrivals &arrivals) : m_arrivals(arrivals) {}

  void setFocused(TextField *field) {
    m_item.setProperty("outlet", QVariant::fromValue(field));
    m_field = field;
  }
  /// Whether the key Return is under way to the field.
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

/// One window with its guard, and a hand.
class Desk {
 public:
  Desk() {
    m_environment.clock = std::make_unique<SystemClock>();
    m_environment.sounds = std::make_unique<Silence>();
    m_screen.field->setDelegate(&m_arrivals);
    m_screen.onRefusal = [this](const QString &code) { m_arrivals.addCode(code); };
    // What was typed into the field has arrived there already; what the guard puts there has not.
    m_arrivals.onReturn = [this](const QString &code) {
      if (!m_window.isReturning()) {
        m_arrivals.addCode(code);
      }
    };
  }

  void type(std::uint64_t time) {
    // Each character is there once.
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
  /// So long that the guard need not wait any more.
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
    require(m_typed.startsWith(m_arrivals.text()),
            "characters arrive once, and in the order in which they were typed");
    require(m_guard.isHolding() || m_arrivals.text() == m_typed, "what is not held has arrived");
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
  // To the end of the process: it would not survive the end of what its platform keeps.
  [[maybe_unused]] static const auto &kApplication = *new QGuiApplication(count, arguments.data());
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  startApplication();
  constexpr std::array<std::uint64_t, 8> kGaps = {0, 3, 20, 35, 36, 250, 251, 1000};
  constexpr std::array kOtherKeys = {Qt::Key_Shift, Qt::Key_Tab, Qt::Key_Escape, Qt::Key_F1};
  constexpr qsizetype kMaxTyped = 2000;
  FuzzInput input(data, size);
  Desk desk;
  std::uint64_t time = 10'000;
  while (!input.isEmpty() && desk.typed() < kMaxTyped) {
    time += input.oneOf(kGaps);
    switch (input.below(16)) {
      case 0:
        desk.touch();
        break;
      case 1:
        desk.pressByScreenReader();
        break;
      case 2:
        desk.moveKeyboard(input.below(2) == 0);
        break;
      case 3:
        desk.cover(input.below(2) == 0);
        break;
      case 4:
        desk.wait();
        break;
      case 5:
        desk.pressOther(input.oneOf(kOtherKeys), time);
        break;
      case 6:
      case 7:
        desk.pressReturn(time);
        break;
      default:
        desk.type(time);
    }
    desk.check();
  }
  desk.wait();
  desk.check();
  return 0;
}
