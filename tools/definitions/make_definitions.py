#!/usr/bin/env python3
"""Writes the definition files (data/ini) and the language files (data/Lang) from the tables of this folder.

  make_definitions.py           write the files that differ
  make_definitions.py --check   write nothing; name the files that differ and exit with 1 if there are any
"""

import argparse
import sys
from pathlib import Path

from comm_file import comm_text
from language_file import LANGUAGES, language_text
from layout import place
from models import MODELS
from screen_file import screen_text
from selection_file import selection_text

DATA = Path(__file__).resolve().parents[2] / "data"


def all_files():
    """Path below the data folder and text of every file."""
    for model in MODELS:
        layout = place(model)
        yield f"ini/{model.code}Screen.ini", screen_text(model, layout)
        yield f"ini/{model.code}Comm.ini", comm_text(model, layout)
    yield "ini/MultiSelect.ini", selection_text()
    for language in LANGUAGES:
        yield f"Lang/{language.file}", language_text(language)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--check", action="store_true", help="write nothing, exit with 1 when a file differs")
    parser.add_argument("--data", type=Path, default=DATA, metavar="FOLDER", help="default: the data folder")
    arguments = parser.parse_args()
    differing = 0
    for name, text in all_files():
        file = arguments.data / name
        content = text.rstrip("\n").replace("\n", "\r\n").encode("cp932") + b"\r\n"
        if file.is_file() and file.read_bytes() == content:
            continue
        differing += 1
        print(f"differs: {name}" if arguments.check else f"written: {name}")
        if not arguments.check:
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_bytes(content)
    return 1 if arguments.check and differing else 0


if __name__ == "__main__":
    sys.exit(main())
