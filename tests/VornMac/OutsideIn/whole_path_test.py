"""From the first start to the reward and the sign-out."""
import datetime
import os

import scenario
from scenario import ACCESS, CONSENT, EARNED, FOUND, LINK, Scenario


class WholePath(Scenario):
    def test_earns_the_reward(self):
        self.make_database_unreadable()
        window = self.start_vorn(self.start_service())
        self.link(window)
        self.agree(window)
        self.allow_access(window)
        self.compare_statistics(window)
        self.upload(window)
        self.sign_out(window)
        self.assertEqual(self.vorn.close(), 0)

    def make_database_unreadable(self):
        self.expected = self.make_history()
        self.there = self.messages_here()
        os.rename(self.database, self.database + ".aside")
        os.symlink(self.database, self.database)  # not even root can open a link to itself

    def link(self, window):
        window.wait_for_screen(LINK)
        window.wait_for("Waiting for your phone")
        code = self.phone.read_code(window)
        link = self.phone.scan(code)
        window.wait_for("Scanned. Confirm Link this Mac on your phone.")
        window.wait_for("Confirm on your phone")
        self.assertFalse(window.shows("QR code to link this Mac"))
        self.phone.confirm(link)
        window.wait_for_screen(CONSENT)
        self.assertEqual(window.wait_for("Account").description, "Signed in as Sam Rivera")

    def agree(self, window):
        window.wait_for("Your chat is pseudonymized and added to a dataset that trains AI assistants."
                        " You earn $12.50 when it's accepted.")
        choices = "I understand what's uploaded", "I agree to share my Nimbrel chat"
        for choice in choices:
            self.assertFalse(window.is_enabled("Continue"))
            window.try_to_press("Continue")
            self.assertFalse(window.is_checked(choice))
            window.toggle(choice)
            window.wait_until(lambda: window.is_checked(choice), "a tick at " + choice)
        window.toggle(choices[0])
        window.wait_until(lambda: not window.is_enabled("Continue"), "Continue to be off again")
        window.wait_for_screen(CONSENT)
        window.toggle(choices[0])
        window.press("Continue")

    def allow_access(self, window):
        window.wait_for_screen(ACCESS)
        window.wait_for("Waiting for access…")
        window.wait_for("Vorn, off")
        self.assertTrue(window.is_enabled("Quit & Reopen Vorn"))
        os.remove(self.database)
        window.wait_for("Messages isn't set up on this Mac. Sign in to Messages with the Apple ID you text Nimbrel from,"
                        " then come back.")
        os.rename(self.database + ".aside", self.database)
        window.wait_for_screen(FOUND)

    def compare_statistics(self, window):
        expected = self.expected
        self.assertEqual(expected["kept"], len(self.there))
        first, last = (day(expected[key]) for key in ("firstAt", "lastAt"))
        for row in (f"Messages: {expected['kept']:,}", f"Your messages: {expected['prompts']:,}",
                    f"Nimbrel replies: {expected['replies']:,}", f"Dates: {first} – {last}"):
            self.assertTrue(window.shows(row), row + " is not in\n" + window.described())
        self.assertTrue(window.shows("Only on this Mac. Nothing is uploaded yet."))
        previewed = [name for name in window.names() if name.startswith(("You: ", "Nimbrel: "))]
        self.assertEqual(previewed, [preview(message) for message in self.there[-6:]])

    def upload(self, window):
        window.press("Upload chat")
        window.wait_for_screen(EARNED)
        window.wait_for("The reward is in your Vorn balance.")
        self.assertEqual(self.messages_that_arrived(), self.there)
        self.assertEqual(self.vorn.copies_of_the_chat(), [])

    def sign_out(self, window):
        window.press("Account")
        window.wait_for("Signed in as Sam Rivera")
        window.press("Sign out of this Mac")
        window.wait_for_screen(LINK)
        window.wait_until(lambda: not window.shows("Account"), "the account menu to go")
        self.phone.read_code(window)


def preview(message):
    text = message["text"] or ("Attachment" if message["attachments"] else "…")
    return ("You: " if message["fromMe"] else "Nimbrel: ") + (text if len(text) <= 140 else text[:140] + "…")


def day(seconds):
    date = datetime.datetime.fromtimestamp(seconds, datetime.timezone.utc)
    return f"{date:%b} {date.day}, {date.year}"


if __name__ == "__main__":
    scenario.main()
