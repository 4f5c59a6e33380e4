"""Markdown tables, and the registry of the manual's tables."""

TABLES = {}


def table(name):
    def keep(function):
        TABLES[name] = function
        return function
    return keep


def rows_of(head, rows, widths):
    """A pipe table. Widths are relative; a negative one aligns right."""
    rule = ["-" * abs(w) + (":" if w < 0 else "-") for w in widths]
    lines = [head, rule, *rows]
    return "\n".join("| " + " | ".join(str(cell) for cell in line) + " |" for line in lines)
