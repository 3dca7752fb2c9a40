#include "pages/login_page.h"

#include "pages/html.h"
#include "pages/html_page.h"

namespace cartonpick::orders {

namespace {

std::string complaintOf(LoginState state) {
  switch (state) {
    case LoginState::Asked:
      break;
    case LoginState::Wrong:
      return "That is not the token.";
    case LoginState::Refused:
      return "Too many wrong tokens came from your address. Try again in some minutes.";
  }
  return {};
}

}  // namespace

Answer loginPage(const std::string &target, LoginState state) {
  const std::string complaint = complaintOf(state);
  const bool isWrong = !complaint.empty();
  const std::string wrong =
      isWrong ? R"(<p class="wrong" id="wrong" role="alert">)" + complaint + "</p>\n" : "";
  Answer page =
      htmlAnswer(401, PageKind::Plain, "Token",
                 barElement() +
                     "<main class=\"login\">\n<h1>Deliveries</h1>\n"
                     "<form method=\"post\" action=\"/login\"><div>"
                     "<label for=\"token\">The token of this order service</label>\n"
                     "<input id=\"token\" name=\"token\" type=\"password\" required autofocus "
                     "autocomplete=\"current-password\"" +
                     (isWrong ? " aria-describedby=\"wrong\"" : "") + "></div>\n" + wrong +
                     R"(<input type="hidden" name="page" value=")" + escaped(target) +
                     "\">\n<button>Show the deliveries</button></form>\n</main>\n");
  page.headers = {{"WWW-Authenticate", "Bearer"}};
  return page;
}

}  // namespace cartonpick::orders
