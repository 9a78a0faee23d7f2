"""The parameters that the models are put together from, group by group."""

from parameter import OFF_ON, SET_VALUE_DECIMALS, Parameter, choice, from_table, number, switch

PERCENT = ("%", "%")
SECONDS = ("s", "秒")
MINUTES = ("min", "分")
HOURS = ("h", "時間")
AMPERES = ("A", "A")
MILLISECONDS = ("ms", "ms")
PER_MINUTE = ("/min", "/分")
PERCENT_PER_SECOND = ("%/s", "%/秒")

ACTIVE = (("Normal", "正常"), ("Active", "発生"))
FITTED = (("Not used", "使用しない"), ("Used", "使用する"))
LINEAR_RANGES = (("4-20mA", "4-20mA"), ("0-20mA", "0-20mA"), ("1-5V", "1-5V"), ("0-5V", "0-5V"))


def in_set_value_units(tag, english, japanese, default, low="TAGVQSVL", high="TAGVQSVH", **more):
    return number(tag, english, japanese, default, low, high, SET_VALUE_DECIMALS, **more)


MONITOR = (
    Parameter("MQCODE", ("Model string", "型式コード"), "String", "", size=14, section="Model", read_only=True),
    in_set_value_units("VQPV", "Process value", "測定値", 1234, -1999, 9999, section="Pv", read_only=True),
    in_set_value_units("EXSV", "Set value in use", "実行設定値", 1200, section="Sv", read_only=True),
    number("VQOUT", "Output 1", "調節出力1", 425, "-5.0", "105.0", 1, PERCENT, section="Mv", read_only=True),
)

STATUS = (
    switch("STAL1", "Alarm 1 state", "警報1状態", ACTIVE, read_only=True),
    switch("STAL2", "Alarm 2 state", "警報2状態", ACTIVE, read_only=True),
    switch("STAL3", "Alarm 3 state", "警報3状態", ACTIVE, read_only=True),
    switch("STBRN", "Input state", "入力状態", (("Normal", "正常"), ("Open circuit", "断線")), read_only=True),
)

SET_VALUES = (
    in_set_value_units("VQSV1", "Set value 1", "設定値1", 1200),
    in_set_value_units("VQSV2", "Set value 2", "設定値2", -50),
    in_set_value_units("VQSVL", "Set value low limit", "設定値下限", -1000, "TAGVQLIL", "TAGVQSVH"),
    in_set_value_units("VQSVH", "Set value high limit", "設定値上限", 4000, "TAGVQSVL", "TAGVQLIH"),
    in_set_value_units("VQSVUP", "Ramp up", "設定値上昇率", 150, 0, 9999, unit=PER_MINUTE),
    in_set_value_units("VQSVDWN", "Ramp down", "設定値下降率", 100, 0, 9999, unit=PER_MINUTE),
    choice("SVSEL", "Set value selection", "設定値選択", (("SV1", "SV1"), ("SV2", "SV2"))),
    choice("SVDOT", "Decimal point", "小数点位置", tuple((str(n), str(n)) for n in range(4)), 1),
    switch("RUNSTP", "Run/stop", "運転/停止", (("Stopped", "停止"), ("Running", "運転")), 1, sending="command"),
)

MORE_SET_VALUES = tuple(
    in_set_value_units(f"VQSV{n}", f"Set value {n}", f"設定値{n}", 0) for n in (3, 4)
)
SELECT_OF_FOUR = choice("SVSEL", "Set value selection", "設定値選択", tuple((f"SV{n}", f"SV{n}") for n in range(1, 5)))

PID = (
    choice("PIDONOF", "Control method", "制御方式", (("PID", "PID"), ("ON/OFF", "ON/OFF"))),
    choice("DIRREV", "Direct/reverse action", "正/逆動作", (("Reverse", "逆動作"), ("Direct", "正動作"))),
    number("VQP1", "Proportional band", "比例帯", 30, "0.1", "999.9", 1, PERCENT),
    number("VQI1", "Integral time", "積分時間", 120, 0, 3600, 0, SECONDS),
    number("VQD1", "Derivative time", "微分時間", 20, 0, 3600, 0, SECONDS),
    number("VQODB", "ON/OFF hysteresis", "ON/OFF動作すきま", 5, "0", "9.9", 1, PERCENT),
    number("VQMR1", "Manual reset", "マニュアルリセット", -25, "-50.0", "50.0", 1, PERCENT),
    number("VQARW", "Anti-reset windup", "アンチワインドアップ", 1000, "0.0", "100.0", 1, PERCENT),
    number("VQGAIN", "Loop gain", "ループゲイン", "125.5", "0", "100", 2, size=4),
    in_set_value_units("ATBIAS", "Auto-tuning bias", "チューニングバイアス", 20, 0, 32),
    switch("ATRUN", "Auto-tuning", "オートチューニング", (("Idle", "停止中"), ("Tuning", "実行中")), section="Coil",
           sending="command"),
)

ZONES = (
    choice("PIDSEL", "PID set", "PID組選択", (("By zone", "ゾーン別"), ("By set value", "設定値別"), ("Fixed", "固定"))),
    in_set_value_units("VQZN1", "Zone limit 1", "ゾーン境界1", 0),
    in_set_value_units("VQZN2", "Zone limit 2", "ゾーン境界2", 0),
    *(
        number(f"VQ{letter}{n}", f"{english} {n}", f"{japanese}{n}", default, low, high, decimals, unit)
        for n in (2, 3)
        for letter, english, japanese, default, low, high, decimals, unit in (
            ("P", "Proportional band", "比例帯", 50, "0.1", "999.9", 1, PERCENT),
            ("I", "Integral time", "積分時間", 180, 0, 3600, 0, SECONDS),
            ("D", "Derivative time", "微分時間", 30, 0, 3600, 0, SECONDS),
        )
    ),
)

UNIT = (("Celsius", "℃"), ("Kelvin", "K"))

INPUT = (
    Parameter("PQRNO", ("Input range", "入力種類"), "Input", "2", tables=("InputRangeC", "InputRangeK")),
    switch("SWQCF", "Unit", "単位", UNIT),
    in_set_value_units("VQLIL", "Input low limit", "入力下限", -1999, "TAGRANGEL", "TAGRANGEH"),
    in_set_value_units("VQLIH", "Input high limit", "入力上限", 5000, "TAGRANGEL", "TAGRANGEH"),
    in_set_value_units("VQLIZL", "Scale low", "スケーリング下限", -1999, "TAGBARL", "TAGBARH"),
    in_set_value_units("VQLIZS", "Scale high", "スケーリング上限", 5000, "TAGBARL", "TAGBARH"),
    in_set_value_units("VQBIA", "Sensor correction", "センサ補正", -12, -1999, 1999, sending="calibration"),
    number("VQFIL", "Input filter", "入力フィルタ", 50, "0.0", "120.0", 1, SECONDS),
    choice("CJCOMP", "Cold junction", "冷接点補償", (("External", "外部"), ("Internal", "内部")), 1),
    choice("BRNOUT", "Burnout", "バーンアウト", (("None", "なし"), ("Upscale", "アップスケール"), ("Downscale", "ダウンスケール")), 1),
    switch("SQROOT", "Square root", "開平演算", FITTED),
    number("VQLCUT", "Square-root low cut", "開平ローカット", 10, "0.0", "25.0", 1, PERCENT),
    # The range that was chosen, as the controller holds it, and the ends of the bar graph that follow it.
    number("RANGEL", "Range low", "レンジ下限", -1999, -32768, 32767, hidden=True),
    number("RANGEH", "Range high", "レンジ上限", 5000, -32768, 32767, hidden=True),
    number("BARL", "Bar graph low", "バーグラフ下限", -1999, -1999, 9999, "DOTRNGDOT", hidden=True),
    number("BARH", "Bar graph high", "バーグラフ上限", 5000, -1999, 9999, "DOTRNGDOT", hidden=True),
    number("RNGDOT", "Range decimal point", "レンジ小数点位置", 1, 0, 3, size=1, hidden=True),
)

UNIT_CHOICE = choice("SWQCF", "Unit", "単位", UNIT)


# As stored: two places hold 323.15 K, and a deviation is as wide as a range.
ALARM_LIMITS = (-19999, 32767)


def alarms(table, types, values):
    """Type, value, hysteresis and delay of the three alarms."""
    result = []
    for n, (kind, value) in enumerate(zip(types, values), 1):
        result += [
            from_table(f"PQKAL{n}", f"Alarm {n} type", f"警報{n}種類", table, kind),
            number(f"VQAL{n}", f"Alarm {n} value", f"警報{n}設定値", value, *ALARM_LIMITS),
            number(f"VQ{n}DB", f"Alarm {n} hysteresis", f"警報{n}動作すきま", 10, 0, 999),
            number(f"TMAL{n}", f"Alarm {n} delay", f"警報{n}遅延", 5 * n, 0, 9999, 0, SECONDS),
        ]
    return tuple(result)


def events():
    """How each alarm acts: on which side, whether it stands by after power-on, and its relay."""
    result = []
    for n in (1, 2, 3):
        result += [
            choice(f"EV{n}MOD", f"Alarm {n} high/low", f"警報{n}上限/下限", (("High", "上限"), ("Low", "下限")), int(n == 2)),
            choice(f"EV{n}WAIT", f"Alarm {n} standby", f"警報{n}待機", OFF_ON),
            switch(f"EV{n}INV", f"Alarm {n} relay", f"警報{n}リレー", (("Energized", "励磁"), ("De-energized", "非励磁"))),
        ]
    return tuple(result)


OUTPUT_TYPES = (("Relay", "リレー接点"), ("SSR drive", "SSR駆動電圧"), ("Current", "電流"))

OUTPUT = (
    number("VQOL1", "Output 1 low limit", "調節出力1下限", 0, "-5.0", "TAGVQOH1", 1, PERCENT, high_sign="<"),
    number("VQOH1", "Output 1 high limit", "調節出力1上限", 1000, "TAGVQOL1", "105.0", 1, PERCENT, low_sign="<"),
    number("VQCYC1", "Output 1 cycle time", "調節出力1比例周期", 20, 1, 120, 0, SECONDS),
    number("VQRATE", "Output rate limit", "出力変化率リミット", 1000, "0.0", "100.0", 1, PERCENT_PER_SECOND),
    number("VQMAN", "Manual output", "手動出力", 0, "0.0", "100.0", 1, PERCENT, section="Man"),
    choice("AUTMAN", "Auto/manual", "自動/手動", (("Automatic", "自動"), ("Manual", "手動")), sending="command"),
    number("ERROUT", "Output at error", "異常時出力", -50, "-5.0", "105.0", 1, PERCENT),
    choice("OUTTYP", "Output 1 type", "調節出力1種類", OUTPUT_TYPES, 1),
)

OUTPUT_2 = (
    number("VQOUT2", "Output 2", "調節出力2", 0, "-5.0", "105.0", 1, PERCENT, section="Mv2", read_only=True),
    choice("COLACT", "Cooling method", "冷却方式", (("Air", "空冷"), ("Oil", "油冷"), ("Water", "水冷"))),
    number("COLP", "Cooling band", "冷却側比例帯", 10, "0.1", "10.0", 1),
    number("VQDBND", "Overlap/dead band", "オーバーラップ幅", 0, "-100.0", "100.0", 1, PERCENT),
    number("VQOL2", "Output 2 low limit", "調節出力2下限", 0, "0.0", "TAGVQOH2", 1, PERCENT, high_sign="<"),
    number("VQOH2", "Output 2 high limit", "調節出力2上限", 1000, "TAGVQOL2", "100.0", 1, PERCENT, low_sign="<"),
    number("VQCYC2", "Output 2 cycle time", "調節出力2比例周期", 20, 1, 120, 0, SECONDS),
    choice("OUTTY2", "Output 2 type", "調節出力2種類", OUTPUT_TYPES),
)

REMOTE = (
    choice("REMSEL", "Set value source", "設定値モード", (("Local", "ローカル"), ("Remote", "リモート"))),
    in_set_value_units("VQRSV", "Remote set value", "リモート設定値", 0, section="Rsv", read_only=True),
    choice("REMRNG", "Remote input", "リモート入力", LINEAR_RANGES),
    in_set_value_units("VQRBIA", "Remote bias", "リモートバイアス", 0, -1999, 1999, sending="calibration"),
    number("VQRRAT", "Remote ratio", "リモートレシオ", 1000, "0.001", "9.999", 3),
    number("VQRFIL", "Remote filter", "リモートフィルタ", 20, "0.0", "300.0", 1, SECONDS),
    switch("REMTRK", "Tracking", "トラッキング", FITTED, 1),
)

HEATER = (
    number("VQCT1", "Heater current", "ヒータ電流", 185, "0.0", "50.0", 1, AMPERES, section="Ct", read_only=True),
    number("VQHBA", "Heater break alarm value", "ヒータ断線警報設定値", 120, "0.0", "50.0", 1, AMPERES),
    number("VQHBDB", "Heater break hysteresis", "ヒータ断線動作すきま", 2, "0.1", "9.9", 1, AMPERES),
    number("VQHBDL", "Heater break delay", "ヒータ断線警報遅延", 3, 0, 9999, 0, SECONDS),
    number("VQLBA", "Loop break time", "ループ断線判定時間", 480, 0, 7200, 0, SECONDS),
    switch("HBLOCK", "Latch heater break alarm", "ヒータ断線警報保持", OFF_ON),
)

TRANSMISSION = (
    choice("TRSEL", "Transmitted value", "伝送出力種類",
           (("Process value", "測定値"), ("Set value", "設定値"), ("Output", "調節出力"))),
    choice("TRRNG", "Transmission range", "伝送出力レンジ", LINEAR_RANGES),
    in_set_value_units("TRLOW", "Transmission low", "伝送スケーリング下限", 0, "TAGVQLIL", "TAGVQLIH"),
    in_set_value_units("TRHIGH", "Transmission high", "伝送スケーリング上限", 1000, "TAGVQLIL", "TAGVQLIH"),
)

TIMER = (
    choice("TMRMOD", "Timer mode", "タイマ動作",
           (("Off", "オフ"), ("Start delay", "オンディレイ"), ("Stop delay", "オフディレイ"))),
    number("TMRSET", "Timer setting", "タイマ設定", 60, 0, 9999),
    choice("TMRUNT", "Timer unit", "タイマ単位", (("Minutes", "分"), ("Hours", "時間"))),
)

DIGITAL_INPUT = (
    from_table("FQDI", "Input function", "接点入力機能", "DigitalInput", 1),
    switch("DILOG", "Contact logic", "接点論理", (("Closed is active", "閉で有効"), ("Open is active", "開で有効"))),
)

SYSTEM = (
    choice("KEYLCK", "Key lock", "キーロック",
           (("Unlocked", "解除"), ("Settings", "設定のみロック"), ("All keys", "全ロック"))),
    switch("DSPTYP", "Display", "表示", (("PV only", "PVのみ"), ("PV and SV", "PV/SV")), 1),
    number("LEDBRT", "Brightness", "表示輝度", 3, 1, 5, size=1),
    switch("ALMRST", "Alarm reset", "警報リセット", (("Ready", "通常"), ("Resetting", "リセット中")), section="Coil",
           sending="command"),
    number("OPHOUR", "Operating hours", "積算稼働時間", 10234, 0, 999999, 0, HOURS, size=4, read_only=True),
    number("SOFTNO", "Software version", "ソフトウェアバージョン", 214, "0", "99.99", 2, read_only=True),
)

COMMUNICATION = (
    number("COMADR", "Slave address", "スレーブアドレス", 1, 1, 99, size=1, sending="line"),
    choice("COMSPD", "Speed", "通信速度", (("9600bps", "9600bps"), ("19200bps", "19200bps")), sending="line"),
    choice("COMCHR", "Data format", "データ形式", (("N,8,1", "N,8,1"), ("E,7,1", "E,7,1")), sending="line"),
    choice("COMMOD", "Transmission mode", "伝送モード", (("RTU", "RTU"), ("ASCII", "ASCII")), sending="line"),
    number("COMDLY", "Response delay", "応答遅延時間", 10, 0, 250, 0, MILLISECONDS, size=1, sending="line"),
)


def program(steps, hold_minutes):
    """A ramp and soak program: (time to get there, set value) for each step."""
    result = [
        choice("PGMODE", "Program mode", "プログラム運転",
               (("Reset", "リセット"), ("Run", "ラン"), ("Hold", "ホールド"), ("Advance", "アドバンス")), sending="command"),
        number("PGREP", "Repetitions", "繰り返し回数", 1, 1, 99, size=1),
        choice("PGEND", "At the end", "終了時動作", (("Stop control", "制御停止"), ("Keep last set value", "最終設定値で継続"))),
        switch("PGPVST", "PV start", "PVスタート", OFF_ON, 1),
        number("PGWAIT", "Wait time", "ウェイト時間", hold_minutes, 0, 999, 0, MINUTES),
    ]
    for n, (minutes, value) in enumerate(steps, 1):
        result += [
            number(f"PGTM{n}", f"Step {n} time", f"ステップ{n}時間", minutes, 0, 9999, 0, MINUTES),
            in_set_value_units(f"PGSV{n}", f"Step {n} set value", f"ステップ{n}設定値", value),
        ]
    return tuple(result)


def linearizer(points):
    """Break points of a free curve, in percent of the input and of the output."""
    result = [switch("LINUSE", "Linearizer", "折線近似", FITTED)]
    for n, (x, y) in enumerate(points, 1):
        result += [
            number(f"LINX{n}", f"Point {n} input", f"折点{n}入力", x, "-5.0", "105.0", 1, PERCENT),
            number(f"LINY{n}", f"Point {n} output", f"折点{n}出力", y, "-5.0", "105.0", 1, PERCENT),
        ]
    return tuple(result)
