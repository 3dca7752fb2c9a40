#pragma once

#include "support/LoopbackService.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

/// How the program handles an answer.
enum class Ending {
  /// The program accepts the answer.
  Taken,
  /// The program receives an answer with invalid contents.
  Unreadable,
  /// The program receives no answer.
  None,
  /// Unreadable or None, depending on the timing.
  NotTaken,
};

/// One way in which a service, or the network, handles a request.
struct Fault {
  using Answer = std::function<LoopbackService::Answer(const QByteArray &body)>;

  QByteArray name;
  /// The answer that is sent in place of `body`.
  Answer answer;
  Ending ending = Ending::Taken;
  /// The part of `body` that the program shows in an alert about the reply. Null if it varies.
  std::function<QByteArray(const QByteArray &body)> arrives = [](const QByteArray &body) {
    return body;
  };
  /// True if only the client's timeout ends the call.
  bool isSilent = false;
};

/// Returns all faults, and some unusual but correct answers. `elsewhere` is the HOST:PORT for
/// redirects that do not lead to the service itself.
std::vector<Fault> everyFault(const QString &elsewhere);

/// Returns the bytes of a correct answer.
QByteArray wholeAnswer(const QByteArray &body);
/// Returns the bytes of a correct answer in chunks of a few bytes, with a trailer.
QByteArray chunkedAnswer(const QByteArray &body);
/// Returns the bytes of a correct answer compressed with gzip.
QByteArray packedAnswer(const QByteArray &body);

/// Returns an answer with `head` and `size` spaces, sent as fast as the client reads them.
LoopbackService::Answer flood(const QByteArray &head, qint64 size);
