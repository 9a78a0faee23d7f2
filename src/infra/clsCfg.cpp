#include "clsCfg.h"

#include "FileLocations.h"
#include "IniBatch.h"
#include "clsINI.h"
#include "clsLibrary.h"

namespace {

const QString kOptions = QStringLiteral("Setting");

struct BooleanKey
{
    const char* key;
    bool clsCfg::*field;
    const char* defaultText = "False";
};

struct TextKey
{
    const char* key;
    QString clsCfg::*field;
    const char* defaultText;
};

// In the order in which they are read.
constexpr BooleanKey kFirstFlags[] = {
    {"ShowRecieveConfForm", &clsCfg::m_bViewRecvConf},   {"ShowSendConfForm", &clsCfg::m_bViewSendConf},
    {"ShowProgramEndConfForm", &clsCfg::m_bViewEndConf}, {"ColWidthAdjustDesign", &clsCfg::m_bAdjustDesign},
    {"ForceAppFontUpdate", &clsCfg::m_bForceFont},       {"UseCommunicate", &clsCfg::m_bComm},
    {"NotPermitPrevInstance", &clsCfg::m_bPrevInstance},
};
constexpr TextKey kTexts[] = {
    {"ForceFont", &clsCfg::m_sFont, "System"},
    {"ForceFontSize", &clsCfg::m_sFontSize, "9"},
    {"ForceFontWidth", &clsCfg::m_sFontWidth, "0"},
    {"ForceFontHeight", &clsCfg::m_sFontHeight, "0"},
};
constexpr BooleanKey kLastFlags[] = {
    {"ShowLoadingScreen", &clsCfg::m_bLoadView},
    {"ShowInputSelectConfForm", &clsCfg::m_bViewInputConf},
    {"ShowUnitSelectConfForm", &clsCfg::m_bViewUnitConf},
    {"NeverWrite", &clsCfg::m_bNeverWrite},
    {"ShowDiscardConfForm", &clsCfg::m_bViewDiscardConf, "True"},
};
const QString kCharSet = QStringLiteral("ForceFontCharSet");

} // namespace

void clsCfg::init(clsLibrary* objLib)
{
    m_library = objLib;
}

void clsCfg::load()
{
    clsINI ini = mainSettings(m_library->context());
    IniBatch batch(m_library->context());
    const auto readFlag = [&](const BooleanKey& flag) {
        const QString text = ini.GetIniData(kOptions, QLatin1String(flag.key), QLatin1String(flag.defaultText));
        this->*flag.field = m_library->toBoolean(text, false);
    };
    for (const BooleanKey& flag : kFirstFlags)
        readFlag(flag);
    for (const TextKey& text : kTexts)
        this->*text.field = ini.GetIniData(kOptions, QLatin1String(text.key), QLatin1String(text.defaultText));
    for (const BooleanKey& flag : kLastFlags)
        readFlag(flag);
    m_lCharSet = m_library->toLong(ini.GetIniData(kOptions, kCharSet, QStringLiteral("0")), 0);
    batch.commitLogged();
}

platform::Result<> clsCfg::save()
{
    clsINI ini = mainSettings(m_library->context());
    IniBatch batch(m_library->context());
    for (const BooleanKey& flag : kFirstFlags)
        ini.PutIniData(kOptions, QLatin1String(flag.key), this->*flag.field);
    for (const TextKey& text : kTexts)
        ini.PutIniData(kOptions, QLatin1String(text.key), this->*text.field);
    for (const BooleanKey& flag : kLastFlags)
        ini.PutIniData(kOptions, QLatin1String(flag.key), this->*flag.field);
    ini.PutIniData(kOptions, kCharSet, m_lCharSet);
    return batch.commit();
}
