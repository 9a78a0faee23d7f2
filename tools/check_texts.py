#!/usr/bin/env python3
"""Checks the texts that a user reads.

  check_texts.py [--help-folder FOLDER]   names what is wrong and exits with 1 if there is anything

The manual's pages of messages hold every message that the program translates. A message stands in an element of the
class "msg", as the window shows it in that language, with <var>...</var> for each %1, %2 and so on. Both pages must give
the messages the same ids.

No text has a word that docs/terms.md rules out, nor breaks another rule of text_rules.py.
"""

import argparse
import re
import sys
from html.parser import HTMLParser
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "tools" / "definitions"))

import text_rules  # noqa: E402
from language_file import LANGUAGES, all_texts  # noqa: E402
from program_texts import ENGLISH_WORDING, FORM_TEXTS, PROGRAM_TEXTS  # noqa: E402
from text_rules import ENGLISH, JAPANESE, Text  # noqa: E402

DEFINITIONS, PROGRAM = "tools/definitions", "tools/definitions/program_texts.py"

# Texts that are no messages: menu and button captions, titles, and parts of a message that is on the page as a whole.
CAPTIONS = {
    "FileMenu", "EditMenu", "ViewMenu", "Zoom in", "Zoom out", "Original size", "KXMenu", "OptionMenu", "HelpMenu", "Open", "Save", "Save &to %1", "Exit", "Copy", "Paste",
    "Revert to the controller's value", "Write this parameter", "Write this block", "Comm", "Recv",
    "Send", "Option", "Help", "Version", "InputRange", "OK", "Cancel", "Stop", "Retrial", "Disregard", "Yes", "No",
    "Vorlant", "VersionInfo", "Ver.",
    "Back", "Forward", "Contents", "Find", "Find:", "Print...", "Larger", "Smaller", "Previous", "Next",
    "Not found on this page", "Places in the manual: %1",
    # Of the search bar
    "Press to change to: %1",
    "Find...", "Find next", "Find previous", "Go to tag...", "Go to tag:", "FindChanged", "FindNotRead", "%1 of %2",
    "%1 found", "Hits", "Close",
    # Of the review: title, filters, columns, classes, causes, and what is in order
    "all parameters", "before writing %1; COM%2 %3, slave %4", "Review and write", "Review and write...", "Backups...", "History...", "Review...", "1 change", "%1 changes", "Search in name, block and tag",
    "Show", "ReviewAll", "ReviewConflicts", "ReviewFailed", "ReviewAccepted", "ReviewTicked", "ReviewName", "ReviewBlock", "ReviewHeld",
    "ReviewValue", "ReviewState", "ReviewCause", "ReviewClass", "ReviewTag", "changed", "typed", "chosen",
    "pasted", "loaded", "followed from %1", "setting", "calibration", "line", "command", "measured", "Go to cause",
    # Of the traffic window: title and buttons, columns and fields, what a line is, functions, and what is in order
    "Traffic", "&Pause", "&Continue", "Details",
    "TrafficTime", "TrafficDirection", "Slave", "Function", "Address", "Count", "Data", "Check", "Remark", "Frame",
    "Error", "Sent", "Sent again", "TrafficParameters", "Expected: %1, found: %2", "Received", "Rejected", "Memory", "Note", "to be written", "before the write", "%1 bytes",
    "read coils", "read discrete inputs", "read holding registers", "read input registers", "write coil",
    "write register", "write registers", "read memory", "write memory", "read floats", "write floats",
    "CRC OK", "LRC OK",
    # Of the communication settings: what stands behind a port
    "not plugged in", "Nothing",
    # Of a cell as a screen reader has it, and the reasons of a paste
    "locked", "%1 to %2", "above %1, to %2", "%1 to below %2", "above %1, below %2", "and %1 more",
    "no choice of its list", "buttons and tables accept no pasted text",
    # Of the search for controllers: its columns
    "Port", "Speed", "Format", "Mode", "Response (ms)",
    # Spoken names
    "Parameters", "What to do", "Status", "Serial link", "State of the data", "Current parameter", "Commands", "Progress",
    "Question", "Warning", "Information",
    # Of the history window: columns, the choice of all days, the line
    "HistoryTime", "Outcome", "Parameter", "Old value", "New value", "Tag", "Cause", "Device", "Model", "User",
    "All days", "%1, slave %2",
    # Of the window of backups: its columns
    "BackupTime", "Model", "Cause", "Differences",
}


class MessagePage(HTMLParser):
    """The messages of a page, {text: id}, and its faults."""

    def __init__(self, file):
        super().__init__()
        self.messages = {}
        self.faults = []
        self._id = None
        self._text = ""
        self._in_var = False
        self.feed(file.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if attributes.get("class") == "msg":
            self._id = attributes.get("id", "")
            self._text = ""
        elif tag == "var":
            self._text += "%"
            self._in_var = True
        elif tag == "br":
            self._text += " "

    def handle_data(self, data):
        if not self._in_var:
            self._text += data

    def handle_endtag(self, tag):
        self._in_var = self._in_var and tag != "var"
        if self._id is None or tag not in ("dt", "td"):
            return
        text = " ".join(self._text.split())
        if not self._id or self._id in self.messages.values():
            self.faults.append(f'no id of its own: "{text}"')
        self.messages[text] = self._id
        self._id = None


def as_on_page(text):
    return " ".join(re.sub(r"%\d", "%", text.replace("vbCrLf", " ")).split())


def faults_of(page, name, texts):
    yield from (f"{name}: {fault}" for fault in page.faults)
    for key, text in texts:
        if as_on_page(text) not in page.messages:
            yield f'{name}: not there: "{text}" (key "{key}")'


def missing_messages(folder):
    english, japanese = (MessagePage(folder / name / "messages.html") for name in ("Vorlant", "VorlantJ"))
    wanted = [pair for pair in PROGRAM_TEXTS if pair[0] not in CAPTIONS]
    found = [*faults_of(english, "Vorlant/messages.html", [(key, ENGLISH_WORDING.get(key, key)) for key, _ in wanted]),
             *faults_of(japanese, "VorlantJ/messages.html", wanted)]
    for name in sorted(set(english.messages.values()) ^ set(japanese.messages.values())):
        found.append(f'only one of the two pages has the message "{name}"')
    if found:
        found.append("A new caption that is no message belongs into CAPTIONS of check_texts.py.")
    return found


def program_captions():
    return [*FORM_TEXTS["Caption"], *FORM_TEXTS["ToolTipText"]]


def pairs_in(place):
    """The texts of the program, or those of the definitions, in both languages."""
    program = {*PROGRAM_TEXTS, *((english, japanese) for _, english, japanese in program_captions())}
    return sorted(program) if place == PROGRAM else [pair for pair in all_texts() if pair not in program]


def files(pattern):
    for file in sorted(ROOT.glob(pattern)):
        yield str(file.relative_to(ROOT)), file.read_text(encoding="utf-8")


def texts():
    """All that a user reads, without what is typed as it stands."""
    for place in (DEFINITIONS, PROGRAM):
        for pair in pairs_in(place):
            yield from (Text(f'{place}, "{pair[0]}"', language.index, language.wording(pair)) for language in LANGUAGES)
    for pattern, language, prose in (
            ("data/help/Vorlant/*.html", ENGLISH, text_rules.prose_of_page),
            ("data/help/VorlantJ/*.html", JAPANESE, text_rules.prose_of_page),
            ("packaging/man/*.1", ENGLISH, text_rules.prose_of_man_page),
            ("*.md", ENGLISH, text_rules.prose_of_markdown)):
        yield from (Text(name, language, prose(text)) for name, text in files(pattern))


def wrong_words():
    terms = text_rules.Terms((ROOT / "docs" / "terms.md").read_text(encoding="utf-8"))
    for text in texts():
        yield from terms.faults(text)
    for language, page in ((ENGLISH, "Vorlant"), (JAPANESE, "VorlantJ")):
        for name, glossary in files(f"data/help/{page}/glossary.html"):
            yield from text_rules.unknown_terms(name, glossary, language, terms.pairs)


def other_faults():
    for place in (DEFINITIONS, PROGRAM):
        yield from (f"{place}: {fault}" for fault in text_rules.untranslated(pairs_in(place)))
    for place, page in files("data/help/*/*.html"):
        yield from text_rules.unnamed_placeholders(place, page)
    yield from text_rules.repeated_mnemonics(FORM_TEXTS["Caption"])
    yield from text_rules.too_long(FORM_TEXTS["Caption"])


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--help-folder", type=Path, default=ROOT / "data" / "help", metavar="FOLDER")
    given = parser.parse_args()

    found = [*missing_messages(given.help_folder), *wrong_words(), *other_faults()]
    if found:
        print(*found, sep="\n")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
