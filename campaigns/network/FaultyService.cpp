#include "network/FaultyService.h"

#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <sys/socket.h>

namespace {

using Answer = LoopbackService::Answer;
using namespace std::chrono_literals;

constexpr qint64 kBlock = 1024LL * 1024;
const QByteArray kOk = "HTTP/1.1 200 OK\r\n";

QByteArray announced(qsizetype size) {
  return "Content-Length: " + QByteArray::number(size) + "\r\n\r\n";
}

QByteArray nothing(const QByteArray & /*body*/) {
  return {};
}

/// Returns two thirds of `body`.
QByteArray mostOf(const QByteArray &body) {
  return body.first(body.size() * 2 / 3);
}

/// Returns an answer that resets the connection instead of closing it.
Answer reset() {
  Answer answer;
  answer.stream = [](QTcpSocket &socket) {
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce,
               sizeof atOnce);
    socket.abort();
  };
  return answer;
}

/// Returns an answer that sends one byte of `bytes` at a time.
Answer drip(const QByteArray &bytes, std::chrono::milliseconds every) {
  Answer answer;
  answer.stream = [bytes, every](QTcpSocket &socket) {
    auto *drop = new QTimer(&socket);
    QObject::connect(drop, &QTimer::timeout, &socket, [&socket, bytes, sent = 0]() mutable {
      if (sent == bytes.size()) {
        socket.disconnectFromHost();
      } else if (socket.isOpen()) {
        socket.write(bytes.sliced(sent++, 1));
      }
    });
    drop->start(every);
  };
  return answer;
}

/// Returns an endless answer that sends `block` repeatedly, with pauses for other events.
Answer flow(const QByteArray &head, const QByteArray &block) {
  Answer answer{head};
  answer.stream = [block](QTcpSocket &socket) {
    auto *pace = new QTimer(&socket);
    QObject::connect(pace, &QTimer::timeout, &socket, [&socket, block] {
      if (socket.isOpen()) {
        socket.write(block);
      }
    });
    pace->start(1ms);
  };
  return answer;
}

QByteArray littleEndian(quint32 number) {
  QByteArray bytes;
  for (int i = 0; i < 4; ++i) {
    bytes.append(static_cast<char>(number >> (8 * i) & 0xFFU));
  }
  return bytes;
}

quint32 crc32Of(const QByteArray &bytes) {
  quint32 crc = ~0U;
  for (const char byte : bytes) {
    crc ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) {
      crc = crc >> 1 ^ ((crc & 1U) == 0 ? 0 : 0xEDB88320U);
    }
  }
  return ~crc;
}

/// Returns `bytes` in the gzip format: the compressed data of Qt's format with another header and
/// trailer.
QByteArray gzip(const QByteArray &bytes) {
  constexpr qsizetype kHead = 6;  // Qt's size field and the zlib header
  constexpr qsizetype kTail = 4;
  const QByteArray packed = qCompress(bytes);
  return QByteArray::fromHex("1f8b08000000000000ff") +
         packed.sliced(kHead, packed.size() - kHead - kTail) + littleEndian(crc32Of(bytes)) +
         littleEndian(static_cast<quint32>(bytes.size()));
}

QByteArray packed(const QByteArray &bytes) {
  return kOk + "Content-Encoding: gzip\r\n" + announced(bytes.size()) + bytes;
}

QByteArray redirect(int status, const QByteArray &location, const QByteArray &body) {
  return "HTTP/1.1 " + QByteArray::number(status) + " Moved\r\nLocation: " + location + "\r\n" +
         announced(body.size()) + body;
}

/// Returns an answer with `head` and the body, after which the connection is closed.
Fault::Answer headed(const QByteArray &head) {
  return [head](const QByteArray &body) { return Answer{head + body}; };
}

/// Returns an answer that consists of `bytes`, after which the connection is closed.
Fault::Answer fixed(const QByteArray &bytes) {
  return [bytes](const QByteArray & /*body*/) { return Answer{bytes}; };
}

std::vector<Fault> noAnswers() {
  const auto silent = [](const QByteArray &name, const Fault::Answer &answer) {
    return Fault{name, answer, Ending::None, nothing, true};
  };
  const auto none = [](const QByteArray &name, const Fault::Answer &answer) {
    return Fault{name, answer, Ending::None, nothing};
  };
  QByteArray noise;
  for (int i = 0; i < 4096; ++i) {
    noise.append(static_cast<char>(i * 167 + 13));
  }
  return {
      none("closed without a byte", fixed({})),
      none("torn down without a byte", [](const QByteArray &) { return reset(); }),
      none("cut in the status", fixed("HTTP/1.1 20")),
      none("cut in the headers", fixed(kOk + "Content-Le")),
      none("another protocol", fixed("220 mail.example.com ready\r\n")),
      none("noise", fixed(noise)),
      none("zeros", fixed(QByteArray(4096, '\0'))),
      none("a body alone", headed({})),
      none("no number for a status", headed("HTTP/1.1 fine\r\n\r\n")),
      silent("silence", [](const QByteArray &) { return Answer::silence(); }),
      silent("silence within the status",
             [](const QByteArray &) {
               return Answer{"HTTP/1.1 2", false};
             }),
      silent("silence after the headers",
             [](const QByteArray &body) {
               return Answer{kOk + announced(body.size()), false};
             }),
      silent("silence within the body",
             [](const QByteArray &body) {
               return Answer{wholeAnswer(body).chopped(1), false};
             }),
      silent("silence before the last chunk",
             [](const QByteArray &body) {
               const QByteArray chunked = chunkedAnswer(body);
               return Answer{chunked.first(chunked.lastIndexOf("\r\n0\r\n") + 2), false};
             }),
      silent("a status without an end",
             [](const QByteArray &) { return flow(kOk.chopped(2), QByteArray(1000, 'x')); }),
      silent(
          "headers without an end",
          [](const QByteArray &) { return flow(kOk, "Name: " + QByteArray(1000, 'x') + "\r\n"); }),
      silent("a chunk's length without an end",
             [](const QByteArray &) {
               return flow(kOk + "Transfer-Encoding: chunked\r\n\r\n", QByteArray(1000, '0'));
             }),
      silent("nothing but interim answers",
             [](const QByteArray &) {
               return flow({}, QByteArray("HTTP/1.1 100 Continue\r\n\r\n").repeated(40));
             }),
  };
}

std::vector<Fault> unreadableAnswers(const QByteArray &elsewhere) {
  const auto unreadable = [](const QByteArray &name, const Fault::Answer &answer,
                             const auto &arrives) {
    return Fault{name, answer, Ending::Unreadable, arrives};
  };
  const auto all = [](const QByteArray &body) { return body; };
  const auto page = [](const QByteArray &) { return QByteArray("moved"); };
  std::vector<Fault> faults{
      unreadable(
          "announces more than it sends",
          [](const QByteArray &body) { return Answer{kOk + announced(body.size() + 1000) + body}; },
          all),
      unreadable("announces more than there can be",
                 headed(kOk + "Content-Length: 9223372036854775807\r\n\r\n"), all),
      unreadable(
          "announces less than it sends",
          [](const QByteArray &body) {
            return Answer{kOk + announced(mostOf(body).size()) + body};
          },
          mostOf),
      unreadable(
          "cut in the body",
          [](const QByteArray &body) {
            return Answer{kOk + announced(body.size()) + mostOf(body)};
          },
          mostOf),
      unreadable(
          "cut within the body, in chunks",
          [](const QByteArray &body) {
            const QByteArray chunked = chunkedAnswer(body);
            return Answer{chunked.first(chunked.lastIndexOf("\r\n0\r\n") - 1)};
          },
          [](const QByteArray &body) { return body.chopped(1); }),
      unreadable("no content", fixed("HTTP/1.1 204 No Content\r\n\r\n"), nothing),
      unreadable(
          "a body where there can be none",
          [](const QByteArray &body) {
            return Answer{"HTTP/1.1 204 No Content\r\n" + announced(body.size()) + body};
          },
          nothing),
      unreadable("an empty body", fixed(kOk + announced(0)), nothing),
      unreadable("another protocol from now on",
                 headed("HTTP/1.1 101 Switching Protocols\r\nUpgrade: h2c\r\n\r\n"), nothing),
      unreadable("packed, but not so", headed(kOk + "Content-Encoding: gzip\r\n\r\n"), nothing),
      unreadable(
          "packed, with a wrong checksum",
          [](const QByteArray &body) {
            QByteArray bytes = gzip(body);
            bytes[bytes.size() - 5] = static_cast<char>(~bytes.back());
            return Answer{packed(bytes)};
          },
          nothing),
      unreadable(
          "a megabyte that is no JSON",
          [](const QByteArray &) { return Answer{wholeAnswer(QByteArray(1'000'000, 'x'))}; },
          [](const QByteArray &) { return QByteArray(10'000, 'x') + " …"; }),
      unreadable("a megabyte that is not UTF-8", fixed(wholeAnswer(QByteArray(1'000'000, '\xFF'))),
                 nothing),
  };
  for (const int status : {301, 302, 303, 307, 308}) {
    const QByteArray name = "redirect " + QByteArray::number(status);
    faults.push_back(unreadable(
        name + " to itself",
        fixed(redirect(status, "/qir_pick/servicepick.svc/json/getitems", "moved")), page));
    faults.push_back(unreadable(name + " to another host",
                                fixed(redirect(status, "http://" + elsewhere + "/", "moved")),
                                page));
  }
  return faults;
}

std::vector<Fault> goodAnswers() {
  const auto taken = [](const QByteArray &name, const Fault::Answer &answer) {
    return Fault{name, answer};
  };
  const auto withStatus = [](const QByteArray &status) -> Fault::Answer {
    return [status](const QByteArray &body) {
      return Answer{"HTTP/1.1 " + status + "\r\n" + announced(body.size()) + body};
    };
  };
  const auto withHeaders = [](const QByteArray &headers) -> Fault::Answer {
    return [headers](const QByteArray &body) {
      return Answer{kOk + headers + announced(body.size()) + body};
    };
  };
  return {
      taken("status 500", withStatus("500 Internal Server Error")),
      taken("status 404", withStatus("404 Not Found")),
      taken("status 401, with a challenge",
            withStatus("401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"x\"")),
      taken("no reason beside the status", withStatus("200")),
      taken("a page by its type", withHeaders("Content-Type: text/html; charset=iso-8859-7\r\n")),
      taken("an image by its type", withHeaders("Content-Type: image/png\r\n")),
      taken("large headers", withHeaders("Name: " + QByteArray(50'000, 'x') + "\r\n")),
      taken("a line that is no header", withHeaders("nonsense\r\n")),
      taken("line feeds alone", headed("HTTP/1.1 200 OK\nConnection: close\n\n")),
      taken("no length", headed(kOk + "\r\n")),
      taken("no number for a length", headed(kOk + "Content-Length: many\r\n\r\n")),
      taken("more than announced",
            [](const QByteArray &body) { return Answer{wholeAnswer(body) + "garbage"}; }),
      taken("two answers at once",
            [](const QByteArray &body) {
              return Answer{wholeAnswer(body) + wholeAnswer("\"refused\"")};
            }),
      taken("two answers at once, and no end",
            [](const QByteArray &body) {
              return Answer{wholeAnswer(body) + wholeAnswer("\"refused\""), false};
            }),
      taken("an interim answer first",
            [](const QByteArray &body) {
              return Answer{"HTTP/1.1 100 Continue\r\n\r\n" + wholeAnswer(body)};
            }),
      taken("in chunks", [](const QByteArray &body) { return Answer{chunkedAnswer(body)}; }),
      taken("packed", [](const QByteArray &body) { return Answer{packedAnswer(body)}; }),
      taken("byte by byte", [](const QByteArray &body) { return drip(wholeAnswer(body), 1ms); }),
      taken("byte by byte, in chunks",
            [](const QByteArray &body) { return drip(chunkedAnswer(body), 1ms); }),
      taken("byte by byte, packed",
            [](const QByteArray &body) { return drip(packedAnswer(body), 1ms); }),
  };
}

}  // namespace

QByteArray wholeAnswer(const QByteArray &body) {
  return kOk + announced(body.size()) + body;
}

QByteArray chunkedAnswer(const QByteArray &body) {
  constexpr qsizetype kChunk = 20;
  QByteArray bytes = kOk + "Transfer-Encoding: chunked\r\nTrailer: Sum\r\n\r\n";
  for (qsizetype at = 0; at < body.size(); at += kChunk) {
    const QByteArray chunk = body.mid(at, kChunk);
    bytes += QByteArray::number(chunk.size(), 16) + ";part=x\r\n" + chunk + "\r\n";
  }
  return bytes + "0\r\nSum: 12\r\n\r\n";
}

QByteArray packedAnswer(const QByteArray &body) {
  return packed(gzip(body));
}

LoopbackService::Answer flood(const QByteArray &head, qint64 size) {
  Answer answer{head};
  answer.stream = [size](QTcpSocket &socket) {
    QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, [&socket, left = size]() mutable {
      if (socket.bytesToWrite() > 0) {
        return;
      }
      if (left == 0) {
        socket.disconnectFromHost();
        return;
      }
      const qint64 block = std::min(left, kBlock);
      socket.write(QByteArray(block, ' '));
      left -= block;
    });
  };
  return answer;
}

std::vector<Fault> everyFault(const QString &elsewhere) {
  std::vector<Fault> faults = goodAnswers();
  for (const auto &more : {unreadableAnswers(elsewhere.toLatin1()), noAnswers()}) {
    faults.insert(faults.end(), more.begin(), more.end());
  }
  return faults;
}
