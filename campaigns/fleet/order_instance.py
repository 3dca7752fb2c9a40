"""One instance of the order service."""

import os
import select
import subprocess
import tempfile

from loopback import HOST

START_SECONDS = 60


class OrderInstance:
    """A context manager that runs the service on the port. kill() and start() interrupt it."""

    def __init__(self, folder, store, port, options=("--trusted-proxy", HOST)):
        """`folder` is the folder with the programs; `options` are additional service options."""
        self._command = [os.path.join(folder, "cartonpick-orders"), "--exit-with-parent", "--bind",
                         HOST, "--port", str(port), "--store", store, *options]
        self._errors = tempfile.TemporaryFile()
        self._process = None

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        if self._process:
            self._process.kill()
            self._process.communicate()
        self._errors.close()

    @property
    def is_running(self):
        return self._process.poll() is None

    def start(self):
        """Starts the service and waits until it listens."""
        self._process = subprocess.Popen(self._command, stdin=subprocess.PIPE,
                                         stdout=subprocess.PIPE, stderr=self._errors)
        ready, _, _ = select.select([self._process.stdout], [], [], START_SECONDS)
        if not ready or not self._process.stdout.readline():
            raise RuntimeError(f"an instance did not start:\n{self.errors()}")

    def errors(self):
        """Returns the last 2000 characters of its standard error."""
        self._errors.seek(0)
        return self._errors.read().decode(errors="replace")[-2000:]

    def kill(self):
        """Ends the service immediately, like a crash."""
        self._process.kill()
        self._process.communicate()

    def end(self):
        """Ends the service with SIGTERM, and returns its exit code."""
        self._process.terminate()
        self._process.communicate(timeout=60)
        return self._process.returncode
