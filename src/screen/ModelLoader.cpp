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
    checkItem(added, rows, cols);
    return added;
}

void ModelLoader::noteTakenCell(const clsData& item)
{
    const clsData* other = item.Visible() ? m_model.itemAt(item.Row(), item.Col()) : nullptr;
    if (other != nullptr)
        m_model.lookup.log.add(
            {{},
             item.definitionSection(),
             QStringLiteral("CellData"),
             QStringLiteral("cell %1-%2 is taken by %3").arg(item.Row()).arg(item.Col()).arg(other->Key()),
             QStringLiteral("give each parameter a cell of its own")});
}

// In a parameter file, tags that differ only in case are one key.
bool ModelLoader::registerTag(const clsData& item)
{
    const auto add = [&](const QString& fault) {
        m_model.lookup.log.add({{},
                                item.definitionSection(),
                                QStringLiteral("Tag"),
                                fault,
                                QStringLiteral("give each parameter a tag of its own")});
    };
    const platform::Result<> storable = platform::ProfileDocument::canStore(item.definitionSection(), item.Key());
    if (!storable.ok())
        add(storable.error());
    QString& taken = m_tagByFileKey[item.Key().trimmed().toCaseFolded()];
    if (!taken.isNull()) {
        add(QStringLiteral("%1 exists already").arg(taken));
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
        m_model.lookup.log.add({file,
                                section,
                                {},
                                QString::fromUtf8(error.what()),
                                QStringLiteral("set it to the number of read commands")});
    }
    for (int i = 1; i <= image->WMsgMax(); ++i) {
        const QString fault = image->writeFault(i);
        if (!fault.isEmpty())
            m_model.lookup.log.add({file, section, QStringLiteral("WriteCmd%1").arg(i), fault,
                                    QStringLiteral("write the bytes that the section reads, or fewer")});
    }
}

void ModelLoader::checkItem(const clsData& item, int rows, int cols)
{
    DefinitionLog& log = m_model.lookup.log;
    for (const DefinitionFinding& finding : item.findings())
        log.add(finding);
    log.checkColor(m_model.library(), item.definitionSection(), item.backColorName());
    log.checkColor(m_model.library(), item.definitionSection(), item.foreColorName());
    if (!item.Visible() || (item.Row() >= 1 && item.Row() <= rows && item.Col() >= 1 && item.Col() <= cols))
        return;
    log.add({{},
             item.definitionSection(),
             QStringLiteral("CellData"),
             QStringLiteral("row %1, column %2 is outside the grid of %3 rows and %4 columns")
                 .arg(item.Row())
                 .arg(item.Col())
                 .arg(rows)
                 .arg(cols),
             QStringLiteral("move the cell, or raise MaxRow or MaxCol")});
}
