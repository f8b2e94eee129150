"""What `cmake --install` leaves, and that the program runs from there.

installed_files_test.py CMAKE BUILD VERSION
"""
import json
import pathlib
import re
import stat
import struct
import subprocess
import sys
import unittest

from installation import installed

CMAKE, BUILD, VERSION = sys.argv[1:]


class InstalledFiles(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder, cls.prefix = installed(CMAKE, BUILD)
        cls.addClassCleanup(folder.cleanup)

    def files(self):
        return [file for file in self.prefix.rglob("*") if not file.is_dir()]

    def test_the_files_are_those_of_the_list(self):
        listed = pathlib.Path(__file__).with_name("installed-files.txt").read_text().splitlines()
        names = sorted(str(file.relative_to(self.prefix)) for file in self.files())

        self.assertEqual(names, sorted(listed))

    def test_everyone_may_read_all_and_run_the_program_alone(self):
        programs = {file.name for file in self.files() if stat.S_IMODE(file.stat().st_mode) == 0o755}
        others = {stat.S_IMODE(file.stat().st_mode) for file in self.files()
                  if file.name not in programs or file.parent.name != "bin"}

        self.assertEqual(programs, {"vantrel"})
        self.assertEqual(others, {0o644})

    def test_the_program_runs_from_there_and_tells_the_version(self):
        ended = subprocess.run([self.prefix / "bin" / "vantrel", "--version"], capture_output=True,
                               text=True)

        self.assertEqual((ended.returncode, ended.stdout, ended.stderr),
                         (0, f"vantrel {VERSION}\n", ""))

    def test_the_information_on_updates_is_beside_the_program(self):
        file = self.prefix / "bin" / ".." / "share" / "vantrel" / "bundle-information.json"

        self.assertEqual(file.read_bytes(),
                         pathlib.Path(BUILD, "share/vantrel/bundle-information.json").read_bytes())
        self.assertIsInstance(json.loads(file.read_text()), dict)

    def test_every_icon_has_the_size_of_its_folder(self):
        icons = self.prefix / "share" / "icons" / "hicolor"
        for icon in icons.rglob("*.png"):
            with self.subTest(icon=icon.relative_to(icons)):
                size = int(icon.parts[-3].split("x")[0])
                # The first chunk of a PNG file tells its width and height.
                self.assertEqual(struct.unpack(">II", icon.read_bytes()[16:24]), (size, size))

    def test_the_desktop_entry_names_what_is_installed(self):
        entry = (self.prefix / "share/applications/com.orbisk.app.desktop").read_text()
        program = re.search("^Exec=(\\S+) %f$", entry, re.MULTILINE)[1]
        icon = re.search("^Icon=(.*)$", entry, re.MULTILINE)[1]

        self.assertTrue((self.prefix / "bin" / program).exists())
        self.assertTrue((self.prefix / f"share/icons/hicolor/scalable/apps/{icon}.svg").exists())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
