"""A time zone that only one program uses, and that can change while it runs."""

import os
import subprocess

# Mounts a folder of links over /etc. The links point to the real /etc, which is mounted elsewhere.
_WITH_OWN_ETC = """
mount --rbind / "$1/root" && mount --bind "$1/etc" /etc && shift && exec env -u TZ "$@"
"""


def own_mounts():
    """Returns the command prefix that gives its program a private mount namespace, or None if that
    is not permitted here, for example in a container.

    The user stays the same, because the session bus checks it.
    """
    as_user = [] if os.geteuid() == 0 else ["--user", "--map-current-user", "--keep-caps"]
    command = ["unshare", *as_user, "--mount"]
    trial = subprocess.run([*command, "mount", "--bind", "/etc", "/etc"], check=False,
                           stderr=subprocess.DEVNULL)
    return command if trial.returncode == 0 else None


class MovableZone:
    """A tablet's time zone. It applies to programs started with the command prefix `around`."""

    def __init__(self, folder, mounts, name):
        self._etc = os.path.join(folder, "etc")
        self.around = [*mounts, "sh", "-c", _WITH_OWN_ETC, "sh", folder]
        real = os.path.join(folder, "root")
        os.makedirs(real)
        os.mkdir(self._etc)
        for entry in os.listdir("/etc"):
            os.symlink(os.path.join(real, "etc", entry), os.path.join(self._etc, entry))
        self.move(name)

    def move(self, name):
        """Changes the time zone to the one with this name, as the system settings do."""
        new = os.path.join(self._etc, "localtime-new")
        os.symlink(os.path.join("/usr/share/zoneinfo", name), new)
        os.replace(new, os.path.join(self._etc, "localtime"))
