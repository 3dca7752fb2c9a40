"""A temporary PostgreSQL cluster for a test."""

import glob
import os
import shutil
import signal
import subprocess
import tempfile
import urllib.parse

from owned_process import start_owned, wait_for

# The signals that pg_ctl sends: "fast" aborts the sessions but loses nothing, "immediate" is like
# a crash.
STOPS = {"fast": signal.SIGINT, "immediate": signal.SIGQUIT}


def binaries():
    """Returns the folder where Debian installs the newest PostgreSQL server, or an empty string, so
    that PATH is searched, if there is none."""
    folders = glob.glob("/usr/lib/postgresql/*/bin")
    return max(folders, key=lambda folder: int(folder.split("/")[-2]), default="")


class PostgresCluster:
    """A context manager for a server with a temporary folder. It listens only on a socket in that
    folder and accepts every user who has access to the folder. `settings` are the server's."""

    def __init__(self, **settings):
        self._settings = settings
        # PostgreSQL does not run as root.
        self._user = "postgres" if os.geteuid() == 0 else None
        self._folder = None
        self._server = None

    def __enter__(self):
        self._folder = tempfile.mkdtemp(prefix="cartonpick-postgres-")
        try:
            if self._user:
                shutil.chown(self._folder, self._user, self._user)
            self._make()
            self.start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        if self._server:
            self.stop("fast")
        shutil.rmtree(self._folder)

    @property
    def folder(self):
        """The host name for PostgreSQL's clients. The user and the database are both postgres."""
        return self._folder

    @property
    def url(self):
        host = urllib.parse.quote(self._folder, safe="")
        return f"postgresql://postgres@/postgres?host={host}"

    def start(self):
        with open(self._path("log"), "ab") as log:
            self._server = self._run(
                "postgres", "-D", self._path("data"), "-k", self._folder, "-c", "listen_addresses=",
                *(f"-c{name}={value}" for name, value in self._settings.items()),
                stdout=log, stderr=log)
        wait_for(self._is_ready, "the start of PostgreSQL")

    def stop(self, how):
        """Stops the server. `how` is "fast", or "immediate" for a crash."""
        self._server.send_signal(STOPS[how])
        self._server.wait(60)
        self._server = None

    def restart(self, how):
        self.stop(how)
        self.start()

    def psql(self, script):
        """Runs SQL or psql commands, and returns the rows, one per line, without headers."""
        return subprocess.run(
            ["psql", "-h", self._folder, "-U", "postgres", "-v", "ON_ERROR_STOP=1", "-qXAt", "-f-"],
            input=script, env=dict(os.environ, PGCLIENTENCODING="UTF8"), check=True,
            stdout=subprocess.PIPE, encoding="utf-8").stdout

    def log(self):
        with open(self._path("log"), encoding="utf-8", errors="replace") as file:
            return file.read()

    def _path(self, name):
        return os.path.join(self._folder, name)

    def _run(self, program, *arguments, **options):
        # The user might not have access to the current working folder.
        return start_owned([os.path.join(binaries(), program), *arguments], last_signal="INT",
                           user=self._user, cwd=self._folder, **options)

    def _make(self):
        """Creates the cluster. It is not synced: a test does not survive a power failure anyway."""
        with open(self._path("log"), "wb") as log:
            made = self._run("initdb", "--no-sync", "--auth=trust", "--username=postgres",
                             "--encoding=UTF8", "--locale=C.UTF-8", self._path("data"),
                             stdout=log, stderr=log)
        if made.wait() != 0:
            raise RuntimeError(f"initdb failed:\n{self.log()}")

    def _is_ready(self):
        if self._server.poll() is not None:
            raise RuntimeError(f"PostgreSQL ended:\n{self.log()[-2000:]}")
        ready = subprocess.run(["pg_isready", "-q", "-h", self._folder], check=False)
        return ready.returncode == 0
