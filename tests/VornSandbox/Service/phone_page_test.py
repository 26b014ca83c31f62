"""The page that plays the phone, in a real browser. Usage: phone_page_test.py PROGRAM [unittest's arguments]"""
import os
import shutil
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from sandbox_mac import PART_SIZE, Mac, Sandbox, archive_of, message  # noqa: E402
from selenium import webdriver  # noqa: E402
from selenium.webdriver.chrome.service import Service  # noqa: E402
from selenium.webdriver.common.by import By  # noqa: E402
from selenium.webdriver.support.ui import Select, WebDriverWait  # noqa: E402

PROGRAM = ""
PATIENCE = 30


class PhonePage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.profile = tempfile.mkdtemp(prefix="phone-page-test-")
        options = webdriver.ChromeOptions()
        options.binary_location = shutil.which("chromium") or shutil.which("google-chrome")
        for argument in ("--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--disable-gpu",
                         "--window-size=600,1400", "--lang=en-US", "--user-data-dir=" + cls.profile):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        cls.browser = webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()
        shutil.rmtree(cls.profile, ignore_errors=True)

    def open(self, *options):
        """A running service with its page in the browser."""
        sandbox = Sandbox(PROGRAM, *options)
        self.addCleanup(sandbox.__exit__)
        sandbox.__enter__()
        self.addCleanup(self.browser.get, "about:blank")
        self.browser.get(sandbox.url)
        return sandbox

    def until(self, condition, what):
        return WebDriverWait(self.browser, PATIENCE, poll_frequency=0.05).until(lambda _: condition(), what)

    def named(self, name):
        """The shown button with this accessible name."""
        def find():
            found = [item for item in self.browser.find_elements(By.TAG_NAME, "button")
                     if item.is_displayed() and item.accessible_name == name]
            return found[0] if found else None
        return self.until(self.steady(find), "no button " + name)

    def press(self, name):
        self.until(self.steady(lambda: self.named(name).click() or True), "cannot press " + name)

    def steady(self, look):
        """Wraps `look` to return None while its card is being replaced: cards are rebuilt when they change."""
        def again():
            try:
                return look()
            except Exception as error:  # noqa: BLE001
                if type(error).__name__ in ("StaleElementReferenceException", "ElementClickInterceptedException"):
                    return None
                raise
        return again

    def text(self, selector="main"):
        return self.browser.find_element(By.CSS_SELECTOR, selector).text

    def wait_for(self, words, selector="main"):
        self.until(self.steady(lambda: words in self.text(selector)), f"{words!r} does not appear")

    def link(self, mac):
        """Links `mac` through the page, and returns it."""
        mac.ask_for_link()
        self.press("Scan code of Test Mac")
        self.press("Link this Mac: Test Mac")
        self.until(lambda: mac.poll() == "approved", "not approved")
        return mac

    def test_links_a_mac_that_shows_a_code(self):
        sandbox = self.open()
        mac = Mac(sandbox.url)
        self.wait_for("No Mac shows a code")
        mac.ask_for_link()
        self.assertEqual(mac.poll(), "pending")
        self.press("Scan code of Test Mac")
        self.until(lambda: mac.poll() == "scanned", "not scanned")
        self.wait_for("macOS 14.5")
        self.press("Link this Mac: Test Mac")
        self.until(lambda: mac.poll() == "approved", "not approved")
        self.assertEqual(mac.user["displayName"], "Sam Rivera")
        self.wait_for("No Mac shows a code")
        self.assertIn("Test Mac", self.text("#macs"))

    def test_declines_a_mac(self):
        mac = Mac(self.open().url)
        mac.ask_for_link()
        self.press("Scan code of Test Mac")
        self.press("Decline Test Mac")
        self.until(lambda: mac.poll() == "rejected", "not rejected")

    def test_scans_a_code_by_its_text(self):
        mac = Mac(self.open().url)
        self.browser.find_element(By.TAG_NAME, "summary").click()
        field = self.browser.find_element(By.ID, "code")
        field.send_keys("vorn://link?code=none\n")
        self.wait_for("That is not a code of this service.")
        field.clear()
        field.send_keys(mac.ask_for_link()["qrPayload"] + "\n")
        self.until(lambda: mac.poll() == "scanned", "not scanned")
        self.assertFalse(self.browser.find_element(By.ID, "problem").is_displayed())

    def test_links_to_the_account_that_is_chosen(self):
        mac = Mac(self.open("--user", "Sam", "--user", "Robin").url)
        mac.ask_for_link()
        self.press("Scan code of Test Mac")
        self.named("Link this Mac: Test Mac")
        Select(self.browser.find_element(By.CSS_SELECTOR, "#links select")).select_by_visible_text("Robin")
        self.press("Link this Mac: Test Mac")
        self.until(lambda: mac.poll() == "approved", "not approved")
        self.assertEqual(mac.user["displayName"], "Robin")

    def test_watches_an_upload_to_its_reward(self):
        mac = self.link(Mac(self.open("--review", "manual", "--delay", "0", "--reward", "7.5").url))
        archive = archive_of([message(1, "Hello", True)], padding=4 * PART_SIZE)
        mac.open_upload(archive)
        parts = -(-len(archive) // PART_SIZE)
        self.wait_for(f"0 of {parts} parts")
        for number in range(1, parts + 1):
            mac.put_part(archive, number)
            self.wait_for(f"{number} of {parts} parts")
        mac.complete(archive)
        self.wait_for("In review")
        self.press("Approve upload 1 of Sam Rivera")
        self.wait_for("Approved")
        self.wait_for("+ $7.50")

    def test_decides_while_the_archive_is_still_analyzed(self):
        mac = self.link(Mac(self.open("--review", "manual", "--delay", "3600").url))
        mac.upload(archive_of([message(1, "Hello", True)]))
        self.wait_for("Analyzing")
        self.press("Expire upload 1 of Sam Rivera")
        self.wait_for("Expired")

    def test_says_what_decides_a_review(self):
        for review, words in (("manual", "waits for your decision"), ("approved", "approves every upload by itself"),
                              ("rejected:wrong_provider", "rejects every upload by itself (wrong provider)"),
                              ("checked", "decides from what the archive holds")):
            with self.subTest(review=review):
                mac = self.link(Mac(self.open("--review", review, "--delay", "3600").url))
                self.wait_for(words, "#review")
                mac.upload(archive_of([message(1, "Hello", True)]))
                self.named("Approve upload 1 of Sam Rivera")
                countdown = [item.text for item in self.browser.find_elements(By.CSS_SELECTOR, "#submissions .time")]
                if review == "manual":
                    self.assertEqual(countdown, [])
                else:
                    self.assertRegex(countdown[0], r"^1(19|20):\d\d left$")

    def test_keeps_a_choice_when_its_card_changes(self):
        mac = self.link(Mac(self.open("--review", "manual").url))
        mac.upload(archive_of([message(1, "Hello", True)]))
        self.named("Reject upload 1 of Sam Rivera")
        choice = "#submissions select"
        Select(self.browser.find_element(By.CSS_SELECTOR, choice)).select_by_value("duplicate_media")
        old = self.browser.find_element(By.CSS_SELECTOR, choice)
        view = self.browser.execute_async_script(FIRST_VIEW)
        view["submissions"][0]["finding"] = "something else"
        self.browser.execute_script("show(arguments[0])", view)
        new = self.browser.find_element(By.CSS_SELECTOR, choice)
        self.assertNotEqual(old, new)
        self.assertEqual(new.get_property("value"), "duplicate_media")

    def is_on_top(self, selector):
        """Whether the element is visible at its middle, within the window."""
        return self.browser.execute_script("""
            const element = document.querySelector(arguments[0]);
            const box = element.getBoundingClientRect();
            const there = document.elementFromPoint(box.x + box.width / 2, box.y + box.height / 2);
            return there !== null && element.contains(there);""", selector)

    def test_shows_errors_wherever_the_page_is_scrolled(self):
        mac = self.link(Mac(self.open("--review", "manual", "--cooldown", "0").url))
        for number in range(1, 6):
            mac.upload(archive_of([message(1, "Hello", True)]))
            self.press(f"Approve upload {number} of Sam Rivera")
            self.until(lambda: self.text("#submissions").count("Approved") == number, f"not {number} approved")
        self.browser.execute_script("window.scrollTo(0, 0)")
        self.browser.find_element(By.TAG_NAME, "summary").click()
        self.browser.find_element(By.ID, "code").send_keys("vorn://link?code=none\n")
        self.wait_for("That is not a code of this service.", "#problem")
        self.assertGreater(self.browser.execute_script("return document.body.scrollHeight - innerHeight"), 200)
        self.assertTrue(self.is_on_top("#problem"))
        self.press("Dismiss the message")
        self.assertFalse(self.browser.find_element(By.ID, "problem").is_displayed())

    def test_shows_errors_over_an_open_archive(self):
        with Sandbox(PROGRAM) as sandbox:
            self.addCleanup(self.browser.get, "about:blank")
            self.browser.get(sandbox.url)
            mac = self.link(Mac(sandbox.url))
            mac.upload(archive_of([message(number, "Hello", True) for number in range(60)]))
            self.press("Show messages of Upload 1 of Sam Rivera")
            self.wait_for("Page 1 of 2", "#page")
        self.press("Later messages")
        self.wait_for("The sandbox does not answer.", "#reader-problem")
        self.assertTrue(self.is_on_top("#reader-problem"))

    def test_bears_messages_of_any_kind(self):
        mac = self.link(Mac(self.open().url))
        odd = [None, 7, "text", [1], {}, {"text": 5, "sentAt": "x", "links": 3, "attachments": [None, 4], "fromMe": 1},
               {"links": [None, {"url": 5}], "attachments": {}, "sentAt": 1e300}]
        mac.upload(archive_of([*odd, message(1, "A sound one", True)]))
        self.press("Show messages of Upload 1 of Sam Rivera")
        self.wait_for("8 messages", "#reader-summary")
        shown = self.browser.find_elements(By.CSS_SELECTOR, "#messages > li")
        self.assertEqual(len(shown), 8)
        self.assertEqual([item.text for item in shown[:4]],
                         ["Not a message: " + text for text in ("null", "7", '"text"', "[1]")])
        self.assertIn("A sound one", shown[7].text)

    def test_ends_reviews_with_its_buttons(self):
        mac = self.link(Mac(self.open("--review", "manual", "--cooldown", "0").url))
        archive = archive_of([message(1, "Hello", True)])
        first = mac.upload(archive)
        self.named("Reject upload 1 of Sam Rivera")
        Select(self.browser.find_element(By.CSS_SELECTOR, "#submissions select")).select_by_visible_text("wrong provider")
        self.press("Reject upload 1 of Sam Rivera")
        self.until(lambda: mac.submission(first).get("rejectionReasonKey") == "wrong_provider", "not rejected")
        second = mac.upload(archive)
        self.press("Expire upload 2 of Sam Rivera")
        self.until(lambda: mac.submission(second)["status"] == "expired", "not expired")
        third = mac.upload(archive)
        self.press("Approve upload 3 of Sam Rivera")
        self.until(lambda: mac.submission(third)["status"] == "approved", "not approved")
        self.wait_for("Reason: wrong provider")

    def test_shows_messages_page_by_page_and_html_as_text(self):
        mac = self.link(Mac(self.open().url))
        attack = "<img src=x onerror=\"document.title='taken over'\"><b>bold</b><script>document.title='taken over'</script>"
        messages = [message(number, f"Message number {number}", number % 2 == 0) for number in range(120)]
        messages[3]["text"] = attack
        mac.upload(archive_of(messages))
        self.press("Show messages of Upload 1 of Sam Rivera")
        self.wait_for("Page 1 of 3", "#page")
        self.assertIn("120 messages", self.text("#reader-summary"))
        bubbles = self.browser.find_elements(By.CSS_SELECTOR, "#messages .bubble")
        self.assertEqual(len(bubbles), 50)
        self.assertEqual(bubbles[3].text, attack)
        self.assertEqual(self.browser.find_elements(By.CSS_SELECTOR, "#messages img, #messages b, #messages script"), [])
        self.assertFalse(self.named("Earlier messages").is_enabled())
        self.press("Later messages")
        self.wait_for("Page 2 of 3", "#page")
        self.press("Later messages")
        self.wait_for("Page 3 of 3", "#page")
        self.assertIn("Message number 119", self.text("#messages"))
        self.assertFalse(self.named("Later messages").is_enabled())
        self.press("Close messages")
        self.until(lambda: not self.browser.find_element(By.ID, "reader").is_displayed(), "stays open")
        self.assertEqual(self.browser.title, "Vorn phone")

    def test_shows_a_name_with_html_as_text(self):
        mac = Mac(self.open().url)
        mac.ask_for_link("<b>Bold</b> Mac")
        self.wait_for("<b>Bold</b> Mac", "#links")

    def test_says_when_the_service_has_gone(self):
        with Sandbox(PROGRAM) as sandbox:
            self.browser.get(sandbox.url)
            self.wait_for("Connected to the sandbox")
        self.wait_for("The sandbox does not answer")
        self.browser.get("about:blank")

    def test_suits_light_and_dark_with_enough_contrast(self):
        mac = self.link(Mac(self.open("--review", "manual").url))
        mac.upload(archive_of([message(1, "Hello", True)]))
        mac.ask_for_link("Second Mac")
        self.named("Approve upload 1 of Sam Rivera")
        self.named("Scan code of Second Mac")
        grounds = set()
        for scheme in ("light", "dark"):
            self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                         {"features": [{"name": "prefers-color-scheme", "value": scheme}]})
            grounds.add(self.browser.execute_script("return getComputedStyle(document.body).backgroundColor"))
            for text, ratio in self.browser.execute_script(CONTRASTS):
                with self.subTest(scheme=scheme, text=text):
                    self.assertGreaterEqual(ratio, 4.5)
        self.assertEqual(len(grounds), 2)

    def test_gives_every_control_a_name(self):
        mac = self.link(Mac(self.open("--review", "manual").url))
        mac.upload(archive_of([message(1, "Hello", True)]))
        self.named("Approve upload 1 of Sam Rivera")
        self.browser.find_element(By.TAG_NAME, "summary").click()
        controls = [item for item in self.browser.find_elements(By.CSS_SELECTOR, "button, input, select, progress")
                    if item.is_displayed()]
        self.assertGreater(len(controls), 5)
        for control in controls:
            self.assertTrue(control.accessible_name, control.get_attribute("outerHTML"))


# What the service sends to a page that connects now.
FIRST_VIEW = """
const done = arguments[arguments.length - 1];
const events = new EventSource("/phone/events");
events.onmessage = (event) => { events.close(); done(JSON.parse(event.data)); };
"""

# Each shown text's contrast with the nearest painted background (WCAG 2.2, 1.4.3).
CONTRASTS = """
const parse = (color) => color.match(/[\\d.]+/g).map(Number);
const light = (rgb) => rgb.slice(0, 3).map((part) => part / 255)
  .map((part) => part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4)
  .reduce((sum, part, at) => sum + part * [0.2126, 0.7152, 0.0722][at], 0);
const ground = (element) => {
  for (; element; element = element.parentElement) {
    const color = parse(getComputedStyle(element).backgroundColor);
    if (color.length < 4 || color[3] > 0) return color;
  }
  return [255, 255, 255];
};
return [...document.querySelectorAll("main *")]
  .filter((item) => item.checkVisibility() && [...item.childNodes].some((node) => node.nodeType === 3 && node.data.trim()))
  .map((item) => {
    const [low, high] = [light(parse(getComputedStyle(item).color)), light(ground(item))].sort((a, b) => a - b);
    return [item.textContent.trim().slice(0, 30), (high + 0.05) / (low + 0.05)];
  });
"""

if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main(verbosity=2)
