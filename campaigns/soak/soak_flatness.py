"""Whether what a process takes stays what it is."""

import statistics

KIB_A_MIB = 1024
LEAST_SAMPLES = 10
# SQLite keeps the descriptor of a connection that was closed for the next one.
MORE_DESCRIPTORS_OR_THREADS = 1
# What a run takes to become steady, as a part of it.
WARM_UP = 0.2


def steady(series):
    """What is left of a series after its warm-up."""
    return series[int(len(series) * WARM_UP):]


def slope(xs, ys):
    """The median of the slopes between all pairs of points, which single points far off do not
    change (Theil and Sen)."""
    points = list(zip(xs, ys))
    return statistics.median((y - before_y) / (x - before_x)
                             for place, (x, y) in enumerate(points)
                             for before_x, before_y in points[:place])


def growth(xs, ys):
    """How much a figure grows after the warm-up, in as much work as the whole run."""
    return slope(steady(xs), steady(ys)) * (xs[-1] - xs[0])


def rise(ys):
    """By how much the last tenth lies above the first one after the warm-up, in the median."""
    rest = steady(ys)
    count = max(1, len(ys) // 10)
    return statistics.median(rest[-count:]) - statistics.median(rest[:count])


def judge(samples, limit):
    """What the figures of a run are, and what of them is wrong, a text each. Its memory may grow by
    so many MiB."""
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
        # How much of the shared memory is a process's own share is also a matter of other ones.
        allowed = limit if is_memory else MORE_DESCRIPTORS_OR_THREADS
        if figure != "pss" and max(grown, risen) > allowed:
            wrong.append(f"it grows: {lines[-1]}; {allowed:g} may be")
    return lines, wrong
