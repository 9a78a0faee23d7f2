#include "DefinitionCheck.h"
#include "FrameFields.h"
#include "FrameParameters.h"
#include "ModbusFrame.h"
#include "ModelCatalogue.h"
#include "ScreenFixture.h"
#include "Table.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

namespace {

// The shipped files in a scratch program folder.
class Shipped : public ScreenFixture
{
protected:
    Shipped()
    {
        copyShipped("ini");
        copyShipped("Lang");
        box.context.languageFile = "EN.txt";
        catalogue("KXMaxCount=0\n");
        const platform::ProfileStore::Batch once(box.machine.profiles);
        models.ensureBuiltIn();
    }

    // The bytes of all files, by their path in the program folder.
    QMap<QString, QByteArray> files()
    {
        QMap<QString, QByteArray> contents;
        for (const QString folder : {"ini\\", "Lang\\"}) {
            for (const QString& name : QDir(box.path("C:\\Vorlant\\" + folder)).entryList(QDir::Files))
                contents[folder + name] = content("C:\\Vorlant\\" + folder + name);
        }
        return contents;
    }

    // The findings as lines.
    std::string check(const QString& code, const QString& options)
    {
        QString lines;
        for (const auto& finding : DefinitionCheck(library).run(models.entry(models.numberOf(code)), code + options))
            lines += finding.text() + u'\n';
        return lines.toStdString();
    }

    void load(const QString& code, const QString& options) { kx.load(models.numberOf(code), &library, code + options); }

    ModelCatalogue models{library};
};

constexpr const char* kAllOptions = "11110-10A";

class Definitions : public Shipped, public ::testing::WithParamInterface<const char*>
{};

TEST_P(Definitions, AreSoundAndComplete)
{
    const auto before = files();
    for (const char* options : {"00000-10A", kAllOptions, "22020-21B", "00000-0NA", "01000-00A", "10110-2NZ"}) {
        SCOPED_TRACE(options);
        EXPECT_EQ(check(GetParam(), options), "");
        for (const char* language : {"EN.txt", "JP.txt"}) {
            box.context.languageFile = language;
            load(GetParam(), options);
            kx.refreshSpread(false, nullptr);
            EXPECT_GT(kx.items().size(), 70U);
        }
        for (const auto& one : kx.items())
            EXPECT_FALSE(one->DefData().isEmpty()) << qPrintable(one->Key());
    }
    for (const QString& name : files().keys())
        EXPECT_TRUE(before[name] == files()[name]) << "had to be completed: " << qPrintable(name);
}

// Every parameter that has a cell, with its name, default and class, as the grid has them.
TEST_P(Definitions, AreInTheReferenceOfTheManual)
{
    static const QRegularExpression row("<tr><td id=\"(.*)\">.*</td><td>(.*)</td><td>.*</td><td>.*</td><td>.*</td>"
                                        "<td>(.*)</td><td>(.*)</td></tr>");
    QFile page(QStringLiteral(VORLANT_DATA_DIR "/help/Vorlant/parameters-%1.html").arg(GetParam()));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    auto rows = row.globalMatch(QString::fromUtf8(page.readAll()));
    QSet<QString> tags;
    load(GetParam(), kAllOptions);
    while (rows.hasNext()) {
        const QRegularExpressionMatch cells = rows.next();
        const clsData& found = item(cells.captured(1));
        tags << found.Key();
        EXPECT_EQ(cells.captured(2) + u'|' + cells.captured(3) + u'|' + cells.captured(4),
                  found.DataName() + u'|' + library.tranStr(found.VData()) + u'|' + parameterClassName(found.Class()));
    }
    for (const auto& one : kx.items())
        EXPECT_EQ(one->Visible(), tags.contains(one->Key())) << qPrintable(one->Key());
}

INSTANTIATE_TEST_SUITE_P(Shipped, Definitions, ::testing::ValuesIn(kShippedModels),
                         [](const auto& row) { return std::string(row.param); });

// A rule of the program that names a tag which no item bears would never act.
TEST_F(Shipped, RulesFindTheirItems)
{
    for (const QString model : kShippedModels) {
        SCOPED_TRACE(qPrintable(model));
        load(model, kAllOptions);
        for (const char* tag :
             {"VQLIL",   "VQLIH",  "VQLIZS", "VQLIZL",  "RANGEL", "RANGEH", "VQSVL",   "VQSVH",   "VQSV1",   "VQSV2",
              "VQP1",    "VQI1",   "VQD1",   "VQODB",   "SVDOT",  "SWQCF",  "PQRNO",   "MQCODE",  "VQOH1",   "VQOL1",
              "PIDONOF", "VQBIA",  "VQSVUP", "VQSVDWN", "VQAL1",  "VQAL2",  "VQAL3",   "VQ1DB",   "VQ2DB",   "VQ3DB",
              "PQKAL1",  "PQKAL2", "PQKAL3", "EV1MOD",  "EV2MOD", "EV3MOD", "EV1WAIT", "EV2WAIT", "EV3WAIT", "FQDI"})
            EXPECT_EQ(item(tag).Key(), tag);
        EXPECT_EQ(item("MQCODE").Address(), "FBC0");
        EXPECT_EQ(item("MQCODE").DataLen(), 14);
        EXPECT_EQ(item("SWQCF").MType() == ItemType::Combo, QString("KX640 KX643 KX910").contains(model));
    }
}

TEST_F(Shipped, FramesNameTheirParameters)
{
    load("KX410", kAllOptions);
    const std::pair<const char*, const char*> rows[] = {
        {"014200000080000F", "Set value 1, Set value 2, Set value low limit"}, // the whole image, from its first on
        {"0142000000800002", "Set value 1"},
        {"0142000000800302", "Set value 2, Set value low limit"}, // from the middle of one to that of the next
        {"0142010000800002FFFF", "Set value 1"},
        {"010400000001", "Process value"},
        {"010600000064", "Set value 1"},
        {"010500000001", "Auto-tuning"},
        {"010200000008", "Alarm 1 state, Alarm 2 state, Alarm 3 state"},
        {"014200000FF00004", ""},
        {"01", ""}};
    for (const auto& [frame, names] : rows) {
        const QByteArray wire = modbusframe::toWire(QByteArray::fromHex(frame), false);
        const QStringList found = parametersOf(kx.data(), FrameFields::ofRequest(wire));
        EXPECT_EQ(found.mid(0, 3).join(u", ").toStdString(), names) << frame;
    }
    put("C:\\Vorlant\\Lang\\T.txt", "[Language]\r\nProcess value=Istwert\r\n");
    box.context.languageFile = "T.txt";
    const QByteArray wire = modbusframe::toWire(QByteArray::fromHex("010400000001"), false);
    EXPECT_EQ(parametersOf(kx.data(), FrameFields::ofRequest(wire)), QStringList{"Istwert"});
}

TEST_F(Shipped, FaultsAreFound)
{
    box.context.translates = false; // the language in use would complete itself
    const auto sound = files();
    for (const QStringList& row : tableRows("screen/broken_definitions.tsv")) {
        QByteArray bytes = sound[row[1]];
        const QByteArray text = row[2].toUtf8();
        ASSERT_TRUE(bytes.contains(text)) << qPrintable(row[0]);
        put("C:\\Vorlant\\" + row[1], bytes.replace(bytes.indexOf(text), text.size(), row[3].toUtf8()));
        const std::string findings = check("KX410", kAllOptions);
        EXPECT_NE(findings.find(row[4].toStdString()), std::string::npos) << qPrintable(row.join(u'|')) << findings;
        put("C:\\Vorlant\\" + row[1], sound[row[1]]);
    }
}

} // namespace
