"""A Mac as the service sees it, and the service to run it against. Standard library only."""
import hashlib
import http.client
import io
import json
import os
import subprocess
import urllib.parse
import zipfile

PART_SIZE = 64 * 1024


class Sandbox:
    """The service, on a free port, for the length of a `with`."""

    def __init__(self, program, *options):
        self._arguments = [program, "--port", "0", "--part-size", str(PART_SIZE), *options]

    def __enter__(self):
        self._process = subprocess.Popen(self._arguments, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.url = self._process.stdout.readline().strip()
        assert self.url.startswith("http://127.0.0.1:"), self.url
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.stdout.close()
        assert self._process.wait(timeout=20) == 0


class Mac:
    """Links, uploads and watches with plain requests. Raises `AssertionError` at an answer other than success."""

    def __init__(self, url):
        self._address = urllib.parse.urlsplit(url).netloc
        self._token = None
        self._link = None

    def request(self, method, path, body=None, headers=None):
        connection = http.client.HTTPConnection(self._address, timeout=20)
        try:
            connection.putrequest(method, path, skip_accept_encoding=True)
            if body is not None:
                connection.putheader("Content-Length", str(len(body)))
            for name, value in (headers or {}).items():
                connection.putheader(name, value)
            connection.endheaders(body)
            answer = connection.getresponse()
            content = answer.read()
            assert 200 <= answer.status < 300, f"{method} {path.split('?')[0]}: {answer.status} {content!r}"
            return answer, content
        finally:
            connection.close()

    def api(self, method, path, record=None):
        headers = {"Accept": "application/json"}
        if self._token and not path.startswith("auth/device-links"):
            headers["Authorization"] = "Bearer " + self._token
        body = None
        if record is not None:
            headers["Content-Type"] = "application/json"
            body = json.dumps(record).encode()
        return json.loads(self.request(method, "/api/v1/" + path, body, headers)[1])

    def ask_for_link(self, name="Test Mac"):
        self._link = self.api("POST", "auth/device-links", {
            "deviceName": name, "platform": "macos", "appVersion": "1.0.0", "osVersion": "macOS 14.5"})
        return self._link

    def poll(self):
        """The link's status; takes the session once it is there."""
        answer = self.api("POST", "auth/device-links/poll",
                          {"linkId": self._link["linkId"], "pollSecret": self._link["pollSecret"]})
        if "session" in answer:
            self._token = answer["session"]["token"]
            self.user = answer["session"]["user"]
        return answer["status"]

    def quest(self):
        return self.api("GET", "desktop/nimbrel")

    def open_upload(self, archive):
        parts = max(1, -(-len(archive) // PART_SIZE))
        self._upload = self.api("POST", "desktop/nimbrel/submissions", {
            "termsVersion": "vorn-mac-nimbrel-1", "sizeBytes": len(archive), "partCount": parts,
            "device": {"timezone": "Europe/Berlin", "locale": "en-US"}})
        self._tags = []
        return self._upload["submissionId"]

    def put_part(self, archive, number):
        part = self._upload["assets"][0]["parts"][number - 1]
        assert part["partNumber"] == number
        url = urllib.parse.urlsplit(part["url"])
        body = archive[(number - 1) * PART_SIZE:number * PART_SIZE]
        answer, _ = self.request("PUT", f"{url.path}?{url.query}", body)
        self._tags.append({"partNumber": number, "etag": answer.getheader("ETag")})

    def complete(self, archive):
        asset = self._upload["assets"][0]["assetId"]
        return self.api("POST", f"desktop/nimbrel/submissions/{self._upload['submissionId']}/assets/{asset}/complete",
                        {"parts": self._tags, "sha256": hashlib.sha256(archive).hexdigest()})

    def upload(self, archive):
        submission = self.open_upload(archive)
        for number in range(1, -(-len(archive) // PART_SIZE) + 1):
            self.put_part(archive, number)
        self.complete(archive)
        return submission

    def submission(self, identifier):
        return self.api("GET", "desktop/nimbrel/submissions/" + identifier)


def message(number, text, from_me):
    return {"attachments": [], "chat": "iMessage;-;+15550102030", "edited": False, "fromMe": from_me,
            "guid": f"G-{number}", "links": [], "replyToGuid": None, "sentAt": 1_700_000_000 + 60 * number,
            "service": "iMessage", "text": text}


def archive_of(messages, padding=0):
    """An archive with these messages. `padding` adds a message of that many random hexadecimal digits."""
    if padding:
        messages = [*messages, message(len(messages), os.urandom(padding // 2).hex(), True)]
    manifest = {"agentHandles": ["+15550102030"], "chatCount": 1, "exportedAt": "2026-03-01T09:15:00Z",
                "exporter": {"app": "Vorn for Mac", "os": "macOS 14.5", "version": "1.0.0"},
                "format": "vorn.nimbrel-imessage", "formatVersion": 1, "messageCount": len(messages), "skipped": {}}
    file = io.BytesIO()
    with zipfile.ZipFile(file, "w", zipfile.ZIP_DEFLATED) as archive:
        archive.writestr("vorn-nimbrel-export.json", json.dumps(manifest))
        archive.writestr("vorn-nimbrel-messages.json", json.dumps(messages))
    return file.getvalue()
