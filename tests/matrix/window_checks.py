"""How the widget's window behaves under a window manager."""

import time
from contextlib import contextmanager

from outcome import Outcome
from screen import Area
from waiting import steady, wait_until

FULL, COMPACT = (250, 320), (216, 76)
INSET = 24
COMPACT_BUTTON, FULL_BUTTON = (105, 293), (91, 38)
CARD = (125, 30)  # a place of the widget with nothing but the card
DRAG = (-413, 207)


class WindowChecks:
    """One run: the checks build on one another, in the order of `all()`."""

    def __init__(self, screen, program):
        self.screen, self.program = screen, program
        self.other = None  # an ordinary window, and what is seen of its focus
        self.watch = None

    def all(self):
        self.other = self.screen.open_window("other", 150, 300)
        self.watch = self.screen.watch_focus(self.other)
        time.sleep(0.5)
        yield "first place: 24 px from the corner of the work area", self.first_place
        yield "comes onto the screen as", self.kind_of_window
        yield "no focus taken: start", self.focus_at_start
        yield "no focus taken: click", self.focus_at_click
        yield "clicks do not move it", self.clicks_do_not_move_it
        yield "no focus taken: drag", self.focus_at_drag
        yield "dragged exactly", self.dragged_exactly
        if hasattr(self.screen, "finger"):
            yield "dragged exactly by a finger", self.dragged_by_a_finger
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
        return self.screen.widget()

    def area(self):
        widget = self.widget()
        area = widget and self.screen.area(widget)
        if not area:
            raise RuntimeError("the widget is not on the screen")
        return area

    def settled_area(self):
        wait_until(self.widget)
        return steady(self.area, 0.7)

    def shows_card(self, name):
        """Whether the dark card is what the screen shows where the widget was seen last."""
        area = self.shown_again
        picture = self.screen.picture(name)
        return picture.grey(area.x + CARD[0], area.y + CARD[1]) < 110

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
        keys = self.screen.has_keyboard(self.other)
        if losses or active != self.other or not keys:
            answer.append(f"the focus went {losses} times, and is with {self.describe(active)}; "
                          f"keys arrive in the other window: {keys}")

    def describe(self, window):
        return {self.other: "the other window", self.widget(): "the widget",
                None: "no window", 0: "no window"}.get(window, f"window {window}")

    # --- the checks -------------------------------------------------------------------------

    def first_place(self):
        self.start_answer = []
        with self.focus_kept(self.start_answer):
            self.program.start()
            area = self.settled_area()
        work = self.screen.work_area()
        expected = Area(work.x + work.width - FULL[0] - INSET, work.y + INSET, *FULL)
        self.screen.picture("1-first-place")
        return Outcome.of(area == expected, f"at {area}, expected {expected}")

    def kind_of_window(self):
        return Outcome(self.screen.kind_of(self.widget()))

    def focus_at_start(self):
        return Outcome.of(not self.start_answer, *self.start_answer)

    def focus_at_click(self):
        answer = []
        self.before_clicks = area = self.settled_area()
        with self.focus_kept(answer):
            # Whether a click takes it may be a matter of a millisecond.
            for _ in range(8):
                self.screen.click(*area.center)
                self.screen.click(area.x + 45, area.y + 240)
                time.sleep(0.2)
        return Outcome.of(not answer, *answer)

    def clicks_do_not_move_it(self):
        after = self.settled_area()
        return Outcome.of(after == self.before_clicks, f"at {after} after {self.before_clicks}")

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

    def dragged_by_a_finger(self):
        finger = self.screen.finger()
        answers = []
        for way in ((300, -100), (-300, 100)):
            before = self.settled_area()
            finger.drag((before.x + 40, before.y + 40), way)
            after = self.settled_area()
            answers.append(tuple(a - b for a, b in zip(after.place, before.place)) == way)
        return Outcome.of(all(answers), f"it came to {after}")

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
        self.upper = self.screen.open_window("upper", area.x - 60, area.y - 10)
        self.screen.raise_window(self.upper)
        time.sleep(0.7)
        return Outcome.of(self.shows_card("3-above"), "the other window covers it")

    def full_screen(self):
        self.screen.activate(self.upper)
        if not self.screen.make_full_screen(self.upper, True):
            return Outcome.not_run("the other window did not become full-screen")
        time.sleep(1)
        shown = self.shows_card("4-full-screen")
        self.screen.make_full_screen(self.upper, False)
        time.sleep(1)
        return Outcome.of(shown, "the full-screen window covers it")

    def all_desktops(self):
        if not self.screen.has_desktops:
            return Outcome("–", "there is one desktop only")
        if not self.screen.go_to_desktop(1):
            return Outcome.not_run("there is no second desktop")
        time.sleep(1)
        shown = self.shows_card("5-second-desktop")
        self.screen.go_to_desktop(0)
        time.sleep(0.5)
        return Outcome.of(shown, "not seen on the second desktop")

    def focus_at_change_of_desktop(self):
        if not self.screen.has_desktops:
            return Outcome("–", "there is one desktop only")
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
        time.sleep(1)
        active = self.screen.active()
        return Outcome.of(active == self.other, f"the focus is with {self.describe(active)}")

    def out_of_task_bar(self):
        widget = self.widget()
        return Outcome.of(self.screen.is_out_of_task_bar(widget),
                          f"its states: {self.screen.states(widget)}")

    def no_attention(self):
        widget = self.widget()
        demanded = self.screen.demands_attention(widget)
        if demanded is None:
            return Outcome("–", "no protocol there tells")
        return Outcome.of(not demanded, f"its states: {self.screen.states(widget)}")

    def corner_stays(self):
        corners, sizes = set(), []
        for button in (COMPACT_BUTTON, FULL_BUTTON):
            widget, area = self.widget(), self.area()
            self.screen.click(area.x + button[0], area.y + button[1])
            end = time.monotonic() + 1.2
            while time.monotonic() < end:
                area = self.screen.area(widget)
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
        self.screen.ask_for_keyboard(widget, self.program)
        has_it = wait_until(lambda: self.screen.has_keyboard(widget), 3)
        self.screen.keys("Tab", "space")
        paused = wait_until(self.program.is_paused, 3)
        self.screen.picture("7-keyboard")
        self.screen.keys("space")
        resumed = wait_until(lambda: not self.program.is_paused(), 3)
        self.screen.activate(self.other)
        back = wait_until(lambda: self.screen.has_keyboard(self.other), 3)
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
