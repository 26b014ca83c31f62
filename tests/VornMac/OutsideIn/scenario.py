"""The common part of scenarios: a desktop, folders of their own, the service, and the program in its window."""
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile

from accessible_window import AccessibleWindow
from desktop import Desktop
from service import Phone, Service

HANDLES = ["+15550102030", "nimbrel@example.com"]
LINK = "Link your phone Your phone links this Mac"
CONSENT = "Your Nimbrel chat Exactly what we upload"
ACCESS = "Allow Full Disk Access So Vorn can read Messages"
FOUND = "Found on this Mac Your Nimbrel chat"
NOT_FOUND = "Not found on this Mac Your Nimbrel chat"
UPLOADING = "Uploading Your Nimbrel chat"
EARNED = "You earned $12.50 Thanks for your Nimbrel chat"

# From the command line: the programs' folder, and how many seconds to wait for anything.
programs = ""
patience = 20.0


class Vorn:
    """The program, started as if for the first time, with its one window."""

    def __init__(self, folder, service, database, arguments=(), environment=()):
        self._folder = folder
        self.temporary = self._folder_named("temporary")
        self._errors = os.path.join(folder, "errors")
        home = self._folder_named("home")
        own = {"HOME": home, "XDG_CONFIG_HOME": home + "/.config", "XDG_CACHE_HOME": home + "/.cache",
               "XDG_DATA_HOME": home + "/.local/share", "XDG_RUNTIME_DIR": self._folder_named("runtime"),
               "TMPDIR": self.temporary, "TZ": "UTC", "LC_ALL": "C.UTF-8",
               "QT_QPA_PLATFORM": "xcb", "QT_QUICK_BACKEND": "software", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        self._environment = {**os.environ, **own, **dict(environment)}
        self._command = ["setpriv", "--pdeathsig", "KILL", program("VornMac"), "-VornAPIBaseURLOverride", service.url,
                         "-VornMessagesDatabaseOverride", database, *arguments]
        self.process = self._start()
        self.window = AccessibleWindow(self.process.pid, patience)

    def _start(self):
        with open(self._errors, "ab") as errors:
            return subprocess.Popen(self._command, env=self._environment, stderr=errors)

    def _folder_named(self, name):
        path = os.path.join(self._folder, name)
        os.makedirs(path, mode=0o700)
        return path

    def errors(self):
        with open(self._errors, encoding="utf-8", errors="replace") as file:
            return file.read()

    def leftovers(self):
        # The thread sanitizer has a file there while a program starts.
        return [name for name in os.listdir(self.temporary) if not name.startswith("tsan.")]

    def copies_of_the_chat(self):
        """Names of snapshots and archives, which may be in the temporary folder only briefly."""
        return [name for name in os.listdir(self.temporary) if name.startswith(("vorn-messages-", "vorn-nimbrel-"))]

    def close(self):
        """Closes the window with the keyboard, and returns the program's exit status."""
        if self.process.poll() is None:
            self._bring_to_front()
            self.window.press_keys("w", held="Control")
        return self.process.wait(timeout=patience)

    def _bring_to_front(self):
        """Gives the window the keyboard's focus. Without a window manager, a second start does that."""
        second = self._start()
        assert second.wait(timeout=patience) == 0, "a second start fails"
        self.window.wait_until(lambda: self.window.wait_for("Vorn", {"frame"}).is_("active"), "the keyboard")


class Scenario(unittest.TestCase):
    """Every program that a scenario starts must end with its window, print nothing and leave nothing."""

    screen = (1280, 800)
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.desktop = cls.enterClassContext(Desktop(*cls.screen))

    def setUp(self):
        self.folder = self.enterContext(tempfile.TemporaryDirectory(prefix="vorn-outside-in-"))
        self.database = os.path.join(self.folder, "chat.db")
        self.state = os.path.join(self.folder, "service")

    def start_service(self, *options):
        handles = [word for handle in HANDLES for word in ("--handle", handle)]
        service = self.enterContext(
            Service(program("vorn-sandbox"), "--delay", "1", "--state", self.state, *handles, *options))
        self.phone = Phone(service, self.desktop)
        return service

    def start_vorn(self, service, *arguments, environment=()):
        """The program's window, once it is there."""
        folder = tempfile.mkdtemp(prefix="vorn-", dir=self.folder)
        vorn = Vorn(folder, service, self.database, arguments, environment)
        self.addCleanup(self._end, vorn)
        vorn.window.wait_for("Vorn", {"frame"})
        self.vorn = vorn
        return vorn.window

    def _end(self, vorn):
        try:
            self.assertEqual((vorn.close(), vorn.errors(), vorn.leftovers()), (0, "", []))
        finally:
            vorn.process.kill()
            vorn.process.wait()

    def make_history(self, *options, handles=HANDLES, messages=3000):
        """Writes a history that has a chat with the assistant. Returns the numbers that the window should show."""
        command = [program("vorn-sample-history"), "--output", self.database, "--messages", str(messages), "--json",
                   *options]
        for handle in handles:
            command += ["--handle", handle]
        summary = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout
        return json.loads(summary)["expected"]

    def messages_here(self):
        """The messages of the assistant's chat, as they are exported."""
        archive = os.path.join(self.folder, "here.zip")
        command = [program("vorn-export"), "--database", self.database, "--output", archive]
        for handle in HANDLES:
            command += ["--handle", handle]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        return messages_in(archive)

    def messages_that_arrived(self):
        """The messages of the one upload that the service has."""
        uploads = os.path.join(self.state, "uploads")
        archives = [path for name in os.listdir(uploads)
                    if os.path.exists(path := os.path.join(uploads, name, "archive.zip"))]
        self.assertEqual(len(archives), 1, os.listdir(uploads))
        return messages_in(archives[0])

    def link_by_phone(self, window):
        """Plays the user's phone: scans the code and confirms."""
        window.wait_for_screen(LINK)
        window.wait_for("Waiting for your phone")
        self.phone.confirm(self.phone.scan(self.phone.read_code(window)))

    def give_consent(self, window):
        window.wait_for_screen(CONSENT)
        window.toggle("I understand what's uploaded")
        window.toggle("I agree to share my Nimbrel chat")
        window.press("Continue")


def program(name):
    return os.path.join(programs, name)


def messages_in(archive):
    with zipfile.ZipFile(archive) as file:
        return json.loads(file.read("vorn-nimbrel-messages.json"))


def main():
    """Runs the script's scenarios. Arguments: the programs' folder, seconds to wait for anything, and unittest's."""
    global programs, patience
    programs, patience = sys.argv.pop(1), float(sys.argv.pop(1))
    for tool in ("Xvfb", "dbus-daemon", "setpriv", "zbarimg"):
        assert shutil.which(tool), tool + " is missing"
    unittest.main(verbosity=2, warnings="ignore")  # accessibility offers its actions by a name that it deprecates
