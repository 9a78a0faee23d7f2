#include "GridBuilder.h"

#include "DefinitionFault.h"
#include "FontSize.h"
#include "GridRefresh.h"
#include "ModelData.h"
#include "Numbers.h"
#include "OptionExpression.h"
#include "WrittenItems.h"
#include "clsLibrary.h"

#include <utility>

using platform::Cell;
using platform::CellRange;
using platform::CellType;
using platform::HAlign;

namespace {

HAlign alignOf(int code)
{
    return code == 1 ? HAlign::Right : code == 2 ? HAlign::Center : HAlign::Left;
}

// The number that a cell shows before anything was read: the default stored value, not scaled.
QString unscaled(const clsLibrary& library, const clsData& item)
{
    if (!platform::parseSingle(item.Data()))
        return item.Data();
    return library.ExFormat(library.toSingle(item.Data(), 0.0F), item.getFormatStr());
}

} // namespace

GridBuilder::GridBuilder(ModelData& model, platform::GridModel& grid, clsINI& screen, LoadProgress progress)
    : m_model(model), m_loader(model), m_screen(screen), m_grid(grid), m_library(model.library()),
      m_progress(std::move(progress))
{}

clsINI GridBuilder::screenFile(clsLibrary& library, const ModelEntry& entry)
{
    clsINI ini(library.context());
    ini.setIniPath(library.getIniFilePath(QString()));
    // Without a screen file the model is an empty definition.
    ini.setIniFileOrNone(definitionFault(library, entry).isEmpty() ? entry.screenFile : QString());
    return ini;
}

void GridBuilder::build()
{
    if (!m_library.context().settings.get().m_bLoadView)
        m_grid.setShown(false);
    m_grid.beginUpdate();
    prepareGrid();
    buildBlocks();
    buildLabels();
    buildItems();
}

void GridBuilder::finish()
{
    GridRefresh(m_model, &m_grid).showUnits();
    fitSizes();
    m_grid.endUpdate();
    m_progress(2, m_model.settings.dataCount, QString());
    m_grid.setShown(true);
}

void GridBuilder::prepareGrid()
{
    const ScreenSettings& settings = m_model.settings;
    m_grid.setMaxRows(settings.maxRow);
    m_grid.setMaxCols(settings.maxCol);
    Cell plain;
    plain.type = CellType::StaticText;
    plain.backColor = color(settings.backColor, QStringLiteral("vbWindowBackground"));
    plain.foreColor = color(settings.foreColor, QStringLiteral("vbWindowText"));
    m_grid.resetCells(plain);
    m_grid.setBackColor(plain.backColor);
    m_grid.setBaseSize(settings.fontSize); // values are as large as the labels
    for (int col = 1; col <= m_grid.maxCols(); ++col) {
        const QString current = platform::doubleText(m_grid.colWidth(col));
        const QString text =
            m_screen.GetIniData(QStringLiteral("Setting"), QStringLiteral("ColWidth%1").arg(col), current);
        m_grid.setColWidth(col, m_library.toLong(text, 0));
    }
}

void GridBuilder::buildBlocks()
{
    const int count = m_model.settings.blockCount;
    m_progress(0, count, QStringLiteral("loading Block Info."));
    for (int n = 1; n <= count; ++n) {
        const QString section = QStringLiteral("BlockInfo%1").arg(n);
        if (isBuilt(section))
            buildBlock(n, section);
        m_progress(1, n, QString());
    }
    m_progress(2, count + 1, QString());
}

void GridBuilder::buildBlock(int n, const QString& section)
{
    auto block = std::make_unique<clsBlock>();
    block->m_lNo = n;
    block->m_sName = m_screen.GetIniData(section, QStringLiteral("Name"), QStringLiteral("Name%1").arg(n));
    block->setRelayBlock(m_screen.GetIniData(section, QStringLiteral("RelayBlockNo"), QString(), true));
    const QStringList area =
        m_screen.GetIniData(section, QStringLiteral("CellData"), QStringLiteral("1,1,3,3,True,vbBlack")).split(u',');
    const CellRange range(number(area, 0), number(area, 1), number(area, 2), number(area, 3));
    if (area.size() < 5)
        addTooFewFields(section, area.size(), 6);
    if (area.size() > 5)
        m_model.lookup.log.checkColor(m_library, section, area[5]);
    if (m_library.toBoolean(area.value(4), false))
        m_grid.addFrame({range, color(area.value(5), QStringLiteral("vbBlack"))});
    int row = range.row;
    int col = range.col;
    const QString caption = m_screen.GetIniData(section, QStringLiteral("ButtonCaption"), QString());
    if (!caption.isEmpty()) {
        const QString defaultPlace = QStringLiteral("%1,%2,vbRed,vbWindowText").arg(range.row2).arg(range.col2);
        const QStringList place = m_screen.GetIniData(section, QStringLiteral("ButtonData"), defaultPlace).split(u',');
        row = number(place, 0);
        col = number(place, 1);
        Cell button;
        button.type = CellType::Button;
        button.text = m_library.tranStr(caption);
        button.backColor = color(place.value(2), QStringLiteral("vbButtonFace"));
        button.foreColor = color(place.value(3), QStringLiteral("vbWindowText"));
        button.align = HAlign::Center;
        button.block = n;
        m_grid.setCell(row, col, button);
    }
    m_model.add(std::move(block), row, col);
}

void GridBuilder::addTooFewFields(const QString& section, qsizetype found, int wanted)
{
    m_model.lookup.log.add({{},
                            section,
                            QStringLiteral("CellData"),
                            QStringLiteral("%1 of %2 fields").arg(found).arg(wanted),
                            QStringLiteral("give all fields, separated by commas")});
}

void GridBuilder::buildLabels()
{
    const int count = m_model.settings.stringCount;
    m_progress(0, count, QStringLiteral("loading Label Info."));
    for (int n = 1; n <= count; ++n) {
        const QString section = QStringLiteral("Strings%1").arg(n);
        if (isBuilt(section))
            buildLabel(section);
        m_progress(1, n, QString());
    }
    m_progress(2, count + 1, QString());
}

void GridBuilder::buildLabel(const QString& section)
{
    const QStringList place =
        m_screen.GetIniData(section, QStringLiteral("CellData"), QStringLiteral("1,1,vbWindowBackGround,vbWindowText"))
            .split(u',');
    const int row = number(place, 0);
    const int col = number(place, 1);
    Cell label = m_grid.cell(row, col);
    label.type = CellType::StaticText;
    if (place.size() < 2)
        addTooFewFields(section, place.size(), 4);
    for (int i = 2; i < 4 && i < place.size(); ++i)
        m_model.lookup.log.checkColor(m_library, section, place[i]);
    if (place.size() > 2)
        label.backColor = color(place[2], QStringLiteral("vbWindowBackground"));
    if (place.size() > 3)
        label.foreColor = color(place[3], QStringLiteral("vbWindowText"));
    if (place.size() > 4)
        label.align = alignOf(number(place, 4));
    label.text = m_library.tranStr(m_screen.GetIniData(section, QStringLiteral("Caption"), QString()));
    const double defaultSize = m_model.settings.fontSize;
    const QString size =
        m_screen.GetIniData(section, QStringLiteral("FontSize"), platform::doubleText(defaultSize), true);
    label.font.pointSize = platform::boundedFontSize(m_library.toDouble(size, defaultSize), defaultSize);
    label.font.bold = m_library.toBoolean(
        m_screen.GetIniData(section, QStringLiteral("FontBold"), QStringLiteral("False"), true), false);
    m_grid.setCell(row, col, label);
    if (!label.text.isEmpty())
        m_model.labels.insert({row, col}, label.text);
}

void GridBuilder::buildItems()
{
    const int count = m_model.settings.dataCount;
    m_progress(0, count, QStringLiteral("loading Data Info."));
    for (int n = 1; n <= count; ++n) {
        buildItem(n, QStringLiteral("Datas%1").arg(n));
        m_progress(1, n, QString());
    }
    // The image that an item is written through may belong to an item further down.
    for (const auto* items : {&m_model.items, &m_model.duplicates}) {
        for (const auto& item : *items)
            markReadOnly(*item);
    }
    m_progress(2, count + 1, QString());
}

void GridBuilder::markReadOnly(const clsData& item)
{
    if (!item.Visible() || m_model.itemAt(item.Row(), item.Col()) != &item)
        return;
    Cell cell = m_grid.cell(item.Row(), item.Col());
    cell.readOnly = !isWritten(m_model, item);
    if (item.MType() == ItemType::Bit)
        cell.sign = cell.readOnly ? platform::CellSign::State : platform::CellSign::Switch;
    else if (item.checkMulti() && !cell.readOnly)
        cell.sign = platform::CellSign::Table;
    if (cell.sign == platform::CellSign::State || cell.sign == platform::CellSign::Switch)
        cell.align = HAlign::Left;
    m_grid.setCell(item.Row(), item.Col(), cell);
}

void GridBuilder::buildItem(int n, const QString& section)
{
    QString option;
    if (!isBuilt(section, &option))
        return;
    auto item = std::make_unique<clsData>(m_model.lookup);
    item->load(m_screen, n, &m_library, option.trimmed() != u"USE");
    if (item->lacksTables())
        m_model.lookup.log.missingTables(m_library);
    const clsData& added = m_loader.add(std::move(item), m_grid.maxRows(), m_grid.maxCols());
    if (added.Visible())
        layItem(added);
}

void GridBuilder::layItem(const clsData& item)
{
    Cell cell;
    cell.type = item.CellType();
    const bool opensTable = item.checkMulti() && (item.doMultiSelect() || item.doInputSelect());
    cell.use = opensTable ? platform::CellUse::Table : platform::CellUse::Value;
    cell.block = m_model.blockOf(item.BlockNo()) == nullptr ? 0 : item.BlockNo();
    cell.backColor = item.BackColor();
    cell.foreColor = item.ForeColor();
    switch (cell.type) {
    case CellType::Edit:
        cell.text = unscaled(m_library, item);
        cell.align = HAlign::Right;
        break;
    case CellType::StaticText:
        cell.text = item.Data();
        cell.align = item.MType() == ItemType::Multi || item.MType() == ItemType::Input ? HAlign::Center : HAlign::Left;
        break;
    case CellType::Button:
        cell.text = m_library.tranStr(item.ButtonCaption());
        cell.comboList = QStringList{m_library.tranStr(item.BitOnCap()), m_library.tranStr(item.BitOffCap())};
        cell.value = m_library.toLong(item.Data(), 0);
        cell.align = HAlign::Center;
        break;
    case CellType::ComboBox:
        cell.comboList = item.ComboString().split(u'\t');
        cell.text = item.Data();
        break;
    }
    m_grid.setCell(item.Row(), item.Col(), cell);
}

void GridBuilder::fitSizes()
{
    if (!m_library.context().settings.get().m_bAdjustDesign) {
        for (int col = 0; col <= m_grid.maxCols(); ++col)
            m_grid.setColWidth(col, m_grid.maxTextColWidth(col));
    }
    for (int row = 1; row <= m_grid.maxRows(); ++row)
        m_grid.setRowHeight(row, m_grid.maxTextRowHeight(row));
}

bool GridBuilder::isBuilt(const QString& section, QString* option)
{
    const QString visible = m_screen.GetIniData(section, QStringLiteral("Visible"), QStringLiteral("True"));
    const QString expression = m_screen.GetIniData(section, QStringLiteral("Option"), QString());
    if (option != nullptr)
        *option = expression;
    return isOptionOn(expression, m_library.toBoolean(visible, true), m_model.lookup.modelString);
}

platform::ColorRef GridBuilder::color(const QString& name, const QString& fallbackName) const
{
    const qint32 fallback = m_library.StrToColor(fallbackName, 0);
    return static_cast<platform::ColorRef>(m_library.StrToColor(name, fallback));
}

int GridBuilder::number(const QStringList& fields, int index) const
{
    return m_library.toLong(fields.value(index), 0);
}
