// A parameter file over a real model: one that is refused leaves everything as it was; one that is taken is taken as a
// whole, and what is saved then loads to the same.
// Input: the bytes of the file.

#include "GridModel.h"
#include "Numbers.h"
#include "RealModel.h"
#include "ScratchFiles.h"
#include "clsKX.h"

namespace {

const QString kFile = QStringLiteral("C:\\sets\\in.k41");
const QString kSaved = QStringLiteral("C:\\sets\\out.k41");
constexpr int kBuffer = 512; // of a value read from a file

class Loaded : public RealModel
{
public:
    Loaded() : kx(library)
    {
        QDir().mkpath(box.path(QStringLiteral("C:\\sets")));
        kx.setSpread(&grid);
        kx.load(1, &library, kModelString);
        kx.refreshSpread(false, nullptr);
        require(kx.items().size() > 60, "the model is there", QString::number(kx.items().size()));
    }

    std::vector<ItemState> states() const
    {
        std::vector<ItemState> all;
        for (const auto& item : kx.items())
            all.push_back(item->state());
        return all;
    }

    QStringList texts() const
    {
        QStringList all;
        for (const auto& item : kx.items())
            all << grid.cell(item->Row(), item->Col()).text;
        return all;
    }

    void restore(const std::vector<ItemState>& states)
    {
        for (size_t i = 0; i < states.size(); ++i)
            kx.items()[i]->restore(states[i]);
        kx.setUnitSwitch(0);
        kx.refreshSpread(false, nullptr);
    }

    // A file is known by its time and size: no two inputs have the same time.
    void put(const QString& path, const QByteArray& bytes)
    {
        putFile(box, path, bytes);
        QFile file(box.path(path));
        require(file.open(QIODevice::ReadWrite) &&
                    file.setFileTime(m_time = m_time.addMSecs(1), QFileDevice::FileModificationTime),
                "the scratch folder takes times");
    }

    platform::GridModel grid;
    clsKX kx;

private:
    QDateTime m_time{QDate(2007, 3, 5), QTime(0, 0)};
};

QStringList data(const std::vector<ItemState>& states)
{
    QStringList all;
    for (const ItemState& state : states)
        all << state.data;
    return all;
}

void checkTaken(Loaded& model, const QByteArray& bytes)
{
    platform::ProfileStore file(model.box.machine.codePage);
    const auto valueOf = [&](const QString& section, const QString& key) {
        return file.read(model.box.path(kFile), section, key, {}, kBuffer).text;
    };
    require(valueOf(QStringLiteral("Info"), QStringLiteral("MODEL")) == RealModel::kModelString,
            "a file of another model is not taken");
    for (const auto& item : model.kx.items()) {
        const QString value = valueOf(QStringLiteral("Data"), item->Key());
        // A file that names no unit leaves it as it is.
        const bool isUnnamedUnit = item->Key() == u"SWQCF" && value.isEmpty();
        // A choice carries its own values over to items without a cell.
        if (item->Visible() && !isUnnamedUnit)
            require(item->Data() == value, "a value is the file's", item->Key());
        require(item->Data().isEmpty() || item->MType() == ItemType::String ||
                    platform::parseSingle(item->Data()).has_value(),
                "a value is one that its parameter can have", item->Key());
    }
    require(fileBytes(model.box, kFile) == bytes, "loading only reads");
}

void checkSavedAgain(Loaded& model)
{
    const QStringList taken = data(model.states());
    model.put(kSaved, QByteArray());
    require(model.kx.saveData(kSaved).ok(), "what was taken can be saved");
    const QByteArray saved = fileBytes(model.box, kSaved);
    require(!model.kx.loadData(kSaved), "what was saved loads", model.kx.lastLoad().detail);
    require(data(model.states()) == taken, "what was saved loads to the same");
    require(model.kx.saveData(kSaved).ok() && fileBytes(model.box, kSaved) == saved,
            "the same set saves to the same file");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    makeRepeatable();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size)
{
    static Loaded model;
    static const std::vector<ItemState> pristine = model.states();
    static const QStringList pristineTexts = model.texts();
    const QByteArray bytes(reinterpret_cast<const char*>(input), static_cast<qsizetype>(size));
    model.put(kFile, bytes);
    if (model.kx.loadData(kFile)) {
        require(model.states() == pristine && model.texts() == pristineTexts && model.kx.unitSwitch() == 0,
                "a refused file changes nothing");
        require(!model.kx.lastLoad().detail.isEmpty(), "a refusal has a reason");
        return 0;
    }
    checkTaken(model, bytes);
    checkSavedAgain(model);
    model.restore(pristine);
    return 0;
}
