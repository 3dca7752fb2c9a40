"""Ports of this machine's loopback interface."""

import random
import socket

HOST = "127.0.0.1"


def _first_for_clients():
    with open("/proc/sys/net/ipv4/ip_local_port_range", encoding="ascii") as file:
        return int(file.read().split()[0])


def free_ports(count):
    """Returns free ports outside the system's range of ephemeral ports.

    A client could get a port from that range while its server is down, and connect to itself.
    """
    ports = set()
    while len(ports) < count:
        port = random.randrange(10000, _first_for_clients())
        with socket.socket() as server:
            server.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
            try:
                server.bind((HOST, port))
            except OSError:
                continue
        ports.add(port)
    return list(ports)
