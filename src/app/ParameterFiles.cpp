#include "ParameterFiles.h"

#include "CellEditor.h"
#include "FileModel.h"
#include "HeldValue.h"
#include "ItemDisplay.h"
#include "MessagePresenter.h"
#include "ParameterFile.h"
#include "ProgramContext.h"
#include "VisibleText.h"
#include "clsKX.h"

#include <QFileInfo>

#include <algorithm>

namespace {

QStringList valuesOf(const clsKX& kx)
{
    QStringList values;
    for (const auto& item : kx.items()) {
        if (kx.isWritable(*item)) // what is only measured changes by itself
            values << item->Data();
    }
    return values;
}

// What comes before a bracket in the names of "name (*.ext)|*.ext".
QString translatedFilter(const QString& filter, const clsLibrary& library)
{
    QStringList parts = filter.split(u'|');
    for (qsizetype i = 0; i < parts.size(); i += 2) {
        const QString name = parts[i].section(u'(', 0, 0);
        parts[i] = library.tranStr(name.trimmed()) + parts[i].mid(name.size());
    }
    return parts.join(u'|');
}

} // namespace

ParameterFiles::ParameterFiles(clsKX& kx, ProgramContext& program, MessagePresenter& questions, QObject* parent)
    : QObject(parent), m_kx(kx), m_program(program), m_questions(questions), m_recent(program.context())
{}

bool ParameterFiles::mayOpen(MainState state)
{
    if (m_program.settings().m_bComm || state == MainState::UpToDate)
        return true;
    m_questions.showMessage(
        m_program.library().tranStr(QStringLiteral("Please acquire the up-to-date data from the equipment.")),
        MessageStyle::kCritical);
    return false;
}

FileQuestion ParameterFiles::question(bool save) const
{
    return {save, m_kx.Ext(), folder(), translatedFilter(m_kx.DialogFilter(), m_program.library()),
            save ? proposedName() : QString()};
}

// That of the file, else the definition's, else the one that was used last.
QString ParameterFiles::folder() const
{
    QString file = m_file;
    if (file.isEmpty() && !m_kx.DataPath().isEmpty())
        return m_program.machine().paths.toMachine(m_kx.DataPath());
    if (file.isEmpty())
        file = m_recent.files().value(0);
    return file.isEmpty() ? QString() : QFileInfo(file).absolutePath();
}

QString ParameterFiles::proposedName() const
{
    if (!m_file.isEmpty())
        return QFileInfo(m_file).fileName();
    const QString day = m_program.clock().now().toString(QStringLiteral("yyyy-MM-dd"));
    const QString ending = m_kx.Ext().isEmpty() ? QString() : u'.' + m_kx.Ext();
    return QStringLiteral("%1 %2%3").arg(m_kx.ModelName(), day, ending);
}

void ParameterFiles::openDataFile(MainState state)
{
    if (!mayOpen(state))
        return;
    const QString file = m_choose(question(false));
    if (!file.isEmpty())
        load(file);
}

void ParameterFiles::openAny(MainState state)
{
    const QString file = m_choose({false, {}, folder(), {}, {}});
    if (!file.isEmpty())
        openGiven(file, state);
}

void ParameterFiles::openRecent(const QString& file, MainState state)
{
    if (mayOpen(state))
        load(file);
}

bool ParameterFiles::hasUsableName(const QString& file)
{
    if (platform::PathMap::hasDesktopName(file))
        return true;
    m_questions.showMessage(m_program.library()
                                .tranStr(QStringLiteral("The name of a parameter file cannot have one of %1 in it."))
                                .arg(QStringLiteral("\\ : * ? \" < > |")),
                            MessageStyle::kCritical);
    return false;
}

void ParameterFiles::openGiven(const QString& file, MainState state)
{
    if (!hasUsableName(file))
        return;
    const platform::Result<FileModel> model = modelOfFile(m_program.library(), file);
    if (!model.ok()) {
        m_questions.showMessage(model.error(), MessageStyle::kCritical);
        return;
    }
    if (model.value().modelString == m_kx.modelString() && state == MainState::UpToDate) {
        load(file);
        return;
    }
    if (!mayDiscard())
        return;
    Q_EMIT modelWanted(model.value().number, model.value().modelString);
    // Without parameters there stands in place of the grid what is wrong with the definition.
    if (m_kx.items().empty() || !take(file))
        return;
    m_kx.takeAsRead();
    m_kx.refreshSpread(false, nullptr);
    accept(file);
}

void ParameterFiles::load(const QString& file)
{
    if (hasUsableName(file) && mayDiscard() && take(file))
        accept(file);
}

bool ParameterFiles::take(const QString& file)
{
    m_program.eventLog().LogWrite(QStringLiteral("showOpenFile-") + file);
    if (!m_kx.loadData(m_program.machine().paths.toDesktop(file)))
        return true;
    if (!QFileInfo::exists(file))
        m_recent.remove(file);
    Q_EMIT fileChanged();
    m_questions.showMessage(m_kx.lastLoad().detail, MessageStyle::kCritical);
    return false;
}

void ParameterFiles::accept(const QString& file)
{
    standFor(file);
    Q_EMIT loaded();
    reportLoad();
}

// A set that was taken may still hold what a person should look at before it is sent.
void ParameterFiles::reportLoad()
{
    const clsLibrary& library = m_program.library();
    const ParameterLoad& load = m_kx.lastLoad();
    QStringList lines;
    if (!load.outsideLimits.isEmpty())
        lines << library.tranStr(QStringLiteral("Outside their limits: %1")).arg(namesOf(load.outsideLimits));
    if (!load.missing.isEmpty())
        lines << library.tranStr(QStringLiteral("Not in the file: %1")).arg(namesOf(load.missing));
    if (!lines.isEmpty())
        m_questions.showMessage(lines.join(u'\n'), MessageStyle::kExclamation);
}

QString ParameterFiles::namesOf(const QStringList& tags) const
{
    QStringList names;
    for (const QString& tag : tags)
        names << nameWithTag(*m_kx.getDataByTag(tag), m_program.library().translation());
    return names.join(QStringLiteral(", "));
}

void ParameterFiles::loadAsChanges(const ParameterSet& set, CellEditor& editor, MainState state)
{
    if (!mayOpen(state))
        return;
    const QStringList refused = editor.enterSet(set.values);
    if (!refused.isEmpty())
        m_questions.showMessage(m_program.library()
                                    .tranStr(QStringLiteral("Outside their limits, so not loaded: %1"))
                                    .arg(namesOf(refused)),
                                MessageStyle::kExclamation);
}

void ParameterFiles::saveDataFile()
{
    if (!m_finishEntry())
        return;
    const QString file = m_choose(question(true));
    if (!file.isEmpty() && hasUsableName(file))
        saveTo(file);
}

void ParameterFiles::save()
{
    if (m_file.isEmpty() || QFileInfo(m_file).lastModified() != m_fileTime)
        saveDataFile();
    else if (m_finishEntry())
        saveTo(m_file);
}

void ParameterFiles::saveTo(const QString& file)
{
    m_program.eventLog().LogWrite(QStringLiteral("showSaveFile-") + file);
    const platform::Result<> saved = m_kx.saveData(m_program.machine().paths.toDesktop(file));
    if (saved.ok())
        standFor(file);
    else
        m_questions.showMessage(
            m_program.library().tranStr(QStringLiteral("The file was not saved: %1")).arg(saved.error()),
            MessageStyle::kCritical);
}

void ParameterFiles::standFor(const QString& file)
{
    m_file = file;
    m_fileTime = QFileInfo(file).lastModified();
    m_values = valuesOf(m_kx);
    m_recent.add(file);
    Q_EMIT fileChanged();
}

int ParameterFiles::changes() const
{
    if (!m_program.settings().m_bComm || m_file.isEmpty())
        return static_cast<int>(std::count_if(m_kx.items().cbegin(), m_kx.items().cend(),
                                              [this](const auto& item) { return isUnsent(m_kx.data(), *item); }));
    const QStringList values = valuesOf(m_kx);
    int count = 0;
    for (qsizetype i = 0; i < values.size(); ++i)
        count += values[i] == m_values.value(i) ? 0 : 1;
    return count;
}

bool ParameterFiles::mayDiscard() const
{
    if (!m_finishEntry())
        return false;
    const int count = m_program.settings().m_bViewDiscardConf ? changes() : 0;
    if (count == 0)
        return true;
    const bool isOffLine = m_program.settings().m_bComm;
    const clsLibrary& library = m_program.library();
    const QString question =
        count == 1 ? library.tranStr(isOffLine ? QStringLiteral("1 change was not saved. Discard it?")
                                               : QStringLiteral("1 change was not written. Discard it?"))
                   : library
                         .tranStr(isOffLine ? QStringLiteral("%1 changes were not saved. Discard them?")
                                            : QStringLiteral("%1 changes were not written. Discard them?"))
                         .arg(count);
    const int answer =
        m_questions.showChoice(question, MessageStyle::kYesNoExclamation + MessageStyle::kSecondIsDefault,
                               isOffLine || !m_review ? QString() : QStringLiteral("Review..."));
    if (answer == MessageResult::kExtra)
        m_review();
    return answer == MessageResult::kYes;
}

bool ParameterFiles::mayReplace() const
{
    const clsCfg& settings = m_program.settings();
    if (m_file.isEmpty() || !settings.m_bComm)
        return mayDiscard();
    if (!m_finishEntry())
        return false;
    if (settings.m_bViewRecvConf)
        return true;
    const QString question = m_program.library().tranStr(QStringLiteral(
        "The default values take the place of the values of %1. Changes that are not saved are lost. Go on?"));
    return m_questions.showMessage(question.arg(QFileInfo(m_file).fileName()), MessageStyle::kYesNoExclamation) ==
           MessageResult::kYes;
}

void ParameterFiles::forget()
{
    m_file.clear();
    m_values.clear();
    Q_EMIT fileChanged();
}

void ParameterFiles::clearRecent()
{
    m_recent.clear();
    Q_EMIT fileChanged();
}

bool ParameterFiles::isChanged() const
{
    if (!m_file.isEmpty())
        return valuesOf(m_kx) != m_values;
    return std::any_of(m_kx.items().cbegin(), m_kx.items().cend(),
                       [](const auto& item) { return item->Edit == EditState::kChanged; });
}

QString windowTitleText(const QString& program, const QString& model, const QString& file)
{
    QStringList parts;
    if (!model.isEmpty())
        parts << model;
    if (!file.isEmpty())
        parts << file;
    // Brackets in a name are not the mark of a change.
    QString document = parts.join(QStringLiteral(" - "));
    document.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
    return platform::visibleText(document.isEmpty() ? program : QStringLiteral("%1 - [%2[*]]").arg(program, document));
}
