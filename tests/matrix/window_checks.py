"""How the widget's window behaves under a window manager."""

import time
from contextlib import contextmanager

from outcome import Outcome
from screen import Area, FocusWatch
from waiting import steady, wait_until

FULL, COMPACT = (250, 320), (216, 76)
INSET = 24
COMPACT_BUTTON, FULL_BUTTON = (105, 293), (91, 38)
CARD = (125, 30)  # a place of the widget with nothing but the card
DRAG = (-413, 207)


class WindowChecks:
    """One run: the checks build on one another, in the order of `all()`."""

    def __init__(self, world, screen, program):
        self.world, self.screen, self.program = world, screen, program
        self.other = None
        self.watch = None

    def all(self):
        yield "first place: 24 px from the corner of the work area", self.first_place
        yield "no focus taken: start", self.focus_at_start
        yield "no focus taken: click", self.focus_at_click
        yield "no focus taken: drag", self.focus_at_drag
        yield "dragged exactly", self.dragged_exactly
        yield "no focus taken: hide and show", self.focus_at_hide_and_show
        yield "same place after hide and show", self.place_after_hide_and_show
        yield "above a window that is raised", self.above
        yield "beside a full-screen window", self.full_screen
        yield "on all desktops", self.all_desktops
        yield "no focus taken: change of desktop and back", self.focus_at_change_of_desktop
        yield "no focus taken: another window closes", self.focus_at_close
        yield "out of task bar and pager", self.out_of_task_bar
        yield "demands no attention", self.no_attention
        yield "corner stays: full to compact to full", self.corner_stays
        yield "keyboard when asked for", self.keyboard
        yield "same place after a restart", self.place_after_restart

    # --- what the checks share --------------------------------------------------------------

    def widget(self):
        return self.screen.shown("Vantora", FULL[0])

    def area(self):
        window = self.widget()
        return self.screen.area(window) if window else None

    def settled_area(self):
        wait_until(self.widget)
        return steady(self.area, 0.7)

    def shows_card(self, name):
        """Whether the dark card is what the screen shows at the widget's place."""
        area = self.area()
        picture = self.screen.picture(name)
        return bool(area) and picture.grey(area.x + CARD[0], area.y + CARD[1]) < 110

    def hide(self):
        self.program.act("toggle-widget")
        wait_until(lambda: not self.widget())

    def show(self):
        self.program.act("toggle-widget")
        wait_until(self.widget)

    @contextmanager
    def focus_kept(self, answer):
        """Appends to `answer` what was seen of the focus of the other window meanwhile."""
        self.screen.activate(self.other)
        before = self.watch.losses()
        yield
        time.sleep(1)  # what takes the focus may do so late
        losses = self.watch.losses() - before
        active = self.screen.active()
        if losses or active != self.other:
            answer.append(f"the focus went {losses} times, and is with {self.describe(active)}")

    def describe(self, window):
        return {self.other: "the other window", self.widget(): "the widget"}.get(
            window, f"window {window:#x}")

    # --- the checks -------------------------------------------------------------------------

    def first_place(self):
        self.other = self.screen.open_window("other", "60x15+150+300")
        self.watch = FocusWatch(self.world, self.other)
        time.sleep(0.5)
        self.start_answer = []
        with self.focus_kept(self.start_answer):
            self.program.start()
            area = self.settled_area()
        work = self.screen.numbers("_NET_WORKAREA")[:4]
        expected = Area(work[0] + work[2] - FULL[0] - INSET, work[1] + INSET, *FULL)
        self.screen.picture("1-first-place")
        return Outcome.of(area == expected, f"at {area}, expected {expected}")

    def focus_at_start(self):
        return Outcome.of(not self.start_answer, *self.start_answer)

    def focus_at_click(self):
        answer = []
        with self.focus_kept(answer):
            area = self.area()
            # Whether a click takes it may be a matter of a millisecond.
            for _ in range(8):
                self.screen.click(*area.center)
                self.screen.click(area.x + 45, area.y + 240)
                time.sleep(0.2)
        return Outcome.of(not answer, *answer)

    def focus_at_drag(self):
        answer = []
        self.before_drag = self.area()
        with self.focus_kept(answer):
            self.screen.drag((self.before_drag.x + 40, self.before_drag.y + 40), DRAG)
            self.dragged_to = self.settled_area()
        self.screen.picture("2-dragged")
        return Outcome.of(not answer, *answer)

    def dragged_exactly(self):
        way = tuple(a - b for a, b in zip(self.dragged_to.place, self.before_drag.place))
        return Outcome.of(way == DRAG, f"moved by {way} instead of {DRAG}")

    def focus_at_hide_and_show(self):
        answer = []
        with self.focus_kept(answer):
            self.hide()
            hidden = not self.widget()
            self.show()
            self.shown_again = self.settled_area()
        if not hidden:
            answer.append("it did not hide")
        return Outcome.of(not answer, *answer)

    def place_after_hide_and_show(self):
        return Outcome.of(self.shown_again == self.dragged_to,
                          f"at {self.shown_again} instead of {self.dragged_to}")

    def above(self):
        area = self.area()
        self.upper = self.screen.open_window("upper", f"60x30+{area.x - 60}+{area.y - 10}")
        self.screen.raise_window(self.upper)
        time.sleep(0.7)
        top = self.screen.stack()[-1]
        shown = self.shows_card("3-above")
        return Outcome.of(shown and top == self.widget(),
                          f"card shown: {shown}, on top: {self.describe(top)}")

    def full_screen(self):
        self.screen.activate(self.upper)
        self.screen.set_state(self.upper, "add", "fullscreen")
        wait_until(lambda: self.screen.area(self.upper).place == (0, 0))
        time.sleep(1)
        area, shown = self.screen.area(self.upper), self.shows_card("4-full-screen")
        self.screen.set_state(self.upper, "remove", "fullscreen")
        time.sleep(1)
        if area.place != (0, 0):
            return Outcome.not_run(f"the other window did not become full-screen: {area}")
        return Outcome.of(shown, "the full-screen window covers it")

    def all_desktops(self):
        if not self.screen.go_to_desktop(1):
            return Outcome.not_run("there is no second desktop")
        time.sleep(1)
        shown = self.shows_card("5-second-desktop")
        self.screen.go_to_desktop(0)
        time.sleep(0.5)
        return Outcome.of(shown, "not seen on the second desktop")

    def focus_at_change_of_desktop(self):
        if not self.screen.go_to_desktop(0):
            return Outcome.not_run("there is no second desktop")
        self.screen.activate(self.other)
        self.screen.go_to_desktop(1)
        time.sleep(1)
        there = self.screen.active()
        self.screen.go_to_desktop(0)
        time.sleep(1)
        back = self.screen.active()
        return Outcome.of(
            there != self.widget() and back == self.other,
            f"the focus is with {self.describe(there)} there, and {self.describe(back)} back here")

    def focus_at_close(self):
        self.screen.activate(self.other)
        self.screen.activate(self.upper)
        self.screen.close(self.upper)
        wait_until(lambda: self.upper not in self.screen.stack())
        time.sleep(1)
        active = self.screen.active()
        return Outcome.of(active == self.other, f"the focus is with {self.describe(active)}")

    def out_of_task_bar(self):
        states = self.screen.states(self.widget())
        return Outcome.of({"SKIP_TASKBAR", "SKIP_PAGER"} <= states, f"its states: {states}")

    def no_attention(self):
        states = self.screen.states(self.widget())
        return Outcome.of("DEMANDS_ATTENTION" not in states, f"its states: {states}")

    def corner_stays(self):
        corners, sizes = set(), []
        for button in (COMPACT_BUTTON, FULL_BUTTON):
            area = self.area()
            self.screen.click(area.x + button[0], area.y + button[1])
            end = time.monotonic() + 1.2
            while time.monotonic() < end:
                area = self.area()
                if area:
                    corners.add(area.place)
            sizes.append((area.width, area.height) if area else None)
            self.screen.picture(f"6-toggled-{len(sizes)}")
        self.screen.move_to(5, 790)
        return Outcome.of(len(corners) == 1 and sizes == [COMPACT, FULL],
                          f"corners {sorted(corners)}, sizes {sizes}")

    def keyboard(self):
        widget = self.widget()
        self.screen.activate(self.other)
        self.screen.activate(widget)
        has_it = wait_until(lambda: self.screen.focused() == widget, 3)
        self.screen.key("Tab")
        self.screen.key("space")
        paused = wait_until(self.program.is_paused, 3)
        self.screen.picture("7-keyboard")
        self.screen.key("space")
        resumed = wait_until(lambda: not self.program.is_paused(), 3)
        self.screen.activate(self.other)
        back = wait_until(lambda: self.screen.focused() == self.other, 3)
        return Outcome.of(
            has_it and paused and resumed and back,
            f"focus: {has_it}, Tab and Space pause: {paused}, go on: {resumed}, given back: {back}")

    def place_after_restart(self):
        before = self.area()
        time.sleep(1)
        self.program.stop()
        self.program.start()
        after = self.settled_area()
        self.screen.picture("8-restarted")
        return Outcome.of(after == before, f"at {after} instead of {before}")
