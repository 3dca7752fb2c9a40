#include "store/lone_transaction.h"

namespace cartonpick::orders {

namespace {

/// Any number that nothing else uses.
constexpr auto kLockSchema = "SELECT pg_advisory_xact_lock(471147114711)";

}  // namespace

LoneTransaction::LoneTransaction(soci::session &session, SqlDialect dialect) : m_session(session) {
  if (dialect == SqlDialect::Sqlite) {
    session << "BEGIN IMMEDIATE";
    return;
  }
  session.begin();
  // Others may be at it for longer than a call may take.
  session << "SET LOCAL statement_timeout = 0";
  session << "SET LOCAL lock_timeout = '60s'";
  session << kLockSchema;
}

LoneTransaction::~LoneTransaction() {
  if (m_isDone) {
    return;
  }
  try {
    m_session.rollback();
  } catch (const soci::soci_error &) {
    // The connection is lost, and the transaction with it.
  }
}

void LoneTransaction::commit() {
  m_session.commit();
  m_isDone = true;
}

}  // namespace cartonpick::orders
