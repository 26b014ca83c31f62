"""Stands between a client and the service, and records their messages."""
import http.client
import json
import threading
from dataclasses import dataclass
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer


@dataclass
class Exchange:
    method: str
    path: str
    headers: dict
    sent: bytes
    status: int
    answered: bytes

    def request(self):
        return json.loads(self.sent) if self.sent else None

    def answer(self):
        """The answer's JSON; an empty object if it is not JSON."""
        try:
            return json.loads(self.answered)
        except ValueError:
            return {}


class Recorder:
    """Passes everything on to `service`; with a `context` it speaks TLS. Part URLs in answers are changed to lead here
    too. A request whose path ends with one of `echoing` is not passed on: the answer repeats its token, as a careless
    service would."""

    def __init__(self, service, context=None):
        self.service = service
        self.exchanges = []
        self.echoing = echoing = []
        self.arrived = arrived = []  # methods of requests, answered or not
        host = service.removeprefix("http://")
        exchanges = self.exchanges

        class Handler(BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"

            def pass_on(self):
                sent = self.rfile.read(int(self.headers.get("Content-Length", 0)))
                arrived.append(self.command)
                headers = dict(self.headers.items())
                here = headers["Host"]
                if echoing and self.path.endswith(tuple(echoing)):
                    words = {"message": f"cannot take {headers.get('Authorization', 'this')}", "code": "echo"}
                    return self.answer(500, {"Content-Type": "application/json"}, json.dumps(words).encode())
                onward = http.client.HTTPConnection(host, timeout=60)
                try:
                    onward.request(self.command, self.path, sent if "Content-Length" in headers else None,
                                   {**headers, "Host": host})
                    answer = onward.getresponse()
                    answered = answer.read().replace(host.encode(), here.encode())
                except (OSError, http.client.HTTPException):
                    self.close_connection = True  # as the service did
                    return
                finally:
                    onward.close()
                exchanges.append(Exchange(self.command, self.path, headers, sent, answer.status, answered))
                kept = {name: answer.getheader(name) for name in ("Content-Type", "ETag") if answer.getheader(name)}
                self.answer(answer.status, kept, answered)

            def answer(self, status, headers, body):
                self.send_response_only(status)
                for name, value in headers.items():
                    self.send_header(name, value)
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            do_GET = do_POST = do_PUT = pass_on

            def log_message(self, *_):
                pass

        class Server(ThreadingHTTPServer):
            daemon_threads = True

            def handle_error(self, *_):  # a client that is gone
                pass

        self.server = Server(("127.0.0.1", 0), Handler)
        if context:
            self.server.socket = context.wrap_socket(self.server.socket, server_side=True)
        self.url = f"{'https' if context else 'http'}://127.0.0.1:{self.server.server_port}"
        self.thread = threading.Thread(target=self.server.serve_forever)
        self.thread.start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.server.shutdown()
        self.thread.join()
        self.server.server_close()
