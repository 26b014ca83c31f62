"""Checks that each attacker of docs/security.md has a section, and each section a test that exists and is run.

Usage: claims_test.py BIN, the folder of the programs"""
import os
import re
import unittest

from documents import ROOT, read, section

SECURITY = read("docs/security.md")
ATTACKERS = ["Somebody on the network", "A hostile server", "A hostile database", "Another user of the computer",
             "Another program of the same user", "A stolen computer", "A web page, while the sandbox runs"]
# Other claims that have tests.
CLAIMS = ["The log", "The life of a token", "The life of a message"]


def tests_in(text):
    """The name and path of every test that `text` links."""
    return re.findall(r"\[([^\]]+)\]\(\.\./(tests/[^)#]+)\)", text)


def list_of(path):
    """The CMakeLists.txt that should name the file: that of its folder, or of the nearest one above with a list."""
    folder = os.path.dirname(path)
    while not os.path.exists(os.path.join(ROOT, folder, "CMakeLists.txt")):
        folder = os.path.dirname(folder)
    return read(os.path.join(folder, "CMakeLists.txt"))


class Claims(unittest.TestCase):
    def test_of_each_attacker_are_held_by_a_test(self):
        for heading in ATTACKERS + CLAIMS:
            self.assertTrue(tests_in(section(SECURITY, heading)), f"no test holds what is said of: {heading}")

    def test_name_tests_that_are_run(self):
        named = tests_in(SECURITY)
        self.assertGreater(len(named), 15)
        for name, path in named:
            self.assertTrue(os.path.isfile(os.path.join(ROOT, path)), path)
            file = os.path.basename(path)
            self.assertEqual(os.path.splitext(file)[0], name)
            self.assertRegex(list_of(path), rf"(?m)(^|[ /(]){re.escape(file)}($|[ )])", f"nothing runs {path}")

    def test_name_scripts_that_are_there(self):
        for script in re.findall(r"`(scripts/[\w-]+)`", SECURITY):
            self.assertTrue(os.access(os.path.join(ROOT, script), os.X_OK), script)


if __name__ == "__main__":
    unittest.main()
