"""scripts/check-includes, run on small source trees."""

import pathlib
import subprocess
import tempfile
import unittest

CHECK = pathlib.Path(__file__).parents[2] / "scripts" / "check-includes"
TABLE = """# Architecture

| folder | what is in it | may include |
| --- | --- | --- |
| `app` | main | `view`, `base` |
| `view` | screens | `base` |
| `base` | values | |
"""


class CheckIncludes(unittest.TestCase):

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = pathlib.Path(folder.name)
        self.write("docs/architecture.md", TABLE)
        self.write("src/app/main.cpp", '#include "view/Window.h"\n#include <QString>\n')
        self.write("src/view/Window.h", '#include "base/Clock.h"\n')
        self.write("src/base/Clock.h", "")

    def write(self, path, text):
        file = self.tree / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def check(self):
        run = subprocess.run([CHECK, self.tree], capture_output=True, text=True, check=False)
        self.assertEqual(run.stderr, "")
        self.assertEqual(run.returncode, 1 if run.stdout else 0)
        return run.stdout.splitlines()

    def test_includes_that_the_table_allows_pass(self):
        self.assertEqual(self.check(), [])

    def test_an_include_from_a_folder_above_is_reported(self):
        self.write("src/base/Clock.h", '#include "view/Colour.h"\n')
        self.write("src/view/Colour.h", "")
        self.assertEqual(self.check(), ["src/base/Clock.h: base may not include view/Colour.h"])

    def test_files_that_include_each_other_are_reported(self):
        self.write("src/view/Window.h", '#include "view/Alert.h"\n')
        self.write("src/view/Alert.h", '#include "view/Window.h"\n')
        self.assertEqual(self.check(), [
            "src/view/Alert.h includes view/Window.h includes view/Alert.h"])

    def test_a_table_that_allows_a_folder_above_is_reported(self):
        self.write("docs/architecture.md", TABLE.replace("| values | |", "| values | `app` |"))
        self.assertEqual(self.check(), [
            "docs/architecture.md: base may not include app, which is not below it"])

    def test_a_folder_without_a_row_is_reported(self):
        self.write("src/extra/File.h", "")
        self.assertEqual(self.check(), [
            "docs/architecture.md: extra is only in one of the table and the tree"])


if __name__ == "__main__":
    unittest.main()
