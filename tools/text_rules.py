"""What the texts that a user reads must not have: words that docs/terms.md rules out, texts without a translation,
placeholders without a name, one mnemonic twice, captions that are too long. Each rule yields its findings as lines.
"""

import html
import re
from collections import defaultdict
from dataclasses import dataclass

from texts import width

ENGLISH, JAPANESE = 0, 1
TERM_HEADING = ("English", "Japanese", "used for", "not (English)", "not (Japanese)")
EXCEPTION_HEADING = ("word", "in this text", "why")

# Equal in both languages, and right.
SAME_IN_BOTH = {"Vorlant"}
WORD = re.compile(r"(?<![\w%])[A-Z]?[a-z]{3,}")

# Half-width characters that a caption may have, by the kind of its control: by that the forms stay within 1024 pixels.
ROOM = {"button": 26, "tool button": 12, "tab": 14, "menu": 30, "check box": 48, "choice": 42, "label": 26, "group": 28}
KIND = (("tlbMain", "tool button"), ("Command", "button"), ("cmd", "button"), ("SSTab", "tab"), ("mnu", "menu"),
        ("Check", "check box"), ("Option", "choice"), ("Label", "label"), ("Frame", "group"))
ON_ITS_OWN = {"frmProgbar-Label1-0"}  # has the whole width of its window

# Controls of the options by tab: what is on another tab is not in the way.
TAB_OF = {"Check1-6": 0, "Check1-9": 0, "Check1-11": 0,
          "Check1-0": 1, "Check1-1": 1, "Check1-2": 1, "Check1-7": 1, "Check1-8": 1, "Check1-10": 1,
          "Check1-3": 2, "Check1-4": 2, "Check1-5": 2, "Command2-0": 2}
MENU_OF = {"mnuFile": "FileMenu", "RecentMenu": "FileMenu", "mnuRecent": "RecentMenu", "mnuEdit": "EditMenu", "mnuView": "ViewMenu",
           "mnuKX": "KXMenu", "mnuOption": "OptionMenu", "mnuHelp": "HelpMenu"}


@dataclass(frozen=True)
class Text:
    place: str  # for a finding: a file, or a key
    language: int
    text: str


@dataclass(frozen=True)
class Ruled:
    """A word that is not said, and what is said in its place."""
    word: str
    instead: str
    language: int

    def pattern(self):
        if self.language == JAPANESE:
            return re.compile(r"\s*".join(map(re.escape, self.word)))
        return re.compile(rf"(?<![\w-]){re.escape(self.word)}(?![\w-])".replace(r"\ ", r"\s+"), re.IGNORECASE)


class Terms:
    """docs/terms.md: the pairs of terms, the words that are ruled out, and where one of those is right."""

    def __init__(self, markdown):
        rows = list(_table(markdown, TERM_HEADING))
        self.pairs = {(row[ENGLISH], row[JAPANESE]) for row in rows}
        self._ruled = [Ruled(word.strip(), row[language], language) for row in rows for language in (ENGLISH, JAPANESE)
                       for word in row[3 + language].split(",") if word.strip() != "-"]
        self._allowed = [row[1] for row in _table(markdown, EXCEPTION_HEADING)]

    def faults(self, text):
        rest = without(self._allowed, text.text)
        for ruled in self._ruled:
            if ruled.language == text.language:
                for found in ruled.pattern().finditer(without([ruled.instead], rest)):
                    line = f":{rest.count(chr(10), 0, found.start()) + 1}" if "\n" in rest else ""
                    yield f'{text.place}{line}: "{" ".join(found.group().split())}", say "{ruled.instead}"'


def without(words, text):
    """As long as the text."""
    for word in words:
        text = text.replace(word, " " * len(word))
    return text


def _table(markdown, heading):
    """The cells of the rows below this heading; a row of another length is an error."""
    lines = iter(markdown.splitlines())
    for line in lines:
        if _cells(line) == list(heading):
            break
    next(lines)
    for line in lines:
        if not line.startswith("|"):
            return
        cells = _cells(line)
        if len(cells) != len(heading) or not all(cells):
            raise ValueError(f"not a row of {len(heading)} cells: {line}")
        yield cells


def _cells(line):
    return [cell.strip() for cell in line.strip("|").split("|")]


def prose_of_page(page):
    """Without what is typed or printed as it stands; the lines stay."""
    for element in ("pre", "code", "kbd"):
        page = re.sub(rf"<{element}\b.*?</{element}>", _blank, page, flags=re.DOTALL)
    return html.unescape(re.sub(r"<[^>]*>", "", page))


def prose_of_markdown(text):
    text = re.sub(r"`[^`]*`", _blank, text)
    return re.sub(r"^ {4}.*$", "", text, flags=re.MULTILINE)


def prose_of_man_page(text):
    """Without names of options, commands and files."""
    return re.sub(r"^\.(?:It )?(?:Fl|Cm|Ar|Pa|Ev|Nm|Dl|D1)\b.*$", "", text, flags=re.MULTILINE)


def _blank(match):
    return "x" + "\n" * match.group().count("\n")


def untranslated(pairs):
    for english, japanese in pairs:
        if english == japanese and english not in SAME_IN_BOTH and WORD.search(english):
            yield f'no translation: "{english}"'


def unnamed_placeholders(place, page):
    """A placeholder of a message is a word in <var>."""
    for found in re.finditer(r"<var>(%?\d+)</var>|%\d", prose_with_variables(page)):
        yield f"{place}:{page.count(chr(10), 0, found.start()) + 1}: a placeholder without a name: {found.group()}"


def prose_with_variables(page):
    """As long as the page."""
    return re.sub(r"<(pre|code)\b.*?</\1>", lambda m: re.sub(r"[^\n]", " ", m.group()), page, flags=re.DOTALL)


def unknown_terms(place, page, language, pairs):
    """The glossary has the terms of docs/terms.md, in each language its own first."""
    for found in re.findall(r'<tr><td id="g-[^"]*">(.*?)</td><td>(.*?)</td>', page):
        if (found if language == ENGLISH else found[::-1]) not in pairs:
            yield f"{place}: not a pair of docs/terms.md: {found[0]}, {found[1]}"


def repeated_mnemonics(captions):
    """captions: (key, English, Japanese) of all forms."""
    for language in (ENGLISH, JAPANESE):
        used = defaultdict(list)
        for key, *texts in captions:
            if letter := re.search(r"&([^&\s])", texts[language].replace("&&", "")):
                used[_surface(key), letter.group(1).upper()].append(key)
        for (surface, letter), keys in used.items():
            if len(keys) > 1:
                yield f"{('English', 'Japanese')[language]}, {surface}: Alt+{letter} twice: {', '.join(keys)}"


def _surface(key):
    """What is on the screen at the same time: a menu, a tab, a form."""
    form, control, number = key.split("-")[:3]
    if form == "frmMain":
        return MENU_OF.get(control, "menu bar")
    tab = TAB_OF.get(f"{control}-{number}") if form == "frmOption" else None
    return form if tab is None else f"{form}, tab {tab}"


def too_long(captions):
    for key, *texts in captions:
        room = ROOM.get(_kind(key), None)
        for text in texts:
            if room is not None and key not in ON_ITS_OWN and (wide := width(shown(text))) > room:
                yield f'{key}: {wide} characters wide, a {_kind(key)} has room for {room}: "{text}"'


def _kind(key):
    control = key.split("-")[1]
    return next((kind for start, kind in KIND if control.startswith(start)), None)


def shown(caption):
    """Without the mark of the mnemonic; the one in parentheses is shown."""
    return caption.replace("&&", "\0").replace("&", "").replace("\0", "&")
