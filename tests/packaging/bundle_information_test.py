"""What the options of the updates become in the file that the application reads.

bundle_information_test.py CMAKE MODULE
"""
import json
import sys
import unittest

from cmake_script import written_by

CMAKE, MODULE = sys.argv[1:]

SCRIPT = """
include($ENV{MODULE})
vantrel_bundle_information("$ENV{FILE}" "$ENV{FEED}" "$ENV{KEY}")
"""


def written(feed, key):
    """The object that is written for two values."""
    return json.loads(written_by(CMAKE, SCRIPT, MODULE=MODULE, FEED=feed, KEY=key))


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
