"""Looks for the chat and uploads it, with obstacles."""
import scenario
from scenario import EARNED, FOUND, LINK, NOT_FOUND, UPLOADING, Scenario

NO_CHAT = "No conversation with Nimbrel on this Mac."


class Sharing(Scenario):
    def start_linked(self, *options):
        """The window of a program that is already linked, and whose user has consented."""
        window = self.start_vorn(self.start_service("--auto-approve", *options))
        self.give_consent(window)
        return window

    def test_uploads_after_a_failure(self):
        expected = self.make_history()
        window = self.start_linked("--fault", "put-part=500x1", "--fault", "complete=slow")
        window.wait_for_screen(FOUND)
        window.press("Upload chat")
        window.wait_for_screen(UPLOADING)
        window.wait_for("Part 1 of the upload failed (500).")
        window.press("Try again")
        window.wait_for_screen(FOUND)
        window.press("Upload chat")
        window.wait_for("Finishing up…")
        self.assertEqual(window.wait_for("vorn-nimbrel-export.zip", {"progress bar"}).description, "100 percent")
        window.wait_for_screen(EARNED)
        self.assertEqual(len(self.messages_that_arrived()), expected["kept"])

    def test_looks_again_for_a_chat_that_was_not_there(self):
        self.make_history(handles=["somebody@example.com"])
        window = self.start_linked()
        window.wait_for_screen(NOT_FOUND)
        window.wait_for(NO_CHAT)
        self.assertFalse(window.shows("Upload chat"))
        expected = self.make_history("--force")  # the history has arrived
        window.press("Look again")
        window.wait_for_screen(FOUND)
        window.wait_for(f"Messages: {expected['kept']:,}")
        self.assertFalse(window.shows(NO_CHAT))
        self.assertTrue(window.is_enabled("Upload chat"))

    def test_links_again_when_the_session_ends_in_the_middle(self):
        self.make_history()
        window = self.start_vorn(self.start_service("--fault", "create-submission=401", "--fault", "refresh=401"))
        self.link_by_phone(window)
        self.give_consent(window)
        window.wait_for_screen(FOUND)
        window.press("Upload chat")
        window.wait_for_screen(LINK)
        self.assertFalse(window.shows("Account"))
        self.link_by_phone(window)
        window.wait_for_screen(FOUND)  # linked anew: the consent is still valid
        self.assertEqual(window.wait_for("Account").description, "Signed in as Sam Rivera")


if __name__ == "__main__":
    scenario.main()
