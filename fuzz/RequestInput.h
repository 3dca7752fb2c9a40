#pragma once

#include "FuzzInput.h"
#include "http/http_message.h"

#include <string>

/// The access token of the service under test.
inline const std::string kFuzzToken = "token-of-16-signs";

/// Builds a request from `input`: one line each for the method, the target, the content type and
/// the kind of authorization, then the body.
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
