#pragma once

#include "delivery/PickRecords.h"

#include <QStringList>

#include <cstddef>
#include <vector>

/// Segments of the filters over lines.
enum PickFilterSegment { AllLines = 0, NotPickedLines = 1, DifferentLines = 2, MatchingLines = 3 };

/// Their titles.
inline const QStringList kPickFilterTitles{QStringLiteral("All"), QStringLiteral("Not picked"),
                                           QStringLiteral("Different"), QStringLiteral("Matching")};

/// The positions in `lines` of those that the filter segment `segment` shows, in order. A line that
/// was not picked differs as well, unless nothing of it was ordered.
std::vector<std::size_t> linesShownBy(int segment, const std::vector<BoxLine> &lines);
