#pragma once

#include "view/Colour.h"

#include <QString>

#include <cstdint>

/// How far a box has been picked.
enum class BoxState { Unopened, Completed, Incomplete };

/// Only equality completes: a box picked beyond its order is incomplete, one with nothing ordered
/// and nothing picked is completed.
BoxState boxStateOf(std::int32_t pickqty, std::int32_t orderqty);

Colour colourOf(BoxState state);

/// "unopened", "completed" or "incomplete".
QString wordFor(BoxState state);
