"""Detects an unfinished transaction in a store."""

import os
import sqlite3
import struct

_LOG_HEADER = struct.Struct(">8I")
_FRAME_HEADER = struct.Struct(">6I")


def is_unfinished(path, since):
    """Returns true if a transaction was being written to the store when its program was killed.

    In this case there is a rollback journal, or the write-ahead log has pages after its last
    commit. Files that were last written before the time `since` do not count. Recovers the store.
    """
    return _is_written(path + "-journal", since) or (
        _is_written(path + "-wal", since) and _log_goes_on(path))


def _is_written(path, since):
    return os.path.exists(path) and os.path.getsize(path) > 0 and os.path.getmtime(path) >= since


def _log_goes_on(path):
    database = sqlite3.connect(path)
    try:
        _, frames, _ = database.execute("PRAGMA wal_checkpoint").fetchone()
        return _has_frame(path + "-wal", frames)
    finally:
        database.close()


def _has_frame(log, number):
    """Returns true if a complete, valid frame follows the first `number` frames of the log. A frame
    left from an earlier use of the file is not valid: a frame's checksum covers all frames before
    it."""
    with open(log, "rb") as file:
        magic, _, page_size, _, *salts, sum0, sum1 = _LOG_HEADER.unpack(
            file.read(_LOG_HEADER.size))
        frame_size = _FRAME_HEADER.size + page_size
        if number:
            file.seek(_LOG_HEADER.size + (number - 1) * frame_size)
            *_, sum0, sum1 = _FRAME_HEADER.unpack(file.read(_FRAME_HEADER.size))
            file.seek(page_size, os.SEEK_CUR)
        frame = file.read(frame_size)
    if len(frame) < frame_size:
        return False
    _, _, *frame_salts, frame_sum0, frame_sum1 = _FRAME_HEADER.unpack_from(frame)
    order = ">" if magic & 1 else "<"
    summed = frame[:8] + frame[_FRAME_HEADER.size:]
    return frame_salts == salts and _checksum(order, summed, sum0, sum1) == (frame_sum0, frame_sum1)


def _checksum(order, data, sum0, sum1):
    words = struct.unpack(f"{order}{len(data) // 4}I", data)
    for even, odd in zip(words[::2], words[1::2]):
        sum0 = (sum0 + even + sum1) & 0xFFFFFFFF
        sum1 = (sum1 + odd + sum0) & 0xFFFFFFFF
    return sum0, sum1
