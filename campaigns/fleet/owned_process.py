"""Child processes that end with this process, even if it is killed."""

import subprocess
import time


def start_owned(command, last_signal="TERM", user=None, **options):
    """Starts the command, as `user` if one is given. The process gets the signal when the calling
    thread ends, so call this from the main thread."""
    identity = ["--reuid", user, "--regid", user, "--init-groups"] if user else []
    return subprocess.Popen(["setpriv", "--pdeathsig", last_signal, *identity, "--", *command],
                            **options)


def wait_for(condition, what, seconds=60):
    """Waits until the condition is true. Raises RuntimeError after `seconds`."""
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            raise RuntimeError(f"{what} did not happen within {seconds} s")
        time.sleep(0.02)
