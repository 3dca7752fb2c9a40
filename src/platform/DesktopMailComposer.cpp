#include "platform/DesktopMailComposer.h"

bool DesktopMailComposer::canSendMail() const {
  return false;
}

bool DesktopMailComposer::compose(const MailDraft & /*draft*/) {
  return false;
}
