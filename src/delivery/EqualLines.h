#pragma once

#include "delivery/PickRecords.h"

#include <cstddef>
#include <optional>

/// The lines of one item in a box.

/// Returns the position of the first line of `item`; std::nullopt if there is none.
std::optional<std::size_t> firstLineOf(const QString &item, const std::vector<BoxLine> &lines);

/// Returns the position of the first line of `item` of which less is picked than ordered, or else
/// of the last line of `item`. There must be one.
std::size_t lineToFill(const QString &item, const std::vector<BoxLine> &lines);

/// Returns the first line of `item`, with the sums of the ordered and of the picked quantities of
/// all lines of `item`. There must be one.
BoxLine sumOfLines(const QString &item, const std::vector<BoxLine> &lines);
