// What is wrong with a definition, as the error log tells it.
#include "MessagePresenter.h"
#include "Numbers.h"
#include "clsKX.h"
#include "clsLibrary.h"

namespace {

const QString kDefaultColor = QStringLiteral("vbWindowBackGround"); // of a label; stands for the window's own

// A name, a number or an "RGB" text; a name or number that cannot be converted gives back whichever default it got.
bool isColor(const clsLibrary& library, const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed == kDefaultColor)
        return true;
    const bool hasForm = trimmed.startsWith(QStringLiteral("vb")) || trimmed.startsWith(QStringLiteral("RGB")) ||
                         platform::parseDouble(trimmed).has_value();
    return hasForm && library.StrToColor(trimmed, 1) == library.StrToColor(trimmed, 2);
}

} // namespace

void clsKX::noteMissingTables()
{
    if (m_tablesMissing)
        return;
    m_tablesMissing = true;
    logError(QStringLiteral("MultiSelect.ini is missing: choices from tables stay empty"));
    m_library->showMessage(m_library->tranStr(QStringLiteral("Not Found MultiSelect.ini")), MessageStyle::kExclamation);
}

void clsKX::noteFault(const QString& where, const QString& fault)
{
    if (++m_faultCount < kMaxFaults)
        logError(QStringLiteral("%1 [%2] %3").arg(m_entry.screenFile, where, fault));
    else if (m_faultCount == kMaxFaults)
        logError(QStringLiteral("%1: more faults, which are not listed").arg(m_entry.screenFile));
}

void clsKX::checkColor(const QString& where, const QString& text)
{
    auto known = m_colors.find(text);
    if (known == m_colors.end())
        known = m_colors.insert(text, isColor(*m_library, text));
    if (!*known)
        noteFault(where, QStringLiteral("\"%1\" is not a colour").arg(text.left(40)));
}

void clsKX::noteFaults(const clsData& item)
{
    const QString section = QStringLiteral("Datas%1").arg(item.number());
    for (const QString& fault : item.faults())
        noteFault(section, fault);
    checkColor(section, item.backColorName());
    checkColor(section, item.foreColorName());
    if (m_grid == nullptr || !item.Visible())
        return;
    if (item.Row() < 1 || item.Row() > m_grid->maxRows() || item.Col() < 1 || item.Col() > m_grid->maxCols())
        noteFault(section, QStringLiteral("CellData: row %1, column %2 is outside the grid of %3 rows and %4 columns")
                               .arg(item.Row())
                               .arg(item.Col())
                               .arg(m_grid->maxRows())
                               .arg(m_grid->maxCols()));
}

void clsKX::noteCircle(const clsData& item) const
{
    if (m_circles.contains(item.number()))
        return;
    m_circles.insert(item.number());
    logError(QStringLiteral("%1 [Datas%2] DataInfo: the decimal places of %3 refer back to themselves")
                 .arg(m_entry.screenFile)
                 .arg(item.number())
                 .arg(item.Key()));
}
