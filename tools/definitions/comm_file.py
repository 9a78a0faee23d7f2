"""The text of a comm file: for each stretch of memory or register the requests that read it and write it back."""

from layout import BASE, REGISTER

ABOUT = {
    "Model": "Model code, read only", "Status": "Alarms and input, as the discrete inputs show them, read only",
    "Coil": "Commands of the operator: coils", "Pv": "Process value: input register", "Man": "Manual output: register",
    "Set": "Set values; set value 1 is put in force at once", "Range": "Input; the range is put in force at the end",
    "Com": "Communication; the line changes over at the end",
}

READ_ONLY = ("Model", "Status")

# A byte in memory that is refreshed from the bits of the line: the bits count.
BITS = {"Status": "GetDigitalInput,10001,8,STAL1", "Coil": "GetDigitalSet,1,8,ATRUN"}

# Requests behind the write of a stretch of memory, by section: the tag of a value, or the value itself.
AFTER_WRITE = {
    "Set": ("SetAnalog,40001,VQSV1",),
    "Range": ("SetAnalog,40010,&h0001",),
    "Com": ("SetDigital,16,&h0001",),
    "Coil": ("SetDigital,1,ATRUN", "SetDigital,2,ALMRST"),
}


def comm_text(model, layout):
    parts = [f"; {model.code}: requests that read the memory of the controller and write it back", ""]
    used = dict.fromkeys(p.section for p in layout.parameters)
    for section in used:
        if section in ABOUT:
            parts.append(f"; {ABOUT[section]}")
        reads, writes = _commands(section, layout)
        parts += [f"[{section}]", f"ReadCmdMax={len(reads)}", *(f"ReadCmd{i}={c}" for i, c in enumerate(reads, 1)),
                  f"WriteCmdMax={len(writes)}", *(f"WriteCmd{i}={c}" for i, c in enumerate(writes, 1)), ""]
    return "\n".join(parts)


def _commands(section, layout):
    if section in REGISTER:
        command, reference = REGISTER[section]
        tag = next(p.parameter.tag for p in layout.parameters if p.section == section)
        writes = [f"SetAnalog,{reference},{tag}"] if command == "GetAnalogSet" else []
        return [f"{command},{reference},1,{tag}"], writes
    direct = f"Direct,{BASE[section]:04X},{layout.image_bytes[section]}"
    reads = [direct] + ([BITS[section]] if section in BITS else [])
    writes = [] if section in READ_ONLY or section in BITS else [direct]
    return reads, writes + list(AFTER_WRITE.get(section, ()))
