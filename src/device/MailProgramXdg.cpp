#include "device/MailProgram.h"

#include <QDebug>
#include <QUrl>

#include <gio/gio.h>
#include <memory>

namespace {

constexpr auto kMailType = "message/rfc822";

struct Release {
  void operator()(GAppInfo *program) const { g_object_unref(program); }
  void operator()(GList *programs) const { g_list_free_full(programs, g_object_unref); }
  void operator()(GError *error) const { g_error_free(error); }
};

using Program = std::unique_ptr<GAppInfo, Release>;
using Programs = std::unique_ptr<GList, Release>;
using Error = std::unique_ptr<GError, Release>;

/// Returns the user's default among the programs for mail files, or else the first one; null if
/// there is none.
Program mailProgram() {
  const Programs mailPrograms(g_app_info_get_recommended_for_type(kMailType));
  if (!mailPrograms) {
    return nullptr;
  }
  // message/rfc822 is a subclass of text/plain, so the default can be a text editor.
  Program preferred(g_app_info_get_default_for_type(kMailType, FALSE));
  for (const GList *node = mailPrograms.get(); preferred && node != nullptr; node = node->next) {
    if (g_app_info_equal(G_APP_INFO(node->data), preferred.get()) == TRUE) {
      return preferred;
    }
  }
  return Program(G_APP_INFO(g_object_ref(mailPrograms->data)));
}

}  // namespace

bool hasMailProgram() {
  return mailProgram() != nullptr;
}

bool openInMailProgram(const QString &path) {
  const Program program = mailProgram();
  if (!program) {
    return false;
  }
  QByteArray url = QUrl::fromLocalFile(path).toEncoded();
  GList urls{url.data(), nullptr, nullptr};
  GError *rawError = nullptr;
  const bool isStarted = g_app_info_launch_uris(program.get(), &urls, nullptr, &rawError) == TRUE;
  if (const Error error(rawError); error) {
    qWarning("The mail program cannot be started: %s", error->message);
  }
  return isStarted;
}
