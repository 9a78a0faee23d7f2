#include "DefinitionLog.h"

#include "MessagePresenter.h"
#include "Numbers.h"
#include "clsLibrary.h"

namespace {

constexpr int kMaxQuotedColour = 40;                                // characters of a faulty text
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

void DefinitionLog::error(const QString& message) const
{
    m_errorLog.get().LogWrite(QStringLiteral("[KXClassError]") + message);
}

void DefinitionLog::start(const QString& screenFile)
{
    m_screenFile = screenFile;
    m_findings.clear();
    m_tablesMissing = false;
    m_circles.clear();
    m_colors.clear();
}

void DefinitionLog::add(DefinitionFinding finding)
{
    if (m_findings.size() == kMaxFindings)
        return;
    if (m_findings.size() + 1 == kMaxFindings)
        finding = {{},
                   {},
                   {},
                   QStringLiteral("more faults, which are not listed"),
                   QStringLiteral("correct those that are listed first")};
    if (finding.file.isEmpty())
        finding.file = m_screenFile;
    error(finding.whatAndWhere());
    m_findings.push_back(finding);
}

void DefinitionLog::checkColor(const clsLibrary& library, const QString& section, const QString& text)
{
    auto known = m_colors.find(text);
    if (known == m_colors.end())
        known = m_colors.insert(text, isColor(library, text));
    if (!*known)
        add({{},
             section,
             QStringLiteral("CellData"),
             QStringLiteral("\"%1\" is not a colour").arg(text.left(kMaxQuotedColour)),
             QStringLiteral("give a name, RGB.red.green.blue or a number")});
}

void DefinitionLog::circle(int number, const QString& tag)
{
    if (m_circles.contains(number))
        return;
    m_circles.insert(number);
    add({{},
         QStringLiteral("Datas%1").arg(number),
         QStringLiteral("DataInfo"),
         QStringLiteral("the decimal places of %1 refer back to themselves").arg(tag),
         QStringLiteral("give a number of decimal places")});
}

void DefinitionLog::missingTables(clsLibrary& library)
{
    if (m_tablesMissing)
        return;
    m_tablesMissing = true;
    add({QStringLiteral("MultiSelect.ini"),
         {},
         {},
         QStringLiteral("is missing, choices from tables stay empty"),
         QStringLiteral("put it into the definition folder")});
    library.showMessage(library.tranStr(QStringLiteral("Not Found MultiSelect.ini")), MessageStyle::kExclamation);
}
