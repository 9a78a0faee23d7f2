#include "frmComSet.h"

#include "../comm/RecordingOwner.h"
#include "../sim/SimulatedFixture.h"
#include "RecordingMessages.h"
#include "SimulatorLine.h"
#include "SoundController.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include <functional>

namespace {

const char* const kKX620 = "KX62000000-10A";

// The dialog over a window, COM1 on a simulated controller.
class ComSet : public SimulatedFixture
{
protected:
    struct Setup
    {
        const char* modelString = kKX620;
        int slave = 1;
        int mode = 0;
        const char* lines = ""; // of section "Comm1"
        const char* commandLine = "";
    };

    ComSet() : ports{QProcessEnvironment()} { box.context.messages = messages; }

    void open(const Setup& setup)
    {
        makeController(setup.mode); // writes the definition
        controller = std::make_unique<SimulatedController>(library, 1, QString::fromLatin1(setup.modelString),
                                                           setup.slave, setup.mode);
        line = std::make_unique<SimulatorLine>(*controller, Faults(1), 0, box.clock);
        ASSERT_TRUE(line->openTerminal());
        ports.assign(1, line->path());
        openOn(setup);
    }

    void openOn(const Setup& setup)
    {
        put(library.getIniFilePath(QStringLiteral("Main")) + QStringLiteral("\\Vorlant.ini"),
            QByteArray("[KXInfos]\nKXMaxCount=2\nKXModel1=KX410\nKXScreenFile1=M.ini\nKXCommFile1=MComm.ini\n"
                       "KXModel2=KX620\n[Comm1]\n") +
                setup.lines);
        mainLink = std::make_unique<uclComm>(ports, box.clock);
        mainLink->init(1, &library);
        owner = std::make_unique<RecordingOwner>(*mainLink);
        owner->slave = 1;
        owner->number = 1;
        owner->model = QStringLiteral("KX41000000-10A");
        dialog = std::make_unique<frmComSet>(
            ComSetSession::Parts{*owner, ports, library, QString::fromLatin1(setup.commandLine)}, &window);
        dialog->show();
    }

    // A controller that never answers, and a clock that runs until the link notices.
    void letTimePass()
    {
        QObject::connect(&ticker, &QTimer::timeout, &ticker, [this] { box.clock.advance(1000); });
        ticker.start(0);
    }

    // Does something as soon as the controller is being asked.
    void whileAsking(std::function<void()> action)
    {
        QObject::connect(&asking, &QTimer::timeout, &asking, [this, act = std::move(action)] {
            if (!find<QWidget>("progress")->isVisible())
                return;
            asking.stop();
            act();
        });
        asking.start(0);
    }

    template <class Widget> Widget* find(const char* name) { return dialog->findChild<Widget*>(QLatin1String(name)); }
    QString text(const char* name) { return find<QLineEdit>(name)->text(); }
    void click(const char* name) { find<QAbstractButton>(name)->click(); }
    QString model() { return find<QComboBox>("Combo3")->currentText(); }

    platform::ComPorts ports;
    RecordingMessages::Record told;
    RecordingMessages messages{told};
    QWidget window;
    QTimer ticker;
    QTimer asking;
    std::unique_ptr<SimulatedController> controller;
    std::unique_ptr<SimulatorLine> line;
    std::unique_ptr<uclComm> mainLink;
    std::unique_ptr<RecordingOwner> owner;
    std::unique_ptr<frmComSet> dialog;
};

TEST_F(ComSet, DetectionShowsWhatTheControllerIs)
{
    open({kKX620, 99, 1, "", "/D /M:KX62000000-20B"});
    find<QLineEdit>("Text1")->setText(QStringLiteral("99"));
    click("Option5");
    click("Command2");
    EXPECT_EQ(model(), u"KX620");
    EXPECT_EQ(text("Text2"), u"KX62000000-20B") << "as the command line has it";
    EXPECT_TRUE(told.texts.isEmpty() && dialog->isVisible());
    EXPECT_TRUE(find<QGroupBox>("Frame3")->isEnabled() && find<QPushButton>("Command1_0")->isEnabled());
    EXPECT_EQ(dialog->focusWidget()->objectName(), u"Command1_0");
    letTimePass();
    find<QLineEdit>("Text1")->setText(QStringLiteral("98"));
    click("Command2");
    EXPECT_EQ(text("Text2"), u"Nothing");
    EXPECT_EQ(told.texts, QStringList{QStringLiteral("There was no response.")});
}

TEST_F(ComSet, WhileAskingOnlyStopCanBePressed)
{
    open({kKX620, 2});
    QStringList enabled;
    QString focus;
    whileAsking([&] {
        for (const char* name : {"Frame1", "Frame2", "Frame3", "Command2", "Command1_0", "Command1_1", "cmdStop"}) {
            if (find<QWidget>(name)->isEnabled())
                enabled << QLatin1String(name);
        }
        focus = dialog->focusWidget()->objectName();
        EXPECT_TRUE(find<QLabel>("lblProgress")->text().contains(u"FBC0"));
        click("cmdStop");
    });
    click("Command2");
    EXPECT_EQ(enabled, QStringList{QStringLiteral("cmdStop")});
    EXPECT_EQ(focus, u"cmdStop");
}

TEST_F(ComSet, GivingUpEndsTheQuestionWithoutANotice)
{
    const std::tuple<const char*, std::function<void()>, bool> rows[] = {
        {"Command2", [this] { click("cmdStop"); }, true},
        {"Command1_0", [this] { QTest::keyClick(dialog.get(), Qt::Key_Escape); }, true},
        {"Command1_0", [this] { dialog->close(); }, false}};
    for (const auto& [button, give, stays] : rows) {
        open({kKX620, 2});
        const QDateTime before = box.clock.now();
        whileAsking(give);
        click(button);
        EXPECT_EQ(box.clock.now(), before) << "at once";
        EXPECT_TRUE(told.texts.isEmpty());
        EXPECT_EQ(dialog->isVisible(), stays);
        EXPECT_EQ(text("Text2"), u"KX41000000-10A");
        EXPECT_TRUE(owner->calls.isEmpty());
        EXPECT_EQ(mainLink->State(), stays ? 0 : 1);
        EXPECT_FALSE(owner->states.contains(1));
        asking.disconnect();
        dialog.reset();
    }
}

TEST_F(ComSet, LeavingAppliesNothing)
{
    const QString file = library.getIniFilePath(QStringLiteral("Main")) + QStringLiteral("\\Vorlant.ini");
    const std::function<void()> rows[] = {[this] { click("Command1_1"); }, [this] { dialog->close(); }};
    for (const auto& leave : rows) {
        open({});
        const QByteArray before = content(file);
        find<QComboBox>("Combo2")->setCurrentIndex(1);
        find<QLineEdit>("Text1")->setText(QStringLiteral("5"));
        EXPECT_EQ(mainLink->State(), 0);
        leave();
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(dialog->result(), QDialog::Rejected);
        EXPECT_EQ(owner->states, QList<int>{0});
        EXPECT_EQ(mainLink->State(), 1);
        EXPECT_TRUE(owner->calls.isEmpty());
        EXPECT_EQ(content(file), before);
        dialog.reset();
    }
}

TEST_F(ComSet, APortThatCannotBeOpenedSaysWhy)
{
    ports.assign(1, box.dir.filePath(QStringLiteral("no-adapter")));
    openOn({"", 1, 0, "CommSpeed=38400\n"});
    auto* trouble = find<QLabel>("lblTrouble");
    EXPECT_TRUE(trouble->isVisible());
    EXPECT_TRUE(trouble->text().contains(u"no-adapter")) << qPrintable(trouble->text());
    EXPECT_EQ(find<QComboBox>("Combo2")->currentText(), u"38400bps");
    EXPECT_TRUE(find<QComboBox>("Combo1")->itemText(0).startsWith(u"COM1  "));
    click("Command2");
    EXPECT_EQ(told.texts, QStringList{QStringLiteral("There was no response.")});
    EXPECT_TRUE(trouble->isVisible());
}

TEST_F(ComSet, IsReadyForTheKeyboard)
{
    open({});
    EXPECT_EQ(dialog->focusWidget()->objectName(), u"Combo1");
    EXPECT_TRUE(find<QPushButton>("Command1_0")->isDefault());
}

TEST_F(ComSet, SpeaksTheLanguageInUse)
{
    box.context.languageFile = QStringLiteral("XX.txt");
    put(QStringLiteral("C:\\Vorlant\\Lang\\XX.txt"),
        "[frmComSet]\nCaption=Linie\n[Caption]\nfrmComSet-Command2-0=&Suchen\nfrmComSet-Label1-0=Stelle(&Q):\n"
        "[Language]\nIt is outside the setting range.=Zu gross.\n");
    open({});
    EXPECT_EQ(dialog->windowTitle(), u"Linie");
    EXPECT_EQ(find<QPushButton>("Command2")->text(), u"&Suchen");
    EXPECT_EQ(find<QComboBox>("Combo1")->accessibleName(), u"Stelle");
    for (const char* name : {"Combo1", "Combo2", "Combo3", "Text1", "Text2"})
        EXPECT_FALSE(find<QWidget>(name)->accessibleName().isEmpty()) << name;
    find<QLineEdit>("Text1")->clear();
    click("Command2");
    EXPECT_EQ(told.texts, QStringList{QStringLiteral("Zu gross.[ 1 <= X <= 99 ]")});
}

TEST_F(ComSet, AnotherFormatIsAThirdChoice)
{
    const std::pair<const char*, const char*> rows[] = {{"E,8,1", "optOther"}, {"E,7,1", "Option6"}};
    for (const auto& [stored, button] : rows) {
        const QByteArray lines = QByteArray("CommProtocolCharacter=") + stored + '\n';
        open({kKX620, 1, 0, lines.constData()});
        EXPECT_EQ(find<QRadioButton>("optOther")->isVisible(), button == QByteArray("optOther"));
        EXPECT_TRUE(find<QRadioButton>(button)->isChecked());
        click("Command1_0");
        EXPECT_EQ(mainLink->Chara(), QLatin1String(stored));
        dialog.reset();
    }
}

TEST_F(ComSet, APortOutsideTheListIsShownAndKept)
{
    open({kKX620, 1, 0, "CommPortNo=12\n"});
    EXPECT_EQ(find<QComboBox>("Combo1")->currentIndex(), -1);
    EXPECT_EQ(find<QComboBox>("Combo1")->placeholderText(), u"COM12");
    EXPECT_TRUE(find<QLabel>("lblTrouble")->text().startsWith(u"COM12: ")) << "why it is closed";
}

TEST_F(ComSet, TroubleMakesRoomForItself)
{
    open({});
    const int before = dialog->height();
    ports.assign(2, QStringLiteral("/dev/serial/by-id/") + QString(60, u'x'));
    find<QComboBox>("Combo1")->setCurrentIndex(1);
    EXPECT_FALSE(find<QLabel>("lblTrouble")->isVisible()) << "not tried yet";
    click("Command2");
    auto* trouble = find<QLabel>("lblTrouble");
    EXPECT_TRUE(trouble->isVisible());
    EXPECT_GT(dialog->height(), before);
    EXPECT_GE(trouble->height(), trouble->heightForWidth(trouble->width()));
}

} // namespace
