#!/usr/bin/env python3
"""Writes the definition files (ini) and the language files (Lang) into a data folder, from the tables beside this file.

  make_definitions.py FOLDER    the build does this for the folder "data" of the build
"""

import argparse
from pathlib import Path

from comm_file import comm_text
from language_file import LANGUAGES, language_text
from layout import place
from models import MODELS
from screen_file import screen_text
from selection_file import selection_text


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
    parser.add_argument("folder", type=Path, metavar="FOLDER")
    folder = parser.parse_args().folder
    for name, text in all_files():
        file = folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(text.rstrip("\n").replace("\n", "\r\n").encode("cp932") + b"\r\n")


if __name__ == "__main__":
    main()
