#pragma once

#include <QString>

/// The colour names that controllers use; Theme.qml maps them to colour values.
enum class Colour { clear, black, blue, red, green, yellow, grey, lightGrey, darkGrey };

/// Returns the name of `colour` in Theme.qml, for example "lightGrey".
QString colourName(Colour colour);
