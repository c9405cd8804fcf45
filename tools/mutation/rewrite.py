"""Writes a source anew so that it holds all of its mutants, and remembers which part of the result is which site's."""

# Of sites with the same extent the first of these goes around the others.
OUTER_FIRST = ["kept", "call", "return", "condition", "logic", "comparison", "arithmetic", "string", "constant", "number"]


class Rewritten:
    """The text with the sites of one file compiled in; `ids` gives every site its mutants' numbers."""

    def __init__(self, text, sites, ids, head):
        points = []
        for order, site in enumerate(sorted(sites, key=lambda s: OUTER_FIRST.index(s.kind))):
            numbers = ids(site)
            points.append(((site.start, 1, -site.end, order), site.start, site.start,
                           site.prefix.format(*numbers).encode(), ("open", site)))
            points.append(((site.end, 0, -site.start, -order), site.end, site.end,
                           site.suffix.format(*numbers).encode(), ("close", site)))
            if site.operator:
                first, last, word = site.operator
                # Behind everything that opens or closes at the same place.
                points.append(((first, 2, 0, 0), first, last, word.format(*numbers).encode(), None))
        points.sort(key=lambda p: p[0])
        parts, size, position = [head], len(head), 0
        opened = {}
        self._ranges = []
        for _, start, end, replacement, mark in points:
            piece = text[position:start]
            begin = size + len(piece)
            parts += [piece, replacement]
            size = begin + len(replacement)
            position = max(position, end)
            if mark and mark[0] == "open":
                opened[id(mark[1])] = begin
            elif mark:
                self._ranges.append((opened[id(mark[1])], size, mark[1]))
        parts.append(text[position:])
        self.text = b"".join(parts)
        self._lines = [0]
        for index, byte in enumerate(self.text):
            if byte == 10:
                self._lines.append(index + 1)

    def site_at(self, line, column):
        """The innermost site around a place that a compiler named, counted in bytes from 1; None for other text."""
        offset = self._lines[line - 1] + column - 1
        around = [r for r in self._ranges if r[0] <= offset < r[1]]
        return min(around, key=lambda r: r[1] - r[0])[2] if around else None
