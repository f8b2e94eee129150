"""What macOS reads about the application bundle, as far as it can be seen on any system.

info_plist_test.py CMAKE MODULE VERSION
"""
import pathlib
import plistlib
import sys
import unittest

from cmake_script import written_by

CMAKE, MODULE, VERSION = sys.argv[1:]

SCRIPT = """
include($ENV{MODULE})
set(PROJECT_VERSION $ENV{VERSION})
set(CMAKE_OSX_DEPLOYMENT_TARGET 11.0)
vantrel_info_plist("$ENV{FILE}" "$ENV{FEED}" "$ENV{KEY}")
"""


def written(feed, key):
    """The property list that is written for two values."""
    return plistlib.loads(written_by(CMAKE, SCRIPT, MODULE=MODULE, VERSION=VERSION, FEED=feed,
                                     KEY=key))


class InfoPlist(unittest.TestCase):
    def test_it_names_the_application_and_its_version(self):
        read = written("", "")

        self.assertEqual(read["CFBundleIdentifier"], "com.orbisk.app")
        self.assertEqual(read["CFBundleName"], "Vantrel")
        self.assertEqual(read["CFBundleShortVersionString"], VERSION)
        self.assertEqual(read["CFBundleVersion"], VERSION)
        self.assertEqual(read["LSMinimumSystemVersion"], "11.0")

    def test_it_opens_folders(self):
        kinds = [kind for entry in written("", "")["CFBundleDocumentTypes"]
                 for kind in entry["LSItemContentTypes"]]

        self.assertEqual(kinds, ["public.folder"])

    def test_nothing_is_looked_for_unasked(self):
        self.assertIs(written("https://example.com/", "AAECAwQ=")["SUEnableAutomaticChecks"], False)

    def test_the_updates_stand_under_the_names_of_their_keys(self):
        for value in ["https://example.com/?a=1&b=<2>", "a;b]c", "Größe", 'a"b\\c']:
            with self.subTest(value=value):
                read = written(value, "AAECAwQ=")
                self.assertEqual((read["SUFeedURL"], read["SUPublicEDKey"]), (value, "AAECAwQ="))

    def test_an_empty_value_leaves_its_key_out(self):
        read = written("", "")

        self.assertNotIn("SUFeedURL", read)
        self.assertNotIn("SUPublicEDKey", read)

    def test_the_entitlements_allow_what_qml_needs_and_no_more(self):
        file = pathlib.Path(__file__).parents[2] / "packaging/macos/vantrel.entitlements"

        self.assertEqual(plistlib.loads(file.read_bytes()),
                         {"com.apple.security.cs.allow-jit": True})


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
