"""Pictures of the screen: where they differ, and where there is text."""

import re
import subprocess


class Picture:
    """A grey picture in memory, and the PNG file that it came from."""

    def __init__(self, path):
        self.path = path
        size = subprocess.run(["identify", "-format", "%w %h", str(path)], capture_output=True,
                              text=True, check=True).stdout
        self.width, self.height = map(int, size.split())
        self._grey = subprocess.run(
            ["convert", str(path), "-alpha", "off", "-depth", "8", "gray:-"],
            capture_output=True, check=True).stdout

    def row(self, y, left=0, right=None):
        start = y * self.width
        return self._grey[start + left:start + (self.width if right is None else right)]

    def grey(self, x, y):
        """From 0, black, to 255."""
        return self._grey[y * self.width + x]

    def crop(self, box, path, scale=1):
        """Writes a part of it as a PNG of its own."""
        x, y, width, height = box
        subprocess.run(
            ["convert", str(self.path), "-crop", f"{width}x{height}+{x}+{y}", "+repage",
             "-filter", "point", "-resize", f"{scale * 100}%", str(path)], check=True)

    def difference(self, other, area=None):
        """The box (x, y, width, height) around all pixels that differ, within `area`; or None."""
        left, top, width, height = area or (0, 0, self.width, self.height)
        right, bottom = min(left + width, self.width), min(top + height, self.height)
        rows, columns = [], []
        for y in range(top, bottom):
            one, two = self.row(y, left, right), other.row(y, left, right)
            if one == two:
                continue
            changed = [x for x in range(right - left) if one[x] != two[x]]
            rows.append(y)
            columns += [left + changed[0], left + changed[-1]]
        if not rows:
            return None
        return (min(columns), rows[0], max(columns) - min(columns) + 1, rows[-1] - rows[0] + 1)

    def box_of(self, greys):
        """The box around all rows of at least 30 pixels of only these greys; None without any."""
        wanted = re.compile(b"[" + re.escape(bytes(greys)) + b"]{30,}")
        found = [(y, run.start(), run.end()) for y in range(self.height)
                 for run in wanted.finditer(self.row(y))]
        if not found:
            return None
        top, bottom = found[0][0], found[-1][0]
        left, right = min(run[1] for run in found), max(run[2] for run in found)
        return (left, top, right - left, bottom - top + 1)

    def text_lines(self, box):
        """The (top, bottom) of each line of text in a box with one background to each line."""
        x, y, width, height = box
        sharp, fewest, gap, lowest, frame = 40, 4, 2, 5, 4
        with_text = []
        for row in range(y + frame, y + height - frame):
            pixels = self.row(row, x + frame, x + width - frame)
            edges = sum(abs(a - b) > sharp for a, b in zip(pixels, pixels[1:]))
            if edges >= fewest:
                with_text.append(row)
        lines = []
        for row in with_text:
            if lines and row - lines[-1][1] <= gap + 1:
                lines[-1][1] = row
            else:
                lines.append([row, row])
        return [(top, bottom) for top, bottom in lines if bottom - top + 1 >= lowest]
