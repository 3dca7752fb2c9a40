"""A time zone that changes while a program runs, for that program alone."""

import os
import subprocess

# An /etc of links to what is in the real one, which stays in reach behind another root.
_WITH_OWN_ETC = """
mount --rbind / "$1/root" && mount --bind "$1/etc" /etc && shift && exec env -u TZ "$@"
"""


def own_mounts():
    """The command that lets what it runs mount what nobody else sees; nothing if that is not
    permitted here, in a container for example. The session's bus wants the same user as before."""
    as_user = [] if os.geteuid() == 0 else ["--user", "--map-current-user", "--keep-caps"]
    command = ["unshare", *as_user, "--mount"]
    trial = subprocess.run([*command, "mount", "--bind", "/etc", "/etc"], check=False,
                           stderr=subprocess.DEVNULL)
    return command if trial.returncode == 0 else None


class MovableZone:
    """A tablet's zone. What is run as `around` and a command is in it."""

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
        """Carries the tablet into the zone of that name, as the system's settings do."""
        new = os.path.join(self._etc, "localtime-new")
        os.symlink(os.path.join("/usr/share/zoneinfo", name), new)
        os.replace(new, os.path.join(self._etc, "localtime"))
