#pragma once

#include "support/LoopbackService.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

/// What the program makes of an answer.
enum class Ending {
  /// It is as good as any other.
  Taken,
  /// It is one, but it does not say what it should.
  Unreadable,
  /// There is none.
  None,
  /// One of the two before, as it happens.
  NotTaken,
};

/// One way in which a service, or what is between, deals with a request.
struct Fault {
  using Answer = std::function<LoopbackService::Answer(const QByteArray &body)>;

  QByteArray name;
  /// What goes over the wire where `body` should.
  Answer answer;
  Ending ending = Ending::Taken;
  /// What reaches the program of `body`, as it is shown where replies are; nobody knows if empty.
  std::function<QByteArray(const QByteArray &body)> arrives = [](const QByteArray &body) {
    return body;
  };
  /// Whether nothing but the client's time-out ends it.
  bool isSilent = false;
};

/// Everything that a service does wrong on a bad day, and what it may do although few do.
/// `elsewhere` is the host that its redirects lead to, if not to the service itself.
std::vector<Fault> everyFault(const QString &elsewhere);

/// The bytes of an answer as it should be.
QByteArray wholeAnswer(const QByteArray &body);
/// The same in pieces of a few bytes each, with a trailer.
QByteArray chunkedAnswer(const QByteArray &body);
/// The same, packed.
QByteArray packedAnswer(const QByteArray &body);

/// `head`, followed by `size` blanks as fast as they are taken.
LoopbackService::Answer flood(const QByteArray &head, qint64 size);
