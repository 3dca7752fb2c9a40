#pragma once

#include "delivery/PickRecords.h"

#include <QStringList>

#include <cstddef>
#include <vector>

/// Segments of the filters over lines. Any other segment shows the lines of which as much was
/// picked as was ordered.
enum PickFilterSegment { AllLines = 0, NotPickedLines = 1, DifferentLines = 2 };

/// The segments' titles, in order.
inline const QStringList kPickFilterTitles{QStringLiteral("All"), QStringLiteral("Not picked"),
                                           QStringLiteral("Different"), QStringLiteral("Matching")};

/// Returns the positions in `lines`, in ascending order, of the lines that `segment` shows. A line
/// with nothing picked is also a different line, unless its ordered quantity is 0.
std::vector<std::size_t> linesShownBy(int segment, const std::vector<BoxLine> &lines);
