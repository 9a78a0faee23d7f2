// Definition files of any kind give a model: loaded, completed, looked up and shown without contradiction.
// Input: model string, screen file, comm file and choice tables.

#include "GridModel.h"
#include "ScratchFiles.h"
#include "clsCfg.h"
#include "clsINI.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <algorithm>

namespace {

const QString kScreen = QStringLiteral("M.ini");
const QString kComm = QStringLiteral("MComm.ini");
const QString kTables = QStringLiteral("MultiSelect.ini");
constexpr int kImageByte = 0x41;
constexpr int kMaxSize = 24; // rows, columns and sections: larger ones tell nothing new and take long

struct Definition
{
    QByteArray modelString;
    QByteArray screen;
    QByteArray comm;
    QByteArray tables;
};

// One program that has loaded the definition.
class Model
{
public:
    explicit Model(const Definition& definition) : library(box.context), kx(library)
    {
        settings.init(&library);
        box.context.settings = settings;
        box.context.translates = false;
        kx.setSpread(&grid);
        putFile(box, library.getIniFilePath(QStringLiteral("Main")) + QStringLiteral("\\Vorlant.ini"),
                "[KXInfos]\nKXMaxCount=1\nKXModel1=KX410\nKXName1=KX410\nKXScreenFile1=M.ini\nKXCommFile1=MComm.ini\n");
        putFile(box, path(kScreen), definition.screen);
        putFile(box, path(kComm), definition.comm);
        putFile(box, path(kTables), definition.tables);
    }

    QString path(const QString& name) const { return library.getIniFilePath(QString()) + u'\\' + name; }

    bool isSmall()
    {
        clsINI screen(box.context);
        screen.setIniPath(library.getIniFilePath(QString()));
        screen.setIniFileName(kScreen);
        for (const char* key : {"BlockMaxCount", "StringMaxCount", "DataMaxCount", "MaxRow", "MaxCol"}) {
            const QString text =
                screen.GetIniData(QStringLiteral("Setting"), QLatin1String(key), QStringLiteral("0"), true);
            if (library.toLong(text, 0) > kMaxSize)
                return false;
        }
        return true;
    }

    void load(const QString& modelString)
    {
        require(kx.load(1, &library, modelString) == 0, "a model loads");
        kx.refreshSpread(false, nullptr);
    }

    QStringList cells() const
    {
        QStringList all;
        for (int row = 1; row <= grid.maxRows(); ++row) {
            for (int col = 1; col <= grid.maxCols(); ++col) {
                const platform::Cell& cell = grid.cell(row, col);
                all << QStringLiteral("%1 %2 %3 %4 %5")
                           .arg(static_cast<int>(cell.type))
                           .arg(cell.text)
                           .arg(cell.backColor)
                           .arg(cell.foreColor)
                           .arg(cell.readOnly);
            }
        }
        return all;
    }

    QList<QByteArray> files() const
    {
        return {fileBytes(box, path(kScreen)), fileBytes(box, path(kComm)), fileBytes(box, path(kTables))};
    }

    TestMachine box;
    clsLibrary library;
    clsCfg settings;
    platform::GridModel grid;
    clsKX kx;
};

// Of items that share a cell the last one is shown.
bool hasOwnCell(const clsKX& kx, const clsData& item)
{
    int sharing = 0;
    for (const auto* items : {&kx.items(), &kx.duplicates()}) {
        for (const auto& other : *items)
            sharing += other->Visible() && other->Row() == item.Row() && other->Col() == item.Col() ? 1 : 0;
    }
    return sharing == 1;
}

void checkLookUps(const clsKX& kx, const platform::GridModel& grid)
{
    require(kx.items().size() + kx.duplicates().size() <= static_cast<size_t>(std::max(kx.getDataMax(), 0)),
            "no more items than announced");
    for (const auto& item : kx.items()) {
        require(kx.getDataByTag(item->Key()) == item.get(), "an item is found by its tag", item->Key());
        require(kx.getTag(item->number()) == item->Key(), "and by its number");
        require(item->RSection().isEmpty() || kx.ColAdr().find(item->RSection()) != nullptr,
                "an item that is read has an image");
        if (item->Visible()) {
            const clsData* there = kx.getDataByRC(item->Row(), item->Col());
            require(there != nullptr && there->Row() == item->Row() && there->Col() == item->Col(),
                    "an item's cell has an item");
        }
        if (item->Visible() && hasOwnCell(kx, *item))
            require(item->isKnown() || grid.cell(item->Row(), item->Col()).text.isEmpty(),
                    "nothing is shown of what nobody knows");
    }
    for (int i = 0; i < kx.ColAdr().count(); ++i)
        require(kx.ColAdr().at(i).imageSize() <= clsKXAdr::kMaxImageBytes, "an image has its bounds");
}

// Every value, limit and choice is asked for, and a choice made, as a user would.
void checkItems(clsKX& kx)
{
    for (const auto& item : kx.items()) {
        const QString shown = item->VData();
        require(item->VData() == shown, "the same value shows the same");
        item->LimitL();
        item->LimitH();
        (void)item->isAllowed();
        for (const ItemChoice& choice : item->choices())
            item->setData(choice.stored);
        const ItemState state = item->state();
        item->setVData(shown);
        item->restore(state);
        require(item->state() == state, "an edit can be taken back");
    }
}

void fillImages(const clsKX& kx)
{
    for (int i = 0; i < kx.ColAdr().count(); ++i) {
        clsKXAdr& image = kx.ColAdr().at(i);
        image.setData({1, QByteArray(120, static_cast<char>(kImageByte))});
        image.setInteger(QString(), kImageByte);
        image.markFilled();
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    makeRepeatable();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::vector<QByteArray> parts = partsOf(data, size, 4);
    Model model({parts[0], parts[1], parts[2], parts[3]});
    if (!model.isSmall())
        return 0;
    const QString modelString = QString::fromUtf8(parts[0]);
    model.load(modelString);
    const QStringList cells = model.cells();
    const QList<QByteArray> files = model.files();
    checkLookUps(model.kx, model.grid);

    // The files were completed with what was missing: nothing is missing any more.
    model.load(modelString);
    require(model.files() == files, "a second load completes nothing");
    require(model.cells() == cells, "a second load shows the same");
    Model other({parts[0], files[0], files[1], files[2]});
    other.load(modelString);
    require(other.cells() == cells, "the completed files are the same model");

    fillImages(model.kx);
    model.kx.refreshSpread(true, nullptr);
    checkLookUps(model.kx, model.grid);
    const QStringList read = model.cells();
    model.kx.refreshSpread(true, nullptr);
    require(model.cells() == read, "the same images show the same");
    checkItems(model.kx);
    return 0;
}
