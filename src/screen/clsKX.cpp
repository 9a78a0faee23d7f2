#include "clsKX.h"

#include "DefinitionFault.h"
#include "GridBuilder.h"
#include "GridRefresh.h"
#include "IniBatch.h"
#include "ItemValue.h"
#include "LockRules.h"
#include "OptionExpression.h"
#include "Tags.h"
#include "WrittenItems.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <algorithm>

clsKX::clsKX(clsLibrary& library, QObject* parent) : QObject(parent)
{
    setLib(&library);
}

void clsKX::Logs(Log& objErrLog, Log& objTrcLog)
{
    m_model.lookup.log.setErrorLog(objErrLog);
    m_traceLog = objTrcLog;
}

void clsKX::logTrace(const QString& message) const
{
    m_traceLog.get().LogWrite(QStringLiteral("[KXClassTrace]") + message);
}

QString clsKX::getOptStr(int n) const
{
    return optionText(modelString(), n);
}

void clsKX::setMaxRC(int n)
{
    IniBatch batch(library().context());
    m_model.entry = ModelCatalogue(library()).entry(n);
    m_model.lookup.log.start(m_model.entry.screenFile);
    clsINI screen = GridBuilder::screenFile(library(), m_model.entry);
    m_model.settings.loadSize(screen, library());
    batch.commitLogged();
    if (m_grid == nullptr)
        return;
    m_grid->setMaxRows(m_model.settings.maxRow);
    m_grid->setMaxCols(m_model.settings.maxCol);
}

int clsKX::load(int n, clsLibrary* objLib, const QString& modelString)
{
    setLib(objLib);
    setModel(modelString);
    // A screen file fills itself in with every key that is missing: all of them in one replacement.
    IniBatch batch(library().context());
    m_model.entry = ModelCatalogue(library()).entry(n);
    const QString fault = definitionFault(library(), m_model.entry);
    if (!fault.isEmpty())
        logError(fault);
    m_model.lookup.log.start(m_model.entry.screenFile);
    clsINI screen = GridBuilder::screenFile(library(), m_model.entry);
    m_model.settings.load(screen, library(), m_model.entry.code, m_model.lookup.log);
    m_model.lookup.eventDot.load(screen, QStringLiteral("EVDOT"), library());
    m_model.lookup.eventBandDot.load(screen, QStringLiteral("EVDBDOT"), library());
    if (m_grid != nullptr) {
        m_model.clear();
        GridBuilder builder(m_model, *m_grid, screen, [this](int mode, int number, const QString& text) {
            Q_EMIT LoadEvent(mode, number, text);
        });
        builder.build();
        if (isOffLine())
            fillOffLine();
        builder.finish();
    }
    const platform::Result<> completed = batch.commit();
    if (!completed.ok())
        logError(QStringLiteral("definition file not completed: ") + completed.error());
    return m_grid == nullptr ? 1 : 0;
}

void clsKX::refreshSpread(bool bFromComm, const std::vector<clsBlock*>* colRefData)
{
    GridRefresh refresh(m_model, m_grid);
    if (bFromComm)
        refresh.readFromImages(colRefData);
    refresh.showAll();
}

bool clsKX::holdsDefaults() const
{
    return std::all_of(items().begin(), items().end(), [](const auto& item) { return item->holdsDefault(); });
}

void clsKX::fillOffLine()
{
    for (int i = 0; i < ColAdr().count(); ++i)
        if (ColAdr().at(i).hasReads())
            ColAdr().at(i).markFilled();
    refreshSpread(true, nullptr);
}

void clsKX::refreshCell(clsData& item)
{
    if (!item.Visible())
        return;
    item.Edit = EditState::kChanged;
    item.setKnown(true);
    showItem(item);
}

void clsKX::showItem(const clsData& item)
{
    GridRefresh(m_model, m_grid).show(item);
}

void clsKX::takeAsRead()
{
    for (const auto& item : m_model.items)
        item->Edit = EditState::kUntouched;
}

void clsKX::showUnits()
{
    GridRefresh(m_model, m_grid).showUnits();
}

void clsKX::setData(const QString& tag, const QString& storedValue, bool sOnlyHide)
{
    clsData* item = getDataByTag(tag);
    if (item != nullptr && (!sOnlyHide || !item->Visible()))
        item->setData(storedValue);
}

void clsKX::setVData(const QString& tag, const QString& displayValue, bool sOnlyHide)
{
    clsData* item = getDataByTag(tag);
    if (item != nullptr && (!sOnlyHide || !item->Visible()))
        item->setVData(displayValue);
}

QString clsKX::getTag(int n) const
{
    const clsData* item = m_model.itemNumbered(n);
    return item == nullptr ? QString() : item->Key();
}

QString clsKX::checkTag(const QString& text) const
{
    return resolvedTag(text, m_model.lookup);
}

platform::Result<> clsKX::saveData(const QString& fileName) const
{
    return ParameterFile(library(), fileName).save(currentSet());
}

bool clsKX::loadData(const QString& fileName)
{
    ParameterSet set;
    m_lastLoad = ParameterFile(library(), fileName).read(m_model, set);
    if (m_lastLoad.outcome != ParameterLoad::Outcome::Loaded)
        return true;
    m_lastLoad.changed = setValues(set.values);
    m_lastLoad.missing.removeAll(tags::kUnit); // the unit stays
    for (const auto& item : items()) {
        if (item->isKnown() && !item->isReadOnly() && !item->isAllowed())
            m_lastLoad.outsideLimits << item->Key();
    }
    refreshSpread(false, nullptr);
    return false;
}

bool clsKX::isWritable(const clsData& item) const
{
    return isWritten(m_model, item);
}

std::optional<bool> clsKX::lockOf(const clsData& item) const
{
    return LockRules(m_model.lookup).lockOf(item);
}

void clsKX::followUnit(const clsData& item)
{
    ::followUnit(item, m_model.lookup);
}
