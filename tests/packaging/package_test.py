"""The Debian package: what it says of itself, what it holds, and that what it holds runs.

Usage: package_test.py CPACK BUILD-FOLDER VERSION
"""

import configparser
import glob
import gzip
import os
import re
import shlex
import subprocess
import sys
import tarfile
import tempfile
import unittest
import xml.etree.ElementTree

from demo_run import run_demo

VERSION, BUILD, CPACK = sys.argv.pop(), sys.argv.pop(), sys.argv.pop()
SOURCES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")

DESKTOP_ID = "io.github.cartonpick.CartonPick"
PROGRAMS = {"usr/bin/cartonpick", "usr/bin/cartonpick-orders"}
KIOSK = "usr/share/doc/cartonpick/examples/cartonpick-kiosk.desktop"
ENTRY = f"usr/share/applications/{DESKTOP_ID}.desktop"
METAINFO = f"usr/share/metainfo/{DESKTOP_ID}.metainfo.xml"
CHANGELOG = "usr/share/doc/cartonpick/changelog.Debian.gz"
FILES = PROGRAMS | {
    ENTRY,
    METAINFO,
    CHANGELOG,
    KIOSK,
    f"usr/share/icons/hicolor/scalable/apps/{DESKTOP_ID}.svg",
    "usr/share/doc/cartonpick/changelog.gz",
    "usr/share/doc/cartonpick/copyright",
    "usr/lib/systemd/system/cartonpick-orders.service",
    "usr/share/doc/cartonpick/fleet.md",
    "usr/share/doc/cartonpick/installing.md",
    "usr/share/doc/cartonpick/order-service.md",
    "usr/share/man/man1/cartonpick.1.gz",
    "usr/share/man/man1/cartonpick-orders.1.gz",
}


def output_of(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def packages_of(group):
    """The packages that the scripts install for that group."""
    with open(os.path.join(SOURCES, "scripts", "packages"), encoding="utf-8") as lines:
        packages = {line.split()[1] for line in lines if line.startswith(f"{group} ")}
    if not packages:
        raise AssertionError(f"There are no packages of the group {group}.")
    return packages


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        os.environ["XDG_RUNTIME_DIR"] = folder.name
        os.environ["QT_QPA_PLATFORM"] = "offscreen"
        # Modes in the package must not depend on the umask of whoever builds it.
        built = subprocess.run(
            [CPACK, "-G", "DEB", "--config", f"{BUILD}/CPackConfig.cmake", "-B", folder.name],
            umask=0o077, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if built.returncode != 0:
            raise AssertionError(built.stdout)
        [cls.deb] = glob.glob(f"{folder.name}/*.deb")
        cls.root = os.path.join(folder.name, "root")
        cls.home = os.path.join(folder.name, "home")
        output_of("dpkg-deb", "--extract", cls.deb, cls.root)
        tarred = subprocess.run(["dpkg-deb", "--fsys-tarfile", cls.deb], check=True,
                                stdout=subprocess.PIPE).stdout
        with tempfile.TemporaryFile() as file:
            file.write(tarred)
            file.seek(0)
            with tarfile.open(fileobj=file) as tar:
                cls.members = tar.getmembers()

    def field(self, name):
        return output_of("dpkg-deb", "--field", self.deb, name).strip()

    def packages_in(self, field):
        return {package.split()[0] for package in self.field(field).split(", ")}

    def path(self, name):
        return os.path.join(self.root, name)

    def entry(self, name):
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(self.path(name), encoding="utf-8")
        return parser

    def run_program(self, *command):
        return output_of(self.path(f"usr/bin/{command[0]}"), *command[1:])

    def test_name_and_version_are_the_projects(self):
        self.assertEqual(self.field("Package"), "cartonpick")
        self.assertEqual(self.field("Version").rsplit("-")[0], VERSION)
        self.assertEqual(self.field("Architecture"),
                         output_of("dpkg", "--print-architecture").strip())

    def test_the_release_is_recorded(self):
        with gzip.open(self.path(CHANGELOG), "rt", encoding="utf-8") as changelog:
            self.assertIn(f"cartonpick ({self.field('Version')})", changelog.readline())
        metainfo = xml.etree.ElementTree.parse(self.path(METAINFO))
        self.assertEqual(metainfo.find("releases/release").get("version"), VERSION)

    def test_it_depends_on_what_the_linker_cannot_see(self):
        self.assertEqual(packages_of("run") - self.packages_in("Depends"), set())

    def test_it_recommends_what_the_keyboard_on_the_screen_needs(self):
        self.assertEqual(packages_of("keyboard") - self.packages_in("Recommends"), set())

    def test_it_depends_on_what_the_programs_are_linked_with(self):
        self.assertLess({"libc6", "libqt6quick6", "libsqlite3-0"}, self.packages_in("Depends"))

    def test_it_holds_these_files_and_no_other(self):
        files = {member.name[2:] for member in self.members if not member.isdir()}
        self.assertEqual(files, FILES)

    def test_everything_is_roots_and_only_the_programs_can_be_run(self):
        for member in self.members:
            with self.subTest(member.name):
                runs = member.isdir() or member.name[2:] in PROGRAMS
                self.assertEqual(oct(member.mode), oct(0o755 if runs else 0o644))
                self.assertEqual((member.uname, member.gname), ("root", "root"))

    def test_the_programs_look_for_libraries_where_the_system_has_them(self):
        for program in PROGRAMS:
            with self.subTest(program):
                self.assertNotRegex(output_of("readelf", "--dynamic", self.path(program)),
                                    "R(UN)?PATH")

    def test_the_desktop_entry_has_its_program_and_its_icon(self):
        entry = self.entry(ENTRY)
        self.assertIn(f"usr/bin/{entry['Desktop Entry']['Exec']}", PROGRAMS)
        self.assertEqual(entry["Desktop Entry"]["Icon"], DESKTOP_ID)

    def test_the_commands_of_the_entries_are_understood(self):
        for name in ENTRY, KIOSK:
            entry = self.entry(name)
            for section in entry.sections():
                with self.subTest(name, section=section):
                    command = shlex.split(entry[section]["Exec"])
                    self.assertIn(VERSION, self.run_program(*command, "--version"))

    def test_the_manuals_explain_every_option(self):
        for program in PROGRAMS:
            name = os.path.basename(program)
            with gzip.open(self.path(f"usr/share/man/man1/{name}.1.gz"), "rt",
                           encoding="utf-8") as page:
                manual = page.read().replace("\\-", "-")
            for option in re.findall(r"^ .*?(--[a-z-]+)", self.run_program(name, "--help"),
                                     re.MULTILINE):
                if option != "--help-all":
                    with self.subTest(name, option=option):
                        self.assertRegex(manual, rf"{option}\b")

    def test_both_programs_say_their_version(self):
        for program in PROGRAMS:
            with self.subTest(program):
                self.assertIn(VERSION, self.run_program(os.path.basename(program), "--version"))

    def test_the_demo_comes_up_with_the_service_beside_it_and_both_end(self):
        run_demo(self.home, self.path("usr/bin/cartonpick-orders"),
                 [self.path("usr/bin/cartonpick")])


if __name__ == "__main__":
    unittest.main()
