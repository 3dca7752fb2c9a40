"""The real program and another user: what that user could read, connect to, or plant.

Usage: own-session python3 intruder_run_test.py PROGRAM-FOLDER
"""

import json
import os
import socket
import stat
import subprocess
import sys
import tempfile
import unittest
from unittest import mock

from sockets_of import listening
from tablet import OrderService, Program, Screen, wait_for

PROGRAMS = sys.argv.pop(1)
HERE = os.path.dirname(os.path.abspath(__file__))
DELIVERIES = os.path.join(HERE, "..", "..", "acceptance", "deliveries.json")
TOUCHED_ROW = "85123A, 4000000000013, WHITE HANGING HEART HOLDER, picked 0, ordered 6, " \
              "difference -6"


def program(name):
    return os.path.join(PROGRAMS, name)


def modes_below(folder):
    """Returns the permissions of the folder and of everything in it, by relative path."""
    names = ["."]
    for where, folders, files in os.walk(folder):
        names += [os.path.relpath(os.path.join(where, name), folder) for name in folders + files]
    return {name: stat.S_IMODE(os.lstat(os.path.join(folder, name)).st_mode) for name in names}


class IntruderRun(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.home = self.path("home")

    def path(self, *names):
        return os.path.join(self.folder.name, *names)

    def install_recorder(self):
        """Registers a recorder as the desktop's mail program."""
        applications = self.path("data", "applications")
        os.makedirs(applications)
        for name, text in (
                ("recorder.desktop", "[Desktop Entry]\nType=Application\nName=Recorder\n"
                 f"Exec=/usr/bin/python3 {HERE}/recording_mailer.py {self.path('record')} %f\n"
                 "MimeType=message/rfc822;\n"),
                ("mimeinfo.cache", "[MIME Cache]\nmessage/rfc822=recorder.desktop;\n")):
            with open(os.path.join(applications, name), "w", encoding="ascii") as file:
                file.write(text)
        environment = mock.patch.dict(os.environ, XDG_DATA_HOME=self.path("data"))
        environment.start()
        self.addCleanup(environment.stop)

    def pick_and_mail(self, tablet):
        tablet.touch("push button", "Picking")
        tablet.expect_focus_in("Delivery number")
        tablet.type("A-100")
        tablet.touch("push button", "Search")
        tablet.find("label", "Customer: Harbour Café")
        tablet.touch("push button", "Start Picking")
        tablet.touch("list item", "Box C1, picked 0, ordered 11, unopened")
        tablet.touch("list item", TOUCHED_ROW)
        tablet.expect_focus_in("Quantity to add")
        tablet.type("6")
        tablet.touch("push button", "OK")
        tablet.expect_value("Picked", "6")
        tablet.touch("push button", "Options")
        tablet.touch("list item", "Send Email")
        wait_for(lambda: os.path.exists(self.path("record")), "the mail program to be started")

    def test_only_its_user_can_read_its_files_and_it_does_not_listen_on_any_port(self):
        self.install_recorder()
        before = os.umask(0)
        self.addCleanup(os.umask, before)
        screen = Screen(1280, 800)
        self.addCleanup(screen.close)
        service = OrderService(program("cartonpick-orders"), "--deliveries", DELIVERIES)
        self.addCleanup(service.close)
        tablet = Program(screen, program("cartonpick"), "--service-host", service.host, "--home",
                         self.home)
        self.addCleanup(tablet.close)
        process_id, = self.children("cartonpick")
        self.assertEqual(listening(process_id), [])
        self.pick_and_mail(tablet)
        self.assertEqual(listening(process_id), [])

        modes = modes_below(self.home)
        draft, = [name for name in modes if name.endswith(".eml")]
        kept = {f"Documents/{name}" for name in
                ("QIR_Pick.sqlite", "QIR_Pick.sqlite-wal", "QIR_Pick.sqlite-shm", "QIR_Pick.lock",
                 "VardexExport.csv")} | {draft}
        self.assertEqual(modes, {**dict.fromkeys([".", "Documents", "Drafts"], 0o700),
                                 **dict.fromkeys(kept, 0o600),
                                 **({"display.ini": 0o600} if "display.ini" in modes else {})})

        with open(self.path("record"), encoding="utf-8") as file:
            record = json.load(file)
        self.assertEqual(record["arguments"], [os.path.join(self.home, draft)])
        self.assertEqual(record["mail"]["subject"], "Vardex File A-100")
        self.assertEqual(record["mail"]["defects"], [])

    @staticmethod
    def children(name):
        """Returns the ids of this test's child processes with this name."""
        output = subprocess.run(["pgrep", "--exact", "--parent", str(os.getpid()), name],
                                capture_output=True, text=True, check=True)
        return [int(word) for word in output.stdout.split()]

    def start_offscreen(self):
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software")
        process = subprocess.Popen([program("cartonpick"), "--home", self.home], env=environment,
                                   stderr=subprocess.PIPE, text=True)
        self.addCleanup(process.stderr.close)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def test_the_program_exits_if_it_cannot_lock_its_store(self):
        os.makedirs(os.path.join(self.home, "Documents"))
        os.mkfifo(os.path.join(self.home, "Documents", "QIR_Pick.lock"))
        process = self.start_offscreen()
        log = process.stderr.read()
        self.assertEqual(process.wait(), 1)
        self.assertIn("cannot be locked", log)

    def test_listening_sockets_are_detected(self):
        with socket.create_server(("127.0.0.1", 0)) as server, \
                socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as datagrams:
            datagrams.bind(("127.0.0.1", 0))
            self.assertCountEqual(listening(os.getpid()),
                                  [server.getsockname(), datagrams.getsockname()])


if __name__ == "__main__":
    unittest.main()
