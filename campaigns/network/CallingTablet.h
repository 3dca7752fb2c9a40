#pragma once

#include "network/ShortTimeoutHttpClient.h"
#include "support/TestWindow.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <functional>

/// The three calls of the program to its service.
enum class Call { Lookup, Catalogue, Send };
inline constexpr std::array kCalls{Call::Lookup, Call::Catalogue, Call::Send};

/// Its name in the service's addresses.
QString nameOf(Call call);

/// The program in its window, made ready for any call: with a catalogue, a delivery that is shown,
/// and a quantity of it that was picked and not sent. A hand makes the calls and reads the alerts.
class CallingTablet : public TestWindow {
 public:
  CallingTablet();

  /// A good answer to `call`; of a delivery and a catalogue other than those that the tablet has.
  static QByteArray goodBody(Call call);

  /// The rows of its store, and what it shows of its delivery, once it is ready.
  static QStringList storedBefore();
  static QStringList deliveryBefore();

  [[nodiscard]] ShortTimeoutHttpClient &client() const { return *m_client; }

  /// Brings the tablet to where `call` can be made, whatever the last one has left.
  void makeReady(Call call);
  /// Touches what makes `call`.
  void make(Call call);
  /// Waits for the end of the call, and until nothing of its connection is left.
  void waitForEnd();
  /// Touches the button of every alert, the topmost first, and waits until the last has gone.
  void answerAlerts();
  /// Touches the field that codes go to, and waits until it has the keyboard.
  void touchField();

  /// The rows of the store, as the next start will find them.
  [[nodiscard]] QStringList stored() const;
  /// The lists of the delivery, and what is shown of it.
  [[nodiscard]] QStringList delivery() const;

 private:
  void prepareStore() const;
  void leavePicking();
  void letPickingRun(bool runs);
  template <class Controller>
  [[nodiscard]] Controller *controller(const char *name) const;

  ShortTimeoutHttpClient *m_client;
};

/// Waits much longer than anything takes, and fails the test if `condition` does not come true.
void waitUntil(const std::function<bool()> &condition, const char *what);
