"""The window of a program as a screen reader sees it: names, roles and states, and the actions it offers."""
import dataclasses
import re
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

HEADING, CHECK_BOX = "heading", "check box"
BUTTONS = {"push button", "push button menu", "menu item"}  # Qt 6.4 calls all of them push buttons
STEP = re.compile(r"Step \d of 6")
KEY_CODES = {"Control": 37, "w": 25}  # of Xvfb's keyboard


@dataclasses.dataclass(frozen=True)
class Item:
    name: str
    role: str
    description: str
    states: frozenset
    accessible: Atspi.Accessible = dataclasses.field(repr=False, compare=False)

    def is_(self, state):
        return state in self.states


def can_be_pressed(item):
    """Qt 6.4 does not report disabled buttons, but those take no focus."""
    return item.is_("focusable")


class AccessibleWindow:
    """The one window of the process `pid`, which may still be starting. Waits for at most `patience` seconds."""

    def __init__(self, pid, patience):
        self._pid = pid
        self._patience = patience
        Atspi.init()
        # The cache is updated by events, which nothing here receives.
        Atspi.get_desktop(0).set_cache_mask(Atspi.Cache.NONE)

    def wait_until(self, look, what):
        """Returns the result of `look` as soon as that is true."""
        end = time.monotonic() + self._patience
        while True:
            try:
                found = look()
            except GLib.Error:
                found = None  # an item that is about to go, or a program that has not started yet
            if found:
                return found
            if time.monotonic() > end:
                raise AssertionError(f"timed out waiting for {what}; the window shows:\n{self.described()}")
            time.sleep(0.02)

    def wait_for(self, name, roles=()):
        """The item of this name, and of one of these roles if any are given, once it is shown."""
        return self.wait_until(lambda: self._find(name, roles), f"{' or '.join(roles) or 'an item'} {name!r}")

    def wait_for_screen(self, title):
        """Waits until the screen with this title is the only one: during a fade there are two."""
        def look():
            items = self.items()
            steps = [item for item in items if STEP.fullmatch(item.name)]
            return len(steps) == 1 and any(item.name == title and item.role == HEADING for item in items)
        self.wait_until(look, f"the screen {title!r}")

    def press(self, name):
        """Presses the button once it is enabled."""
        def look():
            button = self._find(name, BUTTONS)
            return button if button and can_be_pressed(button) else None
        self._act(self.wait_until(look, f"a button {name!r} that can be pressed"), "Press")

    def press_until_shown(self, name, shown):
        """Presses the button `name` whenever it is shown, until `shown` is. Returns the number of presses."""
        presses = 0

        def look():
            nonlocal presses
            if self.shows(shown):
                return True
            if button := self._find(name, BUTTONS):
                self._act(button, "Press")
                presses += 1
            return False
        self.wait_until(look, repr(shown))
        return presses

    def try_to_press(self, name):
        """Presses the button even if it is disabled."""
        self._act(self.wait_for(name, BUTTONS), "Press")

    def toggle(self, name):
        self._act(self.wait_for(name, {CHECK_BOX}), "Toggle")

    def is_checked(self, name):
        return self.wait_for(name, {CHECK_BOX}).is_("checked")

    def is_enabled(self, name):
        return can_be_pressed(self.wait_for(name, BUTTONS))

    def shows(self, name):
        return any(item.name == name for item in self.items())

    def names(self):
        """The spoken texts, from the top."""
        return [item.name for item in self.items() if item.name]

    def described(self):
        try:
            return "\n".join(f"  {item.role}: {item.name} {item.description}".rstrip() for item in self.items())
        except GLib.Error as error:
            return f"  nothing: {error.message}"

    def press_keys(self, key, held=None):
        """Presses a key of the keyboard, while `held` is held if it is given. Keys are named as in X."""
        send = Atspi.generate_keyboard_event
        if held:
            send(KEY_CODES[held], None, Atspi.KeySynthType.PRESS)
        send(KEY_CODES[key], None, Atspi.KeySynthType.PRESSRELEASE)
        if held:
            send(KEY_CODES[held], None, Atspi.KeySynthType.RELEASE)

    def items(self):
        """The shown items, from the window's top; read again if one disappears meanwhile."""
        end = time.monotonic() + self._patience
        while True:
            try:
                application = self._application()
                return [] if application is None else list(self._below(application))
            except GLib.Error:
                if time.monotonic() > end:
                    raise

    def _application(self):
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application is not None and application.get_process_id() == self._pid:
                return application
        return None

    def _below(self, parent):
        for index in range(parent.get_child_count()):
            child = parent.get_child_at_index(index)
            if child is None:
                continue
            states = child.get_state_set()
            if not states.contains(Atspi.StateType.SHOWING):
                continue
            yield Item(child.get_name(), child.get_role_name(), child.get_description(),
                       frozenset(state.value_nick for state in states.get_states()), child)
            yield from self._below(child)

    def _find(self, name, roles):
        return next((item for item in self.items() if item.name == name and (not roles or item.role in roles)), None)

    @staticmethod
    def _act(item, action):
        accessible = item.accessible
        for index in range(accessible.get_n_actions()):
            if accessible.get_action_name(index) == action:
                accessible.do_action(index)
                return
        raise AssertionError(f"{item} offers no {action}")
