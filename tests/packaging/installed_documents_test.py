"""That what is installed for desktops, catalogues and readers is as those who read it want it.

installed_documents_test.py CMAKE BUILD VERSION
"""
import gzip
import os
import re
import subprocess
import sys
import unittest
import xml.etree.ElementTree

from installation import installed, options_in

CMAKE, BUILD, VERSION = sys.argv[1:]


def said(*command):
    """The exit status of a command and all that it said."""
    ended = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return ended.returncode, ended.stdout.strip()


class InstalledDocuments(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder, cls.prefix = installed(CMAKE, BUILD)
        cls.addClassCleanup(folder.cleanup)

    def test_the_desktop_entry_is_valid(self):
        entry = self.prefix / "share/applications/com.orbisk.app.desktop"

        self.assertEqual(said("desktop-file-validate", entry), (0, ""))

    def test_the_metainfo_is_valid_to_a_pedant(self):
        metainfo = self.prefix / "share/metainfo/com.orbisk.app.metainfo.xml"

        status, words = said("appstreamcli", "validate", "--pedantic", "--no-net", "--no-color",
                             metainfo)
        self.assertEqual(status, 0, words)
        self.assertRegex(words, "^.?.?Validation was successful.$")

    def test_the_newest_release_of_the_metainfo_is_the_version(self):
        metainfo = self.prefix / "share/metainfo/com.orbisk.app.metainfo.xml"
        releases = xml.etree.ElementTree.parse(metainfo).findall("./releases/release")

        self.assertEqual(releases[0].get("version"), VERSION)

    def test_the_manual_has_no_fault_and_tells_of_every_option(self):
        page = self.prefix / "share/man/man1/vantrel.1.gz"
        shown = subprocess.run(["man", "--warnings=w", "--local-file", page], capture_output=True,
                               text=True, env=os.environ | {"MANWIDTH": "80"})
        help_text = subprocess.check_output([self.prefix / "bin/vantrel", "--help"], text=True)

        self.assertEqual((shown.returncode, shown.stderr), (0, ""))
        self.assertIn(f"Vantrel {VERSION}", shown.stdout)
        self.assertEqual(options_in(shown.stdout), options_in(help_text))

    def test_the_changelog_names_the_version_first(self):
        changelog = gzip.decompress((self.prefix / "share/doc/vantrel/changelog.gz").read_bytes())

        self.assertEqual(re.findall("(?m)^## ([0-9.]+) - ", changelog.decode())[0], VERSION)

    def test_the_changelog_of_the_package_is_in_the_form_of_debian(self):
        changelog = gzip.decompress(
            (self.prefix / "share/doc/vantrel/changelog.Debian.gz").read_bytes())
        read = subprocess.run(["dpkg-parsechangelog", "-l", "-", "-S", "Version"], input=changelog,
                              capture_output=True)

        self.assertEqual((read.returncode, read.stdout, read.stderr),
                         (0, f"{VERSION}-1\n".encode(), b""))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
