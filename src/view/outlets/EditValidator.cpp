#include "view/outlets/EditValidator.h"

QValidator::State EditValidator::validate(QString &text, int & /*position*/) const {
  const bool accepted =
      m_outlet == nullptr || m_outlet->acceptsEdit(text, m_selectionStart, m_selectionEnd);
  return accepted ? Acceptable : Invalid;
}
