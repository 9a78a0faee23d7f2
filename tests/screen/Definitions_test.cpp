#include "DefinitionCheck.h"
#include "ModelCatalogue.h"
#include "ScreenFixture.h"
#include "Table.h"

namespace {

// The shipped files in a scratch program folder.
class Shipped : public ScreenFixture
{
protected:
    Shipped()
    {
        copy(QStringLiteral("ini"));
        copy(QStringLiteral("Lang"));
        box.context.languageFile = QStringLiteral("EN.txt");
        put(library.getIniFilePath(QStringLiteral("Main")) + QStringLiteral("\\Vorlant.ini"),
            "[KXInfos]\nKXMaxCount=0\n");
        const platform::ProfileStore::Batch once(box.machine.profiles);
        ModelCatalogue(library).ensureBuiltIn();
    }

    void copy(const QString& folder)
    {
        const QDir from(QStringLiteral(VORLANT_DATA_DIR "/") + folder);
        const QString to = box.path(QStringLiteral("C:\\Vorlant\\") + folder);
        for (const QString& name : from.entryList(QDir::Files))
            ASSERT_TRUE(QFile::copy(from.filePath(name), to + u'/' + name)) << qPrintable(name);
    }

    // The bytes of all files, by name.
    QHash<QString, QByteArray> files()
    {
        QHash<QString, QByteArray> contents;
        for (const char* folder : {"ini", "Lang"}) {
            const QString desktop = QStringLiteral("C:\\Vorlant\\") + QLatin1String(folder);
            for (const QString& name : QDir(box.path(desktop)).entryList(QDir::Files))
                contents.insert(name, content(desktop + u'\\' + name));
        }
        return contents;
    }

    // Names of the files that are no longer as they were; new ones too.
    QStringList changedSince(const QHash<QString, QByteArray>& before)
    {
        QStringList changed;
        const auto now = files();
        for (auto file = now.cbegin(); file != now.cend(); ++file) {
            if (before.value(file.key()) != file.value())
                changed << file.key();
        }
        return changed;
    }

    // The findings as lines.
    QString check(const QString& code, const QString& options)
    {
        ModelCatalogue catalogue(library);
        QString lines;
        for (const DefinitionFinding& finding :
             DefinitionCheck(library).run(catalogue.entry(catalogue.numberOf(code)), code + options))
            lines += finding.text() + u'\n';
        return lines;
    }

    void load(const char* code, const char* options)
    {
        const QString model = QLatin1String(code);
        kx.load(ModelCatalogue(library).numberOf(model), &library, model + QLatin1String(options));
    }

    const clsData* item(const char* tag) { return kx.getDataByTag(QLatin1String(tag)); }
};

constexpr const char* kModels[] = {"KX410", "KX413", "KX620", "KX623", "KX640", "KX643", "KX910"};
constexpr const char* kPlain = "00000-10A";
constexpr const char* kAllOptions = "11110-10A";
constexpr const char* kOptions[] = {kPlain, kAllOptions, "22020-21B", "00000-0NA", "01000-00A", "10110-2NZ"};

using Variant = std::tuple<const char*, const char*>;

class Definitions : public Shipped, public ::testing::WithParamInterface<Variant>
{};

TEST_P(Definitions, AreSoundAndComplete)
{
    const auto before = files();
    const auto [code, options] = GetParam();
    EXPECT_EQ(check(QLatin1String(code), QLatin1String(options)).toStdString(), "");
    for (const char* language : {"EN.txt", "JP.txt"}) {
        box.context.languageFile = QLatin1String(language);
        load(code, options);
        kx.refreshSpread(false, nullptr);
        EXPECT_GT(kx.items().size(), 70U);
        EXPECT_EQ(changedSince(before), QStringList()) << "had to be completed";
    }
    for (const auto& item : kx.items())
        EXPECT_FALSE(item->DefData().isEmpty()) << qPrintable(item->Key());
}

INSTANTIATE_TEST_SUITE_P(Shipped, Definitions,
                         ::testing::Combine(::testing::ValuesIn(kModels), ::testing::ValuesIn(kOptions)),
                         [](const auto& row) {
                             return QString::fromLatin1("%1%2")
                                 .arg(QLatin1String(std::get<0>(row.param)), QLatin1String(std::get<1>(row.param)))
                                 .remove(u'-')
                                 .toStdString();
                         });

// A rule of the program that names a tag which no item bears would never act.
TEST_F(Shipped, RulesFindTheirItems)
{
    for (const char* model : kModels) {
        SCOPED_TRACE(model);
        load(model, kAllOptions);
        for (const char* tag :
             {"VQLIL",   "VQLIH",  "VQLIZS", "VQLIZL",  "RANGEL", "RANGEH", "VQSVL",   "VQSVH",   "VQSV1",   "VQSV2",
              "VQP1",    "VQI1",   "VQD1",   "VQODB",   "SVDOT",  "SWQCF",  "PQRNO",   "MQCODE",  "VQOH1",   "VQOL1",
              "PIDONOF", "VQBIA",  "VQSVUP", "VQSVDWN", "VQAL1",  "VQAL2",  "VQAL3",   "VQ1DB",   "VQ2DB",   "VQ3DB",
              "PQKAL1",  "PQKAL2", "PQKAL3", "EV1MOD",  "EV2MOD", "EV3MOD", "EV1WAIT", "EV2WAIT", "EV3WAIT", "FQDI"}) {
            const clsData* found = item(tag);
            EXPECT_TRUE(found != nullptr && found->Key() == QLatin1String(tag)) << tag;
        }
        const QString code = QLatin1String(model);
        const clsData* code14 = item("MQCODE");
        EXPECT_EQ(code14->Address(), u"FBC0");
        EXPECT_EQ(code14->DataLen(), 14);
        EXPECT_EQ(item("SWQCF")->MType() == ItemType::Combo, code == u"KX640" || code == u"KX643" || code == u"KX910");
    }
}

TEST_F(Shipped, FaultsAreFound)
{
    box.context.translates = false; // the language in use would complete itself
    const QHash<QString, QByteArray> sound = files();
    for (const QStringList& row : tableRows("screen/broken_definitions.tsv")) {
        const QString file = QStringLiteral("C:\\Vorlant\\") + row[1];
        const QByteArray text = row[2].toUtf8();
        QByteArray bytes = sound[row[1].section(u'\\', -1)];
        const auto at = bytes.indexOf(text);
        ASSERT_GE(at, 0) << qPrintable(row[0]);
        put(file, bytes.replace(at, text.size(), row[3].toUtf8()));
        const QString findings = check(QStringLiteral("KX410"), QLatin1String(kAllOptions));
        EXPECT_TRUE(findings.contains(row[4])) << qPrintable(row.join(u'|') + u'\n' + findings);
        put(file, sound[row[1].section(u'\\', -1)]);
    }
}

} // namespace
