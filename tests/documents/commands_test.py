"""Checks every command in the documents: the programs know their options, those that can run here do, and
the rest are commands of systems that are named here.

Usage: commands_test.py BIN, the folder of the programs"""
import os
import re
import shlex
import subprocess
import unittest

from documents import BIN, ROOT, code_blocks, output_of, read, section
from real_run import RealRun

PROGRAMS = ["VornMac", "vorn-export", "vorn-terminal", "vorn-sandbox", "vorn-sample-history"]
# Commands that cannot run here: macOS's, and those that change this computer. using_test.py checks those that name
# Vorn.
SYSTEMS = {"defaults", "log", "security", "tccutil", "sudo"}
# Run by the tests of their documents.
RUN_ELSEWHERE = {"rm", "unzip", "jsonschema"}
DOCUMENTS = subprocess.run(["git", "ls-files", "*.md"], check=True, capture_output=True, text=True,
                           cwd=ROOT).stdout.split()


def commands_in(document):
    """Every command: the lines of code blocks up to the first that is not one, and code within a sentence."""
    text = read(document)
    for block in code_blocks(text):
        for line in block.splitlines():
            if line.startswith(("==>", " ")) or not line:
                break
            yield line.split("  #")[0].strip()
    for code in re.findall(r"`([^`\n]+)`", re.sub(r"^```.*?^```", "", text, flags=re.MULTILINE | re.DOTALL)):
        first = code.split()[0]
        if first in PROGRAMS or re.fullmatch(r"\./(run|test)|(scripts|bench|fuzz)/[\w-]+|cmake|ctest", first):
            yield code


def all_commands():
    for document in DOCUMENTS:
        for line in commands_in(document):
            for command in line.split(" && "):
                yield document, command


def help_of(words):
    """The help of a program, and of its command if there is one."""
    text = output_of(words[0], "--help")
    if len(words) > 1 and re.search(rf"(?m)^  {re.escape(words[1])}  +[A-Z]", text):
        text += output_of(words[0], words[1], "--help")
    return text


def options_in(words):
    return [word.split("=")[0] for word in words[1:] if re.match(r"--?[A-Za-z]", word)]


class Commands(unittest.TestCase):
    def test_programs_know_the_options(self):
        seen = 0
        for document, command in all_commands():
            words = shlex.split(command)
            words[0] = words[0].removeprefix("build/release/bin/")
            if words[0] not in PROGRAMS:
                continue
            known = help_of(words)
            for option in options_in(words):
                self.assertRegex(known, rf"(?m)(^|[ ,]){option}\b", f"{document}: {command}")
            if words[0] == "vorn-terminal" and len(words) > 1 and not words[1].startswith("-"):
                self.assertRegex(known, rf"(?m)^  {words[1]} ", f"{document}: {command}")
            seen += 1
        self.assertGreater(seen, 20)

    def test_scripts_are_there_and_know_the_options(self):
        seen = 0
        for document, command in all_commands():
            words = command.split()
            if not re.fullmatch(r"\./\w+|(scripts|bench|fuzz|packaging/macos)/[\w-]+", words[0]):
                continue
            path = os.path.join(ROOT, words[0])
            self.assertTrue(os.access(path, os.X_OK), f"{document}: {command}")
            for option in options_in(words):
                known = read(words[0])
                passed_on = "OPTIONS for ctest" in known
                self.assertTrue(option in known or passed_on, f"{document}: {command}")
            seen += 1
        self.assertGreater(seen, 15)

    def test_presets_are_there(self):
        presets = set(re.findall(r'"name": "(\w+)"', read("CMakePresets.json")))
        for document, command in all_commands():
            for name in re.findall(r"--preset (\w+)|scripts/(?:build|run-tests) (\w+)", command):
                self.assertIn("".join(name), presets, f"{document}: {command}")

    def test_no_other_command_is_shown(self):
        for document, command in all_commands():
            first = re.sub(r"^time ", "", command).split()[0]
            ours = first in PROGRAMS or re.match(r"\./|(scripts|bench|fuzz|build|packaging)/|bench-|cmake$|ctest$", first)
            known = ours or first in SYSTEMS | RUN_ELSEWHERE | {"journalctl"}
            self.assertTrue(known, f"{document}: nobody tests {command}")

    def test_the_readme_runs_in_a_terminal(self):
        readme = read("README.md")
        blocks = [code_blocks(section(readme, name))[0] for name in ("Everything in a terminal", "Play the phone")]
        commands = [line.split("#")[0].split() for block in blocks for line in block.splitlines()]
        commands = [words[:2] for words in commands if words[0] == "vorn-terminal"]
        for command in ([], ["link"], ["status"], ["sign-out"]):
            self.assertIn(command, [words[1:] for words in commands])
        with RealRun("--auto-approve") as user:
            # The first asks questions, which --yes answers.
            answer = user.with_keychain(*(user.line(*words, *([] if words[1:] else ["--yes"])) for words in commands))
        self.assertIn("Signed out.", answer.stderr)

    def test_the_readme_shows_what_a_run_prints(self):
        shown = code_blocks(section(read("README.md"), "Try it"))[1].splitlines()
        lines = [line for line in shown if not line.startswith(("==>", " ", "here", "arrived"))]
        with RealRun("--auto-approve") as user:
            status, _, errors = user.share()
        self.assertEqual(status, 0)
        printed = iter(errors.splitlines())
        for line in lines:
            self.assertIn(line, printed)

    def test_the_log_can_be_asked(self):
        command, = [line for line in "".join(code_blocks(read("docs/using.md"))).splitlines() if "journalctl" in line]
        try:
            answer = subprocess.run(shlex.split(command), capture_output=True, text=True, check=False)
        except FileNotFoundError:
            self.skipTest("this system has no journal")
        self.assertNotIn("nrecognized option", answer.stderr)
        self.assertNotIn("Failed to parse", answer.stderr)


if __name__ == "__main__":
    unittest.main()
