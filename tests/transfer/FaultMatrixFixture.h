#pragma once

#include "ComSetOwner.h"
#include "ComSetSession.h"
#include "SimulatorLine.h"
#include "TransferFixture.h"

#include <QHash>

// The window of the communication settings too.
class MatrixWindow : public RecordingWindow, public ComSetOwner
{
public:
    explicit MatrixWindow(ControllerState& controller) : m_state(controller) {}
    int slaveAddress() const override { return m_state.slaveAddress(); }
    int transmissionMode() const override { return m_state.transmissionMode(); }
    uclComm& mainLink() override { return *link; }
    int modelNumber() const override { return m_state.modelNumber(); }
    QString currentModel() const override { return m_state.model(); }
    void setConfirmed(bool confirmed) override
    {
        m_state.setState(confirmed ? MainState::Confirmed : MainState::NoConnection);
    }
    void takeOver(int, int, int, const QString&) override {}
    void startRead() override {}

    uclComm* link = nullptr;

private:
    ControllerState& m_state;
};

// A simulated controller on a pseudo-terminal with the program's link, engine and detection at the other end, in one
// process. It has one parameter of every kind that a transfer treats in a way of its own, and every section has a reply
// of another length or function.
class FaultMatrixFixture : public TransferFixture
{
protected:
    void start(int mode)
    {
        state.setLine(1, mode);
        box.context.messages = window;
        idle.emplace(box.clock);
        writeDefinition();
        kx.load(1, &library, state.model());
        controller = std::make_unique<SimulatedController>(library, 1, state.model(), 1, mode);
        atStart = values();
        line = std::make_unique<SimulatorLine>(*controller, Faults(), 0, box.clock);
        QObject::connect(line.get(), &SimulatorLine::traced, line.get(), [this] { touchClock(); });
        ASSERT_TRUE(line->openTerminal()) << qPrintable(line->errorText());
        ports.assign(1, line->path());
        link = std::make_unique<uclComm>(ports, box.clock);
        window.link = link.get();
        link->init(1, &library);
        engine =
            std::make_unique<TransferEngine>(TransferEngine::Parts{kx, *link, settings, trace, window, window, state});
        QObject::connect(engine.get(), &TransferEngine::settingsWanted, engine.get(),
                         [this] { window.messages << QStringLiteral("#settings"); });
    }

    // Values at the controller that are not those of the definition.
    void turnTheKnobs()
    {
        clsModbus master;
        master.setSlaveAddress(1);
        master.setTransmissionMode(state.transmissionMode());
        master.setDigitalVals({1, QByteArray::fromHex("0315000041200000")});
        master.WriteDirectMemory(0x8000, 8);
        controller->answer(master.GetSendMessage());
        master.WriteAnalogSetValue(40001, 77);
        controller->answer(master.GetSendMessage());
        master.WriteDigitalSetValue(1, true);
        controller->answer(master.GetSendMessage());
    }

    void setFault(const QString& text)
    {
        Faults faults(kSeed);
        QString error;
        ASSERT_TRUE(text.isEmpty() || faults.add(text, error)) << qPrintable(error);
        line->setFaults(faults);
    }

    // What the controller holds: "MEM 8000" -> "03", "REG 40001" -> "77".
    QHash<QString, QString> values() const
    {
        QHash<QString, QString> found;
        const QStringList lines = QString::fromLatin1(controller->state()).split(u'\n', Qt::SkipEmptyParts);
        for (const QString& text : lines)
            found.insert(text.section(u' ', 0, 1), text.section(u' ', 2));
        return found;
    }

    // Whether the image holds what the controller holds now.
    bool agrees(const clsKXAdr& image) const
    {
        static const QHash<QString, QString> kTables{{QStringLiteral("GetAnalogInput"), QStringLiteral("IREG ")},
                                                     {QStringLiteral("GetAnalogSet"), QStringLiteral("REG ")},
                                                     {QStringLiteral("GetDigitalSet"), QStringLiteral("COIL ")}};
        const QHash<QString, QString> held = values();
        if (image.m_bModbus)
            return held.value(kTables.value(image.Cmd(1)) + image.Adr(1)).toInt() == image.getInteger(QString(), 0);
        QByteArray bytes;
        const int first = image.StartAddress().toInt(nullptr, 16);
        for (int i = 0; i < image.imageSize(); ++i)
            bytes += held.value(QStringLiteral("MEM ") + QString::number(first + i, 16).toUpper()).toLatin1();
        return image.getOrgData().left(image.imageSize()).toHex().toUpper() == bytes;
    }

    // How many images were filled by the last read and hold what the controller holds now: all, partly or none.
    QString images()
    {
        int agreeing = 0;
        for (int i = 0; i < kx.ColAdr().count(); ++i)
            agreeing += kx.ColAdr().at(i).isFilled() && agrees(kx.ColAdr().at(i)) ? 1 : 0;
        if (agreeing == 0)
            return QStringLiteral("none");
        return agreeing == kx.ColAdr().count() ? QStringLiteral("all") : QStringLiteral("partly");
    }

    // Images that count as read and hold something else than the controller.
    QStringList wrongImages()
    {
        QStringList sections;
        for (int i = 0; i < kx.ColAdr().count(); ++i) {
            const clsKXAdr& image = kx.ColAdr().at(i);
            if (image.isFilled() && !agrees(image))
                sections << image.Section();
        }
        return sections;
    }

    // A value that the user enters, and where it goes at the controller.
    struct Entry
    {
        const char* tag;
        const char* data;
        int block;
        QHash<QString, QString> stored;
    };

    static const std::vector<Entry>& entries()
    {
        static const std::vector<Entry> kEntries{
            {"VQSV1", "123", 1, {{"MEM 8000", "00"}, {"MEM 8001", "7B"}}},
            {"VQF1", "2.5", 1, {{"MEM 8004", "40"}, {"MEM 8005", "20"}, {"MEM 8006", "00"}, {"MEM 8007", "00"}}},
            {"SWB1", "0", 1, {{"MEM 8100", "00"}}},
            {"PQREG", "88", 2, {{"REG 40001", "88"}}},
            {"PQRUN", "0", 2, {{"COIL 1", "0"}}}};
        return kEntries;
    }

    static constexpr unsigned kSeed = 1;

    MatrixWindow window{state};
    std::unique_ptr<SimulatedController> controller;
    std::unique_ptr<SimulatorLine> line;
    std::unique_ptr<uclComm> link;
    std::unique_ptr<TransferEngine> engine;
    QHash<QString, QString> atStart;

protected:
    virtual void writeDefinition()
    {
        const auto item = [](int number, const char* keys) {
            return dataSection(number, keys) +
                   "DataInfo=0,-999,999,<=,<=,0,10\nCellData=" + QByteArray::number(number) + ",1,vbWhite,vbBlack\n";
        };
        put(definition(QStringLiteral("M.ini")),
            QByteArray("[Setting]\nDataMaxCount=7\nBlockMaxCount=2\nMaxRow=9\n[BlockInfo1]\nBlockNo=1\nName=SV\n"
                       "[BlockInfo2]\nBlockNo=2\nName=Operation\n") +
                item(1, "Tag=MQCODE\nCellType=String\nDataLen=14\nKXAddress=FBC0\nCommRaedSection=Id\n") +
                item(2, "Tag=VQSV1\nBlockNo=1\nDataLen=2\nKXAddress=8000\nCommRaedSection=Set\nCommWriteSection=Set\n"
                        "DefaultData=100\n") +
                item(3, "Tag=VQF1\nBlockNo=1\nDataLen=4\nKXAddress=8004\nCommRaedSection=Set\nCommWriteSection=Set\n"
                        "DefaultData=1.5\n") +
                item(4, "Tag=SWB1\nBlockNo=1\nCellType=Bit\nDataLen=1\nBitMask=4\nKXAddress=8100\nCommRaedSection=Pid\n"
                        "CommWriteSection=Pid\nDefaultData=1\n") +
                item(5, "Tag=VQPV\nDataLen=2\nCommRaedSection=Pv\nDefaultData=-2\n") +
                item(6, "Tag=PQREG\nBlockNo=2\nDataLen=2\nCommRaedSection=Reg\nCommWriteSection=Reg\nDefaultData=7\n") +
                item(7,
                     "Tag=PQRUN\nBlockNo=2\nDataLen=2\nCommRaedSection=Coil\nCommWriteSection=Coil\nDefaultData=0\n"));
        put(definition(QStringLiteral("MComm.ini")),
            "[Id]\nReadCmd1=Direct,FBC0,14\nWriteCmdMax=0\n"
            "[Set]\nReadCmd1=Direct,8000,8\nWriteCmd1=Direct,8000,8\n"
            "[Pid]\nReadCmd1=Direct,8100,2\nWriteCmd1=Direct,8100,2\n"
            "[Pv]\nReadCmd1=GetAnalogInput,30001,1,VQPV\nWriteCmdMax=0\n"
            "[Reg]\nReadCmd1=GetAnalogSet,40001,1,PQREG\nWriteCmd1=SetAnalog,40001,PQREG\n"
            "[Coil]\nReadCmd1=GetDigitalSet,1,1,PQRUN\nWriteCmd1=SetDigital,1,PQRUN\n");
    }
};
