"""How a user's hand works the pointer, whatever moves it here."""

import time

from world import SCREEN


class Hand:
    """Screens that say how the pointer comes to a place and how its buttons go down and up."""

    _place = (SCREEN[0] // 2, SCREEN[1] // 2)  # where X servers have it at first

    def point_at(self, x, y):
        raise NotImplementedError

    def press(self, button):
        raise NotImplementedError

    def release(self, button):
        raise NotImplementedError

    def _steps(self, start, way, count):
        for step in range(1, count + 1):
            self._place = tuple(s + round(w * step / count) for s, w in zip(start, way))
            self.point_at(*self._place)

    def move_to(self, x, y):
        """In steps: Qt 6.8 ignores a second click at one place after hardly a motion."""
        way = tuple(to - of for to, of in zip((x, y), self._place))
        self._steps(self._place, way, 8)

    def click(self, x, y, button=1):
        self.move_to(x, y)
        time.sleep(0.15)
        self.press(button)
        time.sleep(0.05)
        self.release(button)

    def drag(self, start, way, steps=15):
        self.move_to(*start)
        self.press(1)
        time.sleep(0.1)
        self._steps(start, way, steps)
        time.sleep(0.1)
        self.release(1)
