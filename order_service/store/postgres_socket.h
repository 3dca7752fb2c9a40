#pragma once

#include <libpq-fe.h>
#include <memory>

namespace cartonpick::orders {

/// The socket of a connection to PostgreSQL, to end what is under way there from another thread.
/// The connection outlives it.
class PostgresSocket {
 public:
  explicit PostgresSocket(PGconn *connection);
  /// Shuts the socket down. The server then frees the connection's statements; to ask it to, one
  /// by one, would wait for a server that may not answer.
  ~PostgresSocket();
  PostgresSocket(const PostgresSocket &) = delete;
  PostgresSocket &operator=(const PostgresSocket &) = delete;

  /// Has all that waits for the server fail.
  void shutDown() const noexcept;

  /// Has the server end the statement under way, as far as it can be reached: a commit that waits
  /// for a standby does not notice that its client is gone.
  void cancel() const noexcept;

 private:
  int m_socket;
  std::shared_ptr<PGcancel> m_cancel;
};

}  // namespace cartonpick::orders
