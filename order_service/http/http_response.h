#pragma once

#include "http/http_message.h"

#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>

namespace cartonpick::orders {

/// What an answer's head depends on besides the answer.
struct ResponseTraits {
  bool isToHead = false;    ///< the answer has no body, but its length
  bool isToHttp10 = false;  ///< a connection that is kept has to say so
  bool keepsConnection = false;
};

/// Returns the answer as an HTTP response, with the time and the request's id.
boost::beast::http::response<boost::beast::http::string_body> responseOf(
    Answer answer, const std::string &requestId, const ResponseTraits &traits);

}  // namespace cartonpick::orders
