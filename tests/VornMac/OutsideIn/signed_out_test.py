"""After the user signs out, the program's memory holds no token of the session."""
import os
import sys
import time

import scenario
from scenario import CONSENT, LINK, Scenario

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../documents"))
from process_memory import copies_in_memory  # noqa: E402: the path comes first
from recorder import Recorder  # noqa: E402


class SignedOut(Scenario):
    def test_leaves_no_token_in_the_memory(self):
        recorder = self.enterContext(Recorder(self.start_service().url))
        window = self.start_vorn(recorder)
        self.link_by_phone(window)
        window.wait_for_screen(CONSENT)
        answers = [each.answer() for each in recorder.exchanges if each.path.endswith("/poll")]
        session = [answer["session"] for answer in answers if "session" in answer][0]
        tokens = [session["token"], session["refreshToken"]]
        for copies in self.copies(tokens):
            self.assertGreater(copies, 0)
        window.press("Account")
        window.wait_for("Signed in as Sam Rivera")
        window.press("Sign out of this Mac")
        window.wait_for_screen(LINK)
        window.wait_until(lambda: [each for each in recorder.exchanges if each.path.endswith("/logout")], "the logout")
        deadline = time.monotonic() + 5  # ended jobs may still be freeing their memory
        while any(self.copies(tokens)) and time.monotonic() < deadline:
            time.sleep(0.1)
        self.assertEqual(self.copies(tokens), [0, 0])

    def copies(self, tokens):
        try:
            return copies_in_memory(self.vorn.process, tokens)
        except PermissionError:
            self.skipTest("only root may read the memory of a program that keeps it to itself")


if __name__ == "__main__":
    scenario.main()
