"""A service on this machine, and the user's phone, which the service simulates; its camera looks at the screen."""
import json
import subprocess
import urllib.request


class Service:
    """Runs on a free port for the length of a `with`."""

    def __init__(self, program, *options):
        self._command = ["setpriv", "--pdeathsig", "KILL", program, "--port", "0", *options]

    def __enter__(self):
        self._process = subprocess.Popen(self._command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.url = self._process.stdout.readline().strip()
        assert self.url.startswith("http://127.0.0.1:"), self.url
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.stdout.close()
        self._process.wait(timeout=20)

    def post(self, path, record):
        request = urllib.request.Request(self.url + path, json.dumps(record).encode(),
                                         {"Content-Type": "application/json"})
        with urllib.request.urlopen(request, timeout=20) as answer:
            return json.load(answer)


class Phone:
    def __init__(self, service, desktop):
        self._service = service
        self._desktop = desktop

    def read_code(self, window):
        """The text of the QR code on the screen, as soon as one can be read."""
        return window.wait_until(self._look, "a QR code on the screen")

    def scan(self, code):
        """Scans `code` and returns the link's identifier. The service accepts only its own codes."""
        return self._service.post("/phone/links/scan", {"qrPayload": code})["linkId"]

    def confirm(self, link):
        self._service.post(f"/phone/links/{link}/approve", {"userId": "usr_1"})

    def decline(self, link):
        self._service.post(f"/phone/links/{link}/reject", {})

    def _look(self):
        command = ["zbarimg", "--quiet", "--raw", "--nodbus", "-Sdisable", "-Sqrcode.enable", "-"]
        reader = subprocess.run(command, input=self._desktop.picture().pixmap(), stdout=subprocess.PIPE,
                                stderr=subprocess.DEVNULL)
        return reader.stdout.decode().strip() or None
