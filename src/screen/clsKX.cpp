#include "clsKX.h"

#include "DefinitionFault.h"
#include "EntryOrder.h"
#include "GridBuilder.h"
#include "GridRefresh.h"
#include "IniBatch.h"
#include "OptionExpression.h"
#include "ProfileDocument.h"
#include "WrittenItems.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <algorithm>
#include <utility>

namespace {

const QString kUnitTag = QStringLiteral("SWQCF");
const QString kVoltageMark = QStringLiteral("5V"); // in the names of voltage and current inputs

QString cellKey(int row, int col)
{
    return QString::number(row) + u'-' + QString::number(col);
}

} // namespace

clsKXAdr* ImageCollection::find(const QString& section) const
{
    return m_byName.value(section, nullptr);
}

clsKXAdr* ImageCollection::add(const QString& section, std::unique_ptr<clsKXAdr> image)
{
    m_images.push_back(std::move(image));
    m_byName.insert(section, m_images.back().get());
    return m_images.back().get();
}

void ImageCollection::clear()
{
    m_byName.clear();
    m_images.clear();
}

clsKX::clsKX(clsLibrary& library, QObject* parent) : QObject(parent), m_library(&library) {}

clsKX::~clsKX() = default;

void clsKX::setSpread(platform::GridModel* grid)
{
    m_grid = grid;
}

void clsKX::setLib(clsLibrary* library)
{
    m_library = library;
}

void clsKX::Logs(Log& objErrLog, Log& objTrcLog)
{
    m_errorLog = objErrLog;
    m_traceLog = objTrcLog;
}

void clsKX::logError(const QString& message) const
{
    m_errorLog.get().LogWrite(QStringLiteral("[KXClassError]") + message);
}

void clsKX::logTrace(const QString& message) const
{
    m_traceLog.get().LogWrite(QStringLiteral("[KXClassTrace]") + message);
}

QString clsKX::getOptStr(int n) const
{
    return optionText(m_modelString, n);
}

void clsKX::setMaxRC(int n)
{
    IniBatch batch(m_library->context());
    m_entry = ModelCatalogue(*m_library).entry(n);
    clsINI screen = GridBuilder::screenFile(*m_library, m_entry);
    m_settings.loadSize(screen, *m_library);
    batch.commitLogged();
    if (m_grid == nullptr)
        return;
    m_grid->setMaxRows(m_settings.maxRow);
    m_grid->setMaxCols(m_settings.maxCol);
}

int clsKX::load(int n, clsLibrary* objLib, const QString& modelString)
{
    m_library = objLib;
    m_modelString = modelString;
    // A screen file fills itself in with every key that is missing: all of them in one replacement.
    IniBatch batch(m_library->context());
    m_entry = ModelCatalogue(*m_library).entry(n);
    const QString fault = definitionFault(*m_library, m_entry);
    if (!fault.isEmpty())
        logError(fault);
    clsINI screen = GridBuilder::screenFile(*m_library, m_entry);
    m_settings.load(screen, *m_library, m_entry.code, m_errorLog);
    m_eventDot.load(screen, QStringLiteral("EVDOT"), *m_library);
    m_eventBandDot.load(screen, QStringLiteral("EVDBDOT"), *m_library);
    if (m_grid != nullptr) {
        clear();
        GridBuilder(*this, screen).build();
    }
    const platform::Result<> completed = batch.commit();
    if (!completed.ok())
        logError(QStringLiteral("definition file not completed: ") + completed.error());
    return m_grid == nullptr ? 1 : 0;
}

void clsKX::clear()
{
    for (clsBlock* block : m_blockList)
        block->removeData();
    m_blockList.clear();
    m_blockByNo.clear();
    m_blockByCell.clear();
    m_blocks.clear();
    m_itemByCell.clear();
    m_itemByTag.clear();
    m_tagByFileKey.clear();
    m_items.clear();
    m_duplicates.clear();
    m_tags.clear();
    m_images.clear();
    m_circles.clear();
    m_colors.clear();
    m_faultCount = 0;
    m_tablesMissing = false;
}

bool clsKX::hasVoltageRange() const
{
    const clsData* range = getDataByTag(QStringLiteral("PQRNO"));
    return range != nullptr && range->VData().contains(kVoltageMark);
}

void clsKX::addBlock(std::unique_ptr<clsBlock> block, int row, int col)
{
    clsBlock* added = block.get();
    m_blocks.push_back(std::move(block));
    m_blockList.push_back(added);
    m_blockByNo.insert(added->m_lNo, added);
    const QString key = cellKey(row, col);
    if (!m_blockByCell.contains(key))
        m_blockByCell.insert(key, added);
}

clsData* clsKX::addItem(std::unique_ptr<clsData> item, int number)
{
    clsData* added = item.get();
    if (added->Visible()) {
        const QString key = cellKey(added->Row(), added->Col());
        if (!m_itemByCell.contains(key))
            m_itemByCell.insert(key, added);
        else
            noteFault(QStringLiteral("Datas%1").arg(number),
                      QStringLiteral("CellData: cell %1 is taken by %2").arg(key, m_itemByCell[key]->Key()));
    }
    const bool isNew = takeTag(*added);
    (isNew ? m_items : m_duplicates).push_back(std::move(item));
    m_tags[static_cast<size_t>(number)] = added->Key();
    if (clsBlock* block = getBlockByNo(added->BlockNo()))
        block->setData(added);
    joinImage(*added);
    noteFaults(*added);
    return added;
}

// In a parameter file, tags that differ only in case are one key.
bool clsKX::takeTag(clsData& item)
{
    const QString section = QStringLiteral("Datas%1").arg(item.number());
    const platform::Result<> allowed = platform::ProfileDocument::canStore(section, item.Key());
    if (!allowed.ok())
        noteFault(section, QStringLiteral("Tag: ") + allowed.error());
    QString& taken = m_tagByFileKey[item.Key().trimmed().toCaseFolded()];
    if (!taken.isNull()) {
        noteFault(section, QStringLiteral("Tag: %1 exists already").arg(taken));
        return false;
    }
    taken = item.Key();
    m_itemByTag.insert(item.Key(), &item);
    return true;
}

void clsKX::joinImage(const clsData& item)
{
    if (item.RSection().isEmpty() || m_images.find(item.RSection()) != nullptr)
        return;
    clsKXAdr* image = m_images.add(item.RSection(), std::make_unique<clsKXAdr>());
    try {
        image->load(m_library->getIniFilePath(QString()), m_entry.commFile, item.RSection(), m_library);
    } catch (const std::exception& error) {
        logError(QStringLiteral("%1 [%2]: %3").arg(m_entry.commFile, item.RSection(), QString::fromUtf8(error.what())));
    }
    for (int i = 1; i <= image->WMsgMax(); ++i) {
        const QString fault = image->writeFault(i);
        if (!fault.isEmpty())
            logError(QStringLiteral("%1 [%2] WriteCmd%3: %4").arg(m_entry.commFile, item.RSection()).arg(i).arg(fault));
    }
}

void clsKX::refreshSpread(bool bFromComm, const std::vector<clsBlock*>* colRefData)
{
    if (bFromComm)
        GridRefresh(*this).takeFromImages(colRefData);
    GridRefresh(*this).showAll();
}

bool clsKX::isOffLine() const
{
    return m_library->context().settings.get().m_bComm;
}

bool clsKX::holdsDefaults() const
{
    return std::all_of(m_items.begin(), m_items.end(), [](const auto& item) { return item->holdsDefault(); });
}

void clsKX::fillOffLine()
{
    for (int i = 0; i < m_images.count(); ++i)
        if (m_images.at(i).hasReads())
            m_images.at(i).markFilled();
    refreshSpread(true, nullptr);
}

void clsKX::refreshCell(clsData& item)
{
    if (!item.Visible())
        return;
    item.Edit = EditState::kChanged;
    item.setKnown(true);
    GridRefresh(*this).show(item);
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

// The definition's default of what is read is no value of the controller. Off-line, the defaults are the values.
bool clsKX::hasValue(const clsData& item) const
{
    return item.isKnown() && (isOffLine() || !isRead(*this, item) || !item.holdsDefault());
}

ParameterSet clsKX::currentSet() const
{
    ParameterSet set{m_modelString, {}};
    for (const auto& item : m_items)
        set.values.append({item->Key(), hasValue(*item) ? item->Data() : QString()});
    return set;
}

QString clsKX::saveData(const QString& fileName) const
{
    return ParameterFile(*m_library, fileName).save(currentSet());
}

bool clsKX::loadData(const QString& fileName)
{
    ParameterSet set;
    m_lastLoad = ParameterFile(*m_library, fileName).read(*this, set);
    if (m_lastLoad.outcome != ParameterLoad::Outcome::Loaded)
        return true;
    std::vector<const clsData*> items;
    for (const auto& entry : std::as_const(set.values))
        items.push_back(getDataByTag(entry.first));
    for (const size_t place : entryOrder(items)) {
        const auto& [tag, value] = set.values[static_cast<qsizetype>(place)];
        clsData* item = getDataByTag(tag);
        if (tag == kUnitTag && value.isEmpty()) {
            m_lastLoad.missing.removeAll(tag); // the unit stays
            continue;
        }
        if (item->Data() != value && !item->isReadOnly()) {
            item->Edit = EditState::kChanged;
            m_lastLoad.changed << tag;
        }
        item->setData(value);
        item->setKnown(!value.isEmpty());
        followUnit(*item);
    }
    for (const auto& item : m_items) {
        if (item->isKnown() && !item->isReadOnly() && !isAllowed(*item))
            m_lastLoad.outsideLimits << item->Key();
    }
    refreshSpread(false, nullptr);
    return false;
}

clsData* clsKX::getDataByTag(const QString& tag) const
{
    if (clsData* exact = m_itemByTag.value(tag, nullptr))
        return exact;
    for (int n = 1; n <= 9; ++n) {
        if (clsData* numbered = m_itemByTag.value(tag + QString::number(n), nullptr))
            return numbered;
    }
    return nullptr;
}

clsData* clsKX::getDataByRC(int row, int col) const
{
    return m_itemByCell.value(cellKey(row, col), nullptr);
}

QString clsKX::getTag(int n) const
{
    return n < 0 || static_cast<size_t>(n) >= m_tags.size() ? QString() : m_tags[static_cast<size_t>(n)];
}

QString clsKX::checkTag(const QString& text) const
{
    if (text.size() <= 3 || text.left(3).compare(u"TAG", Qt::CaseInsensitive) != 0)
        return text;
    const clsData* item = getDataByTag(text.mid(3));
    return item == nullptr ? QString() : item->VData();
}

void clsKX::followUnit(const clsData& item)
{
    if (item.Key() == kUnitTag)
        setUnitSwitch(m_library->toLong(item.Data(), 0));
}

clsBlock* clsKX::getBlockByNo(int number) const
{
    return m_blockByNo.value(number, nullptr);
}

clsBlock* clsKX::getBlockByRC(int row, int col) const
{
    return m_blockByCell.value(cellKey(row, col), nullptr);
}

bool clsKX::isWritable(const clsData& item) const
{
    const clsKXAdr* image = m_images.find(item.WSection());
    return !item.isReadOnly() && image != nullptr && image->WMsgMax() > 0;
}

int clsKX::alarmDecimals(const DecimalTable& table, int k) const
{
    const clsData* kind = getDataByTag(QStringLiteral("PQKAL%1").arg(k));
    const clsData* point = getDataByTag(QStringLiteral("SVDOT"));
    const int row = kind == nullptr ? 0 : m_library->toLong(kind->Data(), 0);
    const int col = point == nullptr ? 0 : m_library->toLong(point->VData(), 0);
    return table.at(row, col);
}
