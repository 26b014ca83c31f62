"""Runs the real programs with a service on this computer, a made-up history and a user of their own."""
import json
import os
import shlex
import subprocess
import tempfile
import time
import urllib.request

from documents import BIN, output_of
from recorder import Recorder

HANDLE = "+15550102030"


class RealRun:
    """A user with a home, a temporary and a runtime folder, and a service behind a recorder. All of it is removed at
    the end."""

    def __init__(self, *options):
        self.folder = tempfile.TemporaryDirectory()
        self.environment = {**os.environ, "HOME": self.make("home"), "TMPDIR": self.make("tmp"),
                            "XDG_RUNTIME_DIR": self.make("runtime"), "XDG_CONFIG_HOME": self.make("home/.config"),
                            "XDG_CACHE_HOME": self.make("home/.cache"), "XDG_DATA_HOME": self.make("home/.local/share"),
                            "DBUS_SESSION_BUS_ADDRESS": "", "GSETTINGS_BACKEND": "memory",
                            "QT_QPA_PLATFORM": "offscreen", "QT_QUICK_BACKEND": "software"}
        self.log = open(self.path("service.log"), "w+", encoding="utf-8")
        self.service = subprocess.Popen([os.path.join(BIN, "vorn-sandbox"), "--port", "0", "--delay", "0.1", *options],
                                        stdout=subprocess.PIPE, stderr=self.log, text=True,
                                        env={**self.environment, "TMPDIR": self.make("service")})
        self.recorder = Recorder(self.service.stdout.readline().strip())

    def __enter__(self):
        self.recorder.__enter__()
        return self

    def __exit__(self, *_):
        self.recorder.__exit__()
        self.service.terminate()
        self.service.wait()
        self.service.stdout.close()
        self.log.close()
        self.folder.cleanup()

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def make(self, name):
        os.makedirs(self.path(name), mode=0o700, exist_ok=True)
        return self.path(name)

    def history(self, messages=200):
        database = self.path("chat.db")
        if not os.path.exists(database):
            output_of("vorn-sample-history", "--output", database, "--messages", str(messages), "--handle", HANDLE)
        return database

    def line(self, program, *arguments):
        return [os.path.join(BIN, program), *arguments, "-VornAPIBaseURLOverride", self.recorder.url,
                "-VornMessagesDatabaseOverride", self.history()]

    def start(self, program, *arguments, **more):
        line = self.line(program, *arguments)
        return subprocess.Popen(line, env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                cwd=self.path("home"), **more)

    def share(self, *arguments):
        """Takes the whole path in the terminal. Returns the exit status, the output and the errors."""
        program = self.start("vorn-terminal", "--yes", "--no-keychain", *arguments)
        output, errors = program.communicate(timeout=60)
        return program.returncode, output, errors

    def with_keychain(self, *commands):
        """Runs `commands`, each a program with its arguments, one after the other with an unlocked keychain."""
        script = "printf test | gnome-keyring-daemon --unlock --components=secrets >/dev/null 2>&1\n"
        script += "\n".join(shlex.join(command) for command in commands)
        hidden = ("DBUS_SESSION_BUS_ADDRESS", "DISPLAY")
        environment = {key: value for key, value in self.environment.items() if key not in hidden}
        return subprocess.run(["dbus-run-session", "--", "bash", "-euc", script], check=True, capture_output=True,
                              text=True, env=environment, cwd=self.path("home"), timeout=60)

    def phone(self, path, record):
        """Does what a tap on the phone does."""
        request = urllib.request.Request(self.recorder.service + "/phone/links/" + path, json.dumps(record).encode(),
                                         {"Content-Type": "application/json"})
        with urllib.request.urlopen(request, timeout=20) as answer:
            return json.load(answer)

    def confirm(self, link):
        """Scans and confirms the link of a recorded answer."""
        name = self.phone("scan", {"qrPayload": link["qrPayload"]})["linkId"]
        self.phone(f"{name}/approve", {"userId": "usr_1"})

    def wait_until(self, condition, what):
        deadline = time.monotonic() + 30
        while not (value := condition()):
            assert time.monotonic() < deadline, f"{what}, after {[each.path for each in self.recorder.exchanges]}"
            time.sleep(0.02)
        return value

    def wait_for(self, ending, number=1):
        """Waits for request `number` of those whose path ends with `ending`, and returns its answer."""
        def answers():
            return [each.answer() for each in list(self.recorder.exchanges) if each.path.endswith(ending)]
        return self.wait_until(lambda: answers()[number - 1:], f"nobody asked for {ending}")[0]

    def files(self, *folders):
        """The files below `folders`, by their names in this user's folder."""
        return {os.path.relpath(os.path.join(place, name), self.folder.name)
                for folder in folders for place, _, names in os.walk(self.path(folder)) for name in names}
