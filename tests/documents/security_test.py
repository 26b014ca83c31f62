"""Checks what docs/security.md says about secrets: real runs with faults, after which the log, the output of programs
and every file are searched for the tokens, secrets, addresses, handles and messages of that very run; and the memory of a
program whose session has ended.

Usage: security_test.py BIN CAUGHT_LOG, the folder of the programs and the module that keeps what they log"""
import concurrent.futures
import json
import os
import signal
import stat
import sys
import time
import unittest
import zipfile

from documents import output_of
from process_memory import copies_in_memory
from real_run import HANDLE, RealRun

CAUGHT_LOG = sys.argv.pop(1)
PREVIEWED = 6  # messages that a user is shown

# The service's options, the ends of the paths at which answers repeat the request's token, and the exit status.
WAYS = [
    ([], [], 0),
    (["--fault", "poll-link=401x1"], [], 7),
    (["--fault", "poll-link=garbage"], [], 7),
    (["--fault", "quest=401x1", "--expired-first-urls"], [], 0),
    (["--fault", "quest=401", "--fault", "refresh=garbage"], [], 1),
    (["--fault", "quest=garbage"], [], 1),
    (["--fault", "create-submission=bad-url", "--fault", "part-urls=bad-url"], [], 8),
    (["--fault", "put-part=500", "--fault", "abort=500"], [], 8),
    (["--fault", "put-part=drop"], [], 8),
    (["--fault", "complete=truncate"], [], 8),
    (["--review", "rejected:wrong_provider", "--fault", "submission=500x1"], [], 9),
    ([], ["/complete", "/abort"], 8),
]


class CaughtRun(RealRun):
    """A real run whose programs write their log to a file."""

    def __init__(self, *options):
        super().__init__("--handle", HANDLE, *options)
        self.environment.update(LD_PRELOAD=CAUGHT_LOG, CAUGHT_LOG=self.path("system.log"))

    def caught(self):
        if not os.path.exists(self.path("system.log")):
            return ""
        with open(self.path("system.log"), encoding="utf-8") as file:
            return file.read()

    def tokens(self):
        for each in self.recorder.exchanges:
            if each.path.endswith(("/poll", "/refresh")) and each.status < 300:
                session = each.answer().get("session", each.answer())
                yield from (session[key] for key in ("token", "refreshToken") if key in session)

    def secrets(self):
        """Everything, except the chat, that nobody else may learn."""
        yield from self.tokens()
        yield HANDLE
        for each in self.recorder.exchanges:
            if each.path.endswith("/device-links"):
                yield each.answer()["pollSecret"]
            if b"signature=" in each.answered:
                answer = each.answer()
                for holder in [answer, *answer.get("assets", [])]:
                    yield from (part["url"].partition("signature=")[2] for part in holder.get("parts", []))

    def codes(self):
        """The codes that programs show, and print for other programs."""
        return [each.answer()["qrPayload"] for each in self.recorder.exchanges if each.path.endswith("/device-links")]

    def messages(self):
        """The texts that the user is not shown, except those too short to search for; and the texts that are shown."""
        archive = self.path("chat.zip")
        output_of("vorn-export", "--database", self.history(), "--handle", HANDLE, "--output", archive)
        with zipfile.ZipFile(archive) as file:
            texts = [message["text"] for message in json.loads(file.read("vorn-nimbrel-messages.json"))]
        shown = set(texts[-PREVIEWED:])
        return [text for text in texts if len(text) > 20 and text not in shown], list(shown)

    def left(self):
        """The bytes of every file that is left, by their names."""
        found = {}
        for name in self.files("home", "tmp", "runtime"):
            if not os.path.isfile(self.path(name)):
                continue  # the window's socket
            with open(self.path(name), "rb") as file:
                found[name] = file.read()
        return found


class Secrets(unittest.TestCase):
    def search(self, user, printed, files):
        """Searches for forbidden texts. Texts that the user is shown may be printed, but nothing else."""
        secrets = list(user.secrets())
        hidden, shown = user.messages()
        self.assertGreater(len(secrets), 1)
        self.assertGreater(len(hidden), 20)
        for text in secrets + hidden:
            self.assertGreater(len(text), 8)
            self.assertNotIn(text, printed)
        for text in secrets + hidden + shown + user.codes():
            self.assertNotIn(text, user.caught())
            for name, data in files.items():
                self.assertNotIn(text.encode(), data, name)

    def share(self, options, echoing):
        with CaughtRun("--auto-approve", *options) as user:
            user.recorder.echoing.extend(echoing)
            status, output, errors = user.share("--json" if echoing else "--yes")
            self.search(user, output + errors, user.left())
            return status, user.caught(), errors

    def test_are_nowhere_after_any_way_to_the_end(self):
        with concurrent.futures.ThreadPoolExecutor(3) as pool:
            runs = [pool.submit(self.share, options, echoing) for options, echoing, _ in WAYS]
            ends = [run.result() for run in runs]
        for (options, _, expected), (status, _, errors) in zip(WAYS, ends):
            self.assertEqual(status, expected, f"{options}: {errors}")
        logs = "".join(log for _, log, _ in ends)
        # The log is captured, and tokens that the service repeats are removed from it.
        for line in ("undecodable NimbrelState answer", "abort after a failed upload failed", "submission poll failed"):
            self.assertIn(line, logs)
        self.assertIn("cannot take Bearer", logs + "".join(errors for _, _, errors in ends))

    def test_are_nowhere_after_signing_out(self):
        with CaughtRun("--auto-approve") as user:
            user.recorder.echoing.append("/logout")
            said = user.with_keychain(user.line("vorn-terminal", "link"), user.line("vorn-terminal", "status"),
                                      user.line("vorn-terminal", "sign-out"))
            self.assertIn("logout failed: ", user.caught())
            secrets = [*user.secrets(), *user.codes()]
            for text in secrets:
                self.assertNotIn(text, user.caught() + said.stdout + said.stderr)
            ours = {name: data for name, data in user.left().items() if "keyrings" not in name}
            for name, data in ours.items():
                for text in secrets:
                    self.assertNotIn(text.encode(), data, name)

    def crash(self, user, program):
        program.send_signal(signal.SIGABRT)
        output, errors = program.communicate(timeout=30)
        self.assertEqual(program.returncode, -signal.SIGABRT)
        return output + errors

    def test_are_not_told_by_a_terminal_that_crashes(self):
        with CaughtRun("--auto-approve", "--fault", "put-part=hangx1") as user:
            program = user.start("vorn-terminal", "--yes", "--no-keychain")
            user.wait_until(lambda: "PUT" in user.recorder.arrived, "nothing is uploaded")
            printed = self.crash(user, program)
            left = user.left()
            chat = [name for name in left if name.startswith(("tmp/vorn-messages-", "tmp/vorn-nimbrel-"))]
            self.assertEqual(len(chat), 1, left.keys())
            mode = os.stat(user.path(chat[0])).st_mode
            self.assertEqual(stat.S_IMODE(mode), 0o600)
            self.search(user, printed, {name: data for name, data in left.items() if name not in chat})
            self.assertEqual(user.share()[0], 0)  # sweeps what the crash left
            self.assertEqual([name for name in user.files("tmp") if name.startswith(("tmp/vorn-m", "tmp/vorn-n"))], [])

    def test_are_not_told_by_a_window_that_crashes(self):
        with CaughtRun("--fault", "quest=500x1") as user:
            window = user.start("VornMac", "-VornForgetsSession", "YES")
            user.confirm(user.wait_for("/device-links"))
            user.wait_for("/desktop/nimbrel")
            printed = self.crash(user, window)
            self.search(user, printed, user.left())


class Memory(unittest.TestCase):
    """A signed-in program has a token in its memory, but no longer once its session has ended."""

    def copies(self, program, arguments, options):
        with RealRun(*options) as user:
            started = user.start(program, *arguments)
            try:
                user.confirm(user.wait_for("/device-links"))
                if options:
                    user.wait_for("/device-links", 2)  # a new code is requested
                else:
                    user.wait_for("/desktop/nimbrel")
                polls = [each.answer() for each in user.recorder.exchanges if each.path.endswith("/poll")]
                session = [poll["session"] for poll in polls if "session" in poll][-1]
                tokens = [session["token"], session["refreshToken"]]
                deadline = time.monotonic() + 5  # ended jobs may still be freeing their memory
                while options and any(copies_in_memory(started, tokens)) and time.monotonic() < deadline:
                    time.sleep(0.1)
                return copies_in_memory(started, tokens)
            except PermissionError:
                self.skipTest("only root may read the memory of a program that keeps it to itself")
            finally:
                started.kill()
                started.communicate()

    def check(self, program, *arguments):
        for count in self.copies(program, arguments, []):
            self.assertGreater(count, 0)
        self.assertEqual(self.copies(program, arguments, ["--fault", "quest=401", "--fault", "refresh=401"]), [0, 0])

    def test_of_the_window(self):
        self.check("VornMac", "-VornForgetsSession", "YES")


if __name__ == "__main__":
    unittest.main()
