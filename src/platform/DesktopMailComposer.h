#pragma once

#include "platform/MailComposer.h"

/// Hands a mail to the desktop's mail program, as a draft file.
class DesktopMailComposer : public MailComposer {
 public:
  [[nodiscard]] bool canSendMail() const override;
  bool compose(const MailDraft &draft) override;
};
