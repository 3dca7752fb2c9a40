"""Facts about what was picked, and the comparison of stored facts with sent ones."""

import collections

Fact = collections.namedtuple("Fact", "delivery order box item barcode quantity picked_at")


def violations(sent, accepted, stored):
    """Returns a list of messages about what is wrong with a store. `stored` has one entry for each
    of its rows, `sent` has all facts that were sent, and `accepted` has those that the service
    confirmed."""
    rows = collections.Counter(stored)
    missing = [f"accepted and not stored: {fact}" for fact in accepted if fact not in rows]
    doubled = [f"stored {count} times: {fact}" for fact, count in rows.items() if count > 1]
    foreign = [f"stored and never sent: {fact}" for fact in rows if fact not in sent]
    return missing + doubled + foreign
