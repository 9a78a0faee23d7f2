#include "frmComSet.h"

#include "DetectionFixture.h"
#include "RecordingMessages.h"
#include "RecordingOwner.h"
#include "WhenShown.h"
#include "frmScan.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

namespace {

const char* const kKX620 = "KX62000000-10A";

// The dialog over a window, COM1 on a controller.
class ComSet : public DetectionFixture
{
protected:
    ComSet() { box.context.messages = messages; }

    void open(const QByteArray& lines = {}) // of section "Comm1"
    {
        writeSettings("[KXInfos]\nKXMaxCount=2\nKXModel1=KX410\nKXModel2=KX620\n[Comm1]\n" + lines);
        dialog.reset();
        link = std::make_unique<uclComm>(ports, box.clock);
        link->init(1, &library);
        owner = std::make_unique<RecordingOwner>(*link);
        owner->number = 1;
        dialog = std::make_unique<frmComSet>(ComSetSession::Parts{*owner, ports, library, QString()}, &window);
        dialog->show();
    }

    template <class Widget> Widget* find(const char* name) { return dialog->findChild<Widget*>(QLatin1String(name)); }
    void click(const char* name) { find<QAbstractButton>(name)->click(); }
    QString focus() const { return dialog->focusWidget()->objectName(); }

    RecordingMessages::Record shown;
    RecordingMessages messages{shown};
    QWidget window;
    std::unique_ptr<uclComm> link;
    std::unique_ptr<RecordingOwner> owner;
    std::unique_ptr<frmComSet> dialog;
};

TEST_F(ComSet, OpensDetectsAndApplies)
{
    plug(kKX620);
    open("CommPortNo=12\nCommProtocolCharacter=E,7,2\n");
    EXPECT_EQ(focus(), u"Combo1");
    EXPECT_EQ(find<QLineEdit>("Text3")->placeholderText(), u"5000") << "the seconds of the settings";
    EXPECT_EQ(find<QComboBox>("Combo1")->currentText(), u"COM12  (not plugged in)");
    EXPECT_TRUE(find<QLabel>("lblTrouble")->text().startsWith(u"COM12: ")) << "why it is closed";
    EXPECT_TRUE(find<QRadioButton>("optOther")->isVisible() && find<QRadioButton>("optOther")->isChecked());
    find<QComboBox>("Combo1")->setCurrentIndex(0);
    find<QComboBox>("Combo2")->setCurrentIndex(6);
    const auto& warning = *find<QLabel>("lblWarning");
    EXPECT_TRUE(warning.isVisible());
    for (const auto& [choice, warns] :
         {std::pair{"Option6", true}, {"Option5", false}, {"Option4", true}, {"Option9", false}}) {
        click(choice);
        EXPECT_EQ(warning.isVisible(), warns) << choice;
    }
    click("Command2");
    EXPECT_EQ(find<QComboBox>("Combo3")->currentText(), u"KX620");
    EXPECT_EQ(find<QLineEdit>("Text2")->text(), QLatin1String(kKX620));
    EXPECT_TRUE(shown.texts.isEmpty() && dialog->isVisible());
    EXPECT_EQ(focus(), u"Command1_0");
    find<QLineEdit>("Text1")->setText(QStringLiteral("100"));
    click("Command1_0");
    EXPECT_EQ(shown.texts, QStringList{QStringLiteral("It is outside the setting range.[ 1 <= X <= 99 ]")});
    EXPECT_EQ(focus(), u"Text1");
    find<QLineEdit>("Text1")->setText(QStringLiteral("42"));
    click("Command1_0");
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(owner->calls.join(u'|'), u"take 42,0,1,KX62000000-10A|read, link 1");
    EXPECT_EQ(link->Speed() + u' ' + link->Chara(), u"115200 O,8,1");
}

// What is typed is taken, and offered again; what cannot be a serial server is refused at once.
TEST_F(ComSet, ATypedPort)
{
    plug(kKX620);
    open("[Recent]\nPort1=tcp://b:1\nPort2=tcp://b:2\nPort3=tcp://b:3\nPort4=tcp://b:4\nPort5=tcp://b:5\n");
    auto* port = find<QComboBox>("Combo1");
    port->setEditText("tcp://workshop");
    EXPECT_TRUE(find<QLabel>("lblTrouble")->text().startsWith(u"tcp://workshop: the port number is missing"));
    click("Command1_0");
    EXPECT_EQ(shown.texts, QStringList{find<QLabel>("lblTrouble")->text()});
    EXPECT_EQ(focus(), u"Combo1");
    port->setEditText("com98");
    EXPECT_TRUE(find<QLabel>("lblTrouble")->text().startsWith(u"COM98: "));
    QTemporaryDir folder;
    const QString name = folder.filePath("line");
    ASSERT_TRUE(QFile::link(controller->device(), name));
    port->setEditText(' ' + name);
    click("Command1_0");
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_TRUE(link->device() == name && link->Port() == 1 && link->State() == 1);
    for (const QString& line : {"CommPortName=" + name, "Port1=" + name, QString("Port5=tcp://b:4")})
        EXPECT_TRUE(settingsFile().contains(line.toUtf8())) << qPrintable(line);
    dialog = std::make_unique<frmComSet>(ComSetSession::Parts{*owner, ports, library, QString()}, &window);
    port = find<QComboBox>("Combo1");
    EXPECT_TRUE(port->currentText() == name && port->findText(name) == 1);
}

// What was chosen or typed stays.
TEST_F(ComSet, ThePortsFollowWhatIsPluggedIn)
{
    plug(kKX620);
    ports.assign(1, QString());
    open();
    const auto& error = *find<QLabel>("lblTrouble");
    EXPECT_TRUE(error.text().startsWith(u"no serial port was found")) << qPrintable(error.text());
    auto& port = *find<QComboBox>("Combo1");
    const auto look = [&](const QVector<platform::ComPort>& plugged, const QString& text, int count) {
        machine = plugged;
        box.clock.advance(1000);
        EXPECT_EQ(port.currentText(), text);
        EXPECT_EQ(port.count(), count);
    };
    const platform::ComPort line{controller->device(), "adapter", "A1"};
    look({line}, "COM1  " + line.device + "  adapter  A1", 1);
    EXPECT_FALSE(error.isVisible()) << "it is open: " << qPrintable(error.text());
    look({line, {"/dev/ttyUSB7"}}, "COM2  " + line.device + "  adapter  A1", 2);
    port.setEditText("tcp://a");
    port.lineEdit()->setCursorPosition(4);
    look({{"/dev/ttyUSB7"}, {"/dev/ttyUSB8"}}, "tcp://a", 2);
    EXPECT_EQ(port.lineEdit()->cursorPosition(), 4);
    port.setCurrentIndex(1);
    look({{"/dev/ttyUSB9"}}, "COM2  (not plugged in)", 2);
    look({{"/dev/ttyUSB9"}, {"/dev/ttyUSB10"}}, QString(), 2);
    click("Command1_0");
    EXPECT_TRUE(shown.texts == QStringList{error.text()} && error.text().startsWith(u"choose a port"));
    EXPECT_TRUE(dialog->isVisible() && focus() == "Combo1");
    look({{"/dev/ttyUSB8"}}, "COM1  /dev/ttyUSB8", 1);
}

TEST_F(ComSet, StopEndsTheConnecting)
{
    QTcpServer silent;
    silent.listen(QHostAddress::LocalHost);
    plug(kSilent);
    open();
    const QString name = QString("rfc2217://127.0.0.1:%1").arg(silent.serverPort());
    find<QComboBox>("Combo1")->setEditText(name);
    bool waits = false;
    QTimer::singleShot(0, &pulse, [&] {
        waits = find<QWidget>("cmdStop")->isVisible() && !find<QWidget>("Command1_1")->isEnabled();
        click("cmdStop");
    });
    click("Command2");
    EXPECT_TRUE(waits && dialog->isVisible() && find<QWidget>("Command1_1")->isEnabled());
    EXPECT_TRUE(shown.texts.isEmpty() && controller->requests() == 0);
    EXPECT_TRUE(find<QLabel>("lblTrouble")->text().contains(name)) << "why it is closed";
}

TEST_F(ComSet, SilenceIsSaidInTheLanguageInUse)
{
    ASSERT_TRUE(box.put("C:\\Vorlant\\Lang\\T.txt", "[Language]\r\nNothing=keine\r\n"));
    box.context.languageFile = "T.txt";
    plug(kSilent);
    open();
    click("Command2");
    EXPECT_EQ(find<QLineEdit>("Text2")->text(), u"keine");
}

TEST_F(ComSet, SearchesAndConnects)
{
    plug([this](const QByteArray& request) {
        idle->touch();
        const bool isIt = request.startsWith('\x05');
        return isIt ? modbusframe::toWire(QByteArray::fromHex("0542000E") + kKX620, false) : QByteArray();
    });
    open();
    idle.emplace(box.clock, 50);
    QStringList texts;
    const WhenShown<frmScan> scanning([&](frmScan& scan) {
        const auto& connectTo = *scan.findChild<QPushButton*>(QStringLiteral("Command1_1"));
        EXPECT_FALSE(connectTo.isEnabled()) << "nothing is found yet";
        auto& model = *scan.findChild<QTableView*>()->model();
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, &scan, [&] {
            for (int column = 0; column < ScanModel::kResponse; ++column)
                texts << model.index(0, column).data().toString();
            QTimer::singleShot(0, &scan, [&] { scan.findChild<QPushButton*>(QStringLiteral("Command1_1"))->click(); });
        });
    });
    find<QLineEdit>("Text1")->setText(QStringLiteral("9"));
    click("Command3");
    EXPECT_EQ(texts.join(u' '), u"COM1 9600 N,8,1 RTU 5 KX62000000-10A");
    EXPECT_EQ(find<QLineEdit>("Text1")->text() + find<QLineEdit>("Text2")->text(), u"5KX62000000-10A");
    EXPECT_EQ(find<QComboBox>("Combo3")->currentText(), u"KX620");
    EXPECT_EQ(focus(), u"Command1_0");
}

// While it asks: Close and the end of the settings end it at once, Stop leaves the window.
TEST_F(ComSet, ASearchIsLeft)
{
    frmScan* form = nullptr;
    std::function<void()> leave;
    plug([&](const QByteArray&) {
        QTimer::singleShot(0, &pulse, leave);
        return QByteArray();
    });
    const auto stop = [&] {
        form->findChild<QPushButton*>(QStringLiteral("Command1_0"))->click();
        QTimer::singleShot(0, form, [&] {
            EXPECT_EQ(form->findChild<QLabel*>(QStringLiteral("Label1"))->text(),
                      u"The search was stopped; controllers found: 0.");
            form->close();
        });
    };
    const WhenShown<frmScan> scanning([&](frmScan& scan) { form = &scan; });
    const std::pair<std::function<void()>, bool> rows[] = {
        {stop, true}, {[&] { QTest::keyClick(form, Qt::Key_Escape); }, true}, {[&] { dialog->close(); }, false}};
    for (const auto& [way, stays] : rows) {
        leave = way;
        open();
        const int before = controller->requests();
        click("Command3");
        EXPECT_EQ(controller->requests() - before, 1);
        EXPECT_EQ(dialog->isVisible(), stays);
    }
}

// Every way out, before and while the controller is asked: nothing is applied, and nobody waits for a time-out.
TEST_F(ComSet, ClosesAndCancels)
{
    std::function<void()> leave;
    QStringList enabled;
    plug([&](const QByteArray&) {
        for (const char* name :
             {"Frame1", "Frame2", "Frame3", "Command2", "Command3", "Command1_0", "Command1_1", "cmdStop"}) {
            if (find<QWidget>(name)->isEnabled())
                enabled << QLatin1String(name);
        }
        QTimer::singleShot(0, &pulse, leave);
        return QByteArray();
    });
    const std::tuple<const char*, std::function<void()>, bool> rows[] = {
        {nullptr, [this] { click("Command1_1"); }, false},
        {nullptr, [this] { dialog->close(); }, false},
        {"Command2", [this] { click("cmdStop"); }, true},
        {"Command1_0", [this] { QTest::keyClick(dialog.get(), Qt::Key_Escape); }, true},
        {"Command1_0", [this] { dialog->close(); }, false}};
    for (const auto& [asks, way, stays] : rows) {
        open();
        const QByteArray before = settingsFile();
        EXPECT_EQ(link->State(), 0) << "the dialog has the port";
        find<QComboBox>("Combo2")->setCurrentIndex(1);
        leave = way;
        enabled.clear();
        asks == nullptr ? leave() : click(asks);
        EXPECT_EQ(enabled, asks == nullptr ? QStringList() : QStringList{QStringLiteral("cmdStop")});
        EXPECT_EQ(dialog->isVisible(), stays);
        EXPECT_EQ(link->State(), stays ? 0 : 1);
        EXPECT_TRUE(shown.texts.isEmpty() && owner->calls.isEmpty() && !owner->states.contains(1));
        EXPECT_EQ(settingsFile(), before);
    }
}

} // namespace
