"""Checks THIRD_PARTY_NOTICES against the contents of the programs.

Usage: notices_test.py BIN, the folder of the programs"""
import os
import re
import subprocess
import tempfile
import unittest

from documents import BIN, ROOT, read

BUILD = os.path.dirname(BIN)


def check(*file):
    answer = subprocess.run([os.path.join(ROOT, "scripts/make-notices"), "--check", BUILD, *file], capture_output=True,
                            text=True, check=False)
    return answer.returncode, answer.stdout + answer.stderr


class Notices(unittest.TestCase):
    def test_name_what_the_programs_are_made_of(self):
        self.assertEqual(check(), (0, ""))

    def test_a_missing_an_invented_and_a_changed_one_are_found(self):
        text = read("THIRD_PARTY_NOTICES")
        changed = re.sub(r"^zlib: linked", "zlob: linked", text, flags=re.MULTILINE)
        changed = re.sub(r"^(cli11: .*\n  Licences: )", r"\1WTFPL, ", changed, flags=re.MULTILINE)
        with tempfile.NamedTemporaryFile("w", encoding="utf-8") as file:
            file.write(changed)
            file.flush()
            status, said = check(file.name)
        name = os.path.basename(file.name)
        self.assertEqual(status, 1)
        for line in ("lacks: zlib: linked", "has too much: zlob: linked", "lacks: cli11: compiled in",
                     "has too much: cli11: compiled in"):
            self.assertIn(f"{name} {line}", said)

    def test_qt_and_libqrencode_are_shared_libraries(self):
        for component in ("qrencode", "qt6-base", "qt6-declarative", "qt6-svg"):
            self.assertRegex(read("THIRD_PARTY_NOTICES"), rf"(?m)^{component}: linked as a shared library by .*VornMac")


if __name__ == "__main__":
    unittest.main()
