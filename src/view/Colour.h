#pragma once

#include <QString>

/// The colours that controllers speak of; what they look like is the theme's business.
enum class Colour { clear, black, blue, red, green, yellow, grey, lightGrey, darkGrey };

/// Returns the name of `colour` in Theme.qml, for example "lightGrey".
QString colourName(Colour colour);
