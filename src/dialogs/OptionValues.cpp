#include "OptionValues.h"

#include "FontSize.h"
#include "IniBatch.h"
#include "Numbers.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <cmath>

namespace {

struct Check
{
    bool clsCfg::*field;
    bool isShown; // a change shows in the main window at once
};

// By index.
constexpr Check kCheckFields[OptionValues::kChecks] = {
    {&clsCfg::m_bViewRecvConf, false}, {&clsCfg::m_bViewSendConf, false},    {&clsCfg::m_bViewEndConf, false},
    {&clsCfg::m_bAdjustDesign, true},  {&clsCfg::m_bForceFont, true},        {&clsCfg::m_bLoadView, false},
    {&clsCfg::m_bComm, false},         {&clsCfg::m_bViewInputConf, false},   {&clsCfg::m_bViewUnitConf, false},
    {&clsCfg::m_bPrevInstance, false}, {&clsCfg::m_bViewDiscardConf, false}, {&clsCfg::m_bNeverWrite, false},
};

constexpr int kTenths = 10;
constexpr double kPlainSize = 9;
constexpr int kByte = 0xFF;

QString boolText(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

QString sizeText(int tenthsOfPoint)
{
    return platform::doubleText(static_cast<double>(tenthsOfPoint) / kTenths);
}

FontRecord recordOf(const clsLibrary& library, const clsCfg& settings)
{
    FontRecord font;
    font.face = settings.m_sFont;
    const double size = platform::boundedFontSize(library.toDouble(settings.m_sFontSize, kPlainSize), kPlainSize);
    font.tenthsOfPoint = static_cast<int>(std::lround(size * kTenths));
    font.charSet = settings.m_lCharSet & kByte;
    font.height = library.toLong(settings.m_sFontHeight, 0);
    font.width = library.toLong(settings.m_sFontWidth, 0);
    return font;
}

} // namespace

void OptionValues::load()
{
    m_languages.load(m_library);
    m_language = m_languages.positionInUse();
    for (size_t i = 0; i < m_checks.size(); ++i)
        m_checks[i] = m_library.toCheckVal(m_settings.*kCheckFields[i].field, 0) != 0;
    m_font = m_loadedFont = recordOf(m_library, m_settings);
}

QString OptionValues::fontText() const
{
    const QString size = m_font == m_loadedFont ? m_settings.m_sFontSize : sizeText(m_font.tenthsOfPoint);
    return m_font.face + u':' + size + QStringLiteral("pt");
}

// A font that was not chosen anew keeps the texts that it was stored with, however they were written.
bool OptionValues::changeDesign() const
{
    bool changed = false;
    chkData(changed, m_library.context().languageFile, m_languages.file(m_language));
    for (size_t i = 0; i < m_checks.size(); ++i) {
        if (kCheckFields[i].isShown)
            chkData(changed, boolText(m_settings.*kCheckFields[i].field), boolText(m_checks[i]));
    }
    if (m_font != m_loadedFont) {
        chkData(changed, m_settings.m_sFont, m_font.face);
        chkData(changed, m_settings.m_sFontSize, sizeText(m_font.tenthsOfPoint));
        chkData(changed, QString::number(m_settings.m_lCharSet), QString::number(m_font.charSet));
    }
    return changed;
}

platform::Result<> OptionValues::store()
{
    IniBatch batch(m_library.context());
    m_library.context().languageFile = m_languages.file(m_language);
    m_library.saveINIParam(QStringLiteral("Setting"), QStringLiteral("LanguageFile"), m_library.context().languageFile);
    for (size_t i = 0; i < m_checks.size(); ++i)
        m_settings.*kCheckFields[i].field = m_checks[i];
    storeFont();
    const platform::Result<> saved = m_settings.save();
    const platform::Result<> committed = batch.commit();
    return committed.ok() ? saved : committed;
}

void OptionValues::storeFont()
{
    if (m_font == m_loadedFont)
        return;
    m_settings.m_sFont = m_font.face;
    m_settings.m_sFontSize = sizeText(m_font.tenthsOfPoint);
    m_settings.m_lCharSet = m_font.charSet;
    m_settings.m_sFontHeight = QString::number(m_font.height);
    m_settings.m_sFontWidth = QString::number(m_font.width);
}

QString OptionValues::chkData(bool& changed, const QString& oldText, const QString& newText)
{
    changed = changed || oldText != newText;
    return newText;
}
