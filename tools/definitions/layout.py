"""Where things go: the cells of a model's grid and the addresses in the controller's memory."""

from dataclasses import dataclass, field

from parameter import Parameter

TOP_ROW = 2
GROUP_COLUMNS = 3  # label, value, unit
GROUP_STEP = GROUP_COLUMNS + 1  # and the gap to the next group
FIRST_COLUMN = 2
MAX_IMAGE_BYTES = 120  # of one read

# Start of each stretch of memory that is read and written in one piece.
BASE = {"Model": 0xFBC0, "Set": 0x8000, "Pid": 0x8100, "Range": 0x8200, "Alarm": 0x8300, "Event": 0x8400,
        "Output": 0x8500, "System": 0x8600, "Com": 0x8700, "Output2": 0x8800, "Remote": 0x8900, "Heater": 0x8A00,
        "Trans": 0x8B00, "Timer": 0x8C00, "Di": 0x8D00, "Zone": 0x8E00, "Program": 0x8F00, "Linear": 0x9000,
        "Status": 0xF000, "Coil": 0xF010}

# Single registers: the read command and the reference number.
REGISTER = {"Pv": ("GetAnalogInput", 30001), "Mv": ("GetAnalogInput", 30002), "Sv": ("GetAnalogInput", 30003),
            "Mv2": ("GetAnalogInput", 30004), "Rsv": ("GetAnalogInput", 30005), "Ct": ("GetAnalogInput", 30006),
            "Man": ("GetAnalogSet", 40002)}


@dataclass
class PlacedBlock:
    number: int
    block: object
    top: int
    left: int
    bottom: int

    @property
    def right(self):
        return self.left + GROUP_COLUMNS - 1


@dataclass
class PlacedParameter:
    parameter: Parameter
    block: PlacedBlock
    row: int = 0
    column: int = 0
    address: str = ""
    mask: int = 0

    @property
    def section(self):
        return self.parameter.section or self.block.block.section


@dataclass
class Layout:
    blocks: list = field(default_factory=list)
    parameters: list = field(default_factory=list)
    rows: int = 0
    columns: int = 0
    gaps: list = field(default_factory=list)  # columns between the groups
    image_bytes: dict = field(default_factory=dict)  # by section, of those in memory


def place(model):
    layout = Layout()
    for index, column in enumerate(model.columns):
        row = TOP_ROW
        left = FIRST_COLUMN + index * GROUP_STEP
        layout.gaps += [left - 1]
        for block in column:
            row = _place_block(layout, block, row, left) + 2
        layout.rows = max(layout.rows, row - 1)
    layout.columns = FIRST_COLUMN + len(model.columns) * GROUP_STEP - 1
    layout.gaps += [layout.columns]
    _give_addresses(layout)
    return layout


def _place_block(layout, block, top, left):
    shown = [p for p in block.parameters if not p.hidden]
    placed = PlacedBlock(len(layout.blocks) + 1, block, top, left, top + len(shown))
    layout.blocks.append(placed)
    row = top
    for parameter in block.parameters:
        if parameter.hidden:
            layout.parameters.append(PlacedParameter(parameter, placed))
            continue
        row += 1
        layout.parameters.append(PlacedParameter(parameter, placed, row, left + 1))
    return placed.bottom


def _give_addresses(layout):
    for section, base in BASE.items():
        members = [p for p in layout.parameters if p.section == section]
        # Words first, so that they stay on even addresses; then bytes; the bits share bytes.
        words = [p for p in members if p.parameter.size > 1]
        small = [p for p in members if p.parameter.size == 1 and p.parameter.kind != "Bit"]
        offset = 0
        for placed in words + small:
            placed.address = f"{base + offset:04X}"
            offset += placed.parameter.size
        bits = [p for p in members if p.parameter.kind == "Bit"]
        for index, placed in enumerate(bits):
            placed.address = f"{base + offset + index // 8:04X}"
            placed.mask = 1 << index % 8
        offset += -(-len(bits) // 8)
        if offset > MAX_IMAGE_BYTES:
            raise ValueError(f"section {section} has {offset} bytes")
        if offset:
            layout.image_bytes[section] = offset
