#pragma once

#include <QString>

/// The colours that controllers speak of; what they look like is the theme's business.
enum class Colour { clear, black, white, blue, red, green, yellow, grey, lightGrey, darkGrey };

/// The name under which the theme knows `colour`, for example "lightGrey".
QString colourName(Colour colour);
