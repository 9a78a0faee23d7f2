"""The text of the language files: every text of the definitions and of the program, English and Japanese."""

from dataclasses import dataclass

from models import MODELS
from program_texts import ENGLISH_WORDING, FORM_TEXTS, PROGRAM_TEXTS
from selections import SELECTIONS
from texts import BUTTON, file_kind

MAX_VALUE_BYTES = 499  # the program reads a value with its terminator into 512 bytes


@dataclass(frozen=True)
class Language:
    file: str
    name: str
    locale: str
    index: int  # of a text pair

    def wording(self, pair):
        return ENGLISH_WORDING.get(pair[0], pair[0]) if self.index == 0 else pair[self.index]


LANGUAGES = (Language("EN.txt", "English", "09", 0), Language("JP.txt", "日本語", "11", 1))


def language_text(language):
    parts = ["[Info]", f"Name={language.name}", f"LocaleID={language.locale}", "Version=1.0", "", "[Language]"]
    parts += [f"{pair[0]}={language.wording(pair)}" for pair in all_texts()]
    for section, entries in FORM_TEXTS.items():
        parts += ["", f"[{section}]", *(f"{entry[0]}={entry[1 + language.index]}" for entry in entries)]
    return "\n".join(parts) + "\n"


def all_texts():
    """Each text once, in the order of first use."""
    found = {}
    for pair in _pairs():
        known = found.setdefault(pair[0].casefold(), pair)
        if known != pair:
            raise ValueError(f"two texts or translations of one key: {known} {pair}")
        _check(pair)
    return list(found.values())


def _check(pair):
    english, japanese = pair
    if not english.strip() or not japanese.strip() or "=" in english or english[0] in "[;":
        raise ValueError(f"no key of a language file: {pair}")
    if english.count("vbTab") != japanese.count("vbTab"):
        raise ValueError(f"not the same number of choices: {pair}")
    if max(len(text.encode("cp932")) for text in pair) > MAX_VALUE_BYTES:
        raise ValueError(f"too long: {pair}")


def _pairs():
    yield from PROGRAM_TEXTS
    yield BUTTON
    for model in MODELS:
        yield file_kind(model.code)
        for block in model.blocks():
            yield block.title
            for parameter in block.parameters:
                yield from _parameter_texts(parameter)
    for selection in SELECTIONS:
        yield selection.title
        yield from selection.headers
        for names, _ in selection.entries:
            yield from (name for name in names if _has_words(name[0]))


def _has_words(text):
    """Numbers and dashes are shown as they are in every language."""
    return any(c.isalpha() for c in text)


def _parameter_texts(parameter):
    yield parameter.name
    if parameter.unit[0]:
        yield parameter.unit
    if parameter.kind == "Bit":
        yield from parameter.captions
    if parameter.choices:
        yield tuple("vbTab".join(texts) for texts in zip(*parameter.choices))
