#pragma once

#include "ModbusFrame.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

// A small model for tests of whole programs, and how its controller answers: three parameters, one for each of the
// model string, a memory word and a register.
namespace soundController {

inline const QByteArray kModel = "KX41000000-10A";

inline QByteArray rtu(const QByteArray& frame)
{
    return modbusframe::toWire(frame, false);
}

inline bool asksFor(const QByteArray& request, const char* hexAddress)
{
    return request.mid(3, 4) == QByteArray::fromHex(hexAddress);
}

// The model string at FBC0, the bytes 01 02 03 ... at other addresses, 42 in every register.
inline QByteArray reply(const QByteArray& request, const QByteArray& model = kModel)
{
    const QByteArray head = request.left(2);
    if (static_cast<quint8>(request.at(1)) != 66)
        return rtu(head + QByteArray::fromHex("02002A"));
    const int count = static_cast<quint8>(request.at(7));
    QByteArray data = asksFor(request, "0000FBC0") ? model : QByteArray();
    while (data.size() < count)
        data += static_cast<char>(data.size() + 1);
    return rtu(head + '\0' + static_cast<char>(count) + data.left(count));
}

// The same, but wrong in its last byte for the memory word.
inline QByteArray damagedReply(const QByteArray& request)
{
    QByteArray bytes = reply(request);
    if (asksFor(request, "00008000"))
        bytes.back() = static_cast<char>(~bytes.back());
    return bytes;
}

inline bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// Catalogue, definition files and the settings, for a program folder and an application-data folder of the machine.
inline bool install(const QString& programFolder, const QString& applicationData, const QByteArray& moreSettings = {})
{
    const QByteArray screen =
        "[Setting]\nDataMaxCount=3\nBlockMaxCount=1\nMaxRow=5\n[BlockInfo1]\nBlockNo=1\nName=SV\n"
        "[Datas1]\nTag=MQCODE\nName=Model\nCellType=String\nDataLen=14\nKXAddress=FBC0\nCommRaedSection=Id\n"
        "CellData=1,1,vbWhite,vbBlack\n"
        "[Datas2]\nTag=VQSV1\nName=設定値\nDataLen=2\nKXAddress=8000\n"
        "CommRaedSection=Main\nCommWriteSection=Main\nCellData=2,1,vbWhite,vbBlack\nDefaultData=7\nDataInfo=1,-100,100,"
        "<=,<=,0,10\n"
        "[Datas3]\nTag=PQB1\nDataLen=2\nCommRaedSection=Reg\nCellData=3,1,vbWhite,vbBlack\n";
    const QByteArray comm = "[Id]\nReadCmd1=Direct,FBC0,14\n[Main]\nReadCmd1=Direct,8000,4\nWriteCmd1=Direct,8000,4\n"
                            "[Reg]\nReadCmd1=GetAnalogInput,30001,1,PQB1\n";
    const QByteArray catalogue = "[KXInfos]\nKXMaxCount=1\nKXModel1=KX410\nKXName1=KX410\nKXScreenFile1=M.ini\n"
                                 "KXCommFile1=MComm.ini\n";
    QDir().mkpath(programFolder + QStringLiteral("/ini"));
    QDir().mkpath(applicationData + QStringLiteral("/Vorlan"));
    return writeFile(programFolder + QStringLiteral("/ini/M.ini"), screen) &&
           writeFile(programFolder + QStringLiteral("/ini/MComm.ini"), comm) &&
           writeFile(applicationData + QStringLiteral("/Vorlan/Vorlant.ini"), catalogue + moreSettings);
}

} // namespace soundController
