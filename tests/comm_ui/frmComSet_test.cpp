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
#include <QSet>
#include <QSignalSpy>
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

    ComSet() : ports{QProcessEnvironment()} { box.context.messages = &messages; }

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
        dialog->Logs(nullptr, nullptr);
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

struct Asking
{
    const char* name;
    const char* modelString;
    int slave;
    int mode;
    const char* slaveText; // in the dialog
    bool ascii;            // in the dialog
    const char* commandLine;
    bool answers;
    const char* model;
    const char* shown;
    const char* message;
    const char* focus; // afterwards
};

void PrintTo(const Asking& row, std::ostream* out)
{
    *out << row.name;
}

class ComSetDetection : public ComSet, public ::testing::WithParamInterface<Asking>
{};

TEST_P(ComSetDetection, ShowsWhatTheControllerIs)
{
    const Asking& row = GetParam();
    open({row.modelString, row.slave, row.mode, "", row.commandLine});
    find<QLineEdit>("Text1")->setText(QString::fromLatin1(row.slaveText));
    find<QRadioButton>(row.ascii ? "Option5" : "Option4")->setChecked(true);
    if (!row.answers)
        letTimePass();
    click("Command2");
    EXPECT_EQ(model().toStdString(), row.model);
    EXPECT_EQ(text("Text2").toStdString(), row.shown);
    EXPECT_EQ(told.texts.join(u'|').toStdString(), row.message);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_FALSE(find<QWidget>("progress")->isVisible());
    EXPECT_TRUE(find<QGroupBox>("Frame3")->isEnabled() && find<QPushButton>("Command1_0")->isEnabled());
    EXPECT_EQ(dialog->focusWidget()->objectName().toStdString(), row.focus);
}

INSTANTIATE_TEST_SUITE_P(
    All, ComSetDetection,
    ::testing::Values(Asking{"KX620", kKX620, 1, 0, "1", false, "", true, "KX620", kKX620, "", "Command1_0"},
                      Asking{"Ascii", kKX620, 99, 1, "99", true, "", true, "KX620", kKX620, "", "Command1_0"},
                      Asking{"Options", "KX41012345-20B", 1, 0, "1", false, "", true, "KX410", "KX41012345-20B", "",
                             "Command1_0"},
                      Asking{"OtherSlave", kKX620, 2, 0, "1", false, "", false, "KX410", "Nothing",
                             "There was no response.", "Command1_0"},
                      Asking{"OtherMode", kKX620, 1, 0, "1", true, "", false, "KX410", "Nothing",
                             "There was no response.", "Command1_0"},
                      Asking{"OutOfRange", kKX620, 1, 0, "100", false, "", true, "KX410", "KX41000000-10A",
                             "It is outside the setting range.[ 1 <= X <= 99 ]", "Text1"},
                      Asking{"NotInTheList", "KX99900000-10A", 1, 0, "1", false, "", true, "KX410", "KX99900000-10A",
                             "It does not correspond to this model.", "Command1_0"},
                      Asking{"Override", "KX99900000-10A", 1, 0, "1", false, "/D /M:KX62000000-20B", true, "KX620",
                             "KX62000000-20B", "", "Command1_0"}),
    [](const auto& row) { return std::string(row.param.name); });

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

struct Way
{
    const char* name;
    const char* button; // that starts the question
    std::function<void(frmComSet& dialog)> give;
    bool stays;
};

void PrintTo(const Way& row, std::ostream* out)
{
    *out << row.name;
}

class ComSetGivingUp : public ComSet, public ::testing::WithParamInterface<Way>
{};

TEST_P(ComSetGivingUp, EndsTheQuestionWithoutANotice)
{
    open({kKX620, 2});
    const QDateTime before = box.clock.now();
    whileAsking([this] { GetParam().give(*dialog); });
    click(GetParam().button);
    EXPECT_EQ(box.clock.now(), before) << "at once";
    EXPECT_TRUE(told.texts.isEmpty());
    EXPECT_EQ(dialog->isVisible(), GetParam().stays);
    EXPECT_EQ(text("Text2"), u"KX41000000-10A");
    EXPECT_TRUE(owner->calls.isEmpty());
    EXPECT_EQ(mainLink->State(), GetParam().stays ? 0 : 1);
    EXPECT_FALSE(owner->states.contains(1));
}

INSTANTIATE_TEST_SUITE_P(
    Ways, ComSetGivingUp,
    ::testing::Values(Way{"Stop", "Command2",
                          [](frmComSet& d) { d.findChild<QPushButton*>(QStringLiteral("cmdStop"))->click(); }, true},
                      Way{"Escape", "Command2", [](frmComSet& d) { QTest::keyClick(&d, Qt::Key_Escape); }, true},
                      Way{"EscapeOnOk", "Command1_0", [](frmComSet& d) { QTest::keyClick(&d, Qt::Key_Escape); }, true},
                      Way{"Closed", "Command2", [](frmComSet& d) { d.close(); }, false},
                      Way{"ClosedOnOk", "Command1_0", [](frmComSet& d) { d.close(); }, false}),
    [](const auto& row) { return std::string(row.param.name); });

class ComSetLeaving : public ComSet, public ::testing::WithParamInterface<Way>
{};

TEST_P(ComSetLeaving, AppliesNothing)
{
    open({});
    const QByteArray before = content(library.getIniFilePath(QStringLiteral("Main")) + QStringLiteral("\\Vorlant.ini"));
    find<QComboBox>("Combo2")->setCurrentIndex(1);
    find<QLineEdit>("Text1")->setText(QStringLiteral("5"));
    EXPECT_EQ(mainLink->State(), 0);
    GetParam().give(*dialog);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_EQ(owner->states, QList<int>{0});
    EXPECT_EQ(mainLink->State(), 1);
    EXPECT_TRUE(owner->calls.isEmpty());
    EXPECT_EQ(content(library.getIniFilePath(QStringLiteral("Main")) + QStringLiteral("\\Vorlant.ini")), before);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, ComSetLeaving,
    ::testing::Values(Way{"Cancel", "",
                          [](frmComSet& d) { d.findChild<QPushButton*>(QStringLiteral("Command1_1"))->click(); },
                          false},
                      Way{"Escape", "", [](frmComSet& d) { QTest::keyClick(&d, Qt::Key_Escape); }, false},
                      Way{"Closed", "", [](frmComSet& d) { d.close(); }, false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(ComSet, OkAsksTheControllerAndReads)
{
    open({});
    find<QComboBox>("Combo2")->setCurrentIndex(1);
    click("Option6");
    click("Command1_0");
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(owner->states, QList<int>{1});
    EXPECT_EQ(owner->calls.join(u'|'), u"take 1,0,1,KX62000000-10A|read, link 1");
    EXPECT_EQ(mainLink->Speed() + u',' + mainLink->Chara(), u"19200,E,7,1");
    dialog.reset();
    EXPECT_EQ(owner->calls.size(), 2);
    EXPECT_EQ(owner->states.size(), 1);
}

TEST_F(ComSet, ExecEndsAfterTheRead)
{
    open({});
    dialog->hide();
    QTimer::singleShot(0, dialog.get(), [this] { click("Command1_0"); });
    EXPECT_EQ(dialog->exec(), QDialog::Accepted);
    EXPECT_EQ(owner->calls.size(), 2);
    EXPECT_EQ(mainLink->State(), 1);
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

TEST_F(ComSet, OkWithoutAnAnswerKeepsTheDialog)
{
    open({kKX620, 2});
    letTimePass();
    click("Command1_0");
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(owner->states, QList<int>{0});
    EXPECT_EQ(told.texts, QStringList{QStringLiteral("There was no response.")});
    EXPECT_EQ(text("Text2"), u"Nothing");
}

TEST_F(ComSet, OffLineTheModelIsPickedByHand)
{
    settings.m_bComm = true;
    open({kKX620, 2});
    find<QComboBox>("Combo3")->setCurrentIndex(1);
    EXPECT_EQ(text("Text2"), u"KX62000000-10A");
    click("Command1_0");
    EXPECT_EQ(owner->calls.join(u'|'), u"take 1,0,1,KX62000000-10A|read, link 1");
}

TEST_F(ComSet, PickingTheSameModelAgainDropsItsOptions)
{
    open({"KX62012345-20B"});
    click("Command2");
    auto* list = find<QComboBox>("Combo3");
    Q_EMIT list->activated(list->currentIndex());
    EXPECT_EQ(text("Text2"), u"KX62000000-10A");
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

TEST_F(ComSet, APortOutsideTheListIsShownAndKept)
{
    open({kKX620, 1, 0, "CommPortNo=12\n"});
    EXPECT_EQ(find<QComboBox>("Combo1")->currentIndex(), -1);
    EXPECT_EQ(find<QComboBox>("Combo1")->placeholderText(), u"COM12");
    EXPECT_TRUE(find<QLabel>("lblTrouble")->text().startsWith(u"COM12: ")) << "why it is closed";
}

TEST_F(ComSet, IsReadyForTheKeyboard)
{
    open({});
    EXPECT_EQ(dialog->focusWidget()->objectName(), u"Combo1");
    EXPECT_TRUE(find<QPushButton>("Command1_0")->isDefault());
    QStringList order;
    for (QWidget* next = find<QWidget>("Combo1"); order.size() < 20; next = next->nextInFocusChain()) {
        if (order.contains(next->objectName()))
            break;
        if (next->focusPolicy() != Qt::NoFocus && !next->objectName().isEmpty())
            order << next->objectName();
    }
    EXPECT_TRUE(order.join(u' ').startsWith(
        u"Combo1 Combo2 Option7 Option6 Option4 Option5 Text1 Combo3 Command2 Text2 cmdStop Command1_0 Command1_1"))
        << qPrintable(order.join(u' '));
    QSet<QString> keys;
    QStringList captions;
    for (const auto* label : dialog->findChildren<QLabel*>(QRegularExpression(QStringLiteral("^Label"))))
        captions << label->text();
    for (const auto* button : dialog->findChildren<QAbstractButton*>()) {
        if (button->objectName() != u"cmdStop") // alone while it can be seen
            captions << button->text();
    }
    for (const QString& caption : captions) {
        ASSERT_TRUE(caption.contains(u'&')) << qPrintable(caption);
        const QString key = caption.mid(caption.indexOf(u'&') + 1, 1).toLower();
        EXPECT_FALSE(keys.contains(key)) << qPrintable(caption);
        keys << key;
    }
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

} // namespace
