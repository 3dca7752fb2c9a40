#pragma once

#include "delivery/PickRecords.h"

#include <QStringList>

#include <cstddef>
#include <vector>

/// Segments of the line filters. Any other segment shows the lines whose picked quantity equals the
/// ordered one.
enum PickFilterSegment { AllLines = 0, NotPickedLines = 1, DifferentLines = 2 };

/// The segments' titles, in order.
inline const QStringList kPickFilterTitles{QStringLiteral("All"), QStringLiteral("Not picked"),
                                           QStringLiteral("Different"), QStringLiteral("Matching")};

/// Returns the positions in `lines`, in ascending order, of the lines that `segment` shows.
/// `DifferentLines` includes lines with nothing picked, unless their ordered quantity is 0.
std::vector<std::size_t> linesShownBy(int segment, const std::vector<BoxLine> &lines);
