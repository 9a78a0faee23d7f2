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
    m_faultCount = 0;
    m_tablesMissing = false;
    m_circles.clear();
    m_colors.clear();
}

void DefinitionLog::fault(const QString& where, const QString& fault)
{
    if (++m_faultCount < kMaxFaults)
        error(QStringLiteral("%1 [%2] %3").arg(m_screenFile, where, fault));
    else if (m_faultCount == kMaxFaults)
        error(QStringLiteral("%1: more faults, which are not listed").arg(m_screenFile));
}

void DefinitionLog::checkColor(const clsLibrary& library, const QString& where, const QString& text)
{
    auto known = m_colors.find(text);
    if (known == m_colors.end())
        known = m_colors.insert(text, isColor(library, text));
    if (!*known)
        fault(where, QStringLiteral("\"%1\" is not a colour").arg(text.left(kMaxQuotedColour)));
}

void DefinitionLog::circle(int number, const QString& tag)
{
    if (m_circles.contains(number))
        return;
    m_circles.insert(number);
    error(QStringLiteral("%1 [Datas%2] DataInfo: the decimal places of %3 refer back to themselves")
              .arg(m_screenFile)
              .arg(number)
              .arg(tag));
}

void DefinitionLog::missingTables(clsLibrary& library)
{
    if (m_tablesMissing)
        return;
    m_tablesMissing = true;
    error(QStringLiteral("MultiSelect.ini is missing: choices from tables stay empty"));
    library.showMessage(library.tranStr(QStringLiteral("Not Found MultiSelect.ini")), MessageStyle::kExclamation);
}
