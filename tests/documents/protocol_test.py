"""Checks docs/protocol.md against the traffic between the client and the service.

Usage: protocol_test.py BIN, the folder of the programs"""
import re
import unittest

from documents import facts, read, section, tables
from real_run import RealRun

PROTOCOL = read("docs/protocol.md")
TYPES = {"string": str, "integer": int, "number": (int, float)}


def documented_records():
    """Each record of the document: its keys with their types."""
    found = {}
    for name in re.findall(r"^### (\w+)$", PROTOCOL, re.MULTILINE):
        _, *rows = next(tables(section(PROTOCOL, name)))
        found[name] = {row[0].strip("`"): row[1] for row in rows}
    return found


RECORDS = documented_records()


def documented_routes():
    """Each route: the record that is sent, the record of the answer, and whether the request carries a token."""
    _, *rows = next(tables(section(PROTOCOL, "Routes")))
    return {row[0].strip("`"): tuple(cell.strip("`") for cell in row[1:]) for row in rows}


def route_of(exchange):
    path = exchange.path.removeprefix("/api/v1/")
    return f"{exchange.method} " + re.sub(r"(?<=/)(sub|ast)_\w+", "ID", path)


def mistakes_in(value, record, place):
    """Yields the parts of `value` that differ from `record`."""
    keys = RECORDS[record]
    if set(value) - set(keys):
        yield f"{place}: nothing says {set(value) - set(keys)}"
    for key, type_name in keys.items():
        if key not in value:
            if not type_name.endswith("?"):
                yield f"{place}: {key} is missing"
            continue
        type_name = type_name.removesuffix("?")
        items = value[key] if type_name.endswith("[]") else [value[key]]
        for item in items:
            inner = type_name.removesuffix("[]")
            if inner in RECORDS:
                yield from mistakes_in(item, inner, f"{place}.{key}")
            elif not isinstance(item, TYPES[inner]) or isinstance(item, bool):
                yield f"{place}: {key} is no {inner}"


class Client(unittest.TestCase):
    def test_records_are_those_of_the_client(self):
        self.assertEqual(RECORDS, facts()["records"])

    def test_limits_are_those_of_the_client(self):
        for name, value in facts()["limits"].items():
            self.assertRegex(PROTOCOL, rf"(?<![\d,]){value:,}(?![\d,])", name)

    def test_times_are_those_of_the_client(self):
        words = {1: "", 3: "three", 5: "five", 20: "twenty", 30: "thirty"}
        times = facts()["times"]
        text = " ".join(PROTOCOL.split())
        for sentence in (
                f"if that cannot be read, until {times['undated link']} seconds after the link arrived",
                f"it asks for a new link, at most once a {words[times['between codes']]}second",
                f"After a failure it asks again in {words[times['after a failed link']]} seconds,"
                f" after a refusal on the phone in {words[times['after a declined link']]}.",
                f"every {words[times['between reviews']]} seconds, or every {words[times['between pending reviews']]} while its"
                f" status is `review_pending`, for {words[times['reviews'] // 60]} minutes at most"):
            self.assertIn(sentence, text)


class RealRuns(unittest.TestCase):
    """Takes the whole path in enough ways to call every route."""

    @classmethod
    def setUpClass(cls):
        cls.exchanges = []
        ways = [(["--review", "approved"], 0),
                (["--review", "rejected:wrong_provider", "--expired-first-urls", "--fault", "quest=401x1"], 9),
                (["--fault", "complete=500"], 8)]
        for options, status in ways:
            with RealRun("--auto-approve", *options) as user:
                ended, _, errors = user.share()
                assert ended == status, errors
                cls.exchanges += user.recorder.exchanges
        with RealRun("--auto-approve", "--fault", "logout=401x1") as user:
            user.with_keychain(user.line("vorn-terminal", "link"), user.line("vorn-terminal", "sign-out"))
            cls.exchanges += user.recorder.exchanges
        cls.parts = [each for each in cls.exchanges if each.method == "PUT"]
        cls.calls = [each for each in cls.exchanges if each.method != "PUT"]

    def test_routes_are_those_that_are_called(self):
        self.assertEqual(set(documented_routes()), {route_of(call) for call in self.calls})

    def test_what_is_sent_and_answered_is_as_it_is_said(self):
        routes = documented_routes()
        for call in self.calls:
            sent, answered, _ = routes[route_of(call)]
            self.assertEqual(call.sent == b"", sent == "nothing", route_of(call))
            mistakes = list(mistakes_in(call.request(), sent, route_of(call))) if call.sent else []
            if call.status < 300 and answered != "nothing":
                mistakes += mistakes_in(call.answer(), answered, route_of(call))
            elif call.status >= 300:
                mistakes += mistakes_in(call.answer(), "ErrorBody", route_of(call))
            self.assertEqual(mistakes, [])

    def test_headers_are_those_that_are_said(self):
        _, *rows = next(tables(section(PROTOCOL, "Requests")))
        allowed = {row[0].strip("`") for row in rows} | {"Host", "Content-Length"}
        for call in self.calls:
            self.assertLessEqual(set(call.headers), allowed, route_of(call))
            self.assertEqual(call.headers["Accept"], "application/json")
            self.assertEqual("Content-Type" in call.headers, bool(call.sent), route_of(call))
            carries = call.headers.get("Authorization", "").startswith("Bearer ")
            self.assertEqual(carries, documented_routes()[route_of(call)][2] == "yes", route_of(call))
        for part in self.parts:
            self.assertEqual(set(part.headers), {"Host", "Content-Length"})

    def test_a_refused_address_is_replaced_once_and_a_refused_token_too(self):
        statuses = [part.status for part in self.parts]
        self.assertEqual(statuses.count(403), 1)
        self.assertEqual(set(statuses), {200, 403})
        quests = [call.status for call in self.calls if route_of(call) == "GET desktop/nimbrel"]
        self.assertEqual(quests.count(401), 1)
        renewed = [call for call in self.calls if route_of(call) == "POST auth/desktop/refresh"]
        self.assertEqual(len(renewed), 2)  # the quest's and the logout's

    def test_a_failed_upload_is_aborted_and_no_other(self):
        aborts = [call.path for call in self.calls if call.path.endswith("/abort")]
        failed = [call.path for call in self.calls if call.path.endswith("/complete") and call.status == 500]
        self.assertEqual([path.split("/")[5] for path in aborts], [path.split("/")[5] for path in failed])


if __name__ == "__main__":
    unittest.main()
