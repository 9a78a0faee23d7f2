#include "clsLibrary.h"

#include "Colours.h"
#include "ColumnLayout.h"
#include "Conversions.h"
#include "FileLocations.h"
#include "FilePaths.h"
#include "TextTools.h"
#include "WindowLayout.h"
#include "clsINI.h"

#include <cmath>

namespace {

constexpr double kDiskUnit = 10000; // bytes

} // namespace

clsLibrary::clsLibrary(Context& context) : m_context(context), m_translator(context), m_languages(context) {}

bool clsLibrary::toBoolean(const QVariant& vVal, bool defVal) const
{
    Q_UNUSED(defVal); // every value that is not True reads as False
    return convert::toBoolean(vVal);
}

qint16 clsLibrary::toCheckVal(const QVariant& vVal, qint16 defVal) const
{
    Q_UNUSED(defVal);
    return convert::toCheckVal(vVal);
}

qint32 clsLibrary::toLong(const QVariant& vVal, qint32 defVal) const
{
    return convert::toLong(vVal, defVal);
}

qint16 clsLibrary::toInteger(const QVariant& vVal, qint16 defVal) const
{
    return convert::toInteger(vVal, defVal);
}

double clsLibrary::toDouble(const QVariant& vVal, double defVal) const
{
    return convert::toDouble(vVal, defVal);
}

float clsLibrary::toSingle(const QVariant& vVal, float defVal) const
{
    return convert::toSingle(vVal, defVal);
}

qint16 clsLibrary::toModalVal(bool bModal) const
{
    return bModal ? 1 : 0;
}

QString clsLibrary::getIniFilePath(const QString& kind) const
{
    return iniFilePath(m_context.machine, kind);
}

QString clsLibrary::getIniFileName(const QString& kind) const
{
    Q_UNUSED(kind);
    return iniFileName(m_context.machine);
}

void clsLibrary::saveINIParam(const QString& section, const QString& key, const QVariant& value) const
{
    clsINI ini = mainSettings(m_context);
    ini.PutIniData(section, key, value);
}

bool clsLibrary::FileExists(const QString& FileName) const
{
    return m_context.machine.paths.fileExists(FileName);
}

bool clsLibrary::DirExists(const QString& PathName) const
{
    return m_context.machine.paths.dirExists(PathName);
}

bool clsLibrary::MakeDir(const QString& strPathOrg) const
{
    return filepaths::makeDir(m_context.machine, strPathOrg);
}

QString clsLibrary::GetFileTitle(const QString& path) const
{
    return filepaths::fileTitle(path);
}

QString clsLibrary::GetFileExt(const QString& name) const
{
    return filepaths::fileExtension(name);
}

QString clsLibrary::GetFileTitleEx(const QString& path) const
{
    return filepaths::fileTitleWithoutExt(path);
}

QString clsLibrary::GetDirName(const QString& path) const
{
    return filepaths::dirName(path);
}

bool clsLibrary::FileName_Check(const QString& strFileName, int CounterMode) const
{
    return filepaths::isFileName(strFileName, CounterMode);
}

bool clsLibrary::FileNameWithLen_Check(const QString& FileName, int CounterMode, int LenLimit) const
{
    return filepaths::isFileNameWithin(m_context.machine, FileName, CounterMode, LenLimit);
}

bool clsLibrary::PathName_Check(const QString& strPathName) const
{
    return filepaths::isPathName(m_context.machine, strPathName);
}

int clsLibrary::CheckDriveType(const QString& strDrive) const
{
    return static_cast<int>(m_context.machine.paths.driveType(strDrive));
}

bool clsLibrary::CheckDrive(const QString& strPathName) const
{
    return filepaths::isLocalDrive(m_context.machine, strPathName);
}

bool clsLibrary::GetDiskFreeSP(const QString& strPathName, double& lngTotal, double& lngFreeSize) const
{
    const auto space = m_context.machine.paths.diskSpace(strPathName);
    if (!space)
        return false;
    lngTotal = std::nearbyint(static_cast<double>(space->totalBytes) / kDiskUnit);
    lngFreeSize = std::nearbyint(static_cast<double>(space->freeBytes) / kDiskUnit);
    return true;
}

QString clsLibrary::GetSystemPath() const
{
    return clsINI(m_context).GetSystemPath();
}

QString clsLibrary::getDataToken(const QString& text, const QString& sTokenCh) const
{
    return texttools::dataToken(text, sTokenCh);
}

QString clsLibrary::getKeyToken(const QString& text, const QString& sTokenCh) const
{
    return texttools::keyToken(text, sTokenCh);
}

QString clsLibrary::GetCommand(const QString& strC, const QString& strP, bool UcaseFlag) const
{
    return texttools::commandArgument(strC, strP, UcaseFlag);
}

QString clsLibrary::HexString(const QByteArray& bytes) const
{
    return texttools::hexString(bytes);
}

QString clsLibrary::getAdrString(qint32 lAdr) const
{
    return texttools::addressText(lAdr);
}

QString clsLibrary::ExFormat(const QVariant& vExpression, const QString& vFormat, int vFirstDatOfWeek,
                             int vFirstWeekOfYear) const
{
    Q_UNUSED(vFirstDatOfWeek); // no pattern of this program counts weeks
    Q_UNUSED(vFirstWeekOfYear);
    return texttools::format(vExpression, vFormat, m_locale.shortDate());
}

qint32 clsLibrary::StrToColor(const QString& sColor, qint32 defaultColor) const
{
    return colours::fromText(*m_context.machine.colors, sColor, defaultColor);
}

qint32 clsLibrary::ToCOLOEREF(qint32 color) const
{
    return colours::toColorRef(*m_context.machine.colors, color);
}

QString clsLibrary::ColorToStr(qint32 lColor) const
{
    return colours::toText(lColor);
}

qint32 clsLibrary::selectVbColor(const QString& sVBColor, qint32 defaultColor) const
{
    return colours::selectVbColor(sVBColor, defaultColor);
}

int clsLibrary::getColorTableUbound() const
{
    return colours::kTableSlots - 1;
}

void clsLibrary::getColorTable(int slot, QString& sName, QString& sColorComment) const
{
    const colours::TableRow row = colours::tableRow(slot);
    sName = row.name;
    sColorComment = row.description;
}

QString clsLibrary::tranStr(const QString& strVal) const
{
    return m_translator.text(strVal);
}

TranslateText clsLibrary::translation() const
{
    return [this](const QString& text) { return tranStr(text); };
}

void clsLibrary::tranForm(platform::Form& frmVal) const
{
    m_translator.form(frmVal);
}

void clsLibrary::makeLangList()
{
    m_languages.rebuild(m_locale.languageCode());
}

QString clsLibrary::getDefLangFile() const
{
    return m_languages.defaultFile();
}

void clsLibrary::loadFormSize(platform::FormPlacement& oForm) const
{
    windowlayout::load(m_context, oForm);
}

void clsLibrary::saveFormSize(const platform::FormPlacement& oForm) const
{
    windowlayout::save(m_context, oForm);
}

void clsLibrary::loadColSize(platform::GridModel& oSpread, const QString& sName, const QString& sFileName) const
{
    columnlayout::load(m_context, oSpread, sName, sFileName);
}

void clsLibrary::saveColSize(const platform::GridModel& oSpread, const QString& sName, const QString& sFileName) const
{
    columnlayout::save(m_context, oSpread, sName, sFileName);
}

qint32 clsLibrary::showMessage(const QString& Prompt, qint32 Buttons, const QString& Title, qint32 lTimer) const
{
    return m_context.messages.get().showMessage(Prompt, Buttons, Title, lTimer);
}

void clsLibrary::Logs(Log& objErrLog, Log& objTrcLog)
{
    Q_UNUSED(objTrcLog);
    m_context.errorLog = objErrLog;
}
