#pragma once

#include "FuzzInput.h"
#include "http_message.h"

#include <string>

/// The token that the service under test keeps its pages with.
inline const std::string kFuzzToken = "token-of-16-signs";

/// A request: a line each of the method, the target, the content type and what shows the token,
/// then the body.
inline cartonpick::orders::Request requestOf(FuzzInput &input) {
  cartonpick::orders::Request request = {
      .method = input.line(), .target = input.line(), .contentType = input.line(), .body = {}};
  const std::string token = input.line();
  if (token == "bearer") {
    request.authorization = "Bearer " + kFuzzToken;
  } else if (token == "cookie") {
    request.cookie = "a=b; cartonpick_token=" + kFuzzToken;
  } else {
    request.authorization = token;
    request.cookie = token;
  }
  request.body = input.rest();
  return request;
}
