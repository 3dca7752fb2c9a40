#pragma once

#include "http/http_message.h"
#include "model/delivery_state.h"

#include <cstdint>
#include <string>

namespace cartonpick::orders {

enum class PageKind {
  Live,   ///< for the screen; parts with the attribute data-live stay up to date
  Plain,  ///< for the screen, as it was sent
  Sheet,  ///< for paper
};

/// A whole page, of a title, which is plain text, and HTML for its body. `stylePath` is that of one
/// more style sheet, if any.
Answer htmlAnswer(int status, PageKind kind, const std::string &title, const std::string &body,
                  const std::string &stylePath = {});

/// A page that says one thing, and leads back to the first page.
Answer messagePage(int status, const std::string &title, const std::string &message);

/// What every page for the screen begins with: the name of the service, which leads to its first
/// page.
std::string barElement();

/// The paragraph that says when a live page was last up to date: now.
std::string updatedParagraph();

/// A UTC time of a store as a time of this place, to the minute; no text if it is none.
std::string timeElement(const std::string &utc);

/// The state in a word, with a sign and a colour.
std::string stateElement(DeliveryState state);

/// With a proper minus.
std::string figure(std::int64_t number);
/// With a plus or a proper minus, if it is not 0.
std::string signedFigure(std::int64_t number);

/// One or many: "1 box", "2 boxes".
std::string counted(std::size_t count, const std::string &one, const std::string &many);

}  // namespace cartonpick::orders
