"""Processes that end with this one, even if this one is killed."""

import subprocess
import time


def start_owned(command, last_signal="TERM", user=None, **options):
    """Starts the command, as `user` if one is given. It gets the signal when the calling thread
    ends, so that thread is to be the main one."""
    identity = ["--reuid", user, "--regid", user, "--init-groups"] if user else []
    return subprocess.Popen(["setpriv", "--pdeathsig", last_signal, *identity, "--", *command],
                            **options)


def wait_for(condition, what, seconds=60):
    """Waits until the condition holds."""
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            raise RuntimeError(f"{what} did not happen within {seconds} s")
        time.sleep(0.02)
