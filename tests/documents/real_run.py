"""Runs the programs for real: a service of this computer, a made-up history, and a user of their own."""
import os
import subprocess
import tempfile

from documents import BIN, output_of

HANDLE = "+15550102030"


class RealRun:
    """A user with a home, a temporary and a runtime folder, and a service. All of it goes at the end."""

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
        self.url = self.service.stdout.readline().strip()

    def __enter__(self):
        return self

    def __exit__(self, *_):
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

    def start(self, program, *arguments, **more):
        line = [os.path.join(BIN, program), *arguments, "-VornAPIBaseURLOverride", self.url,
                "-VornMessagesDatabaseOverride", self.history()]
        return subprocess.Popen(line, env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                cwd=self.path("home"), **more)

    def share(self, *arguments):
        """The whole way in the terminal. Returns its status, and what it printed."""
        program = self.start("vorn-terminal", "--yes", "--no-keychain", *arguments)
        output, errors = program.communicate(timeout=60)
        return program.returncode, output, errors

    def requests(self):
        """The requests that the service has answered: method, path, status."""
        self.log.flush()
        with open(self.path("service.log"), encoding="utf-8") as log:
            lines = [line.split() for line in log]
        return [line[:3] for line in lines if line and line[0] in ("GET", "POST", "PUT")]

    def files(self, *folders):
        """The files below `folders`, by their names in this user's folder."""
        return {os.path.relpath(os.path.join(place, name), self.folder.name)
                for folder in folders for place, _, names in os.walk(self.path(folder)) for name in names}
