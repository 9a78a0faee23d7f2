"""The selection tables of MultiSelect.ini: input ranges, alarm types, functions of the digital input."""

from dataclasses import dataclass

CELSIUS_TO_KELVIN = 273.15
VOLTAGE_DECIMALS = 3

# Sensor, its Japanese name, identifying value, lower and upper end in degrees Celsius, decimal places.
SENSORS = (
    ("K", "K", 1, -200, 1370, 0),
    ("K", "K", 2, -199.9, 500.0, 1),
    ("J", "J", 3, -200, 1000, 0),
    ("T", "T", 4, -199.9, 400.0, 1),
    ("E", "E", 5, -200, 900, 0),
    ("R", "R", 6, 0, 1760, 0),
    ("S", "S", 7, 0, 1760, 0),
    ("B", "B", 8, 0, 1820, 0),
    ("N", "N", 9, 0, 1300, 0),
    ("W5Re", "W5Re", 10, 0, 2310, 0),
    ("Pt100", "Pt100", 11, -200, 600, 0),
    ("Pt100", "Pt100", 12, -199.9, 200.0, 1),
    ("Pt100", "Pt100", 13, -20.00, 50.00, 2),
    ("JPt100", "JPt100", 14, -199.9, 500.0, 1),
)

# Name, identifying value, lower and upper end in volts behind the shunt. The scale is free: 0.0 to 100.0 at first.
VOLTAGES = (
    ("0-5V DC", 20, 0, 5),
    ("1-5V DC", 21, 1, 5),
    ("4-20mA (1-5V)", 22, 1, 5),
    ("0-20mA (0-5V)", 23, 0, 5),
)
SCALE_DECIMALS, SCALE_LOW, SCALE_HIGH = 1, 0, 1000

# The display values of the bar graph come before the decimal places that scale them: the places start the walk over.
RANGE_TAGS = ("", "", "tagVBARL", "tagVBARH", "tagDRNGDOT", "tagDSVDOT", "tagDRANGEL", "tagDRANGEH", "tagDVQLIL",
              "tagDVQLIH")


@dataclass(frozen=True)
class Selection:
    section: str
    about: str
    title: tuple
    headers: tuple  # of texts
    widths: tuple
    tags: tuple
    entries: tuple  # of (names, data): names of (English, Japanese), data without the running number


def _range_data(code, low, high, decimals):
    ends = (f"{low:.{decimals}f}", f"{high:.{decimals}f}")
    stored = tuple(str(round(end * 10**decimals)) for end in (low, high))
    return ends, stored, code


def _sensor_entry(sensor, kelvin):
    english, japanese, code, low, high, decimals = sensor
    if kelvin:
        low, high = (round(end + CELSIUS_TO_KELVIN - 0.001, decimals) for end in (low, high))
    ends, stored, code = _range_data(code, low, high, decimals)
    span = " to ".join(ends), " ～ ".join(ends)
    unit = ("K", "K") if kelvin else ("°C", "℃")
    names = ((f"{english}: {span[0]} {unit[0]}", f"{japanese}: {span[1]} {unit[1]}"), *((end, end) for end in ends))
    return names, (str(code), *ends, str(decimals), str(decimals), *stored, *stored)


def _voltage_entry(voltage):
    name, code, low, high = voltage
    ends, stored, code = _range_data(code, low, high, VOLTAGE_DECIMALS)
    names = ((name, name), *((end, end) for end in ends))
    scale = (str(SCALE_LOW), str(SCALE_HIGH))
    return names, (str(code), *ends, str(VOLTAGE_DECIMALS), str(SCALE_DECIMALS), *stored, *scale)


def _ranges(section, about, kelvin):
    entries = tuple(_sensor_entry(s, kelvin) for s in SENSORS) + tuple(_voltage_entry(v) for v in VOLTAGES)
    headers = (("Input range", "入力種類"), ("Low end", "下限"), ("High end", "上限"))
    return Selection(section, about, ("Input range", "入力種類"), headers, (30, 10, 10), RANGE_TAGS, entries)


def _plain(section, about, title, headers, widths, rows):
    entries = tuple((names, (str(code),)) for code, names in enumerate(rows))
    return Selection(section, about, title, headers, widths, ("", ""), entries)


ALARM_HEADERS = (("Alarm type", "警報種類"), ("Compared value", "比較値"))
NOTHING = ("-", "-")
PROCESS_VALUE = ("Process value", "測定値")
DEVIATION = ("PV - SV", "PV - SV")

# Only the first four are compared with a value on one side, so only these have a side and a standby.
ALARM_TYPES = (
    (("No alarm", "警報なし"), NOTHING),
    (PROCESS_VALUE, PROCESS_VALUE),
    (("Deviation", "偏差"), DEVIATION),
    (("Deviation high/low", "上下限偏差"), DEVIATION),
    (("Heater break", "ヒータ断線"), ("Heater current", "ヒータ電流")),
    (("Loop break", "ループ断線"), ("Time", "時間")),
    (("Input error", "入力異常"), NOTHING),
    (("Timer", "タイマ"), ("Time", "時間")),
    (("During operation", "運転中"), NOTHING),
)

EVENT_TYPES = (
    (("No event", "イベントなし"), NOTHING),
    (("PV event", "PVイベント"), PROCESS_VALUE),
    (("Deviation event", "偏差イベント"), DEVIATION),
    (("Deviation high/low event", "上下限偏差イベント"), DEVIATION),
    (("Input error event", "入力異常イベント"), NOTHING),
    (("Loop break event", "ループ断線イベント"), ("Time", "時間")),
    (("Operation event", "運転中イベント"), NOTHING),
    (("Manual event", "手動運転中イベント"), NOTHING),
    (("Auto-tuning event", "オートチューニング中イベント"), NOTHING),
)

INPUT_FUNCTIONS = (
    (("No function", "機能なし"),),
    (("Set value 2", "設定値2"),),
    (("Stop control", "制御停止"),),
    (("Manual", "手動"),),
    (("Hold output", "出力ホールド"),),
    (("Alarm reset", "警報リセット"),),
    (("Start auto-tuning", "オートチューニング開始"),),
    (("Lock keys", "キーロック"),),
)

SELECTIONS = (
    _ranges("InputRangeC", "Input ranges, degrees Celsius", False),
    _ranges("InputRangeK", "Input ranges, kelvins", True),
    _plain("AlarmType", "Alarm types", ("Alarm type", "警報種類"), ALARM_HEADERS, (24, 20), ALARM_TYPES),
    _plain("EventType", "Event types", ("Event type", "イベント種類"),
           (("Event type", "イベント種類"), ALARM_HEADERS[1]), (30, 20), EVENT_TYPES),
    _plain("DigitalInput", "Functions of the digital input", ("Input function", "接点入力機能"),
           (("Input function", "接点入力機能"),), (28,), INPUT_FUNCTIONS),
)

# Decimal places of alarm values and hysteresis: a row for each alarm type, a column for each decimal point.
AS_SET_VALUES, AMPERES, NO_PLACES = "0,1,2,3", "1,1,1,1", "0,0,0,0"
ALARM_DECIMALS = (AS_SET_VALUES,) * 4 + (AMPERES,) + (NO_PLACES,) * 6
EVENT_DECIMALS = (AS_SET_VALUES,) * 4 + (NO_PLACES,) * 7


def range_of(code):
    """The hidden items' and the input limits' stored values of a range, in degrees Celsius."""
    for names, data in SELECTIONS[0].entries:
        if data[0] == str(code):
            _, low, high, range_dot, dot, range_low, range_high, limit_low, limit_high = data
            bar = [str(round(float(end) * 10 ** int(range_dot))) for end in (low, high)]
            return {"PQRNO": code, "BARL": bar[0], "BARH": bar[1], "RNGDOT": range_dot, "SVDOT": dot,
                    "RANGEL": range_low, "RANGEH": range_high, "VQLIL": limit_low, "VQLIH": limit_high}
    raise KeyError(code)
