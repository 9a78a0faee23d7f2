"""What a parameter, a block and a model are, and how the tables of this folder write them down.

A text is a pair (English, Japanese): the English one goes into the definition and is the key of the language files.
Defaults and the limits of LIMITS_AS_STORED are numbers as the controller holds them; other limits are display values.
"""

from dataclasses import dataclass, field, replace

SET_VALUE_DECIMALS = "DOTSVDOT"  # as many decimal places as the item SVDOT shows
OFF_ON = (("Off", "オフ"), ("On", "オン"))


@dataclass(frozen=True)
class Parameter:
    tag: str
    name: tuple
    kind: str  # cell type: Bit, Data, Combo, Multi, Input or String
    default: str
    decimals: str = "0"
    low: str = "0"
    high: str = "1"
    low_sign: str = "<="
    high_sign: str = "<="
    unit: tuple = ("", "")
    size: int = 1  # bytes in the controller's memory
    choices: tuple = ()  # texts of a Combo, with the stored values 0, 1, 2 ...
    captions: tuple = OFF_ON  # texts of a Bit that is 0 and 1
    tables: tuple = ()  # sections of MultiSelect.ini: one for Multi, Celsius and Kelvin for Input
    section: str = ""  # of the comm file; empty: the block's
    hidden: bool = False  # without a cell
    read_only: bool = False
    sending: str = "setting"  # what sending it means: setting, calibration, line or command


@dataclass(frozen=True)
class Block:
    title: tuple
    section: str
    parameters: tuple
    option: str = ""  # option expression; empty: always there
    read_only: bool = False  # nothing to write: no button
    relays: tuple = ()  # titles of the blocks that are written along with it


@dataclass(frozen=True)
class Model:
    code: str
    about: str  # for the head of its files
    columns: tuple  # of tuples of blocks, from left to right, each from top to bottom
    sections: dict = field(default_factory=dict)

    def blocks(self):
        return [block for column in self.columns for block in column]


def number(tag, english, japanese, default, low, high, decimals="0", unit=("", ""), size=2, **more):
    return Parameter(tag, (english, japanese), "Data", str(default), str(decimals), str(low), str(high), unit=unit,
                     size=size, **more)


def choice(tag, english, japanese, choices, default=0, **more):
    return Parameter(tag, (english, japanese), "Combo", str(default), high=str(len(choices) - 1), choices=choices,
                     **more)


def switch(tag, english, japanese, captions=OFF_ON, default=0, **more):
    return Parameter(tag, (english, japanese), "Bit", str(default), captions=captions, **more)


def from_table(tag, english, japanese, table, default=0, **more):
    return Parameter(tag, (english, japanese), "Multi", str(default), tables=(table,), **more)


def with_defaults(parameters, defaults):
    """The parameters with the default stored values of a model."""
    return tuple(replace(p, default=str(defaults[p.tag])) if p.tag in defaults else p for p in parameters)
