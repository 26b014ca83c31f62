"""What the desktop is told while a chat is uploaded, and when its review ends."""
import scenario
from desktop_services import DesktopServices
from scenario import EARNED, FOUND, Scenario


class Presence(Scenario):
    def test_tells_a_user_who_looks_elsewhere(self):
        services = self.enterContext(DesktopServices())
        self.make_history()
        window = self.start_vorn(self.start_service("--auto-approve"))
        self.give_consent(window)
        window.wait_for_screen(FOUND)
        self.assertEqual((services.calls, services.progress), ([], []), "nothing is asked before it is needed")
        window.press("Upload chat")
        window.wait_for_screen(EARNED)
        self.follow_upload(window, services)
        self.follow_notification(window, services)

    def follow_upload(self, window, services):
        self.assertEqual(services.asked("Inhibit"), [("sleep", "Vorn", "Uploading", "block")])
        window.wait_until(lambda: not services.is_awake(), "the sleep lock to be released")
        window.wait_until(lambda: services.progress[-1] is None, "the end of the bar")
        bars = services.progress[:-1]
        self.assertEqual((bars[0], bars[-1], bars), (0, 1, sorted(bars)))

    def follow_notification(self, window, services):
        window.wait_until(lambda: services.asked("Notify"), "a notification")
        ((name, replaces, icon, title, body, actions, hints, _),) = services.asked("Notify")
        self.assertEqual((name, replaces, icon), ("Vorn", 0, "app.vorn.mac"))
        self.assertEqual(title, "You earned $12.50")
        self.assertEqual(body, "Thanks for your Nimbrel chat. The reward is in your Vorn balance.")
        self.assertEqual(actions, ["default", "Open Vorn"])
        self.assertEqual(hints, {"desktop-entry": "app.vorn.mac", "sound-name": "complete"})
        frame = lambda: window.wait_for("Vorn", {"frame"})  # noqa: E731
        self.assertFalse(frame().is_("active"))
        services.click(1)
        window.wait_until(lambda: frame().is_("active"), "the window in front")
        window.wait_until(lambda: services.asked("CloseNotification") == [(1,)], "the notification to go")


if __name__ == "__main__":
    scenario.main()
