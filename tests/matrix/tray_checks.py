"""How the program's item behaves in a tray."""

import time
from dataclasses import dataclass

from bus import Recorder, signals_from
from outcome import Outcome
from waiting import steady, wait_until

# Of the eight lines of the menu that have text a tool tip may cover the first ones: counted from
# the last one, Quit.
FEWEST_LINES = 6
PAUSE_LINE = -6

LEFT, RIGHT = 1, 3
BUTTON_NAMES = {LEFT: "left", RIGHT: "right"}

LOWEST_MENU = 100  # what comes onto the screen and is lower is a tool tip
WIDEST_ITEM = 200
COUNTED = 60  # s


@dataclass
class Menu:
    box: tuple
    lines: list
    picture: object

    def corner(self):
        """The lower right one."""
        return (self.box[0] + self.box[2], self.box[1] + self.box[3])

    def middle_of(self, line):
        top, bottom = self.lines[line]
        return (self.box[0] + min(60, self.box[2] // 2), (top + bottom) // 2)

    def crop_of(self, line):
        top, bottom = self.lines[line]
        left, width = self.box[0], self.box[2]
        return [self.picture.row(y, left, left + width) for y in range(top, bottom + 1)]


class TrayChecks:
    """One run: the checks build on one another, in the order of `all()`."""

    def __init__(self, world, host, screen, program):
        self.world, self.host, self.screen, self.program = world, host, screen, program
        self.empty = None  # the panel without an item
        self.item = None  # where the item is on the screen
        self.first_and_next = []  # menus by the same button

    def all(self):
        yield "item appears", self.appears
        yield "shows the state as", self.shows_state
        for button in (LEFT, RIGHT):
            yield f"menu opens with the {BUTTON_NAMES[button]} button", \
                lambda button=button: self.menu_opens(button)
        yield "the first menu is no smaller than the next one", self.first_menus
        yield "Pause in the menu works", self.pause
        yield "the menu says Resume then, and that works", self.resume
        yield "an open menu is not changed", self.open_menu_is_not_changed
        yield "an open menu is not covered", self.open_menu_is_not_covered
        yield "item comes back after a restart of the tray", self.comes_back
        yield "item appears in a tray that starts later", self.later_tray
        yield "the picture follows the countdown", self.picture_follows
        yield "no icon is announced that is not new", self.no_equal_icons
        yield f"bus traffic in {COUNTED} s of countdown", self.traffic

    # --- what the checks share --------------------------------------------------------------

    def find_item(self, name, seconds=15):
        """Where the item is, once it has come to rest; None without one."""
        wait_until(lambda: self.look_for_item(name), seconds, every=0.5)
        return steady(lambda: self.look_for_item(name), 1.5, within=5)

    def look_for_item(self, name):
        box = self.empty.difference(self.screen.picture(name), self.host.items)
        return box if box and box[2] < WIDEST_ITEM else None

    def start_program(self, *arguments):
        self.program.start(*arguments)
        self.program.act("toggle-widget")
        self.screen.move_to(*self.host.aside)

    def open_menu(self, name, button=None):
        """Clicks the item; None when no menu comes."""
        if not self.item:
            return None
        before = self.screen.picture(f"{name}-before")
        x, y, width, height = self.item
        self.screen.click(x + width // 2, y + height // 2, button or self.host.menu_buttons[0])

        def look():
            # Below the panel; the item itself changes with the countdown.
            return before.difference(self.screen.picture(name), self.host.menus)
        wait_until(lambda: (look() or (0, 0, 0, 0))[3] > LOWEST_MENU, 5)
        box = steady(look, 0.7, within=5)
        before.path.unlink()
        if not box or box[3] <= LOWEST_MENU:
            return None
        picture = self.screen.picture(name)
        return Menu(box, picture.text_lines(box), picture)

    def close_menu(self):
        self.screen.click(*self.host.aside)
        time.sleep(1)

    def described(self, menu):
        if not menu:
            return "no menu came"
        return f"a menu of {len(menu.lines)} lines at {menu.box}"

    def choose_pause(self, name):
        """Opens the menu and clicks its line Pause, or Resume; the menu, or None."""
        menu = self.open_menu(name)
        if not menu or len(menu.lines) < FEWEST_LINES:
            self.close_menu()
            return menu
        x, y = menu.middle_of(PAUSE_LINE)
        self.screen.move_to(x, y - 3)  # a menu may want to see the pointer come
        time.sleep(0.2)
        self.screen.click(x, y)
        time.sleep(0.5)
        self.screen.move_to(*self.host.aside)
        return menu

    # --- the checks -------------------------------------------------------------------------

    def appears(self):
        bare = self.screen.picture("0-bare")
        self.host.start_tray(self.world)
        self.screen.move_to(*self.host.aside)
        self.host.wait_for_panel(
            lambda: bare.difference(self.screen.picture("0-empty"), self.host.items))
        self.empty = steady_picture(self.screen, "0-empty", self.host.items)
        bare.path.unlink()
        self.start_program()
        self.item = self.find_item("1-item")
        return Outcome.of(self.item, "nothing new in the panel")

    def shows_state(self):
        if not self.item:
            return Outcome.not_run("no item")
        x, y, width, height = self.item
        picture = self.screen.picture("1-item")
        picture.crop((max(x - 8, 0), max(y - 6, 0), width + 16, height + 12),
                     picture.path.with_name("item.png"), scale=4)
        return Outcome("text" if width > 1.8 * height else "icon")

    def menu_opens(self, button):
        if button not in self.host.menu_buttons:
            return Outcome("–", self.host.other_button)
        name = f"2-menu-{BUTTON_NAMES[button]}"
        menu = self.open_menu(name, button)
        self.close_menu()
        if menu:
            self.first_and_next.append((menu, self.open_menu(f"{name}-again", button)))
            self.close_menu()
        return Outcome.of(menu and len(menu.lines) >= FEWEST_LINES, self.described(menu))

    def first_menus(self):
        if not self.first_and_next:
            return Outcome.not_run("no menu came")
        # A tool tip may be beside it on the left.
        smaller = [f"{first.box}, then {following.box}" for first, following in self.first_and_next
                   if following and first.corner() != following.corner()]
        return Outcome.of(not smaller, "; ".join(smaller))

    def pause(self):
        self.pause_menu = self.choose_pause("3-pause")
        return Outcome.of(wait_until(self.program.is_paused, 3),
                          f"{self.described(self.pause_menu)}; title {self.program.title()}")

    def resume(self):
        if not self.program.is_paused():
            return Outcome.not_run("it is not paused")
        menu = self.choose_pause("4-resume")
        resumed = wait_until(lambda: not self.program.is_paused(), 3)
        fresh = menu and len(menu.lines) >= FEWEST_LINES and \
            menu.crop_of(PAUSE_LINE) != self.pause_menu.crop_of(PAUSE_LINE)
        return Outcome.of(resumed and fresh,
                          f"{self.described(menu)}; resumed: {resumed}, the line changed: {fresh}")

    def open_menu_is_not_changed(self):
        self.menu = self.open_menu("5-open-menu")
        if not self.menu:
            return Outcome.not_run("no menu came")
        recorder = Recorder(self.world)
        time.sleep(3)
        self.menu.picture = self.screen.picture("5-open-menu")
        time.sleep(3)
        messages = recorder.stop()
        self.menu_later = self.screen.picture("5-open-menu-later")
        self.close_menu()
        signals = signals_from(messages, self.program.bus_names())
        of_menu = {name: count for name, count in signals.items()
                   if name in ("LayoutUpdated", "ItemsPropertiesUpdated")}
        return Outcome.of(not of_menu, f"signals {of_menu}")

    def open_menu_is_not_covered(self):
        if not self.menu:
            return Outcome.not_run("no menu came")
        # A tool tip that has come shows the countdown.
        changed = self.menu.picture.difference(self.menu_later, self.menu.box)
        return Outcome.of(not changed, f"something changes over it at {changed}")

    def comes_back(self):
        self.host.stop_tray(self.world)
        time.sleep(1)
        self.host.start_tray(self.world)
        found = self.find_item("6-tray-restarted")
        return Outcome.of(found, "no item in the new tray")

    def later_tray(self):
        self.program.stop()
        self.host.stop_tray(self.world)
        time.sleep(1)
        self.start_program()
        time.sleep(2)
        self.host.start_tray(self.world)
        found = self.find_item("7-tray-later")
        return Outcome.of(found, "no item in the later tray")

    def picture_follows(self):
        """A phase of ten seconds, with a picture that changes at least every other second."""
        self.program.stop()
        time.sleep(1)
        self.start_program("--demo")
        if not wait_until(lambda: self.look_for_item("8-demo")):
            return Outcome.of(False, "no item")
        looks = [self.screen.picture("8-demo")]
        for _ in range(3):
            time.sleep(1)
            looks.append(self.screen.picture("8-demo-later"))
        changes = sum(a.difference(b, self.host.items) is not None
                      for a, b in zip(looks, looks[1:]))
        return Outcome.of(changes >= 2, f"{changes} changes in 3 s")

    def no_equal_icons(self):
        recorder = Recorder(self.world)
        time.sleep(0.5)
        icons = []
        end = time.monotonic() + 4
        while time.monotonic() < end:
            icons.append(self.program.item_property("IconPixmap"))
        announced = signals_from(recorder.stop(), self.program.bus_names())["NewIcon"]
        changes = sum(a != b for a, b in zip(icons, icons[1:]))
        # Some may have been announced just before the first was read, or after the last.
        return Outcome.of(announced <= changes + 2, f"{announced} signals, {changes} new icons")

    def traffic(self):
        self.program.stop()
        time.sleep(1)
        self.start_program()
        self.find_item("9-counted")
        time.sleep(2)
        names = self.program.bus_names()
        recorder = Recorder(self.world)
        time.sleep(1)
        before = len(recorder.messages())
        time.sleep(COUNTED)
        messages = recorder.stop()[before:]
        own = [m for m in messages if m.sender in names or m.destination in names]
        signals = signals_from(own, names)
        # The menu's texts may be brought up to date once after the start.
        good = (signals["NewTitle"] <= COUNTED + 1 and signals["NewIcon"] <= 2 and
                not signals["LayoutUpdated"] and signals["ItemsPropertiesUpdated"] <= 1)
        amount = f"{len(own)} messages, {sum(m.size for m in own) // 1000} kB"
        seen = ", ".join(f"{count} {name}" for name, count in sorted(signals.items()))
        return Outcome(amount if good else f"**{amount}**", "" if good else f"signals: {seen}")


def steady_picture(screen, name, area):
    """A picture once nothing changes any more in this area of the screen."""
    picture = screen.picture(name)
    unchanged_since = time.monotonic()
    end = unchanged_since + 20
    while time.monotonic() < end and time.monotonic() - unchanged_since < 2:
        time.sleep(0.3)
        now = screen.picture(name)
        if picture.difference(now, area):
            unchanged_since = time.monotonic()
        picture = now
    return picture
