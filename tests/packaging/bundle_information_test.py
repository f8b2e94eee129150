"""What the options of the updates become in the file that the application reads.

bundle_information_test.py CMAKE MODULE
"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

CMAKE, MODULE = sys.argv[1:]


def written(feed, key):
    """The object that the CMake function writes for two values."""
    with tempfile.TemporaryDirectory() as folder:
        script = pathlib.Path(folder, "call.cmake")
        script.write_text("include($ENV{MODULE})\n"
                          'vantrel_bundle_information("$ENV{FILE}" "$ENV{FEED}" "$ENV{KEY}")\n')
        file = pathlib.Path(folder, "share", "bundle-information.json")
        subprocess.run([CMAKE, "-P", script], check=True, env=os.environ | {
            "MODULE": MODULE, "FILE": str(file), "FEED": feed, "KEY": key})
        return json.loads(file.read_text(encoding="utf-8"))


class BundleInformation(unittest.TestCase):
    def test_both_values_stand_under_the_names_of_their_keys(self):
        self.assertEqual(written("https://example.com/feed.xml", "AAECAwQ="),
                         {"SUFeedURL": "https://example.com/feed.xml", "SUPublicEDKey": "AAECAwQ="})

    def test_an_empty_value_leaves_its_key_out(self):
        self.assertEqual(written("", ""), {})
        self.assertEqual(written("", "AAECAwQ="), {"SUPublicEDKey": "AAECAwQ="})
        self.assertEqual(written("https://example.com/", ""), {"SUFeedURL": "https://example.com/"})

    def test_any_characters_come_back_as_they_were(self):
        for value in ['a"b\\c\\"', "a;b;;[c]", "Größe ✓", "tab\tand\nline", "@MODULE@ #", " a "]:
            with self.subTest(value=value):
                self.assertEqual(written(value, value), {"SUFeedURL": value, "SUPublicEDKey": value})


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
