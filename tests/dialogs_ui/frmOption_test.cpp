#include "frmOption.h"

#include "../dialogs/OptionsFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include <functional>
#include <memory>

namespace {

class OptionDialog : public OptionsFixture
{
protected:
    void open(bool disable = true)
    {
        if (!dialog)
            make();
        owner.show();
        dialog->showModeless(&owner, disable);
    }

    void make()
    {
        dialog = std::make_unique<frmOption>(library, settings, [this](QWidget*, const FontRecord& current) {
            offered = current;
            return chosen;
        });
        QObject::connect(dialog.get(), &frmOption::designChanged, [this] { calls << QStringLiteral("design"); });
        QObject::connect(dialog.get(), &frmOption::stored, [this] { calls << QStringLiteral("stored"); });
    }

    template <class Widget> Widget* find(const char* name) { return dialog->findChild<Widget*>(QLatin1String(name)); }
    QCheckBox* check(int index) { return dialog->findChild<QCheckBox*>(QStringLiteral("Check1_%1").arg(index)); }
    void click(const char* name) { find<QPushButton>(name)->click(); }

    QStringList calls;
    FontRecord offered;
    std::optional<FontRecord> chosen;
    QWidget owner;
    std::unique_ptr<frmOption> dialog;
};

struct Change
{
    const char* name;
    std::function<void(OptionDialog& test, frmOption& dialog)> make;
    const char* calls;
};

class OptionChange : public OptionDialog, public ::testing::WithParamInterface<Change>
{
public:
    using OptionDialog::chosen;
};

void toggle(frmOption& dialog, int index)
{
    dialog.findChild<QCheckBox*>(QStringLiteral("Check1_%1").arg(index))->toggle();
}

void chooseFontIn(frmOption& dialog)
{
    dialog.findChild<QPushButton*>(QStringLiteral("Command2"))->click();
}

TEST_P(OptionChange, TellsTheOwnerWhatConcernsIt)
{
    load();
    open();
    GetParam().make(*this, *dialog);
    click("Command1_0");
    EXPECT_EQ(calls.join(u' ').toStdString(), GetParam().calls);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(owner.isEnabled());
}

INSTANTIATE_TEST_SUITE_P(
    All, OptionChange,
    ::testing::Values(
        Change{"Nothing", [](auto&, frmOption&) {}, "stored"},
        Change{"ForcedFont", [](auto&, frmOption& d) { toggle(d, 4); }, "design stored"},
        Change{"FontChosen",
               [](OptionDialog& test, frmOption& d) {
                   static_cast<OptionChange&>(test).chosen = FontRecord{QStringLiteral("Mono"), 120, 0, -16, 0};
                   chooseFontIn(d);
               },
               "design stored"}),
    [](const auto& row) { return std::string(row.param.name); });

struct Leaving
{
    const char* name;
    std::function<void(frmOption& dialog)> leave;
};

class OptionLeaving : public OptionDialog, public ::testing::WithParamInterface<Leaving>
{};

TEST_P(OptionLeaving, StoresNothingAndFreesTheOwner)
{
    load();
    open();
    EXPECT_FALSE(owner.isEnabled());
    EXPECT_TRUE(dialog->isModal());
    const QByteArray before = settingsFile();
    check(4)->toggle();
    find<QComboBox>("Combo1")->setCurrentIndex(0);
    GetParam().leave(*dialog);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(owner.isEnabled());
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_EQ(settingsFile(), before);
    open();
    EXPECT_FALSE(check(4)->isChecked()) << "filled anew";
    EXPECT_EQ(find<QComboBox>("Combo1")->count(), 2);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, OptionLeaving,
    ::testing::Values(Leaving{"Cancel",
                              [](frmOption& d) { d.findChild<QPushButton*>(QStringLiteral("Command1_1"))->click(); }},
                      Leaving{"Escape", [](frmOption& d) { QTest::keyClick(&d, Qt::Key_Escape); }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(OptionDialog, SpeaksTheLanguageInUseEachTimeItOpens)
{
    load();
    ASSERT_TRUE(soundController::writeFile(box.path(QStringLiteral("C:\\Vorlant\\Lang\\XX.txt")),
                                           "[frmOption]\nCaption=Wahl\n[Caption]\nfrmOption-SSTab1-1=Fragen\n"
                                           "frmOption-Check1-6=Ohne Leitung\nfrmOption-Label1-0=Schrift\n"
                                           "frmOption-Frame1-0=Sprache\n"));
    open();
    EXPECT_EQ(find<QTabWidget>("SSTab1")->tabText(1), u"Questions");
    dialog->close();
    box.context.languageFile = QStringLiteral("XX.txt");
    open();
    EXPECT_EQ(dialog->windowTitle(), u"Wahl");
    EXPECT_EQ(find<QTabWidget>("SSTab1")->tabText(1), u"Fragen");
    EXPECT_EQ(check(6)->text(), u"Ohne Leitung");
    EXPECT_EQ(find<QLabel>("Label1")->text(), u"System:9pt") << "the font, not a caption";
    EXPECT_EQ(find<QComboBox>("Combo1")->accessibleName(), u"Sprache");
}

} // namespace
