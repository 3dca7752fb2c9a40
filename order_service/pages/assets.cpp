#include "pages/assets.h"

#include <algorithm>

namespace cartonpick::orders {

namespace {

constexpr std::string_view kFolder = "/assets/";

std::string quotedTag(const Asset &asset) {
  return '"' + std::string(asset.tag) + '"';
}

/// Returns true if the tag is one of an If-None-Match header, which may be a list.
bool isAmong(const std::string &tag, std::string_view tags) {
  return tags == "*" || tags.find(tag) != std::string_view::npos;
}

Answer wrongMethod(const std::string &method) {
  Answer answer = textAnswer(405, "this file does not answer " + method);
  answer.allow = "GET, HEAD";
  return answer;
}

}  // namespace

std::string assetPath(std::string_view name) {
  return std::string(kFolder) + std::string(name);
}

std::optional<Answer> assetAnswer(const Request &request) {
  std::string_view path = request.target;
  path = path.substr(0, path.find('?'));
  if (!path.starts_with(kFolder)) {
    return std::nullopt;
  }
  path.remove_prefix(kFolder.size());
  const auto asset = std::find_if(assets().begin(), assets().end(),
                                  [&](const Asset &known) { return known.name == path; });
  if (asset == assets().end()) {
    return std::nullopt;
  }
  if (request.method != "GET" && request.method != "HEAD") {
    return wrongMethod(request.method);
  }
  const std::string tag = quotedTag(*asset);
  const bool isKnown = isAmong(tag, request.ifNoneMatch);
  return Answer{
      .status = isKnown ? 304 : 200,
      .contentType = std::string(asset->contentType),
      .body = isKnown ? std::string() : std::string(asset->content),
      // The browser keeps the file, and asks whether there is another one.
      .headers = {
          {"ETag", tag}, {"Cache-Control", "no-cache"}, {"X-Content-Type-Options", "nosniff"}}};
}

}  // namespace cartonpick::orders
