"""Checks docs/using.md against the programs: their settings, statuses, texts and files.

Usage: using_test.py BIN, the folder of the programs"""
import os
import re
import signal
import subprocess
import time
import unittest

from documents import BIN, code_blocks, facts, output_of, pattern_of, read, section, tables
from real_run import RealRun

USING = read("docs/using.md")
PROGRAMS = ["VornMac", "vorn-export", "vorn-terminal"]


def statuses_in_help(program):
    paragraph = re.search(r"Exit status: (.*?)\.\s*\Z", output_of(program, "--help"), re.DOTALL)[1]
    parts = [part.strip() for part in " ".join(paragraph.split()).split(";")]
    return {status: meaning for status, _, meaning in (part.partition(" ") for part in parts)}


class Settings(unittest.TestCase):
    def rows(self):
        _, *rows = next(tables(section(USING, "Settings")))
        return {row[0].strip("`"): (row[1].replace("`", "").replace(", ", "|"), row[2], row[3]) for row in rows}

    def test_table_holds_the_keys_of_the_window(self):
        keys = re.findall(r"^  -(Vorn\w+) (\S+) +(.+)$", output_of("VornMac", "--help"), re.MULTILINE)
        self.assertGreater(len(keys), 3)
        self.assertEqual({key: (value, help) for key, value, help in keys},
                         {key: row[:2] for key, row in self.rows().items()})

    def test_table_says_which_keys_the_terminal_takes(self):
        keys = set(re.findall(r"^  -(Vorn\w+) ", output_of("vorn-terminal", "--help"), re.MULTILINE))
        self.assertEqual(keys, {key for key, row in self.rows().items() if row[2] == "yes"})
        self.assertLessEqual({row[2] for row in self.rows().values()}, {"yes", "no"})

    def test_file_of_linux_is_read(self):
        self.assertIn("`Key=value` below `[General]` in `~/.config/app.vorn.mac/defaults.ini`", USING)
        with RealRun("--auto-approve", "--fault", "create-link=500") as user:
            settings = os.path.join(user.make("home/.config/app.vorn.mac"), "defaults.ini")
            with open(settings, "w", encoding="utf-8") as file:
                file.write(f"[General]\nVornAPIBaseURLOverride={user.recorder.url}\n")
            line = [os.path.join(BIN, "vorn-terminal"), "--yes", "--no-keychain"]
            ended = subprocess.run(line, env=user.environment, capture_output=True, check=False, timeout=30)
            self.assertEqual(ended.returncode, 7)
            self.assertEqual([each.path for each in user.recorder.exchanges], ["/api/v1/auth/device-links"])


class Statuses(unittest.TestCase):
    def table(self, number):
        _, *rows = list(tables(section(USING, "Exit statuses")))[number]
        return dict(rows)

    def test_tables_are_those_of_the_helps(self):
        for number, program in enumerate(["vorn-terminal", "vorn-export"]):
            self.assertEqual(self.table(number), statuses_in_help(program), program)

    def test_the_window_ends_as_it_is_said(self):
        self.assertEqual(list(self.table(2)), ["0", "1", "2", "128+N"])
        def status(*arguments, **environment):
            return subprocess.run([os.path.join(BIN, "VornMac"), *arguments], capture_output=True, check=False,
                                  env={**os.environ, **environment}).returncode
        self.assertEqual(status("--version"), 0)
        self.assertEqual(status(QT_QPA_PLATFORM="xcb", DISPLAY="", WAYLAND_DISPLAY=""), 1)
        self.assertEqual(status("--nonsense"), 2)


class Texts(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.rows = [row[0] for table in tables(section(USING, "When something goes wrong")) for row in table[1:]]
        cls.said = facts()["texts"]
        cls.bytes = {}
        for program in PROGRAMS:
            with open(os.path.join(BIN, program), "rb") as file:
                cls.bytes[program] = file.read()

    def test_each_stands_once(self):
        self.assertEqual(sorted(self.rows), sorted(set(self.rows)))

    def test_what_users_may_read_is_explained(self):
        for text in self.said:
            self.assertTrue(any(pattern_of(row).match(text) for row in self.rows), f"nothing explains: {text}")

    def holds(self, data, row):
        """Whether a program contains the words of `row`, each sentence of which may be a literal of its own."""
        def has(piece):
            return piece.strip(" .").encode() in data
        for piece in row.split("…"):
            if has(piece):
                continue
            sentences = re.split(r"(?<=[.?:,]) ", piece)
            if not all(has(sentence) for sentence in sentences):
                return False
        return True

    def test_what_is_explained_is_what_programs_say(self):
        for row in self.rows:
            said = any(pattern_of(row).match(text) for text in self.said)
            spoken = row.removeprefix("VornMac: ")
            held = any(self.holds(data, spoken) for data in self.bytes.values())
            self.assertTrue(said or held, f"nobody says: {row}")


class Places(unittest.TestCase):
    def test_names_are_those_of_the_programs(self):
        places = facts()["places"]
        table = section(USING, "Where things are")
        for name, value in places.items():
            self.assertIn(f"`{value}" if name in ("identifier", "consent", "keychain account", "item of the terminal") else value, table, name)

    def test_commands_name_the_application(self):
        places = facts()["places"]
        identifier, account = places["identifier"], places["keychain account"]
        items = [f"-s {service} -a {account}" for service in (identifier, places["item of the terminal"])]
        removed = []
        for line in "".join(code_blocks(USING)).splitlines():
            if line.split()[0] in ("log", "journalctl", "defaults", "tccutil", "security"):
                self.assertIn(identifier, line)
            if line.startswith("security"):
                removed.append(line.removeprefix("security delete-generic-password "))
        self.assertEqual(removed, items)


class Files(unittest.TestCase):
    """The files of the terminal and the window, and whether they are removed as the document says."""

    def named(self):
        """The paths in the table's column for Linux, as patterns for the files of a real run."""
        _, *rows = next(tables(section(USING, "Where things are")))
        for path in re.findall(r"`([$~/][^`]*)`(?:, `(\.[^`]*)`)?", "\n".join(row[2] for row in rows)):
            first, ending = path
            for one in [first, os.path.splitext(first)[0] + ending] if ending else [first]:
                one = one.replace("~/", "home/").replace("/tmp/", "tmp/").replace("$XDG_RUNTIME_DIR", "runtime")
                yield pattern_of(one.replace("UID", str(os.getuid())))

    def end(self, program):
        program.send_signal(signal.SIGTERM)
        self.assertEqual(program.wait(timeout=30), 128 + signal.SIGTERM, program.stderr.read())
        program.stdout.close()
        program.stderr.close()

    def test_nothing_stays_but_what_is_named_and_all_of_it_can_be_removed(self):
        with RealRun("--auto-approve") as user:
            status, _, errors = user.share()
            self.assertEqual(status, 0, errors)
            window = user.start("VornMac", "-VornForgetsSession", "YES")
            deadline = time.monotonic() + 30
            while "home/.config/app.vorn.mac/defaults.ini" not in user.files("home") or not user.files("runtime"):
                self.assertLess(time.monotonic(), deadline)
                time.sleep(0.05)
            while_open = user.files("home", "tmp", "runtime")
            self.end(window)
            left = user.files("home", "tmp", "runtime")
            patterns = list(self.named())
            for file in while_open | left:
                self.assertTrue(any(pattern.match(file) for pattern in patterns), f"{file} is not named")
            self.assertEqual([file for file in left if file.startswith(("tmp/vorn-n", "tmp/vorn-m"))], [])
            lines = "".join(code_blocks(section(USING, "Remove everything"))).splitlines()
            commands = [line for line in lines if line.startswith("rm ")]
            self.assertEqual(len(commands), 2)
            for command in commands:
                here = command.replace("/tmp/", user.path("tmp") + "/")
                subprocess.run(["bash", "-euc", here], check=True, env=user.environment)
            self.assertEqual(user.files("home", "tmp"), set())


if __name__ == "__main__":
    unittest.main()
