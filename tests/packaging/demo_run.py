"""Starts an installed cartonpick with its demo deliveries, without a display, and ends it.

Usage: demo_run.py HOME ORDER-SERVICE COMMAND...

COMMAND starts cartonpick in its own process; ORDER-SERVICE is the executable that must serve the
demo. Fails unless the window is drawn without a warning, the service runs, and both processes end
after one SIGTERM.
"""

import os
import select
import signal
import subprocess
import sys

# Qt logs this when it has drawn the window.
DRAWN = "qt.scenegraph.time.renderloop: Frame rendered"


class DemoRunFailed(AssertionError):
    """The demo did not behave as expected."""


def children(process):
    """Returns the process ids of a process's children."""
    listed = subprocess.run(["pgrep", "--parent", str(process)], stdout=subprocess.PIPE, text=True)
    return [int(child) for child in listed.stdout.split()]


def wait_until_ended(process):
    """Waits until the process that this pidfd refers to has ended."""
    waiting = select.poll()
    waiting.register(process, select.POLLIN)
    waiting.poll()


def wait_until_drawn(program):
    """Waits until the program has drawn its window."""
    said = []
    for line in program.stderr:
        if line.startswith(DRAWN):
            break
        said.append(line)
    else:
        said.insert(0, "It ended without a window.\n")
    if said:
        raise DemoRunFailed("".join(said))


def run_demo(home, order_service, command):
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software",
                       QT_LOGGING_RULES="qt.scenegraph.time.renderloop.debug=true")
    with subprocess.Popen([*command, "--demo", "--home", home], env=environment,
                          stderr=subprocess.PIPE, text=True) as program:
        try:
            wait_until_drawn(program)
            services = [os.pidfd_open(child) for child in children(program.pid)
                        if os.path.samefile(f"/proc/{child}/exe", order_service)]
            if len(services) != 1:
                raise DemoRunFailed(f"{len(services)} processes run {order_service}.")
        finally:
            program.send_signal(signal.SIGTERM)
    wait_until_ended(services[0])
    os.close(services[0])


if __name__ == "__main__":
    run_demo(sys.argv[1], sys.argv[2], sys.argv[3:])
