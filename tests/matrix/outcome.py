"""What became of a check."""


class Outcome:
    """`word` goes into the table, `seen` into the notes below it."""

    def __init__(self, word, seen=""):
        self.word = word
        self.seen = seen

    @classmethod
    def of(cls, holds, seen=""):
        return cls("yes", "") if holds else cls("**no**", seen)

    @classmethod
    def not_run(cls, reason):
        return cls("not run", reason)
