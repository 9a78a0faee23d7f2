"""The text of a screen file: keys in the order in which the program reads them, and all of them."""

from layout import GROUP_COLUMNS
from selections import ALARM_DECIMALS, EVENT_DECIMALS, SELECTIONS
from texts import BUTTON, file_kind, width

TITLE_COLORS = "RGB.255.243.200,vbBlack"
SYSTEM_COLORS = "vbWindowBackground,vbWindowText"
BUTTON_COLORS = "vbButtonFace,vbButtonText"
FRAME_COLOR = "vbGray"
LABEL_SIZE, TITLE_SIZE = 8.5, 8.5
LEFT, RIGHT, CENTER = 0, 1, 2
TEMPERATURE = "℃"  # shown beside the values that are in it
GAP_WIDTH, VALUE_MARGIN, TEXT_MARGIN = 2, 4, 2


def screen_text(model, layout):
    labels = _labels(layout)
    parts = [f"; {model.code}: {model.about}", "", *_setting(model, layout, len(labels))]
    decimals = EVENT_DECIMALS if model.code.startswith("KX9") else ALARM_DECIMALS
    for section, about in (("EVDOT", "values: a row for each alarm type, a column for each decimal point"),
                           ("EVDBDOT", "hysteresis")):
        rows = [f"{i}={places}" for i, places in enumerate(decimals)]
        parts += [f"; Decimal places of alarm {about}", f"[{section}]", f"LastIndex={len(rows) - 1}", *rows, ""]
    for placed in layout.blocks:
        parts += _block(placed, layout)
    for number, label in enumerate(labels, 1):
        parts += [f"[Strings{number}]", *label, ""]
    for number, placed in enumerate(layout.parameters, 1):
        parts += [f"[Datas{number}]", *_parameter(placed, _item_option(model, placed)), ""]
    return "\n".join(parts)


def _setting(model, layout, label_count):
    extension = model.code.lower()
    widths = _column_widths(layout)
    return ["[Setting]", f"ExtName={extension}", "DataPath=", f"BlockMaxCount={len(layout.blocks)}",
            f"StringMaxCount={label_count}", f"DataMaxCount={len(layout.parameters)}",
            f"DialogFilter={file_kind(model.code)[0]}(*.{extension})|*.{extension}", "DefaultFontName=System",
            f"DefaultFontSize={LABEL_SIZE}", "DefaultBackColor=vbWindowBackground", "DefaultForeColor=vbWindowText",
            f"MaxRow={layout.rows}", f"MaxCol={layout.columns}",
            *(f"ColWidth{c}={widths[c]}" for c in range(1, layout.columns + 1)), ""]


def _column_widths(layout):
    """Room for the longer of both languages."""
    widths = {gap: GAP_WIDTH for gap in layout.gaps}

    def need(column, texts, margin):
        widths[column] = max([widths.get(column, 0), *(width(text) + margin for text in texts)])

    for placed in layout.blocks:
        need(placed.left, placed.block.title, TEXT_MARGIN)
        need(placed.right, BUTTON, VALUE_MARGIN)
    for placed in layout.parameters:
        if placed.parameter.hidden:
            continue
        need(placed.column - 1, placed.parameter.name, TEXT_MARGIN)
        need(placed.column, _possible_values(placed.parameter), VALUE_MARGIN)
        need(placed.column + 1, (*placed.parameter.unit, TEMPERATURE), TEXT_MARGIN)
    return widths


def _possible_values(parameter):
    if parameter.kind == "Combo":
        return [text for pair in parameter.choices for text in pair]
    if parameter.kind == "Bit":
        return [text for pair in parameter.captions for text in pair]
    if parameter.kind in ("Multi", "Input"):
        return [text for table in SELECTIONS if table.section in parameter.tables
                for names, _ in table.entries for text in names[0]]
    return [parameter.default, "-1999.9"]


def _block(placed, layout):
    block = placed.block
    numbers = {other.block.title[0]: other.number for other in layout.blocks}
    lines = [f"[BlockInfo{placed.number}]", "Visible=True", f"Option={block.option}", f"Name={block.title[0]}",
             "RelayBlockNo=" + ",".join(str(numbers[title]) for title in block.relays),
             f"CellData={placed.top},{placed.left},{placed.bottom},{placed.right},True,{FRAME_COLOR}"]
    if block.read_only:
        return [*lines, "ButtonCaption=", ""]
    return [*lines, f"ButtonCaption={BUTTON[0]}", f"ButtonData={placed.top},{placed.right},{BUTTON_COLORS}", ""]


def _label(row, column, colors, align, caption, size, bold, option):
    return ["Visible=True", f"Option={option}", f"CellData={row},{column},{colors},{align}", f"Caption={caption}",
            f"FontSize={size}", f"FontBold={bold}"]


def _labels(layout):
    labels = []
    for placed in layout.blocks:
        block = placed.block
        for offset in range(GROUP_COLUMNS if block.read_only else GROUP_COLUMNS - 1):
            caption = block.title[0] if offset == 0 else ""
            labels.append(_label(placed.top, placed.left + offset, TITLE_COLORS, LEFT, caption, TITLE_SIZE, True,
                                 block.option))
        for item in (p for p in layout.parameters if p.block is placed and not p.parameter.hidden):
            name, unit = item.parameter.name[0], item.parameter.unit[0]
            for column, caption in ((item.column - 1, name), (item.column + 1, unit)):
                if caption:
                    labels.append(_label(item.row, column, SYSTEM_COLORS, LEFT, caption, LABEL_SIZE, False,
                                         block.option))
    return labels


def _item_option(model, placed):
    """An item without a cell needs an expression that holds: with none, one that is not visible is not built at all."""
    terms = [f"0={model.code[:4]}"] if placed.parameter.hidden else []
    return "&".join(terms + [term for term in (placed.block.block.option,) if term])


def _parameter(placed, option):
    p = placed.parameter
    off, on = p.captions
    multi, celsius, kelvin = ("", "", "") if not p.tables else (p.tables[0], "", "") if p.kind == "Multi" else (
        "", *p.tables)
    return [f"Tag={p.tag}", f"BlockNo={placed.block.number}", f"Name={p.name[0]}", f"Option={option}",
            f"Class={'measured' if p.read_only else p.sending}",
            f"Visible={not p.hidden}", f"Enabled={not p.read_only}",
            *(["ReadOnly=True"] if p.read_only else []), f"KXAddress={placed.address}",
            f"DataLen={p.size}", f"BitMask={placed.mask}", f"CellData={placed.row},{placed.column},{SYSTEM_COLORS}",
            f"CommRaedSection={placed.section}", f"CommWriteSection={placed.section}", f"CellType={p.kind}",
            f"BitCaptionOn={on[0]}", f"BitCaptionOff={off[0]}", "BitData=1,0",
            f"DataInfo={p.decimals},{p.low},{p.high},{p.low_sign},{p.high_sign},0,10",
            "ComboStrings=" + "vbTab".join(text[0] for text in p.choices),
            "ComboDatas=" + "vbTab".join(str(i) for i in range(len(p.choices))),
            f"MultiSelectSection={multi}", f"InputCSelectSection={celsius}", f"InputKSelectSection={kelvin}",
            f"DefaultData={p.default}"]
