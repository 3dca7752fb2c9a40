#pragma once

#include "network/ShortTimeoutHttpClient.h"
#include "support/TestWindow.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <functional>

/// The three calls that the program makes to its service.
enum class Call { Lookup, Catalogue, Send };
inline constexpr std::array kCalls{Call::Lookup, Call::Catalogue, Call::Send};

/// Returns the name of the call in the service's URLs.
QString nameOf(Call call);

/// The program in its window, ready for any call: with a catalogue, a delivery on the screen, and
/// one unsent pick. Makes calls and answers alerts by touch.
class CallingTablet : public TestWindow {
 public:
  CallingTablet();

  /// Returns a correct answer to `call`, with a delivery or catalogue different from the tablet's.
  static QByteArray goodBody(Call call);

  /// The rows of the store, and the texts of the delivery on the screen, after makeReady().
  static QStringList storedBefore();
  static QStringList deliveryBefore();

  [[nodiscard]] ShortTimeoutHttpClient &client() const { return *m_client; }

  /// Resets the store and the screen so that `call` can be made.
  void makeReady(Call call);
  /// Makes `call` by touch.
  void make(Call call);
  /// Waits until the call has ended and its connection and network thread are gone.
  void waitForEnd();
  /// Touches the button of every alert, the topmost first, and waits until all are gone.
  void answerAlerts();
  /// Touches the scan field, and waits until it has the focus.
  void touchField();

  /// Returns the rows of the store on disk.
  [[nodiscard]] QStringList stored() const;
  /// Returns the texts and lists of the delivery on the screen.
  [[nodiscard]] QStringList delivery() const;

 private:
  void prepareStore() const;
  void leavePicking();
  void letPickingRun(bool runs);
  template <class Controller>
  [[nodiscard]] Controller *controller(const char *name) const;

  ShortTimeoutHttpClient *m_client;
};

/// Waits until `condition` is true. Fails the test with the message `what` after one minute.
void waitUntil(const std::function<bool()> &condition, const char *what);
