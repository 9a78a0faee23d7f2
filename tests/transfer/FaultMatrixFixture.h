#pragma once

#include "SimulatorLine.h"
#include "TransferFixture.h"

// A simulated controller on a pseudo-terminal with the program's link, engine and detection at the other end, in one
// process. It has one parameter of every kind that a transfer treats in a way of its own, and every section has a reply
// of another length or function.
class FaultMatrixFixture : public TransferFixture
{
protected:
    void start(int mode, const char* model = "matrix")
    {
        idle.emplace(box.clock);
        loadModel(model, mode);
        atStart = values();
        line = std::make_unique<SimulatorLine>(*controller, Faults(), 0, box.clock);
        QObject::connect(line.get(), &SimulatorLine::traced, line.get(), [this] { touchClock(); });
        ASSERT_TRUE(line->openTerminal()) << qPrintable(line->errorText());
        openEngine(line->path());
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

    // Whether the image holds what the controller holds now.
    bool agrees(const clsKXAdr& image) const
    {
        static const QHash<QString, QString> kTables{{QStringLiteral("GetAnalogInput"), QStringLiteral("IREG ")},
                                                     {QStringLiteral("GetAnalogSet"), QStringLiteral("REG ")},
                                                     {QStringLiteral("GetDigitalSet"), QStringLiteral("COIL ")}};
        if (image.m_bModbus)
            return values().value(kTables.value(image.Cmd(1)) + image.Adr(1)).toInt() == image.getInteger(QString(), 0);
        return image.getOrgData().left(image.imageSize()).toHex().toUpper().toStdString() ==
               memory(image.StartAddress().toInt(nullptr, 16), image.imageSize());
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

    static constexpr unsigned kSeed = 1;

    std::unique_ptr<SimulatorLine> line;
    QHash<QString, QString> atStart;
};
