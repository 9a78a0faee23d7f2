#include "ModelLoader.h"

#include "ModelData.h"
#include "ProfileDocument.h"
#include "clsLibrary.h"

#include <exception>
#include <utility>

clsData& ModelLoader::add(std::unique_ptr<clsData> item, int rows, int cols)
{
    noteTakenCell(*item);
    const bool isNew = registerTag(*item);
    clsData& added = m_model.add(std::move(item), isNew);
    joinImage(added);
    noteFaults(added, rows, cols);
    return added;
}

void ModelLoader::noteTakenCell(const clsData& item)
{
    const clsData* other = item.Visible() ? m_model.itemAt(item.Row(), item.Col()) : nullptr;
    if (other != nullptr)
        m_model.lookup.log.fault(
            item.definitionSection(),
            QStringLiteral("CellData: cell %1-%2 is taken by %3").arg(item.Row()).arg(item.Col()).arg(other->Key()));
}

// In a parameter file, tags that differ only in case are one key.
bool ModelLoader::registerTag(const clsData& item)
{
    const platform::Result<> storable = platform::ProfileDocument::canStore(item.definitionSection(), item.Key());
    if (!storable.ok())
        m_model.lookup.log.fault(item.definitionSection(), QStringLiteral("Tag: ") + storable.error());
    QString& taken = m_tagByFileKey[item.Key().trimmed().toCaseFolded()];
    if (!taken.isNull()) {
        m_model.lookup.log.fault(item.definitionSection(), QStringLiteral("Tag: %1 exists already").arg(taken));
        return false;
    }
    taken = item.Key();
    return true;
}

void ModelLoader::joinImage(const clsData& item)
{
    const QString section = item.RSection();
    if (section.isEmpty() || m_model.images.find(section) != nullptr)
        return;
    clsKXAdr* image = m_model.images.add(section, std::make_unique<clsKXAdr>());
    const QString file = m_model.entry.commFile;
    try {
        image->load(m_model.library().getIniFilePath(QString()), file, section, &m_model.library());
    } catch (const std::exception& error) {
        m_model.lookup.log.error(QStringLiteral("%1 [%2]: %3").arg(file, section, QString::fromUtf8(error.what())));
    }
    for (int i = 1; i <= image->WMsgMax(); ++i) {
        const QString fault = image->writeFault(i);
        if (!fault.isEmpty())
            m_model.lookup.log.error(QStringLiteral("%1 [%2] WriteCmd%3: %4").arg(file, section).arg(i).arg(fault));
    }
}

void ModelLoader::noteFaults(const clsData& item, int rows, int cols)
{
    DefinitionLog& log = m_model.lookup.log;
    for (const QString& fault : item.faults())
        log.fault(item.definitionSection(), fault);
    log.checkColor(m_model.library(), item.definitionSection(), item.backColorName());
    log.checkColor(m_model.library(), item.definitionSection(), item.foreColorName());
    if (!item.Visible() || (item.Row() >= 1 && item.Row() <= rows && item.Col() >= 1 && item.Col() <= cols))
        return;
    log.fault(item.definitionSection(),
              QStringLiteral("CellData: row %1, column %2 is outside the grid of %3 rows and %4 columns")
                  .arg(item.Row())
                  .arg(item.Col())
                  .arg(rows)
                  .arg(cols));
}
