#pragma once

#include "service/PickRecords.h"

#include <cstddef>
#include <vector>

/// Segments of the pick table's filter.
enum PickFilterSegment { AllLines = 0, NotPickedLines = 1, DifferentLines = 2, MatchingLines = 3 };

/// The positions in `lines` of those that the filter segment `segment` shows, in order. A line that
/// was not picked differs as well, unless nothing of it was ordered.
std::vector<std::size_t> linesShownBy(int segment, const std::vector<BoxLine> &lines);
