"""The text of MultiSelect.ini."""

from selections import SELECTIONS

END = (50, ",".join(f"Tag{i}" for i in range(1, 13)), ",".join(["0"] * 27), "vbTab".join(["Test"] * 10))


def selection_text():
    parts = ["; Selection tables. Data element 1 (counted from 0) identifies an entry.",
             "; The first part of its name is shown.",
             '; Each table ends with the entry named "Test".', ""]
    for selection in SELECTIONS:
        parts += [f"; {selection.about}", f"[{selection.section}]", *_table(selection), ""]
    return "\n".join(parts)


def _table(selection):
    lines = [f"Title={selection.title[0]}", f"ColMax={len(selection.headers)}"]
    for i, (header, width) in enumerate(zip(selection.headers, selection.widths), 1):
        lines += [f"ColHeader{i}={header[0]}", f"ColAlign{i}={_align(selection, i - 1)}", f"ColWidth{i}={width}"]
    lines += ["BackColor=vbWindowBackground", "ForeColor=vbWindowText"]
    for i, (names, data) in enumerate(selection.entries, 1):
        values = (str(i), *data)
        lines += _entry(i, len(values), ",".join(selection.tags), ",".join(values),
                        "vbTab".join(name[0] for name in names))
    return lines + _entry(len(selection.entries) + 1, *END)


def _align(selection, column):
    """Words to the left (0), numbers to the right (1)."""
    return 0 if any(c.isalpha() for names, _ in selection.entries for c in names[column][0]) else 1


def _entry(number, count, tags, data, names):
    return [f"DataCount{number}={count}", f"SetTags{number}={tags}", f"Data{number}={data}", f"Name{number}={names}"]
