#include "view/Colour.h"

#include <array>

QString colourName(Colour colour) {
  static constexpr std::array kNames{"clear",  "black", "blue",      "red",     "green",
                                     "yellow", "grey",  "lightGrey", "darkGrey"};
  return QString::fromLatin1(kNames.at(static_cast<std::size_t>(colour)));
}
