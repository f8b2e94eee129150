"""Which changelogs the build takes.

releases_test.py CMAKE MODULE
"""
import pathlib
import sys
import tempfile
import unittest

from cmake_script import run_script

CMAKE, MODULE = sys.argv[1:]

SCRIPT = """
include($ENV{MODULE})
set(PROJECT_VERSION $ENV{VERSION})
vantrel_releases($ENV{CHANGELOG})
message("${VANTREL_RELEASE_VERSIONS} ${VANTREL_RELEASE_DATES}")
"""


def read(version, changelog):
    """The exit status of the function on a changelog, and what it said."""
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder, "CHANGELOG.md")
        file.write_text(changelog)
        ended = run_script(CMAKE, SCRIPT, MODULE=MODULE, VERSION=version, CHANGELOG=str(file))
        return ended.returncode, " ".join(ended.stderr.split())


class Releases(unittest.TestCase):
    def test_versions_and_dates_are_read_in_the_order_of_the_file(self):
        status, words = read("0.2.0", "# Changelog\n\n## Unreleased\n\n- A\n\n"
                                      "## 0.2.0 - 2027-01-05\n\n### Added\n\n"
                                      "## 0.1.0 - 2026-11-21\n")

        self.assertEqual((status, words), (0, "0.2.0;0.1.0 2027-01-05;2026-11-21"))

    def test_a_version_without_an_entry_is_refused(self):
        status, words = read("0.2.0", "# Changelog\n\n## 0.1.0 - 2026-11-21\n")

        self.assertNotEqual(status, 0)
        self.assertIn("the newest release is 0.1.0, but the project's version is 0.2.0", words)

    def test_a_changelog_without_a_release_is_refused(self):
        status, words = read("0.1.0", "# Changelog\n\n## Unreleased\n")

        self.assertNotEqual(status, 0)
        self.assertIn("CHANGELOG.md names no release.", words)

    def test_a_heading_of_another_form_is_refused(self):
        status, words = read("0.1.0", "# Changelog\n\n## 0.1.0 (today)\n")

        self.assertNotEqual(status, 0)
        self.assertIn('"## VERSION - YYYY-MM-DD", but one is "## 0.1.0 (today)"', words)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
