#pragma once

#include <QString>

/// The colour names that controllers use. Theme.qml defines the values.
enum class Colour { clear, black, white, blue, red, green, yellow, grey, lightGrey, darkGrey };

/// Returns the name of `colour` in Theme.qml, for example "lightGrey".
QString colourName(Colour colour);
