#pragma once

#include <QString>

// The options of section "Setting" as plain values, off by themselves where nothing else is said. clsCfg loads and
// saves them; everybody else reads them through the context.
struct ProgramOptions
{
    bool m_bViewRecvConf = false;  // "ShowRecieveConfForm": ask before receiving
    bool m_bViewSendConf = false;  // "ShowSendConfForm": ask before sending
    bool m_bViewEndConf = false;   // "ShowProgramEndConfForm": ask before the program ends
    bool m_bAdjustDesign = false;  // "ColWidthAdjustDesign": keep the column widths of the screen file
    bool m_bForceFont = false;     // "ForceAppFontUpdate"
    bool m_bComm = false;          // "UseCommunicate": off-line working, nothing is sent
    bool m_bViewInputConf = false; // "ShowInputSelectConfForm"
    bool m_bViewUnitConf = false;  // "ShowUnitSelectConfForm"
    QString m_sFont;
    QString m_sFontSize;
    QString m_sFontWidth;
    QString m_sFontHeight;
    bool m_bLoadView = false; // "ShowLoadingScreen"
    int m_lCharSet = 0;
    bool m_bPrevInstance = false;   // "NotPermitPrevInstance"
    bool m_bNeverWrite = false;     // "NeverWrite": nothing is written to a controller
    bool m_isReadOnlyRun = false;   // the same for this run only; it is not kept
    bool m_bViewDiscardConf = true; // "ShowDiscardConfForm": ask before changes are lost that were not sent or saved

    bool neverWrites() const { return m_bNeverWrite || m_isReadOnlyRun; }
};

// For a program without settings.
inline const ProgramOptions& noOptions()
{
    static const ProgramOptions options;
    return options;
}
