#pragma once

#include "Context.h"
#include "LanguageList.h"
#include "Translator.h"
#include "UserLocale.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

namespace platform {
class FormPlacement;
class GridModel;
} // namespace platform

// The shared helpers under their public names: a thin assembly of Conversions, FileLocations, FilePaths, TextTools,
// Colours, Translator, WindowLayout and ColumnLayout, bound to the process's context. One object serves the process.
class clsLibrary
{
public:
    explicit clsLibrary(Context& context);

    Context& context() const { return m_context; }

    // Conversions: the default when the value cannot be converted (Conversions.h).
    bool toBoolean(const QVariant& vVal, bool defVal) const;
    qint16 toCheckVal(const QVariant& vVal, qint16 defVal) const;
    qint32 toLong(const QVariant& vVal, qint32 defVal) const;
    qint16 toInteger(const QVariant& vVal, qint16 defVal) const;
    double toDouble(const QVariant& vVal, double defVal) const;
    float toSingle(const QVariant& vVal, float defVal) const;
    qint16 toModalVal(bool bModal) const;

    // File locations (FileLocations.h).
    QString getIniFilePath(const QString& kind) const;
    QString getIniFileName(const QString& kind) const;
    void saveINIParam(const QString& section, const QString& key, const QVariant& value) const;

    // Files, folders and names (FilePaths.h).
    bool FileExists(const QString& FileName) const;
    bool DirExists(const QString& PathName) const;
    bool MakeDir(const QString& strPathOrg) const;
    QString GetFileTitle(const QString& path) const;
    QString GetFileExt(const QString& name) const;
    QString GetFileTitleEx(const QString& path) const;
    QString GetDirName(const QString& path) const;
    bool FileName_Check(const QString& strFileName, int CounterMode) const;
    bool FileNameWithLen_Check(const QString& FileName, int CounterMode, int LenLimit) const;
    bool PathName_Check(const QString& strPathName) const;
    int CheckDriveType(const QString& strDrive) const;
    bool CheckDrive(const QString& strPathName) const;
    bool GetDiskFreeSP(const QString& strPathName, double& lngTotal, double& lngFreeSize) const; // 10,000 bytes
    QString GetSystemPath() const;

    // Texts (TextTools.h).
    QString getDataToken(const QString& text, const QString& sTokenCh) const;
    QString getKeyToken(const QString& text, const QString& sTokenCh) const;
    QString GetCommand(const QString& strC, const QString& strP, bool UcaseFlag) const;
    QString HexString(const QByteArray& bytes) const;
    QString getAdrString(qint32 lAdr) const;
    QString ExFormat(const QVariant& vExpression, const QString& vFormat, int vFirstDatOfWeek = 1,
                     int vFirstWeekOfYear = 1) const;

    // Colours (Colours.h).
    qint32 StrToColor(const QString& sColor, qint32 defaultColor) const;
    QString ColorToStr(qint32 lColor) const;
    qint32 selectVbColor(const QString& sVBColor, qint32 defaultColor) const;
    qint32 ToCOLOEREF(qint32 color) const;
    int getColorTableUbound() const;
    void getColorTable(int slot, QString& sName, QString& sColorComment) const;

    // Languages (Translator.h, LanguageList.h).
    QString tranStr(const QString& strVal) const;
    QString languageCode() const { return m_translator.languageCode(); }
    TranslateText translation() const; // tranStr, for code below or beside the library; not beyond the library's life
    void tranForm(platform::Form& frmVal) const;
    void makeLangList();
    QString getDefLangFile() const;

    // Layout of windows and grids (WindowLayout.h, ColumnLayout.h); an empty file name is the layout file's.
    void loadFormSize(platform::FormPlacement& oForm) const;
    void saveFormSize(const platform::FormPlacement& oForm) const;
    void loadColSize(platform::GridModel& oSpread, const QString& sName, const QString& sFileName) const;
    void saveColSize(const platform::GridModel& oSpread, const QString& sName, const QString& sFileName) const;

    // A question or notice by the context's presenter (MessagePresenter.h), which knows the window that it belongs to;
    // lTimer in seconds.
    qint32 showMessage(const QString& Prompt, qint32 Buttons, const QString& Title = {}, qint32 lTimer = 0) const;

    // Log of the error lines of this class ("[LibraryError]"): the process's own. It has no trace lines.
    void Logs(Log& objErrLog, Log& objTrcLog);

private:
    Context& m_context;
    platform::UserLocale m_locale;
    mutable Translator m_translator;
    LanguageList m_languages;
};
