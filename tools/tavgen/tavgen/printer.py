"""A small printer for C++: named substitutions and indentation scopes.

    p = Printer(X="ItemIntf")
    with p.scope("class $X {", "};"):
        p("int f();")
    p.text()  ->  "class ItemIntf {\n    int f();\n};\n"

`$name` (or `${name}`) stands for a named value; C++ braces need no escaping. Lines are
indented by the scopes they stand in, so bodies are written at their own depth.
"""

from __future__ import annotations

import string
from contextlib import contextmanager
from typing import List


class Printer:
    def __init__(self, **names):
        self.names = names
        self.lines: List[str] = []
        self.depth = 0

    def __call__(self, text: str = "", **more) -> "Printer":
        """Adds each line of `text`, its names filled in, at the current depth."""
        names = {**self.names, **more}
        for line in (text.split("\n") if text else [""]):
            line = string.Template(line).substitute(names)
            self.lines.append("    " * self.depth + line if line.strip() else "")
        return self

    def each(self, lines) -> "Printer":
        """Adds lines already written, at the current depth, without substitution."""
        for line in lines:
            self.lines.append("    " * self.depth + line if line.strip() else "")
        return self

    @contextmanager
    def scope(self, opening: str, closing: str = "}", **more):
        """`opening`, the lines added inside one level deeper, then `closing`."""
        self(opening, **more)
        self.depth += 1
        try:
            yield self
        finally:
            self.depth -= 1
            self(closing, **more)

    def text(self) -> str:
        return "\n".join(self.lines) + "\n"
