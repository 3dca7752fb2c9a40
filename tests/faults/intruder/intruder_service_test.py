"""The real order service with hostile clients: other users, floods of requests and web pages.

Usage: python3 intruder_service_test.py PROGRAM-FOLDER
"""

import contextlib
import http.client
import json
import os
import socket
import stat
import subprocess
import sys
import tempfile
import unittest

from loopback import HOST
from owned_process import start_owned, wait_for
from sockets_of import listening

PROGRAMS = sys.argv.pop(1)
CALLS = "/qir_pick/servicepick.svc/json/"
LOOKUP = CALLS + "getorderpercarton/4711"
PICKING = json.dumps([{"barcode": "5012746100000", "box": "C001", "doc": "4711", "item": "20138A",
                       "ordernum": "SO-20611", "qty": 1, "datepicked": "2026-03-04 09:15:00",
                       "sent": 0}])
HALF_REQUESTS = [
    b"",
    b"GET / HTTP/1.1\r\nHo",
    f"POST {CALLS}sendpick HTTP/1.1\r\nHost: a\r\nContent-Length: 900\r\n\r\n[".encode(),
    f"POST {CALLS}sendpick HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n\r\n9\r\n[".encode(),
]
FLOOD = 600


class IntruderService(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def start(self, *options):
        """Starts the service, and returns its process and port once it listens."""
        command = [os.path.join(PROGRAMS, "cartonpick-orders"), "--port", "0", *options]
        process = start_owned(command, stdout=subprocess.PIPE, text=True)
        self.addCleanup(process.stdout.close)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process, int(process.stdout.readline())

    @staticmethod
    def ask(port, path, method="GET", body=None, **headers):
        """Returns the status and the body of the answer. An underscore in a header's name becomes
        a hyphen."""
        connection = http.client.HTTPConnection(HOST, port, timeout=30)
        with contextlib.closing(connection):
            connection.request(method, path, body,
                               {name.replace("_", "-"): text for name, text in headers.items()})
            answer = connection.getresponse()
            return answer.status, answer.read().decode()

    def test_it_listens_on_loopback_by_default(self):
        process, port = self.start()
        self.assertEqual(listening(process.pid), [(HOST, port)])
        process, port = self.start("--bind", "0.0.0.0")
        self.assertEqual(listening(process.pid), [("0.0.0.0", port)])

    def test_only_its_user_can_read_its_store(self):
        before = os.umask(0)
        self.addCleanup(os.umask, before)
        store = os.path.join(self.folder.name, "store.sqlite")
        self.start("--store", store)
        for name in os.listdir(self.folder.name):
            mode = stat.S_IMODE(os.stat(os.path.join(self.folder.name, name)).st_mode)
            self.assertEqual((name, mode), (name, 0o600))
        self.assertIn("store.sqlite-wal", os.listdir(self.folder.name))

    def test_a_store_is_not_opened_through_a_link(self):
        store = os.path.join(self.folder.name, "store.sqlite")
        os.symlink(os.path.join(self.folder.name, "elsewhere"), store)
        run = subprocess.run([os.path.join(PROGRAMS, "cartonpick-orders"), "--port", "0",
                              "--store", store], capture_output=True, text=True, timeout=60)
        self.assertEqual(run.returncode, 1)
        self.assertIn("it is a symbolic link", run.stderr)
        self.assertEqual(os.listdir(self.folder.name), ["store.sqlite"])

    def test_tablets_are_answered_during_a_flood_of_incomplete_requests(self):
        process, port = self.start()
        with contextlib.ExitStack() as flood:
            for number in range(FLOOD):
                half = flood.enter_context(socket.create_connection((HOST, port)))
                with contextlib.suppress(ConnectionError):
                    half.sendall(HALF_REQUESTS[number % len(HALF_REQUESTS)])
                if number % 20 == 0:
                    self.assertEqual(self.ask(port, LOOKUP)[0], 200)
            self.assertEqual(self.ask(port, LOOKUP)[0], 200)
            self.assertEqual(self.ask(port, CALLS + "sendpick", "POST", PICKING,
                                      Content_Type="application/json"), (200, '"0"'))
            # The service can also be stopped during the flood.
            process.terminate()
            self.assertEqual(process.wait(timeout=60), 0)

    def test_oversized_requests_are_refused(self):
        _, port = self.start()
        self.assertEqual(self.ask(port, "/" + "x" * 10_000)[0], 414)
        self.assertEqual(self.ask(port, "/", X="x" * 70_000)[0], 431)
        status, text = self.ask(port, CALLS + "sendpick", "POST", " " * (16 * 1024 * 1024 + 1),
                                Content_Type="application/json")
        self.assertEqual((status, text), (413, "the body is larger than 16 MiB"))
        with socket.create_connection((HOST, port), timeout=60) as endless:
            wait_for(lambda: self.is_closed_after(endless, b"x" * 65536),
                     "the oversized header to be refused")
        self.assertEqual(self.ask(port, LOOKUP)[0], 200)

    @staticmethod
    def is_closed_after(connection, data):
        try:
            connection.sendall(data)
        except ConnectionError:
            return True
        return False

    def test_a_cross_origin_web_page_can_neither_read_pages_nor_send_pickings(self):
        _, port = self.start()
        self.assertEqual(self.ask(port, "/")[0], 200)
        self.assertEqual(self.ask(port, "/", Host=f"localhost:{port}")[0], 200)
        for path in ("/", "/metrics", "/deliveries/4711"):
            self.assertEqual(self.ask(port, path, Host=f"evil.example:{port}")[0], 403)
        for origin in ("http://evil.example", "null"):
            self.assertEqual(self.ask(port, CALLS + "sendpick", "POST", PICKING, Origin=origin,
                                      Content_Type="application/json")[0], 403)
        # The content types that a page can send without a preflight request are refused.
        self.assertEqual(self.ask(port, CALLS + "sendpick", "POST", PICKING,
                                  Content_Type="text/plain")[0], 400)
        status, _ = self.ask(port, CALLS + "sendpick", "OPTIONS", Origin="http://evil.example")
        self.assertEqual(status, 405)
        # A tablet can call through a proxy, whose host name is arbitrary.
        self.assertEqual(self.ask(port, LOOKUP, Host="orders.example")[0], 200)


if __name__ == "__main__":
    unittest.main()
