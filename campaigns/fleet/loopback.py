"""Ports of this machine's loopback interface."""

import random
import socket

HOST = "127.0.0.1"


def _first_for_clients():
    with open("/proc/sys/net/ipv4/ip_local_port_range", encoding="ascii") as file:
        return int(file.read().split()[0])


def free_ports(count):
    """Ports that stay free while nobody listens: none that the system gives to clients. One of
    those could be taken while a server is away, by a client that reaches itself at it."""
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
