"""A hand in a browser."""

import json
import shutil
import subprocess


class Hand:
    """A script for Node in a process of its own. A line to it is a command, a JSON array; a line from
    it is the answer."""

    def __init__(self, script, address):
        self._process = subprocess.Popen(
            ["node", script, shutil.which("chromium"), address],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def do(self, *command):
        self._process.stdin.write(json.dumps(command) + "\n")
        self._process.stdin.flush()
        return json.loads(self._process.stdout.readline())

    def close(self):
        self._process.communicate()
