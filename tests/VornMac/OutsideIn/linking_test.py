"""Codes that fail, and the codes that replace them."""
import scenario
from scenario import CONSENT, LINK, Scenario


class Linking(Scenario):
    def test_shows_a_new_code_after_a_declined_one(self):
        window = self.start_vorn(self.start_service())
        window.wait_for_screen(LINK)
        declined = self.phone.read_code(window)
        self.phone.decline(self.phone.scan(declined))
        window.wait_for("Your phone declined the link. Here's a new code.")
        window.wait_for("Waiting for your phone")
        self.confirm_another_than(declined, window)

    def test_shows_a_new_code_when_one_has_expired(self):
        window = self.start_vorn(self.start_service("--link-lifetime", "4"))
        window.wait_for_screen(LINK)
        expired = self.phone.read_code(window)
        window.wait_until(lambda: any(name.startswith("New code in 0:0") for name in window.names()), "the countdown")
        self.confirm_another_than(expired, window)

    def test_tries_again_at_once_when_told_to(self):
        # More than one failure: on a busy machine the window tries again by itself before the press.
        window = self.start_vorn(self.start_service("--fault", "create-link=503x3"))
        window.wait_for_screen(LINK)
        window.wait_for("The sandbox was told to answer 503.")
        self.assertFalse(window.shows("QR code to link this Mac"))
        self.assertGreater(window.press_until_shown("Try again", "Waiting for your phone"), 0)
        self.assertFalse(window.shows("Try again"))
        self.link_by_phone(window)
        window.wait_for_screen(CONSENT)

    def confirm_another_than(self, old, window):
        def read():
            code = self.phone.read_code(window)
            return code if code != old else None
        self.phone.confirm(self.phone.scan(window.wait_until(read, "another code")))
        window.wait_for_screen(CONSENT)


if __name__ == "__main__":
    scenario.main()
