// A language file of any kind: texts come back, the same each time; what is missing is added and the rest stays; the
// list of languages names files that are there.
// Input: two language files, and one text to be translated a line.

#include "FakeForm.h"
#include "LanguageList.h"
#include "ScratchFiles.h"
#include "Translator.h"
#include "clsCfg.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <algorithm>

namespace {

const QString kFolder = QStringLiteral("C:\\Vorlant\\Lang\\");
const QStringList kFiles{QStringLiteral("T.txt"), QStringLiteral("U.txt")};
const QString kSettings = QStringLiteral("C:\\Users\\AppData\\Vorlan\\Vorlant.ini");
constexpr int kBuffer = 512;
constexpr qsizetype kMaxTexts = 12;

using platform::FormProperty;

class Program
{
public:
    Program(const QByteArray& used, const QByteArray& other) : library(box.context)
    {
        box.context.settings = settings;
        box.context.languageFile = kFiles[0];
        putFile(box, kFolder + kFiles[0], used);
        putFile(box, kFolder + kFiles[1], other);
    }

    QByteArray content(int n) const { return fileBytes(box, kFolder + kFiles[n]); }

    TestMachine box;
    clsLibrary library;
    clsCfg settings;
};

// The program's own texts are of one line and begin and end with a character.
QStringList textsOf(const QByteArray& lines)
{
    QStringList texts;
    for (const QString& line : QString::fromUtf8(lines).split(u'\n').mid(0, kMaxTexts))
        texts << line.simplified().remove(QChar(0)).trimmed();
    return texts;
}

bool isStorable(const platform::CodePage& page, const QString& text)
{
    return page.toText(page.fromText(text)) == text && QString::fromUtf8(text.toUtf8()) == text;
}

// Whether all lines that hold something are still there, in their order.
bool keepsLines(const QByteArray& before, const QByteArray& after)
{
    const auto linesOf = [](QByteArray bytes) {
        if (bytes.startsWith("\xEF\xBB\xBF")) // it got a character that the code page lacks
            bytes.remove(0, 3);
        return bytes.replace('\x1A', ' ').replace('\r', '\n').split('\n');
    };
    const QList<QByteArray> now = linesOf(after);
    qsizetype place = 0;
    for (const QByteArray& line : linesOf(before)) {
        const QByteArray text = line.trimmed();
        const QByteArray value = text.mid(text.indexOf('=') + 1).split('\0').first().trimmed();
        if (!text.contains('=') || value.isEmpty() || value == "\"\"" || value == "''")
            continue; // what has no value gets one
        while (place < now.size() && now[place].trimmed() != text)
            ++place;
        if (place++ >= now.size())
            return false;
    }
    return true;
}

bool isAscii(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes).toUtf8() == bytes;
}

void checkList(Program& program)
{
    const QByteArray files[] = {program.content(0), program.content(1)};
    LanguageList list(program.box.context);
    list.rebuild(QStringLiteral("09"));
    require(program.content(0) == files[0] && program.content(1) == files[1], "listing changes no language file");
    require(kFiles.contains(list.defaultFile()) || list.defaultFile() == u"EN.txt", "the default is a language file",
            list.defaultFile());
    platform::ProfileStore stored(program.box.machine.codePage);
    const auto value = [&](const QString& key) {
        return stored.read(program.box.path(kSettings), QStringLiteral("Language"), key, {}, kBuffer).text;
    };
    const int count = value(QStringLiteral("LanguageMax")).toInt();
    require(count == 1 || count == 2, "the list has its count");
    for (int n = 1; n <= count; ++n) {
        const QString file = value(QStringLiteral("LanguageFile%1").arg(n));
        require(kFiles.contains(file) || (count == 1 && file == u"JP.txt"), "a listed file is there", file);
        require(!value(QStringLiteral("Language%1").arg(n)).isEmpty(), "a listed file has a name");
    }
}

void checkTexts(Program& program, const QStringList& texts)
{
    const QByteArray before = program.content(0);
    QStringList translated;
    for (const QString& text : texts) {
        translated << program.library.tranStr(text);
        require(text.isEmpty() == translated.last().isEmpty(), "a text has a translation", text);
    }
    const QByteArray completed = program.content(0);
    if (isAscii(before))
        require(keepsLines(before, completed), "what a language file holds stays");
    for (qsizetype i = 0; i < texts.size(); ++i)
        require(program.library.tranStr(texts[i]) == translated[i], "a text has one translation", texts[i]);
    require(program.content(0) == completed, "what was added is there");

    const auto isStored = [&](const QString& text) { return isStorable(program.box.machine.codePage, text); };
    Program later(completed, QByteArray());
    for (qsizetype i = 0; i < texts.size(); ++i) {
        if (std::all_of(texts.begin(), texts.end(), isStored))
            require(later.library.tranStr(texts[i]) == translated[i], "the next start translates the same", texts[i]);
    }
}

void checkForm(Program& program)
{
    const auto translated = [&program] {
        FakeForm form;
        FakeControl& button = form.add("cmdOK", std::nullopt);
        FakeControl& field = form.add("txtA", 2);
        FakeControl& grid = form.add("spr", std::nullopt, platform::ControlKind::Grid);
        FakeControl& tabs = form.add("tab", std::nullopt, platform::ControlKind::TabStrip);
        tabs.numbers = {0, 1};
        tabs.partTexts = {{0, QStringLiteral("First")}, {1, QStringLiteral("Second")}};
        program.library.tranForm(form);
        QStringList values{tabs.partTexts[0], tabs.partTexts[1]};
        for (const FormProperty which :
             {FormProperty::Caption, FormProperty::Font, FormProperty::FontSize, FormProperty::ToolTipText})
            values << form.values[which] << button.values[which] << field.values[which] << grid.values[which];
        return values;
    };
    const QStringList once = translated();
    const QByteArray completed = program.content(0);
    require(!once[0].isEmpty() && !once[1].isEmpty(), "a tab keeps a caption");
    require(translated() == once, "a form is translated the same each time");
    require(program.content(0) == completed, "and completes the file once");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    makeRepeatable();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::vector<QByteArray> parts = partsOf(data, size, 3);
    Program program(parts[0], parts[1]);
    checkList(program);
    checkTexts(program, textsOf(parts[2]));
    checkForm(program);
    return 0;
}
