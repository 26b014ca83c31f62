"""Another program can read the code off the screen, in each theme and at each scale."""
import itertools

import scenario
from scenario import LINK, Scenario


BACKGROUNDS = {"light": "#ffffff", "dark": "#0e0f10"}


class CodeOnScreen(Scenario):
    screen = (2560, 1600)

    def test_is_read_in_each_theme_and_at_each_scale(self):
        service = self.start_service()
        codes = set()
        for theme, scale in itertools.product(BACKGROUNDS, (1, 1.5, 2)):
            with self.subTest(theme=theme, scale=scale):
                window = self.start_vorn(service, "-VornAppearance", theme,
                                         environment={"QT_SCALE_FACTOR": str(scale)})
                window.wait_for_screen(LINK)
                code = self.phone.read_code(window)
                self.assertNotIn(code, codes)
                codes.add(code)
                self.check_window(BACKGROUNDS[theme], scale)
                self.phone.scan(code)
                window.wait_for("Scanned. Confirm Link this Mac on your phone.")
                self.assertEqual(self.vorn.close(), 0)

    def check_window(self, background, scale):
        picture = self.desktop.picture()
        left, top, width, height = picture.window()
        self.assertEqual((width, height), (1180 * scale, 760 * scale))
        self.assertEqual(picture.colour(left + 5, top + 5), background)


if __name__ == "__main__":
    scenario.main()
