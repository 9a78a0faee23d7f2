"""The parameter reference: for each model the rows that a person looks up, in words of one language.

Values are shown as the grid shows them while all parameters hold their defaults.
"""

from dataclasses import dataclass
from decimal import ROUND_HALF_UP, Decimal

from parameter import SET_VALUE_DECIMALS
from program_texts import ENGLISH_WORDING, PROGRAM_TEXTS
from selections import ALARM_DECIMALS, EVENT_DECIMALS, SELECTIONS, VOLTAGE_DECIMALS, VOLTAGES

ENGLISH, JAPANESE = 0, 1
CLASSES = {key: (key, japanese) for key, japanese in PROGRAM_TEXTS}

# Limits of these are numbers as the controller holds them.
LIMITS_AS_STORED = ("VQAL1", "VQAL2", "VQAL3", "VQ1DB", "VQ2DB", "VQ3DB", "VQBIA", "VQRBIA", "VQSVUP", "VQSVDWN")
AT_LEAST_ONE_PLACE = ("VQBIA", "VQRBIA")
SCALE = ("VQLIZL", "VQLIZS")
TEMPERATURES = ("°C", "K")
OPTION_POSITION = {"1": 5, "2": 6, "3": 7, "4": 8, "5": 9, "6": 12, "7": 13, "8": 14}  # in the model string

# Hidden parameters follow the input range; a limit that names one is its end.
RANGE_ENDS = {
    "RANGEL": ("low end of the input range", "入力種類の下限"), "BARL": ("low end of the input range", "入力種類の下限"),
    "RANGEH": ("high end of the input range", "入力種類の上限"), "BARH": ("high end of the input range", "入力種類の上限"),
}


def alarm_of(p):
    """The number of the alarm whose value or hysteresis it is, as a text; empty for others."""
    return p.tag[4] if p.tag.startswith("VQAL") else p.tag[2] if p.tag in ("VQ1DB", "VQ2DB", "VQ3DB") else ""


@dataclass(frozen=True)
class Row:
    tag: str
    name: str
    other_name: str  # in the other language
    unit: str
    limits: str  # or the choices
    default: str
    kind: str  # class
    table: str  # section of the selection table; empty: none


@dataclass(frozen=True)
class Section:
    title: str
    option: str
    rows: tuple


class ModelReference:
    """One model in one language."""

    def __init__(self, model, language):
        self.model = model
        self._language = language
        self._items = {p.tag: p for block in model.blocks() for p in block.parameters}

    def sections(self):
        return [Section(block.title[self._language], self._option(block.option),
                        tuple(self._row(p) for p in block.parameters if not p.hidden))
                for block in self.model.blocks()]

    def _row(self, p):
        kind = "measured" if p.read_only else p.sending
        return Row(p.tag, p.name[self._language], p.name[1 - self._language], self._unit(p),
                   "" if p.read_only and p.kind in ("Data", "String") else self._limits(p), self._default(p),
                   CLASSES[kind][self._language], p.tables[0] if p.tables else "")

    def _unit(self, p):
        """Temperatures are in the unit that is set, and so are their rates."""
        unit = p.unit[self._language]
        is_temperature = p.kind == "Data" and (p.decimals == SET_VALUE_DECIMALS or alarm_of(p))
        if not is_temperature or unit and not unit.startswith("/"):
            return unit
        return self._say(", ", "、").join(temperature + unit for temperature in TEMPERATURES)

    def _say(self, english, japanese):
        return (english, japanese)[self._language]

    def _option(self, expression):
        if not expression:
            return ""
        digit, values = expression.split("=")
        english = f"Only where character {OPTION_POSITION[digit]} of the model string is {values.replace(',', ' or ')}."
        japanese = f"型式コードの{OPTION_POSITION[digit]}文字目が{values.replace(',', 'または')}の機器だけにあります。"
        return self._say(english, japanese)

    def _limits(self, p):
        if p.kind in ("Multi", "Input"):
            title = table_of(p).title[self._language]
            return self._say(f"selection table {title}", f"選択表「{title}」")
        if choices := choices_of(p):
            return self._say(", ", "、").join(numbered(i, text[self._language]) for i, text in enumerate(choices))
        low, high = self._limit(p, p.low), self._limit(p, p.high)
        low = self._say(f"above {low}", f"{low}より大") if p.low_sign == "<" else low
        high = self._say(f"below {high}", f"{high}未満") if p.high_sign == "<" else high
        return low + self._say(" to ", " ～ ") + high

    def _limit(self, p, limit):
        tag = limit.removeprefix("TAG")
        if tag == limit:
            return scaled(limit, self._places(p)) if p.tag in LIMITS_AS_STORED else limit
        return RANGE_ENDS[tag][self._language] if tag in RANGE_ENDS else self._items[tag].name[self._language]

    def _default(self, p):
        if p.kind in ("Multi", "Input"):
            return next(names[0][self._language] for names, data in table_of(p).entries if data[0] == p.default)
        if choices := choices_of(p):
            return choices[int(p.default)][self._language]
        return p.default if p.kind == "String" else scaled(p.default, self._places(p))

    def _places(self, p):
        if alarm := alarm_of(p):
            return self._alarm_places(alarm)
        if p.tag in SCALE and int(self._items["PQRNO"].default) in (voltage[1] for voltage in VOLTAGES):
            return VOLTAGE_DECIMALS
        if not p.decimals.startswith("DOT"):
            return int(p.decimals)
        places = int(self._items[p.decimals.removeprefix("DOT")].default)
        return max(places, 1) if p.tag in AT_LEAST_ONE_PLACE else places

    def _alarm_places(self, number):
        table = EVENT_DECIMALS if self.model.code.startswith("KX9") else ALARM_DECIMALS
        of_type = table[int(self._items[f"PQKAL{number}"].default)].split(",")
        return int(of_type[int(self._items[SET_VALUE_DECIMALS.removeprefix("DOT")].default)])


@dataclass(frozen=True)
class Table:
    section: str
    title: str
    headings: tuple
    rows: tuple  # stored value, then the names of the entry


def selection_tables(language):
    """Those of all models."""
    for s in SELECTIONS:
        about = f"{s.title[language]} (K)" if s.section.endswith("K") else s.title[language]
        rows = tuple((data[0], *(name[language] for name in names)) for names, data in s.entries)
        yield Table(s.section, about, (("value", "値")[language], *(header[language] for header in s.headers)), rows)


def table_of(p):
    return next(s for s in SELECTIONS if s.section == p.tables[0])


def choices_of(p):
    """The texts of a list or a switch as they are shown, with the stored values 0, 1, 2 ..."""
    texts = p.captions if p.kind == "Bit" else p.choices
    return tuple((ENGLISH_WORDING.get(english, english), japanese) for english, japanese in texts)


def numbered(stored, text):
    return text if text == str(stored) else f"{stored}: {text}"


def scaled(stored, places):
    """Without the decimal point in the controller: 1200 with one place is 120.0."""
    shown = Decimal(stored).scaleb(-places).quantize(Decimal(1).scaleb(-places), ROUND_HALF_UP)
    return f"{shown:f}"
