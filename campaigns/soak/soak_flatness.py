"""Checks that a process's resource use does not grow."""

import statistics

KIB_A_MIB = 1024
LEAST_SAMPLES = 10
# SQLite keeps the descriptor of a closed connection for the next one.
MORE_DESCRIPTORS_OR_THREADS = 1
# The fraction of a run that counts as its warm-up.
WARM_UP = 0.2


def steady(series):
    """Returns the series without its warm-up."""
    return series[int(len(series) * WARM_UP):]


def slope(xs, ys):
    """Returns the median of the slopes between all pairs of points (the Theil–Sen estimator), which
    is robust against outliers."""
    points = list(zip(xs, ys))
    return statistics.median((y - before_y) / (x - before_x)
                             for place, (x, y) in enumerate(points)
                             for before_x, before_y in points[:place])


def growth(xs, ys):
    """Returns the slope after the warm-up, times the length of the whole run."""
    return slope(steady(xs), steady(ys)) * (xs[-1] - xs[0])


def rise(ys):
    """Returns the median of the last tenth minus that of the first tenth after the warm-up."""
    rest = steady(ys)
    count = max(1, len(ys) // 10)
    return statistics.median(rest[-count:]) - statistics.median(rest[:count])


def judge(samples, limit):
    """Returns a line about each figure of a run, and a list of messages about growth. Memory is
    allowed to grow by `limit` MiB."""
    if len(samples) < LEAST_SAMPLES:
        return [], [f"{len(samples)} samples tell nothing"]
    picks = [sample.picks for sample in samples]
    lines, wrong = [], []
    for figure in "rss", "pss", "private_dirty", "descriptors", "threads":
        is_memory = figure in ("rss", "pss", "private_dirty")
        values = [getattr(sample, figure) / (KIB_A_MIB if is_memory else 1) for sample in samples]
        grown, risen = growth(picks, values), rise(values)
        lines.append(f"{figure:13} {values[0]:6.1f} at first, {values[-1]:6.1f} at last, "
                     f"{max(values):6.1f} at most; {grown:+.2f} by its slope, {risen:+.2f} by its "
                     f"tenths")
        # The share of shared memory in PSS also depends on other processes.
        allowed = limit if is_memory else MORE_DESCRIPTORS_OR_THREADS
        if figure != "pss" and max(grown, risen) > allowed:
            wrong.append(f"it grows: {lines[-1]}; {allowed:g} may be")
    return lines, wrong
