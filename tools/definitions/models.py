"""The seven models: their blocks, column by column, and their default values.

Option digits: 2 transmission output, 3 second output, 4 remote set value, 5 heater break alarm, 6 communication,
7 digital input. An optional block stands at the foot of its column, where its absence leaves no hole.
"""

from dataclasses import replace

import parameters as p
from parameter import Block, Model, with_defaults
from selections import range_of

HAS_TRANSMISSION, HAS_OUTPUT_2, HAS_REMOTE, HAS_HEATER = "2=1,2", "3=1,2", "4=1", "5=1,2"
HAS_COMMUNICATION, HAS_DIGITAL_INPUT = "6=1,2", "7=0,1"

MONITOR = Block(("Monitor", "モニタ"), "Model", p.MONITOR, read_only=True)
STATUS = Block(("Status", "状態"), "Status", p.STATUS, read_only=True)
SET_VALUES = Block(("Set values", "設定値"), "Set", p.SET_VALUES)
PID = Block(("PID control", "PID制御"), "Pid", p.PID)
INPUT = Block(("Input", "入力"), "Range", p.INPUT, relays=("Set values",))
ALARMS = Block(("Alarms", "警報"), "Alarm", (), relays=("Alarm action",))
ACTIONS = Block(("Alarm action", "警報動作"), "Event", p.events())
OUTPUT = Block(("Output", "出力"), "Output", p.OUTPUT)
OUTPUT_2 = Block(("Second output", "第2出力"), "Output2", p.OUTPUT_2)
REMOTE = Block(("Remote setting", "リモート設定"), "Remote", p.REMOTE)
HEATER = Block(("Heater break", "ヒータ断線"), "Heater", p.HEATER)
TRANSMISSION = Block(("Transmission output", "伝送出力"), "Trans", p.TRANSMISSION)
TIMER = Block(("Timer", "タイマ"), "Timer", p.TIMER)
DIGITAL_INPUT = Block(("Digital input", "接点入力"), "Di", p.DIGITAL_INPUT)
SYSTEM = Block(("System", "システム"), "System", p.SYSTEM)
COMMUNICATION = Block(("Communication", "通信"), "Com", p.COMMUNICATION)
ZONES = Block(("Zone PID", "ゾーンPID"), "Zone", p.ZONES)
PROGRAM = Block(("Program", "プログラム"), "Program", ())
LINEARIZER = Block(("Linearizer", "折線近似"), "Linear",
                   p.linearizer(((0, 0), (250, 230), (500, 510), (750, 770), (1000, 1000))))


def optional(block, option):
    return replace(block, option=option)


def four_set_values(block):
    head, tail = block.parameters[:2], block.parameters[2:]
    tail = tuple(p.SELECT_OF_FOUR if item.tag == "SVSEL" else item for item in tail)
    return replace(block, parameters=head + p.MORE_SET_VALUES + tail)


def with_unit_list(block):
    """The unit in a list instead of on a button."""
    return replace(block, parameters=tuple(p.UNIT_CHOICE if i.tag == "SWQCF" else i for i in block.parameters))


def alarms(types, values, table="AlarmType"):
    return replace(ALARMS, parameters=p.alarms(table, types, values))


def program(steps, wait):
    return replace(PROGRAM, parameters=p.program(steps, wait))


COMMUNICATION_IF_FITTED = optional(COMMUNICATION, HAS_COMMUNICATION)
DIGITAL_INPUT_IF_FITTED = optional(DIGITAL_INPUT, HAS_DIGITAL_INPUT)


def make(code, about, input_range, columns, defaults):
    """A model whose range, scale and limits agree with its input range."""
    values = range_of(input_range)
    values |= {"VQLIZL": values["VQLIL"], "VQLIZS": values["VQLIH"], "TRLOW": values["VQLIL"],
               "TRHIGH": values["VQLIH"], "MQCODE": code + "00000-10A"}
    if values["RNGDOT"] != values["SVDOT"]:  # a voltage: the scale is entered in volts
        values |= {"VQLIZL": values["RANGEL"], "VQLIZS": values["RANGEH"]}
    values |= {"EXSV": defaults["VQSV1"], "VQRSV": defaults["VQSV1"]} | defaults
    filled = tuple(
        tuple(replace(b, parameters=with_defaults(b.parameters, values)) for b in column) for column in columns)
    return Model(code, about, filled)


def quarter_din(code, about, input_range, two_outputs, types, values, defaults):
    """The KX41x: 1/4 DIN, three columns of blocks."""
    last = (OUTPUT, TIMER, SYSTEM, *((OUTPUT_2,) if two_outputs else ()), DIGITAL_INPUT_IF_FITTED,
            COMMUNICATION_IF_FITTED, *(() if two_outputs else (optional(OUTPUT_2, HAS_OUTPUT_2),)))
    columns = ((MONITOR, STATUS, SET_VALUES, PID, optional(REMOTE, HAS_REMOTE)),
               (INPUT, alarms(types, values), ACTIONS, optional(HEATER, HAS_HEATER)), last)
    return make(code, about, input_range, columns, defaults)


def eighth_din(code, about, input_range, heater, types, values, defaults):
    """The KX62x: 1/8 DIN with remote set value."""
    columns = ((MONITOR, STATUS, SET_VALUES, DIGITAL_INPUT_IF_FITTED, COMMUNICATION_IF_FITTED),
               (INPUT, PID, optional(OUTPUT_2, HAS_OUTPUT_2)),
               (alarms(types, values), ACTIONS, *((HEATER,) if heater else (optional(HEATER, HAS_HEATER),))),
               (REMOTE, OUTPUT, TIMER, SYSTEM, optional(TRANSMISSION, HAS_TRANSMISSION)))
    return make(code, about, input_range, columns, defaults)


def programmer(code, about, input_range, two_outputs, types, values, steps, defaults):
    """The KX64x: four set values, zone PID and a ramp and soak program."""
    first = (MONITOR, STATUS, four_set_values(SET_VALUES), SYSTEM)
    second = (with_unit_list(INPUT), PID, ZONES)
    third = (alarms(types, values), OUTPUT)
    last = (program(steps, 30),)
    line = (DIGITAL_INPUT_IF_FITTED, COMMUNICATION_IF_FITTED)
    if two_outputs:
        columns = ((*first, optional(TRANSMISSION, HAS_TRANSMISSION)), second, (*third, OUTPUT_2),
                   (*last, ACTIONS, *line))
    else:
        columns = (first, second, (*third, ACTIONS), (*last, *line, optional(REMOTE, HAS_REMOTE)))
    return make(code, about, input_range, columns, defaults)


def universal(code, about, input_range, types, values, defaults):
    """The KX910: events, zone PID, linearizer."""
    columns = ((MONITOR, STATUS, four_set_values(SET_VALUES), DIGITAL_INPUT_IF_FITTED, optional(REMOTE, HAS_REMOTE)),
               (with_unit_list(INPUT), PID, ZONES),
               (alarms(types, values, "EventType"), ACTIONS, LINEARIZER),
               (OUTPUT, TRANSMISSION, SYSTEM, COMMUNICATION_IF_FITTED, optional(OUTPUT_2, HAS_OUTPUT_2)))
    return make(code, about, input_range, columns, defaults)


MODELS = (
    quarter_din("KX410", "1/4 DIN temperature controller, one output, three alarms", 2, False, (1, 2, 0), (1500, 50, 0),
                {"VQSV1": 1200, "VQSV2": -50, "VQSVL": -1000, "VQSVH": 4000}),
    quarter_din("KX413", "1/4 DIN temperature controller, heating and cooling output, three alarms", 12, True,
                (1, 2, 3), (800, 30, 50),
                {"VQPV": 248, "VQSV1": 250, "VQSV2": 600, "VQSVL": -500, "VQSVH": 1500, "VQSVUP": 20, "VQSVDWN": 20,
                 "ATBIAS": 10, "VQOUT": 0, "VQOUT2": 183, "VQMR1": 0}),
    eighth_din("KX620", "1/8 DIN controller with remote set value, three alarms", 1, False, (1, 1, 2), (1100, 1250, 15),
               {"VQPV": 797, "VQSV1": 800, "VQSV2": 600, "VQSVL": 0, "VQSVH": 1200, "VQSVUP": 10, "VQSVDWN": 20,
                "ATBIAS": 15, "VQBIA": -2, "VQ1DB": 5, "VQ2DB": 5, "VQ3DB": 2}),
    eighth_din("KX623", "1/8 DIN controller with remote set value and heater break alarms", 3, True,
               (1, 2, 4), (450, 20, 120),
               {"VQPV": 351, "VQSV1": 350, "VQSV2": 200, "VQSVL": 0, "VQSVH": 600, "VQSVUP": 5, "VQSVDWN": 5,
                "ATBIAS": 5, "VQBIA": 1, "VQ1DB": 2, "VQ2DB": 2, "VQ3DB": 5}),
    programmer("KX640", "program controller, four set values, three alarms", 6, False, (1, 2, 3), (1600, 20, 40),
               ((60, 400), (30, 400), (120, 1250), (90, 1250), (180, 600), (120, 40)),
               {"VQPV": 1247, "VQSV1": 1250, "VQSV2": 900, "VQSV3": 600, "VQSV4": 40, "VQSVL": 0, "VQSVH": 1600,
                "VQSVUP": 10, "VQSVDWN": 10, "ATBIAS": 20, "VQZN1": 500, "VQZN2": 1000, "VQ1DB": 2, "VQ2DB": 2,
                "VQ3DB": 2, "VQBIA": 0, "SVSEL": 0}),
    programmer("KX643", "program controller, four set values, heating and cooling output", 13, True,
               (2, 3, 6), (150, 300, 0),
               ((30, 2500), (60, 2500), (45, 4000), (60, 4000), (90, -1000), (30, 2500)),
               {"VQPV": 2498, "VQSV1": 2500, "VQSV2": 4000, "VQSV3": -1000, "VQSV4": 0, "VQSVL": -1500, "VQSVH": 4500,
                "VQSVUP": 50, "VQSVDWN": 50, "ATBIAS": 50, "VQZN1": 0, "VQZN2": 3000, "VQOUT": 0, "VQOUT2": 91,
                "VQMR1": 0, "VQBIA": 15}),
    universal("KX910", "universal controller for voltage and current inputs, three events", 22,
              (1, 2, 3), (900, 50, 80),
              {"VQPV": 502, "VQSV1": 500, "VQSV2": 650, "VQSV3": 800, "VQSV4": 200, "VQSVL": 0, "VQSVH": 1000,
               "VQZN1": 300, "VQZN2": 700, "VQBIA": 0, "ATBIAS": 10, "VQSVUP": 0, "VQSVDWN": 0}),
)
