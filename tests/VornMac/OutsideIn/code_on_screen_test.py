"""The code can be read off the screen by another program, in each theme and on screens of any density."""
import scenario
from scenario import LINK, Scenario


class CodeOnScreen(Scenario):
    screen = (2560, 1600)

    def test_is_read_in_each_theme_and_at_each_scale(self):
        service = self.start_service()
        codes = set()
        for theme, scale in [(theme, scale) for theme in ("light", "dark") for scale in ("1", "1.5", "2")]:
            with self.subTest(theme=theme, scale=scale):
                window = self.start_vorn(service, "-VornAppearance", theme, environment={"QT_SCALE_FACTOR": scale})
                window.wait_for_screen(LINK)
                code = self.phone.read_code(window)
                self.assertNotIn(code, codes)
                codes.add(code)
                self.phone.scan(code)
                window.wait_for("Scanned. Confirm Link this Mac on your phone.")
                self.assertEqual(self.vorn.close(), 0)


if __name__ == "__main__":
    scenario.main()
