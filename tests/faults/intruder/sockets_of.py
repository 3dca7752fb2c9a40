"""The sockets on which a process listens, according to the kernel."""

import os
import re
import socket

_TCP_LISTEN = "0A"
_UDP_UNCONNECTED = "07"
_TABLES = {"tcp": _TCP_LISTEN, "tcp6": _TCP_LISTEN, "udp": _UDP_UNCONNECTED,
           "udp6": _UDP_UNCONNECTED}


def _own_inodes(process_id):
    folder = f"/proc/{process_id}/fd"
    for name in os.listdir(folder):
        try:
            target = os.readlink(os.path.join(folder, name))
        except FileNotFoundError:
            continue  # The descriptor was closed in the meantime.
        socket_inode = re.fullmatch(r"socket:\[(\d+)\]", target)
        if socket_inode:
            yield socket_inode[1]


def _address(text):
    digits, port = text.split(":")
    words = [bytes.fromhex(digits[i:i + 8])[::-1] for i in range(0, len(digits), 8)]
    family = socket.AF_INET if len(words) == 1 else socket.AF_INET6
    return socket.inet_ntop(family, b"".join(words)), int(port, 16)


def listening(process_id):
    """Returns the TCP and UDP addresses and ports on which others can reach the process."""
    own = set(_own_inodes(process_id))
    found = []
    for table, state in _TABLES.items():
        with open(f"/proc/{process_id}/net/{table}", encoding="ascii") as file:
            rows = [line.split() for line in file.readlines()[1:]]
        found += [_address(row[1]) for row in rows if row[3] == state and row[9] in own]
    return found
