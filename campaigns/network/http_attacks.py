"""Attacks the order service over HTTP and prints what that costs it.

Ranges of a large answer, compressed bodies, and 1,000 connections that send a byte a second of a
head, a body, a chunk's extension or a trailer. Fails if a request takes more than 50 ms of
processor time, the service more than 100 MiB of memory, or its end after SIGTERM more than 10
seconds. The times of lookups, with and without the slow connections, are printed only.

Usage: python3 http_attacks.py BIN

BIN is the folder of the programs.
"""

import gzip
import http.client
import json
import os
import resource
import selectors
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time

HOST = "127.0.0.1"
CALLS = "/qir_pick/servicepick.svc/json/"
ARTICLES = 20_000
SLOW_CONNECTIONS, LOOKUPS, CLIENTS = 1000, 3000, 4
MAX_CPU_SECONDS, MAX_MEBIBYTES, MAX_STOP_SECONDS = 0.05, 100, 10

SEND = f"POST {CALLS}sendpick HTTP/1.1\r\nHost: a\r\nContent-Type: application/json\r\n"
CHUNKED = SEND + "Transfer-Encoding: chunked\r\n\r\n"
# What a slow connection sends at once, and what it then repeats.
SLOW = {
    "head": (f"GET {CALLS}getitems HTTP/1.1\r\nHost: a\r\nX: ", "a"),
    "body": (SEND + "Content-Length: 100000\r\n\r\n[", " "),
    "chunk extension": (CHUNKED + "5;", "a"),
    "trailer": (CHUNKED + "2\r\n[]\r\n0\r\nX: ", "\r"),
}


def deliveries():
    line = {"cusname": "Ann", "brand": "HEARTHSIDE", "cdate": "03/02/2026", "date": "03/05/2026",
            "ordernum": "SO-1", "barcode": "5012746100000", "descr": "WHITE ENAMEL MUG 350ML",
            "qty": 6, "carton": "C001"}
    lines = [line | {"doc": str(doc), "item": f"{20000 + item}A"}
             for doc in range(100) for item in range(12)]
    articles = [{"barcode": f"50127461{number:05}", "item": f"{number}B",
                 "descr": "WHITE ENAMEL MUG 350ML"} for number in range(ARTICLES)]
    return {"deliveries": lines, "articles": articles}


class Service:
    """A running order service with a store in a folder."""

    def __init__(self, programs, folder):
        file = os.path.join(folder, "deliveries.json")
        with open(file, "w", encoding="utf-8") as text:
            json.dump(deliveries(), text)
        self.process = subprocess.Popen(
            [os.path.join(programs, "cartonpick-orders"), "--port", "0", "--deliveries", file,
             "--store", os.path.join(folder, "store.sqlite"), "--exit-with-parent"],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.port = int(self.process.stdout.readline())

    def cpu_seconds(self):
        with open(f"/proc/{self.process.pid}/stat", encoding="ascii") as file:
            fields = file.read().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def peak_mebibytes(self):
        with open(f"/proc/{self.process.pid}/status", encoding="ascii") as file:
            [line] = [line for line in file if line.startswith("VmHWM")]
        return int(line.split()[1]) / 1024

    def end(self):
        """Ends the service with SIGTERM. Returns the seconds that it took."""
        begin = time.monotonic()
        self.process.send_signal(signal.SIGTERM)
        self.process.communicate()
        return time.monotonic() - begin


def request(service, method, target, body=None, headers=None):
    connection = http.client.HTTPConnection(HOST, service.port, timeout=60)
    connection.request(method, target, body, headers or {})
    answer = connection.getresponse()
    answer.read()
    connection.close()
    return answer.status


def attack(service, name, expected, *call, times=16):
    """Sends a request several times. Returns the complaints about it."""
    before = service.cpu_seconds()
    for _ in range(times):
        status = request(service, *call)
        if status != expected:
            return [f"{name}: status {status}"]
    seconds = (service.cpu_seconds() - before) / times
    print(f"{name}: {seconds * 1000:.1f} ms of processor time each, peak memory "
          f"{service.peak_mebibytes():.0f} MiB", flush=True)
    return [f"{name}: {seconds} s"] if seconds > MAX_CPU_SECONDS else []


def attack_with_sizes(service):
    complaints = attack(service, "catalogue", 200, "GET", CALLS + "getitems")
    for ranges in 10, 800, 4000:
        complaints += attack(service, f"catalogue, {ranges} ranges", 200, "GET", CALLS + "getitems",
                             None, {"Range": "bytes=-" + ",-" * ranges})
    for mebibytes in 1, 64, 256:
        body = gzip.compress(bytes(mebibytes << 20))
        for content_type in "application/json", "multipart/form-data; boundary=x":
            complaints += attack(
                service, f"{len(body)} bytes for {mebibytes} MiB, {content_type}", 415, "POST",
                CALLS + "sendpick", body,
                {"Content-Type": content_type, "Content-Encoding": "gzip"})
    return complaints


class SlowConnections:
    """A context manager: many connections, each with an incomplete request that goes on slowly."""

    def __init__(self, port):
        self._port = port
        self._sockets = []
        self._is_ending = threading.Event()
        self._thread = threading.Thread(target=self._send)

    def __enter__(self):
        kinds = list(SLOW.values())
        for number in range(SLOW_CONNECTIONS):
            # One address may have 400 of them.
            address = f"127.0.0.{2 + number % 8}"
            connection = socket.create_connection((HOST, self._port), source_address=(address, 0))
            begin, more = kinds[number % len(kinds)]
            connection.sendall(begin.encode())
            self._sockets.append((connection, more.encode()))
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._is_ending.set()
        self._thread.join()
        for connection, _ in self._sockets:
            connection.close()

    def open_ones(self):
        """Returns the number of connections that the service has neither closed nor answered."""
        with selectors.DefaultSelector() as selector:
            for connection, _ in self._sockets:
                selector.register(connection, selectors.EVENT_READ)
            return len(self._sockets) - len(selector.select(0))

    def _send(self):
        while not self._is_ending.wait(1):
            for connection, more in self._sockets:
                try:
                    connection.send(more)
                except OSError:
                    pass


def lookup_times(service):
    """Returns the sorted seconds of lookups by several clients, which keep their connections."""
    times = []

    def look_up():
        connection = http.client.HTTPConnection(HOST, service.port, timeout=60)
        for number in range(LOOKUPS // CLIENTS):
            begin = time.monotonic()
            connection.request("GET", f"{CALLS}getorderpercarton/{number % 100}")
            connection.getresponse().read()
            times.append(time.monotonic() - begin)
        connection.close()

    clients = [threading.Thread(target=look_up) for _ in range(CLIENTS)]
    for client in clients:
        client.start()
    for client in clients:
        client.join()
    return sorted(times)


def shown(times):
    median, slowest = times[len(times) // 2], times[len(times) * 99 // 100]
    return f"p50 {median * 1000:.2f} ms, p99 {slowest * 1000:.2f} ms"


def attack_slowly(service):
    print("lookups, idle:", shown(lookup_times(service)), flush=True)
    with SlowConnections(service.port) as slow:
        print("lookups, with slow connections:", shown(lookup_times(service)), flush=True)
        print(slow.open_ones(), "slow connections are open", flush=True)
        seconds = service.end()
    print(f"end after SIGTERM: {seconds:.1f} s", flush=True)
    return [f"the end took {seconds} s"] if seconds > MAX_STOP_SECONDS else []


def main():
    [programs] = sys.argv[1:]
    _, hard = resource.getrlimit(resource.RLIMIT_NOFILE)
    resource.setrlimit(resource.RLIMIT_NOFILE, (hard, hard))
    with tempfile.TemporaryDirectory() as folder:
        service = Service(programs, folder)
        complaints = attack_with_sizes(service)
        peak = service.peak_mebibytes()
        if peak > MAX_MEBIBYTES:
            complaints.append(f"{peak:.0f} MiB of memory")
        complaints += attack_slowly(service)
    for complaint in complaints:
        print("http_attacks:", complaint, file=sys.stderr)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
