#pragma once

#include "ModbusFrame.h"
#include "ScreenFixture.h"
#include "SimulatedController.h"

#include <QFile>

// A small controller: two bytes and a float in memory, one value of each Modbus kind, the model string at FBC0.
class SimulatedFixture : public ScreenFixture
{
protected:
    static QByteArray rtu(const char* hex) { return modbusframe::toWire(QByteArray::fromHex(hex), false); }

    std::unique_ptr<SimulatedController> makeController(int mode)
    {
        for (const char* name : {"M.ini", "MComm.ini"}) {
            QFile file(QStringLiteral(VORLANT_TEST_DATA "/sim/") + QLatin1String(name));
            EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
            put(definition(QLatin1String(name)), file.readAll());
        }
        return std::make_unique<SimulatedController>(library, 1, QStringLiteral("KX41000000-10A"), 1, mode);
    }
};
