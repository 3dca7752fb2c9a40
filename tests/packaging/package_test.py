"""The Debian packages: their metadata, their files, and the installed programs.

Usage: package_test.py CPACK BUILD-FOLDER VERSION
"""

import configparser
import glob
import gzip
import io
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

TABLET, ORDERS = "cartonpick", "cartonpick-orders"
DESKTOP_ID = "io.github.cartonpick.CartonPick"
KIOSK = "usr/share/doc/cartonpick/examples/cartonpick-kiosk.desktop"
ENTRY = f"usr/share/applications/{DESKTOP_ID}.desktop"
METAINFO = f"usr/share/metainfo/{DESKTOP_ID}.metainfo.xml"
FILES = {
    TABLET: {
        ENTRY,
        METAINFO,
        KIOSK,
        f"usr/share/icons/hicolor/scalable/apps/{DESKTOP_ID}.svg",
        "usr/share/doc/cartonpick/installing.md",
    },
    ORDERS: {
        "usr/lib/systemd/system/cartonpick-orders.service",
        "usr/share/doc/cartonpick-orders/examples/nginx.conf",
        "usr/share/doc/cartonpick-orders/fleet.md",
        "usr/share/doc/cartonpick-orders/order-service.md",
    },
}
for package, files in FILES.items():
    files |= {
        f"usr/bin/{package}",
        f"usr/share/doc/{package}/changelog.Debian.gz",
        f"usr/share/doc/{package}/changelog.gz",
        f"usr/share/doc/{package}/copyright",
        f"usr/share/man/man1/{package}.1.gz",
    }


def output_of(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def packages_of(group):
    """Returns the packages that the scripts install for this group."""
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
        # The file modes in the package must not depend on the umask of the build.
        built = subprocess.run(
            [CPACK, "-G", "DEB", "--config", f"{BUILD}/CPackConfig.cmake", "-B", folder.name],
            umask=0o077, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if built.returncode != 0:
            raise AssertionError(built.stdout)
        cls.debs = {package: cls.deb_of(folder.name, package) for package in FILES}
        cls.root = os.path.join(folder.name, "root")
        cls.home = os.path.join(folder.name, "home")
        for deb in cls.debs.values():
            output_of("dpkg-deb", "--extract", deb, cls.root)

    @staticmethod
    def deb_of(folder, package):
        [deb] = glob.glob(f"{folder}/{package}_*.deb")
        return deb

    def members(self, package):
        tarred = subprocess.run(["dpkg-deb", "--fsys-tarfile", self.debs[package]], check=True,
                                stdout=subprocess.PIPE).stdout
        with tarfile.open(fileobj=io.BytesIO(tarred)) as tar:
            return tar.getmembers()

    def field(self, package, name):
        return output_of("dpkg-deb", "--field", self.debs[package], name).strip()

    def packages_in(self, package, field):
        return {named.split()[0] for named in self.field(package, field).split(", ")}

    def path(self, name):
        return os.path.join(self.root, name)

    def program(self, package):
        return self.path(f"usr/bin/{package}")

    def entry(self, name):
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(self.path(name), encoding="utf-8")
        return parser

    def run_program(self, *command):
        return output_of(self.program(command[0]), *command[1:])

    def test_the_packages_have_the_projects_names_and_version(self):
        for package in FILES:
            self.assertEqual(self.field(package, "Package"), package)
            self.assertEqual(self.field(package, "Version").rsplit("-")[0], VERSION)
            self.assertEqual(self.field(package, "Architecture"),
                             output_of("dpkg", "--print-architecture").strip())

    def test_the_changelogs_and_the_metainfo_name_the_release(self):
        for package in FILES:
            path = self.path(f"usr/share/doc/{package}/changelog.Debian.gz")
            with gzip.open(path, "rt", encoding="utf-8") as changelog:
                self.assertIn(f"{package} ({self.field(package, 'Version')})",
                              changelog.readline())
        metainfo = xml.etree.ElementTree.parse(self.path(METAINFO))
        self.assertEqual(metainfo.find("releases/release").get("version"), VERSION)

    def test_the_program_depends_on_the_packages_that_it_needs_at_run_time(self):
        self.assertEqual(packages_of("run") - self.packages_in(TABLET, "Depends"), set())

    def test_the_program_recommends_the_packages_for_its_keyboard_and_its_demo(self):
        self.assertEqual((packages_of("keyboard") | {ORDERS})
                         - self.packages_in(TABLET, "Recommends"), set())

    def test_the_packages_depend_on_the_libraries_of_their_programs(self):
        self.assertLess({"libc6", "libqt6quick6", "libsqlite3-0"},
                        self.packages_in(TABLET, "Depends"))
        self.assertLess({"libc6", "libsoci-sqlite3-4.0", "libsoci-postgresql4.0"},
                        self.packages_in(ORDERS, "Depends"))

    def test_the_order_service_needs_no_desktop(self):
        for needed in self.packages_in(ORDERS, "Depends"):
            self.assertNotRegex(needed, "qt|qml|x11|gl|cartonpick$")

    def test_the_packages_contain_exactly_the_listed_files(self):
        for package in FILES:
            files = {member.name[2:] for member in self.members(package) if not member.isdir()}
            self.assertEqual(files, FILES[package])

    def test_all_files_belong_to_root_and_only_the_programs_are_executable(self):
        for package in FILES:
            for member in self.members(package):
                with self.subTest(package, member=member.name):
                    runs = member.isdir() or member.name[2:] == f"usr/bin/{package}"
                    self.assertEqual(oct(member.mode), oct(0o755 if runs else 0o644))
                    self.assertEqual((member.uname, member.gname), ("root", "root"))

    def test_the_programs_load_libraries_only_from_system_folders(self):
        for package in FILES:
            self.assertNotRegex(output_of("readelf", "--dynamic", self.program(package)),
                                "R(UN)?PATH")

    def test_the_desktop_entry_names_the_program_and_its_icon(self):
        entry = self.entry(ENTRY)
        self.assertEqual(entry["Desktop Entry"]["Exec"], TABLET)
        self.assertEqual(entry["Desktop Entry"]["Icon"], DESKTOP_ID)

    def test_the_programs_accept_the_commands_of_the_desktop_entries(self):
        for name in ENTRY, KIOSK:
            entry = self.entry(name)
            for section in entry.sections():
                with self.subTest(name, section=section):
                    command = shlex.split(entry[section]["Exec"])
                    self.assertIn(VERSION, self.run_program(*command, "--version"))

    def test_the_manuals_explain_every_option(self):
        for package in FILES:
            with gzip.open(self.path(f"usr/share/man/man1/{package}.1.gz"), "rt",
                           encoding="utf-8") as page:
                manual = page.read().replace("\\-", "-")
            for option in re.findall(r"^ .*?(--[a-z-]+)", self.run_program(package, "--help"),
                                     re.MULTILINE):
                if option != "--help-all":
                    with self.subTest(package, option=option):
                        self.assertRegex(manual, rf"{option}\b")

    def test_systemd_does_not_end_the_order_service_while_it_waits_for_its_store(self):
        unit = self.entry("usr/lib/systemd/system/cartonpick-orders.service")
        self.assertEqual(unit["Service"]["Type"], "notify")
        # The service itself limits the wait, with --wait-for-store.
        self.assertEqual(unit["Service"]["TimeoutStartSec"], "infinity")
        self.assertEqual(unit["Unit"]["StartLimitIntervalSec"], "0")

    def test_help_needs_no_display(self):
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
        said = subprocess.run([self.program(TABLET), "--help"], env=environment, check=True,
                              stdout=subprocess.PIPE, text=True).stdout
        self.assertIn("--service-host", said)

    def test_both_programs_print_their_version(self):
        for package in FILES:
            self.assertIn(VERSION, self.run_program(package, "--version"))

    def test_the_demo_starts_with_its_service_and_both_end_on_sigterm(self):
        run_demo(self.home, self.program(ORDERS), [self.program(TABLET)])


if __name__ == "__main__":
    unittest.main()
