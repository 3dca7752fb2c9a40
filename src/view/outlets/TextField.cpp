#include "view/outlets/TextField.h"

#include <algorithm>

namespace {

struct Edit {
  qsizetype location;
  qsizetype length;
  QString replacement;
};

/// Returns true if replacing the selection from `start` to `end` can turn `before` into `after`.
bool replacesSelection(const QString &before, const QString &after, qsizetype start,
                       qsizetype end) {
  const qsizetype tail = before.size() - end;
  return start < end && end <= before.size() && after.size() >= start + tail &&
         QStringView(after).first(start) == QStringView(before).first(start) &&
         QStringView(after).last(tail) == QStringView(before).last(tail);
}

/// Returns the smallest edit that turns `before` into `after`.
Edit smallestEdit(const QString &before, const QString &after) {
  const qsizetype shorter = std::min(before.size(), after.size());
  qsizetype head = 0;
  while (head < shorter && before[head] == after[head]) {
    ++head;
  }
  qsizetype tail = 0;
  while (tail < shorter - head &&
         before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) {
    ++tail;
  }
  return {head, before.size() - head - tail, after.sliced(head, after.size() - head - tail)};
}

}  // namespace

void TextField::becomeFirstResponder() {
  setFirstResponder(true);
  emit keyboardRequested();
}

void TextField::resignFirstResponder() {
  setFirstResponder(false);
  emit keyboardResigned();
}

bool TextField::acceptsEdit(const QString &text, qsizetype selectionStart,
                            qsizetype selectionEnd) const {
  if (text == m_text || !m_delegate) {
    return true;
  }
  // Replacing a selection can keep some characters. The smallest edit would then be wrong: if "12"
  // is selected and replaced by "1", it is a deletion of "2".
  const Edit edit = replacesSelection(m_text, text, selectionStart, selectionEnd)
                        ? Edit{selectionStart, selectionEnd - selectionStart,
                               text.sliced(selectionStart, text.size() - selectionStart -
                                                               (m_text.size() - selectionEnd))}
                        : smallestEdit(m_text, text);
  return m_delegate->shouldChangeCharactersInRange(*this, edit.location, edit.length,
                                                   edit.replacement);
}

void TextField::edit(const QString &text) {
  setText(text);
  emit editingChanged();
}

void TextField::pressReturn() {
  if (m_delegate) {
    m_delegate->textFieldShouldReturn(*this);
  }
}
