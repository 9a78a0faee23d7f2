#pragma once

#include "ScreenFixture.h"
#include "SimulatedController.h"

// A small controller: two bytes and a float in memory, one value of each Modbus kind, the model string at FBC0.
class SimulatedFixture : public ScreenFixture
{
protected:
    static QByteArray rtu(const char* hex)
    {
        QByteArray frame = QByteArray::fromHex(hex);
        const auto length = static_cast<qint32>(frame.size());
        frame.append(2, '\0');
        clsModbus::MakeCRC16(frame, length);
        return frame;
    }

    std::unique_ptr<SimulatedController> makeController(int mode)
    {
        const char* cell = "CellData=1,1,vbWhite,vbBlack\n";
        put(definition(QStringLiteral("M.ini")),
            QByteArray("[Setting]\nDataMaxCount=7\n") +
                dataSection(1, "Tag=A\nDataLen=2\nKXAddress=8000\nCommRaedSection=Mem\nDefaultData=258\n") + cell +
                dataSection(2, "Tag=F\nDataLen=4\nKXAddress=8004\nCommRaedSection=Mem\nDefaultData=1.5\n") + cell +
                dataSection(3, "Tag=MQCODE\nCellType=String\nDataLen=14\nKXAddress=FBC0\nCommRaedSection=Id\n") + cell +
                dataSection(4, "Tag=IN\nDataLen=2\nCommRaedSection=Reg\nDefaultData=-2\n") + cell +
                dataSection(5, "Tag=SET\nDataLen=2\nCommRaedSection=Reg\nDefaultData=7\n") + cell +
                dataSection(6, "Tag=DI\nCellType=Bit\nDataLen=1\nCommRaedSection=Reg\nDefaultData=1\n") + cell +
                dataSection(7, "Tag=DO\nCellType=Bit\nDataLen=1\nCommRaedSection=Reg\nDefaultData=0\n") + cell);
        put(definition(QStringLiteral("MComm.ini")),
            "[Mem]\nReadCmd1=Direct,8000,8\n[Id]\nReadCmd1=Direct,FBC0,14\n"
            "[Reg]\nReadCmdMax=4\nReadCmd1=GetAnalogInput,30001,1,IN\nReadCmd2=GetAnalogSet,40001,1,SET\n"
            "ReadCmd3=GetDigitalInput,10001,1,DI\nReadCmd4=GetDigitalSet,1,1,DO\n");
        return std::make_unique<SimulatedController>(library, 1, QStringLiteral("KX41000000-10A"), 1, mode);
    }
};
