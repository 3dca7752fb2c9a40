"""What was picked, and whether a store has it as it was sent."""

import collections

Fact = collections.namedtuple("Fact", "delivery order box item barcode quantity picked_at")


def violations(sent, accepted, stored):
    """What is wrong with a store, a text each. `stored` has one entry for each of its rows; `sent`
    are all facts that were sent, `accepted` those of them that the service said it has stored."""
    rows = collections.Counter(stored)
    missing = [f"accepted and not stored: {fact}" for fact in accepted if fact not in rows]
    doubled = [f"stored {count} times: {fact}" for fact, count in rows.items() if count > 1]
    foreign = [f"stored and never sent: {fact}" for fact in rows if fact not in sent]
    return missing + doubled + foreign
