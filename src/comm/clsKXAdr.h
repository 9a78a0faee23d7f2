#pragma once

#include "IndexedBytes.h"

#include <QString>
#include <QVariant>

#include <stdexcept>
#include <vector>

class clsINI;
class clsLibrary;

// One stretch of the controller's memory: the original image (as last read, or last written), the write image (with the
// user's pending changes), and the command lists that move it. Addresses are hexadecimal texts without prefix; the
// start address is element 1 of the images; values of several bytes are big-endian.
//
// In register mode (no "Direct" read entry) the image is one 16-bit register. Addresses outside the image read as 0 and
// write nothing.
class clsKXAdr
{
public:
    static constexpr int kMaxCommands = 1000;    // entries of a list; a larger count counts as damaged
    static constexpr int kMaxImageBytes = 65536; // likewise for the size of an image

    // The library whose code page getString decodes by; load sets it too. Without one it is the environment's.
    void setLib(const clsLibrary* oLib) { m_library = oLib; }

    // Reads one section of a comm file. Throws std::invalid_argument when "ReadCmdMax" is not a number.
    void load(const QString& sPath, const QString& sINIFile, const QString& section, clsLibrary* oLib);

    // Command lists, index from 1; another index throws std::out_of_range.
    int MsgMax() const { return static_cast<int>(m_reads.size()); }
    QString Cmd(int i) const { return m_reads.at(slot(i)).command; }
    QString Adr(int i) const { return m_reads.at(slot(i)).address; }
    int Cnt(int i) const { return m_reads.at(slot(i)).count; }
    QString Tag(int i) const { return m_reads.at(slot(i)).tag; }
    int WMsgMax() const { return static_cast<int>(m_writes.size()); }
    QString WCmd(int i) const { return m_writes.at(slot(i)).command; }
    QString WAdr(int i) const { return m_writes.at(slot(i)).address; }
    int WCnt(int i) const { return m_writes.at(slot(i)).count; }
    QString WTag(int i) const { return m_writes.at(slot(i)).tag; }

    bool m_bModbus = true; // register mode
    QString Section() const { return m_section; }
    QString StartAddress() const { return m_startAddress; }

    // Whether the original image holds what the controller sent in the last read.
    bool isFilled() const { return m_filled; }
    void markFilled();
    void clearFilled() { m_filled = false; }
    bool isUnread() const { return !m_filled && hasReads(); } // the last read left it out, or got no answer

    // Whether the whole value lies in what the read commands bring. length: bytes, 1 and up.
    bool holds(const QString& address, int length) const;
    bool hasReads() const;       // a read command asks the controller for something
    bool isCommandsOnly() const; // nothing is read, but something written: such a section has nothing unread
    // Why write entry i cannot be sent, in plain English: a "Direct" write sends the image from its first byte on, so
    // it must begin where the last "Direct" read begins and be no longer. Empty when all is well.
    QString writeFault(int i) const;
    // Write entry i sets something fixed behind the values: that puts them in force.
    bool putsInForce(int i) const { return WCmd(i).startsWith(u"Set") && WTag(i).startsWith(u"&h"); }
    int imageSize() const { return m_imageSize; } // bytes; 1 in register mode

    void setData(const IndexedBytes& bytData); // both images
    void setCopy() { m_original = m_write; }
    void resetWrite(); // the write image becomes what the controller held
    // The controller has accepted a value of the write image, length bytes at the address.
    void accept(const QString& address, int length);
    void acceptBits(const QString& address, int mask); // of one byte
    QByteArray getOrgData() const;
    IndexedBytes getWriteData(bool bMaxLen) const;

    void setByte(const QString& sAdr, quint8 value);
    quint8 getByte(const QString& sAdr) const;
    void setInteger(const QString& sAdr, qint16 iData);
    qint16 getInteger(const QString& sAdr, qint16 iDefData) const;
    QString getString(const QString& sAdr, int iDataCount, const QString& sDefData) const;
    void setSingle(const QString& sAdr, float sngData);
    float getSingle(const QString& sAdr, float sngDefData) const;
    void setBit(const QString& sAdr, int mask, bool bValue);
    int getBit(const QString& sAdr, int mask, int lDefBit) const;

    // For other users of the class: no definition file has 32-bit whole numbers, a section of its own for writing or a
    // device number, so the program does not call these.
    QString WSection() const { return {}; }
    void setDeviceID(const QVariant& id) { Q_UNUSED(id); }
    void setLong(const QString& sAdr, qint32 lData);
    qint32 getLong(const QString& sAdr, qint32 lDefData) const;

private:
    struct Command
    {
        QString command;
        QString address;
        int count = 0;
        QString tag;
    };

    static bool isUsable(const Command& read);
    static size_t slot(int i) { return static_cast<size_t>(i) - 1; }
    void setStartAddress(const QString& address);
    void loadReads(clsINI& ini, int count);
    void loadWrites(clsINI& ini, int count);
    qint64 offsetOf(const QString& address) const;
    quint32 original32(const QString& address) const;

    std::vector<Command> m_reads;
    std::vector<Command> m_writes;
    QString m_section;
    QString m_startAddress;
    int m_imageSize = 1;
    int m_writeSize = 0;
    IndexedBytes m_original;
    IndexedBytes m_write;
    qint16 m_originalRegister = 0;
    qint16 m_writeRegister = 0;
    qint16 m_heldRegister = 0; // as read, or as written with success: the other two follow every entry
    bool m_filled = false;
    const clsLibrary* m_library = nullptr;
};
