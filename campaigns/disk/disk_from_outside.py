"""Disk faults from outside the program: a file size limit, a full disk, a write-protected folder or
file, or a failing system call."""

import os
import subprocess

import store_contents
from disk_attacks import Attack
from disk_homes import documents
from disk_run import ENDED, contents_violations
from owned_process import start_owned

_NOT_ATTACKED = 125
_OWNED = "setpriv --pdeathsig KILL --"

# The shell reports a command that was killed by a signal; this must not get into the program's log.
_ON_A_SMALL_DISK = f"""
size=$1 home=$2 start=$3 left=$4
shift 4
mkdir "$home" && mount -t tmpfs -o "size=$size,mode=700" disk "$home" && cp -r "$start/." "$home" ||
  exit {_NOT_ATTACKED}
exec 3>&2 2>/dev/null
({_OWNED} "$@" 2>&3)
code=$?
cp -r "$home/Documents" "$left" || exit {_NOT_ATTACKED}
exit "$code"
"""
_ON_A_FULL_DISK = f"""
home=$1
shift
mount -t tmpfs -o size=64k,mode=700 disk "$home" && mkdir "$home/Documents" || exit {_NOT_ATTACKED}
cat /dev/zero > "$home/Documents/large" 2>/dev/null
exec {_OWNED} "$@"
"""
_PROTECTED = f"""
path=$1
shift
mount --bind "$path" "$path" && mount -o remount,bind,ro "$path" || exit {_NOT_ATTACKED}
exec {_OWNED} "$@"
"""


def own_mounts():
    """Returns the command prefix that runs a program in a private mount namespace, or None if that
    is not permitted, for example in a container."""
    as_root = [] if os.geteuid() == 0 else ["--user", "--map-root-user"]
    command = ["unshare", *as_root, "--mount"]
    trial = subprocess.run([*command, "mount", "-t", "tmpfs", "disk", "/mnt"], check=False,
                           stderr=subprocess.DEVNULL)
    return command if trial.returncode == 0 else None


def can_trace():
    trial = subprocess.run(["strace", "-o", "/dev/null", "true"], check=False,
                           stderr=subprocess.DEVNULL)
    return trial.returncode == 0


class OutsideAttacks:
    """Attacks on the worker, and on the startup of the program itself."""

    def __init__(self, worker, program, folder, mounts):
        self._worker = worker
        self._program = program
        self._folder = folder
        self._mounts = mounts

    def file_limit(self, start, size):
        """Limits the size of every file to `size` bytes."""
        return self._attack(start, "largest file", f"{size} bytes", "prlimit", f"--fsize={size}")

    def failing_call(self, start, call, number):
        """Makes one system call fail. `number` counts from 1; "N+" fails all calls from N on."""
        return self._attack(start, f"{call} fails", number, "strace", "-f", "-qq",
                            "-o", "/dev/null", "-e", f"trace={call}",
                            "-e", f"inject={call}:error=EIO:when={number}")

    def _attack(self, start, what, detail, *around):
        with start.copy(self._folder, f"{what} {detail}") as home:
            promised = start.promised()
            run = self._worker.run(home, around=around)
            return self._judge(run, promised, documents(home), what, f"{start.name}: {detail}")

    def small_disk(self, start, size):
        with start.copy(self._folder, f"disk {size}") as home:
            promised = start.promised()
            left = home + "-left"
            run = self._worker.run(home + "-disk", around=[
                *self._mounts, "sh", "-c", _ON_A_SMALL_DISK, "sh", str(size), home + "-disk", home,
                left])
            return self._judge(run, promised, left, "full disk", f"{start.name}: {size} bytes")

    def protected_file(self, start):
        """Makes the store's file read-only."""
        with start.copy(self._folder, "protected") as home:
            promised = start.promised()
            path = os.path.join(documents(home), store_contents.NAME)
            run = self._worker.run(home, around=[*self._mounts, "sh", "-c", _PROTECTED, "sh", path])
            attack = self._judge(run, promised, documents(home), "protected file", start.name)
            if attack.outcome != ENDED:
                attack.wrong.append("it could write to the file")
            return attack

    @staticmethod
    def _judge(run, promised, folder, what, again):
        run.replay(promised)
        outcome, wrong = run.outcome(promised)
        return Attack(what, outcome, wrong + contents_violations(promised, folder), again)

    # Starts of the program itself.

    def start_on_full_disk(self, start):
        return self._refused_start(start, "start on a full disk", _ON_A_FULL_DISK,
                                   "The store in {}/Documents cannot be locked.")

    def start_in_protected_folder(self, start):
        return self._refused_start(start, "start in a protected folder", _PROTECTED,
                                   "The store in {}/Documents cannot be locked.")

    def _refused_start(self, start, what, script, line):
        with start.copy(self._folder, what) as home:
            process = self._start(home, *self._mounts, "sh", "-c", script, "sh", home)
            _, log = process.communicate()
            wrong = contents_violations(start.promised(), documents(home))
            if process.returncode != 1 or log.splitlines()[-1:] != [line.format(home)]:
                wrong.append(f"it ended with {process.returncode}, saying {log}")
        return Attack(what, "said so, not started", wrong, start.name)

    def start_without_store(self, start):
        """Starts the program with a folder in place of the store's file."""
        with start.copy(self._folder, "no store") as home:
            os.mkdir(os.path.join(documents(home), store_contents.NAME))
            process = self._start(home)
            # The program tries to open the store twice, the second time with migration, and logs a
            # line for each failure. Then it continues.
            lines = [process.stderr.readline() for _ in range(2)]
            process.terminate()
            process.communicate()
            is_said = all(line.startswith("Store ") and " not opened: " in line for line in lines)
            wrong = [] if is_said else [f"it said {lines}"]
        return Attack("start without a store", "said so, started", wrong, start.name)

    def _start(self, home, *around):
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software",
                           LC_ALL="C.UTF-8", XDG_RUNTIME_DIR=self._folder)
        return start_owned([*around, self._program, "--home", home], "KILL", env=environment,
                           stderr=subprocess.PIPE, text=True)
