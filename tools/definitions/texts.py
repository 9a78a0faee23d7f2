"""Texts of the screen files beside the parameters' own, and how wide a text is."""

import unicodedata

BUTTON = ("Write", "書き込み")


def file_kind(model_code):
    """What file dialogs call the parameter files of a model."""
    return f"{model_code} parameter file", f"{model_code}パラメータファイル"


def width(text):
    """In half-width characters."""
    return sum(2 if unicodedata.east_asian_width(c) in "FWA" else 1 for c in text)
